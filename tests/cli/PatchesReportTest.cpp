#include "cli/PatchesReport.h"

#include <gtest/gtest.h>

#include <QFile>

namespace {

TEST(PatchesReport, TheDocumentedPatchesAreThoseOfTheRuntime) {
  QFile page(QStringLiteral(TESSARY_SOURCE_FOLDER "/docs/patches.md"));
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  EXPECT_EQ(page.readAll().trimmed().toStdString(), cli::patchesReport().trimmed().toStdString())
      << "run scripts/make-pictures";
}

}  // namespace
