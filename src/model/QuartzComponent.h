#pragma once

#include <QRectF>

#include "model/AbstractComponent.h"

namespace model {

class Composition;

/// A component placed in a composition. Geometry is in picture coordinates (pixels of the video
/// format, y up) and lives in the standard attributes, so it can be animated; the accessors read
/// and write the current values. The composition owns its components.
class QuartzComponent : public AbstractComponent {
 public:
  /// Makes a component of a composition file and centres it. A file that draws but yields no image
  /// is wrapped. On failure a warning is added and nothing is returned.
  [[nodiscard]] static std::unique_ptr<QuartzComponent> createWithQuartzCompositionFile(
      const QString& path, Composition& composition,
      const QMap<QString, AttributeValue>& inputValues, QStringList& warnings);

  [[nodiscard]] Composition* composition() const { return m_composition; }
  [[nodiscard]] double renderTimepoint() const override;
  /// Stacking order; lower levels are drawn first.
  [[nodiscard]] quint64 zLevel() const { return m_zLevel; }
  void setZLevel(quint64 level) { m_zLevel = level; }
  [[nodiscard]] bool constrainProportions() const { return m_constrainProportions; }
  void setConstrainProportions(bool constrain) { m_constrainProportions = constrain; }

  [[nodiscard]] double originX() const { return number("originX"); }
  [[nodiscard]] double originY() const { return number("originY"); }
  [[nodiscard]] double width() const { return number("inputWidth"); }
  [[nodiscard]] double height() const { return number("inputHeight"); }
  [[nodiscard]] double zRotation() const { return number("zRotation"); }  ///< degrees
  [[nodiscard]] double opacity() const { return number("opacity"); }      ///< 0 to 1
  [[nodiscard]] double marginX() const { return number("marginX"); }
  [[nodiscard]] double marginY() const { return number("marginY"); }
  [[nodiscard]] QRectF drawingFrame() const { return {originX(), originY(), width(), height()}; }
  [[nodiscard]] bool visibleInCompositionEditor() const;
  void setOriginX(double value) { setNumber("originX", value); }
  void setOriginY(double value) { setNumber("originY", value); }
  /// A negative size is ignored; with constrained proportions the other side follows.
  void setWidth(double value);
  void setHeight(double value);
  void setZRotation(double value) { setNumber("zRotation", value); }
  void setOpacity(double value) { setNumber("opacity", value); }
  void setMarginX(double value) { setNumber("marginX", value); }
  void setMarginY(double value) { setNumber("marginY", value); }
  void setVisibleInCompositionEditor(bool visible);

  /// Takes the size of the image that the composition makes when it is asked for no size.
  void sizeToFit();

 protected:
  [[nodiscard]] bool shallCreateAttributeForKey(const QString& key) const override;

 private:
  explicit QuartzComponent(Composition& composition) : m_composition(&composition) {}
  [[nodiscard]] QSizeF initialSize(const InputValues& inputValues) const;
  void addStandardAttributes(const QSizeF& size);
  void centre();
  [[nodiscard]] bool rootIsRenderInImage() const;
  [[nodiscard]] double number(const char* key) const;
  void setNumber(const char* key, double value);

  Composition* m_composition;
  quint64 m_zLevel = 0;
  bool m_constrainProportions = false;
};

}  // namespace model
