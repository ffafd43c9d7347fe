#include "canvas/ToolbarComponents.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "model/StandardComponents.h"

namespace canvas {

TEST(ToolbarComponents, EveryItemOfTheToolbarHasItsComponent) {
  const ToolbarComponents& components = ToolbarComponents::shared();
  ASSERT_EQ(components.toolbarComponentIdentifier().join(u','),
            QStringLiteral("Text,Image,Shapes,Clock,Ticker"));
  const auto standard = model::StandardComponents::located();
  for (const ToolbarComponents::Entry& entry : components.entries()) {
    EXPECT_EQ(entry.component.isEmpty(), !entry.subcomponents.isEmpty());
    EXPECT_EQ(standard.pathOf(entry.component).has_value(), !entry.component.isEmpty());
    for (const auto& sub : entry.subcomponents)
      EXPECT_EQ(standard.pathOf(sub.component).has_value(), !sub.isSeparator());
  }
  EXPECT_EQ(components.componentFor(QStringLiteral("Shapes"), 2), QStringLiteral("Ellipse"));
  EXPECT_EQ(components.componentFor(QStringLiteral("Shapes"), 99), QString());
  EXPECT_EQ(components.componentFor(QStringLiteral("Nobody")), QString());
  EXPECT_EQ(components.allToolbarIdentifier().size(), 18);
  EXPECT_EQ(components.allToolbarIdentifier().last(), QStringLiteral("Preview"));
  EXPECT_EQ(
      (ToolbarComponents::Entry{QStringLiteral("Lower Third/Bar"), {}, {}, {}, 0, {}}).imageName(),
      QStringLiteral("imageOfToolbarLowerThirdBar"));
}

TEST(ToolbarComponents, ADamagedListIsRefusedAndOddEntriesAreLeftOut) {
  const QTemporaryDir folder;
  const auto read = [&](const QByteArray& content) {
    QFile file(folder.filePath(QStringLiteral("list.plist")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    return ToolbarComponents::fromFile(file.fileName());
  };
  EXPECT_FALSE(read("nothing of the kind").has_value());
  EXPECT_FALSE(ToolbarComponents::fromFile(folder.filePath(QStringLiteral("none"))).has_value());
  const auto odd = read(
      "<plist version=\"1.0\"><array><string>x</string><dict/><dict><key>identifier</key>"
      "<string>A</string></dict></array></plist>");
  ASSERT_TRUE(odd.has_value());
  EXPECT_EQ(odd->toolbarComponentIdentifier(), QStringList{QStringLiteral("A")});
}

}  // namespace canvas
