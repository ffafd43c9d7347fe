#pragma once

#include "app/DocumentFindings.h"

namespace model {
class QuartzComponent;
}

namespace app {

class TYWindowController;

/// Does what the action of a finding promises: asks for the file or the font that takes the place
/// of a missing one, or shows the component.
class FindingsMending {
 public:
  explicit FindingsMending(TYWindowController& window) : m_window(window) {}

  void act(const DocumentFindings::Group& group);

 private:
  void locateFile(const QString& missing);
  void replaceFont(const QString& missing);
  void show(model::QuartzComponent& component);

  TYWindowController& m_window;
};

}  // namespace app
