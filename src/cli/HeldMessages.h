#pragma once

#include <QString>
#include <QtGlobal>

namespace cli {

/// Holds back logged messages while it lives and shows them at its end, but for those that an error
/// repeats. One at a time; what other threads log meanwhile is held as well.
class HeldMessages {
 public:
  HeldMessages();
  ~HeldMessages();
  HeldMessages(const HeldMessages&) = delete;
  HeldMessages& operator=(const HeldMessages&) = delete;
  void dropWhatIsIn(const QString& text);

 private:
  QtMessageHandler m_before;
};

}  // namespace cli
