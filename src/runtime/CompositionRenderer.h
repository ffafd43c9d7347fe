#pragma once

#include "foundation/Result.h"
#include "runtime/CompositionInstance.h"

namespace runtime {

/// What a host may know of a published input or output.
struct PortAttributes {
  QString key;
  QString label;
  PortType type = PortType::Virtual;
  Value defaultValue;  ///< inputs only
  std::optional<double> minimum;
  std::optional<double> maximum;
  QStringList menu;
};

/// Plays one composition: published values in, frames out. The face of the runtime for hosts. Not
/// thread-safe; the draw lists that it yields may be drawn on any thread.
class CompositionRenderer {
 public:
  explicit CompositionRenderer(std::shared_ptr<const CompiledComposition> compiled);

  [[nodiscard]] static foundation::Result<std::unique_ptr<CompositionRenderer>> fromFile(
      const QString& path, const Budget& budget = {});
  [[nodiscard]] static foundation::Result<std::unique_ptr<CompositionRenderer>> fromData(
      const QByteArray& bytes, const QString& fileName, const Budget& budget = {});

  [[nodiscard]] const CompiledComposition& compiled() const { return m_instance.compiled(); }
  /// The same, for a further renderer of it.
  [[nodiscard]] const std::shared_ptr<const CompiledComposition>& sharedProgram() const {
    return m_instance.sharedProgram();
  }

  /// Published keys, in the order of the file.
  [[nodiscard]] QStringList inputKeys() const;
  [[nodiscard]] QStringList outputKeys() const;
  /// Nothing for a key that is not published.
  [[nodiscard]] std::optional<PortAttributes> inputAttributes(const QString& key) const;
  [[nodiscard]] std::optional<PortAttributes> outputAttributes(const QString& key) const;

  /// False when the key is not published. A key that several inputs share sets them all. Applies
  /// from the next frame.
  bool setValueForInputKey(const Value& value, const QString& key);
  [[nodiscard]] Value valueForInputKey(const QString& key) const;
  /// As of the last frame.
  [[nodiscard]] Value valueForOutputKey(const QString& key) const;

  /// Evaluates once at the time (seconds).
  [[nodiscard]] DrawList renderAtTime(double time, const QSize& size,
                                      const FrameArguments& arguments = {});
  /// Evaluates and draws over transparent black; premultiplied ARGB32.
  [[nodiscard]] QImage imageAtTime(double time, const QSize& size,
                                   const FrameArguments& arguments = {});
  /// See CompositionInstance::wasInterrupted.
  [[nodiscard]] bool wasInterrupted() const { return m_instance.wasInterrupted(); }
  /// See CompositionInstance::isAnimated.
  [[nodiscard]] bool isAnimated() const { return m_instance.isAnimated(); }
  /// What loading and running had to report, each once.
  [[nodiscard]] QStringList findings() const;
  /// Facts that patches may ask for; "baseFolder" is where relative paths start.
  [[nodiscard]] QVariantHash& userInfo() { return m_instance.userInfo(); }

 private:
  CompositionInstance m_instance;
};

}  // namespace runtime
