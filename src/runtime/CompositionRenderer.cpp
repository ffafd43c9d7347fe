#include "runtime/CompositionRenderer.h"

#include "foundation/PropertyList.h"
#include "runtime/draw/RasterBackend.h"

namespace runtime {

namespace {

const PublishedPort* find(const std::vector<PublishedPort>& ports, const QString& key) {
  for (const PublishedPort& port : ports)
    if (port.key == key) return &port;
  return nullptr;
}

QStringList keysOf(const std::vector<PublishedPort>& ports) {
  QStringList keys;
  for (const PublishedPort& port : ports) keys.append(port.key);
  return keys;
}

PortAttributes attributesOf(const PublishedPort& published, const Port& port) {
  return {published.key, published.label, port.type, {}, port.minimum, port.maximum, port.menu};
}

}  // namespace

CompositionRenderer::CompositionRenderer(std::shared_ptr<const CompiledComposition> compiled)
    : m_instance(std::move(compiled)) {}

foundation::Result<std::unique_ptr<CompositionRenderer>> CompositionRenderer::fromFile(
    const QString& path, const Budget& budget) {
  auto composition = quartz::QuartzComposition::compositionWithFile(path);
  if (!composition) return tl::unexpected(composition.error());
  auto compiled = CompiledComposition::compile(**composition, path, budget);
  if (!compiled) return tl::unexpected(compiled.error());
  return std::make_unique<CompositionRenderer>(*compiled);
}

foundation::Result<std::unique_ptr<CompositionRenderer>> CompositionRenderer::fromData(
    const QByteArray& bytes, const QString& fileName, const Budget& budget) {
  auto tree = foundation::PropertyList::fromData(bytes, fileName);
  if (!tree) return tl::unexpected(tree.error());
  if (!tree->isDictionary())
    return foundation::failure(QStringLiteral("is not a composition"), fileName);
  const auto composition = quartz::QuartzComposition::compositionWithDictionary(tree->dictionary());
  auto compiled = CompiledComposition::compile(*composition, fileName, budget);
  if (!compiled) return tl::unexpected(compiled.error());
  return std::make_unique<CompositionRenderer>(*compiled);
}

QStringList CompositionRenderer::inputKeys() const {
  return keysOf(compiled().inputs());
}

QStringList CompositionRenderer::outputKeys() const {
  return keysOf(compiled().outputs());
}

std::optional<PortAttributes> CompositionRenderer::inputAttributes(const QString& key) const {
  const PublishedPort* port = find(compiled().inputs(), key);
  if (!port) return {};
  const CompiledNode& node = compiled().nodes()[static_cast<size_t>(port->node)];
  PortAttributes attributes = attributesOf(*port, node.ports.inputs[port->port]);
  attributes.defaultValue = node.constants[static_cast<size_t>(port->port)];
  return attributes;
}

std::optional<PortAttributes> CompositionRenderer::outputAttributes(const QString& key) const {
  const PublishedPort* port = find(compiled().outputs(), key);
  if (!port) return {};
  const CompiledNode& node = compiled().nodes()[static_cast<size_t>(port->node)];
  return attributesOf(*port, node.ports.outputs[port->port]);
}

bool CompositionRenderer::setValueForInputKey(const Value& value, const QString& key) {
  bool isThere = false;
  for (const PublishedPort& port : compiled().inputs()) {
    if (port.key != key) continue;
    m_instance.setInput(port.node, port.port, value);
    isThere = true;
  }
  return isThere;
}

Value CompositionRenderer::valueForInputKey(const QString& key) const {
  const PublishedPort* port = find(compiled().inputs(), key);
  return port ? m_instance.inputValue(port->node, port->port) : Value();
}

Value CompositionRenderer::valueForOutputKey(const QString& key) const {
  const PublishedPort* port = find(compiled().outputs(), key);
  return port ? m_instance.outputValue(port->node, port->port) : Value();
}

DrawList CompositionRenderer::renderAtTime(double time, const QSize& size,
                                           const FrameArguments& arguments) {
  return m_instance.evaluate(time, {std::max(1, size.width()), std::max(1, size.height())},
                             arguments);
}

QImage CompositionRenderer::imageAtTime(double time, const QSize& size,
                                        const FrameArguments& arguments) {
  const DrawList list = renderAtTime(time, size, arguments);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  RasterBackend().draw(list, image);
  return image;
}

QStringList CompositionRenderer::findings() const {
  return compiled().findings() + m_instance.findings();
}

}  // namespace runtime
