#pragma once

#include <QString>

#include "cli/LoadFailure.h"

namespace cli {

/// "KEY=VALUE", cut at the first "=".
struct Assignment {
  QString key;
  QString value;

  [[nodiscard]] static tl::expected<Assignment, LoadFailure> read(const QString& word,
                                                                  const char* form = "KEY=VALUE") {
    const qsizetype equals = word.indexOf(u'=');
    if (equals < 1) return misused(QStringLiteral("'%1' is not %2").arg(word, QLatin1String(form)));
    return Assignment{word.left(equals), word.mid(equals + 1)};
  }
};

}  // namespace cli
