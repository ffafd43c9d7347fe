#include <QAccessible>
#include <QLineEdit>

#include "CanvasFixture.h"
#include "canvas/InPlaceTextEditor.h"

namespace canvas {

using model::QuartzComponent;
using Components = QList<QuartzComponent*>;

class Selecting : public CanvasFixture {
 protected:
  QuartzComponent* a = add(QStringLiteral("A"), {100, 100, 200, 100});
  QuartzComponent* b = add(QStringLiteral("B"), {250, 150, 200, 100});
  QuartzComponent* c = add(QStringLiteral("C"), {800, 600, 100, 100});
};

TEST_F(Selecting, ClicksSelectTheTopmostAndAreNotUndone) {
  click({275, 175});
  EXPECT_EQ(view.selectedComponents(), Components{b});
  click({150, 150}, Qt::ControlModifier);
  click({850, 650}, Qt::ShiftModifier);
  EXPECT_EQ(view.selectedComponents(), (Components{a, b, c}));
  click({150, 150}, Qt::ControlModifier);
  EXPECT_EQ(view.selectedComponents(), (Components{b, c}));
  click({850, 650});  // one of several stays, all of them could be moved
  EXPECT_EQ(view.selectedComponents(), (Components{b, c}));
  click({150, 120});
  EXPECT_EQ(view.selectedComponents(), Components{a});
  click({1500, 900});
  EXPECT_TRUE(view.selectedComponents().isEmpty());
  EXPECT_EQ(graphic.context->history().count(), 0);
}

TEST_F(Selecting, WhatIsHiddenOrNotYetThereIsNotHit) {
  b->setVisibleInCompositionEditor(false);
  click({275, 175});
  EXPECT_EQ(view.selectedComponents(), Components{a});
  a->setStartTime(1);
  click({275, 175});
  EXPECT_TRUE(view.selectedComponents().isEmpty());
}

TEST_F(Selecting, ARubberBandSelectsWhatItTouchesAndShiftInverts) {
  drag({50, 50}, {260, 260});
  EXPECT_EQ(view.selectedComponents(), (Components{a, b}));
  c->setVisibleInCompositionEditor(false);
  press({700, 500}, Qt::ShiftModifier);
  move({200, 130});
  EXPECT_FALSE(view.scene()->rubberBandLayer().currentRect().isEmpty());
  release({700, 500});
  EXPECT_EQ(view.selectedComponents(), (Components{a, b}));
  EXPECT_TRUE(view.scene()->rubberBandLayer().currentRect().isEmpty());
  a->setSelected(false);
  press({50, 50}, Qt::ShiftModifier);
  move({420, 240});
  release({420, 240});
  EXPECT_EQ(view.selectedComponents(), Components{a});
  press({1500, 900});
  move({50, 50});
  key(Qt::Key_Escape);
  EXPECT_EQ(view.selectedComponents(), Components{a});
}

TEST_F(Selecting, ActionsAreOfferedForTwoAndForThree) {
  QList<std::pair<bool, bool>> told;
  const QObject listener;
  QObject::connect(&view, &CompositionView::actionButtonsChanged, &listener,
                   [&](bool align, bool distribute) {
                     told.append({align, distribute});
                   });
  a->setSelected(true);
  EXPECT_EQ(told.last(), std::pair(false, false));
  b->setSelected(true);
  EXPECT_EQ(told.last(), std::pair(true, false));
  c->setSelected(true);
  EXPECT_EQ(told.last(), std::pair(true, true));
}

TEST_F(Selecting, TabWalksFromTheFrontAndThenOn) {
  QWidget window;
  auto* next = new QLineEdit(&window);
  view.setParent(&window);
  QWidget::setTabOrder(&view, next);
  window.show();
  view.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  view.setFocus(Qt::TabFocusReason);
  EXPECT_EQ(view.selectedComponents(), Components{c});
  key(Qt::Key_Tab);
  EXPECT_EQ(view.selectedComponents(), Components{b});
  key(Qt::Key_Tab);
  EXPECT_EQ(view.selectedComponents(), Components{a});
  key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(view.selectedComponents(), Components{b});
  key(Qt::Key_Tab);
  key(Qt::Key_Tab);
  EXPECT_TRUE(next->hasFocus());
  EXPECT_EQ(view.selectedComponents(), Components{a});
  view.setParent(nullptr);
}

TEST_F(Selecting, ScreenReadersMeetTheComponents) {
  QAccessibleInterface* canvas = QAccessible::queryAccessibleInterface(&view);
  ASSERT_NE(canvas, nullptr);
  EXPECT_EQ(canvas->text(QAccessible::Name), QStringLiteral("Canvas"));
  ASSERT_EQ(canvas->childCount(), 3);
  QAccessibleInterface* first = canvas->child(0);
  EXPECT_EQ(first->text(QAccessible::Name), QStringLiteral("C"));
  EXPECT_EQ(first->role(), QAccessible::Graphic);
  EXPECT_EQ(first->text(QAccessible::Description),
            QStringLiteral("At 800, 600, 100 by 100 pixels"));
  EXPECT_EQ(canvas->child(0), first);
  EXPECT_EQ(canvas->indexOfChild(first), 0);
  c->setSelected(true);
  EXPECT_TRUE(first->state().selected);
  graphic->removeComponents({c});
  EXPECT_FALSE(first->isValid());
  EXPECT_EQ(canvas->childCount(), 2);
}

TEST_F(Selecting, ADoubleClickEditsTextInPlace) {
  QStringList warnings;
  auto* text = graphic->addComponenWithQuartzCompositionFile(
      files.writeComponent(
          QStringLiteral("text.qtz"),
          {{QStringLiteral("Text"), QStringLiteral("QCStringPort"), QStringLiteral("Hello"), {}}}),
      {}, warnings);
  ASSERT_NE(text, nullptr);
  text->setTitle(QStringLiteral("Headline"));
  const auto begin = [&] {
    const QPointF middle = text->drawingFrame().center();
    click(middle);
    send(QEvent::MouseButtonDblClick, middle, Qt::LeftButton, Qt::NoModifier);
    return view.textEditor();
  };
  const auto current = [&] {
    return text->attributeForKey(QStringLiteral("Text"))->currentValue().toString();
  };
  InPlaceTextEditor* editor = begin();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->toPlainText(), QStringLiteral("Hello"));
  QTest::keyClicks(editor, QStringLiteral("Good"));
  QTest::keyClick(editor, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(editor, QStringLiteral("day"));
  QTest::keyClick(editor, Qt::Key_Return);
  EXPECT_EQ(current(), QStringLiteral("Good\nday"));
  EXPECT_EQ(undoName(), QStringLiteral("Edit Headline"));

  key(Qt::Key_F2);
  editor = view.textEditor();
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, QStringLiteral("no"));
  QTest::keyClick(editor, Qt::Key_Escape);
  EXPECT_EQ(current(), QStringLiteral("Good\nday"));
  // Components without text are only clicked.
  click({150, 120});
  send(QEvent::MouseButtonDblClick, {150, 120}, Qt::LeftButton, Qt::NoModifier);
  release({150, 120});
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(view.textEditor(), nullptr);
}

}  // namespace canvas
