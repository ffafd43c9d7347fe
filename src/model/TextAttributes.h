#pragma once

#include <QSizeF>
#include <QTextCharFormat>
#include <optional>

#include "foundation/Color.h"

namespace model {

/// The look of a text as font and colour panels edit it. The font is no part of it.
struct TextAttributes {
  struct Shadow {
    QSizeF offset;  ///< points; a positive height is up
    double blurRadius = 0;
    friend bool operator==(const Shadow&, const Shadow&) = default;
  };
  /// A line under or through the text.
  struct Line {
    /// 0: none, 1: single, 2: thick, 9: double; the next four bits choose the pattern: 0x100 dots,
    /// 0x200 dashes, 0x300 dashes and dots, 0x400 dashes and two dots.
    qint64 style = 0;
    std::optional<foundation::Color> color;  ///< none: the text's
    friend bool operator==(const Line&, const Line&) = default;
  };

  std::optional<foundation::Color> foreground;
  std::optional<Shadow> shadow;
  std::optional<Line> underline;
  std::optional<Line> strikethrough;

  /// What Qt's text can show of it: no shadow, no weight of lines, no pattern or colour of a
  /// strikethrough. Properties of attributes that are not set stay unset.
  [[nodiscard]] QTextCharFormat charFormat() const;
  /// The attributes that the format sets.
  [[nodiscard]] static TextAttributes fromCharFormat(const QTextCharFormat& format);

  friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

}  // namespace model
