#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "playout/ValueSets.h"
#include "store/Observation.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QToolButton;

namespace document {
class CompositionDocument;
}

namespace preview {

class FieldsModel;

/// The document's sets of values: choosing one fills in the fields, and what is filled in can be
/// kept as one.
class SetsMenu : public QWidget {
  Q_OBJECT

 public:
  /// The model outlives the menu.
  explicit SetsMenu(FieldsModel& model, QWidget* parent = nullptr);

  /// Whose sets they are. Without a document, sets that are shown stay and can be chosen.
  void setDocument(document::CompositionDocument* document);
  void documentWillClose();
  /// An empty name chooses the file's own values.
  void choose(const QString& name);
  /// As a new set, or in the place of the one of that name.
  void save(const QString& name);
  void rename(const QString& to);
  void remove();
  void useForThumbnail(bool uses);
  /// Of the set that was chosen or saved last; empty for none.
  [[nodiscard]] const QString& current() const { return m_current; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Naming { Nothing, NewSet, Rename };
  void build();
  void fillMenu();
  void takeSets();
  void showSets();
  void showChoice();
  void askName(Naming naming);
  void endNaming(bool keeps);
  /// False, told below, when they could not be kept.
  bool keep(const playout::ValueSets& sets);
  void takePictures();
  [[nodiscard]] QJsonObject withWholePaths(QJsonObject values) const;
  void tell(const QString& problem);
  template <typename Change>
  bool change(Change act);

  FieldsModel& m_model;
  document::CompositionDocument* m_document = nullptr;
  store::Subscription m_observed;
  playout::ValueSets m_sets;
  QString m_folder;  ///< where relative names of pictures start
  QString m_current;
  QJsonObject m_filled;  ///< what the fields held right after the choice
  Naming m_naming = Naming::Nothing;
  QTimer m_choiceTimer;
  QComboBox* m_list;
  QLineEdit* m_name;
  QToolButton* m_more;
  QMenu* m_menu;
  QAction* m_save;
  QAction* m_replace;
  QAction* m_rename;
  QAction* m_remove;
  QAction* m_thumbnail;
  QLabel* m_problem;
};

}  // namespace preview
