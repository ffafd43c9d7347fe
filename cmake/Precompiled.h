// Headers that nearly every file needs and that seldom change.
#include <QByteArray>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QString>
#include <QTransform>
#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <variant>
#include <vector>
#include <tl/expected.hpp>
