#pragma once

namespace render {

/// Work that nobody waits for at the moment it is done.
class BackgroundThread {
 public:
  /// The calling thread, and those that it starts from now on, get a core only where others leave
  /// one. For good: the system lets no one take it back. So never for threads that are shared.
  static void enter();
};

}  // namespace render
