#pragma once

#include <QMap>
#include <QString>
#include <functional>
#include <memory>

namespace store {

class ManagedObject;

/// Makes empty objects by the names of their entities.
using EntityFactories = QMap<QString, std::function<std::unique_ptr<ManagedObject>()>>;

}  // namespace store
