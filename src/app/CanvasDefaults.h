#pragma once

#include <QString>

namespace document {
class CompositionDocument;
}

namespace app {

class ProgramServices;

/// What the user wants to see over the picture, in all windows and the next time. Documents keep
/// the last state too; taking it over is no change of theirs.
class CanvasDefaults {
 public:
  explicit CanvasDefaults(ProgramServices& services) : m_services(services) {}

  /// A document that is shown takes over what the user chose last; nothing where he never chose.
  void applyTo(const document::CompositionDocument& document) const;
  /// Guides or safe areas are shown from now on, or no longer.
  void setShowsRulers(bool shows);
  void setShowsSafeZones(bool shows);
  [[nodiscard]] bool guidesLocked() const;
  void setGuidesLocked(bool locked);

 private:
  void store(const QString& key, bool value);

  ProgramServices& m_services;
};

}  // namespace app
