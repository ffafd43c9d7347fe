#include "app/DocumentFindings.h"

#include <chrono>

#include "model/Composition.h"

namespace app {

namespace {

constexpr std::chrono::milliseconds restTime(400);

QList<DocumentFindings::Group> grouped(const QList<model::CompositionFinding>& findings) {
  QList<DocumentFindings::Group> groups;
  QHash<QString, qsizetype> bySentence;
  for (const model::CompositionFinding& finding : findings) {
    const QString same = finding.code + u'\n' + finding.sentence;
    const auto known = bySentence.constFind(same);
    if (known != bySentence.constEnd()) {
      groups[*known].objects.append(finding.object);
      continue;
    }
    bySentence.insert(same, groups.size());
    groups.append({finding, {finding.object}});
  }
  return groups;
}

}  // namespace

DocumentFindings::DocumentFindings(QObject* parent) : QObject(parent) {
  m_rest.setSingleShot(true);
  m_rest.setInterval(restTime);
  connect(&m_rest, &QTimer::timeout, this, &DocumentFindings::refresh);
}

void DocumentFindings::setComposition(model::Composition* composition) {
  m_composition = composition;
  m_changes = {};
  m_rest.stop();
  m_groups.clear();
  if (composition) {
    m_changes =
        composition->context()->observeChanges([this](const store::ChangeSet&) { m_rest.start(); });
    m_rest.start();
  }
  Q_EMIT changed();
}

void DocumentFindings::refresh() {
  if (!m_composition) return;
  if (m_composition->playMode()) {
    m_rest.start();
    return;
  }
  m_groups = grouped(model::compositionFindings(*m_composition));
  Q_EMIT changed();
}

}  // namespace app
