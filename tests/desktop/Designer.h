#pragma once

#include <QRectF>
#include <vector>

#include "desktop/EditorDesk.h"

class QAbstractButton;

namespace desktop {

/// What a designer does with the library, the inspector and the transport, row by row, with the
/// hand at a desk. Rows are called by their labels, as they are seen.
class Designer {
 public:
  /// A value at the time of a moment. Rows with two fields count them from 0.
  struct Key {
    const char* row;
    double value;
    int field = 0;
  };
  struct Moment {
    const char* time;  ///< as it is typed
    std::vector<Key> keys;
  };

  explicit Designer(EditorDesk& desk) : m_desk(desk) {}

  /// Drags it out of the library onto the picture and types a title.
  model::QuartzComponent& add(const QString& libraryFile, const QString& title);
  /// A copy of what is selected.
  model::QuartzComponent& duplicate(const QString& title);
  /// Left, bottom, width and height.
  void place(double x, double y, double width, double height);
  void setText(const QString& row, const QString& text);
  void setNumber(const QString& row, double value, int field = 0);
  /// As a time is typed.
  void setTime(const QString& row, const QString& text);
  void setColour(const QString& row, const QString& hex);
  void pick(const QString& row, const QString& item);
  void setPicture(const QString& row, const QString& file);
  /// In the pane of permissions.
  void publish(const QString& attribute);
  void showTab(const QString& name);

  /// Types a time into the transport's field.
  void goTo(const char* time);
  /// Sets key frames at the diamonds and by typing values.
  void animate(const std::vector<Moment>& moments);
  /// At a time, named in the pane of the document.
  void setStopFrame(const char* time, const QString& name);

 private:
  [[nodiscard]] inspector::InspectorRow* row(const QString& label);
  [[nodiscard]] QLineEdit* field(const QString& row, int index);
  void setKey(const Key& key);
  [[nodiscard]] model::QuartzComponent& selected() const;

  EditorDesk& m_desk;
};

}  // namespace desktop
