#include "library/LibraryModel.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

#include "document/CompositionDocument.h"

namespace library {

namespace {

using testing::UnorderedElementsAre;

constexpr QSize thumbnailSize(88, 52);

class LibraryModelTest : public testing::Test {
 protected:
  void SetUp() override {
    QImage picture(320, 180, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(path(QStringLiteral("harbour.png"))));
    ASSERT_TRUE(
        QFile::copy(component(QStringLiteral("Rectangle")), path(QStringLiteral("Rectangle.qtz"))));
    write(QStringLiteral("broken.qtz"), "no property list");
    write(QStringLiteral("notes.txt"), "not for graphics");
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("badges.png/inner")));
    document::CompositionDocument strap;
    strap.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("HD 720p50")));
    strap.composition()->setBackgroundMode(model::BackgroundMode::SolidColor);
    QStringList warnings;
    auto* bar = strap.composition()->addComponenWithQuartzCompositionFile(
        component(QStringLiteral("Rectangle")), {}, warnings);
    ASSERT_TRUE(bar);
    bar->setWidth(1280);
    bar->setHeight(720);
    ASSERT_TRUE(strap.saveToURL(QUrl::fromLocalFile(path(QStringLiteral("strap.composition"))),
                                document::SaveOperation::SaveAs));
    model.setFolder(folder.path());
  }
  [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
  [[nodiscard]] static QString component(const QString& name) {
    return *model::StandardComponents::located().pathOf(name);
  }
  void write(const QString& name, const QByteArray& bytes) {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  [[nodiscard]] QModelIndex find(const QString& name, int column = LibraryModel::Name) const {
    for (int row = 0; row < model.rowCount(); ++row)
      if (model.index(row, 0).data().toString() == name) return model.index(row, column);
    return {};
  }
  template <typename Condition>
  static bool eventually(Condition condition) {
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 10'000; QCoreApplication::processEvents())
      if (condition()) return true;
    return false;
  }
  [[nodiscard]] QImage thumbnail(const QString& name) const {
    return find(name).data(LibraryModel::ThumbnailRole).value<QImage>();
  }

  QTemporaryDir folder;
  LibraryModel model{thumbnailSize};
};

}  // namespace

TEST_F(LibraryModelTest, ListsWhatGraphicsAreMadeOf) {
  QStringList listed;
  for (int row = 0; row < model.rowCount(); ++row)
    listed.append(model.index(row, LibraryModel::Name).data().toString() + u' ' +
                  model.index(row, LibraryModel::Kind).data().toString());
  EXPECT_THAT(listed, UnorderedElementsAre(
                          QStringLiteral("badges.png Folder"), QStringLiteral("broken Component"),
                          QStringLiteral("harbour Image"), QStringLiteral("Rectangle Component"),
                          QStringLiteral("strap Composition")));
  EXPECT_EQ(find(QStringLiteral("harbour"), LibraryModel::Resolution).data().toString(),
            QStringLiteral("320 × 180"));
  EXPECT_EQ(find(QStringLiteral("strap"), LibraryModel::Resolution).data().toString(),
            QStringLiteral("1280 × 720"));
  EXPECT_GT(find(QStringLiteral("strap"), LibraryModel::SizeOfFile)
                .data(LibraryModel::SortRole)
                .toLongLong(),
            QFile(path(QStringLiteral("strap.composition/data.xml"))).size());
}

TEST_F(LibraryModelTest, MakesThumbnailsOfEveryKind) {
  for (const char* name : {"harbour", "Rectangle", "strap"}) {
    const QString entry = QString::fromLatin1(name);
    ASSERT_TRUE(eventually([&] { return !thumbnail(entry).isNull(); })) << name;
    const QImage picture = thumbnail(entry);
    EXPECT_LE(picture.width(), thumbnailSize.width());
    EXPECT_LE(picture.height(), thumbnailSize.height());
    EXPECT_GT(qAlpha(picture.pixel(picture.rect().center())), 250) << name << " shows nothing";
  }
  EXPECT_EQ(qRed(thumbnail(QStringLiteral("harbour")).pixel(20, 20)), 255);
  const auto problem = [&] {
    static_cast<void>(thumbnail(QStringLiteral("broken")));
    return find(QStringLiteral("broken")).data(LibraryModel::ProblemRole).toString();
  };
  EXPECT_TRUE(eventually([&] { return problem().contains(QLatin1String("broken.qtz")); }));
}

TEST_F(LibraryModelTest, FollowsTheFolder) {
  write(QStringLiteral("new.qtz"), "x");
  EXPECT_TRUE(eventually([&] { return find(QStringLiteral("new")).isValid(); }));
  model.setFolder(path(QStringLiteral("later")));
  EXPECT_EQ(model.rowCount(), 0);
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("later")));
  write(QStringLiteral("later/late.qtz"), "x");
  EXPECT_TRUE(eventually([&] { return find(QStringLiteral("late")).isValid(); }));
}

TEST_F(LibraryModelTest, FilesAreDraggedFoldersAreNot) {
  const std::unique_ptr<QMimeData> data(
      model.mimeData({find(QStringLiteral("strap")), find(QStringLiteral("badges.png")),
                      find(QStringLiteral("strap"), LibraryModel::Kind)}));
  ASSERT_TRUE(data);
  EXPECT_EQ(data->urls(),
            QList<QUrl>{QUrl::fromLocalFile(path(QStringLiteral("strap.composition")))});
  EXPECT_FALSE(model.flags(find(QStringLiteral("badges.png"))) & Qt::ItemIsDragEnabled);
}

}  // namespace library
