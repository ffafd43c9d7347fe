#pragma once

#include <QCoreApplication>
#include <QPointF>

#include "document/TimeCommands.h"
#include "foundation/Result.h"
#include "model/CommandReport.h"

namespace document {

class CompositionDocument;

/// The commands of a document's menus that need no window, beyond those that its composition has.
/// Each that changes something is one undo step with a name. Without a composition nothing happens.
class DocumentCommands {
  Q_DECLARE_TR_FUNCTIONS(DocumentCommands)

 public:
  explicit DocumentCommands(CompositionDocument& document) : m_document(document) {}

  // Time, and what stands at the editor time; see TimeCommands.
  void jumpToBeginning() { run(&TimeCommands::jumpToBeginning); }
  void jumpToEnd() { run(&TimeCommands::jumpToEnd); }
  void play() { run(&TimeCommands::play); }
  void jumpToNextFrame() { run(&TimeCommands::jumpToNextFrame); }
  void jumpToPreviousFrame() { run(&TimeCommands::jumpToPreviousFrame); }
  void jumpToNextKeyframe() { run(&TimeCommands::jumpToNextKeyframe); }
  void jumpToPreviousKeyframe() { run(&TimeCommands::jumpToPreviousKeyframe); }
  void jumpToNextStopFrame() { run(&TimeCommands::jumpToNextStopFrame); }
  void jumpToPreviousStopFrame() { run(&TimeCommands::jumpToPreviousStopFrame); }
  void addStopFrame() { run(&TimeCommands::addStopFrame); }
  void toggleStopframe() { run(&TimeCommands::toggleStopframe); }
  void togglePosterframe() { run(&TimeCommands::togglePosterframe); }

  void deleteSelection();
  /// Copies of the selected components, moved by the offset (picture pixels, y upwards), are added
  /// and selected. What could not be loaded is added to the warnings.
  [[nodiscard]] foundation::Result<void> duplicateSelection(QPointF offset, QStringList& warnings);

  // Maintenance; returned is what the user is to be told.
  [[nodiscard]] model::CommandReport upgradeComposition();
  [[nodiscard]] model::CommandReport makePathsRelative();
  /// Saves the document at once when there is something to embed.
  [[nodiscard]] model::CommandReport embedResources();

 private:
  void run(void (TimeCommands::*command)());

  CompositionDocument& m_document;
};

}  // namespace document
