#pragma once

#include <QLineEdit>

namespace widgets {

/// A field that narrows a list: glyph, placeholder, a cross that clears it. Esc clears it too.
class TYSearchField : public QLineEdit {
  Q_OBJECT
 public:
  explicit TYSearchField(QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace widgets
