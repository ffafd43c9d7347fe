#include <QBuffer>
#include <QDirIterator>
#include <QFile>

#include "foundation/PropertyList.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/PatchRegistry.h"
#include "runtime/StructureMember.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/Edge.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/XmlStructure.h"

namespace runtime::patches {

namespace {

constexpr int maximumFiles = 10'000;
constexpr qint64 maximumXmlBytes = 64'000'000;

QStringList patternsFor(const QString& type) {
  const auto patterns = [](std::initializer_list<const char*> suffixes) {
    QStringList list;
    for (const char* suffix : suffixes) list.append(QStringLiteral("*.") + QLatin1String(suffix));
    return list;
  };
  if (type == QLatin1String("public.image"))
    return patterns({"png", "jpg", "jpeg", "tif", "tiff", "gif", "bmp", "svg", "webp", "pdf"});
  if (type == QLatin1String("public.movie") || type == QLatin1String("public.video"))
    return patterns({"mov", "mp4", "m4v", "avi", "mkv", "webm"});
  if (type == QLatin1String("public.audio"))
    return patterns({"wav", "aif", "aiff", "mp3", "m4a", "flac", "ogg"});
  if (type == QLatin1String("public.text") || type == QLatin1String("public.plain-text"))
    return patterns({"txt", "text", "csv", "xml", "html", "json"});
  return {};
}

/// Lists a folder when its location changes or the signal rises.
class DirectoryScannerEvaluator : public PatchEvaluator {
 public:
  explicit DirectoryScannerEvaluator(const NodeDescription& node)
      : m_type(node.state.value(u"fileType").toString()),
        m_recursive(node.state.value(u"recursive").toBool()),
        m_keyless(node.state.value(u"keylessStructures").toBool(true)) {}

  void execute(Execution& x) override {
    const bool scans = m_signal.rises(x.boolean(1)) || x.changed(0);
    if (scans) x.setOutput(0, list(x, x.string(0)));
    x.setOutput(1, scans);
  }

 private:
  [[nodiscard]] Structure list(Execution& x, const QString& location) const {
    const QString folder = x.resolvePath(location);
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) return {};
    const QDir::Filters wanted =
        m_type == QLatin1String("public.folder") ? QDir::Dirs : QDir::Files;
    QDirIterator files(folder, patternsFor(m_type), wanted | QDir::NoDotAndDotDot,
                       m_recursive ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
    QStringList paths;
    while (files.hasNext() && paths.size() < maximumFiles) paths.append(files.next());
    if (files.hasNext())
      x.report(QStringLiteral("%1 holds more than %2 files; the rest is left out")
                   .arg(folder)
                   .arg(maximumFiles));
    // A file system gives its entries in any order.
    paths.sort();
    Structure::Members members;
    for (const QString& path : paths)
      members.push_back({m_keyless ? QString() : QDir(folder).relativeFilePath(path), path});
    return Structure(std::move(members));
  }
  QString m_type;
  bool m_recursive;
  bool m_keyless;
  Edge m_signal;
};

/// Reads an XML file when its location changes or the signal rises.
class XmlEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const bool reads = m_signal.rises(x.boolean(1)) || x.changed(0);
    if (reads) x.setOutput(0, read(x, x.string(0)));
    x.setOutput(1, x.output(0).isEmpty() ? 0.0 : 1.0);
    x.setOutput(2, reads && !x.output(0).isEmpty());
  }

 private:
  static Value read(Execution& x, const QString& location) {
    if (location.isEmpty()) return {};
    if (location.contains(QLatin1String("://")) && !location.startsWith(QLatin1String("file:"))) {
      x.report(QStringLiteral("%1: only local files are read").arg(location));
      return {};
    }
    QFile file(x.resolvePath(location));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
      x.report(QStringLiteral("%1 cannot be read").arg(file.fileName()));
      return {};
    }
    if (file.size() > maximumXmlBytes) {
      x.report(QStringLiteral("%1 is too large").arg(file.fileName()));
      return {};
    }
    const QByteArray bytes = file.readAll();
    if (bytes.left(1000).contains("<plist")) {
      const auto list = foundation::PropertyList::fromData(bytes, file.fileName());
      if (list) return Value::fromProperty(*list, PortType::Structure);
    }
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const auto structure = structureFromXml(buffer, file.fileName());
    if (structure) return *structure;
    x.report(QStringLiteral("%1 %2 (%3)")
                 .arg(file.fileName(), structure.error().message, structure.error().detail));
    return {};
  }
  Edge m_signal;
};

Structure keyList(const QStringList& keys) {
  std::vector<Value> values;
  for (const QString& key : keys) values.emplace_back(key);
  return Structure::fromValues(std::move(values));
}

/// Tells the published keys of a composition file.
class PatchInfoEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QString path = x.string(0).isEmpty() ? QString() : x.resolvePath(x.string(0));
    const auto loaded = QFileInfo(path).isFile() ? CompositionRenderer::fromFile(path, x.budget())
                                                 : foundation::failure(QString());
    x.setOutput(0, Structure());
    x.setOutput(1, loaded ? keyList((*loaded)->inputKeys()) : Structure());
    x.setOutput(2, loaded ? keyList((*loaded)->outputKeys()) : Structure());
  }
};

class NoCompositionsEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, Structure()); }
};

}  // namespace

void registerFilePatches(PatchRegistry& registry) {
  using T = PatchClass::TimeMode;
  registry.add({.className = QStringLiteral("QCDirectoryScanner"),
                .title = QStringLiteral("Directory Scanner"),
                .timeMode = T::Idle,
                .ports = {{stringPort("inputPath", "", "Directory Location"),
                           booleanPort("inputSignal", false, "Scan Signal")},
                          {portOf(PortType::Structure, "outputFiles", "File List"),
                           booleanOutput("outputSignal", "Done Signal")}},
                .status = QStringLiteral("file types are told by suffixes; at most 10,000 files"),
                .make = makeFromNode<DirectoryScannerEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCXMLDownloader"),
       .title = QStringLiteral("XML"),
       .timeMode = T::Idle,
       .ports = {{stringPort("inputURL", "", "XML Location"),
                  booleanPort("inputSignal", false, "Update Signal")},
                 {portOf(PortType::Structure, "outputStructure", "Parsed XML"),
                  numberOutput("outputProgress", "Download Progress"),
                  booleanOutput("outputSignal", "Done Signal")}},
       .status = QStringLiteral("local files only; the layout of the structure is our own"),
       .make = makeEvaluator<XmlEvaluator>});
  registry.add({.className = QStringLiteral("QCPatchInfo"),
                .title = QStringLiteral("Composition Info"),
                .ports = {{stringPort("inputPath", "", "Composition Location")},
                          {portOf(PortType::Structure, "outputMetadata", "Attributes"),
                           portOf(PortType::Structure, "outputInputList", "Input Keys"),
                           portOf(PortType::Structure, "outputOutputList", "Output Keys")}},
                .status = QStringLiteral("no attributes of the composition"),
                .make = makeEvaluator<PatchInfoEvaluator>});
  registry.add(
      {.className = QStringLiteral("QCRepositoryCompositions"),
       .title = QStringLiteral("Installed Compositions"),
       .ports = {{menuPort("inputProtocol", 0, "Protocol",
                           {"Any", "Graphic Animation", "Graphic Transition", "Image Filter",
                            "Screen Saver", "RSS Visualizer", "Music Visualizer", "Mesh Filter"}),
                  portOf(PortType::Structure, "inputAttributes", "Attributes")},
                 {portOf(PortType::Structure, "outputCompositions", "Composition Identifiers")}},
       .status = QStringLiteral("nothing is installed: the list is empty"),
       .make = makeEvaluator<NoCompositionsEvaluator>});
}

}  // namespace runtime::patches
