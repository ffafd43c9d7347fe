#pragma once

#include <QString>
#include <tl/expected.hpp>

namespace foundation {

/// Why an operation failed, in words for the person who started it.
struct Error {
  QString message;  ///< What is wrong, one sentence, without the file's name.
  QString file;     ///< The file concerned; empty where there is none.
  QString detail;   ///< Where in the file and further facts; may be empty.

  /// "file: message (detail)", leaving out what is empty.
  [[nodiscard]] QString text() const;
};

/// A value, or the error that stands in its place.
template <typename T>
using Result = tl::expected<T, Error>;

[[nodiscard]] inline tl::unexpected<Error> failure(QString message, QString file = {},
                                                   QString detail = {}) {
  return tl::unexpected<Error>(Error{std::move(message), std::move(file), std::move(detail)});
}

}  // namespace foundation
