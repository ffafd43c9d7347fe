#include <algorithm>

#include "playout/AcceptedValues.h"
#include "playout/ValueTable.h"

namespace playout {

using runtime::PortAttributes;

namespace {

using Inputs = std::vector<const PortAttributes*>;

/// The inputs that are called so, by the letter or else in other cases.
Inputs called(const QString& name, const Inputs& inputs, QString PortAttributes::*member) {
  for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
    Inputs found;
    std::copy_if(inputs.begin(), inputs.end(), std::back_inserter(found),
                 [&](const PortAttributes* input) {
                   const QString trimmed = (input->*member).simplified();
                   return !trimmed.isEmpty() && trimmed.compare(name, sensitivity) == 0;
                 });
    if (!found.empty()) return found;
  }
  return {};
}

}  // namespace

QString ValueTable::UnusedColumn::sentence() const {
  if (!filledBy.isEmpty())
    return QStringLiteral("column '%1' is not used: column '%2' fills the same input")
        .arg(name, filledBy);
  if (!candidates.isEmpty())
    return QStringLiteral("column '%1' is not used: it could mean %2")
        .arg(name, candidates.join(QStringLiteral(", ")));
  return QStringLiteral("column '%1' fits no input").arg(name);
}

bool ValueTable::Fit::isNone() const {
  return std::none_of(inputs.begin(), inputs.end(),
                      [](const auto& input) { return input.has_value(); });
}

ValueTable::Fit ValueTable::fit(const std::vector<PortAttributes>& inputs) const {
  Inputs givable;
  for (const PortAttributes& input : inputs)
    if (AcceptedValues::canBeGiven(input.type)) givable.push_back(&input);
  const auto count = static_cast<std::size_t>(m_columns.size());
  Fit fit;
  fit.inputs.resize(count);
  std::vector<Inputs> meant(count);
  QHash<QString, QString> filled;  // key of an input: its column
  for (const auto member : {&PortAttributes::key, &PortAttributes::label})
    for (std::size_t i = 0; i < count; ++i) {
      if (!meant[i].empty()) continue;
      const QString& name = m_columns[static_cast<qsizetype>(i)];
      meant[i] = called(name, givable, member);
      if (meant[i].size() != 1 || filled.contains(meant[i].front()->key)) continue;
      fit.inputs[i] = *meant[i].front();
      filled.insert(meant[i].front()->key, name);
    }
  for (std::size_t i = 0; i < count; ++i) {
    if (fit.inputs[i]) continue;
    UnusedColumn unused{m_columns[static_cast<qsizetype>(i)], {}, {}};
    if (meant[i].size() == 1) unused.filledBy = filled.value(meant[i].front()->key);
    if (meant[i].size() > 1)
      for (const PortAttributes* input : meant[i]) unused.candidates.append(input->key);
    fit.unused.push_back(unused);
  }
  return fit;
}

}  // namespace playout
