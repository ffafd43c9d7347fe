#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace inspector {

class InspectorContext;

/// Typing into an editor as one undo step: it begins with the first character and ends when
/// something else begins, whatever that is: the editor loses the keyboard, the mouse is pressed
/// elsewhere, a shortcut of the window is used.
class TypingEdit : public QObject {
  Q_OBJECT

 public:
  TypingEdit(InspectorContext& context, QWidget& editor);
  ~TypingEdit() override;

  /// Call before each change that typing makes.
  void typed(const QString& stepName);
  void end();
  [[nodiscard]] bool isOpen() const { return m_open; }

 Q_SIGNALS:
  void ended();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool isInside(const QObject* object) const;

  InspectorContext& m_context;
  QWidget& m_editor;
  bool m_open = false;
};

}  // namespace inspector
