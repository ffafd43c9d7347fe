#include "inspector/ValueMenu.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>

#include "foundation/PropertyList.h"
#include "inspector/Binding.h"
#include "inspector/InspectorContext.h"
#include "model/AbstractComponent.h"
#include "model/AttributeFactory.h"
#include "model/ComponentProgram.h"
#include "runtime/CompositionRenderer.h"

namespace inspector {

using model::Attribute;
using model::AttributeValue;
using Codec = store::CodecOf<AttributeValue>;

namespace {

const QString valueFormat = QStringLiteral("application/x-tessary-attribute-value");

QString tr(const char* text) {
  return QCoreApplication::translate("inspector::ValueMenu", text);
}

void copyValue(const AttributeValue& value) {
  auto* data = new QMimeData;
  if (const auto bytes = foundation::PropertyList::toBinary(Codec::encode(value)))
    data->setData(valueFormat, *bytes);
  if (!value.toImage().isNull())
    data->setImageData(value.toImage());
  else
    data->setText(value.description());
  QGuiApplication::clipboard()->setMimeData(data);
}

/// Empty when there is nothing that fits the attribute.
AttributeValue clipboardValue(const Attribute& attribute) {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  if (!data || !data->hasFormat(valueFormat)) return {};
  const auto stored = foundation::PropertyList::fromData(data->data(valueFormat), valueFormat);
  if (!stored) return {};
  AttributeValue value = Codec::decode(*stored);
  const bool isText = !value.toString().isNull();
  const AttributeValue current = attribute.currentValue();
  const auto alike = [&]<typename T>(std::type_identity<T>) {
    return (value.as<T>() != nullptr) == (current.as<T>() != nullptr);
  };
  const bool fits = alike(std::type_identity<QString>()) &&
                    alike(std::type_identity<foundation::Color>()) &&
                    alike(std::type_identity<model::FontValue>()) &&
                    alike(std::type_identity<std::shared_ptr<const model::RichFontValue>>()) &&
                    (alike(std::type_identity<QImage>()) || current.isEmpty());
  if (!fits) return {};
  // Numbers of one kind become those of the other.
  if (!isText && (value.as<double>() || value.as<qint64>() || value.as<bool>()))
    return attribute.valueFromVariant(value.toNumber()).value_or(AttributeValue());
  return value;
}

/// Empty when the attribute is no input of a composition that can be loaded.
AttributeValue fileValue(const Attribute& attribute) {
  const model::AbstractComponent* component = attribute.component();
  const model::ComponentProgram* program = component ? component->program() : nullptr;
  if (!program || !attribute.quartzAttribute()) return {};
  const runtime::CompositionRenderer fresh(program->compiled());
  QStringList warnings;
  const model::InputValues none;
  const auto made =
      model::AttributeFactory(fresh, none, warnings).attributeForInput(attribute.key());
  return made && made->type() == attribute.type() ? made->currentValue() : AttributeValue();
}

void resetToFile(const QList<Attribute*>& attributes) {
  for (Attribute* attribute : attributes)
    if (AttributeValue value = fileValue(*attribute); !value.isEmpty())
      attribute->setCurrentValue(std::move(value));
}

}  // namespace

void fillValueMenu(QMenu& menu, InspectorContext& context, const QList<Attribute*>& attributes,
                   const QString& name) {
  menu.addAction(tr("Copy Value"), &context,
                 [attributes] { copyValue(attributes.first()->currentValue()); });
  const AttributeValue pasted = clipboardValue(*attributes.first());
  QAction* paste =
      menu.addAction(tr("Paste Value"), &context, [&context, attributes, name, pasted] {
        context.change(tr("Paste %1").arg(name),
                       [&] { Binding::toAttributes(attributes, {}).setAll(pasted); });
      });
  paste->setEnabled(!pasted.isEmpty());
  QAction* reset =
      menu.addAction(tr("Reset to the File's Value"), &context, [&context, attributes, name] {
        context.change(tr("Reset %1").arg(name), [&] { resetToFile(attributes); });
      });
  reset->setEnabled(!fileValue(*attributes.first()).isEmpty());
}

}  // namespace inspector
