#include "document/recovery/JournalFormat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using document::JournalReader;
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  // The sums would keep nearly everything out, so the content of frames is tried on its own, too.
  const QByteArray framed = document::journalBegin({}) + document::journalFrame(1, bytes);
  for (const QByteArray& journal : {bytes.toByteArray(), framed}) {
    JournalReader reader(journal);
    for (QByteArrayView payload = reader.next(); !payload.isEmpty(); payload = reader.next()) {
      std::vector<document::ObjectChange> changes;
      document::SaveMark mark;
      (void)JournalReader::readStep(payload, changes);
      (void)JournalReader::readSave(payload, mark);
    }
  }
  return 0;
}
