#include <QDropEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

#include "CanvasFixture.h"
#include "canvas/CanvasHost.h"
#include "model/CommandReport.h"
#include "model/ComponentClipboard.h"

namespace canvas {

namespace {

class RecordingHost : public CanvasHost {
 public:
  void showReport(const model::CommandReport& report) override { reports.append(report.text); }
  bool importPSDFile(const QString& path, const QString& qtzFile) override {
    imported.append({path, qtzFile});
    return true;
  }
  QStringList reports;
  QList<std::pair<QString, QString>> imported;
};

}  // namespace

class Dropping : public CanvasFixture {
 protected:
  Dropping() {
    view.setHost(host);
    imageComponent =
        files.writeComponent(QStringLiteral("ImageComponent.qtz"),
                             {{QStringLiteral("Image"), QStringLiteral("QCGLImagePort"), {}, {}}});
    psd = QStringLiteral(TESSARY_SOURCE_DIR "/tests/document/files/magick-8zip.psd");
    picture = files.path(QStringLiteral("picture.png"));
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::blue);
    image.save(picture);
  }
  QString write(const QString& name, const QByteArray& bytes) {
    QFile file(files.path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
  RecordingHost host;
  QString imageComponent, psd, picture;
};

TEST_F(Dropping, FilesBecomeComponentsInOneStep) {
  const QString component = files.writeComponent(QStringLiteral("plate.qtz"), {});
  EXPECT_TRUE(view.addComponentsFromPaths(
      {component, picture, write(QStringLiteral("notes.txt"), "hello")}, false));
  ASSERT_EQ(graphic->components().size(), 2);
  EXPECT_EQ(graphic->componentArray()[1]->drawingFrame().size(), QSizeF(40, 30));
  EXPECT_EQ(graphic.context->history().count(), 1);
  EXPECT_EQ(undoName(), QStringLiteral("Add Component"));
  EXPECT_TRUE(host.reports.isEmpty());
}

TEST_F(Dropping, ABrokenCompositionIsToldAndTheOthersAreAdded) {
  const QString broken = write(QStringLiteral("broken.qtz"), "no composition");
  EXPECT_FALSE(view.addComponentsFromPaths({broken, picture}, false));
  EXPECT_EQ(graphic->components().size(), 1);
  ASSERT_EQ(host.reports.size(), 1);
  EXPECT_TRUE(host.reports[0].startsWith(QStringLiteral(
      "Please note the following information related to the import:\n\n• Could not load")))
      << host.reports[0].toStdString();
  EXPECT_FALSE(view.addComponentsFromPaths({files.path(QStringLiteral("none.qtz"))}, false));
}

TEST_F(Dropping, LayeredFilesAreAskedAboutUnlessTheCommandKeyFlattensThem) {
  EXPECT_TRUE(view.addComponentsFromPaths({psd}, false));
  ASSERT_EQ(host.imported.size(), 1);
  EXPECT_EQ(host.imported[0], std::pair(psd, imageComponent));
  EXPECT_EQ(graphic->components().size(), 0);
  EXPECT_TRUE(view.addComponentsFromPaths({psd}, true));
  ASSERT_EQ(graphic->components().size(), 1);
  EXPECT_EQ(graphic->componentArray()[0]->drawingFrame().size(), QSizeF(64, 48));
}

TEST_F(Dropping, ADropOnTheViewTakesFilesAndComponents) {
  const auto drop = [&](const QMimeData& data) {
    QDragEnterEvent enter({100, 100}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &enter);
    EXPECT_EQ(view.scene()->transient().isDropTarget, enter.isAccepted());
    QDropEvent event({100, 100}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    event.ignore();
    QApplication::sendEvent(&view, &event);
    EXPECT_FALSE(view.scene()->transient().isDropTarget);
    return event.isAccepted();
  };
  QMimeData urls;
  urls.setUrls({QUrl::fromLocalFile(picture)});
  EXPECT_TRUE(drop(urls));
  ASSERT_EQ(graphic->components().size(), 1);
  // At the pointer, and one undo step with being there.
  const QPointF pointer = view.geometryOfPicture().picturePoint({100, 100});
  EXPECT_EQ(graphic->componentArray()[0]->drawingFrame().center(), pointer);
  EXPECT_EQ(graphic.context->history().count(), 1);
  QMimeData archived;
  archived.setData(model::Composition::supportedDraggedTypes().first(),
                   *model::ComponentClipboard::dataForComponents(graphic->componentArray()));
  EXPECT_TRUE(drop(archived));
  EXPECT_EQ(graphic->components().size(), 2);
  QMimeData text;
  text.setText(QStringLiteral("hello"));
  EXPECT_FALSE(drop(text));
}

}  // namespace canvas
