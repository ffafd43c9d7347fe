#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cmath>
#include <iostream>

#include "GeneratedGraphic.h"
#include "document/CompositionDocument.h"
#include "runtime/CompositionChecker.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/draw/RasterBackend.h"
#include "support/GoldenImage.h"

namespace {

using model::Composition;

/// The same graphic by both ways: as the editor draws it, and as its export plays.
class BothWays {
 public:
  explicit BothWays(Composition& composition) : m_composition(composition) {
    m_size = QSize(static_cast<int>(composition.width()) / 4,
                   static_cast<int>(composition.height()) / 4);
    const QString path = m_folder.filePath(QStringLiteral("playout.qtz"));
    const auto done = composition.exportToPath(path, Composition::Background::Exclude);
    EXPECT_TRUE(done) << (done ? "" : done.error().text().toStdString());
    auto made = runtime::CompositionRenderer::fromFile(path);
    EXPECT_TRUE(made) << (made ? "" : made.error().text().toStdString());
    if (made) m_export = std::move(*made);
    const auto file = quartz::QuartzComposition::compositionWithFile(path);
    for (const auto& finding : runtime::CompositionChecker::check(**file, path))
      ADD_FAILURE() << finding.code.toStdString() << ": " << finding.object.toStdString() << ": "
                    << finding.sentence.toStdString();
  }

  [[nodiscard]] QImage inEditor(double time) {
    m_composition.setEditorTimepoint(time);
    QImage canvas = blank();
    for (model::QuartzComponent* component : m_composition.componentsSortedByZLevel())
      runtime::RasterBackend().draw(component->renderForView(m_size, time), canvas);
    return canvas;
  }
  /// Times must not go back. Stop frames on the way are released at once, so that the graphic's own
  /// time is the playing time.
  [[nodiscard]] QImage onAir(double time) {
    for (const double stop : m_composition.stopFrameTimepoints()) {
      if (stop >= time || stop < m_played) continue;
      draw(stop);
      release(stop);
    }
    m_played = time;
    return draw(time);
  }

 private:
  [[nodiscard]] QImage blank() const {
    QImage canvas(m_size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    return canvas;
  }
  QImage draw(double time) {
    QImage canvas = blank();
    runtime::RasterBackend().draw(m_export->renderAtTime(time, m_size), canvas);
    return canvas;
  }
  void release(double stop) {
    const QString trigger = QStringLiteral("trigger");
    m_export->setValueForInputKey(true, trigger);
    (void)m_export->renderAtTime(stop, m_size);
    m_export->setValueForInputKey(false, trigger);
  }

  Composition& m_composition;
  QSize m_size;
  QTemporaryDir m_folder;
  std::unique_ptr<runtime::CompositionRenderer> m_export;
  double m_played = 0;
};

/// On air a component stands further left and lower by its margins, which the editor does not show.
/// Afterwards the editor draws it where the export has it.
void takeMarginsIntoOrigins(Composition& composition) {
  for (model::QuartzComponent* component : composition.components())
    for (const auto& [origin, margin] : {std::pair{u"originX", component->marginX()},
                                         std::pair{u"originY", component->marginY()}}) {
      if (margin <= 0) continue;
      model::Attribute* attribute = component->attributeForKey(QString::fromUtf16(origin));
      for (const double time : attribute->sortedKeyFrames())
        attribute->setValueForTimepoint(attribute->valueForTimepoint(time).toNumber() - margin,
                                        time);
    }
}

/// For the message of a failure.
std::string description(const Composition& composition) {
  QStringList lines;
  for (const model::QuartzComponent* component : composition.componentsSortedByZLevel()) {
    const QRectF frame = component->drawingFrame();
    lines += QStringLiteral("  %1: %2, %3, %4 x %5, turned %6, opacity %7, margins %8 %9, times")
                 .arg(QFileInfo(component->compositionFilename()).baseName())
                 .arg(frame.x())
                 .arg(frame.y())
                 .arg(frame.width())
                 .arg(frame.height())
                 .arg(component->zRotation())
                 .arg(component->opacity())
                 .arg(component->marginX())
                 .arg(component->marginY()) +
             QStringLiteral(" %1 to %2").arg(component->startTime()).arg(component->endTime());
    for (const model::Attribute* attribute : component->attributes())
      if (attribute->animateable()) lines.last() += QStringLiteral(", ") + attribute->key();
  }
  return lines.join(QLatin1Char('\n')).toStdString();
}

/// Compares at all the times; a picture of both is kept where they differ.
int compare(Composition& composition, const QList<double>& times, const QString& name) {
  BothWays both(composition);
  takeMarginsIntoOrigins(composition);
  int worst = 0;
  for (const double time : times) {
    const QImage editor = both.inEditor(time);
    const QImage air = both.onAir(time);
    const int difference = support::largestDifference(editor, air);
    worst = std::max(worst, difference);
    if (difference <= 2) continue;
    const QString folder = qEnvironmentVariable("TESSARY_PARITY_OUTPUT");
    if (!folder.isEmpty()) {
      editor.save(QStringLiteral("%1/%2-%3-editor.png").arg(folder, name).arg(time));
      air.save(QStringLiteral("%1/%2-%3-air.png").arg(folder, name).arg(time));
    }
    ADD_FAILURE() << name.toStdString() << " at " << time << " s differs by " << difference << "\n"
                  << description(composition);
  }
  return worst;
}

}  // namespace

TEST(ExportParity, GeneratedGraphicsLookTheSameOnAir) {
  int worst = 0;
  int pictures = 0;
  int onTheirWay = 0;
  for (unsigned seed = 1; seed <= 200; ++seed) {
    support::GeneratedGraphic graphic(seed);
    Composition& composition = graphic.composition();
    QList<double> times = support::remarkableTimes(composition);
    onTheirWay += static_cast<int>(
        times.removeIf([&](double time) { return !support::isSettled(composition, time); }));
    pictures += static_cast<int>(times.size());
    worst = std::max(worst, compare(composition, times, QString::number(seed)));
  }
  std::cout << pictures << " pictures compared, largest difference " << worst << "/255; "
            << onTheirWay << " times left out at which something moves\n";
  EXPECT_GT(pictures, 800);
}

TEST(ExportParity, ValuesOnTheirWayAndMarginsDifferByThisMuch) {
  store::ObjectContext context;
  Composition& composition = *context.insert(
      std::make_unique<Composition>(model::VideoResolution(QStringLiteral("HD 1080p50"))));
  QStringList warnings;
  model::QuartzComponent* bar = composition.addComponenWithQuartzCompositionFile(
      QStringLiteral(TESSARY_COMPONENTS "/Rectangle.qtz"), {}, warnings);
  ASSERT_NE(bar, nullptr);
  bar->setWidth(80);
  bar->setHeight(1080);
  bar->setOriginY(0);
  bar->setMarginX(40);
  model::Attribute& x = *bar->attributeForKey(QStringLiteral("originX"));
  x.addTimepoint(0, 240.0);
  x.addTimepoint(4, 1840.0);
  BothWays both(composition);
  /// The left edge of the bar, in pixels of the format.
  const auto edge = [](const QImage& picture) {
    for (int column = 0; column < picture.width(); ++column)
      if (qAlpha(picture.pixel(column, picture.height() / 2)) > 127) return column * 4;
    return -1;
  };
  struct Expected {
    double time;
    int editor;
    int air;
  };
  // The editor moves evenly. On air the bar starts and ends gently, the curve being symmetrical,
  // and stands further left by the margin of 40.
  for (const auto& [time, editor, air] :
       {Expected{0, 240, 200}, Expected{1, 640, 369}, Expected{2, 1040, 1000},
        Expected{3, 1440, 1631}, Expected{4, 1840, 1800}}) {
    EXPECT_NEAR(edge(both.inEditor(time)), editor, 4) << time;
    EXPECT_NEAR(edge(both.onAir(time)), air, 4) << time;
  }
}

TEST(ExportParity, ExamplesLookTheSameOnAir) {
  const QDir examples(QStringLiteral(TESSARY_EXAMPLES));
  const QStringList packages = examples.entryList({QStringLiteral("*.composition")}, QDir::Dirs);
  EXPECT_EQ(packages.size(), 8);
  for (const QString& name : packages) {
    document::CompositionDocument graphic(
        model::StandardComponents(QStringLiteral(TESSARY_COMPONENTS)));
    const auto read = graphic.readFromURL(QUrl::fromLocalFile(examples.filePath(name)));
    ASSERT_TRUE(read) << read.error().text().toStdString();
    Composition& composition = *graphic.composition();
    QList<double> times = support::remarkableTimes(composition);
    times.removeIf([&](double time) { return !support::isSettled(composition, time); });
    EXPECT_GE(times.size(), composition.stopFrames().size());
    compare(composition, times, name);
  }
}
