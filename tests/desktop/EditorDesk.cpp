#include "desktop/EditorDesk.h"

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>
#include <atomic>
#include <thread>

#include "canvas/CompositionView.h"
#include "library/TYLibraryController.h"
#include "model/Composition.h"
#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TimelinePanel.h"

namespace desktop {

namespace {

constexpr int patience = 30'000;  ///< milliseconds; what comes takes a fraction of it
constexpr int mostTurns = 60;     ///< of the wheel, to find something
constexpr const char* markType = "TESSARY_TEST_MARK";

QFileDialog* openedDialog() {
  auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
  return dialog && dialog->isActiveWindow() ? dialog : nullptr;
}

}  // namespace

/// Notes which marks of the hand have arrived.
class EditorDesk::Marks : public QAbstractNativeEventFilter {
 public:
  Marks() { QCoreApplication::instance()->installNativeEventFilter(this); }
  [[nodiscard]] int next() { return ++m_sent; }
  [[nodiscard]] bool allArrived() const { return m_arrived == m_sent; }
  void setWindow(unsigned window) { m_window = window; }

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override {
    if (type != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) return false;
    const auto* note = static_cast<const xcb_client_message_event_t*>(message);
    if (note->window != m_window) return false;
    m_arrived = static_cast<int>(note->data.data32[0]);
    return true;
  }

 private:
  unsigned m_window = 0;
  int m_sent = 0;
  int m_arrived = 0;
};

EditorDesk::EditorDesk()
    : m_folder(QDir::tempPath() + QStringLiteral("/desk")),
      m_defaults(path("defaults.conf")),
      m_marks(std::make_unique<Marks>()) {
  m_post.create();
  m_marks->setWindow(static_cast<unsigned>(m_post.winId()));
  m_defaults.setValue(QVariantMap(), QStringLiteral("windowState"));
  m_delegate =
      std::make_unique<app::AppDelegate>(m_defaults, document::RecoveryStore(path("state")));
  m_delegate->start({});
  useWindow();
}

EditorDesk::~EditorDesk() = default;

void EditorDesk::useWindow() {
  const QSize size(1900, 1040);
  window().setGeometry(QRect({0, 0}, size));
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window(), patience));
  waitFor([this, size] { return window().size() == size && view().isVisible(); }, "the window");
  settle();
}

app::TYWindowController& EditorDesk::window() const {
  return *m_delegate->windowOf(*m_delegate->controller().documents().last());
}

model::Composition& EditorDesk::graphic() const {
  return *window().composition();
}

canvas::CompositionView& EditorDesk::view() const {
  return window().view();
}

QString EditorDesk::path(const char* name) const {
  return m_folder.filePath(QString::fromLatin1(name));
}

bool EditorDesk::waitFor(const std::function<bool()>& condition, const char* what) {
  const bool came = QTest::qWaitFor(condition, patience);
  EXPECT_TRUE(came) << "waited in vain for: " << what;
  return came;
}

void EditorDesk::settle() {
  QTest::qWait(8);
}

void EditorDesk::perform(const std::function<void(Hand&)>& work) {
  const int number = m_marks->next();
  const WId post = m_post.winId();
  std::atomic<bool> done = false;
  std::thread thread([&] {
    work(m_hand);
    m_hand.mark(post, markType, number);
    done = true;
  });
  while (!done || !m_marks->allArrived()) QTest::qWait(1);
  thread.join();
  settle();
}

void EditorDesk::key(const char* combination, int times) {
  perform([&](Hand& hand) {
    for (int i = 0; i < times; ++i) hand.key(combination);
  });
}

void EditorDesk::type(const QString& text) {
  perform([&](Hand& hand) { hand.type(text.toStdString()); });
}

void EditorDesk::click(const QPoint& point) {
  perform([&](Hand& hand) { hand.click(point.x(), point.y()); });
}

void EditorDesk::doubleClick(const QPoint& point) {
  perform([&](Hand& hand) { hand.doubleClick(point.x(), point.y()); });
}

void EditorDesk::drag(const QPoint& from, const QPoint& to) {
  perform([&](Hand& hand) { hand.drag(from.x(), from.y(), to.x(), to.y()); });
}

void EditorDesk::turnWheel(const QWidget& over, int notches) {
  const QPoint middle = middleOf(over);
  perform([&](Hand& hand) {
    hand.move(middle.x(), middle.y());
    hand.wheel(notches);
  });
}

void EditorDesk::reveal(QWidget& widget) {
  QScrollArea* area = nullptr;
  for (QWidget* w = widget.parentWidget(); w && !area; w = w->parentWidget())
    area = qobject_cast<QScrollArea*>(w);
  if (!area) return;
  const QWidget& port = *area->viewport();
  for (int turn = 0; turn < mostTurns; ++turn) {
    const QRect place(widget.mapTo(&port, QPoint()), widget.size());
    if (port.rect().contains(place)) return;
    turnWheel(port, place.top() < 0 ? 1 : -1);
  }
  ADD_FAILURE() << "cannot be scrolled to: " << widget.accessibleName().toStdString();
}

void EditorDesk::click(QWidget& widget) {
  waitFor([&] { return widget.isVisible() && widget.isEnabled(); }, "something to click on");
  reveal(widget);
  click(middleOf(widget));
}

void EditorDesk::fill(QLineEdit& field, const QString& text) {
  click(field);
  if (!waitFor([&] { return field.hasFocus(); }, "a field that takes the keyboard")) return;
  perform([&](Hand& hand) {
    hand.key("ctrl+a");
    hand.type(text.toStdString());
    hand.key("Return");
  });
}

QPoint EditorDesk::middleOf(const QWidget& widget) {
  return widget.mapToGlobal(widget.rect().center());
}

QPoint EditorDesk::pixel(const QPointF& ofPicture) const {
  return view().mapToGlobal(view().geometryOfPicture().viewPoint(ofPicture)).toPoint();
}

QPoint EditorDesk::libraryFile(const QString& name) {
  const QAbstractItemView& files = window().findChild<library::TYLibraryController*>()->files();
  const QWidget& port = *files.viewport();
  for (int row = 0; row < files.model()->rowCount(); ++row) {
    const QModelIndex index = files.model()->index(row, 0);
    if (index.data().toString() != name) continue;
    for (int turn = 0; turn < mostTurns; ++turn) {
      const QRect place = files.visualRect(index);
      if (port.rect().contains(place.center())) return port.mapToGlobal(place.center());
      turnWheel(port, place.top() < 0 ? 1 : -1);
    }
  }
  ADD_FAILURE() << "the library has no " << name.toStdString();
  return {};
}

QPoint EditorDesk::tool(const QString& name) const {
  for (const QToolButton* button : window().findChildren<QToolButton*>())
    if (button->accessibleName() == name) return middleOf(*button);
  ADD_FAILURE() << "there is no tool " << name.toStdString();
  return {};
}

QPoint EditorDesk::timelineTitle(const QString& title) const {
  constexpr int afterButtons = 60;
  timeline::TYTimelineView& timeline = window().timelinePanel().view();
  for (const model::QuartzComponent* component : graphic().componentArray()) {
    if (component->title() != title) continue;
    const double y =
        (timeline.rows().rowOf(*component) + 0.5) * timeline::TimelineMeasures::componentHeight -
        timeline.timelineGeometry().visibleOrigin().y();
    return timeline.scrollView().verticalRuler().mapToGlobal(QPoint(afterButtons, qRound(y)));
  }
  ADD_FAILURE() << "no component is called " << title.toStdString();
  return {};
}

void EditorDesk::choose(const QMenu& menu, const QString& text) {
  for (QAction* action : menu.actions())
    if (action->text().remove(u'&').startsWith(text))
      return click(menu.mapToGlobal(menu.actionGeometry(action).center()));
  ADD_FAILURE() << "the menu has no " << text.toStdString();
}

void EditorDesk::openMenu(const QString& title) {
  const auto* bar = window().findChild<QMenuBar*>();
  for (QAction* action : bar->actions())
    if (action->text().remove(u'&') == title)
      click(bar->mapToGlobal(bar->actionGeometry(action).center()));
  waitFor([] { return QApplication::activePopupWidget() != nullptr; }, "a menu");
}

QMenu& EditorDesk::openedMenu() {
  return *qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

void EditorDesk::giveFile(const QString& file) {
  if (!waitFor([] { return openedDialog() != nullptr; }, "a file dialog")) return;
  const QPointer<QFileDialog> dialog = openedDialog();
  perform([&](Hand& hand) {
    hand.key("ctrl+a");
    hand.type(file.toStdString());
    hand.key("Return");
  });
  waitFor([&] { return !dialog || !dialog->isVisible(); }, "the file dialog to close");
  settle();
}

}  // namespace desktop
