#include "app/HelpWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "widgets/TYStyleKit.h"

namespace app {

namespace {

constexpr QSize windowSize(820, 900);
constexpr int margin = 24;
constexpr int widestPicture = windowSize.width() - 2 * margin - 40;

/// Pictures keep their proportions and fit into the column.
void fitPictures(QTextDocument& document) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      QTextImageFormat format = it.fragment().charFormat().toImageFormat();
      if (!format.isValid()) continue;
      format.setWidth(widestPicture);
      QTextCursor cursor(&document);
      cursor.setPosition(it.fragment().position());
      cursor.setPosition(it.fragment().position() + it.fragment().length(),
                         QTextCursor::KeepAnchor);
      cursor.setCharFormat(format);
      break;  // the fragments of the block are new ones now
    }
}

}  // namespace

HelpWindow::HelpWindow(const QString& folder) : m_text(new QTextBrowser) {
  setWindowTitle(tr("User Guide"));
  resize(windowSize);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(m_text);
  m_text->setAccessibleName(windowTitle());
  m_text->setFrameShape(QFrame::NoFrame);
  m_text->setSearchPaths({folder});
  m_text->setOpenLinks(false);
  connect(m_text, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
    if (link.isRelative() && link.hasFragment())
      m_text->scrollToAnchor(link.fragment());
    else
      QDesktopServices::openUrl(link);
  });
  QFile file(QDir(folder).filePath(QStringLiteral("user-guide.md")));
  if (file.open(QIODevice::ReadOnly)) {
    m_text->document()->setBaseUrl(QUrl::fromLocalFile(folder + u'/'));
    m_text->document()->setDocumentMargin(margin);
    m_text->document()->setMarkdown(QString::fromUtf8(file.readAll()));
    fitPictures(*m_text->document());
  } else {
    m_text->setPlainText(tr("%1: %2").arg(file.fileName(), file.errorString()));
  }
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
          &QWidget::close);
}

}  // namespace app
