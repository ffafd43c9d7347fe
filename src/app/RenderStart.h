#pragma once

#include <QCoreApplication>

#include "app/RenderChoices.h"

namespace app {

class TYWindowController;

/// Takes a window's document to the queue of what is rendered: asks how, asks before something is
/// replaced, and keeps what the graphic is like at that moment.
class RenderStart {
  Q_DECLARE_TR_FUNCTIONS(RenderStart)

 public:
  /// Opens the sheet of the choices that were made the last time.
  static void ask(TYWindowController& window);

 private:
  static void ask(TYWindowController& window, const RenderChoices& choices);
  static void take(TYWindowController& window, const RenderChoices& choices);
  static void start(TYWindowController& window, const RenderChoices& choices);
};

}  // namespace app
