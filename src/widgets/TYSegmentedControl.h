#pragma once

#include <QButtonGroup>
#include <QIcon>
#include <QWidget>

#include "widgets/ThemeTokens.h"

class QAbstractButton;

namespace widgets {

/// A row of joined buttons. The arrow keys move within it, Tab passes it by in one step.
class TYSegmentedControl : public QWidget {
  Q_OBJECT
 public:
  enum class Mode {
    SelectOne,  ///< one of them is chosen, or none
    SelectAny,  ///< each is on or off
    Momentary,  ///< none stays on
  };

  explicit TYSegmentedControl(Mode mode = Mode::SelectOne, QWidget* parent = nullptr);

  /// The index of the new segment. The tooltip is also its accessible name where it has no text.
  int addSegment(const QString& text, const QString& toolTip = {});
  int addGlyph(const QString& glyph, const QString& toolTip);
  void setGlyph(int index, const QString& glyph);
  /// The glyph's colour while the segment is on; `text` unless set.
  void setOnToken(int index, Token token);
  /// Shows that something is going on, in the colour of segments that are on; nothing is chosen.
  void setHighlighted(int index, bool highlighted);
  void setSegmentWidth(int width);
  [[nodiscard]] int count() const;
  [[nodiscard]] QAbstractButton* segment(int index) const { return m_group.button(index); }

  /// −1 when none is chosen.
  [[nodiscard]] int selectedSegment() const { return m_group.checkedId(); }
  /// Announces nothing; −1 chooses none.
  void setSelectedSegment(int index);
  [[nodiscard]] bool isSelected(int index) const;
  void setSelected(int index, bool selected);
  void setSegmentEnabled(int index, bool enabled);

 Q_SIGNALS:
  /// By the user: chosen, switched or pressed.
  void activated(int index);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  int add(const QString& text, const QString& glyph, const QString& toolTip);
  void moveFocus(int from, int direction);
  void updateTabStop();

  Mode m_mode;
  QButtonGroup m_group;
};

}  // namespace widgets
