#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "model/AttributeValue.h"

class QLabel;
class QListView;
class QListWidget;
class QSortFilterProxyModel;
class QStringListModel;

namespace widgets {
class TYNumberField;
class TYSearchField;
}  // namespace widgets

namespace inspector {

/// Chooses a font: families with a preview and a search, faces, size. It floats beside its window
/// and belongs to whoever opened it last; every choice is told at once.
class FontPanel : public QWidget {
  Q_OBJECT

 public:
  explicit FontPanel(QWidget* parent);

  /// Selects the font and calls back for each that is chosen from now on. Ends with the target.
  void open(QWidget& target, const model::FontValue& font,
            std::function<void(const model::FontValue&)> changeFont);
  [[nodiscard]] model::FontValue font() const;
  /// The name that files give a face, and that finds it here again.
  [[nodiscard]] static QString nameOfFace(const QString& family, const QString& style);
  /// The one panel of a window.
  [[nodiscard]] static FontPanel& of(QWidget& widget);

 private:
  [[nodiscard]] static QStringList families();
  void placeBeside(const QWidget& widget);
  void select(const model::FontValue& font);
  void showFaces(const QString& family, const QString& style);
  void showPreview();
  void announce();
  [[nodiscard]] QString family() const;
  [[nodiscard]] QString style() const;

  widgets::TYSearchField* m_search;
  QStringListModel* m_model;
  QSortFilterProxyModel* m_found;
  QListView* m_families;
  QListWidget* m_faces;
  widgets::TYNumberField* m_size;
  QLabel* m_preview;
  model::FontValue m_font;
  QPointer<QWidget> m_target;
  std::function<void(const model::FontValue&)> m_changeFont;
  bool m_quiet = false;
};

}  // namespace inspector
