#pragma once

#include <cmath>
#include <random>

#include "model/Composition.h"
#include "store/ObjectContext.h"

namespace support {

/// Stop frames and key frames within the duration, ascending.
[[nodiscard]] QList<double> remarkableTimes(const model::Composition& composition);
/// No animated value is on its way from one value to another: on air it follows a curve there, and
/// a straight line in the editor.
[[nodiscard]] bool isSettled(const model::Composition& composition, double time);

/// A graphic made up at random, the same one for the same seed: standard components with values,
/// key frames, times, places, margins, permissions and stop frames of every kind.
class GeneratedGraphic {
 public:
  explicit GeneratedGraphic(unsigned seed);
  [[nodiscard]] model::Composition& composition() { return *m_composition; }

 private:
  int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
  bool chance(int inHundred) { return below(100) < inHundred; }
  double real(double low, double high) {
    return low + (high - low) * static_cast<double>(m_random() % 100001) / 100000;
  }
  /// Whole eighths: sums and differences of these are exact in single precision too.
  double place(double low, double high) { return std::round(real(low, high) * 8) / 8; }
  double frameTime(double first, double last);
  void makeBeats();
  void addComponent();
  void arrange(model::QuartzComponent& component);
  void fill(model::Attribute& attribute);
  void animate(model::Attribute& attribute);
  [[nodiscard]] model::AttributeValue valueFor(const model::Attribute& attribute);
  [[nodiscard]] model::AttributeValue numberFor(const QString& key);
  [[nodiscard]] QImage picture();

  std::mt19937 m_random;
  QList<double> m_beats;  ///< times that the smooth attributes share
  store::ObjectContext m_context;
  model::Composition* m_composition = nullptr;
};

}  // namespace support
