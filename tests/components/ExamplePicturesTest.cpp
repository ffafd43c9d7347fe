#include <QTemporaryDir>

#include "ComponentPlayer.h"
#include "document/CompositionDocument.h"
#include "support/GoldenImage.h"

namespace {

using namespace support;

/// An example graphic, exported as a playout composition.
class Example {
 public:
  explicit Example(const QString& name) {
    document::CompositionDocument graphic(
        model::StandardComponents(QStringLiteral(TESSARY_COMPONENTS)));
    const auto read = graphic.readFromURL(
        QUrl::fromLocalFile(QStringLiteral(TESSARY_EXAMPLES "/%1.composition").arg(name)));
    EXPECT_TRUE(read) << (read ? "" : read.error().text().toStdString());
    if (!graphic.composition()) return;
    const QString path = m_folder.filePath(QStringLiteral("playout.qtz"));
    EXPECT_TRUE(graphic.composition()->exportToPath(path, model::Composition::Background::Exclude));
    auto made = runtime::CompositionRenderer::fromFile(path);
    EXPECT_TRUE(made) << (made ? "" : made.error().text().toStdString());
    if (made) m_renderer = std::move(*made);
  }
  [[nodiscard]] bool isPlayable() const { return m_renderer != nullptr; }
  runtime::CompositionRenderer& renderer() { return *m_renderer; }
  /// Plays on until the graphic waits for its trigger; false when it does not within ten seconds.
  bool playToStop(const QSize& size) {
    const QString waiting = QStringLiteral("waitingForTrigger");
    for (const double end = m_time + 10; m_time < end; m_time += 0.04) {
      (void)m_renderer->renderAtTime(m_time, size);
      if (m_renderer->valueForOutputKey(waiting).toBoolean()) return true;
    }
    return false;
  }
  /// Plays on, with the trigger pressed in the first frame where there is one.
  void play(double seconds, const QSize& size, bool trigger) {
    const QString key = QStringLiteral("trigger");
    for (const double end = m_time + seconds; m_time < end; m_time += 0.04) {
      if (trigger) m_renderer->setValueForInputKey(std::exchange(trigger, false), key);
      (void)m_renderer->renderAtTime(m_time, size);
      m_renderer->setValueForInputKey(false, key);
    }
  }
  QImage picture(const QSize& size) { return m_renderer->imageAtTime(m_time, size); }
  /// Plays frames of a 25th of a second up to the time and gives the area of the last.
  QImage picture(double until, const QRect& area) {
    QImage last;
    for (; m_time <= until + 0.001; m_time += 0.04) {
      const runtime::DrawList list = m_renderer->renderAtTime(m_time, {1920, 1080});
      if (m_time > until - 0.039) last = m_renderer->imageAtTime(m_time, {1920, 1080});
    }
    return last.copy(area);
  }

 private:
  QTemporaryDir m_folder;
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;
  double m_time = 0;
};

/// What waits is not to be looked at again until its operator does something; and what is said to
/// stand still does look the same later.
TEST(ExamplePictures, AGraphicThatWaitsStandsStill) {
  const QSize size(480, 270);
  for (const char* name : {"lower-third", "lower-third-rtl", "weather-strap"}) {
    Example example(QString::fromLatin1(name));
    ASSERT_TRUE(example.isPlayable()) << name;
    ASSERT_TRUE(example.playToStop(size)) << name;
    example.play(0.2, size, false);
    EXPECT_FALSE(example.renderer().isAnimated()) << name;
    const QImage before = example.picture(size);
    example.play(3, size, false);
    EXPECT_EQ(example.picture(size), before) << name;
    example.play(0.1, size, true);
    EXPECT_TRUE(example.renderer().isAnimated()) << name;
  }
}

TEST(ExamplePictures, LowerThirdFromStopToStop) {
  Example example(QStringLiteral("lower-third"));
  ASSERT_TRUE(example.isPlayable());
  runtime::CompositionRenderer& renderer = example.renderer();
  const QStringList keys = renderer.inputKeys();
  for (const char* key : {"trigger", "Name_1_Text", "Role_1_Text", "Name_2_Text", "Role_2_Text",
                          "Logo_Image", "Logo_Enable", "Tile_Enable", "Arcs_Enable"})
    EXPECT_TRUE(keys.contains(QLatin1String(key))) << key << keys.join(u' ').toStdString();
  const QRect strap(100, 830, 1290, 190);
  expectGolden(example.picture(0.8, strap), QStringLiteral("components/lower-third"));
  // It halts there until it is triggered, and a longer name shrinks.
  renderer.setValueForInputKey(QStringLiteral("Deputy Minister for Transport and Harbours"),
                               QStringLiteral("Name_2_Text"));
  expectGolden(example.picture(3, strap), QStringLiteral("components/lower-third"));
  renderer.setValueForInputKey(true, QStringLiteral("trigger"));
  expectGolden(example.picture(5, strap), QStringLiteral("components/lower-third-second"));
}

/// How many times an example halts.
struct Halts {
  const char* example;
  int count;
};

class ExampleAtItsStops : public testing::TestWithParam<Halts> {};

TEST_P(ExampleAtItsStops, LooksAsItDid) {
  const QString name = QString::fromLatin1(GetParam().example);
  const QSize size(480, 270);
  Example example(name);
  ASSERT_TRUE(example.isPlayable());
  for (int stop = 1; stop <= GetParam().count; ++stop) {
    ASSERT_TRUE(example.playToStop(size)) << "stop " << stop;
    expectGolden(example.picture(size), QStringLiteral("examples/%1-%2").arg(name).arg(stop));
    example.play(0.08, size, true);
  }
  if (GetParam().count > 0) {  // after the last stop it goes away
    EXPECT_FALSE(example.playToStop(size));
    EXPECT_FALSE(example.renderer().valueForOutputKey(QStringLiteral("active")).toBoolean());
    return;
  }
  example.play(2.4, size, false);
  expectGolden(example.picture(size), QStringLiteral("examples/%1").arg(name));
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleAtItsStops,
                         testing::Values(Halts{"breaking-strap", 2}, Halts{"channel-bug", 1},
                                         Halts{"lower-third", 2}, Halts{"lower-third-rtl", 1},
                                         Halts{"opener", 0}, Halts{"score-board", 2},
                                         Halts{"ticker", 1}, Halts{"weather-strap", 5}),
                         [](const auto& info) {
                           std::string name = info.param.example;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
