#include <QRegularExpression>

#include "runtime/image/kernel/KernelProgram.h"

namespace runtime::image::kernel {

namespace {

constexpr int longestSource = 100'000;
constexpr int deepestNesting = 100;

const QHash<QString, Type>& types() {
  static const QHash<QString, Type> all = {
      {QStringLiteral("void"), Type::Void},      {QStringLiteral("float"), Type::Float},
      {QStringLiteral("int"), Type::Int},        {QStringLiteral("bool"), Type::Bool},
      {QStringLiteral("vec2"), Type::Vec2},      {QStringLiteral("vec3"), Type::Vec3},
      {QStringLiteral("vec4"), Type::Vec4},      {QStringLiteral("__color"), Type::Color},
      {QStringLiteral("sampler"), Type::Sampler}};
  return all;
}

struct Token {
  QString text;  // empty at the end
  int line = 1;
};

struct SyntaxError {
  int line;
  QString text;
};

std::vector<Token> tokens(const QString& source) {
  static const QRegularExpression pattern(
      QStringLiteral(
          R"((\n)|[ \t\r\f]+|//[^\n]*|(/\*.*?\*/)|([A-Za-z_]\w*|(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?f?)|(\+\+|--|[-+*/<>=!]=|&&|\|\||[^\s\w]))"),
      QRegularExpression::DotMatchesEverythingOption);
  std::vector<Token> all;
  int line = 1;
  auto matches = pattern.globalMatch(source);
  while (matches.hasNext()) {
    const auto match = matches.next();
    if (!match.capturedView(1).isEmpty()) ++line;
    line += static_cast<int>(match.capturedView(2).count(QLatin1Char('\n')));
    for (const int group : {3, 4})
      if (!match.capturedView(group).isEmpty()) all.push_back({match.captured(group), line});
  }
  all.push_back({{}, line});
  return all;
}

NodePointer makeNode(Op op) {
  auto node = std::make_unique<Node>();
  node->op = op;
  return node;
}

NodePointer makeNode(Op op, NodePointer a, NodePointer b = {}, NodePointer c = {}) {
  auto node = makeNode(op);
  for (NodePointer* child : {&a, &b, &c}) {
    if (!*child) continue;
    node->depth = std::max(node->depth, (*child)->depth + 1);
    node->children.push_back(std::move(*child));
  }
  return node;
}

/// Recursive descent; throws SyntaxError, which never leaves this file.
class Parser {
 public:
  explicit Parser(const QString& source) : m_tokens(tokens(source)) {}

  std::shared_ptr<Program> program() {
    while (!peek().isEmpty()) topLevel();
    return m_program;
  }

  /// Parameters of the first kernel, whatever follows.
  std::vector<Parameter> kernelParameters() {
    for (; !peek().isEmpty(); next())
      if (peek() == QLatin1String("kernel")) {
        next();
        (void)type();
        next();
        return parameterList();
      }
    return {};
  }

 private:
  [[nodiscard]] const QString& peek(size_t ahead = 0) const {
    return m_tokens[std::min(m_place + ahead, m_tokens.size() - 1)].text;
  }
  QString next() {
    const QString text = peek();
    if (m_place + 1 < m_tokens.size()) ++m_place;
    return text;
  }
  [[noreturn]] void fail(const QString& text) const {
    throw SyntaxError{m_tokens[m_place].line, text};
  }
  bool accept(const char* text) {
    if (peek() != QLatin1String(text)) return false;
    next();
    return true;
  }
  void expect(const char* text) {
    if (!accept(text))
      fail(QStringLiteral("“%1” expected before “%2”").arg(QLatin1String(text), peek()));
  }
  Type type() {
    while (peek() == QLatin1String("const") || peek() == QLatin1String("in")) next();
    const auto found = types().constFind(peek());
    if (found == types().constEnd()) fail(QStringLiteral("“%1” is no type").arg(peek()));
    next();
    return *found;
  }
  [[nodiscard]] bool atType() const {
    return peek() == QLatin1String("const") ||
           (types().contains(peek()) && peek(1) != QLatin1String("("));
  }
  QString name() {
    const QString text = next();
    if (text.isEmpty() || !(text[0].isLetter() || text[0] == QLatin1Char('_')))
      fail(QStringLiteral("a name expected instead of “%1”").arg(text));
    return text;
  }

  std::vector<Parameter> parameterList() {
    std::vector<Parameter> all;
    expect("(");
    if (accept("void")) {
      expect(")");
      return all;
    }
    while (!accept(")")) {
      const Type kind = type();
      all.push_back({kind, name()});
      if (peek() != QLatin1String(")")) expect(",");
    }
    return all;
  }

  void topLevel() {
    const bool isKernel = accept("kernel");
    const Type result = type();
    if (isKernel || peek(1) == QLatin1String("("))
      function(result, isKernel);
    else
      declarations(result, m_program->globals);
  }

  void function(Type result, bool isKernel) {
    Function made;
    made.name = name();
    made.result = result;
    made.isKernel = isKernel;
    made.parameters = parameterList();
    if (accept(";")) return;  // a declaration only
    m_scopes = {{}};
    m_slots = 0;
    m_inFunction = true;
    for (const Parameter& p : made.parameters) m_scopes.back().insert(p.name, m_slots++);
    expect("{");
    made.body = block();
    made.slots = m_slots;
    m_inFunction = false;
    m_program->functions.push_back(std::move(made));
  }

  /// The rest of "type a = …, b;".
  void declarations(Type kind, std::vector<NodePointer>& into) {
    do {
      auto node = makeNode(Op::Declare);
      node->type = kind;
      const QString variable = name();
      if (accept("=")) node->children.push_back(assignment());
      node->index = m_inFunction ? m_slots++ : m_program->globalSlots++;
      (m_inFunction ? m_scopes.back() : m_globals).insert(variable, node->index);
      into.push_back(std::move(node));
    } while (accept(","));
    expect(";");
  }

  NodePointer block() {
    auto node = makeNode(Op::Block);
    m_scopes.emplace_back();
    while (!accept("}")) {
      if (peek().isEmpty()) fail(QStringLiteral("“}” is missing"));
      node->children.push_back(statement());
    }
    m_scopes.pop_back();
    return node;
  }

  NodePointer statement() {
    const Nesting nesting(*this);
    if (accept("{")) return block();
    if (accept(";")) return makeNode(Op::Block);
    if (accept("if")) return ifStatement();
    if (accept("for")) return forStatement();
    if (accept("while")) {
      expect("(");
      auto condition = expression();
      expect(")");
      auto body = statement();
      return makeNode(Op::Loop, std::move(condition), std::move(body), makeNode(Op::Block));
    }
    if (accept("return")) {
      auto node = makeNode(Op::Return);
      if (peek() != QLatin1String(";")) node->children.push_back(expression());
      expect(";");
      return node;
    }
    if (accept("break")) return ended(makeNode(Op::Break));
    if (accept("continue")) return ended(makeNode(Op::Continue));
    if (atType()) {
      auto node = makeNode(Op::Block);
      const Type kind = type();
      declarations(kind, node->children);
      return node;
    }
    return ended(expression());
  }

  NodePointer ended(NodePointer node) {
    expect(";");
    return node;
  }

  NodePointer ifStatement() {
    expect("(");
    auto condition = expression();
    expect(")");
    auto then = statement();
    auto otherwise = accept("else") ? statement() : NodePointer();
    return makeNode(Op::If, std::move(condition), std::move(then), std::move(otherwise));
  }

  NodePointer forStatement() {
    auto node = makeNode(Op::Block);
    m_scopes.emplace_back();
    expect("(");
    node->children.push_back(statement());  // ends with its ";"
    auto condition = makeNode(Op::Number);
    condition->number = 1;
    if (peek() != QLatin1String(";")) condition = expression();
    expect(";");
    auto step = peek() == QLatin1String(")") ? makeNode(Op::Block) : expression();
    expect(")");
    auto body = statement();
    m_scopes.pop_back();
    node->children.push_back(
        makeNode(Op::Loop, std::move(condition), std::move(body), std::move(step)));
    return node;
  }

  NodePointer expression() { return assignment(); }

  NodePointer assignment() {
    const Nesting nesting(*this);
    auto left = choice();
    static const QHash<QString, Op> operators = {{QStringLiteral("="), Op::Assign},
                                                 {QStringLiteral("+="), Op::Add},
                                                 {QStringLiteral("-="), Op::Subtract},
                                                 {QStringLiteral("*="), Op::Multiply},
                                                 {QStringLiteral("/="), Op::Divide}};
    const auto found = operators.constFind(peek());
    if (found == operators.constEnd()) return left;
    next();
    return assigned(std::move(left), *found, assignment());
  }

  /// target = value, or target = target op value.
  NodePointer assigned(NodePointer target, Op op, NodePointer value) {
    const Node& place = target->op == Op::Swizzle ? *target->children[0] : *target;
    if (place.op != Op::Local && place.op != Op::Global)
      fail(QStringLiteral("only variables can be assigned to"));
    if (op != Op::Assign) value = makeNode(op, copyOf(*target), std::move(value));
    return makeNode(Op::Assign, std::move(target), std::move(value));
  }

  static NodePointer copyOf(const Node& node) {
    auto copy = makeNode(node.op);
    copy->index = node.index;
    copy->components = node.components;
    for (const NodePointer& child : node.children) copy->children.push_back(copyOf(*child));
    return copy;
  }

  NodePointer choice() {
    auto condition = binary(0);
    if (!accept("?")) return condition;
    auto yes = assignment();
    expect(":");
    return makeNode(Op::Choose, std::move(condition), std::move(yes), assignment());
  }

  NodePointer binary(size_t level) {
    static const std::vector<QHash<QString, Op>> levels = {
        {{QStringLiteral("||"), Op::Or}},
        {{QStringLiteral("&&"), Op::And}},
        {{QStringLiteral("=="), Op::Equal}, {QStringLiteral("!="), Op::NotEqual}},
        {{QStringLiteral("<"), Op::Less},
         {QStringLiteral("<="), Op::LessEqual},
         {QStringLiteral(">"), Op::Greater},
         {QStringLiteral(">="), Op::GreaterEqual}},
        {{QStringLiteral("+"), Op::Add}, {QStringLiteral("-"), Op::Subtract}},
        {{QStringLiteral("*"), Op::Multiply}, {QStringLiteral("/"), Op::Divide}}};
    if (level == levels.size()) return unary();
    auto left = binary(level + 1);
    for (auto found = levels[level].constFind(peek()); found != levels[level].constEnd();
         found = levels[level].constFind(peek())) {
      if (left->depth > deepestNesting) fail(QStringLiteral("the expression is too long"));
      next();
      left = makeNode(*found, std::move(left), binary(level + 1));
    }
    return left;
  }

  NodePointer one() {
    auto node = makeNode(Op::Number);
    node->number = 1;
    node->isInteger = true;
    return node;
  }

  NodePointer unary() {
    const Nesting nesting(*this);
    if (accept("-")) return makeNode(Op::Negate, unary());
    if (accept("+")) return unary();
    if (accept("!")) return makeNode(Op::Not, unary());
    if (accept("++")) return assigned(unary(), Op::Add, one());
    if (accept("--")) return assigned(unary(), Op::Subtract, one());
    return postfix(primary());
  }

  NodePointer postfix(NodePointer node) {
    for (;;) {
      if (accept(".")) {
        node = makeNode(Op::Swizzle, std::move(node));
        node->components = swizzle(name());
      } else if (peek() == QLatin1String("++") || peek() == QLatin1String("--")) {
        const Op op = next() == QLatin1String("++") ? Op::Add : Op::Subtract;
        node = assigned(std::move(node), op, one());
        node->index = 1;  // its value is the one before
      } else {
        return node;
      }
    }
  }

  std::vector<quint8> swizzle(const QString& letters) {
    std::vector<quint8> all;
    for (const QChar c : letters) {
      qsizetype found = -1;
      for (const char* set : {"xyzw", "rgba", "stpq"})
        if (found < 0) found = QLatin1String(set).indexOf(c);
      if (found < 0 || all.size() == 4) fail(QStringLiteral("no component “%1”").arg(letters));
      all.push_back(static_cast<quint8>(found));
    }
    return all;
  }

  NodePointer primary() {
    if (accept("(")) {
      auto node = expression();
      expect(")");
      return node;
    }
    const QString text = next();
    if (text.isEmpty()) fail(QStringLiteral("the text ends too early"));
    if (text[0].isDigit() || text[0] == QLatin1Char('.')) return literal(text);
    if (text == QLatin1String("true") || text == QLatin1String("false"))
      return literal(text == QLatin1String("true") ? QStringLiteral("1") : QStringLiteral("0"));
    if (peek() == QLatin1String("(")) return call(text);
    return variable(text);
  }

  NodePointer literal(QString text) {
    const bool isInteger =
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isDigit(); });
    if (text.endsWith(QLatin1Char('f'))) text.chop(1);
    auto node = makeNode(Op::Number);
    bool ok = false;
    node->number = text.toFloat(&ok);
    if (!ok) fail(QStringLiteral("“%1” is no number").arg(text));
    node->isInteger = isInteger;
    return node;
  }

  NodePointer variable(const QString& text) {
    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope)
      if (const auto found = scope->constFind(text); m_inFunction && found != scope->constEnd()) {
        auto node = makeNode(Op::Local);
        node->index = *found;
        return node;
      }
    if (!m_globals.contains(text)) fail(QStringLiteral("“%1” is not known").arg(text));
    auto node = makeNode(Op::Global);
    node->index = m_globals.value(text);
    return node;
  }

  NodePointer call(const QString& text) {
    auto node = makeNode(Op::Builtin);
    expect("(");
    while (!accept(")")) {
      node->children.push_back(assignment());
      node->depth = std::max(node->depth, node->children.back()->depth + 1);
      if (peek() != QLatin1String(")")) expect(",");
    }
    if (const auto kind = types().constFind(text); kind != types().constEnd()) {
      node->op = Op::Construct;
      node->type = *kind;
      return node;
    }
    for (size_t i = 0; i < m_program->functions.size(); ++i)
      if (m_program->functions[i].name == text) {
        if (node->children.size() != m_program->functions[i].parameters.size())
          fail(QStringLiteral("“%1” takes another number of arguments").arg(text));
        node->op = Op::Call;
        node->index = static_cast<int>(i);
        return node;
      }
    node->index = builtinIndex(text);
    if (node->index < 0) fail(QStringLiteral("the function “%1” is not known").arg(text));
    return node;
  }

  struct Nesting {
    explicit Nesting(Parser& parser) : parser(parser) {
      if (++parser.m_depth > deepestNesting) parser.fail(QStringLiteral("nested too deeply"));
    }
    ~Nesting() { --parser.m_depth; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    Parser& parser;
  };

  std::vector<Token> m_tokens;
  size_t m_place = 0;
  int m_depth = 0;
  std::shared_ptr<Program> m_program = std::make_shared<Program>();
  std::vector<QHash<QString, int>> m_scopes;
  QHash<QString, int> m_globals;
  int m_slots = 0;
  bool m_inFunction = false;
};

}  // namespace

int componentCount(Type type) {
  switch (type) {
    case Type::Vec2:
      return 2;
    case Type::Vec3:
      return 3;
    case Type::Vec4:
    case Type::Color:
      return 4;
    default:
      return 1;
  }
}

const Function* Program::kernel() const {
  for (const Function& function : functions)
    if (function.isKernel) return &function;
  return nullptr;
}

foundation::Result<std::shared_ptr<const Program>> Program::parse(const QString& source) {
  if (source.size() > longestSource)
    return foundation::failure(QStringLiteral("the kernel's source is too long"));
  try {
    const auto program = Parser(source).program();
    if (!program->kernel()) return foundation::failure(QStringLiteral("there is no kernel"));
    return program;
  } catch (const SyntaxError& error) {
    return foundation::failure(
        QStringLiteral("the kernel cannot be read, line %1: %2").arg(error.line).arg(error.text));
  }
}

std::vector<Parameter> Program::parameters(const QString& source) {
  if (source.size() > longestSource) return {};
  try {
    return Parser(source).kernelParameters();
  } catch (const SyntaxError&) {
    return {};
  }
}

}  // namespace runtime::image::kernel
