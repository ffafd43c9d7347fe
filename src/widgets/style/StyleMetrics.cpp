#include "widgets/style/StyleMetrics.h"

#include <QAbstractItemView>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

struct Metric {
  QStyle::PixelMetric metric;
  int value;
};

constexpr Metric kMetrics[] = {
    {QStyle::PM_SpinBoxFrameWidth, 1},
    {QStyle::PM_ComboBoxFrameWidth, 1},
    {QStyle::PM_MenuPanelWidth, 1},
    {QStyle::PM_ToolTipLabelFrameWidth, 5},
    {QStyle::PM_SplitterWidth, 1},
    {QStyle::PM_DockWidgetSeparatorExtent, 1},
    {QStyle::PM_TextCursorWidth, 1},
    {QStyle::PM_ButtonShiftHorizontal, 0},
    {QStyle::PM_ButtonShiftVertical, 0},
    {QStyle::PM_MenuBarPanelWidth, 0},
    {QStyle::PM_MenuBarItemSpacing, 0},
    {QStyle::PM_FocusFrameVMargin, 3},
    {QStyle::PM_MenuHMargin, 3},
    {QStyle::PM_MenuVMargin, 3},
    {QStyle::PM_MenuBarVMargin, 2},
    {QStyle::PM_MenuBarHMargin, 6},
    {QStyle::PM_IndicatorWidth, 14},
    {QStyle::PM_IndicatorHeight, 14},
    {QStyle::PM_ExclusiveIndicatorWidth, 14},
    {QStyle::PM_ExclusiveIndicatorHeight, 14},
    {QStyle::PM_CheckBoxLabelSpacing, 8},
    {QStyle::PM_RadioButtonLabelSpacing, 8},
    {QStyle::PM_LayoutHorizontalSpacing, 8},
    {QStyle::PM_LayoutVerticalSpacing, 8},
    {QStyle::PM_HeaderMargin, 8},
    {QStyle::PM_LayoutLeftMargin, 12},
    {QStyle::PM_LayoutTopMargin, 12},
    {QStyle::PM_LayoutRightMargin, 12},
    {QStyle::PM_LayoutBottomMargin, 12},
    {QStyle::PM_ScrollBarExtent, 10},
    {QStyle::PM_ScrollBarSliderMin, 24},
    {QStyle::PM_SliderThickness, 16},
    {QStyle::PM_SmallIconSize, 16},
    {QStyle::PM_ButtonIconSize, 16},
    {QStyle::PM_ListViewIconSize, 16},
    {QStyle::PM_TabBarIconSize, 16},
    {QStyle::PM_LineEditIconSize, 16},
    {QStyle::PM_TreeViewIndentation, 16},
    {QStyle::PM_SliderControlThickness, 12},
    {QStyle::PM_SliderLength, 12},
    {QStyle::PM_ToolBarIconSize, 24},
    {QStyle::PM_ToolBarFrameWidth, 0},
    {QStyle::PM_TabBarTabOverlap, 0},
    {QStyle::PM_TabBarBaseHeight, 0},
    {QStyle::PM_TabBarBaseOverlap, 0},
    {QStyle::PM_TabBarTabShiftVertical, 0},
    {QStyle::PM_ScrollView_ScrollBarSpacing, 0},
    {QStyle::PM_TabBarTabHSpace, 24},
};

}  // namespace

int frameWidth(const QWidget* widget) {
  const bool isText =
      qobject_cast<const QTextEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget);
  return isText ? 3 : 1;
}

std::optional<int> styleMetric(QStyle::PixelMetric metric, const QWidget* widget) {
  if (metric == QStyle::PM_DefaultFrameWidth) return frameWidth(widget);
  // Views take it for the space beside what is in a cell.
  if (metric == QStyle::PM_FocusFrameHMargin)
    return qobject_cast<const QAbstractItemView*>(widget) ? 5 : 3;
  for (const Metric& known : kMetrics)
    if (known.metric == metric) return known.value;
  return std::nullopt;
}

std::optional<int> styleHintValue(QStyle::StyleHint hint) {
  switch (hint) {
    case QStyle::SH_ToolTip_WakeUpDelay:
      return 600;
    case QStyle::SH_EtchDisabledText:
    case QStyle::SH_DitherDisabledText:
    case QStyle::SH_Widget_Animation_Duration:
    case QStyle::SH_DialogButtonBox_ButtonsHaveIcons:
    case QStyle::SH_ScrollBar_Transient:
    case QStyle::SH_FocusFrame_Mask:
      return 0;
    case QStyle::SH_ToolTipLabel_Opacity:
      return 255;
    case QStyle::SH_ItemView_ShowDecorationSelected:
    case QStyle::SH_Menu_MouseTracking:
    case QStyle::SH_MenuBar_MouseTracking:
    case QStyle::SH_ComboBox_Popup:
    case QStyle::SH_FocusFrame_AboveWidget:
      return 1;
    case QStyle::SH_Slider_AbsoluteSetButtons:
      return Qt::LeftButton;
    case QStyle::SH_Slider_PageSetButtons:
      return Qt::NoButton;
    case QStyle::SH_Header_ArrowAlignment:
      return Qt::AlignRight | Qt::AlignVCenter;
    default:
      return std::nullopt;
  }
}

std::optional<QSize> contentsSize(QStyle::ContentsType type, const QStyleOption* option,
                                  const QSize& size, const QSize& base, const QWidget* widget) {
  const bool large = widget && widget->property("large").toBool();
  switch (type) {
    case QStyle::CT_PushButton: {
      const int width = size.width() + (large ? 32 : 20);
      return QSize(large ? std::max(84, width) : width, large ? 28 : kControlHeight);
    }
    case QStyle::CT_ToolButton:
      if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option))
        return toolButtonSize(*button);
      return std::nullopt;
    case QStyle::CT_LineEdit:
      return QSize(size.width() + 16, kControlHeight);
    case QStyle::CT_ComboBox:
      return QSize(size.width() + 37, kControlHeight);
    case QStyle::CT_SpinBox:
      return QSize(size.width() + 24, kControlHeight);
    case QStyle::CT_CheckBox:
    case QStyle::CT_RadioButton:
      return QSize(size.width() + (size.width() > 0 ? 22 : 14), kControlHeight);
    case QStyle::CT_MenuItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
        return menuItemSize(*item, size);
      return std::nullopt;
    case QStyle::CT_MenuBarItem:
      return QSize(size.width() + 18, 22);
    case QStyle::CT_HeaderSection:
    case QStyle::CT_TabBarTab:
      return QSize(base.width(), kControlHeight);
    case QStyle::CT_ItemViewItem:
      return QSize(base.width() + 8, std::max(kControlHeight, base.height()));
    case QStyle::CT_ProgressBar:
      return QSize(std::max(size.width(), 120), 8);
    default:
      return std::nullopt;
  }
}

}  // namespace widgets
