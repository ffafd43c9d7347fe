#include "widgets/Theme.h"

namespace widgets {
namespace {

struct Entry {
  const char* name;
  quint32 dark;
  quint32 light;
};

#define TESSARY_TOKEN_ENTRY(name, dark, light, use) Entry{#name, dark, light},
constexpr Entry kEntries[] = {TESSARY_THEME_TOKENS(TESSARY_TOKEN_ENTRY)};
#undef TESSARY_TOKEN_ENTRY
static_assert(std::size(kEntries) == kTokenCount);

QColor fromHex(quint32 rgba) {
  return {int(rgba >> 24), int(rgba >> 16 & 0xFF), int(rgba >> 8 & 0xFF), int(rgba & 0xFF)};
}

// High contrast: outlines and secondary texts step up, soft fills drop out.
Token strengthened(Token token) {
  switch (token) {
    case Token::Separator:
      return Token::Border;
    case Token::Border:
    case Token::Text2:
    case Token::Text3:
    case Token::BarHidden:
      return Token::Text;
    case Token::TimelineRowAlt:
      return Token::TimelineRow;
    default:
      return token;
  }
}

bool isSoftFill(Token token) {
  return token == Token::SelectionRow || token == Token::DropTarget ||
         token == Token::WarningSoft || token == Token::BrokenSoft;
}

}  // namespace

QColor Theme::colour(Token token) const {
  if (highContrast) {
    if (isSoftFill(token)) return Qt::transparent;
    if (token == Token::CanvasSelection) return Qt::white;
    if (token == Token::CanvasSelectionEdge) return Qt::black;
    token = strengthened(token);
  }
  const Entry& entry = kEntries[int(token)];
  return fromHex(dark ? entry.dark : entry.light);
}

QString Theme::name(Token token) {
  QString name = QString::fromLatin1(kEntries[int(token)].name);
  name[0] = name.at(0).toLower();
  return name;
}

QPalette Theme::palette() const {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, Token token, Token disabled) {
    palette.setColor(QPalette::Active, role, colour(token));
    palette.setColor(QPalette::Inactive, role, colour(token));
    palette.setColor(QPalette::Disabled, role, colour(disabled));
  };
  set(QPalette::Window, Token::Panel, Token::Panel);
  set(QPalette::WindowText, Token::Text, Token::TextDisabled);
  set(QPalette::Base, Token::Field, Token::Field);
  set(QPalette::AlternateBase, Token::TimelineRowAlt, Token::TimelineRowAlt);
  set(QPalette::Text, Token::Text, Token::TextDisabled);
  set(QPalette::PlaceholderText, Token::Text3, Token::TextDisabled);
  set(QPalette::Button, Token::Control, Token::Control);
  set(QPalette::ButtonText, Token::Text, Token::TextDisabled);
  set(QPalette::BrightText, Token::OnAccent, Token::TextDisabled);
  set(QPalette::ToolTipBase, Token::Raised, Token::Raised);
  set(QPalette::ToolTipText, Token::Text, Token::TextDisabled);
  set(QPalette::Highlight, Token::AccentFill, Token::ControlOn);
  set(QPalette::HighlightedText, Token::OnAccent, Token::TextDisabled);
  set(QPalette::Link, Token::Accent, Token::TextDisabled);
  set(QPalette::LinkVisited, Token::Accent, Token::TextDisabled);
  set(QPalette::Light, Token::ControlHover, Token::ControlHover);
  set(QPalette::Midlight, Token::Raised, Token::Raised);
  set(QPalette::Mid, Token::Separator, Token::Separator);
  set(QPalette::Dark, Token::Border, Token::Separator);
  set(QPalette::Shadow, Token::Window, Token::Window);
  return palette;
}

}  // namespace widgets
