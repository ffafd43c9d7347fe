#pragma once

#include <QLatin1String>
#include <QTextBlockFormat>
#include <optional>

namespace foundation::detail {

/// The look of a paragraph as control words set it. Lengths are twips (1/20 point).
struct RtfParagraphStyle {
  static constexpr int largestLength = 200'000;

  enum class Alignment { Unset, Left, Center, Right, Justify };
  Alignment alignment = Alignment::Unset;
  Qt::LayoutDirection direction = Qt::LayoutDirectionAuto;
  int leftIndent = 0;
  int rightIndent = 0;
  int firstLineIndent = 0;
  int spaceBefore = 0;
  int spaceAfter = 0;

  /// False for words that say nothing about paragraphs.
  bool apply(QLatin1String word, std::optional<int> parameter);
  /// Margins are points. Alignments of right-to-left paragraphs are absolute: left stays left.
  [[nodiscard]] QTextBlockFormat blockFormat() const;
  [[nodiscard]] static RtfParagraphStyle of(const QTextBlockFormat& format);

  friend bool operator==(const RtfParagraphStyle&, const RtfParagraphStyle&) = default;
};

}  // namespace foundation::detail
