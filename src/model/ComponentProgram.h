#pragma once

#include <QStringList>
#include <memory>

#include "foundation/Result.h"

namespace runtime {
class CompiledComposition;
}

namespace model {

/// A component's composition made ready to play: its image drawn by one sprite that can be placed,
/// its own clear patches silenced. Immutable; components made from the same bytes share one.
class ComponentProgram {
 public:
  /// Inputs of the sprite, published under names that no file uses.
  enum class Sprite { X, Y, Width, Height, Rotation, Color, Enable };
  [[nodiscard]] static QString spriteKey(Sprite input);

  /// The path is for messages, and relative paths in the composition start at its folder.
  [[nodiscard]] static foundation::Result<std::shared_ptr<const ComponentProgram>> fromData(
      const QByteArray& bytes, const QString& path);

  [[nodiscard]] const std::shared_ptr<const runtime::CompiledComposition>& compiled() const {
    return m_compiled;
  }
  /// Published by the file itself, in its order.
  [[nodiscard]] const QStringList& inputKeys() const { return m_inputKeys; }
  /// Of these inputs, in the same order.
  [[nodiscard]] const QStringList& inputLabels() const { return m_inputLabels; }
  /// The name that the file gives itself; may be empty.
  [[nodiscard]] const QString& name() const { return m_name; }
  /// Whether something yields an image that the sprite draws.
  [[nodiscard]] bool hasImageOutput() const { return m_hasImageOutput; }
  /// The image comes from a render-in-image patch, which has whatever size it is given.
  [[nodiscard]] bool rootIsRenderInImage() const { return m_rootIsRenderInImage; }
  /// Nodes at the top of the file, and whether only the first of them matters to an export.
  [[nodiscard]] int rootNodeCount() const { return m_rootNodeCount; }

 private:
  std::shared_ptr<const runtime::CompiledComposition> m_compiled;
  QStringList m_inputKeys;
  QStringList m_inputLabels;
  QString m_name;
  bool m_hasImageOutput = false;
  bool m_rootIsRenderInImage = false;
  int m_rootNodeCount = 0;
};

}  // namespace model
