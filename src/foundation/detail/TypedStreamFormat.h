#pragma once

#include <QtGlobal>

namespace foundation::detail {

// Marks that stand where an integer's first byte would; other first bytes are the integer itself.
constexpr quint8 kInt16Mark = 0x81;
constexpr quint8 kInt32Mark = 0x82;
constexpr quint8 kRealMark = 0x83;
constexpr quint8 kNewMark = 0x84;
constexpr quint8 kNilMark = 0x85;
constexpr quint8 kEndMark = 0x86;
/// Bytes below this one (as signed numbers) are marks; back-references count from it.
constexpr qint64 kFirstLabel = -110;
constexpr quint8 kStreamVersion = 4;
constexpr char kLittleEndianName[] = "streamtyped";
constexpr char kBigEndianName[] = "typedstream";

}  // namespace foundation::detail
