#include <cstdint>
#include <cstdlib>

#include "foundation/rtf/RtfReader.h"
#include "foundation/rtf/RtfWriter.h"

// Whatever is read can be written so that it reads the same again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using foundation::RtfReader;
  using foundation::RtfWriter;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QByteArray written = RtfWriter::write(*RtfReader::read(bytes));
  if (RtfWriter::write(*RtfReader::read(written)) != written) abort();
  return 0;
}
