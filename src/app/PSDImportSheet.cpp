#include "app/PSDImportSheet.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/PSDLayerList.h"
#include "app/PSDView.h"
#include "document/psd/PSDLayer.h"
#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "widgets/TokenLabel.h"

namespace app {

using document::PSDLayer;
using document::PSDLayerImporter;
using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;

namespace {

constexpr int sheetWidth = 740;
constexpr int columnGap = 16;

}  // namespace

PSDImportSheet::PSDImportSheet(QWidget* window, model::Composition& composition,
                               std::unique_ptr<PSDLayerImporter> importer, QString imageComponent)
    : TYSheet(window),
      m_composition(composition),
      m_importer(std::move(importer)),
      m_imageComponent(std::move(imageComponent)),
      m_view(new PSDView),
      m_layers(new PSDLayerList(*m_importer)),
      m_separate(new QRadioButton(tr("Separate components, one for each layer"))) {
  setAccessibleName(tr("Import layered image"));
  setSheetWidth(sheetWidth);
  const QSize size = m_importer->PSDImageSize().toSize();
  body()->addWidget(new TokenLabel(tr("Import %1").arg(m_importer->filename()),
                                   TextStyle::SheetTitle, Token::Text));
  body()->addWidget(new TokenLabel(
      tr("%1 × %2, %3 layers").arg(size.width()).arg(size.height()).arg(m_layers->count()),
      TextStyle::Body, Token::Text2));
  auto* columns = new QHBoxLayout;
  columns->setSpacing(columnGap);
  m_view->setImporter(m_importer.get());
  m_view->setFixedSize(m_view->sizeHint());
  columns->addWidget(m_view, 0, Qt::AlignTop);
  addLayerList(*columns);
  body()->addLayout(columns);
  auto* together = new QRadioButton(tr("One flat picture"));
  m_separate->setChecked(true);
  auto* choices = new QWidget;
  auto* row = new QHBoxLayout(choices);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(columnGap);
  row->addWidget(m_separate);
  row->addWidget(together);
  setFooterWidget(choices);
  connect(addButton(tr("Cancel")), &QPushButton::clicked, this, [this] { closeSheet(); });
  m_import = addButton(tr("Import"), true);
  connect(m_import, &QPushButton::clicked, this, [this] {
    import(m_separate->isChecked());
    closeSheet();
  });
  connect(m_layers, &PSDLayerList::ticksChanged, this, &PSDImportSheet::showCount);
  connect(m_separate, &QRadioButton::toggled, this, &PSDImportSheet::showCount);
  showCount();
}

PSDImportSheet::~PSDImportSheet() {
  m_view->setImporter(nullptr);
}

void PSDImportSheet::addLayerList(QHBoxLayout& columns) {
  auto* column = new QVBoxLayout;
  column->setSpacing(8);
  auto* head = new QHBoxLayout;
  head->addWidget(new TokenLabel(tr("Layers"), TextStyle::Title, Token::Text), 1);
  m_all = new QCheckBox(tr("All layers"));
  connect(m_all, &QCheckBox::clicked, this, [this] {
    m_layers->tickAll(m_layers->tickedCount() < m_layers->count());
    showCount();
  });
  head->addWidget(m_all);
  column->addLayout(head);
  column->addWidget(m_layers);
  column->addStretch(1);
  columns.addLayout(column, 1);
}

void PSDImportSheet::showCount() {
  const int ticked = m_layers->tickedCount();
  m_all->setCheckState(ticked == 0                   ? Qt::Unchecked
                       : ticked == m_layers->count() ? Qt::Checked
                                                     : Qt::PartiallyChecked);
  m_import->setEnabled(ticked > 0);
  m_import->setText(!m_separate->isChecked() ? tr("Import Picture")
                    : ticked == 1            ? tr("Import 1 Layer")
                                             : tr("Import %1 Layers").arg(ticked));
}

void PSDImportSheet::import(bool asSeparateComponents) {
  QStringList warnings = m_importer->warnings();
  const store::UndoStep step(*m_composition.context(), tr("Import Layers"));
  // In the middle of the picture, whatever sizes the two have.
  const QSizeF size = m_importer->PSDImageSize();
  const QPointF corner((m_composition.width() - size.width()) / 2,
                       (m_composition.height() - size.height()) / 2);
  if (!asSeparateComponents) {
    addImage(m_importer->combinedImageOfVisibleLayers(), m_importer->filename(), corner, 1,
             warnings);
  } else {
    // The lowest first, so that each lies above the one before.
    const auto& layers = m_importer->layers();
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer)
      if ((*layer)->visible())
        addImage((*layer)->image(), (*layer)->name(), corner + (*layer)->origin(),
                 (*layer)->opacity(), warnings);
  }
  Q_EMIT imported(warnings);
}

void PSDImportSheet::addImage(const QImage& image, const QString& title, QPointF origin,
                              double opacity, QStringList& warnings) {
  model::QuartzComponent* component = m_composition.addComponenWithQuartzCompositionFile(
      m_imageComponent, {{QStringLiteral("Image"), image}}, warnings);
  if (!component) return;
  component->setTitle(title);
  component->setWidth(image.width());
  component->setHeight(image.height());
  component->setOriginX(origin.x());
  component->setOriginY(origin.y());
  component->setOpacity(opacity);
}

}  // namespace app
