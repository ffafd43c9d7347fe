#pragma once

#include <QByteArrayView>
#include <memory>

namespace document {

/// How the bytes of a channel are stored.
enum class PsdCompression : quint16 { Raw, RunLength, Zip, ZipWithPrediction };

/// Unpacks the rows of one channel, from top to bottom.
class PsdRows {
 public:
  virtual ~PsdRows() = default;
  /// Fills the next row; false when the data is damaged or at its end.
  [[nodiscard]] virtual bool next(quint8* row) = 0;

  /// `table` holds the packed length of each row and is empty for other compressions than run
  /// length. Null when the data cannot possibly hold all rows, so that a short file never makes
  /// anyone reserve memory for a large picture. The bytes must outlive the result.
  [[nodiscard]] static std::unique_ptr<PsdRows> create(PsdCompression compression,
                                                       QByteArrayView table, QByteArrayView data,
                                                       qint64 rowBytes, int rows, int depth);
};

}  // namespace document
