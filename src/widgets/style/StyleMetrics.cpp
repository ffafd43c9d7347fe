#include "widgets/style/StyleMetrics.h"

#include <QAbstractItemView>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "widgets/style/StyleDrawing.h"

namespace widgets {

int frameWidth(const QWidget* widget) {
  const bool isText =
      qobject_cast<const QTextEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget);
  return isText ? 3 : 1;
}

std::optional<int> styleMetric(QStyle::PixelMetric metric, const QWidget* widget) {
  switch (metric) {
    case QStyle::PM_DefaultFrameWidth:
      return frameWidth(widget);
    case QStyle::PM_SpinBoxFrameWidth:
    case QStyle::PM_ComboBoxFrameWidth:
    case QStyle::PM_MenuPanelWidth:
    case QStyle::PM_ToolTipLabelFrameWidth:
    case QStyle::PM_SplitterWidth:
    case QStyle::PM_DockWidgetSeparatorExtent:
    case QStyle::PM_TextCursorWidth:
      return 1;
    case QStyle::PM_ButtonShiftHorizontal:
    case QStyle::PM_ButtonShiftVertical:
    case QStyle::PM_MenuBarPanelWidth:
    case QStyle::PM_MenuBarItemSpacing:
      return 0;
    case QStyle::PM_FocusFrameHMargin:
      // Views take it for the space beside what is in a cell.
      return qobject_cast<const QAbstractItemView*>(widget) ? 5 : 3;
    case QStyle::PM_FocusFrameVMargin:
    case QStyle::PM_MenuHMargin:
    case QStyle::PM_MenuVMargin:
      return 3;
    case QStyle::PM_MenuBarVMargin:
      return 2;
    case QStyle::PM_MenuBarHMargin:
      return 6;
    case QStyle::PM_IndicatorWidth:
    case QStyle::PM_IndicatorHeight:
    case QStyle::PM_ExclusiveIndicatorWidth:
    case QStyle::PM_ExclusiveIndicatorHeight:
      return 14;
    case QStyle::PM_CheckBoxLabelSpacing:
    case QStyle::PM_RadioButtonLabelSpacing:
    case QStyle::PM_LayoutHorizontalSpacing:
    case QStyle::PM_LayoutVerticalSpacing:
    case QStyle::PM_HeaderMargin:
      return 8;
    case QStyle::PM_LayoutLeftMargin:
    case QStyle::PM_LayoutTopMargin:
    case QStyle::PM_LayoutRightMargin:
    case QStyle::PM_LayoutBottomMargin:
      return 12;
    case QStyle::PM_ScrollBarExtent:
      return 10;
    case QStyle::PM_ScrollBarSliderMin:
      return 24;
    case QStyle::PM_SliderThickness:
    case QStyle::PM_SmallIconSize:
    case QStyle::PM_ButtonIconSize:
    case QStyle::PM_ListViewIconSize:
    case QStyle::PM_TabBarIconSize:
    case QStyle::PM_LineEditIconSize:
    case QStyle::PM_TreeViewIndentation:
      return 16;
    case QStyle::PM_SliderControlThickness:
    case QStyle::PM_SliderLength:
      return 12;
    case QStyle::PM_ToolBarIconSize:
      return 24;
    case QStyle::PM_ToolBarFrameWidth:
    case QStyle::PM_TabBarTabOverlap:
    case QStyle::PM_TabBarBaseHeight:
    case QStyle::PM_TabBarBaseOverlap:
    case QStyle::PM_TabBarTabShiftVertical:
    case QStyle::PM_ScrollView_ScrollBarSpacing:
      return 0;
    case QStyle::PM_TabBarTabHSpace:
      return 24;
    default:
      return std::nullopt;
  }
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
