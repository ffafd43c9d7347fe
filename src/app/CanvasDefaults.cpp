#include "app/CanvasDefaults.h"

#include "app/ProgramServices.h"
#include "document/CompositionDocument.h"
#include "foundation/UserDefaults.h"
#include "model/Composition.h"

namespace app {

namespace {

const QString showsRulers = QStringLiteral("showsRulers");
const QString showsSafeZones = QStringLiteral("showsSafeZones");
const QString locksGuides = QStringLiteral("guidesLocked");

}  // namespace

void CanvasDefaults::applyTo(const document::CompositionDocument& document) const {
  model::Composition* composition = document.composition();
  if (!composition) return;
  store::ObjectContext& context = *composition->context();
  const QVariant rulers = m_services.defaults().value(showsRulers);
  const QVariant zones = m_services.defaults().value(showsSafeZones);
  const bool hadChanges = context.hasChanges();
  {
    const store::UndoSuspension suspension(context);
    if (rulers.isValid()) composition->setShowsRulers(rulers.toBool());
    if (zones.isValid()) composition->setShowsSafeZones(zones.toBool());
  }
  if (!hadChanges) context.markSaved();
}

void CanvasDefaults::setShowsRulers(bool shows) {
  store(showsRulers, shows);
}

void CanvasDefaults::setShowsSafeZones(bool shows) {
  store(showsSafeZones, shows);
}

bool CanvasDefaults::guidesLocked() const {
  return m_services.defaults().value(locksGuides).toBool();
}

void CanvasDefaults::setGuidesLocked(bool locked) {
  m_services.defaults().setValue(locked, locksGuides);
}

void CanvasDefaults::store(const QString& key, bool value) {
  const QVariant stored = m_services.defaults().value(key);
  if (stored.isValid() && stored.toBool() == value) return;
  m_services.defaults().setValue(value, key);
  for (const document::CompositionDocument* document : m_services.documents()) applyTo(*document);
}

}  // namespace app
