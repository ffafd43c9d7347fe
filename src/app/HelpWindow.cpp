#include "app/HelpWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QImage>
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

void spaceTables(QTextFrame& frame) {
  for (QTextFrame* child : frame.childFrames())
    if (auto* table = qobject_cast<QTextTable*>(child)) {
      QTextTableFormat format = table->format();
      format.setCellPadding(cellPadding);
      format.setBorder(1);
      format.setBorderBrush(widgets::TYStyleKit::colour(widgets::Token::Separator));
      format.setBorderCollapse(true);
      format.setTopMargin(cellPadding);
      format.setBottomMargin(2 * cellPadding);
      table->setFormat(format);
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
    QFont face = widgets::TYStyleKit::font(widgets::TextStyle::Body);
    face.setPointSizeF(textSize);
    m_text->document()->setDefaultFont(face);
    m_text->document()->setMarkdown(QString::fromUtf8(file.readAll()));
    fitPictures(*m_text->document(), QDir(folder), devicePixelRatioF());
    spaceTables(*m_text->document()->rootFrame());
    m_text->moveCursor(QTextCursor::Start);
  } else {
    m_text->setPlainText(tr("%1: %2").arg(file.fileName(), file.errorString()));
  }
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
          &QWidget::close);
}

}  // namespace app
