#include <QElapsedTimer>
#include <thread>

#include "runtime/StructureMember.h"
#include "support/SinglePatch.h"

using foundation::PropertyArray;
using runtime::CompositionRenderer;
using runtime::Value;
using support::GraphBuilder;
using Dictionary = GraphBuilder::Dictionary;

namespace {

Dictionary script(const QString& text) {
  return {{QStringLiteral("script"), text}, {QStringLiteral("newMode"), 1}};
}

/// A single script with an input "x" and an output "out", both published.
class OneScript {
 public:
  explicit OneScript(const QString& text, const runtime::Budget& budget = {}) {
    GraphBuilder graph;
    const QString node = graph.node(QStringLiteral("QCJavaScript"), script(text));
    graph.publishInput(node, QStringLiteral("x"), QStringLiteral("x"));
    graph.publishOutput(node, QStringLiteral("out"), QStringLiteral("out"));
    m_renderer = graph.renderer({}, budget);
  }
  Value run(const Value& x, const runtime::FrameArguments& arguments = {}) {
    m_renderer->setValueForInputKey(x, QStringLiteral("x"));
    static_cast<void>(m_renderer->renderAtTime(++m_time, QSize(4, 4), arguments));
    return m_renderer->valueForOutputKey(QStringLiteral("out"));
  }
  [[nodiscard]] QStringList findings() const { return m_renderer->findings(); }
  [[nodiscard]] bool wasInterrupted() const { return m_renderer->wasInterrupted(); }

 private:
  std::unique_ptr<CompositionRenderer> m_renderer;
  double m_time = 0;
};

QString mainWith(const char* body) {
  return QStringLiteral("function (__virtual out) main (__virtual x) {\n%1\n}")
      .arg(QString::fromUtf8(body));
}

Value once(const char* body, const Value& x = 1.0) {
  return OneScript(mainWith(body)).run(x);
}

}  // namespace

TEST(JavaScriptPatch, HeadMakesPortsWithTypesArraysAndKeysAsWritten) {
  GraphBuilder graph;
  const QString node = graph.node(
      QStringLiteral("QCJavaScript"),
      script(QStringLiteral("/* function (__string no) main (__string way) { } */\n"
                            "var s = 'function () main ()', r = /\"[/]*/;\n"
                            "function helper(a) { return a; }\n"
                            "function (__number sum, __boolean flags[2], __structure list ,\n"
                            "          any)\n"
                            "\tmain(__number a, __index b[2], __string /* text */ Z , untyped)\n"
                            "{ return {sum: a + b[0] + b[1], list: [Z], flags: [b[0] > b[1], 1],\n"
                            "          any: untyped}; }")));
  const std::pair<const char*, Value> inputs[] = {{"a", 1.5},
                                                  {"b_0", Value::index(2)},
                                                  {"b_1", Value::index(3)},
                                                  {"Z ", QStringLiteral("z")},
                                                  {"untyped", true}};
  for (const auto& [key, value] : inputs)
    graph.publishInput(node, QString::fromLatin1(key), QString::fromLatin1(key));
  for (const char* key : {"sum", "flags_0", "flags_1", "list ", "any"})
    graph.publishOutput(node, QString::fromLatin1(key), QString::fromLatin1(key));
  const auto renderer = graph.renderer();
  for (const auto& [key, value] : inputs)
    EXPECT_TRUE(renderer->setValueForInputKey(value, QString::fromLatin1(key))) << key;
  static_cast<void>(renderer->renderAtTime(0, QSize(4, 4)));
  const auto output = [&](const char* key) {
    return renderer->valueForOutputKey(QString::fromLatin1(key));
  };
  EXPECT_EQ(output("sum"), Value(6.5));
  EXPECT_EQ(output("flags_0"), Value(false));
  EXPECT_EQ(output("flags_1"), Value(true));
  EXPECT_EQ(output("list ").toStructure().at(0), Value(QStringLiteral("z")));
  EXPECT_EQ(output("any"), Value(true));
  EXPECT_EQ(renderer->inputAttributes(QStringLiteral("b_1"))->type, runtime::PortType::Index);
  EXPECT_TRUE(renderer->findings().isEmpty()) << renderer->findings().join(u' ').toStdString();
}

TEST(JavaScriptPatch, ValuesCrossTheBorderBothWays) {
  const Value keyed = Value::fromProperty(
      Dictionary{{QStringLiteral("a"), 1.0}, {QStringLiteral("b"), PropertyArray{2.0, u"x"}}},
      runtime::PortType::Structure);
  EXPECT_EQ(once("return {out: x}", keyed), keyed);
  EXPECT_EQ(once("return {out: x.b[1] + x.b.length + typeof x}", keyed),
            Value(QStringLiteral("x2object")));
  const Value ordered = once("return {out: {z: 1, y: [], '3': null}}");
  ASSERT_EQ(ordered.toStructure().size(), 3);
  EXPECT_EQ(ordered.toStructure().members()[2].key, QStringLiteral("y"));
  const Value image = runtime::Image::fromQImage(QImage(2, 2, QImage::Format_ARGB32_Premultiplied));
  EXPECT_EQ(once("return {out: [x ? x : 0]}", image).toStructure().at(0), image);
  const Value color = foundation::Color{0.5, 0, 1, 1};
  EXPECT_EQ(once("return {out: x}", color), color);
  EXPECT_EQ(once("return {out: x == undefined}", Value()), Value(true));
  EXPECT_TRUE(once("return {out: null}").isEmpty());
}

TEST(JavaScriptPatch, HugeAndCircularResultsAreCut) {
  EXPECT_EQ(once("return {out: new Array(4e9)}").toStructure().size(), 100'000);
  EXPECT_FALSE(once("var a = {}; a.a = a; return {out: a}").isEmpty());
  EXPECT_FALSE(once("var a = []; for (var i = 0; i < 40; ++i) a = [a, a];"
                    "return {out: a}")
                   .isEmpty());
}

TEST(JavaScriptPatch, GlobalsLiveOnAndAreTheScriptsOwn) {
  GraphBuilder graph;
  const QString text = QStringLiteral(
      "var count = 0; total = 0;\n"
      "function (__number out) main (__number n) {\n"
      "  for (i = 0; i < n; i++) total++;\n"
      "  this.own = (this.own || 0) + 1;\n"
      "  return {out: ++count * 100 + total * 10 + this.own}; }");
  for (const char* key : {"one", "two"}) {
    const QString node = graph.node(QStringLiteral("QCJavaScript"), script(text));
    graph.publishInput(node, QStringLiteral("n"), QString::fromLatin1(key));
    graph.publishOutput(node, QStringLiteral("out"), QString::fromLatin1(key));
  }
  const auto renderer = graph.renderer();
  const auto frame = [&](double one, double two) {
    renderer->setValueForInputKey(one, QStringLiteral("one"));
    renderer->setValueForInputKey(two, QStringLiteral("two"));
    static_cast<void>(renderer->renderAtTime(0, QSize(4, 4)));
    return std::pair(renderer->valueForOutputKey(QStringLiteral("one")).toNumber(),
                     renderer->valueForOutputKey(QStringLiteral("two")).toNumber());
  };
  EXPECT_EQ(frame(2, 5), std::pair(121.0, 151.0));
  EXPECT_EQ(frame(3, 5), std::pair(252.0, 151.0));
}

TEST(JavaScriptPatch, ScriptsNeedNoSemicolonsAndMayLog) {
  EXPECT_EQ(once("n = 1\nif (x)\n n++\nif (n) Log('seen')\nn\n++\nx\nreturn {out: n + x}"),
            Value(4.0));
}

TEST(JavaScriptPatch, OutputsThatAScriptLeavesOutKeepTheirValue) {
  OneScript odd(mainWith("if (x % 2) return {out: x}; return x == 4 ? {other: 1} : undefined;"));
  EXPECT_EQ(odd.run(3.0), Value(3.0));
  EXPECT_EQ(odd.run(4.0), Value(3.0));
  EXPECT_EQ(odd.run(6.0), Value(3.0));
  EXPECT_EQ(odd.run(7.0), Value(7.0));
}

TEST(JavaScriptPatch, ErrorsAreReportedOnceWithTheirLine) {
  OneScript faulty(
      QStringLiteral("function (__number out)\n  main (__virtual x)\n{\n"
                     "  if (x > 1) return missing.y;\n  return {out: x}; }"));
  EXPECT_EQ(faulty.run(1.0), Value(1.0));
  EXPECT_EQ(faulty.run(2.0), Value(1.0));
  EXPECT_EQ(faulty.run(3.0), Value(1.0));
  EXPECT_EQ(faulty.run(0.5), Value(0.5)) << "it goes on";
  ASSERT_EQ(faulty.findings().size(), 1);
  EXPECT_TRUE(faulty.findings()[0].contains(QStringLiteral("line 4: ReferenceError: missing")))
      << faulty.findings()[0].toStdString();

  const std::pair<const char*, const char*> cases[] = {
      {"\n\nvar a b;", "line 4: SyntaxError"},
      {"throw 'a text'", "a text"},
      {"(function f() { f(); f(); })()", "Maximum call stack size"},
      {"} ) { (", "SyntaxError"},
  };
  for (const auto& [body, message] : cases) {
    OneScript one(mainWith(body));
    EXPECT_TRUE(one.run(1.0).isEmpty());
    EXPECT_TRUE(one.findings().join(u' ').contains(QString::fromLatin1(message)))
        << body << ": " << one.findings().join(u' ').toStdString();
  }
}

TEST(JavaScriptPatch, EndlessScriptsAreCutByTheBudgetAndNotRunAgain) {
  for (const char* body :
       {"if (x > 1) for (;;) {} return {out: x}",
        "if (x > 1) for (;;) try { for (;;) {} } catch (e) {} return {out: x}",
        "var r = {}; r.__defineGetter__('out', function () { while (x > 1); return 1; }); return r",
        "if (x > 1) { var s = []; for (;;) s.push('a') } return {out: x}"}) {
    runtime::Budget budget;
    budget.scriptMilliseconds = 50;
    OneScript endless(mainWith(body), budget);
    EXPECT_EQ(endless.run(1.0), Value(1.0)) << body;
    QElapsedTimer timer;
    timer.start();
    endless.run(2.0);
    EXPECT_LT(timer.elapsed(), 5000);
    endless.run(1.5);
    ASSERT_EQ(endless.findings().size(), 1) << body;
    EXPECT_TRUE(endless.findings()[0].contains(QStringLiteral("stopped after 50 ms")));
  }
}

TEST(JavaScriptPatch, RandomNumbersAndTheClockComeFromOutside) {
  const auto numbers = [] {
    OneScript one(mainWith("return {out: [Math.random(), Math.random(), Math.floor(2.5)]}"));
    return one.run(1.0);
  };
  EXPECT_EQ(numbers(), numbers());
  const double first = numbers().toStructure().at(0).toNumber();
  EXPECT_TRUE(first >= 0 && first < 1 && first != numbers().toStructure().at(1).toNumber());
  EXPECT_EQ(numbers().toStructure().at(2), Value(2.0));

  runtime::FrameArguments arguments;
  arguments.wallClock = QDateTime::fromMSecsSinceEpoch(1234567890123, Qt::UTC);
  OneScript dated(
      mainWith("return {out: [new Date().getTime(), Date.now(),"
               "(new Date).constructor.now(), new Date(1970, 0, 2) instanceof Date,"
               "new Date(86400000).getUTCDate()]}"));
  const runtime::Structure dates = dated.run(1.0, arguments).toStructure();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(dates.at(i), Value(1234567890123.0)) << i;
  EXPECT_EQ(dates.at(3), Value(true));
  EXPECT_EQ(dates.at(4), Value(2.0));
}

TEST(JavaScriptPatch, ScriptsReachNothingOfTheMachine) {
  EXPECT_EQ(
      once("return {out: [typeof XMLHttpRequest, typeof require, typeof Qt, typeof console,"
           "typeof Image, typeof _testMode, _testMode].join()}"),
      Value(QStringLiteral("undefined,undefined,undefined,undefined,undefined,boolean,false")));
}

TEST(JavaScriptPatch, OlderScriptsReadAndFillArrays) {
  GraphBuilder graph;
  const QString node = graph.node(
      QStringLiteral("QCJavaScript"),
      {{QStringLiteral("script"),
        u"var h=inputs[0]==undefined?0:inputs[0];\nruns = (typeof runs == 'number' ? runs : 0) + 1;"
        u"\noutputs[0]=Math.floor(h/10);\nif (h > 20) outputs[1]=runs;"},
       {QStringLiteral("inputCount"), 1},
       {QStringLiteral("outputCount"), 2}});
  graph.publishInput(node, QStringLiteral("input_0"), QStringLiteral("h"));
  for (const char* key : {"output_0", "output_1"})
    graph.publishOutput(node, QString::fromLatin1(key), QString::fromLatin1(key));
  const auto renderer = graph.renderer();
  for (const double hour : {0.0, 21.0, 12.0}) {
    renderer->setValueForInputKey(hour, QStringLiteral("h"));
    static_cast<void>(renderer->renderAtTime(0, QSize(4, 4)));
  }
  EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("output_0")), Value(1.0));
  EXPECT_EQ(renderer->valueForOutputKey(QStringLiteral("output_1")), Value(2.0));
}

TEST(JavaScriptPatch, RunsOnWhateverThreadOwnsTheComposition) {
  std::vector<std::thread> threads;
  std::vector<Value> results(4);
  for (size_t i = 0; i < results.size(); ++i)
    threads.emplace_back([&results, i] {
      OneScript one(
          mainWith("var s = 0; for (var i = 0; i < 100000; ++i) s += x;"
                   "return {out: s}"));
      for (int frame = 0; frame < 5; ++frame) results[i] = one.run(static_cast<double>(frame));
    });
  for (std::thread& thread : threads) thread.join();
  for (const Value& result : results) EXPECT_EQ(result, Value(400'000.0));
}

TEST(JavaScriptPatch, AFrameThatIsInterruptedGoesOnWithTheNextOne) {
  OneScript looping(mainWith("if (x == 1) while (true) {} return {out: x};"));
  runtime::FrameArguments soon;
  soon.interruption = std::make_shared<const runtime::Interruption>(std::chrono::milliseconds(30));
  QElapsedTimer timer;
  timer.start();
  EXPECT_TRUE(looping.run(1.0, soon).isEmpty());
  EXPECT_LT(timer.elapsed(), 900);  // what a script may take
  EXPECT_TRUE(looping.wasInterrupted());
  // Neither the script nor its inputs are lost.
  EXPECT_EQ(looping.run(2.0).toNumber(), 2);
  EXPECT_FALSE(looping.wasInterrupted());
  EXPECT_TRUE(looping.findings().isEmpty());
  const auto requested = std::make_shared<runtime::Interruption>(std::chrono::milliseconds(10'000));
  requested->request();
  runtime::FrameArguments atOnce;
  atOnce.interruption = requested;
  EXPECT_EQ(looping.run(3.0, atOnce).toNumber(), 2);
  EXPECT_EQ(looping.run(3.0).toNumber(), 3);
}
