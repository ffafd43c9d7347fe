#pragma once

#include "app/preferences/PreferenceForm.h"
#include "foundation/UserDefaults.h"

namespace app {

/// Where the library looks for files.
class LibraryPage : public PreferenceForm {
  Q_OBJECT

 public:
  explicit LibraryPage(foundation::UserDefaults& defaults);

 private:
  void addFolder(const QString& label, const QString& key);

  foundation::UserDefaults& m_defaults;
};

}  // namespace app
