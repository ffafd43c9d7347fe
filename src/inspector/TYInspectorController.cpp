#include "inspector/TYInspectorController.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QStackedWidget>

#include "inspector/InspectorContext.h"
#include "inspector/InspectorPage.h"
#include "inspector/TYInspectorAttributesController.h"
#include "inspector/panes/DocumentPanes.h"
#include "inspector/panes/PermissionPanes.h"
#include "inspector/panes/PropertyPanes.h"
#include "inspector/panes/PublishedKeysPane.h"
#include "inspector/panes/RichFontPane.h"
#include "inspector/panes/TransformPane.h"
#include "inspector/panes/VideoInputPane.h"
#include "widgets/TYEmptyPanel.h"
#include "widgets/TYSegmentedControl.h"

namespace inspector {

namespace {

constexpr QSize usualSize(340, 600);
constexpr int leastWidth = 304;
constexpr int margin = 12;
constexpr int gap = 8;

}  // namespace

TYInspectorController::TYInspectorController(QWidget* parent)
    : QWidget(parent), m_context(new InspectorContext(this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* head = new QHBoxLayout;
  head->setContentsMargins(margin, gap, margin, gap);
  m_tabs = new widgets::TYSegmentedControl;
  for (const QString& title : {tr("Properties"), tr("Permissions"), tr("Document")})
    m_tabs->addSegment(title);
  m_tabs->setSelectedSegment(0);
  m_tabs->setAccessibleName(tr("Inspector"));
  head->addWidget(m_tabs);
  column->addLayout(head);
  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  line->setFixedHeight(1);
  column->addWidget(line);
  m_places = new QStackedWidget;
  m_properties = new QStackedWidget;
  m_properties->addWidget(makeProperties());
  m_properties->addWidget(
      new widgets::TYEmptyPanel(QStringLiteral("Inspector"), tr("Nothing selected"),
                                tr("Select a component to edit its text, color and timing.")));
  m_permissions = new QStackedWidget;
  m_permissions->addWidget(makePermissions());
  m_permissions->addWidget(
      new widgets::TYEmptyPanel(QStringLiteral("Inspector"), tr("Nothing selected"),
                                tr("Select a component to say what of it may be changed on air.")));
  m_places->addWidget(m_properties);
  m_places->addWidget(m_permissions);
  m_places->addWidget(makeDocument());
  column->addWidget(m_places, 1);
  connect(m_tabs, &widgets::TYSegmentedControl::activated, m_places,
          &QStackedWidget::setCurrentIndex);
  connect(m_context, &InspectorContext::selectionChanged, this,
          &TYInspectorController::updateEmpty);
  updateEmpty();
}

TYInspectorController::~TYInspectorController() {
  // Rows write what is being typed while the context is still there.
  m_context->setComposition(nullptr);
}

InspectorPage* TYInspectorController::makeProperties() {
  auto* page = new InspectorPage(*m_context);
  page->addPane(new TitlePane(*m_context));
  page->addPane(new TimingPane(*m_context));
  page->addPane(new TransformPane(*m_context));
  page->addPane(new AppearancePane(*m_context));
  page->addPane(new TYInspectorAttributesController(*m_context));
  page->addPane(new RichFontPane(*m_context));
  page->addPane(new VideoInputPane(*m_context));
  return page;
}

InspectorPage* TYInspectorController::makePermissions() {
  auto* page = new InspectorPage(*m_context);
  page->addPane(new PermissionSummaryPane(*m_context));
  page->addPane(new PermissionListPane(*m_context));
  return page;
}

InspectorPage* TYInspectorController::makeDocument() {
  auto* page = new InspectorPage(*m_context);
  page->addPane(new FormatPane(*m_context));
  page->addPane(new DocumentTimingPane(*m_context));
  page->addPane(new BackgroundPane(*m_context));
  page->addPane(new OverlaysPane(*m_context));
  page->addPane(new StopFramesPane(*m_context));
  page->addPane(new PublishedKeysPane(*m_context));
  return page;
}

void TYInspectorController::updateEmpty() {
  const int place = m_context->components().isEmpty() ? 1 : 0;
  m_properties->setCurrentIndex(place);
  m_permissions->setCurrentIndex(place);
}

void TYInspectorController::setComposition(model::Composition* composition) {
  m_context->setComposition(composition);
}

TYInspectorController::Place TYInspectorController::place() const {
  return static_cast<Place>(m_places->currentIndex());
}

void TYInspectorController::showPlace(Place place) {
  m_tabs->setSelectedSegment(static_cast<int>(place));
  m_places->setCurrentIndex(static_cast<int>(place));
}

void TYInspectorController::updateNow() {
  m_context->updateNow();
}

QSize TYInspectorController::sizeHint() const {
  return usualSize;
}

QSize TYInspectorController::minimumSizeHint() const {
  return {leastWidth, 200};
}

}  // namespace inspector
