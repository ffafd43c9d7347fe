#include "app/TYPreferencesController.h"

#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "app/ProgramServices.h"
#include "app/preferences/ApplicationPage.h"
#include "app/preferences/LibraryPage.h"
#include "app/preferences/NewDocumentsPage.h"
#include "widgets/TYSegmentedControl.h"

namespace app {

namespace {

constexpr int windowWidth = 640;
constexpr int tabWidth = 132;
constexpr int margin = 16;

}  // namespace

TYPreferencesController::TYPreferencesController(ProgramServices& services, QWidget* parent)
    : QDialog(parent), m_pages(new QStackedWidget) {
  setWindowTitle(tr("Preferences"));
  setFixedWidth(windowWidth);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, margin, 0, 0);
  column->setSpacing(0);
  auto* tabs = new widgets::TYSegmentedControl;
  tabs->setAccessibleName(tr("Pages"));
  auto* documents = new NewDocumentsPage(services.defaults());
  connect(documents, &NewDocumentsPage::defaultFormatChanged, this,
          &TYPreferencesController::defaultFormatChanged);
  m_application = new ApplicationPage(services);
  for (QWidget* page : {static_cast<QWidget*>(documents),
                        static_cast<QWidget*>(new LibraryPage(services.defaults())),
                        static_cast<QWidget*>(m_application)}) {
    tabs->addSegment(page->accessibleName());
    m_pages->addWidget(page);
  }
  tabs->setSegmentWidth(tabWidth);
  tabs->setSelectedSegment(0);
  connect(tabs, &widgets::TYSegmentedControl::activated, m_pages, &QStackedWidget::setCurrentIndex);
  column->addWidget(tabs, 0, Qt::AlignHCenter);
  column->addWidget(m_pages);
  // Return confirms nothing here: every choice counts at once.
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  auto* close = new QShortcut(QKeySequence::Close, this);
  connect(close, &QShortcut::activated, this, &QWidget::close);
}

void TYPreferencesController::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  m_application->refresh();
}

}  // namespace app
