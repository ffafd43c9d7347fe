#pragma once

#include "foundation/Result.h"

namespace playout {

/// Why a published input did not get a value.
struct ValueFailure {
  enum class Kind {
    Wrong,      ///< no such input, or nothing that it takes
    Unreadable  ///< a file that cannot be read
  };
  Kind kind = Kind::Wrong;
  foundation::Error error;

  [[nodiscard]] static tl::unexpected<ValueFailure> wrong(const QString& message) {
    return tl::unexpected(ValueFailure{Kind::Wrong, {message, {}, {}}});
  }
  [[nodiscard]] static tl::unexpected<ValueFailure> unreadable(const QString& message,
                                                               const QString& file,
                                                               const QString& detail = {}) {
    return tl::unexpected(ValueFailure{Kind::Unreadable, {message, file, detail}});
  }
};

}  // namespace playout
