#include <QDir>
#include <QFileInfo>

#include "runtime/check/Checks.h"

namespace runtime::check {

using foundation::Findings;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

/// Inputs that name a file.
constexpr std::pair<QLatin1String, QLatin1String> locationInputs[] = {
    {QLatin1String("QCImageDownloader"), QLatin1String("inputURL")},
    {QLatin1String("QCXMLDownloader"), QLatin1String("inputURL")},
    {QLatin1String("QCPatchRenderer"), QLatin1String("inputPath")},
    {QLatin1String("QCMovieImporter"), QLatin1String("inputMovieLocation")},
    {QLatin1String("QCPatchInfo"), QLatin1String("inputPath")},
    {QLatin1String("QCDirectoryScanner"), QLatin1String("inputPath")}};

bool isLocation(const PatchOutline& node, const QString& port) {
  return std::any_of(std::begin(locationInputs), std::end(locationInputs), [&](const auto& entry) {
    return node.patch.patchClass() == entry.first && port == entry.second;
  });
}

void checkRelative(const QString& location, const PatchOutline& node, const QFileInfo& file,
                   Findings& findings) {
  const QFileInfo target(QDir(file.absolutePath()).filePath(location));
  if (!target.exists())
    findings.append({QStringLiteral("missing-file"), node.path,
                     QStringLiteral("there is no %1 beside the composition").arg(location)});
  else if (node.patch.patchClass() == QLatin1String("QCPatchRenderer") && target == file)
    findings.append({QStringLiteral("composition-loads-itself"), node.path,
                     QStringLiteral("%1 is this composition").arg(location)});
}

void checkLocation(const QString& location, const PatchOutline& node, const QString& fileName,
                   Findings& findings) {
  const bool isFile = location.startsWith(QLatin1String("file:"), Qt::CaseInsensitive);
  if (location.isEmpty() || (location.contains(QLatin1String("://")) && !isFile)) return;
  if (isFile || location.startsWith(QLatin1Char('~')) || QDir::isAbsolutePath(location))
    findings.append({QStringLiteral("absolute-path"), node.path,
                     QStringLiteral("%1 is a place of one machine").arg(location)});
  else if (!fileName.isEmpty())
    checkRelative(location, node, QFileInfo(fileName), findings);
}

/// An image that is stored only by the name of its file.
void checkEmbeddedImage(const PatchOutline& node, Findings& findings) {
  if (node.patch.patchClass() != QLatin1String("QCImageLoader")) return;
  const PropertyDictionary& state = node.patch.state();
  const QString path = state.value(u"imagePath").toString();
  if (!path.isEmpty() && state.value(u"imageData").toData().isEmpty())
    findings.append({QStringLiteral("missing-file"), node.path,
                     QStringLiteral("the picture %1 is named and not in the file").arg(path)});
}

bool isSplitter(const PatchOutline& node) {
  return node.patch.patchClass() == QLatin1String("QCSplitter");
}

QString storedText(const PatchOutline& node, QStringView port) {
  for (const QStringView group : {u"customInputPortStates", u"ivarInputPortStates"}) {
    const PropertyValue& stored = node.patch.state().value(group).dictionary().value(port);
    if (stored.dictionary().value(u"value").isString())
      return stored.dictionary().value(u"value").toString();
  }
  return {};
}

/// Takes a text to the inputs that name a file, by way of splitters and published ports.
class Delivery {
 public:
  Delivery(QString text, const QString& fileName, Findings& findings)
      : m_text(std::move(text)), m_fileName(fileName), m_findings(findings) {}

  void toPublished(const PatchOutline& macro, const QString& key, int depth = 0) {
    for (const PropertyValue& entry : macro.patch.state().value(u"publishedInputPorts").array())
      if (entry.dictionary().value(u"key").toString() == key)
        toInput(macro, entry.dictionary().value(u"node").toString(),
                entry.dictionary().value(u"port").toString(), depth + 1);
  }
  void toInput(const PatchOutline& macro, const QString& nodeKey, const QString& port, int depth) {
    const PatchOutline* node = macro.node(nodeKey);
    if (!node || depth > longestWay) return;
    if (isLocation(*node, port))
      checkLocation(m_text, *node, m_fileName, m_findings);
    else if (isSplitter(*node))
      fromSplitter(macro, nodeKey, depth);
    else
      toPublished(*node, port, depth);
  }

 private:
  static constexpr int longestWay = 64;

  void fromSplitter(const PatchOutline& macro, const QString& splitter, int depth) {
    for (const auto& [name, entry] : macro.patch.state().value(u"connections").dictionary())
      if (entry.dictionary().value(u"sourceNode").toString() == splitter)
        toInput(macro, entry.dictionary().value(u"destinationNode").toString(),
                entry.dictionary().value(u"destinationPort").toString(), depth + 1);
  }

  QString m_text;
  const QString& m_fileName;
  Findings& m_findings;
};

/// What a macro's own inputs hold.
void checkPublished(const PatchOutline& node, const QSet<QString>& connected,
                    const QString& fileName, Findings& findings) {
  for (const PropertyValue& entry : node.patch.state().value(u"publishedInputPorts").array()) {
    const QString key = entry.dictionary().value(u"key").toString();
    const PropertyValue& held = entry.dictionary().value(u"state").dictionary().value(u"value");
    if (held.isString() && !connected.contains(node.patch.key() + QLatin1Char('.') + key))
      Delivery(held.toString(), fileName, findings).toPublished(node, key);
  }
}

}  // namespace

void checkLocations(const PatchOutline& macro, const PropertyDictionary& parameters,
                    const QString& fileName, Findings& findings) {
  for (const auto& [key, value] : parameters)
    if (value.isString()) Delivery(value.toString(), fileName, findings).toPublished(macro, key);
  const QSet<QString> connected = macro.connectedInputs();
  for (const auto& node : macro.nodes) {
    const QString key = node->patch.key();
    const auto checkStored = [&](const QString& port) {
      const QString text = storedText(*node, port);
      if (!text.isEmpty() && !connected.contains(key + QLatin1Char('.') + port))
        Delivery(text, fileName, findings).toInput(macro, key, port, 0);
    };
    checkEmbeddedImage(*node, findings);
    checkPublished(*node, connected, fileName, findings);
    if (isSplitter(*node)) checkStored(QStringLiteral("input"));
    for (const auto& [className, port] : locationInputs)
      if (node->patch.patchClass() == className) checkStored(port);
  }
}

}  // namespace runtime::check
