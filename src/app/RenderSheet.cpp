#include "app/RenderSheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <cmath>

#include "foundation/Timecode.h"
#include "model/Composition.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTimecodeField.h"
#include "widgets/TokenLabel.h"

namespace app {

using foundation::Timecode;
using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;
using widgets::TYNumberField;
using widgets::TYTimecodeField;
using Kind = RenderChoices::Kind;
using Extent = RenderChoices::Extent;
using Size = RenderChoices::Size;

namespace {

constexpr int sheetWidth = 620;
constexpr int labelWidth = 84;
constexpr int rowHeight = 28;
constexpr int gap = 8;
constexpr int comboWidth = 244;
constexpr int numberWidth = 84;
constexpr int timeWidth = 100;
constexpr int longestSide = 16384;

QComboBox* makeCombo(const QStringList& items) {
  auto* combo = new QComboBox;
  combo->addItems(items);
  combo->setFixedWidth(comboWidth);
  return combo;
}

TYNumberField* makeNumber(const QString& name, const QString& prefix, const QString& unit) {
  auto* field = new TYNumberField;
  field->setFixedWidth(numberWidth);
  field->setAccessibleName(name);
  field->setPrefix(prefix);
  field->setUnit(unit);
  return field;
}

}  // namespace

RenderSheet::RenderSheet(QWidget* window, const model::Composition& composition,
                         const RenderChoices& choices, const QStringList& valueSets)
    : TYSheet(window), m_composition(composition), m_choices(choices), m_rows(new QGridLayout) {
  setObjectName(QStringLiteral("renderSheet"));
  setAccessibleName(tr("Render"));
  setSheetWidth(sheetWidth);
  body()->addWidget(new TokenLabel(tr("Render"), TextStyle::SheetTitle, Token::Text));
  body()->addSpacing(gap);
  m_rows->setHorizontalSpacing(gap);
  m_rows->setVerticalSpacing(0);
  m_rows->setColumnMinimumWidth(0, labelWidth);
  m_rows->setColumnStretch(1, 1);
  body()->addLayout(m_rows);
  addKind();
  addFile();
  addPicture();
  addTime();
  addLook(valueSets);
  m_problem = new TokenLabel({}, TextStyle::Body, Token::Broken);
  m_problem->setWordWrap(true);
  m_problem->setMinimumHeight(rowHeight);
  m_problem->setObjectName(QStringLiteral("problem"));
  body()->addWidget(m_problem);
  connect(addButton(tr("Cancel")), &QPushButton::clicked, this, [this] { closeSheet(); });
  m_render = addButton(tr("Render"), true);
  connect(m_render, &QPushButton::clicked, this, [this] {
    m_choices.path = m_choices.fittingPath();
    if (!m_choices.settings(m_composition)) return;
    Q_EMIT renderRequested(m_choices);
    closeSheet();
  });
  fillFormats();
  takePath(m_choices.path);
  refresh();
}

void RenderSheet::addRow(const QString& label, std::initializer_list<QWidget*> controls) {
  auto* box = new QWidget;
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 2, 0, 2);
  line->setSpacing(gap);
  bool stretches = false;
  for (QWidget* control : controls) {
    if (control->accessibleName().isEmpty()) control->setAccessibleName(label);
    stretches = stretches || control == m_path;
    line->addWidget(control);
  }
  if (!stretches) line->addStretch(1);
  box->setMinimumHeight(rowHeight);
  const int row = m_rows->rowCount();
  m_rows->addWidget(new TokenLabel(label, TextStyle::Body, Token::Text2), row, 0);
  m_rows->addWidget(box, row, 1);
}

void RenderSheet::addKind() {
  m_kind = new widgets::TYSegmentedControl;
  m_kind->addSegment(tr("Movie"));
  m_kind->addSegment(tr("Pictures"), tr("One picture for each frame, in a folder"));
  m_kind->addSegment(tr("Still"), tr("One picture"));
  m_kind->setSegmentWidth(comboWidth / 3);
  m_kind->setSelectedSegment(static_cast<int>(m_choices.kind));
  connect(m_kind, &widgets::TYSegmentedControl::activated, this, [this](int index) {
    m_choices.kind = static_cast<Kind>(index);
    fillFormats();
    takePath(m_choices.fittingPath());
    refresh();
  });
  m_format = makeCombo({});
  connect(m_format, &QComboBox::activated, this, [this](int index) {
    m_choices.format[static_cast<int>(m_choices.kind)] =
        RenderChoices::formats(m_choices.kind).at(index).identifier();
    takePath(m_choices.fittingPath());
    refresh();
  });
  addRow(tr("Make"), {m_kind});
  addRow(tr("Format"), {m_format});
}

void RenderSheet::fillFormats() {
  m_format->clear();
  const QString chosen = m_choices.chosenFormat().identifier();
  for (const RenderFormat& format : RenderChoices::formats(m_choices.kind)) {
    m_format->addItem(format.title);
    if (format.identifier() == chosen) m_format->setCurrentIndex(m_format->count() - 1);
  }
}

void RenderSheet::addFile() {
  m_path = new QLineEdit;
  m_path->setObjectName(QStringLiteral("path"));
  m_path->setMinimumWidth(comboWidth);
  connect(m_path, &QLineEdit::textEdited, this, [this](const QString& text) {
    m_choices.path = text.trimmed();
    refresh();
  });
  auto* choose = new QPushButton(tr("Choose…"));
  connect(choose, &QPushButton::clicked, this, &RenderSheet::chooseFile);
  addRow(tr("Save as"), {m_path, choose});
}

void RenderSheet::takePath(const QString& path) {
  m_choices.path = path;
  m_path->setText(path);
  m_path->setToolTip(path);
}

void RenderSheet::chooseFile() {
  const bool isFolder = m_choices.kind == Kind::Pictures;
  auto* dialog = new QFileDialog(this, isFolder ? tr("Folder for the Pictures") : tr("Render To"),
                                 QFileInfo(m_choices.path).path());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  // Asked once, when rendering begins.
  dialog->setOption(QFileDialog::DontConfirmOverwrite);
  if (isFolder) {
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
  } else {
    const QString suffix = m_choices.chosenFormat().suffix;
    dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(m_choices.chosenFormat().title, suffix));
    dialog->setDefaultSuffix(suffix);
    dialog->selectFile(QFileInfo(m_choices.path).fileName());
  }
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
    takePath(path);
    refresh();
  });
  dialog->open();
}

void RenderSheet::addPicture() {
  const QSize whole = m_composition.size().toSize();
  RenderChoices half = m_choices;
  half.size = Size::Half;
  const QSize halved = half.pixels(m_composition);
  const QString sides = QStringLiteral("%1 × %2");
  m_size = makeCombo({tr("%1, the format's").arg(sides.arg(whole.width()).arg(whole.height())),
                      tr("%1, half of it").arg(sides.arg(halved.width()).arg(halved.height())),
                      tr("Own")});
  m_size->setCurrentIndex(static_cast<int>(m_choices.size));
  connect(m_size, &QComboBox::activated, this, [this](int index) {
    m_choices.size = static_cast<Size>(index);
    refresh();
  });
  const auto side = [this](const QString& name, const QString& letter, int value) {
    TYNumberField* field = makeNumber(name, letter, tr("px"));
    field->setDecimals(0);
    field->setRange(1, longestSide);
    field->setValue(value);
    connect(field, &widgets::TYValueField::valueEdited, this, [this] {
      m_choices.ownSize = {static_cast<int>(m_width->value()), static_cast<int>(m_height->value())};
      refresh();
    });
    return field;
  };
  m_width = side(tr("Width"), tr("W"), m_choices.ownSize.width());
  m_height = side(tr("Height"), tr("H"), m_choices.ownSize.height());
  addRow(tr("Size"), {m_size, m_width, m_height});

  static const QStringList rates{QStringLiteral("23.98"), QStringLiteral("24"),
                                 QStringLiteral("25"),    QStringLiteral("29.97"),
                                 QStringLiteral("30"),    QStringLiteral("50"),
                                 QStringLiteral("59.94"), QStringLiteral("60")};
  const double own = m_composition.videoResolution().framesPerSecond();
  m_rate = makeCombo({tr("%1 a second, the format's").arg(std::round(own * 100) / 100)});
  for (const QString& rate : rates) m_rate->addItem(tr("%1 a second").arg(rate));
  m_rate->setCurrentIndex(static_cast<int>(rates.indexOf(m_choices.rate)) + 1);
  connect(m_rate, &QComboBox::activated, this, [this](int index) {
    m_choices.rate = index > 0 ? rates.at(index - 1) : QString();
    refresh();
  });
  m_fields = new QCheckBox(tr("Two fields a frame"));
  m_fields->setToolTip(tr("Each field is drawn at its own time, the upper lines first."));
  m_fields->setChecked(m_choices.fields);
  connect(m_fields, &QCheckBox::toggled, this, [this](bool on) {
    m_choices.fields = on;
    refresh();
  });
  m_fields->setVisible(m_composition.videoResolution().isInterlaced());
  addRow(tr("Frames"), {m_rate, m_fields});
}

TYTimecodeField* RenderSheet::makeTime(double& seconds, const QString& name) {
  auto* field = new TYTimecodeField;
  const foundation::TimecodeRate rate = m_composition.videoResolution().timecodeRate();
  field->setFixedWidth(timeWidth);
  field->setAccessibleName(name);
  field->setNotation(
      [rate](double value) { return Timecode::fromSeconds(value, rate).toString(); },
      [rate](const QString& text, double present) {
        return Timecode::fromString(text, rate, present).map([](const Timecode& code) {
          return code.seconds();
        });
      });
  field->setRange(0, 24 * 3600);
  field->setStep(1 / rate.framesPerSecond());
  field->setValue(seconds);
  connect(field, &widgets::TYValueField::valueEdited, this, [this, &seconds](double value) {
    seconds = value;
    refresh();
  });
  return field;
}

void RenderSheet::addTime() {
  m_extent = makeCombo({tr("Until the graphic is over"), tr("From and to, as played")});
  m_extent->setCurrentIndex(static_cast<int>(m_choices.extent));
  connect(m_extent, &QComboBox::activated, this, [this](int index) {
    m_choices.extent = static_cast<Extent>(index);
    refresh();
  });
  m_from = makeTime(m_choices.from, tr("From"));
  m_until = new TokenLabel(QStringLiteral("–"), TextStyle::Body, Token::Text2);
  m_to = makeTime(m_choices.to, tr("To"));
  m_still = makeTime(m_choices.stillAt, tr("Time"));
  for (TYTimecodeField* field : {m_from, m_to})
    field->setToolTip(tr("Counted as it is played, with the time that stops are held."));
  m_still->setToolTip(tr("A moment of the time line, where stops take no time."));
  addRow(tr("Time"), {m_extent, m_from, m_until, m_to, m_still});
  m_hold = makeNumber(tr("Hold each stop"), {}, tr("s"));
  m_hold->setDecimals(2);
  m_hold->setRange(0, 3600);
  m_hold->setValue(m_choices.stopHold);
  m_hold->setToolTip(tr("How long each stop frame stands before the trigger is pressed."));
  connect(m_hold, &widgets::TYValueField::valueEdited, this,
          [this](double value) { m_choices.stopHold = value; });
  addRow(tr("Hold stops"), {m_hold});
}

void RenderSheet::addLook(const QStringList& valueSets) {
  if (!valueSets.isEmpty()) {
    QComboBox* values = makeCombo(QStringList(tr("The document's own")) + valueSets);
    values->setObjectName(QStringLiteral("values"));
    values->setCurrentIndex(static_cast<int>(valueSets.indexOf(m_choices.valueSet)) + 1);
    connect(values, &QComboBox::activated, this, [this, valueSets](int index) {
      m_choices.valueSet = index > 0 ? valueSets.at(index - 1) : QString();
    });
    addRow(tr("Values"), {values});
  }
  auto* background = new QCheckBox(tr("With the background"));
  background->setChecked(m_choices.background);
  connect(background, &QCheckBox::toggled, this, [this](bool on) { m_choices.background = on; });
  addRow(tr("Background"), {background});
  m_alpha = makeCombo({tr("Straight"), tr("Premultiplied")});
  m_alpha->setCurrentIndex(m_choices.alpha == render::Alpha::Premultiplied ? 1 : 0);
  connect(m_alpha, &QComboBox::activated, this, [this](int index) {
    m_choices.alpha = index == 1 ? render::Alpha::Premultiplied : render::Alpha::Straight;
  });
  addRow(tr("Alpha"), {m_alpha});
}

void RenderSheet::refresh() {
  const bool isStill = m_choices.kind == Kind::Still;
  const bool isPart = !isStill && m_choices.extent == Extent::FromTo;
  const bool isOwn = m_choices.size == Size::Own;
  m_width->setVisible(isOwn);
  m_height->setVisible(isOwn);
  m_extent->setVisible(!isStill);
  for (QWidget* field : std::initializer_list<QWidget*>{m_from, m_until, m_to})
    field->setVisible(isPart);
  m_still->setVisible(isStill);
  m_rate->setEnabled(!isStill);
  m_fields->setEnabled(m_choices.hasFields(m_composition));
  m_hold->setEnabled(!isStill);
  m_alpha->setEnabled(m_choices.chosenFormat().keepsAlpha);
  const auto settings = m_choices.settings(m_composition);
  const QString problem = settings ? QString() : settings.error().text();
  m_problem->setText(problem.left(1).toUpper() + problem.mid(1));
  m_render->setEnabled(settings.has_value());
}

}  // namespace app
