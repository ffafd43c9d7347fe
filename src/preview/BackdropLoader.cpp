#include "preview/BackdropLoader.h"

namespace preview {

BackdropLoader::BackdropLoader(QObject* parent) : QObject(parent) {}

BackdropLoader::~BackdropLoader() = default;

void BackdropLoader::load(Kind kind, const QString& path) {
  const auto forward = [this](auto act) {
    QMetaObject::invokeMethod(this, act, Qt::QueuedConnection);
  };
  const int number = ++m_number;
  m_next = std::make_unique<FileBackdrop>(
      kind, path, m_size,
      FileBackdrop::Hooks{.imageReady = [=, this] { forward([=, this] { takeImage(number); }); },
                          .failed =
                              [=, this](const foundation::Error& error) {
                                forward([=, this] { takeFailure(number, kind, error); });
                              }});
}

void BackdropLoader::clear() {
  m_next.reset();
  m_present.reset();
  m_presentNumber = ++m_number;
}

void BackdropLoader::setSize(const QSize& size) {
  m_size = size;
  for (const auto& file : {&m_present, &m_next})
    if (*file) (*file)->setSize(size);
}

void BackdropLoader::beginAnew() {
  for (const auto& file : {&m_present, &m_next})
    if (*file) (*file)->beginAnew();
}

void BackdropLoader::takeImage(int number) {
  if (m_next && number == m_number) {
    m_present = std::move(m_next);
    m_presentNumber = number;
    Q_EMIT replaced(m_present->kind(), m_present->path());
  }
  // Whoever was told may have cleared it.
  if (!m_present || number != m_presentNumber) return;
  if (const QImage image = m_present->takeImage(); !image.isNull()) Q_EMIT pictureReady(image);
}

void BackdropLoader::takeFailure(int number, Kind kind, const foundation::Error& error) {
  if (m_next && number == m_number)
    m_next.reset();
  else if (number != m_presentNumber)
    return;
  Q_EMIT failed(kind, error);
}

}  // namespace preview
