#include "preview/fields/TableStrip.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListView>
#include <QPushButton>
#include <QToolButton>

#include "foundation/UserDefaults.h"
#include "preview/fields/ElidedNote.h"
#include "preview/fields/FieldRow.h"
#include "preview/fields/FieldsModel.h"
#include "preview/fields/LabelledLine.h"
#include "preview/fields/TableRows.h"
#include "widgets/EventGuards.h"
#include "widgets/FileChooser.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"

namespace preview {

using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;

namespace {

constexpr int lineHeight = LabelledLine::height;
constexpr qsizetype mostProblems = 3;
const QString lastTable = QStringLiteral("previewTable");

QToolButton* button(const QString& glyph, const QString& toolTip) {
  auto* made = new QToolButton;
  made->setIcon(widgets::TYStyleKit::image(glyph));
  made->setIconSize({16, 16});
  made->setFixedSize(lineHeight, lineHeight);
  made->setAutoRaise(true);
  made->setFocusPolicy(Qt::TabFocus);
  widgets::leaveSpaceToWindow(*made);
  made->setToolTip(toolTip);
  made->setAccessibleName(toolTip);
  return made;
}

}  // namespace

TableStrip::TableStrip(FieldsModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_rows(new TableRows(this)),
      m_open(new QPushButton(tr("Open Table..."))),
      m_list(new QComboBox),
      m_back(button(QStringLiteral("TimelineFrameBack"), tr("Previous Row"))),
      m_forward(button(QStringLiteral("TimelineFrameForwards"), tr("Next Row"))),
      m_reload(button(QStringLiteral("Reload"), tr("Reload Table"))),
      m_close(button(QStringLiteral("Close"), tr("Close Table"))),
      m_file(new QWidget),
      m_note(new ElidedNote),
      m_problems(new TokenLabel({}, TextStyle::Small, Token::Warning)) {
  build();
  connect(m_open, &QPushButton::clicked, this, &TableStrip::choose);
  connect(m_list, &QComboBox::activated, this, [this](int index) { goTo(index); });
  connect(m_back, &QToolButton::clicked, this, [this] { goTo(m_row - 1); });
  connect(m_forward, &QToolButton::clicked, this, [this] { goTo(m_row + 1); });
  connect(m_reload, &QToolButton::clicked, this, &TableStrip::reload);
  connect(m_close, &QToolButton::clicked, this, &TableStrip::close);
  connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] {
    m_hasChanged = true;
    showState();
  });
  connect(&model, &FieldsModel::fieldsChanged, this, &TableStrip::findColumns);
  showState();
}

void TableStrip::build() {
  const auto [column, line] = LabelledLine(*this, tr("Table"));
  m_open->setFocusPolicy(Qt::TabFocus);
  m_open->setToolTip(tr("Fill in the fields from the rows of a CSV or JSON file"));
  widgets::leaveSpaceToWindow(*m_open);
  m_list->setModel(m_rows);
  m_list->setFocusPolicy(Qt::TabFocus);
  m_list->setAccessibleName(tr("Row of the Table"));
  m_list->setPlaceholderText(tr("Choose a Row"));
  m_list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_list->setMinimumContentsLength(4);
  if (auto* view = qobject_cast<QListView*>(m_list->view())) view->setUniformItemSizes(true);
  widgets::leaveWheelToPane(*m_list);
  line->addWidget(m_open);
  line->addWidget(m_back);
  line->addWidget(m_list, 1);
  line->addWidget(m_forward);
  auto* below = new QHBoxLayout(m_file);
  below->setContentsMargins(FieldRow::labelWidth + FieldRow::gap, 0, FieldRow::margin, 0);
  below->setSpacing(0);
  below->addWidget(m_note, 1);
  below->addWidget(m_reload);
  below->addWidget(m_close);
  column->addWidget(m_file);
  m_problems->setTextFormat(Qt::PlainText);
  m_problems->setWordWrap(true);
  m_problems->setContentsMargins(FieldRow::labelWidth + FieldRow::gap, 0, FieldRow::margin, 4);
  column->addWidget(m_problems);
}

QString TableStrip::startPath() const {
  const QString last = foundation::UserDefaults::standard().value(lastTable).toString();
  if (QFileInfo::exists(last)) return last;
  const QString document = m_documentPath ? m_documentPath() : QString();
  return document.isEmpty() ? QDir::homePath() : QFileInfo(document).absolutePath();
}

void TableStrip::choose() {
  widgets::FileChooser::open(*this, tr("Open a Table of Values"), widgets::FileChooser::Tables,
                             startPath(), [this](const QString& path) { openTable(path); });
}

void TableStrip::openTable(const QString& path) {
  m_row = -1;
  m_wrongCells.clear();
  if (read(path)) {
    findColumns();
    foundation::UserDefaults::standard().setValue(path, lastTable);
  }
  showState();
}

bool TableStrip::read(const QString& path) {
  auto table = playout::ValueTable::fromFile(path);
  m_failure = table ? QString() : table.error().text();
  if (!table) return false;
  m_table = std::make_shared<const playout::ValueTable>(std::move(*table));
  m_rows->setTable(m_table);
  if (!m_watcher.files().isEmpty()) m_watcher.removePaths(m_watcher.files());
  m_watcher.addPath(path);
  m_hasChanged = false;
  return true;
}

void TableStrip::reload() {
  if (!m_table) return;
  const QString path = m_table->path();
  m_wrongCells.clear();
  // A table that cannot be read any more stays as it was read before.
  if (read(path)) findColumns();
  if (m_row >= m_table->rowCount()) m_row = -1;
  showState();
}

void TableStrip::close() {
  if (!m_watcher.files().isEmpty()) m_watcher.removePaths(m_watcher.files());
  m_table.reset();
  m_rows->setTable(nullptr);
  m_row = -1;
  m_failure.clear();
  m_wrongCells.clear();
  showState();
}

void TableStrip::findColumns() {
  if (!m_table) return;
  std::vector<runtime::PortAttributes> inputs;
  for (const Field& field : m_model.fields()) inputs.push_back(field.port);
  m_fit = m_table->fit(inputs);
  showProblems();
}

void TableStrip::goTo(qsizetype row) {
  if (!m_table || row < 0 || row >= m_table->rowCount()) return;
  m_row = row;
  const playout::ValueTable::RowValues values = m_table->assign(row, m_fit);
  m_wrongCells.clear();
  for (const auto& cell : values.wrong) m_wrongCells += cell.failure.error.message;
  QStringList filled;
  for (const auto& input : m_fit.inputs)
    if (input) filled += input->key;
  m_wrongCells += m_model.fill(values.json, QFileInfo(m_table->path()).absolutePath(), filled);
  showState();
}

void TableStrip::showState() {
  m_open->setVisible(!isOpen());
  for (QWidget* shown : std::initializer_list<QWidget*>{m_list, m_back, m_forward, m_file})
    shown->setVisible(isOpen());
  const qsizetype count = isOpen() ? m_table->rowCount() : 0;
  m_list->setCurrentIndex(static_cast<int>(m_row));
  m_back->setEnabled(m_row > 0);
  m_forward->setEnabled(m_row + 1 < count);
  const QString file = isOpen() ? QFileInfo(m_table->path()).fileName() : QString();
  m_note->setText(m_row < 0 ? tr("%1 · %L2 rows").arg(file).arg(count)
                            : tr("%1 · row %L2 of %L3").arg(file).arg(m_row + 1).arg(count));
  m_note->setToolTip(isOpen() ? m_table->path() : QString());
  showProblems();
}

QString TableStrip::problems() const {
  QStringList all;
  if (!m_failure.isEmpty()) all += m_failure;
  if (m_hasChanged) all += tr("The file has changed: Reload Table reads it again.");
  all += m_wrongCells;
  if (isOpen() && m_fit.isNone()) all += tr("No column fits a field.");
  QStringList withoutField;
  const bool hasFields = isOpen() && !m_fit.isNone();
  for (const auto& column : hasFields ? m_fit.unused : decltype(m_fit.unused)()) {
    if (column.candidates.isEmpty() && column.filledBy.isEmpty())
      withoutField += column.name;
    else
      all += column.sentence();
  }
  if (!withoutField.isEmpty())
    all += tr("Columns without a field: %1").arg(withoutField.join(QStringLiteral(", ")));
  return all.join(u'\n');
}

void TableStrip::showProblems() {
  const QString all = problems();
  QStringList shown = all.split(u'\n', Qt::SkipEmptyParts);
  const qsizetype more = shown.size() - mostProblems;
  if (more > 0) shown = shown.mid(0, mostProblems) << tr("and %L1 more").arg(more);
  m_problems->setText(shown.join(u'\n'));
  m_problems->setToolTip(more > 0 ? all : QString());
  m_problems->setVisible(!all.isEmpty());
}

}  // namespace preview
