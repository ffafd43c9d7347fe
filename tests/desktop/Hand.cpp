#include "Hand.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace desktop {

namespace {

constexpr int stepTime = 4;  ///< milliseconds between the events of one movement
constexpr int steps = 6;
constexpr int keyTime = 3;     ///< milliseconds that a key stays where it is
constexpr int dropTime = 120;  ///< milliseconds; where something is dropped is looked at before

KeySym symbolOf(const std::string& name) {
  if (name == "ctrl") return XK_Control_L;
  if (name == "shift") return XK_Shift_L;
  if (name == "alt") return XK_Alt_L;
  return XStringToKeysym(name.c_str());
}

/// Characters whose key symbols have other names than themselves.
KeySym symbolOf(char character) {
  return static_cast<KeySym>(static_cast<unsigned char>(character));
}

}  // namespace

struct Hand::Connection {
  Display* display = XOpenDisplay(nullptr);
  Connection() {
    if (!display) throw std::runtime_error("there is no X display");
  }
  ~Connection() { XCloseDisplay(display); }

  void send(KeySym symbol, bool down) const {
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), down, CurrentTime);
    XSync(display, False);
    pause(keyTime);
  }
};

Hand::Hand() : m_connection(std::make_unique<Connection>()) {}
Hand::~Hand() = default;

void Hand::pause(int milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void Hand::move(int x, int y) {
  const int startX = m_x;
  const int startY = m_y;
  for (int i = 1; i <= steps; ++i) {
    m_x = startX + (x - startX) * i / steps;
    m_y = startY + (y - startY) * i / steps;
    XTestFakeMotionEvent(m_connection->display, -1, m_x, m_y, CurrentTime);
    XSync(m_connection->display, False);
    pause(stepTime);
  }
}

void Hand::press(int button) {
  XTestFakeButtonEvent(m_connection->display, static_cast<unsigned>(button), True, CurrentTime);
  XSync(m_connection->display, False);
  pause(stepTime);
}

void Hand::release(int button) {
  XTestFakeButtonEvent(m_connection->display, static_cast<unsigned>(button), False, CurrentTime);
  XSync(m_connection->display, False);
  pause(stepTime);
}

void Hand::click(int x, int y, int button) {
  move(x, y);
  press(button);
  release(button);
}

void Hand::doubleClick(int x, int y) {
  click(x, y);
  press();
  release();
}

void Hand::drag(int fromX, int fromY, int toX, int toY) {
  move(fromX, fromY);
  press();
  move(toX, toY);
  pause(dropTime);
  release();
}

void Hand::wheel(int notches) {
  const int button = notches > 0 ? 4 : 5;
  for (int i = 0; i < std::abs(notches); ++i) {
    press(button);
    release(button);
  }
}

void Hand::hold(const std::string& modifier) {
  m_connection->send(symbolOf(modifier), true);
}

void Hand::letGo(const std::string& modifier) {
  m_connection->send(symbolOf(modifier), false);
}

void Hand::key(const std::string& combination) {
  std::vector<std::string> names;
  size_t start = 0;
  for (size_t plus; (plus = combination.find('+', start)) != std::string::npos; start = plus + 1)
    names.push_back(combination.substr(start, plus - start));
  for (const std::string& modifier : names) hold(modifier);
  const std::string name = combination.substr(start);
  m_connection->send(symbolOf(name), true);
  m_connection->send(symbolOf(name), false);
  for (auto modifier = names.rbegin(); modifier != names.rend(); ++modifier) letGo(*modifier);
}

void Hand::type(const std::string& text) {
  for (const char character : text) {
    const KeySym symbol = symbolOf(character);
    const KeyCode code = XKeysymToKeycode(m_connection->display, symbol);
    // The second level of a key is the one with Shift.
    const bool isShifted = XkbKeycodeToKeysym(m_connection->display, code, 0, 0) != symbol;
    if (isShifted) hold("shift");
    m_connection->send(symbol, true);
    m_connection->send(symbol, false);
    if (isShifted) letGo("shift");
  }
}

void Hand::mark(unsigned long window, const char* type, int number) {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(m_connection->display, type, False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = number;
  XSendEvent(m_connection->display, window, False, NoEventMask, &event);
  XSync(m_connection->display, False);
}

}  // namespace desktop
