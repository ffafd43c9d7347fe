#pragma once

#include <QByteArray>

#include "foundation/Result.h"

namespace foundation {

/// Files that survive a crash of the program, of the system and a loss of power: a file has either
/// its old contents or the new ones, never a part. Errors name the file and the system's reason.
/// All functions wait for the disk and are safe to call from any thread.

/// Gives the file these contents, all at once; makes it when there is none. Keeps the permissions
/// of an existing file and follows symbolic links. On failure the old contents are still there.
[[nodiscard]] Result<void> replaceFile(const QString& path, const QByteArray& bytes);

/// The same with the contents of another file, in constant memory.
[[nodiscard]] Result<void> copyFileDurably(const QString& source, const QString& destination);

/// Makes sure that files which were made, renamed or removed in the folder stay so.
[[nodiscard]] Result<void> syncFolder(const QString& path);

/// The system's words for an error number, for example "No space left on device".
[[nodiscard]] QString systemErrorText(int number);

}  // namespace foundation
