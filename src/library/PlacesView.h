#pragma once

#include <QListWidget>

namespace library {

/// The short list of folders above the files, each with how many files of use it holds.
class PlacesView : public QListWidget {
  Q_OBJECT

 public:
  struct Place {
    QString title;
    QString glyph;
    QString folder;
    friend bool operator==(const Place&, const Place&) = default;
  };

  explicit PlacesView(QWidget* parent = nullptr);

  /// The place that was chosen stays chosen, by its number.
  void setPlaces(const QList<Place>& places);
  [[nodiscard]] const QList<Place>& places() const { return m_places; }
  [[nodiscard]] bool contains(const QString& folder) const;
  /// Counts the files again.
  void refresh();

 private:
  QList<Place> m_places;
};

}  // namespace library
