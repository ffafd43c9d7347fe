#pragma once

#include <QStringView>

namespace runtime::patches {

/// Advances the state and gives a number in 0 … 1 (1 excluded). The same state gives the same
/// numbers everywhere, so that a composition renders alike each time.
inline double nextRandom(quint64& state) {
  state += 0x9E3779B97F4A7C15U;
  quint64 z = state;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
  z ^= z >> 31;
  return static_cast<double>(z >> 11) * 0x1.0p-53;
}

/// A seed from a name, e.g. a node's path; the same on every machine.
inline quint64 seedOf(QStringView name) {
  quint64 seed = 0xCBF29CE484222325U;
  for (const QChar c : name) seed = (seed ^ c.unicode()) * 0x100000001B3U;
  return seed;
}

}  // namespace runtime::patches
