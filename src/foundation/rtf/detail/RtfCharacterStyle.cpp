#include "foundation/rtf/detail/RtfCharacterStyle.h"

#include <QHash>

namespace foundation::detail {

namespace {

using Style = RtfCharacterStyle;
using Parameter = std::optional<int>;
using Handler = void (*)(Style&, Parameter);
using Format = QTextCharFormat;

constexpr int largestHalfPoints = 20000;

bool isOn(Parameter parameter) {
  return parameter.value_or(1) != 0;
}

template <Format::UnderlineStyle underline>
void setUnderline(Style& style, Parameter parameter) {
  style.underline = isOn(parameter) ? underline : Format::NoUnderline;
}

template <Format::VerticalAlignment alignment>
void setVertical(Style& style, Parameter parameter) {
  style.vertical = isOn(parameter) ? alignment : Format::AlignNormal;
}

template <QFont::Capitalization capitals>
void setCapitals(Style& style, Parameter parameter) {
  style.capitals = isOn(parameter) ? capitals : QFont::MixedCase;
}

template <bool Style::*member>
void setFlag(Style& style, Parameter parameter) {
  style.*member = isOn(parameter);
}

template <int Style::*member>
void setNumber(Style& style, Parameter parameter) {
  style.*member = parameter.value_or(0);
}

/// 0 switches these off even where the table's first entry is a colour.
template <int Style::*member>
void setOptionalColor(Style& style, Parameter parameter) {
  style.*member = parameter.value_or(0) == 0 ? Style::automatic : *parameter;
}

void setSize(Style& style, Parameter parameter) {
  style.halfPoints = qBound(1, parameter.value_or(Style().halfPoints), largestHalfPoints);
}

const QHash<QLatin1String, Handler>& handlers() {
  static const QHash<QLatin1String, Handler> table{
      {QLatin1String("plain"), [](Style& style, Parameter) { style = {}; }},
      {QLatin1String("f"), setNumber<&Style::font>},
      {QLatin1String("fs"), setSize},
      {QLatin1String("b"), setFlag<&Style::bold>},
      {QLatin1String("i"), setFlag<&Style::italic>},
      {QLatin1String("strike"), setFlag<&Style::strike>},
      {QLatin1String("striked"), setFlag<&Style::strike>},
      {QLatin1String("v"), setFlag<&Style::hidden>},
      {QLatin1String("deleted"), setFlag<&Style::deleted>},
      {QLatin1String("cf"), setNumber<&Style::foreground>},
      {QLatin1String("cb"), setOptionalColor<&Style::background>},
      {QLatin1String("chcbpat"), setOptionalColor<&Style::background>},
      {QLatin1String("highlight"), setOptionalColor<&Style::background>},
      {QLatin1String("ulc"), setOptionalColor<&Style::underlineColor>},
      {QLatin1String("caps"), setCapitals<QFont::AllUppercase>},
      {QLatin1String("scaps"), setCapitals<QFont::SmallCaps>},
      {QLatin1String("super"), setVertical<Format::AlignSuperScript>},
      {QLatin1String("sub"), setVertical<Format::AlignSubScript>},
      {QLatin1String("up"), setVertical<Format::AlignSuperScript>},
      {QLatin1String("dn"), setVertical<Format::AlignSubScript>},
      {QLatin1String("nosupersub"), setVertical<Format::AlignNormal>},
      {QLatin1String("ulnone"), setUnderline<Format::NoUnderline>},
      {QLatin1String("ul"), setUnderline<Format::SingleUnderline>},
      {QLatin1String("uldb"), setUnderline<Format::SingleUnderline>},
      {QLatin1String("ulth"), setUnderline<Format::SingleUnderline>},
      {QLatin1String("ulw"), setUnderline<Format::SingleUnderline>},
      {QLatin1String("uldash"), setUnderline<Format::DashUnderline>},
      {QLatin1String("ulldash"), setUnderline<Format::DashUnderline>},
      {QLatin1String("ulthdash"), setUnderline<Format::DashUnderline>},
      {QLatin1String("ulthldash"), setUnderline<Format::DashUnderline>},
      {QLatin1String("uld"), setUnderline<Format::DotLine>},
      {QLatin1String("ulthd"), setUnderline<Format::DotLine>},
      {QLatin1String("uldashd"), setUnderline<Format::DashDotLine>},
      {QLatin1String("ulthdashd"), setUnderline<Format::DashDotLine>},
      {QLatin1String("uldashdd"), setUnderline<Format::DashDotDotLine>},
      {QLatin1String("ulthdashdd"), setUnderline<Format::DashDotDotLine>},
      {QLatin1String("ulwave"), setUnderline<Format::WaveUnderline>},
      {QLatin1String("ulhwave"), setUnderline<Format::WaveUnderline>},
      {QLatin1String("ululdbwave"), setUnderline<Format::WaveUnderline>}};
  return table;
}

}  // namespace

bool RtfCharacterStyle::apply(QLatin1String word, std::optional<int> parameter) {
  const Handler handler = handlers().value(word);
  if (handler) handler(*this, parameter);
  return handler;
}

int RtfCharacterStyle::halfPointsOf(double points) {
  if (!(points > 0)) return Style().halfPoints;
  return qRound(qBound(1.0, points * 2, double(largestHalfPoints)));
}

}  // namespace foundation::detail
