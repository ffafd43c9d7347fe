#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QPointer>

namespace widgets {

class ColorPopover;

/// Shows a colour, over a chessboard where it is transparent, and opens the panel that edits it.
/// What happens while the panel is open is one edit: editBegan, colorEdited any number of times,
/// then editCommitted, or editCancelled (Esc) with the colour from before.
class TYColorWell : public QAbstractButton {
  Q_OBJECT
 public:
  explicit TYColorWell(QWidget* parent = nullptr);
  ~TYColorWell() override;

  [[nodiscard]] QColor color() const { return m_color; }
  /// Announces nothing.
  void setColor(const QColor& color);
  /// Several different colours.
  void setMixed(bool mixed);
  [[nodiscard]] bool isMixed() const { return m_mixed; }
  /// Whether transparency can be edited; it can unless told otherwise.
  void setHasAlpha(bool hasAlpha) { m_hasAlpha = hasAlpha; }
  [[nodiscard]] QSize sizeHint() const override { return {44, 24}; }
  /// Asked for colours to offer besides the recent ones when the panel opens.
  void setOffers(std::function<QList<QColor>()> offers) { m_offers = std::move(offers); }
  /// The open panel, if any.
  [[nodiscard]] ColorPopover* popover() const;

 Q_SIGNALS:
  void editBegan();
  void colorEdited(const QColor& color);
  void editCommitted();
  void editCancelled();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void openPopover();
  void take(const QColor& color);
  void finish(bool kept);

  QColor m_color = Qt::white;
  std::function<QList<QColor>()> m_offers;
  QColor m_before;
  bool m_mixed = false;
  bool m_mixedBefore = false;
  bool m_hasAlpha = true;
  bool m_editing = false;
  QPointer<ColorPopover> m_popover;
};

}  // namespace widgets
