#pragma once

#include <map>

#include "foundation/PropertyValue.h"
#include "store/ManagedObject.h"

namespace document {

/// What a journal of recovery data starts from.
struct JournalHeader {
  enum class Base {
    Nothing,    ///< the document was never saved
    Document,   ///< the store in the document
    Checkpoint  ///< a store beside the journal
  };
  Base base = Base::Nothing;
  QByteArray baseIdentity;   ///< identityOf() the store's bytes
  int checkpoint = 0;        ///< number of the checkpoint
  qint64 changesBefore = 0;  ///< that are in the checkpoint already
  QString documentPath;      ///< empty before the document was first saved
  QString displayName;
};

/// What one step did to one object.
struct ObjectChange {
  enum class Kind : quint8 { End = 0, Inserted = 1, Updated = 2, Removed = 3 };
  Kind kind = Kind::End;
  store::ObjectId id = 0;
  QString entity;  ///< of an inserted object
  /// Everything persistent of an inserted object; of another one only what differs.
  std::map<QString, foundation::PropertyValue> values = {};
  std::map<QString, store::ObjectId> relations = {};  ///< 0 where nothing is related
};

/// The frames of a journal by the first byte of their payload.
enum class FrameKind : quint8 {
  Header = 1,
  Step = 2,
  Save = 3  ///< the document is about to get these bytes as its store
};
struct SaveMark {
  QByteArray identity;
  QString documentPath;
};

/// How stores are told apart: SHA-256 of their bytes.
[[nodiscard]] QByteArray identityOf(const QByteArray& storeBytes);

/// The begin of a journal file: magic, version and the frame of the header.
[[nodiscard]] QByteArray journalBegin(const JournalHeader& header);
/// Frames are numbered from 1 on; the header's is 0. `payload` begins with its FrameKind.
[[nodiscard]] QByteArray journalFrame(quint32 number, QByteArrayView payload);
[[nodiscard]] QByteArray savePayload(const SaveMark& mark);

/// Reads a journal frame by frame. Bytes that were cut off at the end are what a crash leaves; what
/// is wrong before that is damage, and nothing behind it is read.
class JournalReader {
 public:
  explicit JournalReader(QByteArray bytes);

  /// False when the file is no journal, or one of another version, or its header is damaged.
  [[nodiscard]] bool isValid() const { return m_valid; }
  [[nodiscard]] const JournalHeader& header() const { return m_header; }
  /// The payload of the next frame; empty at the end. Points into the reader's bytes.
  [[nodiscard]] QByteArrayView next();
  [[nodiscard]] quint32 frameNumber() const { return m_number; }  ///< of the last one from next()
  [[nodiscard]] bool isDamaged() const { return m_damaged; }

  [[nodiscard]] static FrameKind kindOf(QByteArrayView payload) {
    return static_cast<FrameKind>(payload.front());
  }
  /// False when the payload is damaged.
  [[nodiscard]] static bool readStep(QByteArrayView payload, std::vector<ObjectChange>& changes);
  [[nodiscard]] static bool readSave(QByteArrayView payload, SaveMark& mark);

 private:
  [[nodiscard]] QByteArrayView frame(quint32 number);
  [[nodiscard]] bool readHeader(QByteArrayView payload);

  QByteArray m_bytes;
  qsizetype m_at = 0;
  quint32 m_number = 0;
  JournalHeader m_header;
  bool m_valid = false;
  bool m_damaged = false;
};

}  // namespace document
