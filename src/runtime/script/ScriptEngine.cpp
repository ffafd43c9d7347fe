#include "runtime/script/ScriptEngine.h"

namespace runtime::script {

namespace {

/// Takes the machine's clock and random numbers away and closes the global object: a script can
/// leave nothing there that another would find. Log, which scripts call while they are written,
/// goes nowhere.
QString prelude() {
  return QStringLiteral(R"((function (global) {
    var MachineDate = Date, RealMath = Math, now = 0;
    function Date_(y, month, day, h, m, s, ms) {
      if (!(this instanceof Date_)) return new MachineDate(now).toString();
      if (arguments.length == 0) return new MachineDate(now);
      if (arguments.length == 1) return new MachineDate(y);
      return new MachineDate(y, month, day === undefined ? 1 : day, h || 0, m || 0, s || 0, ms || 0);
    }
    Date_.prototype = MachineDate.prototype;
    Date_.prototype.constructor = Date_;
    Date_.parse = MachineDate.parse;
    Date_.UTC = MachineDate.UTC;
    Date_.now = function () { return now; };
    global.Date = Date_;
    global.Log = function () {};
    Object.preventExtensions(global);

    function seededMath(seed) {
      var state = seed | 1;
      function step() {
        state ^= state << 13;
        state ^= state >>> 17;
        state ^= state << 5;
        return state >>> 0;
      }
      for (var i = 0; i < 8; ++i) step();
      var math = Object.create(RealMath);
      math.random = function () { return ((step() >>> 5) * 67108864 + (step() >>> 6)) / 9007199254740992; };
      return math;
    }
    return {
      setClock: function (time) { now = time; },
      math: seededMath,
      run: function (f, self, list) {
        try {
          return f.apply(self, list);
        } catch (error) {
          throw error instanceof Error ? error : new Error(String(error));
        }
      }
    };
  })(this))");
}

}  // namespace

ScriptEngine::ScriptEngine() : m_tools(m_engine.evaluate(prelude())) {
  Q_ASSERT_X(!m_tools.isError(), "ScriptEngine", qPrintable(m_tools.toString()));
}

ScriptEngine::Instance ScriptEngine::start(const QString& program, quint32 seed) {
  auto compiled = m_programs.find(program);
  if (compiled == m_programs.end())
    compiled = m_programs.insert(program, m_engine.evaluate(program, QStringLiteral("script"), 1));
  Instance instance{*compiled, m_engine.newObject()};
  if (instance.main.isError()) return instance;
  const QJSValue math = m_tools.property(QStringLiteral("math")).call({QJSValue(seed)});
  const QJSValue top = compiled->call({math, QJSValue(false)});
  instance.main = run(top, instance.self, {});
  if (!instance.main.isError() && !instance.main.isCallable())
    instance.main = m_engine.evaluate(QStringLiteral("new Error('main is not a function')"));
  return instance;
}

QJSValue ScriptEngine::call(const Instance& instance, const QJSValueList& arguments) {
  return run(instance.main, instance.self, arguments);
}

QJSValue ScriptEngine::run(const QJSValue& function, const QJSValue& self,
                           const QJSValueList& arguments) {
  QJSValue list = m_engine.newArray(static_cast<uint>(arguments.size()));
  for (qsizetype i = 0; i < arguments.size(); ++i)
    list.setProperty(static_cast<quint32>(i), arguments[i]);
  return m_tools.property(QStringLiteral("run")).call({function, self, list});
}

void ScriptEngine::setClock(qint64 milliseconds) {
  if (milliseconds == m_clock) return;
  m_clock = milliseconds;
  m_tools.property(QStringLiteral("setClock")).call({static_cast<double>(milliseconds)});
}

QString ScriptEngine::errorText(const QJSValue& error) {
  const QJSValue line = error.property(QStringLiteral("lineNumber"));
  const bool ours = error.property(QStringLiteral("fileName")).toString().isEmpty();
  return line.isNumber() && !ours
             ? QStringLiteral("line %1: %2").arg(line.toInt()).arg(error.toString())
             : error.toString();
}

}  // namespace runtime::script
