#pragma once

#include <QHash>
#include <QScrollArea>
#include <QSet>

class QVBoxLayout;

namespace widgets {
class TYPaneHeader;
}

namespace preview {

class FieldRow;
class FieldsModel;

/// All fields, by component, in a column that scrolls. While nobody sees it, it does nothing.
class FieldList : public QScrollArea {
  Q_OBJECT

 public:
  /// The model outlives the list.
  explicit FieldList(FieldsModel& model, QWidget* parent = nullptr);

  /// None for a key that is not there.
  [[nodiscard]] FieldRow* row(const QString& key) const { return m_rows.value(key); }
  /// Whether nothing is played whose fields could be here.
  void setIdle(bool isIdle);
  /// Only rows that contain the text; all for an empty one.
  void filter(const QString& text);
  /// Takes over what is being typed in a field.
  void commitEntry();
  /// Puts the keyboard into the first field that is shown.
  void focusFirst();

 Q_SIGNALS:
  /// The keyboard has done its work in a field.
  void left();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Group {
    QString title;
    widgets::TYPaneHeader* header;
    QWidget* content;
    QList<FieldRow*> rows;
  };
  void build();
  void addGroup(const QString& title, QVBoxLayout& column, bool isFirst);
  void refresh(const QString& key);
  void dropEntries();

  FieldsModel& m_model;
  QList<Group> m_groups;
  QHash<QString, FieldRow*> m_rows;
  QSet<QString> m_closed;  ///< titles of groups
  QString m_filter;
  bool m_isIdle = false;
  bool m_needsBuild = true;
  bool m_needsRefresh = false;
};

}  // namespace preview
