#include <QCryptographicHash>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/patches/TextFormat.h"
#include "runtime/patches/TextTools.h"

namespace runtime::patches {

namespace {

/// A length or place in a text, limited to what texts can have.
qsizetype textPlace(const Execution& x, int input) {
  return static_cast<qsizetype>(std::min<quint64>(x.index(input), quint64(1) << 31));
}

TextFormat formatOf(const NodeDescription& node) {
  return TextFormat(node.state.value(u"format").toString());
}

class StringPrinter : public PatchEvaluator {
 public:
  explicit StringPrinter(const NodeDescription& node) : m_format(formatOf(node)) {}
  void execute(Execution& x) override {
    QStringList arguments;
    for (int i = 0; i < m_format.count(); ++i) arguments.append(x.string(i));
    x.setOutput(0, m_format.print(arguments));
  }

 private:
  TextFormat m_format;
};

class StringScanner : public PatchEvaluator {
 public:
  explicit StringScanner(const NodeDescription& node) : m_format(formatOf(node)) {}
  void execute(Execution& x) override {
    const QStringList found = m_format.scan(x.string(0));
    for (int i = 0; i < m_format.count(); ++i) x.setOutput(i, found.value(i));
  }

 private:
  TextFormat m_format;
};

class StringCase : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QString text = x.string(0);
    switch (x.index(1)) {
      case 0:
        return x.setOutput(0, capitalized(text));
      case 1:
        return x.setOutput(0, text.toUpper());
      default:
        return x.setOutput(0, text.toLower());
    }
  }
};

class StringTruncate : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    static constexpr TruncateAt places[] = {TruncateAt::Start, TruncateAt::Middle, TruncateAt::End};
    const TruncateAt place = places[std::min<quint64>(x.index(1), 2)];
    const qsizetype most = textPlace(x, 3);
    x.setOutput(0, x.index(2) == 0 ? truncatedCharacters(x.string(0), most, place, x.string(4))
                                   : truncatedWords(x.string(0), most, place, x.string(4)));
  }
};

class StringCompare : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const int order = QString::compare(x.string(0), x.string(1));
    x.setOutput(0, Value::index(order == 0 ? 0 : order < 0 ? 1 : 2));
  }
};

class StringComponents : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QString separator = x.string(1);
    const QStringList parts =
        separator.isEmpty() ? QStringList(x.string(0)) : x.string(0).split(separator);
    x.setOutput(0, Structure::fromValues({parts.begin(), parts.end()}));
  }
};

class StringLength : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    x.setOutput(0, Value::index(static_cast<quint64>(x.string(0).size())));
  }
};

class StringRange : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    x.setOutput(0, x.string(0).mid(textPlace(x, 1), textPlace(x, 2)));
  }
};

class StringReplace : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QString search = x.string(1);
    const QString with = x.string(2);
    QString text = x.string(0);
    const Qt::CaseSensitivity sensitive = x.boolean(3) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!search.isEmpty()) {
      if (text.size() + text.count(search, sensitive) * with.size() > longestText)
        return x.report(QStringLiteral("the text becomes too long"));
      text.replace(search, with, sensitive);
    }
    x.setOutput(0, text);
  }
};

class StringMD5 : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const QByteArray sum = QCryptographicHash::hash(x.string(0).toUtf8(), QCryptographicHash::Md5);
    x.setOutput(0, QString::fromLatin1(sum.toHex()));
  }
};

class StringTimecode : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, timecodeText(x.number(0))); }
};

Port stringInput() {
  return stringPort("inputString", "", "String");
}

Port stringResult(const char* label = "String") {
  return stringOutput("outputString", label);
}

Port argumentPort(int number) {
  return {QStringLiteral("argument_%1").arg(number),
          PortType::String,
          {},
          QStringLiteral("Argument %1").arg(number)};
}

void addPrinterPorts(const NodeDescription& node, PatchPorts& ports) {
  for (int i = 1; i <= formatOf(node).count(); ++i) ports.inputs.append(argumentPort(i));
  ports.outputs.append(stringResult());
}

void addScannerPorts(const NodeDescription& node, PatchPorts& ports) {
  ports.inputs.append(stringInput());
  for (int i = 1; i <= formatOf(node).count(); ++i) ports.outputs.append(argumentPort(i));
}

void registerFormats(PatchRegistry& registry) {
  const QString className = QStringLiteral("QCStringFormat");
  registry.add({.className = className,
                .title = QStringLiteral("String Printer"),
                .dynamicPorts = QStringLiteral("one argument_n a place %@ of the format"),
                .addPorts = addPrinterPorts,
                .make = makeFromNode<StringPrinter>});
  registry.add({.className = className,
                .identifier = QStringLiteral("scanner"),
                .title = QStringLiteral("String Scanner"),
                .dynamicPorts = QStringLiteral("one argument_n a place %@ of the format"),
                .addPorts = addScannerPorts,
                .make = makeFromNode<StringScanner>});
}

void registerText(PatchRegistry& registry, const char* name, const char* title, QList<Port> inputs,
                  Port output, std::unique_ptr<PatchEvaluator> (*make)(const NodeDescription&),
                  const QString& status = {}) {
  registry.add({.className = QString::fromLatin1(name),
                .title = QString::fromLatin1(title),
                .ports = {std::move(inputs), {std::move(output)}},
                .status = status,
                .make = make});
}

}  // namespace

void registerStringPatches(PatchRegistry& registry) {
  registerFormats(registry);
  registerText(
      registry, "QCStringCase", "String Case",
      {stringInput(), menuPort("inputMode", 0, "Mode", {"Capitalized", "Uppercase", "Lowercase"})},
      stringResult(), makeEvaluator<StringCase>);
  registerText(registry, "QCStringTruncate", "String Truncate",
               {stringInput(),
                menuPort("inputDirection", 0, "Direction",
                         {"From the Start", "From the Middle", "From the End"}),
                menuPort("inputMode", 0, "Length Units", {"Characters", "Words"}),
                indexPort("inputMax", 0, "Maximum Length"), stringPort("inputToken", "", "Token")},
               stringResult(), makeEvaluator<StringTruncate>,
               QStringLiteral("the token does not count towards the maximum"));
  registerText(registry, "QCStringCompare", "String Compare",
               {stringPort("inputString1", "", "First String"),
                stringPort("inputString2", "", "Second String")},
               indexOutput("outputResult", "Result"), makeEvaluator<StringCompare>);
  registerText(registry, "QCStringComponents", "String Components",
               {stringInput(), stringPort("inputSeparator", "", "Separator")},
               portOf(PortType::Structure, "outputComponents", "Component List"),
               makeEvaluator<StringComponents>,
               QStringLiteral("the list never carries keys, whatever keylessStructures says"));
  registerText(registry, "QCStringLength", "String Length", {stringInput()},
               indexOutput("outputLength", "Length"), makeEvaluator<StringLength>);
  registerText(
      registry, "QCStringRange", "String Range",
      {stringInput(), indexPort("inputIndex", 0, "Index"), indexPort("inputLength", 0, "Length")},
      stringResult(), makeEvaluator<StringRange>);
  registerText(registry, "QCStringReplace", "String Replace",
               {stringPort("inputSourceString", "", "String"),
                stringPort("inputSearchString", "", "Search String"),
                stringPort("inputReplaceString", "", "Replace String"),
                booleanPort("inputCaseSensitive", false, "Case Sensitive")},
               stringResult(), makeEvaluator<StringReplace>);
  registerText(registry, "QCStringMD5", "String MD5", {stringInput()}, stringResult("MD5"),
               makeEvaluator<StringMD5>);
  registerText(registry, "QCStringTimecode", "String Timecode",
               {numberPort("inputTime", 0, "Time")}, stringResult(), makeEvaluator<StringTimecode>,
               QStringLiteral("hours, minutes, seconds and frames at 30 frames a second"));
}

}  // namespace runtime::patches
