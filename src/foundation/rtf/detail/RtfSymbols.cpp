#include "foundation/rtf/detail/RtfSymbols.h"

#include <QHash>

namespace foundation::detail {

QChar rtfCharacterOfWord(QLatin1String word) {
  static const QHash<QLatin1String, QChar> table{
      {QLatin1String("par"), QChar::ParagraphSeparator},
      {QLatin1String("sect"), QChar::ParagraphSeparator},
      {QLatin1String("page"), QChar::ParagraphSeparator},
      {QLatin1String("row"), QChar::ParagraphSeparator},
      {QLatin1String("nestrow"), QChar::ParagraphSeparator},
      {QLatin1String("line"), QChar::LineSeparator},
      {QLatin1String("lbr"), QChar::LineSeparator},
      {QLatin1String("tab"), QChar::Tabulation},
      {QLatin1String("cell"), QChar::Tabulation},
      {QLatin1String("nestcell"), QChar::Tabulation},
      {QLatin1String("emdash"), QChar(0x2014)},
      {QLatin1String("endash"), QChar(0x2013)},
      {QLatin1String("emspace"), QChar(0x2003)},
      {QLatin1String("enspace"), QChar(0x2002)},
      {QLatin1String("qmspace"), QChar(0x2005)},
      {QLatin1String("bullet"), QChar(0x2022)},
      {QLatin1String("lquote"), QChar(0x2018)},
      {QLatin1String("rquote"), QChar(0x2019)},
      {QLatin1String("ldblquote"), QChar(0x201C)},
      {QLatin1String("rdblquote"), QChar(0x201D)},
      {QLatin1String("zwj"), QChar(0x200D)},
      {QLatin1String("zwnj"), QChar(0x200C)},
      {QLatin1String("zwbo"), QChar(0x200B)},
      {QLatin1String("zwnbo"), QChar(0x2060)},
      {QLatin1String("ltrmark"), QChar(0x200E)},
      {QLatin1String("rtlmark"), QChar(0x200F)}};
  return table.value(word);
}

QChar rtfCharacterOfSymbol(char symbol) {
  switch (symbol) {
    case '\\':
    case '{':
    case '}':
      return QLatin1Char(symbol);
    case '\t':
      return QChar::Tabulation;
    case '~':
      return QChar::Nbsp;
    case '_':
      return QChar(0x2011);  // a hyphen that does not break
    case '-':
      return QChar::SoftHyphen;
    default:
      return {};
  }
}

const char* rtfEscape(QChar character) {
  switch (character.unicode()) {
    case '\\':
      return "\\\\";
    case '{':
      return "\\{";
    case '}':
      return "\\}";
    case '\t':
      return "\\tab ";
    case QChar::LineSeparator:
      return "\\line ";
    case QChar::Nbsp:
      return "\\~";
    case 0x2011:
      return "\\_";
    case QChar::SoftHyphen:
      return "\\-";
    default:
      return nullptr;
  }
}

}  // namespace foundation::detail
