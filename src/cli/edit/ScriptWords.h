#pragma once

#include <QMap>
#include <QStringList>

#include "foundation/Result.h"

namespace cli {

/// Names that stand for words in a script.
using ScriptNames = QMap<QString, QStringList>;

/// The words of a line, as a shell would read it: blanks part words; '…' keeps everything as it is,
/// "…" everything but $NAME and \, which takes the next character as it is (\n is a line break).
/// $NAME and ${NAME} stand for a name's words, one after the other where they are a whole word
/// without quotation marks, and joined by blanks elsewhere. A # at the beginning of the line, or
/// followed by a blank at that of a word, begins a comment. Fails with a sentence.
[[nodiscard]] foundation::Result<QStringList> scriptWords(const QString& line,
                                                          const ScriptNames& names);

/// Whether the text can be a name: letters, digits and "_", no digit first.
[[nodiscard]] bool isScriptName(const QString& text);

}  // namespace cli
