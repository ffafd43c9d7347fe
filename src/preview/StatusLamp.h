#pragma once

#include <QWidget>

namespace preview {

/// The dot before the status: its shape tells as much as its colour.
class StatusLamp : public QWidget {
  Q_OBJECT

 public:
  enum class Light { Waiting, Playing, Finished, Failed };
  explicit StatusLamp(QWidget* parent = nullptr);
  void setLight(Light light);
  [[nodiscard]] Light light() const { return m_light; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Light m_light = Light::Finished;
};

}  // namespace preview
