#pragma once

#include <QString>
#include <memory>
#include <variant>

#include "foundation/Color.h"
#include "foundation/PropertyValue.h"
#include "runtime/Image.h"
#include "runtime/Structure.h"

namespace runtime {

struct Mesh;

enum class PortType : quint8 {
  Number,
  Index,
  Boolean,
  String,
  Color,
  Image,
  Structure,
  Mesh,
  Interaction,
  Virtual  ///< carries any of the others unchanged
};

/// The platform's name of a port type, e.g. "QCPortTypeNumber"; empty for types that hosts skip.
[[nodiscard]] QString portTypeName(PortType type);
/// A word for people with its article: "a number", "an image"; "anything" for Virtual.
[[nodiscard]] QString portTypeWord(PortType type);
/// Whether a connection between ports of these types can carry anything: an image or a structure
/// cannot be made from anything else, and has no number.
[[nodiscard]] bool isConvertible(PortType from, PortType to);
/// The type that a state's `portClass` such as "QCNumberPort" stands for; Virtual when unknown.
[[nodiscard]] PortType portTypeForClass(const QString& portClass);

/// What travels over a connection. An empty value stands for "nothing there".
class Value {
 public:
  struct Index {
    quint64 value = 0;
    friend bool operator==(const Index&, const Index&) = default;
  };

  Value() = default;
  Value(double v) : m_data(v) {}
  Value(int) = delete;  // Number, Index or Boolean? say which
  Value(Index v) : m_data(v) {}
  Value(bool v) : m_data(v) {}
  Value(QString v) : m_data(std::move(v)) {}
  Value(const char*) = delete;
  Value(const foundation::Color& v) : m_data(v) {}
  Value(Image v);
  Value(Structure v);
  Value(std::shared_ptr<const Mesh> v);

  [[nodiscard]] static Value index(quint64 v) { return Value(Index{v}); }
  /// The value that a port of the type has when nothing else is known: 0, false, "", white, none.
  [[nodiscard]] static Value zero(PortType type);
  /// A property-list value as stored in a file, read leniently for a port of the type.
  [[nodiscard]] static Value fromProperty(const foundation::PropertyValue& stored, PortType type);
  /// The stored form; images become PNG data, meshes nothing.
  [[nodiscard]] foundation::PropertyValue toProperty() const;

  [[nodiscard]] bool isEmpty() const { return std::holds_alternative<std::monostate>(m_data); }
  template <typename T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&m_data);
  }
  /// The type of what is held; Virtual when empty.
  [[nodiscard]] PortType type() const;

  /// Conversions by the rules for connections between unlike ports; none of them fails.
  [[nodiscard]] double toNumber() const;
  [[nodiscard]] quint64 toIndex() const;
  [[nodiscard]] bool toBoolean() const;
  [[nodiscard]] QString toString() const;
  [[nodiscard]] foundation::Color toColor() const;
  [[nodiscard]] Image toImage() const;
  [[nodiscard]] Structure toStructure() const;
  [[nodiscard]] std::shared_ptr<const Mesh> toMesh() const;
  [[nodiscard]] Value converted(PortType to) const;

  /// Equality as change tracking needs it: images and meshes by identity.
  friend bool operator==(const Value& a, const Value& b);

 private:
  std::variant<std::monostate, double, Index, bool, QString, foundation::Color, Image, Structure,
               std::shared_ptr<const Mesh>>
      m_data;
};

/// Shortest decimal text that reads back as the number: "2", "0.5", no exponent below 1e15.
[[nodiscard]] QString numberText(double value);
/// The number that the text begins with ("." as decimal point); 0 when there is none.
[[nodiscard]] double leadingNumber(QStringView text);

}  // namespace runtime
