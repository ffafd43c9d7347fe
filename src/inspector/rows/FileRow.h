#pragma once

#include "inspector/rows/InspectorRow.h"
#include "widgets/FileChooser.h"

class QLineEdit;

namespace inspector {

class TypingEdit;

/// The path of a file: typed, chosen, or dropped. A file that is not there is marked.
class FileRow : public InspectorRow {
  Q_OBJECT

 public:
  FileRow(InspectorContext& context, const QString& label,
          widgets::FileChooser::Kind kind = widgets::FileChooser::AnyFile);

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;
  void dropEntries() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void take(const QString& path);
  void choose();
  void locate(const QString& missing);
  [[nodiscard]] bool exists(const QString& path) const;

  QLineEdit* m_field;
  widgets::FileChooser::Kind m_kind;
};

}  // namespace inspector
