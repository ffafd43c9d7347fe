#include "inspector/GeometryPane.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QSignalBlocker>

#include "model/Composition.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYScrubLabel.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using model::QuartzComponent;
using widgets::TYNumberField;

/// One number of a component, by the component's key.
struct GeometryPane::Row {
  QString key;
  QString name;    ///< for people who hear the window
  QString prefix;  ///< inside the field
  QString unit;
  const char* stepName;
  double minimum;
  double maximum;
  int decimals;
};

namespace {

constexpr int labelWidth = 84;
constexpr int margin = 12;
constexpr int gap = 8;
constexpr int keyColumn = 34;  ///< left free for the marks of key frames
constexpr double far = 1e6;

const char* const moveName = QT_TRANSLATE_NOOP("inspector::GeometryPane", "Move");
const char* const resizeName = QT_TRANSLATE_NOOP("inspector::GeometryPane", "Resize");
const char* const rotateName = QT_TRANSLATE_NOOP("inspector::GeometryPane", "Rotate");
const char* const opacityName = QT_TRANSLATE_NOOP("inspector::GeometryPane", "Opacity");

}  // namespace

GeometryPane::GeometryPane(QWidget* parent) : QWidget(parent) {
  static const Row x{
      QStringLiteral("originX"), tr("X"), QStringLiteral("X"), {}, moveName, -far, far, 2};
  static const Row y{
      QStringLiteral("originY"), tr("Y"), QStringLiteral("Y"), {}, moveName, -far, far, 2};
  static const Row width{
      QStringLiteral("width"), tr("Width"), QStringLiteral("W"), {}, resizeName, 0, far, 2};
  static const Row height{
      QStringLiteral("height"), tr("Height"), QStringLiteral("H"), {}, resizeName, 0, far, 2};
  static const Row rotation{
      QStringLiteral("zRotation"), tr("Z-Rotation"), {}, QStringLiteral("°"), rotateName, -far, far, 2};
  static const Row percent{QStringLiteral("opacityHumanReadable"),
                           tr("Opacity"),
                           {},
                           QStringLiteral("%"),
                           opacityName,
                           0,
                           100,
                           1};
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(margin, gap, keyColumn, gap);
  grid->setHorizontalSpacing(gap);
  grid->setVerticalSpacing(4);
  grid->setColumnMinimumWidth(0, labelWidth);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);
  addRow(tr("Position"), {&x, &y});
  addRow(tr("Size"), {&width, &height});
  m_proportions = new QCheckBox(tr("Constrain"));
  grid->addWidget(
      new widgets::TokenLabel(tr("Proportions"), widgets::TextStyle::Body, widgets::Token::Text2),
      grid->rowCount(), 0);
  grid->addWidget(m_proportions, grid->rowCount() - 1, 1, 1, 2);
  connect(m_proportions, &QCheckBox::clicked, this, [this](bool on) {
    const store::UndoStep step(*m_composition->context(), tr("Constrain Proportions"));
    for (QuartzComponent* component : std::as_const(m_selected))
      component->setConstrainProportions(on);
  });
  addRow(tr("Z-Rotation"), {&rotation});
  addRow(tr("Opacity"), {&percent});
  addVisibility();
  grid->setRowStretch(grid->rowCount(), 1);
  updateValues();
}

GeometryPane::~GeometryPane() = default;

void GeometryPane::addRow(const QString& label, std::initializer_list<const Row*> fields) {
  auto* grid = static_cast<QGridLayout*>(layout());
  const int row = grid->rowCount();
  auto* scrub = new widgets::TYScrubLabel(label);
  grid->addWidget(scrub, row, 0);
  int column = 1;
  for (const Row* field : fields) {
    TYNumberField* made = makeField(*field);
    if (column == 1) scrub->setField(made);
    made->setAccessibleName(field->name);
    grid->addWidget(made, row, column++);
  }
}

TYNumberField* GeometryPane::makeField(const Row& row) {
  auto* field = new TYNumberField;
  field->setPrefix(row.prefix);
  field->setUnit(row.unit);
  field->setRange(row.minimum, row.maximum);
  field->setDecimals(row.decimals);
  connect(field, &TYNumberField::editBegan, this, [this, &row] { begin(row); });
  connect(field, &TYNumberField::valueEdited, this, [this, &row](double v) { edit(row, v); });
  connect(field, &TYNumberField::relativeEdited, this,
          [this, &row](const widgets::NumberExpression& change) { editRelatively(row, change); });
  connect(field, &TYNumberField::editCommitted, this, [this] { end(true); });
  connect(field, &TYNumberField::editCancelled, this, [this] { end(false); });
  m_fields.emplace_back(&row, field);
  return field;
}

void GeometryPane::addVisibility() {
  auto* grid = static_cast<QGridLayout*>(layout());
  const int row = grid->rowCount();
  grid->addWidget(
      new widgets::TokenLabel(tr("Editor"), widgets::TextStyle::Body, widgets::Token::Text2), row,
      0);
  m_visible = new QCheckBox(tr("Visible in editor"));
  grid->addWidget(m_visible, row, 1, 1, 2);
  connect(m_visible, &QCheckBox::clicked, this, [this](bool on) {
    const store::UndoStep step(*m_composition->context(), on ? tr("Show") : tr("Hide"));
    for (QuartzComponent* component : std::as_const(m_selected))
      component->setVisibleInCompositionEditor(on);
  });
}

void GeometryPane::setComposition(model::Composition* composition) {
  end(true);
  m_composition = composition;
  m_selection.cancel();
  if (composition)
    m_selection = composition->observe(QStringLiteral("selectedComponents"),
                                       [this](const store::Change&) { followSelection(); });
  followSelection();
}

void GeometryPane::followSelection() {
  end(true);
  m_values.clear();
  m_selected = m_composition ? m_composition->selectedComponents() : QList<QuartzComponent*>();
  for (QuartzComponent* component : std::as_const(m_selected)) {
    for (const auto& [row, field] : m_fields)
      m_values.push_back(component->observe(
          row->key,
          [this, row = row, field = field](const store::Change&) { updateField(*row, *field); }));
    for (const char* key : {"visibleInCompositionEditor", "constrainProportions"})
      m_values.push_back(component->observe(QString::fromLatin1(key),
                                            [this](const store::Change&) { updateValues(); }));
  }
  updateValues();
}

void GeometryPane::updateField(const Row& row, TYNumberField& field) {
  if (m_selected.isEmpty()) return;
  const double first = m_selected.first()->valueForKey(row.key).toDouble();
  bool mixed = false;
  for (const QuartzComponent* component : std::as_const(m_selected))
    mixed |= component->valueForKey(row.key).toDouble() != first;
  field.setValue(first);
  field.setMixed(mixed);
}

void GeometryPane::updateValues() {
  setEnabled(!m_selected.isEmpty());
  for (const auto& [row, field] : m_fields) updateField(*row, *field);
  const auto show = [this](QCheckBox& box, auto read) {
    qsizetype on = 0;
    for (const QuartzComponent* component : std::as_const(m_selected))
      on += read(*component) ? 1 : 0;
    const bool some = on > 0 && on < m_selected.size();
    box.setTristate(some);
    box.setCheckState(some ? Qt::PartiallyChecked : on > 0 ? Qt::Checked : Qt::Unchecked);
  };
  show(*m_visible, [](const QuartzComponent& c) { return c.visibleInCompositionEditor(); });
  show(*m_proportions, [](const QuartzComponent& c) { return c.constrainProportions(); });
}

void GeometryPane::begin(const Row& row) {
  if (!m_composition) return;
  m_step = std::make_unique<store::UndoStep>(*m_composition->context(), tr(row.stepName));
  m_before.clear();
  for (const QuartzComponent* component : std::as_const(m_selected))
    m_before.push_back(component->valueForKey(row.key).toDouble());
}

void GeometryPane::edit(const Row& row, double value) {
  for (QuartzComponent* component : std::as_const(m_selected))
    component->setValueForKey(value, row.key);
}

void GeometryPane::editRelatively(const Row& row, const widgets::NumberExpression& change) {
  if (m_before.size() != static_cast<size_t>(m_selected.size())) return;
  for (qsizetype i = 0; i < m_selected.size(); ++i) {
    const double value = change.appliedTo(m_before[static_cast<size_t>(i)]);
    m_selected[i]->setValueForKey(qBound(row.minimum, value, row.maximum), row.key);
  }
}

void GeometryPane::end(bool keep) {
  if (m_step && !keep) m_step->cancel();
  m_step.reset();
  m_before.clear();
}

}  // namespace inspector
