#pragma once

#include <QWidget>
#include <optional>

#include "preview/FrameMeter.h"
#include "preview/StatusLamp.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace widgets {
class TYLinkButton;
}

namespace preview {

class ElidedLabel;
class RowWord;

/// What stands below the picture: reload, the status, what there is to know beside it, and the
/// trigger while the graphic waits for it. In a narrow window the status keeps its room: the meter
/// gives way first, then the scale, and notices are shortened.
class StatusRow : public QWidget {
  Q_OBJECT

 public:
  static constexpr int rowHeight = 32;

  explicit StatusRow(QWidget* parent = nullptr);

  void setStatus(StatusLamp::Light light, const QString& text);
  [[nodiscard]] QString status() const;
  [[nodiscard]] StatusLamp::Light light() const { return m_lamp->light(); }
  /// Whether the trigger can be fired.
  void setTriggerVisible(bool visible);
  [[nodiscard]] bool isTriggerVisible() const { return m_triggerIsVisible; }
  /// Something that happened; empty for nothing. No details: the text itself is shown in full.
  void setNotice(const QString& text, const QString& details = {});
  [[nodiscard]] QString notice() const;
  /// To load what has become of the document meanwhile.
  void setOffersAgain(bool offers);
  [[nodiscard]] bool offersAgain() const;
  /// Whether edits show at once.
  void setFollows(bool follows);
  /// Percent, or nothing.
  void setScale(std::optional<int> percent);
  [[nodiscard]] QString scaleText() const;
  /// What is shown in the place of the whole picture, as a word that leads back to it; empty for
  /// the picture.
  void setPartShown(const QString& name);
  [[nodiscard]] QString partShown() const;
  /// On the screen.
  [[nodiscard]] QRect pictureButtonRect() const;
  void showReading(const FrameMeter::Reading& reading);
  void setMeterVisible(bool visible);
  void setFieldsShown(bool shown);

 Q_SIGNALS:
  void reloadRequested();
  void triggerRequested();
  void againRequested();
  /// Menus for the picture, above the widget.
  void pictureMenuRequested(const QWidget* above);
  void zoomMenuRequested(const QWidget* above);
  void wholePictureRequested();
  void fieldsRequested(bool shown);
  void followToggled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void addAll();
  void observe();
  /// Shows of the meter, the scale and the trigger's key what there is room for.
  void arrange();
  [[nodiscard]] int roomForExtras() const;

  QToolButton* m_reload;
  StatusLamp* m_lamp;
  ElidedLabel* m_status;
  ElidedLabel* m_notice;
  widgets::TYLinkButton* m_again;
  QToolButton* m_follow;
  QToolButton* m_picture;
  QLabel* m_meter;
  RowWord* m_part;
  RowWord* m_scale;
  QLabel* m_triggerKey;
  QPushButton* m_trigger;
  QToolButton* m_fields;
  bool m_triggerIsVisible = false;
  bool m_wantsMeter = false;
};

}  // namespace preview
