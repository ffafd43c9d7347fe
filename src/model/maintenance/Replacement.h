#pragma once

#include <QString>

namespace model {

class Composition;

/// Puts something else in the place of what is missing on this machine, in all components at once,
/// key frames included. Each is one undo step, and returns how many attributes changed.
class Replacement {
 public:
  explicit Replacement(Composition& composition) : m_composition(composition) {}

  /// The face of that name in fonts and rich fonts; sizes stay.
  int replaceFont(const QString& missing, const QString& name);
  /// In file attributes that hold the path, and as the background's movie.
  int replaceFile(const QString& missing, const QString& path);

 private:
  Composition& m_composition;
};

}  // namespace model
