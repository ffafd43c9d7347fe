#include "preview/fields/FieldGroups.h"

#include <QSet>

namespace preview {

using runtime::PortType;

namespace {

constexpr QLatin1String enable("Enable");

bool isSwitch(const runtime::PortAttributes& port) {
  return port.type == PortType::Boolean && port.label.size() > enable.size() + 1 &&
         port.label.endsWith(enable) &&
         !port.label.chopped(enable.size()).back().isLetterOrNumber();
}

/// The number behind the last "_" of the key; 0 for none.
int numberBehind(const QString& key) {
  const qsizetype cut = key.lastIndexOf(u'_');
  return cut < 0 ? 0 : std::max(QStringView(key).mid(cut + 1).toInt(), 0);
}

QString titleOf(QString rest, int counter) {
  const QString number = QString::number(counter);
  if (counter > 0 && rest.endsWith(number) && rest.size() > number.size() + 1)
    rest.chop(number.size() + 1);
  return rest.replace(u'_', u' ').trimmed();
}

class Grouping {
 public:
  explicit Grouping(const std::vector<Field>& fields) {
    for (const Field& field : fields)
      if (isSwitch(field.port))
        m_counters[field.port.label.chopped(enable.size())].insert(numberBehind(field.port.key));
  }

  /// What belongs to no component goes into the group of that title.
  void add(const runtime::PortAttributes& port, const QString& rest) {
    const QString label = port.label.isEmpty() ? port.key : port.label;
    const QString prefix = prefixOf(label);
    // Further components of one title have the same labels, told apart by a counter.
    const int number = numberBehind(port.key);
    const int counter = m_counters.value(prefix).contains(number) ? number : 0;
    QString title = prefix.isEmpty() ? rest : prefix.chopped(1);
    if (counter > 0) title = QStringLiteral("%1 (%2)").arg(title).arg(counter + 1);
    groupNamed(title).members.push_back({port.key, titleOf(label.mid(prefix.size()), counter)});
  }

  std::vector<FieldGroup> groups;

 private:
  FieldGroup& groupNamed(const QString& title) {
    for (FieldGroup& group : groups)
      if (group.title == title) return group;
    return groups.emplace_back(FieldGroup{title, {}});
  }

  /// The component's title with the separator behind it; longer titles win.
  [[nodiscard]] QString prefixOf(const QString& label) const {
    for (qsizetype end = label.size() - 1; end > 0; --end)
      if (m_counters.contains(label.left(end))) return label.left(end);
    return {};
  }

  QHash<QString, QSet<int>> m_counters;  ///< of the switches, by that title
};

}  // namespace

std::vector<FieldGroup> FieldGroups::of(const std::vector<Field>& fields) {
  Grouping grouping(fields);
  const QString graphic = tr("Graphic");
  for (const Field& field : fields) grouping.add(field.port, graphic);
  std::vector<FieldGroup> shown;
  FieldGroup switches{tr("Visibility"), {}};
  QSet<QString> booleans;
  for (const Field& field : fields)
    if (field.port.type == PortType::Boolean) booleans.insert(field.port.key);
  for (FieldGroup& group : grouping.groups) {
    const bool isOnlySwitch = group.members.size() == 1 && group.members.front().title == enable;
    const bool isOnlyBooleans =
        group.title == graphic &&
        std::all_of(group.members.begin(), group.members.end(),
                    [&](const auto& member) { return booleans.contains(member.key); });
    if (isOnlySwitch)
      switches.members.push_back({group.members.front().key, group.title});
    else if (isOnlyBooleans)
      switches.members.insert(switches.members.end(), group.members.begin(), group.members.end());
    else
      shown.push_back(std::move(group));
  }
  if (!switches.members.empty()) shown.push_back(std::move(switches));
  return shown;
}

}  // namespace preview
