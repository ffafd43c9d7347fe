#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace widgets {

/// Stands in a panel that has nothing to show: one title, one line, at most one button.
class TYEmptyPanel : public QWidget {
  Q_OBJECT
 public:
  /// The glyph may be empty.
  TYEmptyPanel(const QString& glyph, const QString& title, const QString& line,
               QWidget* parent = nullptr);

  /// The next step; an empty text takes the button away.
  void setButton(const QString& text);

 Q_SIGNALS:
  void buttonClicked();

 private:
  QPushButton* m_button;
};

}  // namespace widgets
