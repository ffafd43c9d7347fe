#include "preview/fields/SetsMenu.h"

#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

#include "document/CompositionDocument.h"
#include "preview/fields/FieldRow.h"
#include "preview/fields/FieldsModel.h"
#include "preview/fields/LabelledLine.h"
#include "widgets/EventGuards.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"

namespace preview {

using playout::ValueSet;
using playout::ValueSets;
using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;

namespace {
constexpr int lineHeight = LabelledLine::height;
}

SetsMenu::SetsMenu(FieldsModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_list(new QComboBox),
      m_name(new QLineEdit),
      m_more(new QToolButton),
      m_menu(new QMenu(this)),
      m_problem(new TokenLabel({}, TextStyle::Small, Token::Broken)) {
  build();
  fillMenu();
  m_choiceTimer.setSingleShot(true);
  connect(&model, &FieldsModel::valueChanged, this, [this] { m_choiceTimer.start(0); });
  connect(&model, &FieldsModel::fieldsChanged, this, [this] { m_choiceTimer.start(0); });
  connect(&m_choiceTimer, &QTimer::timeout, this, &SetsMenu::showChoice);
  connect(m_list, &QComboBox::activated, this, [this](int index) {
    choose(index > 0 ? m_list->itemData(index).toString() : QString());
  });
  takeSets();
}

void SetsMenu::build() {
  const auto [column, line] = LabelledLine(*this, tr("Set"));
  m_list->setFocusPolicy(Qt::TabFocus);
  m_list->setAccessibleName(tr("Set of Values"));
  m_list->setObjectName(QStringLiteral("valueSets"));
  m_list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  widgets::leaveWheelToPane(*m_list);
  m_name->setAccessibleName(tr("Name of the Set"));
  m_name->setObjectName(QStringLiteral("valueSetName"));
  m_name->setMaxLength(static_cast<int>(ValueSets::longestName));
  m_name->installEventFilter(this);
  m_name->hide();
  m_more->setIcon(widgets::TYStyleKit::image(QStringLiteral("More")));
  m_more->setIconSize({16, 16});
  m_more->setFixedSize(lineHeight, lineHeight);
  m_more->setAutoRaise(true);
  m_more->setFocusPolicy(Qt::TabFocus);
  m_more->setAccessibleName(tr("Sets of Values"));
  widgets::leaveSpaceToWindow(*m_more);
  // Not as the button's menu: its arrow would lie over the glyph.
  connect(m_more, &QToolButton::clicked, m_menu, [this] {
    const QSize size = m_menu->sizeHint();
    m_menu->popup(m_more->mapToGlobal(QPoint(m_more->width() - size.width(), m_more->height())));
  });
  line->addWidget(m_list, 1);
  line->addWidget(m_name, 1);
  line->addWidget(m_more);
  m_problem->setTextFormat(Qt::PlainText);
  m_problem->setWordWrap(true);
  m_problem->setContentsMargins(FieldRow::labelWidth + FieldRow::gap, 0, FieldRow::margin, 0);
  m_problem->hide();
  column->addWidget(m_problem);
}

void SetsMenu::fillMenu() {
  m_menu->setToolTipsVisible(true);
  m_save = m_menu->addAction(tr("Save as Set..."), this, [this] { askName(Naming::NewSet); });
  m_replace = m_menu->addAction(tr("Replace Set"), this, [this] { save(m_current); });
  m_menu->addSeparator();
  m_rename = m_menu->addAction(tr("Rename..."), this, [this] { askName(Naming::Rename); });
  m_remove = m_menu->addAction(tr("Remove"), this, &SetsMenu::remove);
  m_menu->addSeparator();
  m_thumbnail = m_menu->addAction(tr("Use for Thumbnail"));
  m_thumbnail->setCheckable(true);
  connect(m_thumbnail, &QAction::triggered, this, &SetsMenu::useForThumbnail);
}

void SetsMenu::setDocument(document::CompositionDocument* document) {
  m_document = document;
  m_observed = {};
  m_current.clear();
  if (document) m_observed = document->observeValueSets([this](const auto&) { takeSets(); });
  endNaming(false);
  takeSets();
}

void SetsMenu::documentWillClose() {
  m_observed = {};
  m_document = nullptr;
  endNaming(false);
  showSets();
}

void SetsMenu::takeSets() {
  m_sets = m_document ? m_document->valueSets() : ValueSets();
  m_folder = m_document ? m_document->fileURL().toLocalFile() : QString();
  if (!m_sets.named(m_current)) m_current.clear();
  showSets();
}

void SetsMenu::showSets() {
  const QSignalBlocker quiet(m_list);
  m_list->clear();
  m_list->addItem(tr("Values of the File"));
  if (!m_sets.isEmpty()) m_list->insertSeparator(1);
  for (const QString& name : m_sets.names()) m_list->addItem(name, name);
  showChoice();
}

/// The set that was chosen, or a word for values of one's own.
void SetsMenu::showChoice() {
  const QJsonObject filled = m_model.filledIn();
  if (m_current.isEmpty() && !filled.isEmpty())
    for (const ValueSet& set : m_sets.list())
      if (withWholePaths(set.values) == filled) {
        m_current = set.name;
        m_filled = filled;
      }
  const bool isAsFile = filled.isEmpty();
  const bool isAsChosen = !m_current.isEmpty() && filled == m_filled;
  m_list->setPlaceholderText(m_current.isEmpty() ? tr("Own Values")
                                                 : tr("%1, Changed").arg(m_current));
  m_list->setCurrentIndex(isAsChosen ? m_list->findData(m_current) : isAsFile ? 0 : -1);
  const QString closed =
      m_document ? QString()
                 : tr("The document was closed: its sets can be chosen, but not changed.");
  const QString unchosen = tr("Choose a set first.");
  const bool hasSet = !m_current.isEmpty();
  m_save->setEnabled(m_document != nullptr);
  m_save->setToolTip(closed);
  m_more->setToolTip(m_document ? tr("Keep What Is Filled In") : closed);
  for (QAction* action : {m_replace, m_rename, m_remove, m_thumbnail}) {
    action->setEnabled(m_document && hasSet);
    action->setToolTip(!m_document ? closed : hasSet ? QString() : unchosen);
  }
  m_replace->setText(
      hasSet ? tr("Replace “%1”").arg(QString(m_current).replace(u'&', QLatin1String("&&")))
             : tr("Replace Set"));
  m_thumbnail->setChecked(hasSet && m_sets.thumbnailName() == m_current);
}

void SetsMenu::choose(const QString& name) {
  tell({});
  const ValueSet* set = m_sets.named(name);
  m_current = set ? name : QString();
  const QStringList wrong =
      m_model.fill(set ? set->values : QJsonObject(), m_folder, m_model.keys());
  m_filled = m_model.filledIn();
  tell(wrong.join(u'\n'));
  showChoice();
}

template <typename Change>
bool SetsMenu::change(Change act) {
  if (!m_document) return false;
  ValueSets sets = m_sets;
  if (const foundation::Result<void> changed = act(sets); !changed) {
    tell(changed.error().text());
    return false;
  }
  return keep(sets);
}

bool SetsMenu::keep(const ValueSets& sets) {
  const auto kept = m_document->setValueSets(sets, m_model.pictureKeys());
  tell(kept ? QString() : kept.error().text());
  takeSets();
  return true;
}

void SetsMenu::save(const QString& name) {
  const ValueSet set{name, m_model.filledIn()};
  const QString before = std::exchange(m_current, name);
  if (change([&](ValueSets& sets) { return sets.put(set); }))
    takePictures();
  else
    m_current = before;
  showChoice();
}

/// Those in the document, which were copied there: the files that were chosen may go away.
void SetsMenu::takePictures() {
  const ValueSet* set = m_sets.named(m_current);
  const QJsonObject kept = withWholePaths(set ? set->values : QJsonObject());
  for (const QString& key : m_model.pictureKeys())
    if (const QString path = kept.value(key).toString(); !path.isEmpty())
      m_model.setPicturePath(key, path);
  m_filled = m_model.filledIn();
}

QJsonObject SetsMenu::withWholePaths(QJsonObject values) const {
  for (const QString& key : m_model.pictureKeys())
    if (const QString name = values.value(key).toString(); !name.isEmpty())
      values[key] = QDir::cleanPath(QDir(m_folder).absoluteFilePath(name));
  return values;
}

void SetsMenu::rename(const QString& to) {
  const QString from = std::exchange(m_current, to);
  if (!change([&](ValueSets& sets) { return sets.rename(from, to); })) m_current = from;
  showChoice();
}

void SetsMenu::remove() {
  (void)change([this](ValueSets& sets) -> foundation::Result<void> {
    sets.remove(m_current);
    return {};
  });
}

void SetsMenu::useForThumbnail(bool uses) {
  const bool isKept =
      change([&](ValueSets& sets) { return sets.setThumbnailName(uses ? m_current : QString()); });
  if (!isKept || m_document->fileURL().isEmpty()) return;
  if (const auto made = m_document->renewThumbnail(); !made) tell(made.error().text());
}

void SetsMenu::askName(Naming naming) {
  if (!m_document) return;
  m_naming = naming;
  m_list->hide();
  m_name->show();
  m_name->setText(naming == Naming::Rename ? m_current : m_sets.freeName(tr("Set")));
  m_name->selectAll();
  m_name->setFocus(Qt::OtherFocusReason);
}

void SetsMenu::endNaming(bool keeps) {
  const Naming naming = m_naming;
  if (naming == Naming::Nothing) return;
  const QString name = m_name->text().trimmed();
  if (keeps && naming == Naming::NewSet && m_sets.named(name))
    tell(tr("There is a set “%1” already.").arg(name));
  else if (keeps && naming == Naming::NewSet)
    save(name);
  else if (keeps && name != m_current)
    rename(name);
  else
    tell({});
  const bool isDone = m_problem->isHidden();
  m_name->setProperty("invalid", !isDone);
  m_name->update();
  if (!isDone && keeps) return;
  m_naming = Naming::Nothing;
  m_name->hide();
  m_list->show();
  if (window()) window()->setFocus();
}

bool SetsMenu::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
    QMetaObject::invokeMethod(
        this, [this] { endNaming(false); }, Qt::QueuedConnection);
    return false;
  }
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!isReturn && key != Qt::Key_Escape) return false;
  endNaming(isReturn);
  return true;
}

void SetsMenu::tell(const QString& problem) {
  m_problem->setText(problem);
  m_problem->setVisible(!problem.isEmpty());
}

}  // namespace preview
