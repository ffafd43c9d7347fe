#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "gallery/Pages.h"
#include "widgets/TYEmptyPanel.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYSearchField.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TYTimecodeField.h"
#include "widgets/TokenLabel.h"

namespace gallery {
namespace {

using namespace widgets;

QTreeWidget* tree() {
  auto* made = new QTreeWidget;
  made->setHeaderLabels(
      {QStringLiteral("Name"), QStringLiteral("Resolution"), QStringLiteral("Size")});
  made->setAlternatingRowColors(true);
  auto* top = new QTreeWidgetItem(made, {QStringLiteral("Components"), {}, QStringLiteral("18")});
  top->setIcon(0, TYStyleKit::image(QStringLiteral("Folder")));
  for (const char* name : {"Headline", "Clock Plate", "News Ticker"}) {
    auto* row = new QTreeWidgetItem(
        top, {QLatin1String(name), QStringLiteral("1920 × 1080"), QStringLiteral("52 KB")});
    row->setIcon(0, TYStyleKit::image(QStringLiteral("Document")));
    row->setCheckState(2, Qt::Checked);
  }
  new QTreeWidgetItem(made, {QStringLiteral("Pictures"), {}, QStringLiteral("64")});
  top->setExpanded(true);
  made->setCurrentItem(top->child(1));
  made->setSortingEnabled(true);
  made->setColumnWidth(0, 150);
  made->setFixedHeight(180);
  return made;
}

QListWidget* list() {
  auto* made = new QListWidget;
  for (int i = 0; i < 20; ++i) made->addItem(QStringLiteral("Row %1").arg(i + 1));
  made->setCurrentRow(2);
  made->setFixedHeight(120);
  return made;
}

QHBoxLayout* buttons() {
  auto* row = new QHBoxLayout;
  for (const char* name : {"Cancel", "Replace"}) {
    auto* button = new QPushButton(QLatin1String(name));
    button->setProperty("large", true);
    if (QLatin1String(name) == QLatin1String("Replace")) button->setDefault(true);
    row->addWidget(button);
  }
  auto* off = new QPushButton(QStringLiteral("Disabled"));
  off->setEnabled(false);
  auto* trigger =
      new QPushButton(TYStyleKit::image(QStringLiteral("Trigger")), QStringLiteral("Trigger"));
  row->addWidget(off);
  row->addWidget(trigger);
  row->addStretch();
  return row;
}

QToolButton* tool(const QString& glyph, const QString& label, bool enabled = true) {
  auto* button = new QToolButton;
  button->setIcon(TYStyleKit::image(glyph, Token::Text));
  button->setText(label);
  button->setIconSize({24, 24});
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setAutoRaise(true);
  button->setEnabled(enabled);
  return button;
}

QWidget* bar(int height) {
  auto* made = new QWidget;
  made->setFixedHeight(height);
  made->setAutoFillBackground(true);
  made->setBackgroundRole(QPalette::Midlight);
  auto* row = new QHBoxLayout(made);
  row->setContentsMargins(10, 0, 10, 0);
  row->setSpacing(0);
  return made;
}

QWidget* labelled(TYSegmentedControl* control, const QString& label) {
  auto* holder = new QWidget;
  auto* column = new QVBoxLayout(holder);
  column->setContentsMargins(4, 4, 4, 3);
  column->setSpacing(2);
  column->addWidget(control);
  auto* text = new TokenLabel(label, TextStyle::Small, Token::Text2);
  column->addWidget(text, 0, Qt::AlignHCenter);
  return holder;
}

QWidget* align(const QString& action, bool enabled) {
  auto* control = new TYSegmentedControl(TYSegmentedControl::Mode::Momentary);
  for (const char* edge : {"Left", "HCenter", "Right", "Top", "VCenter", "Bottom"})
    control->addGlyph(QStringLiteral("Toolbar") + action + QLatin1String(edge),
                      QLatin1String(edge));
  control->setSegmentWidth(27);
  QWidget* holder = labelled(control, action);
  holder->setEnabled(enabled);
  return holder;
}

}  // namespace

QWidget* standardPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setSpacing(10);
  column->addWidget(new TYSearchField);
  column->addWidget(tree());
  column->addWidget(list());
  column->addLayout(buttons());
  auto* choices = new QHBoxLayout;
  auto* first = new QRadioButton(QStringLiteral("Separate components"));
  first->setChecked(true);
  choices->addWidget(first);
  choices->addWidget(new QRadioButton(QStringLiteral("One flat picture")));
  choices->addStretch();
  column->addLayout(choices);
  auto* numbers = new QHBoxLayout;
  auto* editable = new QComboBox;
  editable->setEditable(true);
  editable->addItems({QStringLiteral("Inter Bold"), QStringLiteral("Inter Regular")});
  numbers->addWidget(new QSpinBox);
  numbers->addWidget(editable);
  auto* upright = new QSlider(Qt::Vertical);
  upright->setFixedHeight(60);
  upright->setValue(40);
  numbers->addWidget(upright);
  column->addLayout(numbers);
  auto* progress = new QProgressBar;
  progress->setValue(62);
  column->addWidget(progress);
  auto* tabBar = new QTabBar;
  for (const char* name : {"Findings", "Fonts", "History"}) tabBar->addTab(QLatin1String(name));
  tabBar->setDrawBase(false);
  column->addWidget(tabBar);
  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  column->addWidget(line);
  auto* last = new QPushButton(QStringLiteral("Keyboard focus"));
  last->setObjectName(QStringLiteral("ring"));
  column->addWidget(last, 0, Qt::AlignLeft);
  column->addStretch();
  return page;
}

QWidget* barsPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  QWidget* tools = bar(56);
  for (const char* name : {"Text", "Image", "Clock"})
    tools->layout()->addWidget(tool(QLatin1String(name), QLatin1String(name)));
  auto* shapes = tool(QStringLiteral("Shapes"), QStringLiteral("Shapes"));
  shapes->setPopupMode(QToolButton::InstantPopup);
  shapes->setMenu(new QMenu(shapes));
  tools->layout()->addWidget(shapes);
  tools->layout()->addWidget(align(QStringLiteral("Align"), true));
  tools->layout()->addWidget(align(QStringLiteral("Distribute"), false));
  tools->layout()->addWidget(tool(QStringLiteral("Backward"), QStringLiteral("Backward"), false));
  tools->layout()->addWidget(tool(QStringLiteral("PosterFrame"), QStringLiteral("Poster Frame")));
  tools->layout()->addWidget(tool(QStringLiteral("Preview"), QStringLiteral("Preview")));
  static_cast<QHBoxLayout*>(tools->layout())->addStretch();
  column->addWidget(tools);

  QWidget* transport = bar(40);
  static_cast<QHBoxLayout*>(transport->layout())->setSpacing(12);
  auto* controls = new TYSegmentedControl(TYSegmentedControl::Mode::Momentary);
  for (const char* name : {"Start", "FrameBack", "Play", "FrameForwards", "End"})
    controls->addGlyph(QStringLiteral("Timeline") + QLatin1String(name), QLatin1String(name));
  controls->setSegmentWidth(34);
  transport->layout()->addWidget(controls);
  auto* time = new TYTimecodeField;
  time->setNotation([](double) { return QStringLiteral("00:00:03:12"); }, {});
  time->setProminent(true);
  transport->layout()->addWidget(time);
  static_cast<QHBoxLayout*>(transport->layout())->addStretch();
  auto* zoom = new QSlider(Qt::Horizontal);
  zoom->setFixedWidth(150);
  zoom->setValue(38);
  transport->layout()->addWidget(zoom);
  column->addWidget(transport);

  auto* empty =
      new TYEmptyPanel(QStringLiteral("Folder"), QStringLiteral("No pictures in this folder"),
                       QStringLiteral("Choose the folder where your graphics are kept."));
  empty->setButton(QStringLiteral("Choose Folder..."));
  column->addWidget(empty, 1);
  return page;
}

QWidget* glyphPage() {
  auto* page = new QWidget;
  auto* grid = new QGridLayout(page);
  int index = 0;
  for (const QString& name : TYGlyph::names()) {
    auto* cell = new QLabel;
    cell->setFixedSize(104, 52);
    auto* row = new QHBoxLayout(cell);
    row->setContentsMargins(0, 0, 0, 0);
    for (const int side : {16, 24, 48}) {
      auto* picture = new QToolButton;
      picture->setAutoRaise(true);
      picture->setIcon(TYStyleKit::image(name, Token::Text));
      picture->setIconSize({side, side});
      picture->setFixedSize(side, side);
      picture->setToolTip(name);
      row->addWidget(picture);
    }
    grid->addWidget(cell, index / 14, index % 14);
    ++index;
  }
  return page;
}

}  // namespace gallery
