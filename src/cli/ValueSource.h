#pragma once

#include <QJsonObject>

#include "cli/LoadFailure.h"
#include "runtime/CompositionRenderer.h"

namespace cli {

/// Values for all published inputs at once, from wherever a person may name them.
struct ValueSource {
  QJsonObject values;
  QString folder;        ///< where relative names of pictures start
  QString file;          ///< that they were read from
  QStringList findings;  ///< columns of a table that fill nothing

  /// The word means a file when there is one, or when it begins with "./": JSON with one object, or
  /// a table (.csv, .tsv, .txt; .json when a row is asked for), of which the row, from 1 on, is
  /// taken; 0 is the only one. Else it names a set of values of the document that `played` is.
  [[nodiscard]] static tl::expected<ValueSource, LoadFailure> read(
      const QString& word, int row, const QString& played,
      const runtime::CompositionRenderer& renderer);
  /// Whether it names a set.
  [[nodiscard]] static bool isSet(const QString& word, int row, const QString& played);
  /// The same as read() without sets.
  [[nodiscard]] static tl::expected<ValueSource, LoadFailure> fromFile(
      const QString& path, int row, const runtime::CompositionRenderer& renderer);
  /// "--row N" as a number.
  [[nodiscard]] static tl::expected<int, LoadFailure> rowFrom(const QString& text);

  /// Sets them all, or none: a key that is not published and a value that its input does not take
  /// are wrong usage.
  [[nodiscard]] tl::expected<void, LoadFailure> assign(
      runtime::CompositionRenderer& renderer) const;
};

}  // namespace cli
