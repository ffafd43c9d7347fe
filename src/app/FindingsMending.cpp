#include "app/FindingsMending.h"

#include <QFileInfo>
#include <QFontDialog>

#include "app/TYWindowController.h"
#include "canvas/CompositionView.h"
#include "model/Composition.h"
#include "model/RichFontValue.h"
#include "model/maintenance/Replacement.h"
#include "runtime/text/FontResolver.h"
#include "widgets/FileChooser.h"

namespace app {

using model::CompositionFinding;

namespace {

QString fontOf(const model::AttributeValue& value) {
  if (const auto* font = value.as<model::FontValue>()) return font->name;
  const auto* rich = value.as<std::shared_ptr<const model::RichFontValue>>();
  return rich && *rich ? (*rich)->font().name : QString();
}

}  // namespace

void FindingsMending::act(const DocumentFindings::Group& group) {
  if (!m_window.composition()) return;
  const CompositionFinding& finding = group.finding;
  const store::ObjectContext& context = m_window.document().context();
  const auto* attribute = dynamic_cast<model::Attribute*>(context.objectWithId(finding.attribute));
  auto* component = dynamic_cast<model::QuartzComponent*>(context.objectWithId(finding.component));
  if (finding.code == QLatin1String("missing-file"))
    locateFile(attribute ? attribute->currentValue().toString()
                         : m_window.composition()->backgroundMovie());
  else if (finding.code == QLatin1String("missing-font") && attribute)
    replaceFont(fontOf(attribute->currentValue()));
  else if (component)
    show(*component);
}

void FindingsMending::locateFile(const QString& missing) {
  widgets::FileChooser::open(
      m_window, TYWindowController::tr("Locate %1").arg(QFileInfo(missing).fileName()),
      widgets::FileChooser::AnyFile, missing, [&window = m_window, missing](const QString& path) {
        if (window.composition())
          model::Replacement(*window.composition()).replaceFile(missing, path);
      });
}

void FindingsMending::replaceFont(const QString& missing) {
  auto* dialog = new QFontDialog(&m_window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(TYWindowController::tr("Replace \"%1\"").arg(missing));
  QObject::connect(dialog, &QFontDialog::fontSelected, &m_window,
                   [&window = m_window, missing](const QFont& font) {
                     if (window.composition())
                       model::Replacement(*window.composition())
                           .replaceFont(missing, runtime::FontResolver::nameOf(font));
                   });
  dialog->open();
}

void FindingsMending::show(model::QuartzComponent& component) {
  model::Composition& composition = *m_window.composition();
  for (model::QuartzComponent* other : composition.selectedComponents()) other->setSelected(false);
  component.setSelected(true);
  const double time = composition.editorTimepoint();
  if (time < component.startTime() || time > component.endTime())
    composition.setEditorTimepoint(component.startTime());
  m_window.view().setFocus();
}

}  // namespace app
