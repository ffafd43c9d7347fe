#include "preview/fields/OutputsList.h"

#include <QHBoxLayout>
#include <QScrollArea>

#include "preview/StatusLamp.h"
#include "preview/fields/ElidedNote.h"
#include "preview/fields/FieldDescription.h"
#include "preview/fields/FieldRow.h"
#include "widgets/TYPaneHeader.h"
#include "widgets/TokenLabel.h"

namespace preview {

using runtime::PortType;
using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;

namespace {

constexpr int rowHeight = 24;
constexpr int mostRows = 6;
constexpr int lampColumn = 20;

QString titleOf(const runtime::PortAttributes& port) {
  if (port.key == QLatin1String("active")) return OutputsList::tr("Active");
  if (port.key == QLatin1String("waitingForTrigger")) return OutputsList::tr("Waiting for Trigger");
  return port.label.isEmpty() ? port.key : port.label;
}

}  // namespace

OutputsList::OutputsList(QWidget* parent)
    : QWidget(parent), m_header(new widgets::TYPaneHeader(tr("Outputs"))) {
  m_header->setFocusPolicy(Qt::NoFocus);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_header);
}

void OutputsList::setPorts(const std::vector<runtime::PortAttributes>& ports) {
  const bool isSame = std::equal(ports.begin(), ports.end(), m_rows.begin(), m_rows.end(),
                                 [](const auto& port, const Row& row) {
                                   return port.key == row.port.key &&
                                          port.label == row.port.label &&
                                          port.type == row.port.type;
                                 });
  if (isSame && m_content) return;
  delete m_content;
  m_rows.clear();
  auto* rows = new QWidget;
  auto* column = new QVBoxLayout(rows);
  column->setContentsMargins(FieldRow::margin, 0, FieldRow::margin, FieldRow::gap);
  column->setSpacing(0);
  for (const runtime::PortAttributes& port : ports) addRow(port, *column);
  auto* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidget(rows);
  const int shown = std::min(static_cast<int>(ports.size()), mostRows);
  area->setFixedHeight(shown * rowHeight + FieldRow::gap);
  m_content = area;
  layout()->addWidget(area);
  m_header->setContent(area);
  setVisible(!ports.empty());
}

void OutputsList::addRow(const runtime::PortAttributes& port, QVBoxLayout& column) {
  const bool isSwitch = port.type == PortType::Boolean;
  auto* title = new ElidedNote;
  title->setFont(widgets::TYStyleKit::font(TextStyle::Body));
  title->setToken(Token::Text2);
  title->setText(titleOf(port));
  Row row{port, isSwitch ? new StatusLamp : nullptr,
          new TokenLabel({}, TextStyle::Body, Token::Text)};
  row.value->setTextFormat(Qt::PlainText);
  row.value->setAccessibleName(titleOf(port));
  row.value->setObjectName(QStringLiteral("output.") + port.key);
  auto* line = new QWidget;
  line->setFixedHeight(rowHeight);
  line->setToolTip(tr("Key: %1\nType: %2").arg(port.key, FieldDescription::typeName(port)));
  auto* places = new QHBoxLayout(line);
  places->setContentsMargins(0, 0, 0, 0);
  places->setSpacing(0);
  auto* lampPlace = new QWidget;
  lampPlace->setFixedSize(lampColumn, rowHeight);
  if (row.lamp) {
    row.lamp->setParent(lampPlace);
    row.lamp->move(2, (rowHeight - row.lamp->height()) / 2);
  }
  places->addWidget(lampPlace);
  places->addWidget(title, 1);
  places->addSpacing(FieldRow::gap);
  places->addWidget(row.value);
  column.addWidget(line);
  m_rows.push_back(row);
}

void OutputsList::setValues(const std::vector<runtime::Value>& values) {
  for (std::size_t i = 0; i < std::min(values.size(), m_rows.size()); ++i) {
    const Row& row = m_rows[i];
    const QString text = FieldDescription::valueText(values[i], row.port);
    if (row.lamp) {
      const bool isWaiting = row.port.key == QLatin1String("waitingForTrigger");
      row.lamp->setLight(!values[i].toBoolean() ? StatusLamp::Light::Finished
                         : isWaiting            ? StatusLamp::Light::Waiting
                                                : StatusLamp::Light::Playing);
    }
    if (row.value->text() != text) row.value->setText(text);
  }
}

}  // namespace preview
