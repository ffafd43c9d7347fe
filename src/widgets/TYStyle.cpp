#include "widgets/TYStyle.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QTabBar>

#include "widgets/DevicePixels.h"
#include "widgets/TYFocusRing.h"
#include "widgets/TYStyleKit.h"
#include "widgets/style/StyleDrawing.h"
#include "widgets/style/StyleMetrics.h"

namespace widgets {
namespace {

template <typename Option>
bool drawAs(const QStyleOption& option, QPainter& painter, void (*draw)(const Option&, QPainter&)) {
  const auto* typed = qstyleoption_cast<const Option*>(&option);
  if (typed) draw(*typed, painter);
  return typed != nullptr;
}

bool isInvalid(const QWidget* widget) {
  return widget && widget->property("invalid").toBool();
}

bool isComboPopup(const QWidget* widget) {
  return widget && widget->inherits("QComboBoxPrivateContainer");
}

bool isPopup(const QWidget* widget) {
  return qobject_cast<const QMenu*>(widget) || widget->inherits("QTipLabel") ||
         isComboPopup(widget);
}

bool reactsToPointer(const QWidget* widget) {
  return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
         qobject_cast<const QAbstractSlider*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
         qobject_cast<const QTabBar*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget);
}

// The items of a menu keep clear of its edge; those of a pop-up get its whole width.
QStyleOptionMenuItem inset(QStyleOptionMenuItem option, const QWidget* widget) {
  if (qobject_cast<const QComboBox*>(widget)) option.rect.adjust(3, 0, -3, 0);
  return option;
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
    if (widget->inherits("QTipLabel")) widget->setContentsMargins(3, 0, 3, 0);
  }
  // The rows of a pop-up lie on its panel.
  auto* view = qobject_cast<QAbstractItemView*>(widget);
  if (view && isComboPopup(view->parentWidget())) view->viewport()->setAutoFillBackground(false);
  if (reactsToPointer(widget)) widget->setAttribute(Qt::WA_Hover);
}

void TYStyle::unpolish(QWidget* widget) {
  if (isPopup(widget)) widget->setAttribute(Qt::WA_TranslucentBackground, false);
  QProxyStyle::unpolish(widget);
}

int TYStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                         const QWidget* widget) const {
  const std::optional<int> own = styleMetric(metric, widget);
  return own ? *own : QProxyStyle::pixelMetric(metric, option, widget);
}

int TYStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                       QStyleHintReturn* result) const {
  if (hint == SH_UnderlineShortcut) return m_focusRing->showsMnemonics();
  if (hint == SH_Menu_Mask || hint == SH_ToolTip_Mask) {
    auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(result);
    const double radius = hint == SH_Menu_Mask ? kPanelRadius : kControlRadius;
    if (mask && option) mask->region = roundedRegion(option->rect, int(radius));
    return mask && option;
  }
  const std::optional<int> own = styleHintValue(hint);
  return own ? *own : QProxyStyle::styleHint(hint, option, widget, result);
}

QSize TYStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                const QWidget* widget) const {
  const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
  return contentsSize(type, option, size, base, widget).value_or(base);
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
      if (isComboPopup(widget)) {
        drawMenuPanel(option.rect, painter);
        return true;
      }
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
      if (drawAs(*option, *painter, drawPushButtonBevel)) return;
      break;
    case PE_PanelItemViewRow:
    case PE_PanelItemViewItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
        drawRow(*item, *painter, element == PE_PanelItemViewRow);
        return;
      }
      break;
    default:
      break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

bool TYStyle::drawMenus(ControlElement element, const QStyleOption& option, QPainter& painter,
                        const QWidget* widget) const {
  const Qt::TextFlag mnemonics =
      m_focusRing->showsMnemonics() ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
  switch (element) {
    case CE_MenuItem:
      if (item) drawMenuItem(inset(*item, widget), painter, mnemonics);
      return item;
    case CE_MenuBarItem:
      if (item) drawMenuBarItem(*item, painter, mnemonics);
      return item;
    case CE_MenuBarEmptyArea:
      painter.fillRect(option.rect, TYStyleKit::colour(Token::Window));
      return true;
    case CE_MenuEmptyArea:
      return true;
    default:
      return false;
  }
}

bool TYStyle::drawParts(ControlElement element, const QStyleOption& option,
                        QPainter& painter) const {
  switch (element) {
    case CE_PushButtonBevel:
      return drawAs(option, painter, drawPushButtonBevel);
    case CE_PushButtonLabel:
      return drawAs(option, painter, drawPushButtonLabel);
    case CE_ComboBoxLabel:
      return drawAs(option, painter, drawComboBoxLabel);
    case CE_TabBarTabShape:
      return drawAs(option, painter, drawTabShape);
    case CE_TabBarTabLabel:
      return drawAs(option, painter, drawTabLabel);
    case CE_HeaderSection:
      return drawAs(option, painter, drawHeaderSection);
    case CE_HeaderLabel:
      return drawAs(option, painter, drawHeaderLabel);
    case CE_DockWidgetTitle:
      return drawAs(option, painter, drawDockTitle);
    case CE_ShapedFrame:
      return drawLine(option, painter);
    case CE_ProgressBarGroove:
    case CE_ProgressBarLabel:
      return true;
    case CE_Splitter:
      painter.fillRect(option.rect, TYStyleKit::colour(Token::Window));
      return true;
    case CE_HeaderEmptyArea:
      painter.fillRect(option.rect, TYStyleKit::colour(Token::Raised));
      return true;
    case CE_FocusFrame: {
      const DevicePixels pixels(painter);
      pixels.edge(option.rect, TYStyleKit::colour(Token::Accent), kControlRadius + 3,
                  2 / pixels.hairline());
      return true;
    }
    default:
      return false;
  }
}

void TYStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  painter->save();
  const auto restore = qScopeGuard([painter] { painter->restore(); });
  if (drawMenus(element, *option, *painter, widget) || drawParts(element, *option, *painter))
    return;
  if (element == CE_ProgressBarContents) {
    if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option))
      drawProgress(*bar, *painter, widget);
    return;
  }
  const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
  if (element != CE_ItemViewItem || !item) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  QStyleOptionViewItem own = *item;
  own.palette.setColor(QPalette::All, QPalette::HighlightedText, own.palette.color(QPalette::Text));
  // An open folder is not a switch that is on.
  own.state &= ~State_Open;
  QProxyStyle::drawControl(element, &own, painter, widget);
}

void TYStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                 QPainter* painter, const QWidget* widget) const {
  painter->save();
  const auto restore = qScopeGuard([painter] { painter->restore(); });
  const auto* range = qstyleoption_cast<const QStyleOptionSlider*>(option);
  const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
  const auto part = [&](SubControl which) {
    return QRectF(proxy()->subControlRect(control, option, which, widget));
  };
  if (control == CC_ToolButton && drawAs(*option, *painter, drawToolButton)) return;
  if (control == CC_ComboBox && drawAs(*option, *painter, drawComboBox)) return;
  if (control == CC_SpinBox && spin) {
    drawSpinBox(*spin, *painter, widget);
  } else if (control == CC_Slider && range) {
    QRectF knob(0, 0, kKnobSide, kKnobSide);
    knob.moveCenter(part(SC_SliderHandle).center());
    drawSlider(*range, knob, *painter);
  } else if (control == CC_ScrollBar && range) {
    drawScrollBar(*range, part(SC_ScrollBarSlider), *painter, widget);
  } else {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
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
