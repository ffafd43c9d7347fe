#include "app/PSDImportSheet.h"

#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/PSDView.h"
#include "document/psd/PSDLayer.h"
#include "model/Composition.h"
#include "store/ObjectContext.h"
#include "widgets/TokenLabel.h"

namespace app {

using document::PSDLayer;
using document::PSDLayerImporter;

namespace {
constexpr int listHeight = 120;
}

PSDImportSheet::PSDImportSheet(QWidget* window, model::Composition& composition,
                               std::unique_ptr<PSDLayerImporter> importer, QString imageComponent)
    : TYSheet(window),
      m_composition(composition),
      m_importer(std::move(importer)),
      m_imageComponent(std::move(imageComponent)),
      m_view(new PSDView) {
  setAccessibleName(tr("Import layered image"));
  body()->addWidget(new widgets::TokenLabel(tr("Import \"%1\"").arg(m_importer->filename()),
                                            widgets::TextStyle::SheetTitle, widgets::Token::Text));
  m_view->setImporter(m_importer.get());
  m_view->setFixedHeight(m_view->sizeHint().height());
  body()->addWidget(m_view);
  addLayerList();
  m_separate = new QRadioButton(tr("Each visible layer as a component"));
  auto* together = new QRadioButton(tr("All visible layers as one image"));
  m_separate->setChecked(true);
  body()->addWidget(m_separate);
  body()->addWidget(together);
  connect(addButton(tr("Cancel")), &QPushButton::clicked, this, [this] { closeSheet(); });
  connect(addButton(tr("Import"), true), &QPushButton::clicked, this, [this] {
    import(m_separate->isChecked());
    closeSheet();
  });
}

PSDImportSheet::~PSDImportSheet() {
  m_view->setImporter(nullptr);
}

void PSDImportSheet::addLayerList() {
  auto* list = new QListWidget;
  list->setAccessibleName(tr("Layers"));
  list->setFixedHeight(listHeight);
  for (const auto& layer : m_importer->layers()) {
    auto* item = new QListWidgetItem(layer->name(), list);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    item->setCheckState(layer->visible() ? Qt::Checked : Qt::Unchecked);
  }
  connect(list, &QListWidget::itemChanged, this, [this, list](QListWidgetItem* item) {
    m_importer->layers()[static_cast<size_t>(list->row(item))]->setVisible(item->checkState() ==
                                                                           Qt::Checked);
  });
  body()->addWidget(list);
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
