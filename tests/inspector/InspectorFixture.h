#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QTest>

#include "inspector/TYInspectorController.h"
#include "inspector/rows/InspectorRow.h"
#include "model/ComponentFiles.h"

namespace inspector {

/// A graphic of two seconds with an inspector beside it, and hands that work on it.
class InspectorFixture : public testing::Test {
 protected:
  InspectorFixture() {
    panel.resize(340, 1400);
    panel.setComposition(graphic.composition);
    panel.show();
    panel.activateWindow();
    settle();
  }
  ~InspectorFixture() override { panel.setComposition(nullptr); }

  static void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
  }

  model::QuartzComponent* add(const QString& title) {
    QStringList warnings;
    auto* component = graphic->addComponenWithQuartzCompositionFile(
        files.writeComponent(title + QStringLiteral(".qtz"), {}), {}, warnings);
    component->setTitle(title);
    graphic.context->clearHistory();
    return component;
  }
  model::Attribute* give(model::QuartzComponent* component, const QString& key,
                         model::AttributeType type, model::AttributeValue value,
                         const QStringList& menu = {}) {
    auto* attribute = graphic.context->insert(
        std::make_unique<model::Attribute>(key, key, type, std::move(value)));
    attribute->setStoredValue(foundation::PropertyValue(QString(key)), QStringLiteral("label"));
    attribute->setComponent(component);
    if (!menu.isEmpty()) {
      foundation::PropertyArray titles;
      for (const QString& title : menu) titles.append(title);
      attribute->setStoredValue(titles, QStringLiteral("possibleValues"));
    }
    graphic.context->clearHistory();
    return attribute;
  }
  void select(const QList<model::QuartzComponent*>& components) {
    graphic->clearSelection();
    for (model::QuartzComponent* component : components) component->setSelected(true);
    settle();
  }

  [[nodiscard]] QList<InspectorRow*> rows() const {
    QList<InspectorRow*> shown;
    for (auto* row : panel.findChildren<InspectorRow*>())
      if (row->isVisible()) shown.append(row);
    return shown;
  }
  [[nodiscard]] InspectorRow* row(const QString& label) const {
    for (InspectorRow* row : rows())
      if (row->label() == label) return row;
    ADD_FAILURE() << "no row " << label.toStdString();
    return nullptr;
  }
  template <typename Control>
  [[nodiscard]] Control* control(const QString& label, qsizetype index = 0) const {
    const InspectorRow* found = row(label);
    return found ? found->findChildren<Control*>().value(index) : nullptr;
  }
  /// Labels of the attributes' rows, from top to bottom.
  [[nodiscard]] QStringList attributeLabels() const {
    QList<InspectorRow*> shown = rows();
    std::sort(shown.begin(), shown.end(), [](const QWidget* a, const QWidget* b) {
      return a->mapToGlobal(QPoint()).y() < b->mapToGlobal(QPoint()).y();
    });
    QStringList labels;
    for (const InspectorRow* row : std::as_const(shown))
      if (row->parentWidget()->parentWidget()->inherits(
              "inspector::TYInspectorAttributesController"))
        labels.append(row->label());
    return labels;
  }
  static void type(QWidget* field, const QString& text) {
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
  }
  [[nodiscard]] QString undoName() const { return graphic.context->history().undoText(); }
  [[nodiscard]] int steps() const { return graphic.context->history().count(); }

  model::ComponentFiles files;
  model::Graphic graphic = model::emptyGraphic();
  TYInspectorController panel;
};

}  // namespace inspector
