#pragma once

#include "foundation/UserDefaults.h"
#include "widgets/TYSheet.h"

class QCheckBox;

namespace widgets {

/// A message as a sheet: glyph, title, text, a list where there is one, one to three buttons.
class TYAlert : public TYSheet {
  Q_OBJECT
 public:
  enum class Kind { Information, Warning, Error };
  enum class Answer { Default, Alternate, Other };

  struct Message {
    QString title = {};
    QString text = {};
    Kind kind = Kind::Information;
    /// Shown as rows in a frame; each may begin with the name of a glyph and a tab.
    QStringList list = {};
    QString defaultButton = QStringLiteral("Ok");
    /// Also what Esc answers; empty for none.
    QString alternateButton = {};
    QString otherButton = {};
    /// Where "Don't show this message again" is kept; empty offers no such choice.
    QString preferencesKey = {};
  };

  /// Shows the message on the widget's window and calls back once with the answer. A message that
  /// the user does not want to see again answers Default at once, without a sheet; then nothing is
  /// returned. The callback may be empty.
  static TYAlert* begin(QWidget* window, const Message& message,
                        std::function<void(Answer)> answered = {},
                        foundation::UserDefaults& defaults = foundation::UserDefaults::standard());
  [[nodiscard]] static bool isSuppressed(
      const QString& preferencesKey,
      const foundation::UserDefaults& defaults = foundation::UserDefaults::standard());

 protected:
  void cancelled() override;

 private:
  TYAlert(QWidget* window, const Message& message, std::function<void(Answer)> answered,
          foundation::UserDefaults& defaults);
  void addHead(const Message& message);
  void addButtons(const Message& message);
  void answer(Answer answer);

  QString m_preferencesKey;
  bool m_hasAlternate;
  QCheckBox* m_suppress = nullptr;
  std::function<void(Answer)> m_answered;
  foundation::UserDefaults& m_defaults;
};

}  // namespace widgets
