#include "preview/fields/LinesEdit.h"

#include <QTextBlock>

namespace preview {

namespace {
constexpr int fewestLines = 2;
constexpr int mostLines = 7;
constexpr int padding = 2;
}  // namespace

LinesEdit::LinesEdit(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  document()->setDocumentMargin(padding);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(document(), &QTextDocument::contentsChanged, this, &LinesEdit::fitHeight);
  fitHeight();
}

void LinesEdit::fitHeight() {
  const int wanted = sizeHint().height();
  if (height() != wanted || minimumHeight() != wanted) setFixedHeight(wanted);
}

QSize LinesEdit::sizeHint() const {
  int lines = 0;
  for (QTextBlock block = document()->begin(); block.isValid() && lines < mostLines;
       block = block.next())
    lines += std::max(block.lineCount(), 1);
  lines = std::clamp(lines, fewestLines, mostLines);
  return {100, lines * fontMetrics().lineSpacing() + 2 * (padding + frameWidth())};
}

void LinesEdit::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  fitHeight();
}

}  // namespace preview
