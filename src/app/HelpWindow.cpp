#include "app/HelpWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QVBoxLayout>

#include "widgets/TYStyleKit.h"

namespace app {

namespace {

constexpr QSize windowSize(820, 900);
constexpr int margin = 24;
constexpr int cellPadding = 5;
constexpr double textSize = 10.5;  ///< points
constexpr double codeSize = 9;
constexpr int widestPicture = windowSize.width() - 2 * margin - 40;

/// Pictures keep their proportions and are at most as wide as the column.
void fitPictures(QTextDocument& document, const QDir& folder, double pixelRatio) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      QTextImageFormat format = it.fragment().charFormat().toImageFormat();
      if (!format.isValid()) continue;
      QImage picture(folder.filePath(format.name()));
      if (picture.width() > widestPicture) {
        // Texts would scale it without smoothing.
        picture =
            picture.scaledToWidth(qRound(widestPicture * pixelRatio), Qt::SmoothTransformation);
        picture.setDevicePixelRatio(pixelRatio);
        document.addResource(QTextDocument::ImageResource, QUrl(format.name()), picture);
      }
      format.setWidth(picture.deviceIndependentSize().width());
      QTextCursor cursor(&document);
      cursor.setPosition(it.fragment().position());
      cursor.setPosition(it.fragment().position() + it.fragment().length(),
                         QTextCursor::KeepAnchor);
      cursor.setCharFormat(format);
      break;  // the fragments of the block are new ones now
    }
}

/// Fixed characters look larger than others of their size.
void fitCode(QTextDocument& document) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    QList<QPair<int, int>> places;
    for (auto it = block.begin(); !it.atEnd(); ++it)
      if (it.fragment().charFormat().fontFixedPitch())
        places.append({it.fragment().position(), it.fragment().length()});
    for (const auto& [position, length] : std::as_const(places)) {
      QTextCursor cursor(&document);
      cursor.setPosition(position);
      cursor.setPosition(position + length, QTextCursor::KeepAnchor);
      QTextCharFormat smaller;
      smaller.setFontPointSize(codeSize);
      cursor.mergeCharFormat(smaller);
    }
  }
}

void spaceTables(QTextFrame& frame) {
  for (QTextFrame* child : frame.childFrames())
    if (auto* table = qobject_cast<QTextTable*>(child)) {
      QTextTableFormat format = table->format();
      format.setCellPadding(cellPadding);
      format.setBorder(1);
      format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
      format.setBorderBrush(widgets::TYStyleKit::colour(widgets::Token::Separator));
      format.setBorderCollapse(true);
      format.setTopMargin(cellPadding);
      format.setBottomMargin(2 * cellPadding);
      table->setFormat(format);
    }
}

/// What links call a heading: its words in small letters, joined by hyphens.
QString nameOf(const QString& heading) {
  QString name;
  for (const QChar c : heading.toLower())
    if (c.isLetterOrNumber() || c == u'_' || c == u'-')
      name += c;
    else if (c == u' ')
      name += u'-';
  return name;
}

}  // namespace

HelpWindow::HelpWindow(const QString& folder) : m_folder(folder), m_text(new QTextBrowser) {
  setWindowTitle(tr("User Guide"));
  resize(windowSize);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(m_text);
  m_text->setAccessibleName(windowTitle());
  m_text->setFrameShape(QFrame::NoFrame);
  m_text->setSearchPaths({folder});
  m_text->setOpenLinks(false);
  connect(m_text, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
  const auto onKey = [this](const QKeySequence& key, void (HelpWindow::*act)()) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, act);
  };
  onKey(QKeySequence::Back, &HelpWindow::goBack);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
          &QWidget::close);
  load(QStringLiteral("user-guide.md"));
}

void HelpWindow::follow(const QUrl& link) {
  if (!link.isRelative()) {
    QDesktopServices::openUrl(link);
    return;
  }
  showPage(link.path().isEmpty() ? m_page : link.path(), link.fragment());
}

void HelpWindow::showPage(const QString& page, const QString& heading) {
  if (page != m_page) {
    m_left.append(m_page);
    load(page);
  }
  scrollTo(heading);
}

void HelpWindow::goBack() {
  if (!m_left.isEmpty()) load(m_left.takeLast());
}

void HelpWindow::load(const QString& page) {
  m_page = page;
  QFile file(m_folder.filePath(page));
  if (!file.open(QIODevice::ReadOnly)) {
    m_text->setPlainText(tr("%1: %2").arg(file.fileName(), file.errorString()));
    return;
  }
  m_text->document()->setBaseUrl(QUrl::fromLocalFile(m_folder.path() + u'/'));
  m_text->document()->setDocumentMargin(margin);
  QFont face = widgets::TYStyleKit::font(widgets::TextStyle::Body);
  face.setPointSizeF(textSize);
  m_text->document()->setDefaultFont(face);
  m_text->document()->setMarkdown(QString::fromUtf8(file.readAll()));
  fitCode(*m_text->document());
  fitPictures(*m_text->document(), m_folder, devicePixelRatioF());
  spaceTables(*m_text->document()->rootFrame());
  m_text->moveCursor(QTextCursor::Start);
}

void HelpWindow::scrollTo(const QString& heading) {
  if (heading.isEmpty()) return;
  const QTextDocument& document = *m_text->document();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0 || nameOf(block.text()) != heading) continue;
    QTextCursor cursor(block);
    m_text->setTextCursor(cursor);
    // From the heading on, not with it at the foot.
    m_text->verticalScrollBar()->setValue(m_text->verticalScrollBar()->value() +
                                          m_text->cursorRect(cursor).top());
    return;
  }
}

}  // namespace app
