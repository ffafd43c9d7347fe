#pragma once

#include <QWidget>

namespace widgets {

/// Shows where a folder or file lies, name by name, beginning with "Home" inside of the user's own
/// folder. Each name is a button for its folder: by the pointer, or with the arrow keys and Return.
class TYPathControl : public QWidget {
  Q_OBJECT
 public:
  explicit TYPathControl(QWidget* parent = nullptr);

  /// Announces nothing; an empty path shows the placeholder.
  void setPath(const QString& path);
  [[nodiscard]] const QString& path() const { return m_path; }
  void setPlaceholder(const QString& text);
  [[nodiscard]] QSize sizeHint() const override { return {268, 24}; }

 Q_SIGNALS:
  /// A name was clicked; the path of its folder.
  void itemClicked(const QString& path);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Item {
    QString name;
    QString path;
  };
  /// Where the items stand; those that do not fit are left out at the left, after "…".
  [[nodiscard]] QList<QRect> places() const;
  [[nodiscard]] int itemAt(const QPoint& position) const;
  void setCurrent(int item);

  QString m_path;
  QString m_placeholder;
  QList<Item> m_items;
  int m_current = -1;  ///< under the pointer, or chosen with the keys
};

}  // namespace widgets
