#pragma once

#include "inspector/ShownAttribute.h"
#include "inspector/panes/InspectorPane.h"

namespace inspector {

class CheckRow;
class ChoiceRow;
class ColorRow;
class FontRow;
class NumberRow;

/// The look of texts whose font, colour, shadow and lines are one value; a group of rows for each
/// key. Hidden where there is none.
class RichFontPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit RichFontPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;
  void letGo() override;

 private:
  struct Group {
    FontRow* font;
    ColorRow* color;
    CheckRow* shadow;
    NumberRow* offset;
    NumberRow* blur;
    ChoiceRow* underline;
    ColorRow* underlineColor;
    ChoiceRow* strikethrough;
    ColorRow* strikethroughColor;
    [[nodiscard]] QList<InspectorRow*> rows() const;
  };
  void addGroup();
  void bindGroup(const Group& group, const ShownAttribute& shown, const QString& prefix);
  void showParts(const Group& group, const ShownAttribute& shown);

  std::vector<Group> m_groups;
  QList<ShownAttribute> m_shown;
};

}  // namespace inspector
