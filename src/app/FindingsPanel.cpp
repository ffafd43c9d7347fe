#include "app/FindingsPanel.h"

#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include "widgets/DevicePixels.h"
#include "widgets/GlyphView.h"
#include "widgets/TYLinkButton.h"
#include "widgets/TokenLabel.h"

namespace app {

using model::CompositionFinding;
using widgets::TextStyle;
using widgets::Token;
using widgets::TokenLabel;
using widgets::TYStyleKit;

namespace {

constexpr int panelWidth = 440;
constexpr int headHeight = 36;
constexpr int mostHeight = 420;
constexpr int margin = 12;
constexpr int glyphSize = 16;
constexpr qsizetype mostObjects = 4;  ///< named, before "and 3 more"

bool isBroken(const CompositionFinding& finding) {
  return finding.code == QLatin1String("missing-file") ||
         finding.code == QLatin1String("component-not-loadable");
}

QString glyphOf(const CompositionFinding& finding) {
  if (isBroken(finding)) return QStringLiteral("Broken");
  return finding.code == QLatin1String("missing-font") ? QStringLiteral("Fonts")
                                                       : QStringLiteral("Warning");
}

QString placesOf(const QStringList& objects) {
  const QString named = objects.mid(0, mostObjects).join(QStringLiteral(", "));
  const qsizetype more = objects.size() - mostObjects;
  return more <= 0 ? named : FindingsPanel::tr("%1 and %2 more").arg(named).arg(more);
}

QString capitalised(const QString& sentence) {
  return sentence.isEmpty() ? sentence : sentence.at(0).toUpper() + sentence.mid(1);
}

}  // namespace

FindingsPanel::FindingsPanel(QWidget* window)
    : QFrame(window, Qt::Popup), m_rows(new QWidget), m_column(new QVBoxLayout(m_rows)) {
  setAccessibleName(tr("Findings"));
  setFixedWidth(panelWidth);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(1, 1, 1, 1);
  column->setSpacing(0);
  auto* head = new QHBoxLayout;
  head->setContentsMargins(margin, 0, margin, 0);
  head->addWidget(new TokenLabel(tr("Findings"), TextStyle::Title, Token::Text), 1);
  m_count = new TokenLabel({}, TextStyle::Small, Token::Text3);
  m_count->setMinimumHeight(headHeight);
  head->addWidget(m_count);
  column->addLayout(head);
  m_column->setContentsMargins(0, 0, 0, 0);
  m_column->setSpacing(0);
  auto* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidgetResizable(true);
  area->setWidget(m_rows);
  column->addWidget(area);
}

QString FindingsPanel::actionFor(const CompositionFinding& finding) {
  if (finding.code == QLatin1String("missing-file")) return tr("Locate...");
  if (finding.code == QLatin1String("missing-font")) return tr("Replace...");
  return finding.component != 0 ? tr("Show") : QString();
}

void FindingsPanel::setGroups(const QList<DocumentFindings::Group>& groups) {
  while (QLayoutItem* item = m_column->takeAt(0)) {
    if (item->widget()) item->widget()->deleteLater();
    delete item;
  }
  for (const DocumentFindings::Group& group : groups) m_column->addWidget(row(group));
  m_column->addStretch(1);
  m_count->setText(QString::number(groups.size()));
  if (groups.isEmpty()) close();
}

QWidget* FindingsPanel::row(const DocumentFindings::Group& group) {
  auto* box = new QWidget;
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(margin, 8, margin - 4, 8);
  line->setSpacing(8);
  const Token tone = isBroken(group.finding) ? Token::Broken : Token::Warning;
  line->addWidget(new widgets::GlyphView(glyphOf(group.finding), glyphSize, tone), 0, Qt::AlignTop);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(2);
  const QString sentence = capitalised(group.finding.sentence);
  auto* what = new TokenLabel(sentence, TextStyle::Body, Token::Text);
  auto* where = new TokenLabel(placesOf(group.objects), TextStyle::Small, Token::Text3);
  for (QLabel* label : {what, where}) {
    label->setWordWrap(true);
    texts->addWidget(label);
  }
  line->addLayout(texts, 1);
  if (const QString action = actionFor(group.finding); !action.isEmpty()) {
    auto* button = new widgets::TYLinkButton(action);
    button->setAccessibleName(action + QStringLiteral(": ") + sentence);
    connect(button, &QAbstractButton::clicked, this, [this, group] {
      close();
      Q_EMIT acted(group);
    });
    line->addWidget(button, 0, Qt::AlignTop);
  }
  return box;
}

void FindingsPanel::openAbove(QPoint position) {
  const int rows = m_rows->heightForWidth(panelWidth - 2);
  const int wanted = headHeight + 2 + (rows > 0 ? rows : m_rows->sizeHint().height());
  resize(panelWidth, std::min(wanted, mostHeight));
  move(position - QPoint(width(), height()));
  show();
}

void FindingsPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), TYStyleKit::colour(Token::Panel));
  const widgets::DevicePixels pixels(painter);
  pixels.horizontal(0, width(), headHeight, TYStyleKit::colour(Token::Separator));
  painter.setPen(QPen(TYStyleKit::colour(Token::Border), 0));
  painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

}  // namespace app
