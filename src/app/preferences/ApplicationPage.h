#pragma once

#include "app/preferences/PreferenceForm.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace app {

class ProgramServices;

/// What is over the picture, how the program looks, which messages it keeps to itself.
class ApplicationPage : public PreferenceForm {
  Q_OBJECT

 public:
  explicit ApplicationPage(ProgramServices& services);
  /// Settings may have changed elsewhere meanwhile.
  void refresh();

 private:
  void addCanvas();
  void addAppearance();
  void addPreview();
  void addMessages();

  ProgramServices& m_services;
  QCheckBox* m_safeAreas;
  QCheckBox* m_guides;
  QPushButton* m_showAgain;
  QLabel* m_hidden;
};

}  // namespace app
