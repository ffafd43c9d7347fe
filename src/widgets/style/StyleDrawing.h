#pragma once

#include <QStyleOption>

class QPainter;
class QWidget;

// The drawings of TYStyle, by kind of control. All take the option's rectangle in the painter's
// logical units.
namespace widgets {

inline constexpr double kControlRadius = 4;
inline constexpr double kPanelRadius = 6;
inline constexpr int kControlHeight = 24;
inline constexpr int kGlyphSide = 16;
inline constexpr int kKnobSide = 12;

void drawPushButtonBevel(const QStyleOptionButton& option, QPainter& painter);
void drawPushButtonLabel(const QStyleOptionButton& option, QPainter& painter);
void drawToolButton(const QStyleOptionToolButton& option, QPainter& painter);
[[nodiscard]] QSize toolButtonSize(const QStyleOptionToolButton& option);

/// Ground, edge and focus of anything that is typed into.
void drawField(const QRectF& rect, QStyle::State state, bool invalid, QPainter& painter);
void drawComboBox(const QStyleOptionComboBox& option, QPainter& painter);
void drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter& painter);
void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget);

void drawCheckBox(const QStyleOption& option, QPainter& painter);
void drawRadioButton(const QStyleOption& option, QPainter& painter);
void drawBranch(const QStyleOption& option, QPainter& painter);

void drawSlider(const QStyleOptionSlider& option, const QRectF& knob, QPainter& painter);
void drawScrollBar(const QStyleOptionSlider& option, const QRectF& thumb, QPainter& painter,
                   const QWidget* widget);
[[nodiscard]] QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part);
void drawProgress(const QStyleOptionProgressBar& option, QPainter& painter, const QWidget* widget);

void drawMenuPanel(const QRectF& rect, QPainter& painter);
void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter, Qt::TextFlag mnemonics);
[[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem& option, const QSize& text);
void drawMenuBarItem(const QStyleOptionMenuItem& option, QPainter& painter, Qt::TextFlag mnemonics);

void drawTabShape(const QStyleOptionTab& option, QPainter& painter);
void drawTabLabel(const QStyleOptionTab& option, QPainter& painter);
void drawHeaderSection(const QStyleOptionHeader& option, QPainter& painter);
void drawHeaderLabel(const QStyleOptionHeader& option, QPainter& painter);
void drawRow(const QStyleOptionViewItem& option, QPainter& painter, bool wholeRow);
void drawDockTitle(const QStyleOptionDockWidget& option, QPainter& painter);

}  // namespace widgets
