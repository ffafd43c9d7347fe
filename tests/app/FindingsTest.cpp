#include <gmock/gmock.h>

#include <QTest>
#include <QToolButton>

#include "RunningEditor.h"
#include "app/DocumentFindings.h"
#include "app/FindingsPanel.h"
#include "model/maintenance/Replacement.h"
#include "widgets/TYLinkButton.h"

namespace app {

namespace {

using testing::ElementsAre;
using testing::SizeIs;

const QString missingFont = QStringLiteral("Nobody's Sans");

/// A document with two texts in a font that is not here.
class FindingsTest : public RunningEditor {
 protected:
  FindingsTest() {
    start();
    for (int i = 0; i < 2; ++i) window().addStandardComponent(QStringLiteral("TextComponent"));
    for (const model::QuartzComponent* component : composition().componentArray())
      for (model::Attribute* attribute : component->attributes()) {
        const model::AttributeValue value = attribute->currentValue();
        if (const auto* font = value.as<model::FontValue>())
          attribute->setCurrentValue(model::FontValue{missingFont, font->size});
      }
    EXPECT_TRUE(QTest::qWaitFor([this] { return button().isVisible(); }));
  }
  [[nodiscard]] QToolButton& button() const {
    return *window().findChild<QToolButton*>(QStringLiteral("findings"));
  }
  [[nodiscard]] FindingsPanel& panel() const { return *window().findChild<FindingsPanel*>(); }
};

}  // namespace

TEST_F(FindingsTest, AreCountedAtTheFootAndGoneWhenMended) {
  EXPECT_TRUE(button().isVisible());
  EXPECT_EQ(button().text(), QStringLiteral("1 finding")) << "the same in two places";
  EXPECT_EQ(model::Replacement(composition()).replaceFont(missingFont, QStringLiteral("Inter")), 2);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !button().isVisible(); }));
  window().document().context().undo();
  EXPECT_TRUE(QTest::qWaitFor([this] { return button().isVisible(); })) << "missing again";
}

TEST_F(FindingsTest, TheirListShowsTheComponentOfOne) {
  model::QuartzComponent* late = composition().componentArray().last();
  late->setStartTime(1);
  late->setEndTime(composition().duration() + 2);
  composition().setEditorTimepoint(0);
  for (auto* component : composition().selectedComponents()) component->setSelected(false);
  QTest::mouseClick(&button(), Qt::LeftButton);
  settle();
  ASSERT_TRUE(panel().isVisible());
  QStringList actions;
  widgets::TYLinkButton* show = nullptr;
  for (auto* link : panel().findChildren<widgets::TYLinkButton*>()) {
    actions.append(link->text());
    if (link->text() == QLatin1String("Show")) show = link;
  }
  EXPECT_THAT(actions,
              testing::UnorderedElementsAre(QStringLiteral("Replace..."), QStringLiteral("Show")));
  ASSERT_TRUE(show);
  QTest::mouseClick(show, Qt::LeftButton);
  settle();
  EXPECT_FALSE(panel().isVisible());
  EXPECT_THAT(composition().selectedComponents(), ElementsAre(late));
  EXPECT_EQ(composition().editorTimepoint(), 1);
}

TEST_F(FindingsTest, AreForgottenWithTheirComponents) {
  auto* findings = window().findChild<DocumentFindings*>();
  ASSERT_THAT(findings->groups(), SizeIs(1));
  EXPECT_THAT(findings->groups().first().objects, SizeIs(2));
  trigger("selectAll");
  trigger("delete");
  // Asked for before the list was made anew: the objects are gone, nothing may happen.
  Q_EMIT panel().acted(findings->groups().first());
  findings->refresh();
  EXPECT_THAT(findings->groups(), SizeIs(0));
}

}  // namespace app
