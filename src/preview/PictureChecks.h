#pragma once

#include <QObject>

#include "model/Composition.h"
#include "preview/BackdropLoader.h"
#include "preview/PictureMenu.h"

class QKeyEvent;
class QMenu;

namespace preview {

class PreviewView;
class StatusRow;

/// What an operator looks at the picture with: zoom, key and fill, what lies behind it, safe areas,
/// and saving it. Joins the view with the row below it, menus and keys; options are kept.
class PictureChecks : public QObject {
  Q_OBJECT

 public:
  using Background = model::Composition::Background;
  /// Brings the graphic with or without the document's background. False when that cannot be had,
  /// which was told then.
  using Provide = std::function<bool(Background)>;

  PictureChecks(PreviewView& view, StatusRow& row, Provide provide);

  /// What the graphic is to be exported with.
  [[nodiscard]] Background background() const;
  [[nodiscard]] const PictureOptions& options() const { return m_options; }
  /// False when it cannot be had; then nothing changes.
  bool setOptions(const PictureOptions& options);
  bool change(const PictureOptions::Change& apply);
  /// From a file, as soon as that has been read.
  void showFile(BackdropSource::Kind kind, const QString& path);
  /// What is played from its beginning now.
  void beginGraphic(const QString& name, bool isInterlaced);
  /// The same from its beginning.
  void beginAnew() { m_loader.beginAnew(); }
  /// False for keys that mean nothing here.
  bool takeKey(const QKeyEvent& event);
  /// Asks where to write the picture that is shown now.
  void save(PictureSaver::Part part);
  [[nodiscard]] PictureMenu::State menuState() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void observe();
  [[nodiscard]] PictureMenu::Commands commands();
  /// Above the widget of the row, or at the point.
  void popUp(bool isWhole, const QWidget& above);
  void popUp(const QPoint& globalPoint);
  [[nodiscard]] QMenu* made(bool isWhole);
  void setZoom(int percent);
  void showScale();
  void showChannel();
  bool moveByKey(int key);
  void takeFile(BackdropSource::Kind kind, const QString& path);
  void takeFailure(BackdropSource::Kind kind, const foundation::Error& error);
  void chooseFile(BackdropSource::Kind kind);
  void chooseColor();
  /// In the row, or over the picture where that has the screen for itself.
  void tell(const QString& title, const QString& text);

  PreviewView& m_view;
  StatusRow& m_row;
  const Provide m_provide;
  PictureOptions m_options;
  BackdropLoader m_loader;
  QString m_name;
  bool m_isInterlaced = false;
};

}  // namespace preview
