#include "preview/FieldsPanel.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "document/CompositionDocument.h"
#include "preview/FramePump.h"
#include "preview/PreviewView.h"
#include "preview/TYPreviewController.h"
#include "preview/fields/FieldList.h"
#include "preview/fields/FieldRow.h"
#include "preview/fields/OutputsList.h"
#include "preview/fields/SetsMenu.h"
#include "preview/fields/TakeBar.h"
#include "support/GraphBuilder.h"
#include "widgets/TYEmptyPanel.h"

namespace preview {

namespace {

using document::CompositionDocument;
using foundation::PropertyValue;
using support::GraphBuilder;

/// A window around the panel that takes the keys that the panel leaves to it.
class KeyWindow : public QWidget {
 public:
  QString keys;
  int released = 0;

 protected:
  void keyPressEvent(QKeyEvent* event) override { keys += event->text(); }
  void keyReleaseEvent(QKeyEvent*) override { ++released; }
};

/// The panel with a graph that puts out what goes in: text, number, switch.
class FieldsPanelTest : public testing::Test {
 protected:
  FieldsPanelTest() : panel(new FieldsPanel(&window)) {
    window.setFocusPolicy(Qt::StrongFocus);
    QObject::connect(panel, &FieldsPanel::keyboardLeft, &window, [this] { window.setFocus(); });
    QObject::connect(panel, &FieldsPanel::playRequested, &window, [this] {
      ++plays;
      if (pump) pump->restart();
    });
    panel->resize(FieldsPanel::panelWidth, 600);
    window.resize(FieldsPanel::panelWidth, 600);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    load();
  }
  ~FieldsPanelTest() override {
    panel->setPump(nullptr);
    pump.reset();
  }

  void load(document::CompositionDocument* document = nullptr) {
    GraphBuilder graph;
    const auto echo = [&graph](const char* kind, const char* in, const char* out,
                               const PropertyValue& usual) {
      const QString node = graph.node(QStringLiteral("QCSplitter"),
                                      {{QStringLiteral("portClass"), QString::fromLatin1(kind)}});
      graph.publishInput(node, QStringLiteral("input"), QString::fromLatin1(in));
      graph.publishOutput(node, QStringLiteral("output"), QString::fromLatin1(out));
      graph.setParameter(QString::fromLatin1(in), usual);
    };
    echo("QCStringPort", "headline", "shown", QStringLiteral("Good Morning"));
    echo("QCNumberPort", "score", "points", 2.0);
    echo("QCBooleanPort", "isLive", "active", false);
    PreviewProgram program{.compiled = graph.renderer()->sharedProgram()};
    program.size = QSize(64, 36);
    program.framesPerSecond = 100;
    panel->setPump(nullptr);
    pump.reset();
    panel->takeProgram(program, document);
    pump = std::make_unique<FramePump>(std::move(program), FramePump::Hooks{.outputsReady = [this] {
                                         QMetaObject::invokeMethod(
                                             panel, [this] { panel->outputsAreReady(); });
                                       }});
    panel->setPump(pump.get());
  }
  template <typename Control>
  [[nodiscard]] Control& control(const char* name) const {
    auto* found = panel->findChild<Control*>(QString::fromLatin1(name));
    if (!found) throw std::runtime_error(std::string("no control ") + name);
    return *found;
  }
  [[nodiscard]] QPushButton& button(const char* text) const {
    for (auto* button : panel->takeBar().findChildren<QPushButton*>())
      if (button->text() == QLatin1String(text)) return *button;
    throw std::runtime_error(std::string("no button ") + text);
  }
  [[nodiscard]] QString output(const char* key) const {
    return control<QLabel>((std::string("output.") + key).c_str()).text();
  }
  [[nodiscard]] bool putsOut(const char* key, const QString& text) const {
    return QTest::qWaitFor([&] { return output(key) == text; }, 5000);
  }
  void type(QWidget& into, const QString& text) {
    into.setFocus();
    QTest::keyClick(&into, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&into, text);
  }

  KeyWindow window;
  FieldsPanel* panel;
  std::unique_ptr<FramePump> pump;
  int plays = 0;
};

TEST_F(FieldsPanelTest, WhatIsTypedArrivesInTheRunningFileAndOutputsShowIt) {
  EXPECT_TRUE(putsOut("shown", QStringLiteral("Good Morning")));
  auto& headline = control<QLineEdit>("headline");
  EXPECT_EQ(headline.text(), QStringLiteral("Good Morning"));
  type(headline, QStringLiteral("Harbour opens"));
  EXPECT_EQ(output("shown"), QStringLiteral("Good Morning"));
  QTest::keyClick(&headline, Qt::Key_Return);
  EXPECT_TRUE(putsOut("shown", QStringLiteral("Harbour opens")));
  auto& score = control<QLineEdit>("score");
  type(score, QStringLiteral("2+5"));
  QTest::keyClick(&score, Qt::Key_Tab);
  EXPECT_TRUE(putsOut("points", QStringLiteral("7")));
  EXPECT_EQ(output("active"), QStringLiteral("off"));
  QTest::mouseClick(&control<QCheckBox>("isLive"), Qt::LeftButton);
  EXPECT_TRUE(putsOut("active", QStringLiteral("on")));
  // A file that is loaded anew begins with them.
  load();
  EXPECT_TRUE(putsOut("shown", QStringLiteral("Harbour opens")));
  EXPECT_EQ(control<QLineEdit>("score").text(), QStringLiteral("7"));
}

TEST_F(FieldsPanelTest, KeysOfTheWindowAreTypedInFieldsAndWorkEverywhereElse) {
  auto& headline = control<QLineEdit>("headline");
  type(headline, QStringLiteral("r R"));
  EXPECT_EQ(headline.text(), QStringLiteral("r R"));
  type(control<QLineEdit>("score"), QStringLiteral("r"));
  auto& live = control<QCheckBox>("isLive");
  live.setFocus();
  QTest::keyClick(&live, Qt::Key_Space);
  EXPECT_TRUE(live.isChecked());
  QTest::keyClick(&live, Qt::Key_R);
  EXPECT_EQ(window.keys, QString());
  // A trigger that was pressed before the field got the keyboard is let go.
  const int released = window.released;
  QTest::keyRelease(&headline, Qt::Key_Space);
  EXPECT_EQ(window.released, released + 1);
  // Return and Esc give the keyboard back, and so does no click on a switch or a button take it.
  headline.setFocus();
  QTest::keyClick(&headline, Qt::Key_Return);
  EXPECT_TRUE(window.hasFocus());
  QTest::mouseClick(&live, Qt::LeftButton);
  EXPECT_TRUE(window.hasFocus());
  button("Play").setFocus();
  QTest::keyClick(&button("Play"), Qt::Key_Space);
  QTest::keyClick(&button("Play"), Qt::Key_R);
  EXPECT_EQ(window.keys, QStringLiteral(" r"));
  EXPECT_EQ(plays, 0);
  QTest::keyClick(&button("Play"), Qt::Key_Return);
  EXPECT_EQ(plays, 1);
}

TEST_F(FieldsPanelTest, AWrongEntryStaysAndIsToldAndEscBringsTheValueBack) {
  auto& score = control<QLineEdit>("score");
  type(score, QStringLiteral("12,,4"));
  QTest::keyClick(&score, Qt::Key_Return);
  const FieldRow& row = *panel->list().row(QStringLiteral("score"));
  EXPECT_FALSE(row.complaint().isEmpty());
  EXPECT_TRUE(score.property("invalid").toBool());
  EXPECT_EQ(score.text(), QStringLiteral("12,,4"));
  EXPECT_TRUE(score.hasFocus());
  EXPECT_FALSE(panel->model().field(QStringLiteral("score"))->value);
  QTest::keyClick(&score, Qt::Key_Escape);
  EXPECT_EQ(score.text(), QStringLiteral("2"));
  EXPECT_TRUE(row.complaint().isEmpty());
  auto& headline = control<QLineEdit>("headline");
  type(headline, QStringLiteral("never mind"));
  QTest::keyClick(&headline, Qt::Key_Escape);
  EXPECT_EQ(headline.text(), QStringLiteral("Good Morning"));
  QTest::keyClick(&headline, Qt::Key_Escape);
  EXPECT_TRUE(window.hasFocus());
  EXPECT_TRUE(panel->model().filledIn().isEmpty());
}

TEST_F(FieldsPanelTest, HeldChangesGoWithUpdateAndResetTakesAllBack) {
  QTest::mouseClick(panel->takeBar().findChild<QCheckBox*>(), Qt::LeftButton, {}, QPoint(6, 12));
  ASSERT_TRUE(panel->model().holdsChanges());
  EXPECT_FALSE(button("Update").isEnabled());
  auto& headline = control<QLineEdit>("headline");
  type(headline, QStringLiteral("Later"));
  QTest::keyClick(&headline, Qt::Key_Return);
  QTest::qWait(150);
  EXPECT_EQ(output("shown"), QStringLiteral("Good Morning"));
  EXPECT_TRUE(button("Update").isEnabled());
  // What is still being typed goes along.
  type(control<QLineEdit>("score"), QStringLiteral("9"));
  QTest::mouseClick(&button("Update"), Qt::LeftButton);
  EXPECT_TRUE(putsOut("shown", QStringLiteral("Later")));
  EXPECT_TRUE(putsOut("points", QStringLiteral("9")));
  EXPECT_FALSE(button("Update").isEnabled());
  QTest::mouseClick(&button("Reset"), Qt::LeftButton);
  EXPECT_EQ(plays, 1);
  EXPECT_TRUE(putsOut("shown", QStringLiteral("Good Morning")));
  EXPECT_EQ(control<QLineEdit>("score").text(), QStringLiteral("2"));
}

TEST_F(FieldsPanelTest, WithoutAProgramThereIsNothingToFillInOrKeep) {
  CompositionDocument document;
  document.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("SD PAL")));
  EXPECT_TRUE(document.setValueSets({}));
  load(&document);
  auto& headline = control<QLineEdit>("headline");
  type(headline, QStringLiteral("Harbour opens"));
  QTest::keyClick(&headline, Qt::Key_Return);
  headline.setFocus();
  panel->setPump(nullptr);
  panel->showNothing();
  QApplication::processEvents();
  EXPECT_TRUE(window.hasFocus());
  EXPECT_TRUE(panel->model().fields().empty());
  for (const auto* edit : panel->findChildren<QLineEdit*>()) EXPECT_FALSE(edit->isVisible());
  for (const auto* output : panel->findChildren<OutputsList*>()) EXPECT_FALSE(output->isVisible());
  for (const auto* box : panel->findChildren<QComboBox*>()) EXPECT_FALSE(box->isVisible());
  for (const auto* button : panel->findChildren<QAbstractButton*>())
    EXPECT_FALSE(button->isVisible() && button->isEnabled()) << button->text().toStdString();
  EXPECT_EQ(panel->findChildren<widgets::TYEmptyPanel*>().size(), 1);
  // What is saved now would be another document's.
  panel->sets().save(QStringLiteral("Evening"));
  EXPECT_TRUE(document.valueSets().isEmpty());
  load(&document);
  EXPECT_EQ(control<QLineEdit>("headline").text(), QStringLiteral("Harbour opens"));
  EXPECT_TRUE(panel->sets().isVisible());
  EXPECT_TRUE(button("Play").isEnabled());
}

TEST_F(FieldsPanelTest, TextsOfSeveralLinesGetAFieldForThem) {
  auto& line = control<QLineEdit>("headline");
  type(line, QStringLiteral("One"));
  QTest::keyClick(&line, Qt::Key_Return, Qt::ShiftModifier);
  auto& lines = control<QPlainTextEdit>("headline");
  QTest::keyClicks(&lines, QStringLiteral("Two"));
  QTest::keyClick(&lines, Qt::Key_Return);
  EXPECT_TRUE(putsOut("shown", QStringLiteral("One ⏎ Two")));
  EXPECT_EQ(panel->model().filledIn().value(QStringLiteral("headline")).toString(),
            QStringLiteral("One\nTwo"));
}

}  // namespace

}  // namespace preview
