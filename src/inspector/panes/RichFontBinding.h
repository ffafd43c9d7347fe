#pragma once

#include "inspector/Binding.h"
#include "model/RichFontValue.h"

namespace inspector {

/// Bindings to parts of rich fonts.
class RichFontBinding {
 public:
  using Line = std::optional<model::TextAttributes::Line> model::TextAttributes::*;

  explicit RichFontBinding(const QList<model::Attribute*>& attributes) : m_attributes(attributes) {}

  [[nodiscard]] Binding color(const QString& stepName) const;
  [[nodiscard]] Binding hasShadow(const QString& stepName) const;
  enum class ShadowPart { X, Y, Blur };
  [[nodiscard]] Binding shadow(ShadowPart part, const QString& stepName) const;
  /// An index of lineTitles().
  [[nodiscard]] Binding line(Line line, const QString& stepName) const;
  [[nodiscard]] Binding lineColor(Line line, const QString& stepName) const;
  [[nodiscard]] static QStringList lineTitles();

  /// None for values that are no rich fonts.
  [[nodiscard]] static std::optional<model::TextAttributes> textAttributes(
      const model::Attribute& attribute);

 private:
  using Get = std::function<model::AttributeValue(const model::TextAttributes&)>;
  using Set = std::function<void(model::TextAttributes&, const model::AttributeValue&)>;
  [[nodiscard]] Binding toPart(const QString& stepName, const Get& get, const Set& set) const;

  QList<model::Attribute*> m_attributes;
};

}  // namespace inspector
