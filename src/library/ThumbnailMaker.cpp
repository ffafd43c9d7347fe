#include "library/ThumbnailMaker.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPointer>
#include <QThreadPool>

#include "document/PackageLayout.h"
#include "foundation/PropertyList.h"
#include "library/LibraryEntry.h"
#include "runtime/CompositionRenderer.h"

namespace library {

using document::PackageLayout;

namespace {

constexpr qint64 largestPicture = 200'000'000;  // pixels
constexpr double firstLook = 1;                 // seconds into a component

/// A file that is merely looked at may take little.
runtime::Budget tightBudget() {
  runtime::Budget budget;
  budget.nodes = 20'000;
  budget.iterations = 5'000;
  budget.drawItems = 20'000;
  budget.imagePixels = 16'000'000;
  budget.scriptMilliseconds = 100;
  return budget;
}

Thumbnail ofPicture(const QString& path, const QSize& size) {
  QImageReader reader(path);
  reader.setAutoTransform(true);
  const QSize whole = reader.size();
  if (qint64{whole.width()} * whole.height() > largestPicture)
    return {{}, whole, QStringLiteral("is too large")};
  if (whole.isValid()) reader.setScaledSize(whole.scaled(size, Qt::KeepAspectRatio));
  const QImage picture = reader.read();
  if (picture.isNull()) return {{}, whole, reader.errorString()};
  return {picture, whole, {}};
}

double numberOf(const runtime::CompositionRenderer& renderer, const QString& key) {
  const auto input = renderer.inputAttributes(key);
  return input ? input->defaultValue.toNumber() : 0;
}

/// Plays up to the time, as far as it gets without a trigger.
QImage played(runtime::CompositionRenderer& renderer, double until, const QSize& size) {
  constexpr double step = 0.04;
  for (double time = 0; time < until; time += step)
    static_cast<void>(renderer.renderAtTime(time, size));
  return renderer.imageAtTime(until, size);
}

Thumbnail ofComponent(const QString& path, const QSize& size) {
  const auto renderer = runtime::CompositionRenderer::fromFile(path, tightBudget());
  if (!renderer) return {{}, {}, renderer.error().text()};
  QSize whole(qRound(numberOf(**renderer, QStringLiteral("inputWidth"))),
              qRound(numberOf(**renderer, QStringLiteral("inputHeight"))));
  if (whole.width() <= 0 || whole.height() <= 0) whole = {};
  // What yields its picture is asked for it; anything else draws.
  const QString output = QStringLiteral("outputImage");
  if ((*renderer)->outputKeys().contains(output)) {
    static_cast<void>((*renderer)->renderAtTime(0, size));
    static_cast<void>((*renderer)->renderAtTime(firstLook, size));
    const runtime::Value value = (*renderer)->valueForOutputKey(output);
    if (const auto* image = value.as<runtime::Image>())
      return {
          image->bitmap().scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation), whole, {}};
  }
  return {played(**renderer, firstLook, size), whole, {}};
}

/// At its first stop, where it shows what it is for, else in its middle.
Thumbnail ofDocument(const QString& path, const QSize& size) {
  const PackageLayout package(path);
  const LibraryEntry entry = LibraryEntry::of(path);
  const auto list = foundation::PropertyList::fromFile(package.info());
  double until = firstLook;
  if (list) {
    const auto& stops = list->dictionary()[u"stopframes"].array();
    until = stops.isEmpty() ? list->dictionary()[u"duration"].toDouble() / 2
                            : stops.first().dictionary()[u"timepoint"].toDouble();
  }
  auto renderer = runtime::CompositionRenderer::fromFile(package.composition(), tightBudget());
  if (!renderer) return {{}, entry.resolution, renderer.error().text()};
  (*renderer)->userInfo().insert(QStringLiteral("baseFolder"), package.folder());
  const QSize whole = entry.resolution.isEmpty() ? QSize(16, 9) : entry.resolution;
  // Texts and the like are laid out for the whole picture, so that is drawn and then made small.
  const QImage picture = played(**renderer, qBound(0.0, until, 60.0), whole);
  return {
      picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation), entry.resolution, {}};
}

/// What draws nothing, because it needs a picture or the time, is better shown by its kind.
Thumbnail withoutEmptiness(Thumbnail thumbnail) {
  const QImage alpha = thumbnail.picture.convertToFormat(QImage::Format_Alpha8);
  for (int y = 0; y < alpha.height(); ++y) {
    const uchar* line = alpha.constScanLine(y);
    if (std::any_of(line, line + alpha.width(), [](uchar value) { return value != 0; }))
      return thumbnail;
  }
  thumbnail.picture = {};
  return thumbnail;
}

}  // namespace

ThumbnailMaker::ThumbnailMaker(const QSize& size, QObject* parent)
    : QObject(parent), m_size(size), m_isGone(std::make_shared<std::atomic<bool>>(false)) {}

ThumbnailMaker::~ThumbnailMaker() {
  *m_isGone = true;
}

Thumbnail ThumbnailMaker::make(const QString& path, const QSize& size) {
  switch (LibraryEntry::of(path).kind) {
    case LibraryKind::Image:
      return ofPicture(path, size);
    case LibraryKind::Component:
      return withoutEmptiness(ofComponent(path, size));
    case LibraryKind::Composition:
      return withoutEmptiness(ofDocument(path, size));
    case LibraryKind::Folder:
      break;
  }
  return {};
}

void ThumbnailMaker::request(const QString& path) {
  std::erase(m_waiting, path);
  m_waiting.push_back(path);
  beginNext();
}

void ThumbnailMaker::beginNext() {
  if (m_busy || m_waiting.empty()) return;
  m_busy = true;
  const QString path = m_waiting.back();
  m_waiting.pop_back();
  // The pool of the program, whose tasks draw at full speed; last in its line.
  QThreadPool::globalInstance()->start(
      [this, path, size = m_size, isGone = m_isGone] {
        if (*isGone) return;
        const Thumbnail thumbnail = make(path, size);
        QMetaObject::invokeMethod(
            qApp,
            [this, path, thumbnail, isGone] {
              if (*isGone) return;
              m_busy = false;
              Q_EMIT made(path, thumbnail);
              beginNext();
            },
            Qt::QueuedConnection);
      },
      -1);
}

}  // namespace library
