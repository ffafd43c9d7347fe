// How long the inspector takes, from the event to the painted pane, among 1,000 components of 30
// attributes each: another component selected, all selected, one number of 500 edited, a character
// typed into a text that the canvas shows. Beside it a form of stock widgets, made anew for each
// selection as forms usually are.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <algorithm>
#include <cstdio>

#include "canvas/CompositionView.h"
#include "inspector/TYInspectorController.h"
#include "inspector/rows/InspectorRow.h"
#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "store/ObjectContext.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYStyleKit.h"

namespace {

using model::Attribute;
using model::AttributeType;
using model::AttributeValue;

constexpr int components = 1000;
constexpr int attributesOfEach = 30;
constexpr int rounds = 60;
constexpr int editedTogether = 500;

struct Times {
  double median;
  double worst;
};

/// Milliseconds of an action and everything that follows from it, painting included.
Times measure(int count, const std::function<void(int)>& action) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    QElapsedTimer timer;
    timer.start();
    action(i);
    for (int k = 0; k < 4; ++k) QApplication::processEvents();
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::sort(times.begin(), times.end());
  return {times[times.size() / 2], times.back()};
}

void tell(const char* what, const Times& times) {
  std::printf("%-44s %8.1f %8.1f\n", what, times.median, times.worst);
}

void addAttribute(model::QuartzComponent& component, int number, int variant) {
  static const QList<std::pair<AttributeType, AttributeValue>> kinds{
      {AttributeType::String, QStringLiteral("Words")},
      {AttributeType::Number, 1.5},
      {AttributeType::Boolean, true},
      {AttributeType::IndexWithMenu, qint64{1}},
      {AttributeType::Color, foundation::Color{1, 0.5, 0, 1}},
      {AttributeType::Index, qint64{3}}};
  const auto& [type, value] = kinds[(number * (variant + 1) + variant) % kinds.size()];
  const QString key = QStringLiteral("Value_%1").arg(number, 2, 10, QLatin1Char('0'));
  auto* attribute = component.context()->insert(std::make_unique<Attribute>(key, key, type, value));
  if (type == AttributeType::IndexWithMenu)
    attribute->setStoredValue(
        foundation::PropertyArray{QStringLiteral("One"), QStringLiteral("Two")},
        QStringLiteral("possibleValues"));
  attribute->setComponent(&component);
}

void fill(model::Composition& graphic) {
  const auto path = model::StandardComponents::located().pathOf(QStringLiteral("Text"));
  if (!path) qFatal("the standard components are missing");
  for (int i = 0; i < components; ++i) {
    QStringList warnings;
    auto* made = graphic.addComponenWithQuartzCompositionFile(*path, {}, warnings);
    made->setTitle(QStringLiteral("Component %1").arg(i));
    made->setVisibleInCompositionEditor(i == 0);
    const auto own = static_cast<int>(made->nonStandardAttributes().size()) - 3;
    for (int k = own; k < attributesOfEach; ++k) addAttribute(*made, k, i % 5);
  }
  graphic.clearSelection();
  graphic.context()->clearHistory();
}

/// The attributes of one component in a form of stock widgets.
QWidget* stockForm(const model::QuartzComponent& component) {
  auto* page = new QWidget;
  auto* form = new QFormLayout(page);
  for (const Attribute* attribute : component.attributesSortedByTitle()) {
    const AttributeValue value = attribute->currentValue();
    QWidget* editor = nullptr;
    if (attribute->type() == AttributeType::Number || attribute->type() == AttributeType::Index) {
      auto* box = new QDoubleSpinBox;
      box->setRange(-1e6, 1e6);
      box->setValue(value.toNumber());
      editor = box;
    } else if (attribute->type() == AttributeType::Boolean) {
      editor = new QCheckBox;
    } else if (attribute->type() == AttributeType::IndexWithMenu) {
      auto* box = new QComboBox;
      box->addItems(attribute->possibleValues());
      editor = box;
    } else if (attribute->type() == AttributeType::Color) {
      editor = new QPushButton(value.description());
    } else {
      editor = new QLineEdit(value.description());
    }
    form->addRow(attribute->label(), editor);
  }
  return page;
}

inspector::InspectorRow* rowOf(const QWidget& panel, const QString& label) {
  for (auto* row : panel.findChildren<inspector::InspectorRow*>())
    if (row->isVisible() && row->label() == label) return row;
  qFatal("no row %s", qPrintable(label));
}

void press(QWidget& widget, int key, const QString& text = {}) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(&widget, &event);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  widgets::TYStyleKit::install(application);
  store::ObjectContext context;
  auto* graphic = context.insert(std::make_unique<model::Composition>(
      model::VideoResolution::videoResolutionForBroadcastMode(QStringLiteral("1080i25 RGBA"))));
  fill(*graphic);
  canvas::CompositionView view(model::StandardComponents::located());
  view.resize(1200, 700);
  view.setComposition(graphic);
  view.show();
  inspector::TYInspectorController panel;
  panel.resize(340, 900);
  panel.setComposition(graphic);
  panel.show();
  const QList<model::QuartzComponent*> all = graphic->componentArray();
  const auto select = [&](qsizetype first, qsizetype count) {
    graphic->clearSelection();
    for (model::QuartzComponent* component : all.sliced(first, count)) component->setSelected(true);
  };

  std::printf("%-44s %8s %8s\n", "milliseconds", "median", "worst");
  tell("the first selection", measure(1, [&](int) { select(1, 1); }));
  tell("another component of the same kind", measure(rounds, [&](int i) { select(6 + 5 * i, 1); }));
  tell("another component of another kind", measure(rounds, [&](int i) { select(7 + 3 * i, 1); }));
  tell("all components", measure(argc > 1 ? 200 : 6, [&](int i) { select(0, i % 2 == 0 ? components : 1); }));
  QScrollArea stock;
  stock.setWidgetResizable(true);
  stock.resize(340, 900);
  stock.show();
  tell("a stock form, another component",
       measure(rounds, [&](int i) { stock.setWidget(stockForm(*all[7 + 3 * i])); }));
  stock.hide();

  select(1, editedTogether);
  for (int k = 0; k < 4; ++k) QApplication::processEvents();
  auto* number = rowOf(panel, QStringLiteral("Line Spacing"))->findChild<widgets::TYNumberField*>();
  number->setFocus();
  tell("500 components, one number", measure(20, [&](int) { press(*number, Qt::Key_Up); }));
  number->beginScrub();
  tell("500 components, a step of scrubbing", measure(20, [&](int i) { number->scrub(i); }));
  number->cancelScrub();

  select(0, 1);
  for (int k = 0; k < 4; ++k) QApplication::processEvents();
  auto* text = rowOf(panel, QStringLiteral("Text"))->findChild<QLineEdit*>();
  text->setFocus();
  tell("a character, seen on the canvas",
       measure(40, [&](int) {
         press(*text, Qt::Key_A, QStringLiteral("a"));
         view.repaint();
       }));
  panel.setComposition(nullptr);
  view.cleanUp();
  return 0;
}
