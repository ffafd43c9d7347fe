#include <random>

#include "ComponentFiles.h"
#include "foundation/PropertyList.h"
#include "model/maintenance/Maintenance.h"
#include "store/StoreSnapshot.h"

namespace model {

namespace {

QByteArray bytesOf(const store::ObjectContext& context) {
  return foundation::PropertyList::toXml(store::storeSnapshot(context)).value();
}

/// Does random things to a graphic, the same ones for the same seed.
class RandomEditor {
 public:
  RandomEditor(Graphic& graphic, ComponentFiles& files, unsigned seed)
      : m_graphic(graphic), m_random(seed) {
    const QString number = QStringLiteral("QCNumberPort");
    const QString string = QStringLiteral("QCStringPort");
    m_paths = {
        files.writeComponent(
            QStringLiteral("Text.qtz"),
            {{QStringLiteral("Text"), string, QStringLiteral("x"), {}},
             {QStringLiteral("Tint"), QStringLiteral("QCColorPort"), {}, {}},
             {QStringLiteral("Amount"), number, 1.0, QStringLiteral("Amount [2] (Look)")},
             {QStringLiteral("Image_Path"), string, files.path(QStringLiteral("Renderer.qtz")), {}},
             {QStringLiteral("Head_Rich_Font_Name"), string, QStringLiteral("Inter"), {}},
             {QStringLiteral("Head_Rich_Font_Size"), number, 20.0, {}}}),
        files.writeComponent(QStringLiteral("Box.qtz"),
                             {{QStringLiteral("Choice"), QStringLiteral("QCIndexPort"), 1, {}},
                              {QStringLiteral("Shown"), QStringLiteral("QCBooleanPort"), true, {}},
                              {QStringLiteral("Font_Name"), string, QStringLiteral("Inter"), {}},
                              {QStringLiteral("Font_Size"), number, 24.0, {}}})};
    m_components = files.standardComponents().folder();
  }

  void step() {
    const int kind = below(36);
    if (kind < 24 && m_graphic->components().size() > 0)
      editComponent(kind);
    else
      editComposition(kind);
  }

 private:
  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
  double real(double low, double high) {
    // By hand: the library's distribution of reals differs between implementations.
    return low + (high - low) * static_cast<double>(m_random() % 100000) / 100000;
  }
  QuartzComponent& anyComponent() {
    return *m_graphic->components()[below(static_cast<int>(m_graphic->components().size()))];
  }
  Attribute& anyAttribute() {
    const auto attributes = anyComponent().attributes();
    return *attributes[below(static_cast<int>(attributes.size()))];
  }
  AttributeValue valueFor(const Attribute& attribute) {
    switch (attribute.type()) {
      case AttributeType::Number:
        return real(-50, 500);
      case AttributeType::Boolean:
        return below(2) == 1;
      case AttributeType::Index:
      case AttributeType::IndexWithMenu:
        return qint64{below(5)};
      case AttributeType::Color:
        return foundation::Color{real(0, 1), real(0, 1), real(0, 1), real(0, 1)};
      case AttributeType::Font:
        return FontValue{QStringLiteral("Inter"), real(8, 80)};
      case AttributeType::RichFont:
        return below(4) == 0 ? AttributeValue() : attribute.currentValue();
      default:
        return QStringLiteral("text %1").arg(below(9));
    }
  }

  void editComponent(int kind) {
    QuartzComponent& component = anyComponent();
    Attribute& attribute = anyAttribute();
    const double time = below(8) * 0.25;
    switch (kind) {
      case 0:
        return component.setTitle(QStringLiteral("title %1").arg(below(20)));
      case 1:
        return component.setStartTime(component.validatedStartTime(real(0, 2)));
      case 2:
        return component.setEndTime(component.validatedEndTime(real(0, 2)));
      case 3:
        return component.setDuration(real(-1, 3));
      case 4:
        return component.setWidth(real(-10, 900));
      case 5:
        return component.setHeight(real(-10, 900));
      case 6:
        return component.moveByDelta(real(-20, 20), below(2) * real(-20, 20));
      case 7:
        return component.setConstrainProportions(below(2) == 1);
      case 8:
        return component.setZRotation(real(-360, 360));
      case 9:
        return component.setOpacityHumanReadable(real(0, 100));
      case 10:
        return component.setVisibleInCompositionEditor(below(2) == 1);
      case 11:
        return component.setMarginX(real(-5, 40));
      case 12:
        component.resizeByMovingHandle(
            1 + below(8), {real(0, 1920), real(0, 1080)},
            below(2) == 0 ? ComponentResize::Proportional::No : ComponentResize::Proportional::Yes,
            below(2) == 0 ? ComponentResize::FromCenter::No : ComponentResize::FromCenter::Yes,
            component.drawingFrame());
        return;
      case 13:
        return component.sizeToFit();
      case 14:
        return component.setAnimateable(below(12) - 10);
      case 15:
        component.setValueForKey(QVariant::fromValue(valueFor(attribute)), attribute.key());
        return;
      case 16:
        return attribute.setCurrentValue(valueFor(attribute));
      case 17:
        return attribute.addTimepoint(time, valueFor(attribute));
      case 18:
        return attribute.deleteTimepoint(time);
      case 19:
        return attribute.setTimePointSelected(time, below(2) == 1);
      case 20:
        return attribute.deleteSelectedTimepoints();
      case 21:
        attribute.adjustTimepointsBy(
            real(-1, 1), below(2) == 0 ? Attribute::Moved::All : Attribute::Moved::OnlySelected);
        return;
      case 22:
        return attribute.setAnimateable(below(2) == 1);
      default:
        return attribute.setPermissionToChange(below(2) == 1);
    }
  }

  void editComposition(int kind) {
    QStringList warnings;
    switch (kind) {
      case 25:
        m_graphic->setBackgroundMode(static_cast<BackgroundMode>(below(3)));
        return m_graphic->setBackgroundColor({real(0, 1), real(0, 1), real(0, 1), 1});
      case 26:
        if (below(2) == 0 || m_graphic->stopFrames().isEmpty())
          m_graphic->addStopFrame(real(0, 2), QStringLiteral("go %1").arg(below(3)));
        else if (below(2) == 0)
          m_graphic->removeStopFrame(*m_graphic->stopFrames().front());
        else
          m_graphic->stopFrames().back()->setTimepoint(real(0, 2));
        return;
      case 27:
        if (below(2) == 0 || m_graphic->rulers().isEmpty())
          m_graphic->addRulerAtPosition(real(0, 1000), below(2) == 1);
        else
          m_graphic->removeRuler(*m_graphic->rulers().front());
        return;
      case 28:
        return m_graphic->moveSelectionByLevel(below(5) - 2);
      case 29:
        return m_graphic->sendSelectionTo(below(2) == 0 ? ZOrder::End::Front : ZOrder::End::Back);
      case 30: {
        QList<qsizetype> rows;
        for (qsizetype row = 0; row < m_graphic->components().size(); ++row)
          if (below(3) == 0) rows.append(row);
        m_graphic->setSelectionIndexPaths(rows);
        (void)m_graphic->swapSelected();
        return;
      }
      case 31:
        if (below(3) == 0) return m_graphic->showAllComponents();
        return m_graphic->soloSelectedComponents();
      case 32:
        m_graphic->setEditorTimepointForNearestTick(real(0, 2));
        m_graphic->setPosterFrameMode(below(2));
        return m_graphic->setDuration(real(1, 3));
      case 33:
        return m_graphic->setVideoResolution(VideoResolution(
            below(2) == 0 ? QStringLiteral("HD 1080i25") : QStringLiteral("HD 720p50")));
      case 34:
        return maintain(warnings);
      default:
        return addOrRemove(warnings);
    }
  }

  void maintain(QStringList& warnings) {
    Maintenance maintenance(*m_graphic, StandardComponents(m_components));
    m_graphic->setFileURL(QUrl::fromLocalFile(m_components + QStringLiteral("/d/x.qtz")));
    switch (below(4)) {
      case 0:
        (void)maintenance.upgradeComponents(warnings);
        break;
      case 1:
        (void)maintenance.makePathsRelative();
        break;
      case 2:
        (void)maintenance.embedResources();
        break;
      default:
        m_graphic->sizeToFitSelection();
        break;
    }
  }

  void addOrRemove(QStringList& warnings) {
    const qsizetype count = m_graphic->components().size();
    const int choice = below(6);
    if (count > 6 || (choice == 0 && count > 0)) {
      m_graphic->removeComponents({&anyComponent()});
    } else if (choice == 1 && count > 0) {
      const auto copy = anyComponent().dictionaryWithData();
      if (QuartzComponent* made =
              QuartzComponent::createWithDictionaryData(copy, *m_graphic, warnings))
        m_graphic->addComponent(*made);
    } else {
      const QString path = choice == 2 ? QStringLiteral("/nowhere.qtz") : m_paths[below(2)];
      m_graphic->addComponenWithQuartzCompositionFile(path, {}, warnings);
    }
  }

  Graphic& m_graphic;
  std::mt19937 m_random;
  QStringList m_paths;
  QString m_components;
};

}  // namespace

TEST(Undo, RestoresTheStoreByteForByteAfterAnyEdits) {
  ComponentFiles files;
  Graphic graphic = emptyGraphic();
  store::ObjectContext& context = *graphic.context;
  context.clearHistory();
  RandomEditor editor(graphic, files, 20261121);
  std::mt19937 random(7);
  const QByteArray start = bytesOf(context);
  QHash<int, QByteArray> known;  // by place in the history
  int cancelled = 0;
  for (int operation = 0; operation < 12000; ++operation) {
    if (operation % 10 == 3) {  // several as one, sometimes taken back
      store::UndoStep step(context, QStringLiteral("Group"));
      editor.step();
      const QByteArray before = operation % 40 == 3 ? bytesOf(context) : QByteArray();
      store::UndoStep inner(context);
      editor.step();
      if (!before.isEmpty()) {
        inner.cancel();
        ASSERT_EQ(bytesOf(context) == before, true) << "cancelled in operation " << operation;
        ++cancelled;
      }
    } else {
      editor.step();
    }
    if (operation % 25 == 0) {
      for (unsigned i = random() % 6; i > 0 && context.canUndo(); --i) context.undo();
      for (unsigned i = random() % 4; i > 0 && context.canRedo(); --i) context.redo();
    }
    if (operation % 100 != 0 || context.history().index() == 0) continue;
    // A place that is reached again by undo holds what it held before.
    const int place = context.history().index();
    const QByteArray here = bytesOf(context);
    context.undo();
    context.redo();
    ASSERT_EQ(bytesOf(context) == here, true) << "operation " << operation;
    known.insert(place, here);
    known.removeIf([&](const auto& entry) { return entry.key() > place; });
  }
  EXPECT_GT(cancelled, 100);
  const QByteArray end = bytesOf(context);
  const int last = context.history().index();
  while (context.canUndo()) {
    context.undo();
    const auto expected = known.constFind(context.history().index());
    if (expected != known.cend()) {
      ASSERT_EQ(bytesOf(context) == *expected, true) << "at " << context.history().index();
    }
  }
  EXPECT_EQ(bytesOf(context) == start, true);
  while (context.history().index() < last) context.redo();
  EXPECT_EQ(bytesOf(context) == end, true);
  EXPECT_GT(context.history().count(), 3000);
}

}  // namespace model
