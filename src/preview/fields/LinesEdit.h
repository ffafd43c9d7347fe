#pragma once

#include <QPlainTextEdit>

namespace preview {

/// A field for several lines, as high as they are within limits. Tab leaves it.
class LinesEdit : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit LinesEdit(QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fitHeight();
};

}  // namespace preview
