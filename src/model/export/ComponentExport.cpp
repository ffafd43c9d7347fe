#include "model/export/ComponentExport.h"

namespace model {

using foundation::PropertyValue;
using foundation::Result;
using quartz::QuartzComposition;
using quartz::QuartzPatch;

namespace {

/// Published on the renderer node; the order is that of the keys in the file.
const QStringList& geometryKeys() {
  static const QStringList keys{QStringLiteral("originX"),    QStringLiteral("originY"),
                                QStringLiteral("inputWidth"), QStringLiteral("inputHeight"),
                                QStringLiteral("opacity"),    QStringLiteral("zRotation")};
  return keys;
}

PropertyValue single(double value) {
  return PropertyValue::fromFloat(static_cast<float>(value));
}

bool isBakedIn(const Attribute& attribute) {
  return !attribute.permissionToChange() && attribute.type() != AttributeType::VideoInput;
}

}  // namespace

ComponentExport::ComponentExport(ExportContext& context, const QuartzComponent& component, int row)
    : m_context(context), m_component(component), m_row(row) {}

Result<void> ComponentExport::add() {
  if (auto added = addNodes(); !added) return added;
  for (const auto& attribute : m_component.attributes())
    if (attribute->quartzAttribute()) addAttribute(*attribute);
  for (const QString& key : geometryKeys())
    if (const Attribute* attribute = m_component.attributeForKey(key)) addGeometry(*attribute);
  m_timeLine.add(m_context, *m_node, *m_renderer, rowPosition());
  connectRenderer();
  if (m_node->timebased())
    if (auto timer = addTimer(); !timer) return timer;
  return addVisibility();
}

Result<void> ComponentExport::addNodes() {
  const QString place = QStringLiteral("component \"%1\"").arg(m_component.title());
  auto file = QuartzComposition::compositionWithData(m_component.quartzCompositionData(), place);
  if (!file) return tl::unexpected(file.error());
  m_componentFile = std::move(*file);
  QuartzPatch& root = *m_componentFile->rootPatch();
  if (root.nodes().empty())
    return foundation::failure(QStringLiteral("the component's composition is empty"), place);
  m_node = m_context.root().addNode(root.takeNode(root.nodes().front().get()));
  m_node->setKey(QStringLiteral("Component_%1").arg(m_row));
  m_node->setName(m_component.title());
  m_node->setPosition({500, rowPosition()});

  auto renderer = addCopyOf(QStringLiteral("Renderer"), QStringLiteral("Renderer_%1").arg(m_row),
                            {750, rowPosition()});
  if (!renderer) return tl::unexpected(renderer.error());
  m_renderer = *renderer;
  m_renderer->setName(QStringLiteral("Renderer %1").arg(m_row));
  return {};
}

void ComponentExport::addAttribute(const Attribute& attribute) {
  for (const auto& [key, value] : attribute.quartzValues()) {
    const auto entry = m_componentFile->rootPatch()->infoForPublishedInputPortWithName(key);
    const QString port = entry.isEmpty() ? key : entry.value(u"port").toString();
    if (attribute.isAnimatedInExport() && attribute.type() == AttributeType::Color)
      addAnimatedColor(attribute, port);
    else if (attribute.isAnimatedInExport())
      addAnimated(attribute, port, value);
    else if (isBakedIn(attribute))
      m_node->setPortValue(value, port);
    else
      publishInput(port, value);
  }
}

void ComponentExport::addAnimated(const Attribute& attribute, const QString& port,
                                  const PropertyValue& curve) {
  m_timeLine.addCurve(port, curve, TimeLineExport::Shown::Green);
  if (auto values = attribute.keyFrameValuesForMultiplexer(); !values.isEmpty())
    m_timeLine.setMultiplexerValues(port, values);
}

void ComponentExport::addAnimatedColor(const Attribute& attribute, const QString& port) {
  const foundation::PropertyArray curves = attribute.keyFrameInformation();
  if (curves.size() == 3) m_timeLine.addColorCurves(port, curves);
}

void ComponentExport::publishInput(const QString& port, const PropertyValue& value) {
  PublishedKeys::Name name{port, port + m_context.separator + m_component.title()};
  if (!port.startsWith(QLatin1String("CI")))
    name = m_context.keys.unusedName(m_context.keyFactory(m_component, m_context.separator, port),
                                     m_context.separator);
  m_node->publishPort(port, name.key, name.label);
  m_context.file.setInputParameter(value, name.key);
  m_context.keys.use(name.key);
}

void ComponentExport::addGeometry(const Attribute& attribute) {
  const QString& key = attribute.key();
  if (attribute.isAnimatedInExport()) {
    if (!m_timeLine.contains(key))
      m_timeLine.addCurve(key, attribute.keyFrameInformation(), TimeLineExport::Shown::Red);
    return;
  }
  const PropertyValue value = attribute.marginAdjustedValueForTimepoint(noTimepoint).quartzValue();
  if (value.isNull()) return;
  if (isBakedIn(attribute)) {
    m_renderer->setPortValue(value, key);
    return;
  }
  // Unlike the component's own inputs these are labelled without the counter.
  const QString label = m_context.keyFactory(m_component, m_context.separator, key);
  const QString published = m_context.keys.unusedName(label, m_context.separator).key;
  m_renderer->publishPort(key, published, label);
  m_context.file.setInputParameter(value, published);
  m_context.keys.use(published);
}

void ComponentExport::connectRenderer() {
  m_context.connect(*m_node, QStringLiteral("outputImage"), *m_renderer, QStringLiteral("image"));
  const auto fromScaler = [&](const QString& output, const QString& input) {
    m_context.root().addConnectionFromComponent(QStringLiteral("Scaler"), output, m_renderer->key(),
                                                input);
  };
  fromScaler(QStringLiteral("widthScalingFactor"), QStringLiteral("scaleFactorWidth"));
  fromScaler(QStringLiteral("heightScalingFactor"), QStringLiteral("scaleFactorHeight"));
  fromScaler(QStringLiteral("renderWidth"), QStringLiteral("renderWidth"));
  fromScaler(QStringLiteral("renderHeight"), QStringLiteral("renderHeight"));
}

Result<void> ComponentExport::addTimer() {
  auto timer = addCopyOf(QStringLiteral("Timer"), QStringLiteral("timer_%1").arg(m_renderer->key()),
                         {250, rowPosition()});
  if (!timer) return tl::unexpected(timer.error());
  setTimes(**timer);
  m_context.connectTime(**timer, QStringLiteral("patchTime"));
  m_node->setTimebase(QStringLiteral("external"));
  m_context.connect(**timer, QStringLiteral("time"), *m_node, QStringLiteral("_time"));
  return {};
}

Result<void> ComponentExport::addVisibility() {
  auto enabler =
      addCopyOf(QStringLiteral("Enabler"), QStringLiteral("enabler_%1").arg(m_renderer->key()),
                {250, rowPosition()});
  if (!enabler) return tl::unexpected(enabler.error());
  setTimes(**enabler);
  (*enabler)->setTimebase(QStringLiteral("external"));
  auto logic =
      addCopyOf(QStringLiteral("Logic_1"), QStringLiteral("enablelogic_%1").arg(m_renderer->key()),
                {400, rowPosition()});
  if (!logic) return tl::unexpected(logic.error());

  m_context.connectTime(**enabler, QStringLiteral("patchTime"));
  const QString result = QStringLiteral("outputResult");
  m_context.connect(**enabler, result, **logic, QStringLiteral("inputValue1"));
  m_context.connect(**logic, result, *m_renderer, QStringLiteral("_enable"));

  const QString label = m_component.title() + m_context.separator + QStringLiteral("Enable");
  const QString key = m_context.keys.unusedName(label, m_context.separator).key;
  (*logic)->publishPort(QStringLiteral("inputValue2"), key, label);
  m_context.file.setInputParameter(m_component.visibleInCompositionEditor(), key);
  m_context.keys.use(key);
  return {};
}

Result<QuartzPatch*> ComponentExport::addCopyOf(const QString& name, const QString& key,
                                                const QPointF& position) {
  const QuartzPatch* original = m_context.rendererFile->rootPatch()->patchWithName(name);
  if (!original)
    return foundation::failure(
        QStringLiteral("the standard component \"Renderer\" has no patch \"%1\"").arg(name));
  QuartzPatch* copy = m_context.root().addNode(original->copy());
  copy->setKey(key);
  copy->setPosition(position);
  return copy;
}

void ComponentExport::setTimes(QuartzPatch& patch) const {
  const double end = std::min(m_component.endTime(), m_context.composition.duration());
  patch.setPortValue(single(m_component.startTime()), QStringLiteral("startTime"));
  patch.setPortValue(single(end), QStringLiteral("endTime"));
}

}  // namespace model
