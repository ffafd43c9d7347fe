#pragma once

#include <QMimeData>
#include <memory>

#include "document/KeyFrameTable.h"

namespace model {
class QuartzComponent;
}

namespace document {

class CompositionDocument;

/// Copying and pasting the selected key frames of a document. The data is the caller's to put on
/// the clipboard: "KeyFramePBoardType", and the same as a text. Each command is one undo step.
class KeyFrameClipboard {
  Q_DECLARE_TR_FUNCTIONS(KeyFrameClipboard)

 public:
  [[nodiscard]] static QString type() { return QStringLiteral("KeyFramePBoardType"); }

  explicit KeyFrameClipboard(CompositionDocument& document) : m_document(document) {}

  /// Whether key frames are selected.
  [[nodiscard]] bool canCopy() const;
  /// Nothing without selected key frames.
  [[nodiscard]] std::unique_ptr<QMimeData> copy() const;
  /// Copies, then removes the selected key frames.
  [[nodiscard]] std::unique_ptr<QMimeData> cut();
  /// An attribute that loses its last key frame keeps that one's value.
  void deleteSelected();

  [[nodiscard]] static bool holdsKeyFrames(const QMimeData& data);
  /// Adds the key frames so that the earliest stands at the editor time, replaces those that are
  /// there, and selects the new ones. Those of one attribute go to the target, if there is one.
  /// Others go to the attributes of the same key: of the target's component, else of each selected
  /// component; those of several components to the components with their titles. Fails, and
  /// changes nothing, when one finds no attribute of its type.
  [[nodiscard]] foundation::Result<void> paste(const QMimeData& data,
                                               model::Attribute* target = nullptr);

 private:
  struct Destination {
    const KeyFrameTrack* track;
    model::Attribute* attribute;
  };
  using Destinations = QList<Destination>;
  [[nodiscard]] foundation::Result<Destinations> destinationsOf(const KeyFrameTable& table,
                                                                model::Attribute* target) const;
  [[nodiscard]] QList<model::QuartzComponent*> componentsFor(const KeyFrameTrack& track,
                                                             const KeyFrameTable& table,
                                                             const model::Attribute* target) const;

  CompositionDocument& m_document;
};

}  // namespace document
