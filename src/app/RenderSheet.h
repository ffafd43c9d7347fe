#pragma once

#include "app/RenderChoices.h"
#include "widgets/TYSheet.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;

namespace widgets {
class TokenLabel;
class TYNumberField;
class TYSegmentedControl;
class TYTimecodeField;
}  // namespace widgets

namespace app {

/// Asks what of a document is rendered, how and into which files. What cannot be done is said as
/// soon as it is chosen.
class RenderSheet : public widgets::TYSheet {
  Q_OBJECT

 public:
  /// The composition must outlive the sheet. `valueSets` are the names of the document's.
  RenderSheet(QWidget* window, const model::Composition& composition, const RenderChoices& choices,
              const QStringList& valueSets);

  [[nodiscard]] const RenderChoices& choices() const { return m_choices; }

 Q_SIGNALS:
  /// The sheet is gone then.
  void renderRequested(const app::RenderChoices& choices);

 protected:
  void cancelled() override { closeSheet(); }

 private:
  void addKind();
  void addFile();
  void addPicture();
  void addTime();
  void addLook(const QStringList& valueSets);
  void addRow(const QString& label, std::initializer_list<QWidget*> controls);
  widgets::TYTimecodeField* makeTime(double& seconds, const QString& name);
  /// Puts the choices into the controls that depend on others, and says what is wrong.
  void refresh();
  void fillFormats();
  void takePath(const QString& path);
  void chooseFile();

  const model::Composition& m_composition;
  RenderChoices m_choices;
  QGridLayout* m_rows;
  widgets::TYSegmentedControl* m_kind = nullptr;
  QComboBox* m_format = nullptr;
  QLineEdit* m_path = nullptr;
  QComboBox* m_size = nullptr;
  widgets::TYNumberField* m_width = nullptr;
  widgets::TYNumberField* m_height = nullptr;
  QComboBox* m_rate = nullptr;
  QCheckBox* m_fields = nullptr;
  QComboBox* m_extent = nullptr;
  widgets::TYTimecodeField* m_from = nullptr;
  widgets::TokenLabel* m_until = nullptr;
  widgets::TYTimecodeField* m_to = nullptr;
  widgets::TYTimecodeField* m_still = nullptr;
  widgets::TYNumberField* m_hold = nullptr;
  QWidget* m_holdRow = nullptr;
  QComboBox* m_alpha = nullptr;
  widgets::TokenLabel* m_problem = nullptr;
  QPushButton* m_render = nullptr;
};

}  // namespace app
