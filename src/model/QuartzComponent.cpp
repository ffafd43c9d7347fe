#include "model/QuartzComponent.h"

#include <QFileInfo>
#include <cmath>

#include "model/ComponentProgram.h"
#include "model/Composition.h"
#include "model/RenderInImageWrapper.h"
#include "runtime/CompositionRenderer.h"
#include "store/ObjectContext.h"

namespace model {

using foundation::PropertyDictionary;
using foundation::Result;

namespace {

const QString outputImageKey = QStringLiteral("outputImage");
const QString widthKey = QStringLiteral("inputWidth");
const QString heightKey = QStringLiteral("inputHeight");
constexpr std::chrono::milliseconds mostTimeToFit(2000);

QString couldNotLoad(const QString& path, const foundation::Error& error) {
  return QStringLiteral("Could not load composition \"%1\"").arg(path) +
         (error.message.isEmpty() ? QString() : QStringLiteral(": ") + error.message);
}

double single(double value) {
  return static_cast<double>(static_cast<float>(value));
}

}  // namespace

QuartzComponent::Declaration::Declaration()
    : AbstractComponent::Declaration(QStringLiteral("Component")) {
  const auto of = [](const ManagedObject& object) -> const QuartzComponent& {
    return static_cast<const QuartzComponent&>(object);
  };
  for (size_t i = 0; i < standardCount; ++i) {
    const auto which = static_cast<Standard>(i);
    derive(QString::fromUtf16(standardAttributes()[i].accessor).toLatin1().constData(), {},
           [of, which](const ManagedObject& object) { return QVariant(of(object).number(which)); });
  }
  derive("drawingFrame", {"originX", "originY", "width", "height"},
         [of](const ManagedObject& object) { return QVariant(of(object).drawingFrame()); });
  derive("extentH", {"originX", "width"},
         [of](const ManagedObject& object) { return QVariant(of(object).extentH()); });
  derive("extentV", {"originY", "height"},
         [of](const ManagedObject& object) { return QVariant(of(object).extentV()); });
  derive("centerH", {"originX", "width"},
         [of](const ManagedObject& object) { return QVariant(of(object).centerH()); });
  derive("centerV", {"originY", "height"},
         [of](const ManagedObject& object) { return QVariant(of(object).centerV()); });
  derive("opacityHumanReadable", {"opacity"},
         [of](const ManagedObject& object) { return QVariant(of(object).opacityHumanReadable()); });
}

const QuartzComponent::Declaration& QuartzComponent::declaration() {
  static const Declaration declaration;
  return declaration;
}

const std::array<QuartzComponent::StandardAttribute, QuartzComponent::standardCount>&
QuartzComponent::standardAttributes() {
  using Feeds = Attribute::Feeds;
  static const std::array<StandardAttribute, standardCount> table{{
      {u"inputWidth", u"Width", u"width", 0, Feeds::Composition},
      {u"inputHeight", u"Height", u"height", 0, Feeds::Composition},
      {u"originX", u"X", u"originX", 0, Feeds::Nothing},
      {u"originY", u"Y", u"originY", 0, Feeds::Nothing},
      {u"opacity", u"Opacity", u"opacity", 1, Feeds::Nothing},
      {u"zRotation", u"Z-Rotation", u"zRotation", 0, Feeds::Nothing},
      {u"marginX", u"Margin X", u"marginX", 0, Feeds::Nothing},
      {u"marginY", u"Margin Y", u"marginY", 0, Feeds::Nothing},
      {u"visibleInCompositionEditor", u"visibleInCompositionEditor", u"visibleInCompositionEditor",
       0, Feeds::Nothing},
  }};
  return table;
}

QuartzComponent::QuartzComponent() : AbstractComponent(declaration()) {}

QuartzComponent* QuartzComponent::createWithQuartzCompositionFile(const QString& path,
                                                                  Composition& composition,
                                                                  const InputValues& inputValues,
                                                                  QStringList& warnings) {
  store::UndoStep step(*composition.context(), Composition::tr("Add Component"));
  QuartzComponent* component = composition.context()->insert(std::make_unique<QuartzComponent>());
  component->setComposition(&composition);
  if (!component->loadFile(path, inputValues, warnings)) {
    composition.context()->remove(
        *component);  // where nothing is recorded there is nothing to cancel
    step.cancel();
    return nullptr;
  }
  return component;
}

bool QuartzComponent::loadFile(const QString& path, const InputValues& inputValues,
                               QStringList& warnings) {
  const auto usable = usablePath(path);
  if (!usable) {
    warnings.append(couldNotLoad(path, usable.error()));
    return false;
  }
  if (auto made = initializeWithFile(*usable, inputValues, warnings); !made) {
    warnings.append(couldNotLoad(path, made.error()));
    return false;
  }
  setStartTime(0);
  setEndTime(composition()->duration());
  const QSizeF size = initialSize(inputValues);
  for (size_t i = 0; i < standardCount; ++i) {
    const auto which = static_cast<Standard>(i);
    double value = standardAttributes()[i].initial;
    if (which == Standard::Width) value = size.width();
    if (which == Standard::Height) value = size.height();
    addStandardAttribute(which, value);
  }
  sizeToFit();
  // The composition's width stands in for both sides.
  if (width() == 0) setWidth(composition()->width());
  if (height() == 0) setHeight(composition()->width());
  // New attributes announce nothing, and images are not asked for their size.
  renderer()->setValueForInputKey(width(), widthKey);
  renderer()->setValueForInputKey(height(), heightKey);
  centre();
  return true;
}

QuartzComponent* QuartzComponent::createWithDictionaryData(const PropertyDictionary& dictionaryData,
                                                           Composition& composition,
                                                           QStringList& warnings) {
  store::UndoStep step(*composition.context(), Composition::tr("Add Component"));
  QuartzComponent* component = composition.context()->insert(std::make_unique<QuartzComponent>());
  component->setComposition(&composition);
  component->initializeWithDictionary(dictionaryData);
  if (auto loaded = component->initializeQuartzComposition(); !loaded) {
    warnings.append(couldNotLoad(component->compositionFilename(), loaded.error()));
    composition.context()->remove(*component);
    step.cancel();
    return nullptr;
  }
  component->initializeAttributeObservers();
  return component;
}

Result<QString> QuartzComponent::usablePath(const QString& path) const {
  const auto probe = runtime::CompositionRenderer::fromFile(path);
  if (!probe) return tl::unexpected(probe.error());
  if ((*probe)->outputKeys().contains(outputImageKey)) return path;
  return compositionWrappedWithRenderInImage(path);
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

void QuartzComponent::addStandardAttribute(Standard which, double value) {
  const StandardAttribute& description = standardAttributes()[static_cast<size_t>(which)];
  const bool isFlag = which == Standard::Visible;
  addAttribute(std::make_unique<Attribute>(
      QString::fromUtf16(description.key), QString::fromUtf16(description.label),
      isFlag ? AttributeType::Boolean : AttributeType::Number,
      isFlag ? AttributeValue(true) : AttributeValue(value), description.feeds));
}

void QuartzComponent::initializeAttributeObservers() {
  if (attributeForKey(QStringLiteral("marginX")) == nullptr) {
    addStandardAttribute(Standard::MarginX, 0);
    addStandardAttribute(Standard::MarginY, 0);
  }
  if (attributeForKey(QStringLiteral("visibleInCompositionEditor")) == nullptr)
    addStandardAttribute(Standard::Visible, 1);
}

void QuartzComponent::centre() {
  const auto half = [](double side) {
    return static_cast<double>(static_cast<float>(side) * 0.5F);
  };
  setOriginX(half(composition()->width()) - width() * 0.5);
  setOriginY(half(composition()->height()) - height() * 0.5);
}

void QuartzComponent::awakeFromFetch() {
  const store::UndoSuspension suspension(*context());
  initializeAttributeObservers();
  AbstractComponent::awakeFromFetch();
}

void QuartzComponent::didLeaveContext() {
  set(declaration().selected, false);  // what comes back is not selected
  AbstractComponent::didLeaveContext();
}

void QuartzComponent::valueDidChange(const QString& key) {
  if (key == QLatin1String("attributes")) m_standard = {};
  if (key == QLatin1String("selected") && composition()) composition()->followSelectionOf(*this);
  AbstractComponent::valueDidChange(key);
}

bool QuartzComponent::setValueForUndefinedKey(const QVariant& value, const QString& key) {
  bool isNumber = false;
  const double number = value.toDouble(&isNumber);
  if (isNumber && std::isfinite(number)) {
    // By the component's own names, with what its setters see to.
    if (key == QLatin1String("width")) return setWidth(number), true;
    if (key == QLatin1String("height")) return setHeight(number), true;
    if (key == QLatin1String("opacityHumanReadable")) return setOpacityHumanReadable(number), true;
  }
  return AbstractComponent::setValueForUndefinedKey(value, key);
}

void QuartzComponent::attributeDidChange(const Attribute& attribute) {
  AbstractComponent::attributeDidChange(attribute);
  for (size_t i = 0; i < standardCount; ++i) {
    if (standard(static_cast<Standard>(i)) != &attribute) continue;
    setNeedsUpdate(true);
    announce(QString::fromUtf16(standardAttributes()[i].accessor));
  }
}

bool QuartzComponent::shallCreateAttributeForKey(const QString& key) const {
  if (key == widthKey || key == heightKey) return false;
  if (key.contains(QLatin1String("Font_Size"))) return false;
  if (key.contains(QLatin1String("Rich_Font_")))
    return key.contains(QLatin1String("Rich_Font_Name"));
  return true;
}

PropertyDictionary QuartzComponent::dictionaryWithData() const {
  PropertyDictionary dictionary = AbstractComponent::dictionaryWithData();
  dictionary.insert(QStringLiteral("constrainProportions"), constrainProportions());
  return dictionary;
}

Composition* QuartzComponent::composition() const {
  return get(declaration().composition);
}

void QuartzComponent::setComposition(Composition* composition) {
  set(declaration().composition, composition);
}

double QuartzComponent::renderTimepoint() const {
  return composition() ? composition()->editorTimepoint() : 0;
}

void QuartzComponent::setZLevel(quint64 level) {
  set(declaration().zLevel, static_cast<qint64>(level));
  setNeedsUpdate(true);
}

void QuartzComponent::setSelected(bool selected) {
  if (selected != this->selected()) {
    set(declaration().selected, selected);
    if (composition()) composition()->selectionDidChange();
  }
  setNeedsUpdate(true);
}

void QuartzComponent::setVisibleInCompositionEditor(bool visible) {
  if (Attribute* attribute = standard(Standard::Visible)) attribute->setCurrentValue(visible);
}

Attribute* QuartzComponent::standard(Standard which) const {
  Attribute*& bound = m_standard[static_cast<size_t>(which)];
  if (!bound)
    bound =
        attributeForKey(QString::fromUtf16(standardAttributes()[static_cast<size_t>(which)].key));
  return bound;
}

double QuartzComponent::number(Standard which) const {
  const Attribute* attribute = standard(which);
  return attribute ? single(attribute->currentValue().toNumber()) : 0;
}

void QuartzComponent::setNumber(Standard which, double value) {
  Attribute* attribute = standard(which);
  if (attribute && std::isfinite(single(value))) attribute->setCurrentValue(single(value));
}

void QuartzComponent::setSide(Standard side, Standard other, double value) {
  if (value < 0) return;
  const store::UndoStep step(*context());
  if (constrainProportions()) {
    const double following = std::round(number(other) / number(side) * value);
    if (following < 0 || !std::isfinite(following)) return;  // also where a side is 0
    setNumber(other, following);
  }
  setNumber(side, value);
}

void QuartzComponent::moveByDelta(double deltaX, double deltaY) {
  const store::UndoStep step(*context());
  if (deltaX != 0) setOriginX(originX() + deltaX);
  if (deltaY != 0) setOriginY(originY() + deltaY);
}

void QuartzComponent::sizeToFit() {
  if (!renderer() || program()->rootIsRenderInImage() || !program()->hasImageOutput()) return;
  const store::UndoStep step(*context());
  renderer()->setValueForInputKey(0.0, widthKey);
  renderer()->setValueForInputKey(0.0, heightKey);
  const QSize canvas(static_cast<int>(composition()->width()),
                     static_cast<int>(composition()->height()));
  // A file that does not come to its end cannot say how large its picture is.
  runtime::FrameArguments arguments;
  arguments.interruption = std::make_shared<const runtime::Interruption>(mostTimeToFit);
  (void)renderer()->renderAtTime(0, canvas, arguments);
  const runtime::Image image = renderer()->valueForOutputKey(outputImageKey).toImage();
  if (!image.isInfinite() && image.size().width() > 0 && image.size().height() > 0) {
    const bool constrained = constrainProportions();
    setConstrainProportions(false);
    setWidth(image.size().width());
    setHeight(image.size().height());
    setConstrainProportions(constrained);
  }
  renderer()->setValueForInputKey(width(), widthKey);
  renderer()->setValueForInputKey(height(), heightKey);
}

int QuartzComponent::handleIndexForLocation(const QPointF& location) const {
  if (!visible() || !visibleInCompositionEditor()) return ComponentHandles::noHit;
  return handles().indexForLocation(location, zRotation());
}

int QuartzComponent::resizeByMovingHandle(int handle, const QPointF& toPoint,
                                          ComponentResize::Proportional proportionalResize,
                                          ComponentResize::FromCenter resizeFromCenter,
                                          const QRectF& startFrame) {
  const store::UndoStep step(*context(), Composition::tr("Resize"));
  ComponentResize(handle, startFrame, toPoint, proportionalResize, resizeFromCenter).applyTo(*this);
  return handle;
}

void QuartzComponent::setupRenderer(runtime::CompositionRenderer& renderer) const {
  if (!composition()) return;
  const QUrl& file = composition()->fileURL();
  if (!file.isLocalFile()) return;
  renderer.userInfo().insert(QStringLiteral("com.brevant.Tessary.file"), file.toLocalFile());
  renderer.userInfo().insert(QStringLiteral("baseFolder"),
                             QFileInfo(file.toLocalFile()).absolutePath());
}

void QuartzComponent::updateFileURL() {
  // One that is made later asks by itself.
  if (runtime::CompositionRenderer* target = madeRenderer()) setupRenderer(*target);
}

runtime::DrawList QuartzComponent::renderForView(const QSize& viewSize, double time,
                                                 const runtime::FrameArguments& arguments) {
  runtime::CompositionRenderer* target = rendererForView(viewSize);
  return target ? target->renderAtTime(ownTime(time), viewSize, arguments) : runtime::DrawList();
}

runtime::CompositionRenderer* QuartzComponent::rendererForView(const QSize& viewSize) {
  runtime::CompositionRenderer* target = renderer();
  if (!target) return nullptr;
  for (const Attribute* attribute : attributes())
    if (attribute->animateable() && attribute->quartzAttribute())
      attribute->setValueOnRenderer(*target);
  placeSprite(*target, viewSize);
  return target;
}

double QuartzComponent::ownTime(double time) const {
  // Rounded as on air, where times come in single precision.
  return std::max(0.0, std::round((time - startTime()) * 1e5) / 1e5);
}

void QuartzComponent::placeSprite(runtime::CompositionRenderer& renderer,
                                  const QSize& viewSize) const {
  using Sprite = ComponentProgram::Sprite;
  // The picture is two units wide, with 0 in its centre. The same arithmetic as in the renderer of
  // an export, so that both round alike.
  const double unitsWide = 2;
  const double unitsHigh = unitsWide * viewSize.height() / viewSize.width();
  const double across = unitsWide / composition()->width();
  const double up = unitsHigh / composition()->height();
  const auto set = [&](Sprite input, const runtime::Value& value) {
    renderer.setValueForInputKey(value, ComponentProgram::spriteKey(input));
  };
  set(Sprite::X, (originX() + width() / 2) * across - unitsWide / 2);
  set(Sprite::Y, (originY() + height() / 2) * up - unitsHigh / 2);
  set(Sprite::Width, width() * across);
  set(Sprite::Height, height() * up);
  set(Sprite::Rotation, zRotation());
  set(Sprite::Color, foundation::Color{1, 1, 1, opacity()});
  set(Sprite::Enable, visible() && visibleInCompositionEditor());
}

int QuartzComponent::summary(const QList<const Attribute*>& attributes) const {
  qsizetype allowed = 0;
  for (const Attribute* attribute : attributes)
    allowed += attribute && attribute->permissionToChange() ? 1 : 0;
  if (allowed == 0) return 0;
  return allowed == attributes.size() ? 1 : -1;
}

int QuartzComponent::permissionToMove() const {
  return summary({standard(Standard::OriginX), standard(Standard::OriginY)});
}

int QuartzComponent::permissionToResize() const {
  return summary({standard(Standard::Width), standard(Standard::Height)});
}

QList<Attribute*> QuartzComponent::nonStandardAttributes() const {
  QList<Attribute*> others = attributes().list();
  for (const Standard which : {Standard::OriginX, Standard::OriginY, Standard::Width,
                               Standard::Height, Standard::Opacity, Standard::ZRotation})
    others.removeAll(standard(which));
  return others;
}

int QuartzComponent::permissionToChangeAttributes() const {
  const QList<Attribute*> others = nonStandardAttributes();
  return summary(QList<const Attribute*>(others.begin(), others.end()));
}

}  // namespace model
