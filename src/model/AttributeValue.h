#pragma once

#include <QImage>
#include <QString>
#include <memory>
#include <variant>

#include "foundation/Color.h"
#include "foundation/PropertyValue.h"
#include "runtime/Value.h"

namespace model {

class RichFontValue;

/// A font by its name and its size in points.
struct FontValue {
  QString name;
  double size = 0;
  friend bool operator==(const FontValue&, const FontValue&) = default;
};

/// A value of an attribute. Empty stands for a missing value.
class AttributeValue {
 public:
  AttributeValue() = default;
  AttributeValue(bool value) : m_data(value) {}
  AttributeValue(qint64 value) : m_data(value) {}
  AttributeValue(double value) : m_data(value) {}
  AttributeValue(int) = delete;  // an index or a number? say which
  AttributeValue(QString value) : m_data(std::move(value)) {}
  AttributeValue(const char*) = delete;
  AttributeValue(const foundation::Color& value) : m_data(value) {}
  /// Images are kept with straight alpha, 8 bits a channel.
  AttributeValue(QImage value);
  AttributeValue(FontValue value) : m_data(std::move(value)) {}
  AttributeValue(std::shared_ptr<const RichFontValue> value) : m_data(std::move(value)) {}
  [[nodiscard]] static AttributeValue fromRuntime(const runtime::Value& value);

  [[nodiscard]] bool isEmpty() const { return std::holds_alternative<std::monostate>(m_data); }
  template <typename T>
  [[nodiscard]] const T* as() const {
    return std::get_if<T>(&m_data);
  }
  /// Booleans, indexes and numbers; others give 0.
  [[nodiscard]] double toNumber() const;
  [[nodiscard]] QString toString() const;  ///< empty for what is no string
  [[nodiscard]] QImage toImage() const;    ///< null for what is no image

  /// In short for people: numbers and texts as they are, "#RRGGBBAA", "image 200 x 100" and so on.
  [[nodiscard]] QString description() const;

  /// As composition files hold it. Null for what they cannot hold: nothing, fonts, rich fonts.
  [[nodiscard]] foundation::PropertyValue quartzValue() const;
  [[nodiscard]] runtime::Value runtimeValue() const;

  /// Same type and same content; rich fonts compare by content too.
  friend bool operator==(const AttributeValue& a, const AttributeValue& b);

 private:
  std::variant<std::monostate, bool, qint64, double, QString, foundation::Color, QImage, FontValue,
               std::shared_ptr<const RichFontValue>>
      m_data;
};

}  // namespace model
