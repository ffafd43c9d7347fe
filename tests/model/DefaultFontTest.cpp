#include "model/DefaultFont.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace model {

using foundation::UserDefaults;

namespace {

const QString nameKey = QStringLiteral("defaultFontName");
const QString sizeKey = QStringLiteral("defaultFontSize");

class DefaultFontOf : public testing::Test {
 protected:
  FontValue font() const { return DefaultFont::defaultFontForElements(m_defaults); }

  QTemporaryDir m_folder;
  UserDefaults m_defaults{m_folder.filePath(QStringLiteral("settings.conf"))};
};

}  // namespace

TEST_F(DefaultFontOf, FreshSettingsIsTheRegisteredOne) {
  EXPECT_EQ(font(), (FontValue{QStringLiteral("Inter"), 12}));
  m_defaults.registerDefaults({{QStringLiteral("other"), 5}});
  DefaultFont::registerDefaults(m_defaults);
  EXPECT_EQ(font(), (FontValue{QStringLiteral("Inter"), 30}));
  EXPECT_EQ(m_defaults.value(QStringLiteral("other")), 5);
}

TEST_F(DefaultFontOf, TheUserIsKept) {
  DefaultFont::registerDefaults(m_defaults);
  DefaultFont::setAsDefaultFontForElements({QStringLiteral("Inter-Bold"), 17.9}, m_defaults);
  EXPECT_EQ(m_defaults.value(sizeKey), 17);
  EXPECT_EQ(font(), (FontValue{QStringLiteral("Inter-Bold"), 17}));
}

TEST_F(DefaultFontOf, UnusableSettingsIsTheSystemFont) {
  m_defaults.setValue(QStringLiteral("Never-Installed"), nameKey);
  m_defaults.setValue(0, sizeKey);
  EXPECT_EQ(font(), (FontValue{QStringLiteral("Inter"), 12}));
  m_defaults.setValue(QStringLiteral("wide"), sizeKey);
  EXPECT_EQ(font().size, 12);
  m_defaults.setValue(QStringLiteral("nan"), sizeKey);
  EXPECT_EQ(font().size, 12);
  DefaultFont::setAsDefaultFontForElements({QString(), -1e300}, m_defaults);
  EXPECT_EQ(font(), (FontValue{QStringLiteral("Inter"), 12}));
}

}  // namespace model
