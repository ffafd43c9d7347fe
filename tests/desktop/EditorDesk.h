#pragma once

#include <QTemporaryDir>
#include <QWindow>
#include <functional>

#include "app/AppDelegate.h"
#include "app/TYWindowController.h"
#include "desktop/Hand.h"

class QLineEdit;
class QMenu;

namespace canvas {
class CompositionView;
}
namespace inspector {
class InspectorRow;
}
namespace model {
class Composition;
}

namespace desktop {

/// The editor on a real screen, with a person at it: settings and recovery data of its own, a hand,
/// and eyes that find things. What the hand does is waited for, what follows from it is waited for
/// by condition; so it works on a slow machine, only slower.
class EditorDesk {
 public:
  EditorDesk();
  ~EditorDesk();

  // The program
  [[nodiscard]] app::AppDelegate& editor() const { return *m_delegate; }
  /// Of the last document.
  [[nodiscard]] app::TYWindowController& window() const;
  [[nodiscard]] model::Composition& graphic() const;
  [[nodiscard]] canvas::CompositionView& view() const;
  [[nodiscard]] QString path(const char* name) const;
  /// Puts the window of the last document where all of it is seen.
  void useWindow();

  // The hand
  /// The hand works while the program runs. Returns when the program has got all of it.
  void perform(const std::function<void(Hand&)>& work);
  void key(const char* combination, int times = 1);
  void type(const QString& text);
  void click(const QPoint& point);
  void doubleClick(const QPoint& point);
  void drag(const QPoint& from, const QPoint& to);
  /// Brings it into view where it can be scrolled, and clicks on its middle.
  void click(QWidget& widget);
  /// Replaces the text of a field.
  void fill(QLineEdit& field, const QString& text);

  /// False, and a failure that says what was waited for, when it does not come.
  static bool waitFor(const std::function<bool()>& condition, const char* what);
  /// Lets the program do what it put off.
  static void settle();

  // Where things are on the screen
  [[nodiscard]] static QPoint middleOf(const QWidget& widget);
  [[nodiscard]] QPoint pixel(const QPointF& ofPicture) const;
  /// Scrolls to it.
  [[nodiscard]] QPoint libraryFile(const QString& name);
  [[nodiscard]] QPoint tool(const QString& name) const;
  /// The title of a component's row in the timeline.
  [[nodiscard]] QPoint timelineTitle(const QString& title) const;
  void choose(const QMenu& menu, const QString& text);
  void openMenu(const QString& title);
  [[nodiscard]] static QMenu& openedMenu();
  /// Types into the file dialog that opens.
  void giveFile(const QString& file);

 private:
  class Marks;
  void reveal(QWidget& widget);
  void turnWheel(const QWidget& over, int notches);

  QTemporaryDir m_folder;
  foundation::UserDefaults m_defaults;
  std::unique_ptr<app::AppDelegate> m_delegate;
  Hand m_hand;
  QWindow m_post;  ///< gets the hand's marks; never seen
  std::unique_ptr<Marks> m_marks;
};

}  // namespace desktop
