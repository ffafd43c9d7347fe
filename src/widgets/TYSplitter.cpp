#include "widgets/TYSplitter.h"

#include <QResizeEvent>

namespace widgets {
namespace {

constexpr int kGrabBeside = 3;

class WideHandle : public QSplitterHandle {
 public:
  using QSplitterHandle::QSplitterHandle;

 protected:
  // The handle lies over its neighbours by its margins and lets them show through.
  void resizeEvent(QResizeEvent* event) override {
    // The base class would set margins of two.
    QWidget::resizeEvent(event);
    const int beside = kGrabBeside;
    if (orientation() == Qt::Horizontal) {
      setContentsMargins(beside, 0, beside, 0);
    } else {
      setContentsMargins(0, beside, 0, beside);
    }
    setAttribute(Qt::WA_MouseNoMask);
    setMask(QRegion(contentsRect()));
  }
};

}  // namespace

QSplitterHandle* TYSplitter::createHandle() {
  return new WideHandle(orientation(), this);
}

}  // namespace widgets
