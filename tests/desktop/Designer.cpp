#include "desktop/Designer.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include "inspector/TYInspectorController.h"
#include "inspector/ValueTransformers.h"
#include "inspector/panes/PermissionRow.h"
#include "inspector/rows/InspectorRow.h"
#include "model/Composition.h"
#include "timeline/TimelinePanel.h"
#include "timeline/TransportBar.h"
#include "widgets/TYColorWell.h"
#include "widgets/TYImageWell.h"
#include "widgets/TYKeyDiamond.h"
#include "widgets/TYSegmentedControl.h"
#include "widgets/TYTimecodeField.h"

namespace desktop {

using inspector::InspectorRow;
using State = widgets::TYKeyDiamond::State;

namespace {

constexpr QPointF middle(960, 640);

QString written(double value) {
  return QString::number(value, 'g', 8);
}

}  // namespace

model::QuartzComponent& Designer::selected() const {
  return *m_desk.graphic().selectedComponents().first();
}

model::QuartzComponent& Designer::add(const QString& libraryFile, const QString& title) {
  const qsizetype before = m_desk.graphic().componentArray().size();
  m_desk.drag(m_desk.libraryFile(libraryFile), m_desk.pixel(middle));
  EditorDesk::waitFor(
      [&] {
        return m_desk.graphic().componentArray().size() == before + 1 &&
               m_desk.graphic().selectedComponents().size() == 1;
      },
      "a component out of the library");
  setText(QStringLiteral("Title"), title);
  return selected();
}

model::QuartzComponent& Designer::duplicate(const QString& title) {
  const qsizetype before = m_desk.graphic().componentArray().size();
  m_desk.key("ctrl+d");
  EditorDesk::waitFor([&] { return m_desk.graphic().componentArray().size() == before + 1; },
                      "a copy");
  setText(QStringLiteral("Title"), title);
  EXPECT_EQ(selected().title(), title);
  return selected();
}

InspectorRow* Designer::row(const QString& label) {
  InspectorRow* found = nullptr;
  const auto look = [&] {
    for (InspectorRow* row : m_desk.window().findChildren<InspectorRow*>())
      if (row->isVisible() && row->isEnabled() && row->label() == label) found = row;
    return found != nullptr;
  };
  EditorDesk::waitFor(look, qPrintable(QStringLiteral("the row ") + label));
  return found;
}

QLineEdit* Designer::field(const QString& label, int index) {
  InspectorRow* found = row(label);
  if (!found) return nullptr;
  QList<QLineEdit*> fields = found->findChildren<QLineEdit*>();
  fields.removeIf([](const QLineEdit* field) { return !field->isVisible(); });
  std::sort(fields.begin(), fields.end(),
            [](const QLineEdit* a, const QLineEdit* b) { return a->x() < b->x(); });
  return fields.value(index);
}

void Designer::setText(const QString& label, const QString& text) {
  QLineEdit* entry = field(label, 0);
  ASSERT_TRUE(entry) << label.toStdString();
  m_desk.fill(*entry, text);
  EXPECT_EQ(entry->text(), text);
}

void Designer::setTime(const QString& label, const QString& text) {
  QLineEdit* entry = field(label, 0);
  ASSERT_TRUE(entry) << label.toStdString();
  m_desk.fill(*entry, text);
}

void Designer::setNumber(const QString& label, double value, int index) {
  auto* entry = qobject_cast<widgets::TYValueField*>(field(label, index));
  ASSERT_TRUE(entry) << label.toStdString();
  m_desk.fill(*entry, written(value));
  EditorDesk::waitFor([&] { return !entry->isModified() && qAbs(entry->value() - value) < 0.01; },
                      qPrintable(label + u' ' + written(value)));
}

void Designer::place(double x, double y, double width, double height) {
  setNumber(QStringLiteral("Position"), x, 0);
  setNumber(QStringLiteral("Position"), y, 1);
  setNumber(QStringLiteral("Size"), width, 0);
  setNumber(QStringLiteral("Size"), height, 1);
  EXPECT_EQ(selected().drawingFrame(), QRectF(x, y, width, height));
}

void Designer::setColour(const QString& label, const QString& hex) {
  InspectorRow* found = row(label);
  ASSERT_TRUE(found);
  auto* well = found->findChild<widgets::TYColorWell*>();
  ASSERT_TRUE(well) << label.toStdString();
  m_desk.click(*well);
  EditorDesk::waitFor([&] { return QApplication::activePopupWidget() != nullptr; },
                      "the panel of colours");
  m_desk.type(hex);
  m_desk.key("Return");
  EditorDesk::waitFor([&] { return QApplication::activePopupWidget() == nullptr; },
                      "the panel of colours to close");
  EXPECT_EQ(well->color(), QColor(u'#' + hex)) << label.toStdString();
}

void Designer::pick(const QString& label, const QString& item) {
  InspectorRow* found = row(label);
  ASSERT_TRUE(found);
  auto* box = found->findChild<QComboBox*>();
  ASSERT_TRUE(box) << label.toStdString();
  m_desk.click(*box);
  const QAbstractItemView& list = *box->view();
  EditorDesk::waitFor([&] { return list.isVisible(); }, "the list of choices");
  const QModelIndex index = list.model()->index(box->findText(item), 0);
  m_desk.click(list.viewport()->mapToGlobal(list.visualRect(index).center()));
  EditorDesk::waitFor([&] { return box->currentText() == item; }, qPrintable(item));
}

void Designer::setPicture(const QString& label, const QString& file) {
  InspectorRow* found = row(label);
  ASSERT_TRUE(found);
  m_desk.click(*found->findChild<widgets::TYImageWell*>());
  m_desk.giveFile(file);
}

void Designer::showTab(const QString& name) {
  auto* inspector = m_desk.window().findChild<inspector::TYInspectorController*>();
  const auto* tabs = inspector->findChild<widgets::TYSegmentedControl*>();
  for (int i = 0; i < tabs->count(); ++i)
    if (tabs->segment(i)->text() == name) return m_desk.click(*tabs->segment(i));
  ADD_FAILURE() << "no tab " << name.toStdString();
}

void Designer::publish(const QString& attribute) {
  showTab(QStringLiteral("Permissions"));
  inspector::PermissionRow* found = nullptr;
  const auto look = [&] {
    for (auto* row : m_desk.window().findChildren<inspector::PermissionRow*>())
      if (row->isVisible() && row->name() == attribute) found = row;
    return found != nullptr;
  };
  if (!EditorDesk::waitFor(look, "a permission")) return;
  auto* box = found->findChild<QCheckBox*>();
  m_desk.click(*box);
  EXPECT_TRUE(box->isChecked());
  showTab(QStringLiteral("Properties"));
}

void Designer::goTo(const char* time) {
  auto* entry = m_desk.window().timelinePanel().transport().findChild<widgets::TYTimecodeField*>();
  m_desk.fill(*entry, QString::fromLatin1(time));
  const double seconds = QString::fromLatin1(time).chopped(1).toDouble();
  EditorDesk::waitFor([&] { return qAbs(m_desk.graphic().editorTimepoint() - seconds) < 0.001; },
                      time);
}

void Designer::setKey(const Key& key) {
  const QString label = QString::fromLatin1(key.row);
  InspectorRow* found = row(label);
  auto* entry = qobject_cast<widgets::TYValueField*>(field(label, key.field));
  ASSERT_TRUE(found && entry) << key.row;
  auto* diamond = found->findChild<widgets::TYKeyDiamond*>();
  const bool isOther = qAbs(entry->value() - key.value) > 0.001;
  if (diamond->state() == State::Still || !isOther) {
    m_desk.click(*diamond);
    EditorDesk::waitFor([&] { return diamond->state() == State::KeyHere; }, "a key frame");
  }
  if (isOther) setNumber(label, key.value, key.field);
}

void Designer::animate(const std::vector<Moment>& moments) {
  for (const Moment& moment : moments) {
    goTo(moment.time);
    for (const Key& key : moment.keys) setKey(key);
  }
}

void Designer::setStopFrame(const char* time, const QString& name) {
  const qsizetype before = m_desk.graphic().stopFrameTimepoints().size();
  goTo(time);
  m_desk.key("m");
  EditorDesk::waitFor([&] { return m_desk.graphic().stopFrameTimepoints().size() == before + 1; },
                      "a stop frame");
  // The pane of the document has a row for each, called by its time.
  const inspector::TimepointToString times(m_desk.graphic().videoResolution().timecodeRate());
  setText(times.transformedValue(m_desk.graphic().editorTimepoint()), name);
}

}  // namespace desktop
