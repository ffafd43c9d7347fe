#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

#include "foundation/Result.h"

/// Image kernels: small per-pixel programs in a language like GLSL.
namespace runtime::image::kernel {

enum class Type : quint8 { Void, Float, Int, Bool, Vec2, Vec3, Vec4, Color, Sampler };

/// Components of a vector of the type; 1 for scalars.
[[nodiscard]] int componentCount(Type type);

enum class Op : quint8 {
  // expressions
  Number,
  Local,
  Global,
  Swizzle,
  Negate,
  Not,
  Add,
  Subtract,
  Multiply,
  Divide,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  Equal,
  NotEqual,
  And,
  Or,
  Choose,
  Assign,
  Construct,
  Builtin,
  Call,
  // statements
  Block,
  Declare,
  If,
  Loop,
  Return,
  Break,
  Continue
};

/// A node of the program tree.
struct Node {
  Op op = Op::Block;
  Type type = Type::Float;  ///< of Declare and Construct
  int index = 0;            ///< slot, builtin or function; 1 for a postfix assignment
  float number = 0;
  bool isInteger = false;          ///< of Number
  int depth = 1;                   ///< levels below and with this one
  std::vector<quint8> components;  ///< of Swizzle
  std::vector<std::unique_ptr<Node>> children;
};
using NodePointer = std::unique_ptr<Node>;

struct Parameter {
  Type type = Type::Float;
  QString name;
};

struct Function {
  QString name;
  Type result = Type::Void;
  bool isKernel = false;
  std::vector<Parameter> parameters;  ///< the first slots
  int slots = 0;
  NodePointer body;
};

/// A parsed source text.
struct Program {
  std::vector<Function> functions;
  std::vector<NodePointer> globals;  ///< declarations, to be run before the kernel
  int globalSlots = 0;

  /// The first kernel, or nothing.
  [[nodiscard]] const Function* kernel() const;
  /// Fails with the line and what is wrong there. Bounds length and nesting.
  [[nodiscard]] static foundation::Result<std::shared_ptr<const Program>> parse(
      const QString& source);
  /// The kernel's parameters even where its body cannot be understood.
  [[nodiscard]] static std::vector<Parameter> parameters(const QString& source);
};

/// Names of the built-in functions; the index is what a Builtin node holds. −1 when unknown.
[[nodiscard]] int builtinIndex(const QString& name);

}  // namespace runtime::image::kernel
