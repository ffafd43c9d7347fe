#include "preview/FieldsPanel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QVBoxLayout>

#include "document/CompositionDocument.h"
#include "preview/FramePump.h"
#include "preview/fields/FieldEditor.h"
#include "preview/fields/FieldList.h"
#include "preview/fields/OutputsList.h"
#include "preview/fields/SetsMenu.h"
#include "preview/fields/TableStrip.h"
#include "preview/fields/TakeBar.h"
#include "widgets/DevicePixels.h"
#include "widgets/TYSearchField.h"
#include "widgets/TYStyleKit.h"

namespace preview {

using document::CompositionDocument;
using runtime::PortAttributes;
using widgets::Token;

namespace {

constexpr std::chrono::milliseconds outputsInterval(100);
/// From so many fields on they can be searched.
constexpr std::size_t manyFields = 12;
constexpr int margin = 12;
constexpr int gap = 8;

std::vector<PortAttributes> attributes(
    const QStringList& keys,
    const std::function<std::optional<PortAttributes>(const QString&)>& of) {
  std::vector<PortAttributes> ports;
  for (const QString& key : keys) ports.push_back(*of(key));
  return ports;
}

/// Whether the keyboard is in a field, whose keys are its own.
bool isInField(const QWidget* widget) {
  for (; widget; widget = widget->parentWidget())
    if (qobject_cast<const FieldEditor*>(widget) || qobject_cast<const QLineEdit*>(widget))
      return true;
  return false;
}

/// Keys of typing and of moving in what was typed, so that a field that has no use for one does not
/// leave it to the window, where it is a command.
bool isOfFields(const QKeyEvent& event) {
  const auto others = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  const bool isFunctionKey = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35;
  return others == Qt::NoModifier && event.key() != Qt::Key_Escape && !isFunctionKey;
}

}  // namespace

FieldsPanel::FieldsPanel(QWidget* parent)
    : QWidget(parent),
      m_model(new FieldsModel(this)),
      m_take(new TakeBar),
      m_sets(new SetsMenu(*m_model)),
      m_table(new TableStrip(*m_model)),
      m_search(new widgets::TYSearchField),
      m_list(new FieldList(*m_model)),
      m_outputs(new OutputsList) {
  setFixedWidth(panelWidth);
  setAccessibleName(tr("Fields"));
  build();
  observe();
  showParts(false);
}

FieldsPanel::~FieldsPanel() = default;

void FieldsPanel::build() {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(1, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_take);
  column->addWidget(m_sets);
  column->addWidget(m_table);
  auto* search = new QHBoxLayout;
  search->setContentsMargins(margin, gap / 2, margin, gap / 2);
  search->addWidget(m_search);
  column->addLayout(search);
  column->addWidget(m_list, 1);
  column->addWidget(m_outputs);
  m_search->setPlaceholderText(tr("Search Fields"));
  m_search->setAccessibleName(tr("Search Fields"));
  m_search->hide();
  m_outputsTimer.setSingleShot(true);
  m_table->setDocumentPath(
      [this] { return m_document ? m_document->fileURL().toLocalFile() : QString(); });
}

void FieldsPanel::observe() {
  connect(m_take, &TakeBar::playRequested, this, &FieldsPanel::play);
  connect(m_take, &TakeBar::triggerRequested, this, &FieldsPanel::triggerRequested);
  connect(m_take, &TakeBar::updateRequested, this, &FieldsPanel::sendHeld);
  connect(m_take, &TakeBar::resetRequested, this, &FieldsPanel::reset);
  connect(m_take, &TakeBar::holdsChangesChosen, m_model, &FieldsModel::setHoldsChanges);
  connect(m_model, &FieldsModel::holdsChangesChanged, m_take, &TakeBar::setHoldsChanges);
  connect(m_model, &FieldsModel::sending, this, [this](const QString& key, const auto& value) {
    if (m_pump) m_pump->setInput(key, value);
  });
  connect(m_model, &FieldsModel::valueChanged, this, &FieldsPanel::showPending);
  connect(m_model, &FieldsModel::fieldsChanged, this, [this] {
    m_search->setVisible(m_model->fields().size() >= manyFields || !m_search->text().isEmpty());
    showPending();
  });
  connect(m_search, &QLineEdit::textChanged, m_list, &FieldList::filter);
  connect(m_search, &QLineEdit::returnPressed, m_list, &FieldList::focusFirst);
  connect(m_list, &FieldList::left, this, &FieldsPanel::keyboardLeft);
  connect(&m_outputsTimer, &QTimer::timeout, this, &FieldsPanel::takeOutputs);
  auto* update = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
  connect(update, &QShortcut::activated, this, &FieldsPanel::sendHeld);
}

void FieldsPanel::takeProgram(PreviewProgram& program, CompositionDocument* document) {
  const bool isAnother = m_document != document;
  if (isAnother) exchangeDocument(document);
  showParts(true);
  const runtime::CompositionRenderer renderer(program.compiled);
  m_model->setInputs(attributes(renderer.inputKeys(),
                                [&](const QString& key) { return renderer.inputAttributes(key); }));
  m_outputs->setPorts(attributes(
      renderer.outputKeys(), [&](const QString& key) { return renderer.outputAttributes(key); }));
  if (isAnother) m_sets->setDocument(document);
  for (const playout::InputValue& input : m_model->sentValues())
    program.inputs.emplace_back(input.key, input.value);
}

void FieldsPanel::exchangeDocument(CompositionDocument* document) {
  if (m_document) m_others.insert(m_document, m_model->entries());
  m_model->setEntries(m_others.take(document));
  m_document = document;
}

void FieldsPanel::showNothing() {
  exchangeDocument(nullptr);
  showParts(false);
  m_model->setInputs({});
  m_outputs->setPorts({});
  m_sets->setDocument(nullptr);
}

void FieldsPanel::showParts(bool hasProgram) {
  if (!hasProgram && isAncestorOf(QApplication::focusWidget())) Q_EMIT keyboardLeft();
  m_list->setIdle(!hasProgram);
  m_take->setEnabled(hasProgram);
  m_sets->setVisible(hasProgram);
  m_table->setVisible(hasProgram);
  if (!hasProgram) m_search->clear();
}

void FieldsPanel::setPump(FramePump* pump) {
  m_pump = pump;
  m_take->setPlayable(pump != nullptr);
  m_take->setWaiting(false);
}

void FieldsPanel::setWaiting(bool isWaiting) {
  m_take->setWaiting(isWaiting);
}

void FieldsPanel::documentWillClose(const CompositionDocument& document) {
  m_others.remove(&document);
  if (m_document != &document) return;
  m_document = nullptr;
  m_sets->documentWillClose();
}

void FieldsPanel::outputsAreReady() {
  if (!isVisible() || m_outputsTimer.isActive()) return;
  const auto since = std::chrono::milliseconds(m_sinceOutputs.isValid() ? m_sinceOutputs.elapsed()
                                                                        : outputsInterval.count());
  if (since >= outputsInterval)
    takeOutputs();
  else
    m_outputsTimer.start(outputsInterval - since);
}

void FieldsPanel::takeOutputs() {
  if (!m_pump || !isVisible()) return;
  m_sinceOutputs.start();
  if (const auto outputs = m_pump->takeOutputs()) m_outputs->setValues(outputs->values);
}

void FieldsPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  takeOutputs();
}

void FieldsPanel::play() {
  m_list->commitEntry();
  m_model->update();
  Q_EMIT playRequested();
}

void FieldsPanel::sendHeld() {
  m_list->commitEntry();
  m_model->update();
}

void FieldsPanel::reset() {
  m_model->resetAll();
  Q_EMIT playRequested();
}

void FieldsPanel::showPending() {
  m_take->setPendingCount(m_model->pendingCount());
}

void FieldsPanel::focusFields() {
  m_list->focusFirst();
}

/// Keys that go up are the window's in any case: a trigger that is held must be let go wherever the
/// focus went meanwhile.
void FieldsPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F6 || event->key() == Qt::Key_Escape)
    Q_EMIT keyboardLeft();
  else
    event->setAccepted(isInField(QApplication::focusWidget()) && isOfFields(*event));
}

void FieldsPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const widgets::DevicePixels pixels(painter);
  pixels.fill(rect(), widgets::TYStyleKit::colour(Token::Panel));
  pixels.vertical(0, 0, height(), widgets::TYStyleKit::colour(Token::Window));
}

}  // namespace preview
