#pragma once

#include <QStyledItemDelegate>

namespace library {

/// Draws an entry: thumbnail, name, and in narrow lists the other facts in a second line.
class LibraryDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  static constexpr QSize thumbnailSize{44, 26};
  static constexpr int rowHeight = 40;
  static constexpr int foldedRowHeight = 44;

  using QStyledItemDelegate::QStyledItemDelegate;

  /// Folded, a row tells in its first column what the columns beside it would.
  void setFolded(bool folded) { m_folded = folded; }
  [[nodiscard]] bool isFolded() const { return m_folded; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& index) const override;

 protected:
  /// The file's picture in the middle of the box, or the glyph of its kind.
  void paintThumbnail(QPainter& painter, const QRect& box, const QModelIndex& index) const;

 private:
  void paintName(QPainter& painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const;

  bool m_folded = false;
};

}  // namespace library
