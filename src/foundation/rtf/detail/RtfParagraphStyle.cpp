#include "foundation/rtf/detail/RtfParagraphStyle.h"

#include <QHash>

namespace foundation::detail {

namespace {

using Style = RtfParagraphStyle;
using Alignment = Style::Alignment;
using Parameter = std::optional<int>;
using Handler = void (*)(Style&, Parameter);

constexpr double twipsOfPoint = 20;

template <Alignment alignment>
void align(Style& style, Parameter) {
  style.alignment = alignment;
}

template <Qt::LayoutDirection direction>
void direct(Style& style, Parameter) {
  style.direction = direction;
}

template <int Style::*member>
void setLength(Style& style, Parameter parameter) {
  style.*member = qBound(-Style::largestLength, parameter.value_or(0), Style::largestLength);
}

const QHash<QLatin1String, Handler>& handlers() {
  static const QHash<QLatin1String, Handler> table{
      {QLatin1String("pard"), [](Style& style, Parameter) { style = {}; }},
      {QLatin1String("ql"), align<Alignment::Left>},
      {QLatin1String("qc"), align<Alignment::Center>},
      {QLatin1String("qr"), align<Alignment::Right>},
      {QLatin1String("qj"), align<Alignment::Justify>},
      {QLatin1String("qd"), align<Alignment::Justify>},
      {QLatin1String("rtlpar"), direct<Qt::RightToLeft>},
      {QLatin1String("ltrpar"), direct<Qt::LeftToRight>},
      {QLatin1String("li"), setLength<&Style::leftIndent>},
      {QLatin1String("ri"), setLength<&Style::rightIndent>},
      {QLatin1String("fi"), setLength<&Style::firstLineIndent>},
      {QLatin1String("sb"), setLength<&Style::spaceBefore>},
      {QLatin1String("sa"), setLength<&Style::spaceAfter>}};
  return table;
}

Qt::Alignment qtAlignment(Alignment alignment, Qt::LayoutDirection direction) {
  const Qt::Alignment absolute =
      direction == Qt::RightToLeft ? Qt::Alignment(Qt::AlignAbsolute) : Qt::Alignment();
  switch (alignment) {
    case Alignment::Unset:
      return {};
    case Alignment::Left:
      return Qt::AlignLeft | absolute;
    case Alignment::Center:
      return Qt::AlignHCenter;
    case Alignment::Right:
      return Qt::AlignRight | absolute;
    case Alignment::Justify:
      return Qt::AlignJustify;
  }
  return {};
}

Alignment alignmentOf(const QTextBlockFormat& format) {
  if (!format.hasProperty(QTextFormat::BlockAlignment)) return Alignment::Unset;
  const Qt::Alignment alignment = format.alignment();
  if (alignment & Qt::AlignHCenter) return Alignment::Center;
  if (alignment & Qt::AlignJustify) return Alignment::Justify;
  // Without the absolute flag the sides of a right-to-left paragraph are its own.
  const bool mirrored =
      format.layoutDirection() == Qt::RightToLeft && !(alignment & Qt::AlignAbsolute);
  return bool(alignment & Qt::AlignRight) != mirrored ? Alignment::Right : Alignment::Left;
}

int twips(double points) {
  const double twips = points * twipsOfPoint;
  if (!(qAbs(twips) <= Style::largestLength)) return 0;
  return qRound(twips);
}

}  // namespace

bool RtfParagraphStyle::apply(QLatin1String word, std::optional<int> parameter) {
  const Handler handler = handlers().value(word);
  if (handler) handler(*this, parameter);
  return handler;
}

QTextBlockFormat RtfParagraphStyle::blockFormat() const {
  QTextBlockFormat format;
  if (alignment != Alignment::Unset) format.setAlignment(qtAlignment(alignment, direction));
  if (direction != Qt::LayoutDirectionAuto) format.setLayoutDirection(direction);
  if (leftIndent != 0) format.setLeftMargin(leftIndent / twipsOfPoint);
  if (rightIndent != 0) format.setRightMargin(rightIndent / twipsOfPoint);
  if (firstLineIndent != 0) format.setTextIndent(firstLineIndent / twipsOfPoint);
  if (spaceBefore != 0) format.setTopMargin(spaceBefore / twipsOfPoint);
  if (spaceAfter != 0) format.setBottomMargin(spaceAfter / twipsOfPoint);
  return format;
}

RtfParagraphStyle RtfParagraphStyle::of(const QTextBlockFormat& format) {
  RtfParagraphStyle style;
  style.alignment = alignmentOf(format);
  if (format.hasProperty(QTextFormat::LayoutDirection)) style.direction = format.layoutDirection();
  style.leftIndent = twips(format.leftMargin());
  style.rightIndent = twips(format.rightMargin());
  style.firstLineIndent = twips(format.textIndent());
  style.spaceBefore = twips(format.topMargin());
  style.spaceAfter = twips(format.bottomMargin());
  return style;
}

}  // namespace foundation::detail
