#pragma once

#include <QFileDialog>

namespace app {

/// Asks for documents, which are folders on the disk: choosing one opens it instead of looking
/// inside. Single files inside are documents too.
class PackageDialog : public QFileDialog {
  Q_OBJECT

 public:
  enum class Purpose { Open, Save };
  PackageDialog(QWidget* parent, Purpose purpose, const QString& title, const QString& folder);

  /// The chosen path, with the extension of documents when saving.
  [[nodiscard]] const QString& path() const { return m_path; }

 Q_SIGNALS:
  void pathChosen(const QString& path);

 protected:
  void accept() override;

 private:
  void choose(const QString& path);
  [[nodiscard]] bool mayReplace(const QString& path);

  Purpose m_purpose;
  QString m_path;
};

}  // namespace app
