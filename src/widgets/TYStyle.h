#pragma once

#include <QProxyStyle>

namespace widgets {

class TYFocusRing;

/// How standard widgets look: the colours and drawings of TYStyleKit over Qt's Fusion, which keeps
/// what is not drawn here. Edges and hairlines are one device pixel at any scale.
///
/// Properties that it looks at: "invalid" (bool) on fields gives them a rose edge, "large" (bool)
/// on push buttons the height of a sheet's button row.
class TYStyle : public QProxyStyle {
  Q_OBJECT
 public:
  TYStyle();
  ~TYStyle() override;

  using QProxyStyle::polish;
  void polish(QWidget* widget) override;
  void unpolish(QWidget* widget) override;
  [[nodiscard]] QPalette standardPalette() const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                   const QWidget* widget) const override;

 private:
  bool drawFrames(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                  const QWidget* widget) const;
  bool drawParts(ControlElement element, const QStyleOption& option, QPainter& painter) const;
  bool drawMenus(ControlElement element, const QStyleOption& option, QPainter& painter,
                 const QWidget* widget) const;

  std::unique_ptr<TYFocusRing> m_focusRing;
};

}  // namespace widgets
