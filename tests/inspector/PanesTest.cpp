#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>

#include "inspector/InspectorFixture.h"
#include "inspector/panes/AnchorPicker.h"
#include "inspector/panes/PermissionRow.h"
#include "inspector/panes/PosterPicture.h"
#include "inspector/panes/PublishedKeysPane.h"
#include "model/RichFontValue.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTimecodeField.h"

namespace inspector {

using model::AttributeType;
using model::AttributeValue;
using model::RichFontValue;
using widgets::TYNumberField;
using RichFont = std::shared_ptr<const RichFontValue>;
using Place = TYInspectorController::Place;

namespace {

QString q(const char* latin) {
  return QString::fromLatin1(latin);
}

class PanesTest : public InspectorFixture {
 protected:
  [[nodiscard]] QCheckBox* permission(const QString& name) const {
    for (auto* row : panel.findChildren<PermissionRow*>())
      if (row->isVisible() && row->name() == name) return &row->box();
    ADD_FAILURE() << "no permission " << name.toStdString();
    return nullptr;
  }
  void enter(QWidget* field, const QString& text) {
    type(field, text);
    QTest::keyClick(field, Qt::Key_Return);
    settle();
  }
  void press(const QString& title) {
    for (QPushButton* button : panel.findChildren<QPushButton*>())
      if (button->isVisible() && button->text() == title) {
        QTest::mouseClick(button, Qt::LeftButton);
        break;
      }
    settle();
  }
};

RichFont richFont() {
  QMap<QString, AttributeValue> parts;
  for (const QString& suffix : RichFontValue::suffixes()) parts.insert(suffix, 0.0);
  parts[RichFontValue::suffixes().first()] = q("Inter-Bold");
  auto rich = std::make_shared<RichFontValue>(q("%@"), parts);
  rich->setColor({1, 1, 1, 1});
  return rich;
}

}  // namespace

TEST_F(PanesTest, TitleTimesAndGeometryOfSeveral) {
  auto* first = add(q("First"));
  auto* second = add(q("Second"));
  first->setOriginX(10);
  second->setOriginX(30);
  graphic.context->clearHistory();
  select({first, second});
  auto* x = control<TYNumberField>(q("Position"));
  EXPECT_TRUE(x->isMixed());
  enter(x, q("+=5"));
  EXPECT_EQ(first->originX(), 15);
  EXPECT_EQ(second->originX(), 35);
  EXPECT_EQ(undoName(), q("Move"));

  panel.resize(340, 1400);
  settle();
  auto* end = control<widgets::TYTimecodeField>(q("Start, End"), 1);
  enter(end, q("1:12"));
  EXPECT_EQ(first->endTime(), 1.24);
  EXPECT_EQ(second->endTime(), 1.24);
  enter(control<widgets::TYTimecodeField>(q("Start, End")), q("12f"));
  EXPECT_EQ(first->startTime(), 0.24);
  enter(control<widgets::TYTimecodeField>(q("Duration")), q("0.2s"));
  EXPECT_NEAR(second->endTime(), 0.44, 1e-9);
  enter(end, q("0"));
  EXPECT_NEAR(second->endTime(), second->startTime(), 1e-6) << "never before the start";

  enter(control<QLineEdit>(q("Title")), q("Both"));
  EXPECT_EQ(second->title(), q("Both"));
  EXPECT_EQ(undoName(), q("Rename"));

  auto* slider = control<QSlider>(q("Opacity"));
  slider->setFocus();
  QTest::keyClick(slider, Qt::Key_Home);
  EXPECT_EQ(first->opacity(), 0);
  EXPECT_EQ(undoName(), q("Change Opacity"));
}

TEST_F(PanesTest, SizesGrowFromTheAnchor) {
  auto* component = add(q("Strap"));
  component->setOriginX(100);
  component->setOriginY(100);
  component->setWidth(200);
  component->setHeight(50);
  graphic.context->clearHistory();
  select({component});
  auto* anchor = panel.findChild<AnchorPicker*>();
  QTest::mouseClick(anchor, Qt::LeftButton, {}, anchor->rect().center());
  settle();
  EXPECT_EQ(control<TYNumberField>(q("Position"))->value(), 200);
  EXPECT_EQ(control<TYNumberField>(q("Position"), 1)->value(), 125);
  enter(control<TYNumberField>(q("Size")), q("100"));
  EXPECT_EQ(component->originX(), 150);
  EXPECT_EQ(steps(), 1);
  enter(control<TYNumberField>(q("Position")), q("1920/2"));
  EXPECT_EQ(component->originX(), 910);
  anchor->setFocus();
  QTest::keyClick(anchor, Qt::Key_Right);
  QTest::keyClick(anchor, Qt::Key_Up);
  settle();
  EXPECT_EQ(control<TYNumberField>(q("Position"))->value(), 1010);
  EXPECT_EQ(control<TYNumberField>(q("Position"), 1)->value(), 150);
}

TEST_F(PanesTest, RichFontsAreEditedInParts) {
  auto* component = add(q("Strap"));
  auto* rich = give(component, q("Rich_Font_Name"), AttributeType::RichFont, richFont());
  const auto text = [&] { return (*rich->currentValue().as<RichFont>())->textAttributes(); };
  select({component});
  EXPECT_FALSE(text().shadow);
  QTest::mouseClick(control<QCheckBox>(q("Shadow")), Qt::LeftButton, {}, QPoint(7, 12));
  settle();
  ASSERT_TRUE(text().shadow);
  enter(control<TYNumberField>(q("Offset"), 1), q("-4"));
  EXPECT_EQ(text().shadow->offset.height(), -4);
  auto* underline = control<QComboBox>(q("Underline"));
  underline->setFocus();
  QTest::keyClick(underline, Qt::Key_Down);
  settle();
  EXPECT_EQ(text().underline->style, 1);
  EXPECT_EQ(steps(), 3);
  EXPECT_EQ(text().strikethrough.value_or(model::TextAttributes::Line{}).style, 0);
  EXPECT_EQ(text().foreground, (foundation::Color{1, 1, 1, 1}));
}

TEST_F(PanesTest, PermissionsAreSummedUpAndAnimatedOnesHaveNone) {
  auto* first = add(q("First"));
  auto* second = add(q("Second"));
  auto* text = give(first, q("Text"), AttributeType::String, QString());
  give(second, q("Text"), AttributeType::String, QString());
  first->attributeForKey(q("originX"))->setPermissionToChange(true);
  first->attributeForKey(q("originY"))->addTimepoint(0, 1.0);
  graphic.context->clearHistory();
  select({first, second});
  panel.showPlace(Place::Permissions);
  settle();
  EXPECT_EQ(permission(q("Move"))->checkState(), Qt::PartiallyChecked);
  EXPECT_EQ(permission(q("Resize"))->checkState(), Qt::Unchecked);
  EXPECT_EQ(permission(q("Text"))->checkState(), Qt::Unchecked);
  QTest::mouseClick(permission(q("Text")), Qt::LeftButton);
  settle();
  EXPECT_TRUE(text->permissionToChange());
  EXPECT_EQ(permission(q("Text"))->checkState(), Qt::Checked);
  EXPECT_EQ(undoName(), q("Change Permission"));
  QTest::mouseClick(permission(q("Move")), Qt::LeftButton);
  settle();
  EXPECT_TRUE(second->attributeForKey(q("originY"))->permissionToChange());
  EXPECT_FALSE(first->attributeForKey(q("originY"))->permissionToChange()) << "animated";

  select({first});
  EXPECT_FALSE(permission(q("Y"))->isEnabled());
  EXPECT_FALSE(permission(q("Y"))->toolTip().isEmpty());
}

TEST_F(PanesTest, TheDocumentsOwnValues) {
  panel.showPlace(Place::Document);
  settle();
  enter(control<widgets::TYTimecodeField>(q("Duration")), q("8s"));
  EXPECT_EQ(graphic->duration(), 8);
  graphic->setEditorTimepoint(3);
  press(q("Set"));
  EXPECT_EQ(graphic->posterFrameTimepoint(), 3);
  EXPECT_EQ(undoName(), q("Set Poster Frame"));
  auto* show = control<widgets::TYSegmentedControl>(q("Show"));
  QTest::mouseClick(show->segment(1), Qt::LeftButton);
  settle();
  EXPECT_TRUE(graphic->solidColorBackgroundMode());
  EXPECT_TRUE(row(q("Color")));

  press(q("Add Vertical"));
  ASSERT_EQ(graphic->rulers().list().size(), 1);
  EXPECT_TRUE(graphic->showsRulers());
  enter(control<TYNumberField>(q("Vertical")), q("300"));
  EXPECT_EQ(graphic->rulers().list().first()->position(), 300);
  press(q("Remove"));
  EXPECT_TRUE(graphic->rulers().list().isEmpty());
  graphic.context->undo();
  settle();
  EXPECT_EQ(control<TYNumberField>(q("Vertical"))->value(), 300);

  auto* stop = graphic->addStopFrame(2);
  settle();
  enter(control<QLineEdit>(q("00:00:02:00")), q("Out"));
  EXPECT_EQ(stop->triggerInformation(), q("Out"));

  for (auto* box : panel.findChildren<QComboBox*>())
    if (box->isVisible() && box->accessibleName() == q("Format")) {
      box->setFocus();
      QTest::keyClick(box, Qt::Key_Home);
    }
  settle();
  EXPECT_EQ(undoName(), q("Change Format"));
  EXPECT_NE(graphic->broadcastMode(), QString());
}

TEST_F(PanesTest, ThePosterFrameHasItsPicture) {
  graphic->setBackgroundMode(model::BackgroundMode::SolidColor);
  graphic->setPosterFrameTimepoint(1);
  panel.showPlace(Place::Document);
  settle();
  auto* picture = panel.findChild<PosterPicture*>();
  ASSERT_TRUE(picture->isVisible());
  picture->update();
  ASSERT_FALSE(picture->pixmap().isNull());
  EXPECT_LE(picture->pixmap().width(), picture->width()) << "seen whole";
  press(q("None"));
  EXPECT_FALSE(picture->isVisible());
  EXPECT_EQ(graphic->posterFrameMode(), 1);
}

TEST_F(PanesTest, KeysThatARenameTakesAwayAreTold) {
  QStringList warnings;
  auto* component = graphic->addComponenWithQuartzCompositionFile(
      files.writeComponent(q("Strap.qtz"), {{q("Gap"), q("QCNumberPort"), 4.5, {}}}), {}, warnings);
  component->setTitle(q("Headline"));
  component->attributeForKey(q("Gap"))->setPermissionToChange(true);
  const QString exported = files.path(q("graphic.qtz"));
  ASSERT_TRUE(graphic->exportToPath(exported, model::Composition::Background::Exclude));
  graphic->setFileURL(QUrl::fromLocalFile(exported));
  panel.showPlace(Place::Document);
  settle();
  auto* keys = panel.findChild<PublishedKeysPane*>();
  const auto listed = [&] {
    keys->update();
    QStringList texts;
    auto* list = keys->findChild<QListWidget*>();
    for (int i = 0; i < list->count(); ++i)
      texts.append((list->item(i)->icon().isNull() ? QString() : q("lost ")) +
                   list->item(i)->text());
    return texts;
  };
  EXPECT_TRUE(listed().contains(q("Headline_Gap")));
  EXPECT_TRUE(listed().filter(q("lost ")).isEmpty());
  component->setTitle(q("Top Line"));
  EXPECT_TRUE(listed().contains(q("Top_Line_Gap")));
  EXPECT_TRUE(listed().contains(q("lost Headline_Gap")));
}

}  // namespace inspector
