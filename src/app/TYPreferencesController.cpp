#include "app/TYPreferencesController.h"

#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFontDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "document/NewDocumentMenu.h"
#include "foundation/archive/KeyedArchive.h"
#include "model/Composition.h"
#include "model/DefaultFont.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYStyleKit.h"
#include "widgets/TokenLabel.h"

namespace app {

using widgets::TYSegmentedControl;
using widgets::TYStyleKit;

namespace {

constexpr int windowWidth = 576;
constexpr int margin = 24;
constexpr int labelWidth = 148;
constexpr int fieldWidth = 268;
const QString modeKey = QStringLiteral("defaultDocumentMode");
const QString backgroundKey = QStringLiteral("defaultCompositionBackgroundMode");
const QString colorKey = QStringLiteral("defaultCompositionBackgroundColorData");
const QString appearanceKey = QStringLiteral("appearance");

QWidget* row(std::initializer_list<QWidget*> widgets) {
  auto* box = new QWidget;
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(8);
  for (QWidget* widget : widgets) line->addWidget(widget);
  line->addStretch(1);
  return box;
}

}  // namespace

TYPreferencesController::TYPreferencesController(foundation::UserDefaults& defaults,
                                                 QWidget* parent)
    : QDialog(parent), m_defaults(defaults) {
  setWindowTitle(tr("Preferences"));
  setFixedWidth(windowWidth);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(12);
  QFormLayout* documents = addSection(*column, tr("New documents"));
  addNewDocuments(*documents);
  addBackground(*documents);
  addFont(*documents);
  QFormLayout* folders = addSection(*column, tr("Library folders"));
  addFolder(*folders, tr("Images"), QStringLiteral("imagesLibraryPath"));
  addFolder(*folders, tr("Movies"), QStringLiteral("movieLibraryPath"));
  addFolder(*folders, tr("Components"), QStringLiteral("componentsLibraryPath"));
  addFolder(*folders, tr("Compositions"), QStringLiteral("compositionsLibraryPath"));
  addAppearance(*addSection(*column, tr("Application")));
  column->addStretch(1);
}

QFormLayout* TYPreferencesController::addSection(QVBoxLayout& column, const QString& title) {
  column.addWidget(new widgets::TokenLabel(title, widgets::TextStyle::Title, widgets::Token::Text));
  auto* form = new QFormLayout;
  form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  form->setFormAlignment(Qt::AlignLeft);
  form->setHorizontalSpacing(16);
  form->setVerticalSpacing(8);
  form->setContentsMargins(0, 4, 0, 12);
  column.addLayout(form);
  return form;
}

void TYPreferencesController::addNewDocuments(QFormLayout& form) {
  auto* formats = new QComboBox;
  formats->setAccessibleName(tr("Format"));
  const document::NewDocumentMenu menu;
  for (const auto& item : menu.items()) {
    if (item.isSeparator())
      formats->insertSeparator(formats->count());
    else
      formats->addItem(item.title);
  }
  formats->setCurrentIndex(formats->findText(m_defaults.value(modeKey).toString()));
  connect(formats, &QComboBox::textActivated, this, [this](const QString& title) {
    m_defaults.setValue(title, modeKey);
    Q_EMIT defaultFormatChanged();
  });
  auto* label = new QLabel(tr("Format"));
  label->setMinimumWidth(labelWidth);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  form.addRow(label, row({formats}));
}

void TYPreferencesController::addBackground(QFormLayout& form) {
  auto* modes = new TYSegmentedControl;
  modes->setAccessibleName(tr("Background"));
  modes->addSegment(tr("Chessboard"));
  modes->addSegment(tr("Color"));
  modes->addSegment(tr("Image"));
  modes->setSelectedSegment(m_defaults.value(backgroundKey).toInt());
  auto* color = new widgets::TYColorWell;
  color->setHasAlpha(false);
  color->setAccessibleName(tr("Background color"));
  if (const auto stored = foundation::KeyedArchive::read(m_defaults.value(colorKey).toByteArray()))
    if (const auto* kept = stored->as<foundation::Color>()) color->setColor(kept->toQColor());
  connect(color, &widgets::TYColorWell::colorEdited, this, [this](const QColor& chosen) {
    if (const auto bytes = foundation::KeyedArchive::write(foundation::Color::fromQColor(chosen)))
      m_defaults.setValue(*bytes, colorKey);
  });
  const auto chooseImage = [this] {
    const QString path = QFileDialog::getOpenFileName(this, tr("Background Image"), {},
                                                      tr("Images (*.png *.jpg *.tif)"));
    const QImage image(path);
    if (image.isNull()) return;
    QBuffer png;
    image.save(&png, "PNG");
    foundation::ArchiveImage archived;
    archived.file = png.data();
    if (const auto bytes = foundation::KeyedArchive::write(foundation::ArchiveValue(archived)))
      m_defaults.setValue(*bytes, QStringLiteral("defaultCompositionBackgroundImageData"));
  };
  connect(modes, &TYSegmentedControl::activated, this, [this, chooseImage](int mode) {
    m_defaults.setValue(mode, backgroundKey);
    if (mode == static_cast<int>(model::BackgroundMode::Image)) chooseImage();
  });
  form.addRow(tr("Background"), row({modes, color}));
}

void TYPreferencesController::addFont(QFormLayout& form) {
  auto* shown = new QLabel;
  shown->setMinimumWidth(fieldWidth - 84);
  auto* choose = new QPushButton(tr("Choose..."));
  const auto show = [this, shown] {
    const model::FontValue font = model::DefaultFont::defaultFontForElements(m_defaults);
    shown->setText(tr("%1, %2 pt").arg(font.name).arg(font.size));
  };
  show();
  connect(choose, &QPushButton::clicked, this, [this, show] {
    const model::FontValue present = model::DefaultFont::defaultFontForElements(m_defaults);
    bool chosen = false;
    const QFont font = QFontDialog::getFont(
        &chosen, QFont(present.name, static_cast<int>(present.size)), this, tr("Default Font"));
    if (!chosen) return;
    model::DefaultFont::setAsDefaultFontForElements({font.family(), font.pointSizeF()}, m_defaults);
    show();
  });
  form.addRow(tr("Font"), row({shown, choose}));
}

void TYPreferencesController::addFolder(QFormLayout& form, const QString& label,
                                        const QString& key) {
  auto* shown = new QLineEdit;
  shown->setReadOnly(true);
  shown->setFixedWidth(fieldWidth);
  shown->setAccessibleName(label);
  const auto show = [this, shown, key] {
    shown->setText(QDir::toNativeSeparators(m_defaults.value(key).toString()));
  };
  show();
  auto* choose = new QPushButton(tr("Choose..."));
  choose->setAccessibleName(tr("Choose the folder of %1").arg(label));
  connect(choose, &QPushButton::clicked, this, [this, key, show] {
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Library Folder"),
                                                             m_defaults.value(key).toString());
    if (chosen.isEmpty()) return;
    m_defaults.setValue(chosen, key);
    show();
  });
  auto* name = new QLabel(label);
  name->setMinimumWidth(labelWidth);
  name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  form.addRow(name, row({shown, choose}));
}

void TYPreferencesController::addAppearance(QFormLayout& form) {
  auto* appearance = new TYSegmentedControl;
  appearance->setAccessibleName(tr("Appearance"));
  for (const QString& name : {tr("System"), tr("Dark"), tr("Light")}) appearance->addSegment(name);
  appearance->setSelectedSegment(m_defaults.value(appearanceKey).toInt());
  connect(appearance, &TYSegmentedControl::activated, this, [this](int index) {
    m_defaults.setValue(index, appearanceKey);
    TYStyleKit::shared().setAppearance(static_cast<TYStyleKit::Appearance>(index));
  });
  auto* name = new QLabel(tr("Appearance"));
  name->setMinimumWidth(labelWidth);
  name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  form.addRow(name, row({appearance}));
}

}  // namespace app
