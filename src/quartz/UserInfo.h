#pragma once

#include <QByteArray>
#include <QPointF>
#include <QString>
#include <optional>

namespace quartz {

/// What a patch's or a published port's archived "userInfo" says: the name and the place in the
/// editor.
struct UserInfo {
  std::optional<QString> name;
  std::optional<QPointF> position;

  /// Empty for data that is no archived dictionary.
  [[nodiscard]] static UserInfo fromArchive(const QByteArray& archive);
  /// The archive with this name and position; other entries of `previous` are kept.
  [[nodiscard]] QByteArray toArchive(const QByteArray& previous = {}) const;
};

}  // namespace quartz
