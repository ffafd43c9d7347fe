#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "model/ComponentFiles.h"
#include "timeline/TYTimelineRulerView.h"
#include "timeline/TYTimelineScrollView.h"
#include "timeline/TYTimelineView.h"
#include "timeline/TYTimelneClipView.h"
#include "timeline/TimelineScene.h"

namespace timeline {

/// A graphic of ten seconds at 25 frames in a timeline where a second is 300 wide and a frame 12,
/// and a hand that works on it. Points are those of the rows, of the time ruler right of its
/// corner, or of the title column.
class TimelineFixture : public testing::Test, protected TimelineHost {
 protected:
  TimelineFixture() {
    graphic->setVideoResolution(model::VideoResolution(QStringLiteral("HD 1080i25")));
    graphic->setDuration(10);
    view.setHost(*this);
    view.resize(4000, 600);
    view.setComposition(graphic.composition);
    view.zoomAround(0, 1);
    view.show();
    view.setFocus(Qt::OtherFocusReason);
    settle();
  }
  ~TimelineFixture() override { view.cleanUp(); }

  /// On top of the others.
  model::QuartzComponent* add(const QString& title, double start, double end) {
    QStringList warnings;
    auto* component = graphic->addComponenWithQuartzCompositionFile(
        files.writeComponent(title + QStringLiteral(".qtz"), {}), {}, warnings);
    component->setTitle(title);
    component->setEndTime(end);
    component->setStartTime(start);
    graphic->clearSelection();
    settle();
    return component;
  }
  model::Attribute* key(model::QuartzComponent& component, const char* name,
                        const QList<double>& times) {
    model::Attribute* attribute = component.attributeForKey(QLatin1String(name));
    attribute->setAnimateable(true);
    for (const double time : times) attribute->setValueForTimepoint(10 * time, time);
    component.setExpanded(true);
    settle();
    return attribute;
  }
  /// Lets what follows from changes happen; the history begins anew.
  void settle() {
    QApplication::processEvents();
    graphic.context->clearHistory();
  }

  [[nodiscard]] QPointF inRow(int row, double time) const {
    const auto& geometry = view.timelineGeometry();
    return QPointF(geometry.xPositionAtTime(time, TYTimelineGeometry::Space::Rows),
                   (row + 0.5) * TimelineMeasures::componentHeight);
  }
  [[nodiscard]] QPointF at(const model::QuartzComponent& component, double time) {
    return inRow(view.rows().rowOf(component), time);
  }
  [[nodiscard]] QPointF at(const model::Attribute& attribute, double time) {
    return inRow(view.rows().rowOf(attribute), time) + QPointF(0.5, 0);
  }

  enum class Where { Rows, Ruler, Titles };
  void send(QEvent::Type type, Where where, const QPointF& point, Qt::KeyboardModifiers modifiers,
            Qt::MouseButton button = Qt::LeftButton) {
    const auto& scroll = view.scrollView();
    QWidget& target = where == Where::Rows    ? static_cast<QWidget&>(scroll.clipView())
                      : where == Where::Ruler ? static_cast<QWidget&>(scroll.horizontalRuler())
                                              : static_cast<QWidget&>(scroll.verticalRuler());
    const QPointF origin = view.timelineGeometry().visibleOrigin();
    QPointF local = point;
    if (where == Where::Rows) local -= origin;
    if (where == Where::Ruler) local.rx() += view.scene().componentsWidth;
    if (where == Where::Titles) local.ry() -= origin.y();
    const bool isUp = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, local, target.mapToGlobal(local),
                      type == QEvent::MouseMove ? Qt::NoButton : button,
                      isUp ? Qt::NoButton : Qt::MouseButtons(button), modifiers);
    QApplication::sendEvent(&target, &event);
  }
  void press(Where where, const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    send(QEvent::MouseButtonPress, where, point, modifiers);
  }
  void move(Where where, const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    send(QEvent::MouseMove, where, point, modifiers);
  }
  void release(Where where, const QPointF& point,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    send(QEvent::MouseButtonRelease, where, point, modifiers);
  }
  /// Without snapping, which has tests of its own.
  void drag(const QPointF& from, const QPointF& by, Where where = Where::Rows) {
    press(where, from);
    move(where, from + by / 2, Qt::ControlModifier);
    move(where, from + by, Qt::ControlModifier);
    release(where, from + by, Qt::ControlModifier);
  }
  void click(Where where, const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    press(where, point, modifiers);
    release(where, point, modifiers);
  }
  void doubleClick(Where where, const QPointF& point) {
    click(where, point);
    send(QEvent::MouseButtonDblClick, where, point, Qt::NoModifier);
    release(where, point);
  }
  void keyPress(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&view, key, modifiers);
  }
  [[nodiscard]] QString undoName() const { return graphic.context->history().undoText(); }
  [[nodiscard]] int steps() const { return graphic.context->history().count(); }

  void showHint(const QString& text) override { hint = text; }

  QString hint;
  model::ComponentFiles files;
  model::Graphic graphic = model::emptyGraphic();
  TYTimelineView view;
};

}  // namespace timeline
