#include "inspector/panes/PosterPicture.h"

#include <QFileInfo>
#include <QPainter>
#include <QTemporaryDir>

#include "document/PosterFrame.h"
#include "inspector/InspectorContext.h"
#include "model/Composition.h"

namespace inspector {

namespace {

constexpr QSize most(208, 117);
constexpr int restInMilliseconds = 400;

}  // namespace

PosterPicture::PosterPicture(InspectorContext& context) : m_context(context) {
  setFixedHeight(most.height());
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setWordWrap(true);
  setAccessibleName(tr("Poster frame"));
  m_timer.setSingleShot(true);
  m_timer.setInterval(restInMilliseconds);
  connect(&m_timer, &QTimer::timeout, this, &PosterPicture::update);
}

void PosterPicture::refresh() {
  const model::Composition* composition = m_context.composition();
  if (!composition || composition->posterFrameMode() != 0) return;
  const QString wanted = QStringLiteral("%1 %2")
                             .arg(composition->posterFrameTimepoint())
                             .arg(composition->broadcastMode());
  if (wanted == m_shown) return;
  m_shown = wanted;
  m_timer.start();
}

void PosterPicture::showEvent(QShowEvent* event) {
  QLabel::showEvent(event);
  m_shown.clear();
  refresh();
}

void PosterPicture::update() {
  const model::Composition* composition = m_context.composition();
  if (!composition || !isVisible()) return;
  if (m_context.isEditing()) {
    m_timer.start();
    return;
  }
  const QTemporaryDir folder;
  const QString exported = folder.filePath(QStringLiteral("poster.qtz"));
  const auto written = composition->exportToPath(exported, model::Composition::Background::Include);
  const auto picture = written ? document::PosterFrame::render(
                                     *composition, exported,
                                     QFileInfo(composition->fileURL().toLocalFile()).absolutePath())
                               : foundation::Result<QImage>(tl::unexpected(written.error()));
  if (!picture) {
    setText(tr("No picture: %1").arg(picture.error().text()));
    return;
  }
  const double ratio = devicePixelRatioF();
  const QSize room(std::clamp(width(), 1, most.width()), most.height());
  const QImage small = picture->scaled(room * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  // As files keep it, over black.
  QPixmap shown(small.size());
  shown.fill(Qt::black);
  QPainter(&shown).drawImage(0, 0, small);
  shown.setDevicePixelRatio(ratio);
  setPixmap(shown);
  setFixedHeight(qRound(shown.height() / ratio));
}

}  // namespace inspector
