#pragma once

#include <QCoreApplication>
#include <optional>

#include "preview/BackdropSource.h"
#include "preview/PictureSaver.h"

class QAction;
class QMenu;

namespace preview {

/// The commands for looking at the picture, as a menu that shows how they stand.
class PictureMenu {
  Q_DECLARE_TR_FUNCTIONS(PictureMenu)

 public:
  struct State {
    PictureOptions options;
    int zoom = 0;  ///< percent or fit
    bool hasPicture = false;
    bool isInterlaced = false;
  };
  struct Commands {
    std::function<void(int percent)> zoom;
    std::function<void(const PictureOptions::Change&)> change;
    std::function<void(BackdropSource::Kind, const QString& path)> showFile;
    std::function<void(BackdropSource::Kind)> chooseFile;
    std::function<void()> chooseColor;
    std::function<void(PictureSaver::Part)> save;
  };

  PictureMenu(QMenu& menu, State state, Commands commands);
  void addZoom();
  void addAll();

 private:
  /// A choice is on or off; what does something is neither.
  QAction* add(QMenu& menu, const QString& text, std::optional<bool> isOn,
               const std::function<void()>& run, int key = 0);
  void addChange(QMenu& menu, const QString& text, bool isOn, const PictureOptions::Change& apply,
                 int key = 0);
  void addBackdrops(QMenu& menu);
  void addFile(QMenu& menu, BackdropSource::Kind kind, const QString& path, bool isOn);
  void addChannels();
  void addSaving();

  QMenu& m_menu;
  const State m_state;
  const Commands m_commands;
};

}  // namespace preview
