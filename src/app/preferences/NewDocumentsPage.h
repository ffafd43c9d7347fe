#pragma once

#include "app/preferences/PreferenceForm.h"
#include "foundation/UserDefaults.h"

class QLabel;
class QPushButton;

namespace widgets {
class TYColorWell;
class TYImageWell;
class TYPathControl;
}  // namespace widgets

namespace app {

/// What a new document begins with: format, background, font.
class NewDocumentsPage : public PreferenceForm {
  Q_OBJECT

 public:
  explicit NewDocumentsPage(foundation::UserDefaults& defaults);

 Q_SIGNALS:
  void defaultFormatChanged();

 private:
  void addFormat();
  void addBackground();
  void addMovie();
  void addFont();
  void showBackground();
  void takeImage(const QImage& image);
  void chooseImage();
  void chooseMovie();
  void chooseFont();
  void showFont();

  foundation::UserDefaults& m_defaults;
  widgets::TYColorWell* m_color = nullptr;
  widgets::TYImageWell* m_image = nullptr;
  widgets::TYPathControl* m_movie = nullptr;
  QPushButton* m_noMovie = nullptr;
  QLabel* m_font = nullptr;
};

}  // namespace app
