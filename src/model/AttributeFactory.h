#pragma once

#include "model/AbstractComponent.h"

namespace model {

/// Makes attributes of a composition's published inputs, with the values given for them or else the
/// renderer's. Counts the positions of those that the file gives none.
class AttributeFactory {
 public:
  /// Everything must outlive the factory. Warnings are added for what had to be substituted.
  AttributeFactory(const runtime::CompositionRenderer& renderer, const InputValues& inputValues,
                   QStringList& warnings)
      : m_renderer(renderer), m_inputValues(inputValues), m_warnings(warnings) {}

  /// None when no input of the key is published.
  [[nodiscard]] std::unique_ptr<Attribute> attributeForInput(const QString& key);

 private:
  [[nodiscard]] AttributeValue initialValue(const QString& key) const;
  [[nodiscard]] AttributeValue rendererValue(const QString& key) const;

  const runtime::CompositionRenderer& m_renderer;
  const InputValues& m_inputValues;
  QStringList& m_warnings;
  quint64 m_nextPosition = 0;
};

}  // namespace model
