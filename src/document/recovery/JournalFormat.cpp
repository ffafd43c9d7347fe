#include "document/recovery/JournalFormat.h"

#include <zlib.h>

#include <QCryptographicHash>
#include <QtEndian>
#include <algorithm>
#include <array>

#include "document/recovery/ValueStream.h"

namespace document {

using foundation::PropertyDictionary;
using foundation::PropertyValue;

namespace {

/// The ninth byte is the version of the format.
constexpr QByteArrayView magic("TessaryR\x01\r\n\x1a", 12);
/// Before each payload: its length, its CRC-32, the frame's number, the CRC-32 of these three.
constexpr qsizetype frameHead = 16;

quint32 crcOf(QByteArrayView bytes) {
  return static_cast<quint32>(
      crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<size_t>(bytes.size())));
}

quint32 word(QByteArrayView bytes, qsizetype index) {
  return qFromLittleEndian<quint32>(bytes.data() + index * 4);
}

bool isAllZero(QByteArrayView bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
}

bool readChange(ValueReader& reader, ObjectChange& change) {
  change.kind = static_cast<ObjectChange::Kind>(reader.byte());
  if (reader.failed() || change.kind > ObjectChange::Kind::Removed) return false;
  if (change.kind == ObjectChange::Kind::End) return true;
  change.id = reader.number();
  if (change.kind == ObjectChange::Kind::Removed) return !reader.failed() && change.id != 0;
  if (change.kind == ObjectChange::Kind::Inserted) change.entity = reader.text();
  for (quint64 left = reader.number(); left > 0 && !reader.failed(); --left) {
    const QString key = reader.text();
    change.values[key] = reader.value();
  }
  for (quint64 left = reader.number(); left > 0 && !reader.failed(); --left) {
    const QString key = reader.text();
    change.relations[key] = reader.number();
  }
  return !reader.failed() && change.id != 0;
}

}  // namespace

QByteArray identityOf(const QByteArray& storeBytes) {
  return QCryptographicHash::hash(storeBytes, QCryptographicHash::Sha256);
}

QByteArray journalBegin(const JournalHeader& header) {
  QByteArray payload;
  ValueWriter writer(payload);
  writer.byte(static_cast<quint8>(FrameKind::Header));
  writer.value(PropertyDictionary{{QStringLiteral("base"), static_cast<int>(header.base)},
                                  {QStringLiteral("baseIdentity"), header.baseIdentity},
                                  {QStringLiteral("checkpoint"), header.checkpoint},
                                  {QStringLiteral("changesBefore"), header.changesBefore},
                                  {QStringLiteral("document"), header.documentPath},
                                  {QStringLiteral("name"), header.displayName}});
  return magic.toByteArray() + journalFrame(0, payload);
}

QByteArray journalFrame(quint32 number, QByteArrayView payload) {
  QByteArray frame;
  frame.reserve(frameHead + payload.size());
  const auto append = [&](quint32 value) {
    const quint32 little = qToLittleEndian(value);
    frame.append(reinterpret_cast<const char*>(&little), sizeof little);
  };
  append(static_cast<quint32>(payload.size()));
  append(crcOf(payload));
  append(number);
  append(crcOf(frame));
  frame.append(payload);
  return frame;
}

QByteArray savePayload(const SaveMark& mark) {
  QByteArray payload;
  ValueWriter writer(payload);
  writer.byte(static_cast<quint8>(FrameKind::Save));
  writer.data(mark.identity);
  writer.text(mark.documentPath);
  return payload;
}

JournalReader::JournalReader(QByteArray bytes) : m_bytes(std::move(bytes)) {
  if (!m_bytes.startsWith(magic)) return;
  m_at = magic.size();
  m_valid = readHeader(frame(0));
}

QByteArrayView JournalReader::next() {
  if (!m_valid || m_damaged) return {};
  const QByteArrayView payload = frame(m_number + 1);
  if (!payload.isEmpty()) ++m_number;
  return payload;
}

QByteArrayView JournalReader::frame(quint32 number) {
  const QByteArrayView rest = QByteArrayView(m_bytes).sliced(m_at);
  if (rest.size() < frameHead) return {};
  if (word(rest, 3) != crcOf(rest.first(frameHead - 4)) || word(rest, 2) != number) {
    m_damaged = !isAllZero(rest);  // after a loss of power the end may be there without its bytes
    return {};
  }
  const auto size = static_cast<qsizetype>(word(rest, 0));
  if (size > rest.size() - frameHead) return {};
  const QByteArrayView payload = rest.sliced(frameHead, size);
  if (payload.isEmpty() || word(rest, 1) != crcOf(payload)) {
    m_damaged = rest.size() > frameHead + size;
    return {};
  }
  m_at += frameHead + size;
  return payload;
}

bool JournalReader::readHeader(QByteArrayView payload) {
  if (payload.isEmpty() || kindOf(payload) != FrameKind::Header) return false;
  ValueReader reader(payload.sliced(1));
  const PropertyValue stored = reader.value();
  const PropertyDictionary& values = stored.dictionary();
  const qint64 base = values.value(u"base").toInteger(-1);
  if (reader.failed() || base < 0 || base > static_cast<int>(JournalHeader::Base::Checkpoint))
    return false;
  m_header = {static_cast<JournalHeader::Base>(base),
              values.value(u"baseIdentity").toData(),
              static_cast<int>(values.value(u"checkpoint").toInteger()),
              values.value(u"changesBefore").toInteger(),
              values.value(u"document").toString(),
              values.value(u"name").toString()};
  return true;
}

bool JournalReader::readStep(QByteArrayView payload, std::vector<ObjectChange>& changes) {
  ValueReader reader(payload.sliced(1));
  while (true) {
    ObjectChange change;
    if (!readChange(reader, change)) return false;
    if (change.kind == ObjectChange::Kind::End) return reader.atEnd();
    changes.push_back(std::move(change));
  }
}

bool JournalReader::readSave(QByteArrayView payload, SaveMark& mark) {
  ValueReader reader(payload.sliced(1));
  mark.identity = reader.data();
  mark.documentPath = reader.text();
  return !reader.failed();
}

}  // namespace document
