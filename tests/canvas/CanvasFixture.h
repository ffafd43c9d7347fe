#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "canvas/CompositionView.h"
#include "model/ComponentFiles.h"

namespace canvas {

/// A graphic of 1920 by 1080 in a view at 100 %, and a hand that works on it. Points are pixels of
/// the picture.
class CanvasFixture : public testing::Test {
 protected:
  CanvasFixture() {
    graphic->setZoomMode(100);
    graphic.context->clearHistory();
    view.resize(2000, 1200);
    view.setComposition(graphic.composition);
    view.show();
  }
  ~CanvasFixture() override { view.cleanUp(); }

  model::QuartzComponent* add(const QString& title, const QRectF& frame) {
    QStringList warnings;
    auto* component = graphic->addComponenWithQuartzCompositionFile(
        files.writeComponent(title + QStringLiteral(".qtz"), {}), {}, warnings);
    component->setTitle(title);
    component->setOriginX(frame.x());
    component->setOriginY(frame.y());
    component->setWidth(frame.width());
    component->setHeight(frame.height());
    graphic->clearSelection();
    graphic.context->clearHistory();
    return component;
  }

  void press(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    send(QEvent::MouseButtonPress, point, Qt::LeftButton, modifiers);
  }
  void move(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    send(QEvent::MouseMove, point, Qt::NoButton, modifiers);
  }
  void release(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    send(QEvent::MouseButtonRelease, point, Qt::LeftButton, modifiers);
  }
  void drag(const QPointF& from, const QPointF& to,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    press(from);
    move((from + to) / 2, modifiers);
    move(to, modifiers);
    release(to, modifiers);
  }
  void click(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    press(point, modifiers);
    release(point, modifiers);
  }
  void send(QEvent::Type type, const QPointF& point, Qt::MouseButton button,
            Qt::KeyboardModifiers modifiers) {
    const QPointF inView = view.geometryOfPicture().viewPoint(point);
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, inView, view.mapToGlobal(inView), button, held, modifiers);
    QApplication::sendEvent(&view, &event);
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&view, key, modifiers);
  }
  [[nodiscard]] QString undoName() const { return graphic.context->history().undoText(); }

  model::ComponentFiles files;
  model::Graphic graphic = model::emptyGraphic();
  CompositionView view{files.standardComponents()};
};

}  // namespace canvas
