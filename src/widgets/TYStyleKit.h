#pragma once

#include <QFont>
#include <QIcon>
#include <QObject>

#include "widgets/Theme.h"

class QApplication;

namespace widgets {

class SystemAppearance;

/// The faces of the interface; sizes are in points, so that the desktop's font scale works.
enum class TextStyle {
  Body,
  Medium,
  Title,
  Small,
  SmallMedium,
  Ruler,
  TimeCode,
  SheetTitle,
  PanelTitle
};

/// The drawing kit of the interface: colours of the current theme, fonts, named drawings.
/// One for the program; lives on the thread of the interface.
class TYStyleKit : public QObject {
  Q_OBJECT
 public:
  enum class Appearance { System, Dark, Light };
  enum class Contrast { System, Normal, High };

  [[nodiscard]] static TYStyleKit& shared();
  /// Gives the program its style, palette and fonts, and keeps them current.
  static void install(QApplication& application);

  [[nodiscard]] static QColor colour(Token token) { return shared().m_theme.colour(token); }
  [[nodiscard]] static QFont font(TextStyle style);
  /// The drawing as an icon, sharp at any density; it follows the theme. At rest it has the given
  /// colour; switched on `accent`, disabled `textDisabled`. Null for an unknown name.
  [[nodiscard]] static QIcon image(const QString& name, Token atRest = Token::Text2);
  [[nodiscard]] static bool reducedMotion();

  [[nodiscard]] const Theme& theme() const { return m_theme; }
  [[nodiscard]] Appearance appearance() const { return m_appearance; }
  void setAppearance(Appearance appearance);
  [[nodiscard]] Contrast contrast() const { return m_contrast; }
  void setContrast(Contrast contrast);

 Q_SIGNALS:
  /// Colours changed; palettes are already the new ones.
  void themeChanged();

 private:
  TYStyleKit();
  void update();

  SystemAppearance* m_system;
  Appearance m_appearance = Appearance::System;
  Contrast m_contrast = Contrast::System;
  Theme m_theme;
  bool m_installed = false;
};

}  // namespace widgets
