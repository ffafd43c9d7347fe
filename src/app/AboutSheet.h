#pragma once

#include "widgets/TYSheet.h"

namespace app {

/// Name, version and licence of the program.
class AboutSheet : public widgets::TYSheet {
  Q_OBJECT

 public:
  explicit AboutSheet(QWidget* window);

 protected:
  void cancelled() override { closeSheet(); }
};

}  // namespace app
