#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "document/CompositionDocument.h"

namespace document {

/// A folder for packages, and a document of 1080i25 to work on.
class DocumentFixture : public testing::Test {
 protected:
  DocumentFixture() {
    document.emptyDocumentWithResolution(model::VideoResolution(QStringLiteral("1080i25 RGBA")));
  }

  [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
  [[nodiscard]] QUrl url(const QString& name) const { return QUrl::fromLocalFile(path(name)); }
  [[nodiscard]] static QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
  }
  model::QuartzComponent* addText(const QString& text) {
    QStringList warnings;
    return document.composition()->addComponenWithQuartzCompositionFile(
        *document.standardComponents().pathOf(QStringLiteral("TextComponent")),
        {{QStringLiteral("Text"), text}}, warnings);
  }
  void saveAs(const QString& name) {
    const auto saved = document.saveToURL(url(name), SaveOperation::SaveAs);
    ASSERT_TRUE(saved) << saved.error().text().toStdString();
  }

  QTemporaryDir folder;
  CompositionDocument document;
};

}  // namespace document
