#include "inspector/panes/PublishedKeysPane.h"

#include <QListWidget>
#include <QVBoxLayout>

#include "foundation/UserDefaults.h"
#include "inspector/InspectorContext.h"
#include "inspector/rows/InspectorRow.h"
#include "inspector/rows/KeyFrameControl.h"
#include "model/Composition.h"
#include "model/export/PlayoutExport.h"
#include "quartz/QuartzComposition.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"

namespace inspector {

using quartz::QuartzComposition;

namespace {

constexpr int restInMilliseconds = 400;
constexpr int listHeight = 180;

QStringList publishedKeys(const QuartzComposition& file) {
  QStringList keys;
  if (!file.rootPatch()) return keys;
  const foundation::PropertyDictionary data = file.rootPatch()->patchDataForFileData();
  const auto& state = data.value(u"state").dictionary();
  for (const auto& entry : state.value(u"publishedInputPorts").array())
    keys.append(entry.dictionary().value(u"key").toString());
  keys.removeDuplicates();
  return keys;
}

}  // namespace

PublishedKeysPane::PublishedKeysPane(InspectorContext& context)
    : InspectorPane(context, tr("Published keys")),
      m_message(new widgets::TokenLabel({}, widgets::TextStyle::Small, widgets::Token::Text3)),
      m_list(new QListWidget) {
  m_timer.setSingleShot(true);
  connect(&m_timer, &QTimer::timeout, this, &PublishedKeysPane::update);
  m_message->setWordWrap(true);
  m_message->setContentsMargins(InspectorRow::margin, 2, InspectorRow::margin, 4);
  m_list->setFixedHeight(listHeight);
  m_list->setAccessibleName(tr("Published keys"));
  m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  auto* around = new QVBoxLayout;
  around->setContentsMargins(InspectorRow::margin, 0, InspectorRow::margin, 4);
  around->addWidget(m_list);
  column()->addWidget(m_message);
  column()->addLayout(around);
}

void PublishedKeysPane::letGo() {
  m_timer.stop();
  m_list->clear();
}

void PublishedKeysPane::refresh() {
  if (header().isOpen()) m_timer.start(restInMilliseconds);
}

QStringList PublishedKeysPane::keysOnDisk() const {
  const QUrl& exported = context().composition()->fileURL();
  if (!exported.isLocalFile()) return {};
  const auto file = QuartzComposition::compositionWithFile(exported.toLocalFile());
  return file ? publishedKeys(**file) : QStringList();
}

void PublishedKeysPane::update() {
  if (!context().composition() || !isVisible()) return;
  const model::ExportOptions options{.avoidSpacesInPortLabels =
                                         foundation::UserDefaults::standard()
                                             .value(QStringLiteral("avoidSpacesInPortLabels"))
                                             .toBool()};
  model::PlayoutExport playout(*context().composition(), model::StandardComponents::located(),
                               options, model::Composition::standardKey);
  if (const auto built = playout.build(); !built) {
    m_list->clear();
    m_message->setText(tr("The export would fail: %1").arg(built.error().text()));
    header().setNote({});
    return;
  }
  const QStringList keys = publishedKeys(playout.file());
  QStringList lost = keysOnDisk();
  for (const QString& key : keys) lost.removeAll(key);
  show(keys, lost);
}

void PublishedKeysPane::show(const QStringList& keys, const QStringList& lost) {
  m_list->clear();
  for (const QString& key : lost) {
    auto* item = new QListWidgetItem(
        widgets::TYStyleKit::image(QStringLiteral("Warning"), widgets::Token::Warning), key);
    item->setForeground(widgets::TYStyleKit::colour(widgets::Token::Warning));
    item->setToolTip(tr("The exported file has this key; the next export will not."));
    m_list->addItem(item);
  }
  m_list->addItems(keys);
  m_message->setText(
      lost.isEmpty() ? tr("As the export will name them.")
                     : tr("Keys that were exported before and will be gone: systems that fill them "
                          "in miss them. Did a title change?"));
  header().setNote(QString::number(keys.size()));
}

}  // namespace inspector
