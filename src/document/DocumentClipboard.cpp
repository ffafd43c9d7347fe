#include "document/DocumentClipboard.h"

#include <QCoreApplication>
#include <QImage>

#include "document/CompositionDocument.h"
#include "model/ComponentClipboard.h"

namespace document {

using foundation::failure;
using foundation::Result;
using model::Composition;
using model::QuartzComponent;

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("document::DocumentClipboard", text);
}

Result<void> addStandardComponent(const QString& name, const model::InputValues& values,
                                  CompositionDocument& document, QStringList& warnings) {
  const auto path = document.standardComponents().pathOf(name);
  if (!path)
    return failure(QStringLiteral("holds no component %1").arg(name),
                   document.standardComponents().folder());
  document.composition()->addComponenWithQuartzCompositionFile(*path, values, warnings);
  return {};
}

}  // namespace

bool DocumentClipboard::canCopy() const {
  return m_document.composition() && m_document.composition()->validSelection();
}

std::unique_ptr<QMimeData> DocumentClipboard::copy() const {
  if (!canCopy()) return nullptr;
  QList<QuartzComponent*> components = m_document.composition()->selectedComponents();
  // Lowest first, so that pasting stacks them as they were.
  std::stable_sort(
      components.begin(), components.end(),
      [](const QuartzComponent* a, const QuartzComponent* b) { return a->zLevelComparison(*b); });
  const auto bytes = model::ComponentClipboard::dataForComponents(components);
  if (!bytes) return nullptr;
  auto data = std::make_unique<QMimeData>();
  data->setData(model::ComponentClipboard::type(), *bytes);
  return data;
}

std::unique_ptr<QMimeData> DocumentClipboard::cut() {
  auto data = copy();
  if (!data) return nullptr;
  const store::UndoStep step(m_document.context(), tr("Cut"));
  Composition& composition = *m_document.composition();
  composition.removeComponents(composition.selectedComponents());
  return data;
}

bool DocumentClipboard::pasteboardIsValid(const QMimeData& data) {
  return data.hasFormat(model::ComponentClipboard::type()) || data.hasImage() || data.hasText();
}

Result<void> DocumentClipboard::paste(const QMimeData& data, QStringList& warnings) {
  if (!m_document.composition())
    return failure(QStringLiteral("the document holds no composition"));
  const store::UndoStep step(m_document.context(), tr("Paste"));
  if (data.hasFormat(model::ComponentClipboard::type()))
    return pasteComponents(data.data(model::ComponentClipboard::type()), warnings);
  if (data.hasImage()) {
    const auto image = qvariant_cast<QImage>(data.imageData());
    if (image.isNull())
      return failure(QStringLiteral("the image on the clipboard is not readable"));
    return addStandardComponent(QStringLiteral("ImageComponent"),
                                {{QStringLiteral("Image"), image}}, m_document, warnings);
  }
  if (data.hasText())
    return addStandardComponent(QStringLiteral("TextComponent"),
                                {{QStringLiteral("Text"), data.text()}}, m_document, warnings);
  return failure(QStringLiteral("the clipboard holds nothing that can be pasted"));
}

Result<void> DocumentClipboard::pasteComponents(const QByteArray& data, QStringList& warnings) {
  const auto dictionaries = model::ComponentClipboard::dictionariesFromData(data);
  if (!dictionaries) return tl::unexpected(dictionaries.error());
  Composition& composition = *m_document.composition();
  QList<QuartzComponent*> added;
  for (const foundation::PropertyDictionary& dictionary : *dictionaries)
    if (auto* component =
            QuartzComponent::createWithDictionaryData(dictionary, composition, warnings)) {
      composition.addComponent(*component);
      added.append(component);
    }
  // Each was alone selected as it came; what was pasted is what is worked on next.
  for (QuartzComponent* component : added) component->setSelected(true);
  return {};
}

}  // namespace document
