#include "inspector/rows/FontRow.h"

#include <QLineEdit>
#include <QPushButton>

#include "inspector/FontPanel.h"
#include "inspector/FontValues.h"
#include "inspector/InspectorContext.h"
#include "model/Composition.h"
#include "model/maintenance/Replacement.h"
#include "runtime/text/FontResolver.h"
#include "widgets/EventGuards.h"

namespace inspector {

using model::FontValue;

FontRow::FontRow(InspectorContext& context, const QString& label)
    : InspectorRow(context, label), m_field(new QLineEdit) {
  widgets::leaveUndoToWindow(*m_field);
  connect(m_field, &QLineEdit::editingFinished, this, [this] {
    if (m_field->isModified()) takeText();
  });
  auto* button = new QPushButton(tr("Choose..."));
  connect(button, &QPushButton::clicked, this, &FontRow::showFontPanel);
  addControl(m_field, 1);
  addControl(button, 0);
}

void FontRow::openPanel(const std::function<void(const FontValue&)>& changeFont) {
  m_stepOfPanel = -1;
  FontPanel::of(*this).open(*this, fontOf(binding().value()), [this, changeFont](const auto& font) {
    if (!isBound()) return;
    takeBackLastChoice();
    changeFont(font);
    m_stepOfPanel = context().composition()->context()->history().index();
    context().setNeedsRefresh();
  });
}

void FontRow::showFontPanel() {
  if (isBound()) openPanel([this](const FontValue& font) { changeFont(font); });
}

void FontRow::replaceEverywhere(const QString& missing) {
  openPanel([this, missing](const FontValue& font) {
    (void)model::Replacement(*context().composition()).replaceFont(missing, font.name);
  });
}

void FontRow::takeBackLastChoice() {
  store::ObjectContext& objects = *context().composition()->context();
  context().commit();
  const bool wasLast = m_stepOfPanel > 0 && objects.history().index() == m_stepOfPanel &&
                       objects.history().count() == m_stepOfPanel;
  if (wasLast && objects.canUndo()) objects.undo();
}

void FontRow::changeFont(const FontValue& font) {
  if (!isBound()) return;
  // Of several, each keeps what was not chosen: its size with another face, its face with another
  // size.
  const FontValue shown = fontOf(binding().value());
  const bool isOtherSize = font.size != shown.size;
  const bool isOtherFace = font.name != shown.name || !isOtherSize;
  context().change(binding().stepName, [&] {
    for (qsizetype i = 0; i < binding().count; ++i) {
      FontValue own = fontOf(binding().get(i));
      if (isOtherFace) own.name = font.name;
      if (isOtherSize) own.size = font.size;
      binding().set(i, withFont(binding().get(i), own));
    }
  });
  showValues();
}

void FontRow::takeText() {
  m_field->setModified(false);
  if (!isBound()) return;
  FontValue font = fontOf(binding().value());
  const QString text = m_field->text().trimmed();
  const qsizetype comma = text.lastIndexOf(u',');
  bool hasSize = false;
  const double size = QLocale().toDouble(text.mid(comma + 1).trimmed(), &hasSize);
  const QString name = comma >= 0 && hasSize ? text.left(comma).trimmed() : text;
  if (comma >= 0 && hasSize && size > 0) font.size = size;
  if (!runtime::FontResolver::contains(name)) {
    showValues();
    setComplaint(tr("No font “%1” is installed. The font was kept.").arg(name));
    return;
  }
  font.name = name;
  changeFont(font);
}

void FontRow::showValues() {
  const FontValue font = fontOf(binding().value());
  const bool mixed = binding().isMixed();
  if (!m_field->isModified()) {
    m_field->setText(mixed ? QString() : fontText(font));
    m_field->setCursorPosition(0);
    m_field->setToolTip(m_field->text());
  }
  m_field->setPlaceholderText(mixed ? QStringLiteral("—") : QString());
  if (font.name.isEmpty() || runtime::FontResolver::contains(font.name))
    setComplaint({});
  else
    setComplaint(tr("“%1” is not installed.").arg(font.name), tr("Replace…"),
                 [this, missing = font.name] { replaceEverywhere(missing); });
}

void FontRow::nameControls(const QString& name) {
  m_field->setAccessibleName(name);
  if (auto* button = findChild<QPushButton*>())
    button->setAccessibleName(tr("Choose %1").arg(name));
}

void FontRow::dropEntries() {
  m_field->setModified(false);
  m_stepOfPanel = -1;
}

}  // namespace inspector
