#include "widgets/TYStyle.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSlider>
#include <QTabBar>
#include <QTextEdit>
#include <QToolBar>

#include "widgets/DevicePixels.h"
#include "widgets/TYFocusRing.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"

namespace widgets {
namespace {

template <typename Option, typename Draw>
bool drawAs(const QStyleOption* option, const Draw& draw) {
  const auto* typed = qstyleoption_cast<const Option*>(option);
  if (typed) draw(*typed);
  return typed != nullptr;
}

bool isInvalid(const QWidget* widget) {
  return widget && widget->property("invalid").toBool();
}

bool isPopup(const QWidget* widget) {
  return qobject_cast<const QMenu*>(widget) || widget->inherits("QTipLabel") ||
         widget->inherits("QComboBoxPrivateContainer");
}

bool reactsToPointer(const QWidget* widget) {
  return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
         qobject_cast<const QAbstractSlider*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
         qobject_cast<const QTabBar*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget);
}

// Text areas have rounded corners, which their viewports must keep clear of.
int frameWidth(const QWidget* widget) {
  const bool isText =
      qobject_cast<const QTextEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget);
  return isText ? 3 : 1;
}

// Lines between parts of a panel.
bool drawLine(const QStyleOption& option, QPainter& painter) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
  if (!frame) return false;
  const QColor colour = TYStyleKit::colour(Token::Separator);
  const QRectF r = frame->rect;
  const DevicePixels pixels(painter);
  if (frame->frameShape == QFrame::HLine)
    pixels.horizontal(r.left(), r.right(), r.center().y(), colour);
  else if (frame->frameShape == QFrame::VLine)
    pixels.vertical(r.center().x(), r.top(), r.bottom(), colour);
  else
    return false;
  return true;
}

}  // namespace

TYStyle::TYStyle()
    : QProxyStyle(QStringLiteral("Fusion")), m_focusRing(std::make_unique<TYFocusRing>()) {}

TYStyle::~TYStyle() = default;

QPalette TYStyle::standardPalette() const {
  return TYStyleKit::shared().theme().palette();
}

void TYStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (isPopup(widget)) {
    widget->setAttribute(Qt::WA_TranslucentBackground);
    if (widget->inherits("QTipLabel")) widget->setWindowOpacity(1);
  }
  if (reactsToPointer(widget)) widget->setAttribute(Qt::WA_Hover);
}

void TYStyle::unpolish(QWidget* widget) {
  if (isPopup(widget)) widget->setAttribute(Qt::WA_TranslucentBackground, false);
  QProxyStyle::unpolish(widget);
}

int TYStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                         const QWidget* widget) const {
  switch (metric) {
    case PM_DefaultFrameWidth:
      return frameWidth(widget);
    case PM_SpinBoxFrameWidth:
    case PM_ComboBoxFrameWidth:
    case PM_MenuPanelWidth:
    case PM_ToolTipLabelFrameWidth:
    case PM_SplitterWidth:
    case PM_DockWidgetSeparatorExtent:
    case PM_TextCursorWidth:
      return 1;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_MenuBarPanelWidth:
    case PM_MenuBarItemSpacing:
      return 0;
    case PM_FocusFrameHMargin:
      // Views take it for the space beside what is in a cell.
      return qobject_cast<const QAbstractItemView*>(widget) ? 5 : 3;
    case PM_FocusFrameVMargin:
    case PM_MenuHMargin:
    case PM_MenuVMargin:
      return 3;
    case PM_MenuBarVMargin:
      return 2;
    case PM_MenuBarHMargin:
      return 6;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return 14;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
    case PM_HeaderMargin:
      return 8;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
      return 12;
    case PM_ScrollBarExtent:
      return 10;
    case PM_ScrollBarSliderMin:
      return 24;
    case PM_SliderThickness:
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_ListViewIconSize:
    case PM_TabBarIconSize:
    case PM_LineEditIconSize:
    case PM_TreeViewIndentation:
      return 16;
    case PM_SliderControlThickness:
    case PM_SliderLength:
      return 12;
    case PM_ToolBarIconSize:
      return 24;
    case PM_ToolBarFrameWidth:
    case PM_TabBarTabOverlap:
    case PM_TabBarBaseHeight:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabShiftVertical:
    case PM_ScrollView_ScrollBarSpacing:
      return 0;
    case PM_TabBarTabHSpace:
      return 24;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int TYStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                       QStyleHintReturn* result) const {
  switch (hint) {
    case SH_ToolTip_WakeUpDelay:
      return 600;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_Widget_Animation_Duration:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ScrollBar_Transient:
    case SH_FocusFrame_Mask:
      return 0;
    case SH_UnderlineShortcut:
      return m_focusRing->showsMnemonics() ? 1 : 0;
    case SH_ToolTipLabel_Opacity:
      return 255;
    case SH_ItemView_ShowDecorationSelected:
    case SH_Menu_MouseTracking:
    case SH_MenuBar_MouseTracking:
    case SH_ComboBox_Popup:
    case SH_FocusFrame_AboveWidget:
      return 1;
    case SH_Slider_AbsoluteSetButtons:
      return Qt::LeftButton;
    case SH_Slider_PageSetButtons:
      return Qt::NoButton;
    case SH_Header_ArrowAlignment:
      return Qt::AlignRight | Qt::AlignVCenter;
    default:
      return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

QSize TYStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                const QWidget* widget) const {
  const bool large = widget && widget->property("large").toBool();
  switch (type) {
    case CT_PushButton: {
      const int arrow = size.width() + (large ? 32 : 20);
      return {large ? std::max(84, arrow) : arrow, large ? 28 : kControlHeight};
    }
    case CT_ToolButton:
      if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option))
        return toolButtonSize(*button);
      break;
    case CT_LineEdit:
      return {size.width() + 16, kControlHeight};
    case CT_ComboBox:
      return {size.width() + 37, kControlHeight};
    case CT_SpinBox:
      return {size.width() + 24, kControlHeight};
    case CT_CheckBox:
    case CT_RadioButton:
      return {size.width() + (size.width() > 0 ? 22 : 14), kControlHeight};
    case CT_MenuItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option))
        return menuItemSize(*item, size);
      break;
    case CT_MenuBarItem:
      return {size.width() + 18, 22};
    case CT_HeaderSection:
    case CT_TabBarTab: {
      const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
      return {base.width(), kControlHeight};
    }
    case CT_ItemViewItem: {
      const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
      return {base.width() + 8, std::max(kControlHeight, base.height())};
    }
    case CT_ProgressBar:
      return {std::max(size.width(), 120), 8};
    default:
      break;
  }
  return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect TYStyle::subElementRect(SubElement element, const QStyleOption* option,
                              const QWidget* widget) const {
  switch (element) {
    case SE_LineEditContents: {
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      // Qt adds two more on either side.
      return frame && frame->lineWidth > 0 ? option->rect.adjusted(6, 0, -6, -1) : option->rect;
    }
    case SE_HeaderLabel:
    case SE_PushButtonContents:
    case SE_ProgressBarGroove:
    case SE_ProgressBarContents:
    case SE_ProgressBarLabel:
      return option->rect;
    default:
      return QProxyStyle::subElementRect(element, option, widget);
  }
}

QRect TYStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                              SubControl part, const QWidget* widget) const {
  if (control == CC_ScrollBar) {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (bar) return scrollBarPart(*bar, part);
  }
  const QRect r = option->rect;
  if (control == CC_ComboBox && part == SC_ComboBoxEditField)
    return visualRect(option->direction, r, r.adjusted(6, 0, -(kGlyphSide + 6), -1));
  if (control == CC_SpinBox) {
    const int x = r.right() - 2 - kGlyphSide;
    switch (part) {
      case SC_SpinBoxUp:
        return {x, r.top(), kGlyphSide + 3, r.height() / 2};
      case SC_SpinBoxDown:
        return {x, r.center().y() + 1, kGlyphSide + 3, r.height() / 2};
      case SC_SpinBoxEditField:
        return r.adjusted(6, 1, -(kGlyphSide + 5), -1);
      default:
        return r;
    }
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

bool TYStyle::drawFrames(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                         const QWidget* widget) const {
  switch (element) {
    case PE_PanelLineEdit: {
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
      if (frame && frame->lineWidth > 0)
        drawField(option.rect, option.state, isInvalid(widget), painter);
      return true;
    }
    case PE_Frame:
      if (frameWidth(widget) > 1) {
        const QStyle::State state = option.state & ~QStyle::State_MouseOver;
        drawField(option.rect, state, isInvalid(widget), painter);
      } else {
        DevicePixels(painter).edge(option.rect, TYStyleKit::colour(Token::Border), 2);
      }
      return true;
    case PE_FrameGroupBox:
      DevicePixels(painter).edge(option.rect, TYStyleKit::colour(Token::Separator), kPanelRadius);
      return true;
    case PE_FrameTabWidget:
      DevicePixels(painter).horizontal(option.rect.left(), option.rect.right() + 1,
                                       option.rect.top(), TYStyleKit::colour(Token::Separator));
      return true;
    case PE_PanelMenu:
      drawMenuPanel(option.rect, painter);
      return true;
    case PE_PanelTipLabel:
      DevicePixels(painter).box(option.rect, TYStyleKit::colour(Token::Raised),
                                TYStyleKit::colour(Token::Border), kControlRadius);
      return true;
    case PE_IndicatorHeaderArrow:  // drawn with the label
    case PE_FrameMenu:
    case PE_FrameStatusBarItem:
    case PE_FrameTabBarBase:
    case PE_PanelMenuBar:
    case PE_FrameLineEdit:
      return true;
    case PE_FrameFocusRect:
      if (qobject_cast<const QAbstractItemView*>(widget) && !(option.state & State_Selected))
        DevicePixels(painter).edge(option.rect, TYStyleKit::colour(Token::Accent));
      return true;
    default:
      return false;
  }
}

void TYStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  if (drawFrames(element, *option, *painter, widget)) return;
  switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      drawCheckBox(*option, *painter);
      return;
    case PE_IndicatorRadioButton:
      drawRadioButton(*option, *painter);
      return;
    case PE_IndicatorBranch:
      drawBranch(*option, *painter);
      return;
    case PE_PanelButtonCommand:
      if (drawAs<QStyleOptionButton>(option,
                                     [&](const auto& o) { drawPushButtonBevel(o, *painter); }))
        return;
      break;
    case PE_PanelItemViewRow:
    case PE_PanelItemViewItem: {
      const bool whole = element == PE_PanelItemViewRow;
      if (drawAs<QStyleOptionViewItem>(option, [&](const auto& o) { drawRow(o, *painter, whole); }))
        return;
      break;
    }
    default:
      break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

bool TYStyle::drawMenus(ControlElement element, const QStyleOption& option,
                        QPainter& painter) const {
  const Qt::TextFlag mnemonics =
      m_focusRing->showsMnemonics() ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
  switch (element) {
    case CE_MenuItem:
      return drawAs<QStyleOptionMenuItem>(
          &option, [&](const auto& o) { drawMenuItem(o, painter, mnemonics); });
    case CE_MenuBarItem:
      return drawAs<QStyleOptionMenuItem>(
          &option, [&](const auto& o) { drawMenuBarItem(o, painter, mnemonics); });
    case CE_MenuBarEmptyArea:
      painter.fillRect(option.rect, TYStyleKit::colour(Token::Window));
      return true;
    case CE_MenuEmptyArea:
      return true;
    default:
      return false;
  }
}

void TYStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  painter->save();
  const auto restore = qScopeGuard([painter] { painter->restore(); });
  if (drawMenus(element, *option, *painter)) return;
  bool done = false;
  switch (element) {
    case CE_PushButtonBevel:
      done = drawAs<QStyleOptionButton>(option,
                                        [&](const auto& o) { drawPushButtonBevel(o, *painter); });
      break;
    case CE_PushButtonLabel:
      done = drawAs<QStyleOptionButton>(option,
                                        [&](const auto& o) { drawPushButtonLabel(o, *painter); });
      break;
    case CE_ComboBoxLabel:
      done = drawAs<QStyleOptionComboBox>(option,
                                          [&](const auto& o) { drawComboBoxLabel(o, *painter); });
      break;
    case CE_TabBarTabShape:
      done = drawAs<QStyleOptionTab>(option, [&](const auto& o) { drawTabShape(o, *painter); });
      break;
    case CE_TabBarTabLabel:
      done = drawAs<QStyleOptionTab>(option, [&](const auto& o) { drawTabLabel(o, *painter); });
      break;
    case CE_HeaderSection:
      done = drawAs<QStyleOptionHeader>(option,
                                        [&](const auto& o) { drawHeaderSection(o, *painter); });
      break;
    case CE_HeaderLabel:
      done =
          drawAs<QStyleOptionHeader>(option, [&](const auto& o) { drawHeaderLabel(o, *painter); });
      break;
    case CE_DockWidgetTitle:
      done = drawAs<QStyleOptionDockWidget>(option,
                                            [&](const auto& o) { drawDockTitle(o, *painter); });
      break;
    case CE_ProgressBarGroove:
    case CE_ProgressBarLabel:
      return;
    case CE_ProgressBarContents:
      done = drawAs<QStyleOptionProgressBar>(
          option, [&](const auto& o) { drawProgress(o, *painter, widget); });
      break;
    case CE_Splitter:
      painter->fillRect(option->rect, TYStyleKit::colour(Token::Window));
      return;
    case CE_HeaderEmptyArea:
      painter->fillRect(option->rect, TYStyleKit::colour(Token::Raised));
      return;
    case CE_ShapedFrame:
      if (drawLine(*option, *painter)) return;
      break;
    case CE_FocusFrame: {
      const DevicePixels pixels(*painter);
      pixels.edge(option->rect, TYStyleKit::colour(Token::Accent), kControlRadius + 3,
                  2 / pixels.hairline());
      return;
    }
    case CE_ItemViewItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
        QStyleOptionViewItem own = *item;
        const QColor text = own.palette.color(QPalette::Text);
        own.palette.setColor(QPalette::All, QPalette::HighlightedText, text);
        // An open folder is not a switch that is on.
        own.state &= ~State_Open;
        QProxyStyle::drawControl(element, &own, painter, widget);
        return;
      }
      break;
    default:
      break;
  }
  if (!done) QProxyStyle::drawControl(element, option, painter, widget);
}

void TYStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                 QPainter* painter, const QWidget* widget) const {
  painter->save();
  const auto restore = qScopeGuard([painter] { painter->restore(); });
  bool done = false;
  switch (control) {
    case CC_ToolButton:
      done = drawAs<QStyleOptionToolButton>(option,
                                            [&](const auto& o) { drawToolButton(o, *painter); });
      break;
    case CC_ComboBox:
      done =
          drawAs<QStyleOptionComboBox>(option, [&](const auto& o) { drawComboBox(o, *painter); });
      break;
    case CC_SpinBox:
      done = drawAs<QStyleOptionSpinBox>(option,
                                         [&](const auto& o) { drawSpinBox(o, *painter, widget); });
      break;
    case CC_Slider: {
      QRectF knob(0, 0, kKnobSide, kKnobSide);
      knob.moveCenter(
          QRectF(proxy()->subControlRect(CC_Slider, option, SC_SliderHandle, widget)).center());
      done =
          drawAs<QStyleOptionSlider>(option, [&](const auto& o) { drawSlider(o, knob, *painter); });
      break;
    }
    case CC_ScrollBar: {
      const QRectF thumb =
          proxy()->subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget);
      done = drawAs<QStyleOptionSlider>(
          option, [&](const auto& o) { drawScrollBar(o, thumb, *painter, widget); });
      break;
    }
    default:
      break;
  }
  if (!done) QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QIcon TYStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                            const QWidget* widget) const {
  switch (icon) {
    case SP_LineEditClearButton:
    case SP_TitleBarCloseButton:
    case SP_DockWidgetCloseButton:
    case SP_TabCloseButton:
      return TYStyleKit::image(QStringLiteral("Close"));
    case SP_MessageBoxInformation:
      return TYStyleKit::image(QStringLiteral("Info"), Token::Accent);
    case SP_MessageBoxWarning:
      return TYStyleKit::image(QStringLiteral("Warning"), Token::Warning);
    case SP_MessageBoxCritical:
      return TYStyleKit::image(QStringLiteral("Broken"), Token::Broken);
    case SP_DirIcon:
    case SP_DirOpenIcon:
    case SP_DirClosedIcon:
      return TYStyleKit::image(QStringLiteral("Folder"));
    case SP_FileIcon:
      return TYStyleKit::image(QStringLiteral("Document"));
    default:
      return QProxyStyle::standardIcon(icon, option, widget);
  }
}

}  // namespace widgets
