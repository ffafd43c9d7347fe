#include "cli/Console.h"

#include <unistd.h>

#include <cstdio>

namespace cli {

namespace {
void write(std::FILE* stream, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
  std::fputc('\n', stream);
  std::fflush(stream);
}
}  // namespace

void Console::print(const QString& text) {
  write(stdout, text);
}

void Console::error(const QString& text) {
  write(stderr, QStringLiteral("tessary: ") + text);
}

void Console::error(const foundation::Error& error) {
  Console::error(error.text());
}

void Console::findings(const QString& file, const QStringList& findings) {
  for (const QString& finding : findings) error(QStringLiteral("%1: note: %2").arg(file, finding));
}

bool Console::errorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace cli
