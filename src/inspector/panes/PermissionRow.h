#pragma once

#include <QWidget>
#include <functional>

class QCheckBox;
class QLabel;

namespace inspector {

/// A name and a box at the right: whether something may be changed on air. A dash where that
/// differs. What is animated cannot be, and says so.
class PermissionRow : public QWidget {
  Q_OBJECT

 public:
  explicit PermissionRow(QWidget* parent = nullptr);

  void setName(const QString& name);
  [[nodiscard]] QString name() const;
  /// 1 all, 0 none, −1 some.
  void setPermission(int permission);
  /// The reason why it cannot be switched; none when it can.
  void setObstacle(const QString& reason, bool isAnimated);
  [[nodiscard]] QCheckBox& box() const { return *m_box; }

 Q_SIGNALS:
  void switched(bool on);

 private:
  QLabel* m_name;
  QWidget* m_mark;
  QCheckBox* m_box;
};

}  // namespace inspector
