#pragma once

#include "foundation/UserDefaults.h"

namespace document {

/// The messages that the user does not want to see again. Each is kept under a key of its own.
class HiddenMessages {
 public:
  explicit HiddenMessages(foundation::UserDefaults& defaults) : m_defaults(defaults) {}

  [[nodiscard]] int count() const;
  void showAllAgain();

 private:
  foundation::UserDefaults& m_defaults;
};

}  // namespace document
