#include "app/MainToolbar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>

#include "app/TYWindowController.h"
#include "canvas/CompositionView.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"
#include "widgets/ZoomSteps.h"

namespace app {

using Entry = canvas::ToolbarComponents::Entry;
using widgets::TYSegmentedControl;
using widgets::TYStyleKit;

namespace {

constexpr int toolbarHeight = 56;
constexpr int margin = 10;
constexpr int glyphSize = 24;
constexpr int smallestTool = 52;
constexpr int segmentWidth = 27;
constexpr int labelBottom = 7;  ///< puts labels on one line with those of the tools

/// A control with its name below, as wide as the wider of the two.
QWidget* labelled(QWidget* control, const QString& label) {
  auto* box = new QWidget;
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(0, 9, 0, labelBottom);
  column->setSpacing(3);
  column->addWidget(control, 0, Qt::AlignHCenter);
  column->addStretch(1);
  column->addWidget(
      new widgets::TokenLabel(label, widgets::TextStyle::Small, widgets::Token::Text2), 0,
      Qt::AlignHCenter);
  return box;
}

QToolButton* tool(const QString& glyph, const QString& label) {
  auto* button = new QToolButton;
  button->setAutoRaise(true);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setIconSize({glyphSize, glyphSize});
  button->setIcon(TYStyleKit::image(glyph, widgets::Token::Text));
  button->setFont(TYStyleKit::font(widgets::TextStyle::Small));
  button->setText(label);
  button->setAccessibleName(label);
  button->setMinimumWidth(smallestTool);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

MainToolbar::MainToolbar(TYWindowController& window) : m_window(window) {
  setFixedHeight(toolbarHeight);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setAccessibleName(tr("Tools"));
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Button);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(margin, 0, margin, 0);
  row->setSpacing(0);
  addComponents(*row);
  row->addStretch(1);
  addAlignment(*row);
  row->addStretch(1);
  addActions(*row, {{QStringLiteral("sendBackward"), QStringLiteral("Backward"), tr("Backward")},
                    {QStringLiteral("sendForward"), QStringLiteral("Forward"), tr("Forward")}});
  row->addSpacing(margin);
  addZoom(*row);
  row->addSpacing(margin);
  addActions(
      *row,
      {{QStringLiteral("toggleStopframe"), QStringLiteral("StopFrame"), tr("Stop Frame")},
       {QStringLiteral("togglePosterframe"), QStringLiteral("PosterFrame"), tr("Poster Frame")}});
  addActions(*row, {{QStringLiteral("showPreview"), QStringLiteral("Preview"), tr("Preview")}});
}

void MainToolbar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  int wanted = 2 * margin;
  for (int i = 0; i < layout()->count(); ++i) {
    const QLayoutItem* item = layout()->itemAt(i);
    const QWidget* group = item->widget();
    wanted += group ? std::max(group->sizeHint().width(), group->minimumWidth())
                    : item->minimumSize().width();
  }
  for (QWidget* group : std::as_const(m_givingWay)) {
    const bool gives = wanted > width();
    group->setVisible(!gives);
    if (gives) wanted -= group->sizeHint().width();
  }
}

void MainToolbar::addComponents(QHBoxLayout& row) {
  for (const Entry& entry : canvas::ToolbarComponents::shared().entries()) addComponent(row, entry);
}

void MainToolbar::addComponent(QHBoxLayout& row, const Entry& component) {
  QToolButton* button =
      tool(QString(component.identifier).remove(u' ').remove(u'/'), component.title);
  button->setToolTip(tr("Add %1").arg(component.title));
  row.addWidget(button);
  if (component.subcomponents.isEmpty()) {
    connect(button, &QToolButton::clicked, this,
            [this, name = component.component] { m_window.addStandardComponent(name); });
    return;
  }
  button->setPopupMode(QToolButton::InstantPopup);
  auto* menu = new QMenu(button);
  for (const Entry& sub : component.subcomponents) {
    if (sub.isSeparator()) {
      menu->addSeparator();
      continue;
    }
    connect(menu->addAction(TYStyleKit::image(sub.icon), sub.title), &QAction::triggered, this,
            [this, name = sub.component] { m_window.addStandardComponent(name); });
  }
  button->setMenu(menu);
}

void MainToolbar::addAlignment(QHBoxLayout& row) {
  const auto make = [this](const QString& kind, const QStringList& sides, int firstTag) {
    auto* control = new TYSegmentedControl(TYSegmentedControl::Mode::Momentary);
    control->setSegmentWidth(segmentWidth);
    for (const QString& side : sides)
      control->addGlyph(QStringLiteral("Toolbar") + kind + side,
                        m_window.actions().action(kind + side)->text().remove(u'&'));
    connect(control, &TYSegmentedControl::activated, this, [this, firstTag](int index) {
      m_window.alignment().executeSegmented(firstTag + index);
    });
    return control;
  };
  const QString left = QStringLiteral("Left");
  const QString right = QStringLiteral("Right");
  const QString top = QStringLiteral("Top");
  const QString bottom = QStringLiteral("Bottom");
  const QString across = QStringLiteral("HCenter");
  const QString along = QStringLiteral("VCenter");
  m_align = make(QStringLiteral("Align"), {left, across, right, top, along, bottom}, 0);
  m_distribute = make(QStringLiteral("Distribute"), {top, along, bottom, left, across, right}, 6);
  QWidget* align = labelled(m_align, tr("Align"));
  QWidget* distribute = labelled(m_distribute, tr("Distribute"));
  row.addWidget(align);
  row.addStretch(1);
  row.addWidget(distribute);
  m_givingWay << distribute << align;
}

void MainToolbar::addZoom(QHBoxLayout& row) {
  m_zoom = new QComboBox;
  m_zoom->setAccessibleName(tr("Workbench Size"));
  m_zoom->addItem(tr("Fit"), widgets::ZoomSteps::fit);
  for (const qint32 mode : widgets::ZoomSteps::menuModes())
    m_zoom->addItem(QStringLiteral("%1 %").arg(mode), mode);
  m_zoom->setMinimumWidth(96);
  connect(m_zoom, &QComboBox::activated, this, [this](int index) {
    if (model::Composition* composition = m_window.composition())
      composition->setZoomMode(m_zoom->itemData(index).toInt());
  });
  QWidget* zoom = labelled(m_zoom, tr("Workbench Size"));
  row.addWidget(zoom);
  m_givingWay << zoom;
}

void MainToolbar::showZoomMode(qint32 zoomMode) {
  const QSignalBlocker blocker(m_zoom);
  int index = m_zoom->findData(zoomMode);
  const int menuItems = static_cast<int>(widgets::ZoomSteps::menuModes().size()) + 1;
  if (index < 0) {  // a step of the wheel, which the menu does not offer
    if (m_zoom->count() > menuItems) m_zoom->removeItem(menuItems);
    m_zoom->addItem(QStringLiteral("%1 %").arg(zoomMode), zoomMode);
    index = menuItems;
  }
  m_zoom->setCurrentIndex(index);
}

void MainToolbar::setAlignEnabled(bool canAlign, bool canDistribute) {
  // With their labels.
  m_align->parentWidget()->setEnabled(canAlign);
  m_distribute->parentWidget()->setEnabled(canDistribute);
}

void MainToolbar::addActions(QHBoxLayout& row, std::initializer_list<Tool> tools) {
  auto* group = new QWidget;
  auto* members = new QHBoxLayout(group);
  members->setContentsMargins(0, 0, 0, 0);
  members->setSpacing(0);
  for (const Tool& shown : tools) {
    QAction* action = m_window.actions().action(shown.identifier);
    QToolButton* button = tool(shown.glyph, shown.label);
    members->addWidget(button);
    connect(button, &QToolButton::clicked, action, &QAction::trigger);
    const auto follow = [button, action] {
      button->setEnabled(action->isEnabled());
      button->setToolTip(action->toolTip());
    };
    connect(action, &QAction::changed, button, follow);
    follow();
  }
  row.addWidget(group);
  m_givingWay << group;
}

}  // namespace app
