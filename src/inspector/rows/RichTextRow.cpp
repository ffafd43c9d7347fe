#include "inspector/rows/RichTextRow.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextEdit>

#include "inspector/InspectorContext.h"
#include "inspector/rows/TypingEdit.h"
#include "model/RFTValueTransformer.h"
#include "widgets/TYStyleKit.h"

namespace inspector {

using model::RFTValueTransformer;

namespace {

constexpr int threeLines = 61;
constexpr int longest = 200000;
constexpr int ownSize = QTextFormat::UserProperty + 1;  ///< the point size that the text really has

/// Visits every run of one format.
void forEachRun(QTextDocument& document,
                const std::function<void(QTextCursor& run, const QTextCharFormat& format)>& visit) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      const QTextFragment run = it.fragment();
      QTextCursor cursor(&document);
      cursor.setPosition(run.position());
      cursor.setPosition(run.position() + run.length(), QTextCursor::KeepAnchor);
      visit(cursor, run.charFormat());
    }
}

void showAtInterfaceSize(QTextDocument& document, double size) {
  QList<std::pair<QTextCursor, double>> runs;
  forEachRun(document, [&](QTextCursor& run, const QTextCharFormat& format) {
    runs.append({run, format.fontPointSize()});
  });
  for (auto& [run, own] : runs) {
    QTextCharFormat format;
    format.setFontPointSize(size);
    format.setProperty(ownSize, own);
    run.mergeCharFormat(format);
  }
}

void restoreSizes(QTextDocument& document) {
  QList<std::pair<QTextCursor, QTextCharFormat>> runs;
  forEachRun(document, [&](QTextCursor& run, QTextCharFormat format) {
    const double own = format.doubleProperty(ownSize);
    format.clearProperty(ownSize);
    if (own > 0)
      format.setFontPointSize(own);
    else
      format.clearProperty(QTextFormat::FontPointSize);
    runs.append({run, format});
  });
  for (auto& [run, format] : runs) run.setCharFormat(format);
}

/// Takes RTF from elsewhere, and bold, italic and underline by their usual keys.
class RichTextView : public QTextEdit {
 public:
  std::function<void(const QString&)> refused;

 protected:
  void insertFromMimeData(const QMimeData* source) override {
    for (const char* type : {"text/rtf", "application/rtf"}) {
      const QByteArray rtf = source->data(QString::fromLatin1(type));
      if (rtf.isEmpty()) continue;
      pasteRtf(rtf);
      return;
    }
    if (document()->characterCount() + source->text().size() > longest)
      refused(QObject::tr("The text is too long and was not taken over."));
    else
      insertPlainText(source->text());
  }

  void keyPressEvent(QKeyEvent* event) override {
    QTextCharFormat format;
    if (event->matches(QKeySequence::Bold))
      format.setFontWeight(fontWeight() > QFont::Medium ? QFont::Normal : QFont::Bold);
    else if (event->matches(QKeySequence::Italic))
      format.setFontItalic(!fontItalic());
    else if (event->matches(QKeySequence::Underline))
      format.setFontUnderline(!fontUnderline());
    else
      return QTextEdit::keyPressEvent(event);
    mergeCurrentCharFormat(format);
  }

 private:
  void pasteRtf(const QByteArray& rtf) {
    const bool closed = rtf.count('{') - rtf.count("\\{") == rtf.count('}') - rtf.count("\\}");
    if (!rtf.startsWith("{\\rtf") || !closed) {
      refused(QObject::tr("The pasted RTF is damaged and was not taken over."));
      return;
    }
    const auto text = RFTValueTransformer::transformedValue(QString::fromLatin1(rtf));
    if (document()->characterCount() + text->characterCount() > longest) {
      refused(QObject::tr("The text is too long and was not taken over."));
      return;
    }
    showAtInterfaceSize(*text, font().pointSizeF());
    QTextCursor all(text.get());
    all.select(QTextCursor::Document);
    textCursor().insertFragment(all.selection());
  }
};

}  // namespace

RichTextRow::RichTextRow(InspectorContext& context, const QString& label)
    : InspectorRow(context, label) {
  auto* view = new RichTextView;
  view->refused = [this](const QString& why) { setComplaint(why); };
  m_view = view;
  m_view->setFixedHeight(threeLines);
  m_view->setTabChangesFocus(true);
  m_typing = new TypingEdit(context, *m_view);
  addControl(m_view, 1);
  connect(m_view, &QTextEdit::textChanged, this, &RichTextRow::write);
}

void RichTextRow::write() {
  if (m_isShowing || !isBound()) return;
  setComplaint({});
  const std::unique_ptr<QTextDocument> text(m_view->document()->clone());
  restoreSizes(*text);
  m_shown = RFTValueTransformer::reverseTransformedValue(text.get());
  m_typing->typed(binding().stepName);
  binding().setAll(m_shown);
}

void RichTextRow::showValues() {
  const bool mixed = binding().isMixed();
  m_view->setPlaceholderText(mixed ? QStringLiteral("—") : QString());
  const QString rtf = mixed ? QString() : binding().value().toString();
  if (m_typing->isOpen() || (rtf == m_shown && !m_shown.isNull())) return;
  show(rtf);
}

void RichTextRow::show(const QString& rtf) {
  m_isShowing = true;
  std::unique_ptr<QTextDocument> text = RFTValueTransformer::transformedValue(rtf);
  showAtInterfaceSize(*text, m_view->font().pointSizeF());
  text->setDocumentMargin(4);
  text->setParent(m_view);
  // The view's first document goes by itself.
  const QPointer<QTextDocument> before = m_view->document();
  m_view->setDocument(text.release());
  if (before) delete before;
  m_shown = rtf.isNull() ? QStringLiteral("") : rtf;
  m_isShowing = false;
}

void RichTextRow::nameControls(const QString& name) {
  m_view->setAccessibleName(name);
}

void RichTextRow::dropEntries() {
  m_typing->end();
}

}  // namespace inspector
