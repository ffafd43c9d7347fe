#include "preview/PicturePool.h"

namespace preview {

std::shared_ptr<Picture> PicturePool::take() {
  std::unique_ptr<Picture> picture;
  {
    const std::lock_guard lock(m_shared->mutex);
    if (!m_shared->idle.empty()) {
      picture = std::move(m_shared->idle.back());
      m_shared->idle.pop_back();
    }
  }
  if (!picture)
    picture.reset(new Picture{runtime::FrameCanvas(m_shared->size, m_shared->bands), 0, false});
  return {picture.release(), [shared = m_shared](Picture* returned) {
            std::unique_ptr<Picture> owned(returned);
            const std::lock_guard lock(shared->mutex);
            shared->idle.push_back(std::move(owned));
          }};
}

}  // namespace preview
