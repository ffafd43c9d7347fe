#pragma once

#include <QLatin1String>
#include <QTextCharFormat>
#include <optional>

namespace foundation::detail {

/// The look of characters as control words set it: fonts and colours by their number in the tables.
struct RtfCharacterStyle {
  static constexpr int documentFont = -1;
  static constexpr int automatic = -1;  ///< no colour of their own

  int font = documentFont;
  int halfPoints = 24;
  int foreground = 0;
  int background = automatic;
  int underlineColor = automatic;
  QTextCharFormat::UnderlineStyle underline = QTextCharFormat::NoUnderline;
  QTextCharFormat::VerticalAlignment vertical = QTextCharFormat::AlignNormal;
  QFont::Capitalization capitals = QFont::MixedCase;
  bool bold = false;
  bool italic = false;
  bool strike = false;
  bool hidden = false;
  bool deleted = false;

  [[nodiscard]] bool isVisible() const { return !hidden && !deleted; }
  /// False for words that say nothing about characters.
  bool apply(QLatin1String word, std::optional<int> parameter);

  /// The nearest size that can be written. 12 points for what is no size.
  [[nodiscard]] static int halfPointsOf(double points);

  friend bool operator==(const RtfCharacterStyle&, const RtfCharacterStyle&) = default;
};

}  // namespace foundation::detail
