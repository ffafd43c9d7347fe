#pragma once

#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "model/export/PublishedKeys.h"
#include "quartz/QuartzComposition.h"

namespace model {

struct ExportOptions {
  bool includeBackground = false;  ///< background and frame-rate overlay, for previews
  bool avoidSpacesInPortLabels = false;
  bool previewFps = false;
};

/// What the parts of an export share: the composition being written and the nodes that all
/// components hang on.
struct ExportContext {
  const Composition& composition;
  const KeyFactory& keyFactory;
  QString separator;
  quartz::QuartzComposition file;
  PublishedKeys keys;
  std::unique_ptr<quartz::QuartzComposition> rendererFile;
  QString stopFrameNode;  ///< key of the node that gives the time
  QString timeLineBase;   ///< time base that time lines start with

  [[nodiscard]] quartz::QuartzPatch& root() { return *file.rootPatch(); }
  void connect(const quartz::QuartzPatch& source, const QString& fromPort,
               const quartz::QuartzPatch& target, const QString& toPort) {
    root().addConnectionFromComponent(source.key(), fromPort, target.key(), toPort);
  }
  void connectTime(const quartz::QuartzPatch& target, const QString& toPort) {
    root().addConnectionFromComponent(stopFrameNode, QStringLiteral("outputTime"), target.key(),
                                      toPort);
  }
};

/// Turns a graphic into one playout composition: a node for each component's own composition, a
/// renderer node that places it, time lines for what is animated, and published keys for what the
/// playout may change. The same graphic gives the same bytes.
class PlayoutExport {
 public:
  PlayoutExport(const Composition& composition, StandardComponents standardComponents,
                const ExportOptions& options, const KeyFactory& keyFactory);

  [[nodiscard]] foundation::Result<void> writeToPath(const QString& path);
  /// The graph in memory; call once.
  [[nodiscard]] foundation::Result<void> build();
  [[nodiscard]] const quartz::QuartzComposition& file() const { return m_context.file; }

 private:
  void addClearNode();
  void addBackground();
  /// The patch "Background" of a standard component; none when the file is not there.
  quartz::QuartzPatch* addBackgroundPatchOf(const QString& standardComponent);
  [[nodiscard]] foundation::Result<void> addScaler();
  void addStopFrameTiming();

  const Composition& m_composition;
  StandardComponents m_standardComponents;
  ExportOptions m_options;
  ExportContext m_context;
};

}  // namespace model
