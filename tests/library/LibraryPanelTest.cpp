#include <gmock/gmock.h>

#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include "library/LibraryList.h"
#include "library/TYLibraryController.h"

namespace library {

namespace {

class LibraryPanelTest : public testing::Test {
 protected:
  LibraryPanelTest() {
    for (const char* name : {"one.png", "two.png"}) savePicture(name);
    defaults.setValue(folder.path(), QStringLiteral("imagesLibraryPath"));
    panel = make();
  }
  [[nodiscard]] std::unique_ptr<TYLibraryController> make() {
    auto made =
        std::make_unique<TYLibraryController>(defaults, QList<TYLibraryController::Place>{});
    made->resize(452, 600);
    made->show();
    QCoreApplication::processEvents();
    return made;
  }
  void savePicture(const char* name) const {
    QImage picture(16, 9, QImage::Format_RGB32);
    picture.fill(Qt::green);
    ASSERT_TRUE(picture.save(folder.filePath(QString::fromLatin1(name))));
  }
  [[nodiscard]] static QTreeView& list(const TYLibraryController& of) {
    return *of.findChild<LibraryList*>();
  }
  [[nodiscard]] QStringList selected() const {
    QStringList names;
    for (const QModelIndex& row : panel->files().selectionModel()->selectedRows())
      names.append(row.data().toString());
    return names;
  }

  QTemporaryDir folder;
  foundation::UserDefaults defaults{folder.filePath(QStringLiteral("settings.conf"))};
  std::unique_ptr<TYLibraryController> panel;
};

}  // namespace

TEST_F(LibraryPanelTest, TheSelectionOutlivesFilesThatComeAndGo) {
  QTreeView& files = list(*panel);
  files.selectionModel()->select(files.model()->index(1, 0),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
  ASSERT_EQ(selected(), QStringList{QStringLiteral("two")});
  savePicture("four.png");
  panel->model().reload();
  EXPECT_EQ(files.model()->rowCount(), 3);
  EXPECT_EQ(selected(), QStringList{QStringLiteral("two")});
  panel->setShowsGrid(true);
  EXPECT_EQ(selected(), QStringList{QStringLiteral("two")}) << "the tiles have the same one";
}

TEST_F(LibraryPanelTest, ColumnsGiveWayToTheNameAndAreRemembered) {
  QTreeView& files = list(*panel);
  EXPECT_FALSE(files.isColumnHidden(LibraryModel::Resolution));
  EXPECT_FALSE(files.isColumnHidden(LibraryModel::Kind));
  EXPECT_TRUE(files.isColumnHidden(LibraryModel::Tags));
  panel->resize(360, 600);
  QCoreApplication::processEvents();
  EXPECT_TRUE(files.isColumnHidden(LibraryModel::DateModified));
  EXPECT_FALSE(files.isColumnHidden(LibraryModel::Resolution));
  EXPECT_GE(files.columnWidth(LibraryModel::Name), 140);
  panel->resize(250, 600);
  QCoreApplication::processEvents();
  EXPECT_TRUE(files.header()->isHidden());

  panel->resize(452, 600);
  QCoreApplication::processEvents();
  files.header()->resizeSection(LibraryModel::Kind, 61);
  panel->setShowsGrid(true);
  const auto next = make();
  EXPECT_TRUE(next->showsGrid());
  EXPECT_EQ(list(*next).columnWidth(LibraryModel::Kind), 61);
}

TEST_F(LibraryPanelTest, PlacesFollowTheSettings) {
  const QString other = folder.filePath(QStringLiteral("other"));
  ASSERT_TRUE(QDir().mkpath(other));
  defaults.setValue(other, QStringLiteral("compositionsLibraryPath"));
  panel->refresh();
  const auto& places = panel->findChild<PlacesView*>()->places();
  ASSERT_EQ(places.size(), 2);
  EXPECT_EQ(places.last().folder, other);
  panel->choosePlace(1);
  EXPECT_EQ(panel->model().folder(), other);
  defaults.remove(QStringLiteral("compositionsLibraryPath"));
  panel->refresh();
  EXPECT_EQ(panel->model().folder(), folder.path()) << "the place that was shown is gone";
}

}  // namespace library
