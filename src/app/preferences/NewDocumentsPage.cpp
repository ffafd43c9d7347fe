#include "app/preferences/NewDocumentsPage.h"

#include <QBuffer>
#include <QComboBox>
#include <QFontDialog>
#include <QLabel>
#include <QPushButton>

#include "document/NewDocumentMenu.h"
#include "foundation/archive/KeyedArchive.h"
#include "model/Composition.h"
#include "model/DefaultFont.h"
#include "runtime/text/FontResolver.h"
#include "widgets/FileChooser.h"
#include "widgets/TYAlert.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYImageWell.h"
#include "widgets/TYPathControl.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TokenLabel.h"

namespace app {

using widgets::TYSegmentedControl;

namespace {

constexpr int formatWidth = 180;
const QString modeKey = QStringLiteral("defaultDocumentMode");
const QString backgroundKey = QStringLiteral("defaultCompositionBackgroundMode");
const QString colorKey = QStringLiteral("defaultCompositionBackgroundColorData");
const QString imageKey = QStringLiteral("defaultCompositionBackgroundImageData");
const QString movieKey = QStringLiteral("defaultCompositionMovieFilename");

}  // namespace

NewDocumentsPage::NewDocumentsPage(foundation::UserDefaults& defaults)
    : PreferenceForm(tr("New Documents")), m_defaults(defaults) {
  addFormat();
  addBackground();
  addMovie();
  addFont();
  showBackground();
  showFont();
}

void NewDocumentsPage::addFormat() {
  auto* formats = new QComboBox;
  formats->setMinimumWidth(formatWidth);
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
  addRow(tr("Format"), {formats});
}

void NewDocumentsPage::addBackground() {
  auto* modes = new TYSegmentedControl;
  for (const QString& name : {tr("Chessboard"), tr("Color"), tr("Image")}) modes->addSegment(name);
  modes->setSegmentWidth(88);
  modes->setSelectedSegment(m_defaults.value(backgroundKey).toInt());
  connect(modes, &TYSegmentedControl::activated, this, [this](int mode) {
    m_defaults.setValue(mode, backgroundKey);
    showBackground();
  });
  m_color = new widgets::TYColorWell;
  m_color->setHasAlpha(false);
  m_color->setAccessibleName(tr("Background color"));
  if (const auto stored = foundation::KeyedArchive::read(m_defaults.value(colorKey).toByteArray()))
    if (const auto* kept = stored->as<foundation::Color>()) m_color->setColor(kept->toQColor());
  connect(m_color, &widgets::TYColorWell::colorEdited, this, [this](const QColor& chosen) {
    if (const auto bytes = foundation::KeyedArchive::write(foundation::Color::fromQColor(chosen)))
      m_defaults.setValue(*bytes, colorKey);
  });
  addRow(tr("Background"), {modes, m_color});
  m_image = new widgets::TYImageWell;
  m_image->setAccessibleName(tr("Background image"));
  m_image->setToolTip(tr("Click, or drop a picture"));
  if (const auto stored = foundation::KeyedArchive::read(m_defaults.value(imageKey).toByteArray()))
    if (const auto* kept = stored->as<foundation::ArchiveImage>())
      m_image->setImage(QImage::fromData(kept->file));
  connect(m_image, &QAbstractButton::clicked, this, &NewDocumentsPage::chooseImage);
  connect(m_image, &widgets::TYImageWell::imageDropped, this, &NewDocumentsPage::takeImage);
  connect(m_image, &widgets::TYImageWell::fileDropped, this,
          [this](const QString& path) { takeImage(QImage(path)); });
  connect(m_image, &widgets::TYImageWell::cleared, this, [this] { m_defaults.remove(imageKey); });
  addRow(tr("Image"), {m_image});
}

void NewDocumentsPage::addMovie() {
  m_movie = new widgets::TYPathControl;
  m_movie->setPlaceholder(tr("None"));
  auto* choose = new QPushButton(tr("Choose..."));
  choose->setAccessibleName(tr("Choose the background movie"));
  m_noMovie = new QPushButton(tr("None"));
  m_noMovie->setAccessibleName(tr("No background movie"));
  connect(choose, &QPushButton::clicked, this, &NewDocumentsPage::chooseMovie);
  connect(m_noMovie, &QPushButton::clicked, this, [this] {
    m_defaults.remove(movieKey);
    showBackground();
  });
  addRow(tr("Movie"), {m_movie, choose, m_noMovie});
}

void NewDocumentsPage::addFont() {
  m_font = new widgets::TokenLabel({}, widgets::TextStyle::Body, widgets::Token::Text);
  m_font->setMinimumWidth(formatWidth);
  auto* choose = new QPushButton(tr("Choose..."));
  choose->setAccessibleName(tr("Choose the font of new texts"));
  connect(choose, &QPushButton::clicked, this, &NewDocumentsPage::chooseFont);
  addRow(tr("Font"), {m_font, choose});
}

void NewDocumentsPage::showBackground() {
  using model::BackgroundMode;
  const auto mode = static_cast<BackgroundMode>(m_defaults.value(backgroundKey).toInt());
  m_color->setEnabled(mode == BackgroundMode::SolidColor);
  m_image->setEnabled(mode == BackgroundMode::Image);
  const QString movie = m_defaults.value(movieKey).toString();
  m_movie->setPath(movie);
  m_noMovie->setEnabled(!movie.isEmpty());
}

void NewDocumentsPage::takeImage(const QImage& image) {
  QBuffer png;
  if (image.isNull() || !image.save(&png, "PNG")) {
    widgets::TYAlert::begin(this, {.title = tr("The picture cannot be read"),
                                   .text = tr("The background stays as it is."),
                                   .kind = widgets::TYAlert::Kind::Warning});
    return;
  }
  foundation::ArchiveImage archived;
  archived.file = png.data();
  const auto bytes = foundation::KeyedArchive::write(foundation::ArchiveValue(archived));
  if (!bytes) return;
  m_defaults.setValue(*bytes, imageKey);
  m_image->setImage(image);
}

void NewDocumentsPage::chooseImage() {
  widgets::FileChooser::open(*this, tr("Background Image"), widgets::FileChooser::Images,
                             m_defaults.value(QStringLiteral("imagesLibraryPath")).toString(),
                             [this](const QString& path) { takeImage(QImage(path)); });
}

void NewDocumentsPage::chooseMovie() {
  const QString folder = m_defaults.value(QStringLiteral("movieLibraryPath")).toString();
  const QString present = m_defaults.value(movieKey).toString();
  widgets::FileChooser::open(*this, tr("Background Movie"), widgets::FileChooser::Movies,
                             present.isEmpty() ? folder : present, [this](const QString& path) {
                               m_defaults.setValue(path, movieKey);
                               showBackground();
                             });
}

void NewDocumentsPage::chooseFont() {
  const model::FontValue present = model::DefaultFont::defaultFontForElements(m_defaults);
  QFont font = runtime::FontResolver::font(present.name, 12);
  font.setPointSizeF(present.size);
  auto* dialog = new QFontDialog(font, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(tr("Default Font"));
  connect(dialog, &QFontDialog::fontSelected, this, [this](const QFont& chosen) {
    model::DefaultFont::setAsDefaultFontForElements(
        {runtime::FontResolver::nameOf(chosen), chosen.pointSizeF()}, m_defaults);
    showFont();
  });
  dialog->open();
}

void NewDocumentsPage::showFont() {
  const model::FontValue font = model::DefaultFont::defaultFontForElements(m_defaults);
  m_font->setText(tr("%1, %2 pt").arg(font.name).arg(font.size));
}

}  // namespace app
