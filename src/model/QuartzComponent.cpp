#include "model/QuartzComponent.h"

#include <cmath>

#include "model/Composition.h"
#include "model/RenderInImageWrapper.h"
#include "quartz/QuartzComposition.h"
#include "runtime/CompositionRenderer.h"

namespace model {

namespace {

const QString outputImageKey = QStringLiteral("outputImage");
const QString widthKey = QStringLiteral("inputWidth");
const QString heightKey = QStringLiteral("inputHeight");

QString couldNotLoad(const QString& path, const foundation::Error& error) {
  return QStringLiteral("Could not load composition \"%1\"").arg(path) +
         (error.message.isEmpty() ? QString() : QStringLiteral(": ") + error.message);
}

/// The path to load: the file's own when it yields an image, else that of a wrapped copy.
foundation::Result<QString> pathYieldingImage(const QString& path) {
  const auto probe = runtime::CompositionRenderer::fromFile(path);
  if (!probe) return tl::unexpected(probe.error());
  if ((*probe)->outputKeys().contains(outputImageKey)) return path;
  return compositionWrappedWithRenderInImage(path);
}

}  // namespace

std::unique_ptr<QuartzComponent> QuartzComponent::createWithQuartzCompositionFile(
    const QString& path, Composition& composition, const InputValues& inputValues,
    QStringList& warnings) {
  const auto usable = pathYieldingImage(path);
  if (!usable) {
    warnings.append(couldNotLoad(path, usable.error()));
    return nullptr;
  }
  auto component = std::unique_ptr<QuartzComponent>(new QuartzComponent(composition));
  if (auto made = component->initializeWithFile(*usable, inputValues, warnings); !made) {
    warnings.append(couldNotLoad(path, made.error()));
    return nullptr;
  }
  component->setStartTime(0);
  component->setEndTime(composition.duration());
  component->addStandardAttributes(component->initialSize(inputValues));
  component->sizeToFit();
  // The composition's width stands in for both sides.
  if (component->width() == 0) component->setWidth(composition.width());
  if (component->height() == 0) component->setHeight(composition.width());
  component->centre();
  return component;
}

double QuartzComponent::renderTimepoint() const {
  return m_composition->editorTimepoint();
}

bool QuartzComponent::visibleInCompositionEditor() const {
  return number("visibleInCompositionEditor") != 0;
}

void QuartzComponent::setVisibleInCompositionEditor(bool visible) {
  attributeForKey(QStringLiteral("visibleInCompositionEditor"))->setCurrentValue(visible);
}

void QuartzComponent::setWidth(double value) {
  if (value < 0) return;
  if (m_constrainProportions) {
    const double other = std::round(height() / width() * value);
    if (other < 0) return;
    setNumber("inputHeight", other);
  }
  setNumber("inputWidth", value);
}

void QuartzComponent::setHeight(double value) {
  if (value < 0) return;
  if (m_constrainProportions) {
    const double other = std::round(width() / height() * value);
    if (other < 0) return;
    setNumber("inputWidth", other);
  }
  setNumber("inputHeight", value);
}

void QuartzComponent::sizeToFit() {
  if (!renderer() || rootIsRenderInImage()) return;
  if (!renderer()->outputKeys().contains(outputImageKey)) return;
  renderer()->setValueForInputKey(0.0, widthKey);
  renderer()->setValueForInputKey(0.0, heightKey);
  const QSize canvas(static_cast<int>(m_composition->width()),
                     static_cast<int>(m_composition->height()));
  (void)renderer()->renderAtTime(0, canvas);
  const runtime::Image image = renderer()->valueForOutputKey(outputImageKey).toImage();
  if (!image.isInfinite() && image.size().width() > 0 && image.size().height() > 0) {
    const bool constrained = std::exchange(m_constrainProportions, false);
    setWidth(image.size().width());
    setHeight(image.size().height());
    m_constrainProportions = constrained;
  }
  renderer()->setValueForInputKey(width(), widthKey);
  renderer()->setValueForInputKey(height(), heightKey);
}

bool QuartzComponent::rootIsRenderInImage() const {
  const auto file = quartz::QuartzComposition::compositionWithData(quartzCompositionData(),
                                                                   compositionFilename());
  if (!file) return false;
  const quartz::QuartzPatch& root = *(*file)->rootPatch();
  for (const auto& output : root.state().value(u"publishedOutputPorts").array()) {
    if (output.dictionary().value(u"key").toString() != outputImageKey) continue;
    for (const auto& node : root.nodes())
      if (node->key() == output.dictionary().value(u"node").toString())
        return node->patchClass() == QLatin1String("QCRenderInImage");
  }
  return false;
}

bool QuartzComponent::shallCreateAttributeForKey(const QString& key) const {
  if (key == widthKey || key == heightKey) return false;
  if (key.contains(QLatin1String("Font_Size"))) return false;
  if (key.contains(QLatin1String("Rich_Font_")))
    return key.contains(QLatin1String("Rich_Font_Name"));
  return true;
}

QSizeF QuartzComponent::initialSize(const InputValues& inputValues) const {
  const QImage image = inputValues.value(QStringLiteral("Image")).toImage();
  if (!image.isNull()) return image.size();
  const auto side = [&](const QString& key) {
    const double value = std::trunc(renderer()->valueForInputKey(key).toNumber());
    return value == 0 ? 200.0 : value;
  };
  return {side(widthKey), side(heightKey)};
}

void QuartzComponent::addStandardAttributes(const QSizeF& size) {
  using Feeds = Attribute::Feeds;
  const auto add = [&](const QString& key, const QString& label, double value, Feeds feeds) {
    addAttribute(
        std::make_unique<Attribute>(this, key, label, AttributeType::Number, value, feeds));
  };
  add(widthKey, QStringLiteral("Width"), size.width(), Feeds::Composition);
  add(heightKey, QStringLiteral("Height"), size.height(), Feeds::Composition);
  add(QStringLiteral("originX"), QStringLiteral("X"), 0, Feeds::Nothing);
  add(QStringLiteral("originY"), QStringLiteral("Y"), 0, Feeds::Nothing);
  add(QStringLiteral("opacity"), QStringLiteral("Opacity"), 1, Feeds::Nothing);
  add(QStringLiteral("zRotation"), QStringLiteral("Z-Rotation"), 0, Feeds::Nothing);
  add(QStringLiteral("marginX"), QStringLiteral("Margin X"), 0, Feeds::Nothing);
  add(QStringLiteral("marginY"), QStringLiteral("Margin Y"), 0, Feeds::Nothing);
  const QString visible = QStringLiteral("visibleInCompositionEditor");
  addAttribute(std::make_unique<Attribute>(this, visible, visible, AttributeType::Boolean, true,
                                           Feeds::Nothing));
}

void QuartzComponent::centre() {
  const auto half = [](double side) {
    return static_cast<double>(static_cast<float>(side) * 0.5F);
  };
  setOriginX(half(m_composition->width()) - width() * 0.5);
  setOriginY(half(m_composition->height()) - height() * 0.5);
}

double QuartzComponent::number(const char* key) const {
  const Attribute* attribute = attributeForKey(QString::fromLatin1(key));
  return attribute ? static_cast<double>(static_cast<float>(attribute->currentValue().toNumber()))
                   : 0;
}

void QuartzComponent::setNumber(const char* key, double value) {
  if (Attribute* attribute = attributeForKey(QString::fromLatin1(key)))
    attribute->setCurrentValue(static_cast<double>(static_cast<float>(value)));
}

}  // namespace model
