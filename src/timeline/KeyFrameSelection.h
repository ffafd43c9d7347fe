#pragma once

#include <QList>

namespace model {
class Attribute;
class Composition;
}  // namespace model

namespace timeline {

/// A key frame: where it stands is what identifies it within its attribute.
struct KeyFrameReference {
  model::Attribute* attribute = nullptr;
  double time = 0;  ///< seconds, as the attribute keeps it
  friend bool operator==(const KeyFrameReference&, const KeyFrameReference&) = default;
};

/// The selected key frames of a composition. The attributes hold the selection; this reads and
/// writes it in one place, in the order of the rows.
class KeyFrameSelection {
 public:
  explicit KeyFrameSelection(model::Composition& composition) : m_composition(composition) {}

  /// By rows from the top, then by time.
  [[nodiscard]] QList<KeyFrameReference> keyFrames() const;
  [[nodiscard]] bool isEmpty() const;
  [[nodiscard]] static bool contains(const KeyFrameReference& keyFrame);

  static void add(const KeyFrameReference& keyFrame);
  static void remove(const KeyFrameReference& keyFrame);
  void clear();
  /// Exactly these afterwards. What is no key frame any more is left out.
  void set(const QList<KeyFrameReference>& keyFrames);

  /// Every key frame of every attribute that can be animated, whatever rows are open.
  [[nodiscard]] QList<KeyFrameReference> all() const;
  /// The times of the attribute's key frames, ascending; none while it is not animated.
  [[nodiscard]] static QList<double> timesOf(const model::Attribute& attribute);

 private:
  model::Composition& m_composition;
};

}  // namespace timeline
