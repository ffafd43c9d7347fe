#include "model/RFTValueTransformer.h"

#include "foundation/rtf/RtfReader.h"
#include "foundation/rtf/RtfWriter.h"

namespace model {

std::unique_ptr<QTextDocument> RFTValueTransformer::transformedValue(const QString& rtf) {
  return foundation::RtfReader::read(rtf.toUtf8());
}

QString RFTValueTransformer::reverseTransformedValue(const QTextDocument* text) {
  return text ? QString::fromUtf8(foundation::RtfWriter::write(*text)) : QString();
}

}  // namespace model
