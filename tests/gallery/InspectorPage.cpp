#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTextEdit>
#include <QVBoxLayout>

#include "gallery/Pages.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYImageWell.h"
#include "widgets/TYKeyDiamond.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TYScrubLabel.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTimecodeField.h"
#include "widgets/TokenLabel.h"

namespace gallery {
namespace {

using namespace widgets;
using Key = TYKeyDiamond::State;

class Pane {
 public:
  Pane(QVBoxLayout* column, const QString& title, const QString& note = {}) {
    auto* header = new TYPaneHeader(title);
    header->setNote(note);
    auto* content = new QWidget;
    m_rows = new QVBoxLayout(content);
    m_rows->setContentsMargins(12, 0, 10, 8);
    m_rows->setSpacing(0);
    header->setContent(content);
    column->addWidget(header);
    column->addWidget(content);
  }

  void row(const QString& label, QWidget* control, std::optional<Key> key = {}) {
    row(label, QList<QWidget*>{control}, key);
  }

  void row(const QString& label, const QList<QWidget*>& controls, std::optional<Key> key = {}) {
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    line->setContentsMargins(0, 2, 0, 2);
    auto* field = qobject_cast<TYValueField*>(controls.constFirst());
    QLabel* name = nullptr;
    if (field) name = new TYScrubLabel(label, field);
    if (!field) name = new TokenLabel(label, TextStyle::Body, Token::Text2);
    name->setFixedWidth(84);
    line->addWidget(name, 0, Qt::AlignTop);
    name->setMinimumHeight(24);
    for (QWidget* control : controls) line->addWidget(control, stretch(control));
    if (stretch(controls.constLast()) == 0 && !qobject_cast<QPushButton*>(controls.constLast()))
      line->addStretch();
    auto* diamond = new TYKeyDiamond;
    if (key) diamond->setState(*key);
    diamond->setVisible(key.has_value());
    QSizePolicy kept = diamond->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    diamond->setSizePolicy(kept);
    line->addWidget(diamond);
    m_rows->addLayout(line);
  }

 private:
  static int stretch(const QWidget* control) {
    const bool fixed =
        qobject_cast<const QPushButton*>(control) || qobject_cast<const TYColorWell*>(control) ||
        qobject_cast<const TYImageWell*>(control) || qobject_cast<const QCheckBox*>(control);
    return fixed ? 0 : 1;
  }

  QVBoxLayout* m_rows;
};

TYNumberField* number(double value, const QString& prefix = {}, const QString& unit = {}) {
  auto* field = new TYNumberField;
  field->setLocale(QLocale(QLocale::English));
  field->setPrefix(prefix);
  field->setUnit(unit);
  field->setValue(value);
  return field;
}

QLineEdit* text(const QString& value) {
  auto* field = new QLineEdit(value);
  field->setCursorPosition(0);
  return field;
}

QComboBox* popUp(const QString& value) {
  auto* box = new QComboBox;
  box->addItems({value, QStringLiteral("Fit Height"), QStringLiteral("Fit Both")});
  return box;
}

QCheckBox* check(bool on, const QString& title = {}) {
  auto* box = new QCheckBox(title);
  box->setChecked(on);
  return box;
}

TYSegmentedControl* justification(int chosen) {
  auto* control = new TYSegmentedControl;
  for (const char* name : {"Left", "Center", "Right", "Justified", "Natural"})
    control->addGlyph(QStringLiteral("Text") + QLatin1String(name), QLatin1String(name));
  control->setSelectedSegment(chosen);
  return control;
}

TYColorWell* well(const QColor& colour) {
  auto* made = new TYColorWell;
  made->setColor(colour);
  return made;
}

QImage picture() {
  QImage image(192, 108, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient sky(0, 0, 0, 108);
  sky.setColorAt(0, QColor(60, 80, 130));
  sky.setColorAt(0.6, QColor(250, 190, 140));
  sky.setColorAt(1, QColor(30, 40, 70));
  painter.fillRect(image.rect(), sky);
  return image;
}

QWidget* tabs(int chosen) {
  auto* holder = new QWidget;
  auto* row = new QHBoxLayout(holder);
  row->setContentsMargins(12, 8, 12, 8);
  auto* control = new TYSegmentedControl;
  for (const char* name : {"Properties", "Permissions", "Document"})
    control->addSegment(QLatin1String(name));
  control->setSelectedSegment(chosen);
  row->addWidget(control);
  return holder;
}

void addStates(QVBoxLayout* column) {
  Pane pane(column, QStringLiteral("Control states"));
  pane.row(QStringLiteral("At rest"), text(QStringLiteral("Headline")));
  auto* focus = text(QStringLiteral("Headline"));
  focus->setObjectName(QStringLiteral("focus"));
  pane.row(QStringLiteral("Focus"), focus);
  auto* off = text(QStringLiteral("Headline"));
  auto* offButton = new QPushButton(QStringLiteral("Edit..."));
  off->setEnabled(false);
  offButton->setEnabled(false);
  pane.row(QStringLiteral("Disabled"), {off, offButton});
  auto* wrong = number(12);
  wrong->setText(QStringLiteral("12,,4"));
  wrong->setModified(true);
  wrong->setObjectName(QStringLiteral("wrong"));
  pane.row(QStringLiteral("Invalid"), wrong);
  pane.row(QStringLiteral("Scrub"),
           {number(312, QStringLiteral("X")), number(148, QStringLiteral("Y"))});
  auto* offBox = popUp(QStringLiteral("Fit Width"));
  offBox->setEnabled(false);
  pane.row(QStringLiteral("Disabled"), offBox);
  auto* offSegments = justification(1);
  offSegments->setEnabled(false);
  pane.row(QStringLiteral("Disabled"), offSegments);
  auto* offCheck = check(true, QStringLiteral("Constrain"));
  offCheck->setEnabled(false);
  auto* offWell = well(Qt::red);
  offWell->setEnabled(false);
  pane.row(QStringLiteral("Disabled"), {offCheck, offWell});
}

}  // namespace

QWidget* inspectorPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(tabs(0));
  Pane pane(column, QStringLiteral("Attributes"), QStringLiteral("11"));
  pane.row(QStringLiteral("Text"),
           {text(QStringLiteral("Morning News")), new QPushButton(QStringLiteral("Edit..."))},
           Key::Still);
  pane.row(QStringLiteral("Position"),
           {number(280, QStringLiteral("X")), number(148, QStringLiteral("Y"))}, Key::KeyHere);
  pane.row(QStringLiteral("Size"),
           {number(1312, QStringLiteral("W")), number(80, QStringLiteral("H"))}, Key::Still);
  pane.row(QStringLiteral("Z-Rotation"), {number(0, {}, QStringLiteral("°")), new QWidget},
           Key::Still);
  auto* time = new TYTimecodeField;
  time->setNotation([](double) { return QStringLiteral("00:00:08:20"); }, {});
  pane.row(QStringLiteral("Duration"), {time, new QWidget});
  pane.row(QStringLiteral("Auto Shrink"), check(true), Key::Still);
  pane.row(QStringLiteral("Fit Mode"), popUp(QStringLiteral("Fit Width")), Key::Still);
  pane.row(QStringLiteral("Justification"), justification(1), Key::Animated);
  pane.row(QStringLiteral("Text Color"),
           {well(QColor(0xFF, 0xB0, 0x2E)), well(QColor(79, 90, 226, 120))}, Key::KeyHere);
  auto* slider = new QSlider(Qt::Horizontal);
  slider->setValue(70);
  auto* percent = number(70, {}, QStringLiteral("%"));
  percent->setFixedWidth(64);
  pane.row(QStringLiteral("Opacity"), {slider, percent}, Key::Animated);
  auto* image = new TYImageWell;
  image->setImage(picture());
  pane.row(QStringLiteral("Logo"), {image, new TYImageWell});
  auto* rich = new QTextEdit;
  rich->setHtml(
      QStringLiteral("<b>Harbour Bridge</b> reopens<br>First cars cross at <i>six</i><br>"
                     "Ferries run until Sunday"));
  rich->setFixedHeight(61);
  rich->document()->setDocumentMargin(4);
  pane.row(QStringLiteral("Rich Text"), rich);
  addStates(column);
  column->addStretch();
  return page;
}

QWidget* mixedPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(tabs(1));
  Pane transform(column, QStringLiteral("Transform"), QStringLiteral("3 components"));
  auto* x = number(0, QStringLiteral("X"));
  x->setMixed(true);
  transform.row(QStringLiteral("Position"), {x, number(148, QStringLiteral("Y"))}, Key::Animated);
  auto* opacity = number(0, {}, QStringLiteral("%"));
  opacity->setMixed(true);
  transform.row(QStringLiteral("Opacity"), {opacity, new QWidget});
  auto* partly = check(false, QStringLiteral("Visible in editor"));
  partly->setTristate(true);
  partly->setCheckState(Qt::PartiallyChecked);
  transform.row(QStringLiteral("Editor"), partly);
  auto* colour = well(Qt::white);
  colour->setMixed(true);
  transform.row(QStringLiteral("Color"), colour, Key::Still);
  transform.row(QStringLiteral("Justification"), justification(-1), Key::Still);
  Pane closed(column, QStringLiteral("Closed pane"), QStringLiteral("7"));
  column->addStretch();
  return page;
}

}  // namespace gallery
