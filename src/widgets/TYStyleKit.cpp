#include "widgets/TYStyleKit.h"

#include <QApplication>
#include <QToolTip>
#include <QWidget>

#include "widgets/Accessibility.h"
#include "widgets/GlyphIconEngine.h"
#include "widgets/SystemAppearance.h"
#include "widgets/TYGlyph.h"
#include "widgets/TYStyle.h"

namespace widgets {
namespace {

QFont face(double points, QFont::Weight weight) {
  QFont font;
  font.setFamilies(
      {QStringLiteral("Inter"), QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
  font.setPointSizeF(points);
  font.setWeight(weight);
  return font;
}

}  // namespace

TYStyleKit::TYStyleKit() : m_system(new SystemAppearance(this)) {
  connect(m_system, &SystemAppearance::changed, this, &TYStyleKit::update);
  update();
}

TYStyleKit& TYStyleKit::shared() {
  static TYStyleKit kit;
  return kit;
}

void TYStyleKit::install(QApplication& application) {
  TYStyleKit& kit = shared();
  kit.m_installed = true;
  application.setStyle(new TYStyle);
  application.setFont(font(TextStyle::Body));
  application.setFont(font(TextStyle::Small), "QToolButton");
  application.setFont(font(TextStyle::SmallMedium), "QHeaderView");
  application.setFont(font(TextStyle::Medium), "QPushButton");
  QToolTip::setFont(font(TextStyle::Body));
  application.setPalette(kit.m_theme.palette());
  installAccessibility();
}

QFont TYStyleKit::font(TextStyle style) {
  switch (style) {
    case TextStyle::Body:
      return face(9, QFont::Normal);
    case TextStyle::Medium:
      return face(9, QFont::Medium);
    case TextStyle::Title:
      return face(9, QFont::DemiBold);
    case TextStyle::Small:
      return face(8.25, QFont::Normal);
    case TextStyle::SmallMedium:
      return face(8.25, QFont::Medium);
    case TextStyle::Ruler:
      return face(7.125, QFont::Normal);
    case TextStyle::TimeCode:
      return face(11.25, QFont::Medium);
    case TextStyle::SheetTitle:
      return face(10.5, QFont::DemiBold);
    case TextStyle::PanelTitle:
      return face(9.75, QFont::DemiBold);
  }
  return {};
}

QIcon TYStyleKit::image(const QString& name, Token atRest) {
  const TYGlyph* glyph = TYGlyph::named(name);
  if (!glyph) return {};
  QIcon icon(new GlyphIconEngine(name, *glyph, atRest));
  icon.setIsMask(true);
  return icon;
}

bool TYStyleKit::reducedMotion() {
  return shared().m_system->reducedMotion();
}

void TYStyleKit::setAppearance(Appearance appearance) {
  m_appearance = appearance;
  update();
}

void TYStyleKit::setContrast(Contrast contrast) {
  m_contrast = contrast;
  update();
}

void TYStyleKit::update() {
  Theme theme;
  theme.dark =
      m_appearance == Appearance::System ? m_system->dark() : m_appearance == Appearance::Dark;
  theme.highContrast =
      m_contrast == Contrast::System ? m_system->highContrast() : m_contrast == Contrast::High;
  if (theme == m_theme) return;
  m_theme = theme;
  if (m_installed) {
    QApplication::setPalette(theme.palette());
    for (QWidget* window : QApplication::topLevelWidgets()) window->update();
  }
  Q_EMIT themeChanged();
}

}  // namespace widgets
