#pragma once

#include <memory>
#include <string>

namespace desktop {

/// A person's hand on mouse and keyboard: sends events to the X server as a device would. Has a
/// connection of its own, so that it can work on a thread while the program under test is busy with
/// a menu or with dragging. Positions are pixels of the screen.
class Hand {
 public:
  Hand();
  ~Hand();

  /// In steps, as hands do.
  void move(int x, int y);
  void press(int button = 1);
  void release(int button = 1);
  void click(int x, int y, int button = 1);
  void doubleClick(int x, int y);
  void drag(int fromX, int fromY, int toX, int toY);
  /// Notches of the wheel, away from the person when positive.
  void wheel(int notches);
  /// "a", "Right", "ctrl+shift+z": names of the X key symbols, lower-case modifiers before them.
  void key(const std::string& combination);
  void hold(const std::string& modifier);
  void letGo(const std::string& modifier);
  /// Characters of ASCII.
  void type(const std::string& text);
  /// Sends a client message of this type and number to the window, behind all that was done before:
  /// whoever gets it has got the rest.
  void mark(unsigned long window, const char* type, int number);
  static void pause(int milliseconds);

 private:
  struct Connection;
  std::unique_ptr<Connection> m_connection;
  int m_x = 0;
  int m_y = 0;
};

}  // namespace desktop
