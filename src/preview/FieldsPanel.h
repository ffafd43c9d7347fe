#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include "preview/fields/FieldsModel.h"

namespace document {
class CompositionDocument;
}

namespace widgets {
class TYSearchField;
}

namespace preview {

class FieldList;
class FramePump;
struct PreviewProgram;
class OutputsList;
class SetsMenu;
class TableStrip;
class TakeBar;

/// Beside the picture of the player: the fields of the graphic that plays, the buttons of a take,
/// and what the graphic puts out.
class FieldsPanel : public QWidget {
  Q_OBJECT

 public:
  static constexpr int panelWidth = 340;

  explicit FieldsPanel(QWidget* parent = nullptr);
  ~FieldsPanel() override;

  /// What is played next: its fields are shown, and what was filled in before, for the same
  /// document, becomes part of the program. The document may be none.
  void takeProgram(PreviewProgram& program, document::CompositionDocument* document);
  /// Nothing can be played: no fields, no outputs, no sets, and of no document until the next
  /// program. What was filled in comes back with its document.
  void showNothing();
  /// Where values go from now on; none while nothing is loaded.
  void setPump(FramePump* pump);
  /// Outputs wait in the pump.
  void outputsAreReady();
  void setWaiting(bool isWaiting);
  /// To be told before a document is gone; what was loaded from it goes on playing.
  void documentWillClose(const document::CompositionDocument& document);

  [[nodiscard]] FieldsModel& model() const { return *m_model; }
  [[nodiscard]] FieldList& list() const { return *m_list; }
  [[nodiscard]] TakeBar& takeBar() const { return *m_take; }
  [[nodiscard]] SetsMenu& sets() const { return *m_sets; }
  [[nodiscard]] TableStrip& table() const { return *m_table; }
  /// Puts the keyboard into the first field.
  void focusFields();

 Q_SIGNALS:
  /// From the beginning, with what was sent.
  void playRequested();
  void triggerRequested();
  /// The keyboard has done its work here.
  void keyboardLeft();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void build();
  void observe();
  void exchangeDocument(document::CompositionDocument* document);
  void showParts(bool hasProgram);
  void play();
  void reset();
  void sendHeld();
  void takeOutputs();
  void showPending();

  FieldsModel* m_model;
  TakeBar* m_take;
  SetsMenu* m_sets;
  TableStrip* m_table;
  widgets::TYSearchField* m_search;
  FieldList* m_list;
  OutputsList* m_outputs;
  FramePump* m_pump = nullptr;
  const document::CompositionDocument* m_document = nullptr;
  QHash<const document::CompositionDocument*, FieldsModel::Entries> m_others;
  QTimer m_outputsTimer;
  QElapsedTimer m_sinceOutputs;
};

}  // namespace preview
