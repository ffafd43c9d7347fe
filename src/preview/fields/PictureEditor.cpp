#include "preview/fields/PictureEditor.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "widgets/FileChooser.h"
#include "widgets/TYImageWell.h"

namespace preview {

using widgets::FileChooser;
using widgets::TYImageWell;

namespace {

/// A well is small; large pictures are made small once, not at every paint.
constexpr QSize mostShown(416, 240);

QImage forWell(const QImage& image) {
  if (image.width() <= mostShown.width() && image.height() <= mostShown.height()) return image;
  return image.scaled(mostShown, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

PictureEditor::PictureEditor(QWidget* parent)
    : FieldEditor(parent), m_well(new TYImageWell), m_choose(new QPushButton(tr("Choose..."))) {
  m_well->setFocusPolicy(Qt::TabFocus);
  watch(*m_well);
  m_choose->setFocusPolicy(Qt::TabFocus);
  line().addWidget(m_well);
  line().addWidget(m_choose, 0, Qt::AlignTop);
  line().addStretch(1);
  connect(m_well, &TYImageWell::fileDropped, this, &FieldEditor::enteredText);
  connect(m_well, &TYImageWell::imageDropped, this, [this] {
    Q_EMIT refused(tr("Drop a picture file: a picture without one cannot be kept."));
  });
  connect(m_well, &TYImageWell::cleared, this, [this] { Q_EMIT enteredText({}); });
  connect(m_well, &QAbstractButton::clicked, this, &PictureEditor::choose);
  connect(m_choose, &QAbstractButton::clicked, this, &PictureEditor::choose);
}

void PictureEditor::choose() {
  FileChooser::open(*this, tr("Choose an Image"), FileChooser::Images, m_path,
                    [this](const QString& path) { Q_EMIT enteredText(path); });
}

void PictureEditor::showValue(const Field& field) {
  m_path = field.value ? field.value->json.toString() : QString();
  m_choose->setAccessibleName(tr("Choose %1").arg(m_well->accessibleName()));
  const runtime::Image image = field.current().toImage();
  if (m_shown && *m_shown == image) return;
  m_shown = image;
  m_well->setImage(forWell(image.bitmap()));
  m_well->setToolTip(!m_path.isEmpty()
                         ? m_path
                         : tr("Click to choose a picture, or drop one here; Delete for none"));
}

QWidget& PictureEditor::control() const {
  return *m_well;
}

}  // namespace preview
