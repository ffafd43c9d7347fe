#pragma once

#include <QCoreApplication>
#include <functional>

#include "model/CommandReport.h"

namespace model {
class Attribute;
}

namespace document {

class CompositionDocument;

/// The commands of a document's menus that need no window, beyond those that its composition has.
/// Each that changes something is one undo step with a name. Without a composition nothing happens.
class DocumentCommands {
  Q_DECLARE_TR_FUNCTIONS(DocumentCommands)

 public:
  explicit DocumentCommands(CompositionDocument& document) : m_document(document) {}

  // Time
  /// While playing, playback begins there anew.
  void jumpToBeginning();
  /// Stops playback, as stepping does.
  void jumpToEnd();
  /// Starts and stops playback.
  void play();
  void jumpToNextFrame() { jumpByFrames(1); }
  void jumpToPreviousFrame() { jumpByFrames(-1); }
  /// Of the selected components; nothing happens where there is none.
  void jumpToNextKeyframe();
  /// To the beginning where there is none.
  void jumpToPreviousKeyframe();

  // At the editor time
  void addStopFrame();
  void toggleStopframe();
  /// Takes the time as that of the poster frame; a second time does not take it away.
  void togglePosterframe();

  void deleteSelection();

  // Maintenance; returned is what the user is to be told.
  [[nodiscard]] model::CommandReport upgradeComposition();
  [[nodiscard]] model::CommandReport makePathsRelative();
  /// Saves the document at once when there is something to embed.
  [[nodiscard]] model::CommandReport embedResources();

 private:
  void jumpByFrames(int frames);
  void forKeyFrames(const std::function<void(const model::Attribute&)>& visit) const;

  CompositionDocument& m_document;
};

}  // namespace document
