#include "app/preferences/ApplicationPage.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "app/CanvasDefaults.h"
#include "app/ProgramServices.h"
#include "document/HiddenMessages.h"
#include "foundation/UserDefaults.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TokenLabel.h"

namespace app {

using widgets::TYSegmentedControl;
using widgets::TYStyleKit;

namespace {

constexpr int segmentWidth = 88;
const QString appearanceKey = QStringLiteral("appearance");
const QString contrastKey = QStringLiteral("contrast");

}  // namespace

ApplicationPage::ApplicationPage(ProgramServices& services)
    : PreferenceForm(tr("Application")), m_services(services) {
  addCanvas();
  addAppearance();
  addPreview();
  addMessages();
  refresh();
}

void ApplicationPage::addCanvas() {
  m_safeAreas = new QCheckBox(tr("Show safe areas"));
  m_guides = new QCheckBox(tr("Show rulers and guides"));
  for (QCheckBox* box : {m_safeAreas, m_guides}) box->setAccessibleName(box->text());
  connect(m_safeAreas, &QCheckBox::clicked, this,
          [this](bool shows) { CanvasDefaults(m_services).setShowsSafeZones(shows); });
  connect(m_guides, &QCheckBox::clicked, this,
          [this](bool shows) { CanvasDefaults(m_services).setShowsRulers(shows); });
  addRow(tr("Canvas"), {m_safeAreas, m_guides});
}

void ApplicationPage::addAppearance() {
  auto* appearance = new TYSegmentedControl;
  for (const QString& name : {tr("System"), tr("Dark"), tr("Light")}) appearance->addSegment(name);
  appearance->setSegmentWidth(segmentWidth);
  appearance->setSelectedSegment(m_services.defaults().value(appearanceKey).toInt());
  connect(appearance, &TYSegmentedControl::activated, this, [this](int index) {
    m_services.defaults().setValue(index, appearanceKey);
    TYStyleKit::shared().setAppearance(static_cast<TYStyleKit::Appearance>(index));
  });
  addRow(tr("Appearance"), {appearance});
  auto* contrast = new TYSegmentedControl;
  for (const QString& name : {tr("System"), tr("Normal"), tr("High")}) contrast->addSegment(name);
  contrast->setSegmentWidth(segmentWidth);
  contrast->setSelectedSegment(m_services.defaults().value(contrastKey).toInt());
  connect(contrast, &TYSegmentedControl::activated, this, [this](int index) {
    m_services.defaults().setValue(index, contrastKey);
    TYStyleKit::shared().setContrast(static_cast<TYStyleKit::Contrast>(index));
  });
  addRow(tr("Contrast"), {contrast});
}

void ApplicationPage::addPreview() {
  const auto setting = [this](const QString& text, const QString& key) {
    auto* box = new QCheckBox(text);
    box->setAccessibleName(text);
    box->setChecked(m_services.defaults().value(key).toBool());
    connect(box, &QCheckBox::clicked, this,
            [this, key](bool isOn) { m_services.defaults().setValue(isOn, key); });
    return box;
  };
  addRow(tr("Preview"),
         {setting(tr("Show the frame rate in previews"), QStringLiteral("previewFPS"))});
  addRow(tr("Interlaced formats"),
         {setting(tr("Play each field at its own time"), QStringLiteral("previewFields"))});
}

void ApplicationPage::addMessages() {
  m_showAgain = new QPushButton(tr("Show All Again"));
  m_hidden = new widgets::TokenLabel({}, widgets::TextStyle::Body, widgets::Token::Text3);
  connect(m_showAgain, &QPushButton::clicked, this, [this] {
    document::HiddenMessages(m_services.defaults()).showAllAgain();
    refresh();
  });
  addRow(tr("Hidden messages"), {m_showAgain, m_hidden});
}

void ApplicationPage::refresh() {
  const foundation::UserDefaults& defaults = m_services.defaults();
  m_safeAreas->setChecked(defaults.value(QStringLiteral("showsSafeZones")).toBool());
  m_guides->setChecked(defaults.value(QStringLiteral("showsRulers")).toBool());
  const int hidden = document::HiddenMessages(m_services.defaults()).count();
  m_showAgain->setEnabled(hidden > 0);
  m_hidden->setText(hidden == 0   ? tr("No message is hidden")
                    : hidden == 1 ? tr("1 message is hidden")
                                  : tr("%1 messages are hidden").arg(hidden));
}

}  // namespace app
