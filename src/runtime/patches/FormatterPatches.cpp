#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/DatePattern.h"
#include "runtime/patches/NumberPattern.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

/// A style of a state, written as its number or its name; nothing when the state has none.
std::optional<int> styleOf(const foundation::PropertyValue& stored, const QStringList& names) {
  if (stored.isNumeric())
    return static_cast<int>(std::clamp<qint64>(stored.toInteger(), 0, names.size() - 1));
  const QString name =
      stored.toString().toLower().remove(QLatin1Char(' ')).remove(QLatin1Char('-'));
  const qsizetype found = names.indexOf(name);
  if (found < 0) return {};
  return static_cast<int>(found);
}

QString numberPatternOf(int style) {
  static const QString patterns[] = {QStringLiteral("0"), QStringLiteral("#,##0.###"),
                                     QStringLiteral("¤#,##0.00"), QStringLiteral("#,##0%"),
                                     QStringLiteral("#E0")};
  return patterns[style];
}

class NumberFormatter : public PatchEvaluator {
 public:
  explicit NumberFormatter(const NodeDescription& node) : m_pattern(pattern(node)) {}
  void execute(Execution& x) override {
    x.setOutput(0, m_pattern ? m_pattern->format(x.number(0)) : spelledOut(x.number(0)));
  }

 private:
  static std::optional<NumberPattern> pattern(const NodeDescription& node) {
    static const QStringList styles = {QStringLiteral("none"),       QStringLiteral("decimal"),
                                       QStringLiteral("currency"),   QStringLiteral("percent"),
                                       QStringLiteral("scientific"), QStringLiteral("spellout")};
    const QString format = node.state.value(u"format").toString();
    if (!format.isEmpty()) return NumberPattern(format);
    const int style = styleOf(node.state.value(u"style"), styles).value_or(1);
    if (style == 5) return {};
    return NumberPattern(numberPatternOf(style));
  }
  std::optional<NumberPattern> m_pattern;  // none: in words
};

class DateFormatter : public PatchEvaluator {
 public:
  explicit DateFormatter(const NodeDescription& node)
      : m_pattern(pattern(node)), m_zone(node.state.value(u"zoneName").toString()) {}
  void execute(Execution& x) override {
    x.setOutput(0, dateText(dateFromReference(x.number(0), m_zone), m_pattern));
  }

 private:
  static QString pattern(const NodeDescription& node) {
    static const QStringList styles = {QStringLiteral("none"), QStringLiteral("short"),
                                       QStringLiteral("medium"), QStringLiteral("long"),
                                       QStringLiteral("full")};
    const QString format = node.state.value(u"format").toString();
    if (!format.isEmpty()) return format;
    const auto date = styleOf(node.state.value(u"dateStyle"), styles);
    const auto time = styleOf(node.state.value(u"timeStyle"), styles);
    // Files name only what differs from "none"; with nothing at all a short form is of more use.
    if (!date && !time) return datePattern(DateStyle::Short, DateStyle::Short);
    return datePattern(DateStyle(date.value_or(0)), DateStyle(time.value_or(0)));
  }
  QString m_pattern;
  QString m_zone;
};

}  // namespace

void registerFormatterPatches(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCNumberFormatter"),
                .title = QStringLiteral("Number Formatter"),
                .ports = {{numberPort("inputNumber", 0, "Number")},
                          {stringOutput("outputString", "String")}},
                .status = QStringLiteral("English separators and words; currency is the dollar"),
                .make = makeFromNode<NumberFormatter>});
  registry.add(
      {.className = QStringLiteral("QCDateFormatter"),
       .title = QStringLiteral("Date Formatter"),
       .ports = {{numberPort("inputTime", 0, "Time")}, {stringOutput("outputString", "String")}},
       .status = QStringLiteral("English names and American date styles whatever the locale"),
       .make = makeFromNode<DateFormatter>});
}

}  // namespace runtime::patches
