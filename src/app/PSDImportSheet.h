#pragma once

#include <memory>

#include "document/psd/PSDLayerImporter.h"
#include "widgets/TYSheet.h"

class QCheckBox;
class QHBoxLayout;
class QPushButton;
class QRadioButton;

namespace model {
class Composition;
}

namespace app {

class PSDLayerList;
class PSDView;

/// Asks how a layered image file is to be imported: each visible layer as a component of its own,
/// or all as one image. Then makes the components, in one undo step.
class PSDImportSheet : public widgets::TYSheet {
  Q_OBJECT

 public:
  /// Components are made of the component file for images. The composition must outlive the sheet.
  PSDImportSheet(QWidget* window, model::Composition& composition,
                 std::unique_ptr<document::PSDLayerImporter> importer, QString imageComponent);
  ~PSDImportSheet() override;

  void import(bool asSeparateComponents);

 Q_SIGNALS:
  void imported(const QStringList& warnings);

 protected:
  void cancelled() override { closeSheet(); }

 private:
  void addLayerList(QHBoxLayout& columns);
  void showCount();
  void addImage(const QImage& image, const QString& title, QPointF origin, double opacity,
                QStringList& warnings);

  model::Composition& m_composition;
  std::unique_ptr<document::PSDLayerImporter> m_importer;
  QString m_imageComponent;
  PSDView* m_view;
  PSDLayerList* m_layers;
  QRadioButton* m_separate;
  QCheckBox* m_all = nullptr;
  QPushButton* m_import = nullptr;
};

}  // namespace app
