#include "foundation/rtf/RtfReader.h"

#include "foundation/rtf/RtfCodePage.h"
#include "foundation/rtf/detail/RtfDocumentBuilder.h"
#include "foundation/rtf/detail/RtfInterpreter.h"

namespace foundation {

namespace {

constexpr qsizetype maximumBytes = 64 * 1024 * 1024;

QByteArrayView withoutMark(QByteArrayView bytes) {
  return bytes.startsWith("\xEF\xBB\xBF") ? bytes.sliced(3) : bytes;
}

void readPlainText(QByteArrayView bytes, QTextDocument& document) {
  const QString text = bytes.isValidUtf8() ? QString::fromUtf8(bytes)
                                           : RtfCodePage(RtfCodePage::western).decode(bytes);
  detail::RtfDocumentBuilder builder(document);
  builder.appendParagraphs(text, {}, {});
  builder.finish({}, {});
}

}  // namespace

bool RtfReader::isRtf(QByteArrayView bytes) {
  return withoutMark(bytes).trimmed().startsWith("{\\rtf");
}

std::unique_ptr<QTextDocument> RtfReader::read(QByteArrayView bytes) {
  auto document = std::make_unique<QTextDocument>();
  document->setUndoRedoEnabled(false);
  const QByteArrayView all = withoutMark(bytes);
  const QByteArrayView text = all.first(qMin(all.size(), maximumBytes));
  if (isRtf(text))
    detail::RtfInterpreter(text.sliced(text.indexOf('{')), *document).run();
  else
    readPlainText(text, *document);
  document->setUndoRedoEnabled(true);
  document->setModified(false);
  return document;
}

}  // namespace foundation
