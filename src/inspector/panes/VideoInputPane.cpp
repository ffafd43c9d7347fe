#include "inspector/panes/VideoInputPane.h"

#include <QVBoxLayout>

#include "inspector/InspectorContext.h"
#include "inspector/ShownAttribute.h"
#include "inspector/rows/ImageRow.h"
#include "widgets/TokenLabel.h"

namespace inspector {

VideoInputPane::VideoInputPane(InspectorContext& context)
    : InspectorPane(context, tr("Video Input")) {
  auto* note = new widgets::TokenLabel(tr("Live on air; the picture stands in while editing."),
                                       widgets::TextStyle::Small, widgets::Token::Text3);
  note->setWordWrap(true);
  note->setContentsMargins(InspectorRow::margin, 0, InspectorRow::margin, 4);
  column()->addWidget(note);
  hide();
}

void VideoInputPane::takeSelection() {
  const QList<ShownAttribute> shown =
      attributesOfType(context().attributesByKey(), model::AttributeType::VideoInput);
  while (m_images.size() < shown.size()) m_images.append(add(new ImageRow(context(), {})));
  for (qsizetype i = 0; i < m_images.size(); ++i) {
    const bool used = i < shown.size();
    m_images[i]->setVisible(used);
    const QString label = used ? shown[i].rowLabel() : QString();
    m_images[i]->setLabel(label);
    m_images[i]->bind(used ? Binding::toAttributes(shown[i].attributes, tr("Change %1").arg(label))
                           : Binding());
    if (used) m_images[i]->setAttributes(shown[i].attributes);
  }
  setVisible(!shown.isEmpty());
}

}  // namespace inspector
