#pragma once

#include <QColor>
#include <QWidget>

class QAbstractButton;
class QHBoxLayout;
class QLineEdit;

namespace widgets {

class ColorPlane;
class ColorRange;
class TYNumberField;

/// The panel of a colour well: plane, hue, transparency, hexadecimal digits, recent colours and,
/// where the screen can be read, a dropper. A click outside or Return keeps the colour, Esc drops
/// it. Deletes itself when it closes.
class ColorPopover : public QWidget {
  Q_OBJECT
 public:
  /// Offers these colours besides the recent ones.
  ColorPopover(const QColor& color, bool hasAlpha, QWidget* parent,
               const QList<QColor>& offers = {});

  void showBeside(const QRect& globalRect);
  /// "#RRGGBB", with "AA" behind it unless opaque.
  [[nodiscard]] static QString hexText(const QColor& color);
  /// Takes three, six or eight digits, with or without the sign; invalid when it is none of these.
  [[nodiscard]] static QColor colorFromHex(const QString& text);

 Q_SIGNALS:
  void colorEdited(const QColor& color);
  void finished(bool kept);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void addEditors(bool hasAlpha, const QList<QColor>& offers);
  QHBoxLayout* entryRow(bool hasAlpha);
  QHBoxLayout* swatchRow(const QList<QColor>& colors);
  void setColor(const QColor& color);
  void changeTo(const QColor& color);
  void showColor();
  void takeHex();
  void startPicking();
  void pickAt(QPoint position);

  QColor m_color;
  // Kept apart from the colour, which forgets its hue when it turns grey.
  double m_hue = 0;
  bool m_kept = true;
  bool m_picking = false;
  ColorPlane* m_plane;
  ColorRange* m_hueRange;
  ColorRange* m_alphaRange;
  QLineEdit* m_hex;
  TYNumberField* m_opacity;
};

}  // namespace widgets
