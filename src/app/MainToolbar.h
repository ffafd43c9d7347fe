#pragma once

#include <QWidget>

#include "canvas/ToolbarComponents.h"

class QComboBox;
class QHBoxLayout;

namespace widgets {
class TYSegmentedControl;
}

namespace app {

class TYWindowController;

/// The row of tools above the canvas: components to add, alignment, stacking, the size of the
/// picture on the screen, stop frame, poster frame, preview.
class MainToolbar : public QWidget {
  Q_OBJECT

 public:
  explicit MainToolbar(TYWindowController& window);

  void showZoomMode(qint32 zoomMode);
  void setAlignEnabled(bool canAlign, bool canDistribute);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void addComponents(QHBoxLayout& row);
  void addComponent(QHBoxLayout& row, const canvas::ToolbarComponents::Entry& component);
  void addAlignment(QHBoxLayout& row);
  void addZoom(QHBoxLayout& row);
  struct Tool {
    QString identifier;  ///< of the command
    QString glyph;
    QString label;
  };
  void addActions(QHBoxLayout& row, std::initializer_list<Tool> tools);

  TYWindowController& m_window;
  widgets::TYSegmentedControl* m_align = nullptr;
  widgets::TYSegmentedControl* m_distribute = nullptr;
  QComboBox* m_zoom = nullptr;
  /// What gives way in narrow windows, in this order; the menus have it all.
  QList<QWidget*> m_givingWay;
};

}  // namespace app
