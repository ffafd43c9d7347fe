#pragma once

#include <QHash>
#include <QLatin1String>
#include <QString>
#include <optional>

namespace foundation::detail {

/// The fonts of a document by number, read word by word. A name ends with a semicolon.
class RtfFontTable {
 public:
  struct Font {
    QString name;
    std::optional<int> codePage;  ///< none: the document's
  };

  void applyWord(QLatin1String word, std::optional<int> parameter);
  /// Text of the name; takes what comes up to a semicolon, or all of it.
  void appendName(QStringView text);
  /// An entry of the table ends, with or without a semicolon.
  void endFont();

  /// The name as it can be written: without signs that tables cannot hold, not too long.
  [[nodiscard]] static QString cleanName(const QString& name);

  /// An entry without name and page for a number that the table does not have.
  [[nodiscard]] Font font(int number) const { return m_fonts.value(number); }
  /// What the text of the name being read is encoded with.
  [[nodiscard]] std::optional<int> currentCodePage() const { return m_current.codePage; }

 private:
  static constexpr qsizetype maximumFonts = 10'000;
  static constexpr qsizetype maximumNameLength = 256;

  QHash<int, Font> m_fonts;
  Font m_current;
  std::optional<int> m_number;
};

}  // namespace foundation::detail
