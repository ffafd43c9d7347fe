#include "quartz/QuartzComposition.h"

#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "foundation/PropertyList.h"
#include "support/Samples.h"

namespace quartz {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyList;
using foundation::PropertyValue;

namespace {

QString text(const char16_t* characters) {
  return QString::fromUtf16(characters);
}

class QuartzCompositionFile : public testing::Test {
 protected:
  QString path(const char16_t* name) const { return m_dir.filePath(text(name)); }
  void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

 private:
  QTemporaryDir m_dir;
};

PropertyDictionary nestedPatches(int levels) {
  PropertyDictionary patch{{text(u"class"), text(u"QCPatch")}};
  for (int i = 0; i < levels; ++i)
    patch = {{text(u"class"), text(u"QCPatch")},
             {text(u"state"),
              PropertyDictionary{{text(u"nodes"), PropertyArray{PropertyValue(patch)}}}}};
  return {{text(u"rootPatch"), patch}};
}

}  // namespace

TEST_F(QuartzCompositionFile, AnEmptyCompositionWritesACompleteRoot) {
  ASSERT_TRUE(QuartzComposition::composition()->writeToFile(path(u"empty.qtz"), true));
  const auto tree = PropertyList::fromFile(path(u"empty.qtz"));
  ASSERT_TRUE(tree);
  const PropertyDictionary state{{text(u"connections"), PropertyDictionary()},
                                 {text(u"nodes"), PropertyArray()},
                                 {text(u"publishedInputPorts"), PropertyArray()}};
  const PropertyDictionary root{{text(u"class"), text(u"QCPatch")}, {text(u"state"), state}};
  EXPECT_EQ(*tree, PropertyValue(PropertyDictionary{{text(u"rootPatch"), root}}));
}

TEST_F(QuartzCompositionFile, KeepsWhatItDoesNotKnow) {
  const PropertyDictionary nodeState{{text(u"connections"), PropertyDictionary()},
                                     {text(u"nodes"), PropertyArray()},
                                     {text(u"odd"), PropertyArray{true, 1, 1.0}},
                                     {text(u"publishedInputPorts"), PropertyArray()}};
  const PropertyDictionary node{{text(u"class"), text(u"X")},
                                {text(u"future"), QByteArray("\0\1", 2)},
                                {text(u"state"), nodeState}};
  const PropertyDictionary rootState{{text(u"connections"), PropertyDictionary()},
                                     {text(u"nodes"), PropertyArray{PropertyValue(node)}},
                                     {text(u"publishedInputPorts"), PropertyArray()},
                                     {text(u"publishedOutputPorts"), text(u"no list")}};
  const PropertyDictionary file{
      {text(u"rootPatch"), PropertyDictionary{{text(u"extra"), 5}, {text(u"state"), rootState}}},
      {text(u"unknown"), PropertyDictionary{{text(u"a"), text(u"b")}}}};
  write(path(u"in.qtz"), *PropertyList::toXml(file));
  auto composition = QuartzComposition::compositionWithFile(path(u"in.qtz"));
  ASSERT_TRUE(composition);
  EXPECT_EQ((*composition)->fileDictionary(), file);
  EXPECT_EQ((*composition)->rootPatch()->nodes().front()->composition(), composition->get());
}

TEST_F(QuartzCompositionFile, EverySampleIsReadWrittenAndReadAgainTheSame) {
  const QStringList samples = support::samplePaths();
  if (samples.isEmpty()) GTEST_SKIP() << "no sample compositions at hand";
  for (const QString& sample : samples) {
    SCOPED_TRACE(sample.toStdString());
    auto first = QuartzComposition::compositionWithFile(sample);
    ASSERT_TRUE(first) << first.error().text().toStdString();
    ASSERT_TRUE((*first)->writeToFile(path(u"copy.qtz"), false));
    auto second = QuartzComposition::compositionWithFile(path(u"copy.qtz"));
    ASSERT_TRUE(second);
    EXPECT_EQ((*first)->fileDictionary(), (*second)->fileDictionary());
    const auto original = PropertyList::fromFile(sample);
    EXPECT_EQ((*first)->data().size() + 1, original->dictionary().size());
  }
}

TEST_F(QuartzCompositionFile, RefusesWhatIsNoComposition) {
  const auto errorOf = [&](const QByteArray& bytes) {
    write(path(u"bad.qtz"), bytes);
    const auto result = QuartzComposition::compositionWithFile(path(u"bad.qtz"));
    return result ? QString() : result.error().text();
  };
  const auto nested = [](int levels) { return *PropertyList::toXml(nestedPatches(levels)); };
  EXPECT_TRUE(errorOf("no list").contains(text(u"bad.qtz")));
  EXPECT_TRUE(errorOf(*PropertyList::toXml(PropertyArray{1})).contains(text(u"no dictionary")));
  EXPECT_TRUE(errorOf(*PropertyList::toXml(PropertyDictionary{{text(u"rootPatch"), 3}}))
                  .contains(text(u"not a dictionary")));
  EXPECT_EQ(errorOf(nested(60)), QString());
  EXPECT_FALSE(errorOf(nested(110)).isEmpty());
  EXPECT_FALSE(QuartzComposition::compositionWithFile(path(u"missing.qtz")));
}

TEST_F(QuartzCompositionFile, AFailedWriteNamesTheFile) {
  const auto result = QuartzComposition::composition()->writeToFile(path(u"none/there.qtz"), true);
  ASSERT_FALSE(result);
  EXPECT_TRUE(result.error().text().contains(text(u"there.qtz")));
}

TEST_F(QuartzCompositionFile, WritesThroughLinksAndReplacesNoPipes) {
  const QString pipe = path(u"pipe.qtz");
  ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
  EXPECT_FALSE(QuartzComposition::composition()->writeToFile(pipe, true));
  struct stat kind = {};
  ASSERT_EQ(stat(qPrintable(pipe), &kind), 0);
  EXPECT_TRUE(S_ISFIFO(kind.st_mode));

  QFile target(path(u"target.qtz"));
  ASSERT_TRUE(target.open(QIODevice::WriteOnly));
  target.close();
  ASSERT_TRUE(target.link(path(u"link.qtz")));
  ASSERT_TRUE(QuartzComposition::composition()->writeToFile(path(u"link.qtz"), true));
  EXPECT_TRUE(QFileInfo(path(u"link.qtz")).isSymLink());
  EXPECT_GT(QFileInfo(target).size(), 0);
}

TEST(QuartzComposition, TakesPixelFormatsOutButNotBelowOne) {
  const PropertyDictionary inner{{text(u"pixelFormat"), text(u"ARGB8")}, {text(u"w"), 1}};
  PropertyValue tree = PropertyArray{
      PropertyDictionary{{text(u"pixelFormat"), text(u"RGBAf")}, {text(u"inner"), inner}},
      PropertyDictionary{{text(u"other"), inner}}, 5};
  QuartzComposition::removePixelFormatSettingFromCollection(tree);
  EXPECT_EQ(tree,
            PropertyValue(PropertyArray{
                PropertyDictionary{{text(u"inner"), inner}},
                PropertyDictionary{{text(u"other"), PropertyDictionary{{text(u"w"), 1}}}}, 5}));

  auto composition = QuartzComposition::composition();
  composition->rootPatch()->addPatchWithClass(text(u"QCRenderInImage"), inner);
  EXPECT_FALSE(composition->fileDataByRemovingPixelFormatSetting(true)->contains("pixelFormat"));
  EXPECT_TRUE(composition->fileDataByRemovingPixelFormatSetting(false)->contains("pixelFormat"));
}

TEST(QuartzComposition, ViewerSizeGrowsByTheTitleBarWhenWritten) {
  QuartzComposition none;
  none.setViewerSize({1920, 1080});
  EXPECT_FALSE(none.data().contains(u"editorViewerWindow"));
  EXPECT_EQ(none.viewerSize(), QSizeF(0, 0));

  QuartzComposition composition(
      PropertyDictionary{{text(u"editorViewerWindow"), text(u"10 20 640 480.5 0 0")}});
  EXPECT_EQ(composition.viewerSize(), QSizeF(640, 480.5));
  composition.setViewerSize({1920, 1080});
  EXPECT_EQ(composition.data().value(u"editorViewerWindow").toString(),
            text(u"10 20 1920.000000 1126.000000 0 0"));
  EXPECT_EQ(composition.viewerSize(), QSizeF(1920, 1126));
}

TEST(QuartzComposition, ValuesForFiles) {
  const PropertyValue color =
      QuartzComposition::quartzValueForObject(foundation::Color{0.1, 0.2, 1, 0.25});
  EXPECT_EQ(color, PropertyValue(PropertyDictionary{{text(u"alpha"), 1.0},
                                                    {text(u"blue"), 1.0},
                                                    {text(u"green"), double(0.2f)},
                                                    {text(u"red"), double(0.1f)}}));
  QImage image(2, 1, QImage::Format_ARGB32);
  image.setPixelColor(0, 0, QColor(255, 0, 0, 128));
  image.setPixelColor(1, 0, QColor(1, 2, 3, 255));
  const QByteArray tiff = QuartzComposition::quartzValueForObject(image).toData();
  EXPECT_EQ(tiff.left(4), QByteArray("MM\0*", 4));
  EXPECT_EQ(tiff.mid(8, 8), QByteArray("\xff\0\0\x80\1\2\3\xff", 8));
  EXPECT_EQ(QuartzComposition::quartzValueForObject(PropertyValue(5)), PropertyValue(5));
}

}  // namespace quartz
