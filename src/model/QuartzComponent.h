#pragma once

#include <QRectF>
#include <array>

#include "model/AbstractComponent.h"
#include "model/ComponentHandles.h"
#include "model/ComponentResize.h"
#include "runtime/Host.h"
#include "runtime/draw/DrawList.h"

namespace model {

class Composition;

/// A component placed in a composition. Geometry is in picture coordinates (pixels of the video
/// format, y up) and lives in the standard attributes, so it can be animated; the accessors read
/// and write the current values, in single precision. The composition owns its components.
class QuartzComponent : public AbstractComponent {
 public:
  struct Declaration : AbstractComponent::Declaration {
    Declaration();
    store::Property<bool> constrainProportions = property<bool>("constrainProportions");
    store::Property<qint64> zLevel = property<qint64>("zLevel");
    store::Property<bool> selected = transient<bool>("selected");
    store::ToOne<Composition> composition = toOne<Composition>("composition", "components");
  };
  [[nodiscard]] static const Declaration& declaration();

  QuartzComponent();

  /// Makes a component of a composition file and centres it. A file that draws but yields no image
  /// is wrapped. The component belongs to the composition already. On failure a warning is added
  /// and nothing is returned.
  [[nodiscard]] static QuartzComponent* createWithQuartzCompositionFile(
      const QString& path, Composition& composition, const InputValues& inputValues,
      QStringList& warnings);
  /// From what dictionaryWithData() gave. Nothing, and a warning, when its composition cannot be
  /// loaded.
  [[nodiscard]] static QuartzComponent* createWithDictionaryData(
      const foundation::PropertyDictionary& dictionaryData, Composition& composition,
      QStringList& warnings);

  [[nodiscard]] Composition* composition() const;
  void setComposition(Composition* composition);
  [[nodiscard]] double renderTimepoint() const override;
  /// Stacking order; lower levels are drawn first.
  [[nodiscard]] quint64 zLevel() const { return static_cast<quint64>(get(declaration().zLevel)); }
  void setZLevel(quint64 level);
  [[nodiscard]] bool zLevelComparison(const QuartzComponent& other) const {
    return zLevel() < other.zLevel();
  }
  [[nodiscard]] bool zLevelInverseComparison(const QuartzComponent& other) const {
    return zLevel() > other.zLevel();
  }
  [[nodiscard]] bool selected() const { return get(declaration().selected); }
  void setSelected(bool selected);
  [[nodiscard]] bool constrainProportions() const {
    return get(declaration().constrainProportions);
  }
  void setConstrainProportions(bool constrain) {
    set(declaration().constrainProportions, constrain);
  }

  [[nodiscard]] double originX() const { return number(Standard::OriginX); }
  [[nodiscard]] double originY() const { return number(Standard::OriginY); }
  [[nodiscard]] double width() const { return number(Standard::Width); }
  [[nodiscard]] double height() const { return number(Standard::Height); }
  [[nodiscard]] double zRotation() const { return number(Standard::ZRotation); }  ///< degrees
  [[nodiscard]] double opacity() const { return number(Standard::Opacity); }      ///< 0 to 1
  [[nodiscard]] double opacityHumanReadable() const { return opacity() * 100; }
  [[nodiscard]] double marginX() const { return number(Standard::MarginX); }
  [[nodiscard]] double marginY() const { return number(Standard::MarginY); }
  [[nodiscard]] bool visibleInCompositionEditor() const { return number(Standard::Visible) != 0; }
  [[nodiscard]] QRectF drawingFrame() const { return {originX(), originY(), width(), height()}; }
  [[nodiscard]] double extentH() const { return originX() + width(); }
  [[nodiscard]] double extentV() const { return originY() + height(); }
  [[nodiscard]] double centerH() const { return originX() + width() * 0.5; }
  [[nodiscard]] double centerV() const { return originY() + height() * 0.5; }
  void setOriginX(double value) { setNumber(Standard::OriginX, value); }
  void setOriginY(double value) { setNumber(Standard::OriginY, value); }
  /// A negative size is ignored; with constrained proportions the other side follows.
  void setWidth(double value) { setSide(Standard::Width, Standard::Height, value); }
  void setHeight(double value) { setSide(Standard::Height, Standard::Width, value); }
  void setZRotation(double value) { setNumber(Standard::ZRotation, value); }
  void setOpacity(double value) { setNumber(Standard::Opacity, value); }
  void setOpacityHumanReadable(double percent) { setOpacity(percent / 100); }
  void setMarginX(double value) { setNumber(Standard::MarginX, value); }
  void setMarginY(double value) { setNumber(Standard::MarginY, value); }
  void setVisibleInCompositionEditor(bool visible);
  void moveByDelta(double deltaX, double deltaY);

  /// Takes the size of the image that the composition makes when it is asked for no size.
  void sizeToFit();

  [[nodiscard]] ComponentHandles handles() const {
    return ComponentHandles(drawingFrame(), marginX(), marginY());
  }
  /// 0 body, 1 to 8 a grip, 9 nothing; a component that is not shown is never hit.
  [[nodiscard]] int handleIndexForLocation(const QPointF& location) const;
  /// See ComponentResize. Returns the handle.
  int resizeByMovingHandle(int handle, const QPointF& toPoint,
                           ComponentResize::Proportional proportionalResize,
                           ComponentResize::FromCenter resizeFromCenter, const QRectF& startFrame);

  /// The component as it looks at the composition's time (seconds), on a canvas of that many pixels
  /// that shows the whole composition.
  [[nodiscard]] runtime::DrawList renderForView(const QSize& viewSize, double time,
                                                const runtime::FrameArguments& arguments = {});
  /// The renderer with everything set for renderForView(); none where it has none.
  [[nodiscard]] runtime::CompositionRenderer* rendererForView(const QSize& viewSize);
  /// The component's own time at a time of the composition.
  [[nodiscard]] double ownTime(double time) const;
  /// Tells the renderer where the document lies, for relative paths in compositions.
  void updateFileURL();

  /// Whether users of the template may do that: 1 entirely, -1 partly, 0 not at all.
  [[nodiscard]] int permissionToMove() const;
  [[nodiscard]] int permissionToResize() const;
  [[nodiscard]] int permissionToChangeAttributes() const;
  /// All but position, size, opacity and rotation.
  [[nodiscard]] QList<Attribute*> nonStandardAttributes() const;

  [[nodiscard]] foundation::PropertyDictionary dictionaryWithData() const override;
  void attributeDidChange(const Attribute& attribute) override;

 protected:
  [[nodiscard]] bool shallCreateAttributeForKey(const QString& key) const override;
  [[nodiscard]] foundation::Result<QString> usablePath(const QString& path) const override;
  void setupRenderer(runtime::CompositionRenderer& renderer) const override;
  void awakeFromFetch() override;
  void didLeaveContext() override;
  void valueDidChange(const QString& key) override;
  bool setValueForUndefinedKey(const QVariant& value, const QString& key) override;

 private:
  enum class Standard {
    Width,
    Height,
    OriginX,
    OriginY,
    Opacity,
    ZRotation,
    MarginX,
    MarginY,
    Visible
  };
  static constexpr size_t standardCount = 9;
  struct StandardAttribute {
    const char16_t* key;
    const char16_t* label;
    const char16_t* accessor;  ///< the component's own key for the value
    double initial;
    Attribute::Feeds feeds;
  };
  [[nodiscard]] static const std::array<StandardAttribute, standardCount>& standardAttributes();

  [[nodiscard]] bool loadFile(const QString& path, const InputValues& inputValues,
                              QStringList& warnings);
  [[nodiscard]] QSizeF initialSize(const InputValues& inputValues) const;
  void addStandardAttribute(Standard which, double value);
  /// Binds the standard attributes; gives older documents those that they lack.
  void initializeAttributeObservers();
  void centre();
  [[nodiscard]] Attribute* standard(Standard which) const;
  [[nodiscard]] double number(Standard which) const;
  void setNumber(Standard which, double value);
  void setSide(Standard side, Standard other, double value);
  void placeSprite(runtime::CompositionRenderer& renderer, const QSize& viewSize) const;
  [[nodiscard]] int summary(const QList<const Attribute*>& attributes) const;

  mutable std::array<Attribute*, standardCount> m_standard{};  ///< bound when first used
};

}  // namespace model
