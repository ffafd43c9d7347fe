#include <cmath>

#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/StructureMember.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

qsizetype memberIndex(const Execution& x, int input) {
  return static_cast<qsizetype>(std::min<quint64>(x.index(input), quint64(1) << 40));
}

class MemberAtIndex : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, x.structure(0).at(memberIndex(x, 1))); }
};

class MemberForKey : public PatchEvaluator {
 public:
  void execute(Execution& x) override { x.setOutput(0, x.structure(0).value(x.string(1))); }
};

class KeyAtIndex : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const Structure structure = x.structure(0);
    const qsizetype index = memberIndex(x, 1);
    if (index >= structure.size()) return x.setOutput(0, Value());
    x.setOutput(0, structure.members()[static_cast<size_t>(index)].key);
  }
};

class StructureCount : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    x.setOutput(0, Value::index(static_cast<quint64>(x.structure(0).size())));
  }
};

class StructureRange : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const Structure structure = x.structure(0);
    const qsizetype first = std::min(memberIndex(x, 1), structure.size());
    const qsizetype count = std::min(memberIndex(x, 2), structure.size() - first);
    const auto begin = structure.members().begin() + first;
    x.setOutput(0, Structure(Structure::Members(begin, begin + count)));
  }
};

class StructureReverse : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const Structure structure = x.structure(0);
    x.setOutput(
        0, Structure(Structure::Members(structure.members().rbegin(), structure.members().rend())));
  }
};

/// What members are ordered by: numbers before texts; everything else is equal and comes last.
struct SortKey {
  int kind = 2;
  double number = 0;
  QString text;

  explicit SortKey(const Value& value) {
    switch (value.type()) {
      case PortType::Number:
      case PortType::Index:
      case PortType::Boolean:
        kind = 0;
        number = value.toNumber();
        if (std::isnan(number)) number = -std::numeric_limits<double>::infinity();
        break;
      case PortType::String:
        kind = 1;
        text = value.toString();
        break;
      default:
        break;
    }
  }
  friend bool operator<(const SortKey& a, const SortKey& b) {
    if (a.kind != b.kind) return a.kind < b.kind;
    return a.kind == 0 ? a.number < b.number : a.text < b.text;
  }
};

class StructureSort : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    QString key = x.string(1);
    const bool descending = key.startsWith(QLatin1Char('-'));
    if (descending) key.remove(0, 1);
    const Structure structure = x.structure(0);
    std::vector<std::pair<SortKey, const StructureMember*>> order;
    order.reserve(structure.members().size());
    for (const StructureMember& member : structure.members())
      order.emplace_back(sortKey(member.value, key), &member);
    std::stable_sort(order.begin(), order.end(), [descending](const auto& a, const auto& b) {
      return descending ? b.first < a.first : a.first < b.first;
    });
    Structure::Members sorted;
    sorted.reserve(order.size());
    for (const auto& [unused, member] : order) sorted.push_back(*member);
    x.setOutput(0, Structure(std::move(sorted)));
  }

 private:
  static SortKey sortKey(const Value& member, const QString& key) {
    const auto* inner = member.as<Structure>();
    return SortKey(inner && !key.isEmpty() ? inner->value(key) : member);
  }
};

Port structureInput() {
  return portOf(PortType::Structure, "inputStructure", "Structure");
}

void registerMember(PatchRegistry& registry, const QString& identifier, const QString& title,
                    const Port& choice,
                    std::unique_ptr<PatchEvaluator> (*make)(const NodeDescription&)) {
  registry.add(
      {.className = QStringLiteral("QCStructureMember"),
       .identifier = identifier,
       .title = title,
       .ports = {{structureInput()}, {portOf(PortType::Virtual, "outputMember", "Member")}},
       .dynamicPorts = QStringLiteral("inputIndex or inputKey by the identifier"),
       .addPorts = [choice](const NodeDescription&,
                            PatchPorts& ports) { ports.inputs.append(choice); },
       .make = make});
}

void registerListPatch(PatchRegistry& registry, const QString& name, const QString& title,
                       PatchPorts ports,
                       std::unique_ptr<PatchEvaluator> (*make)(const NodeDescription&)) {
  registry.add({.className = name, .title = title, .ports = std::move(ports), .make = make});
}

}  // namespace

void registerStructurePatches(PatchRegistry& registry) {
  const Port index = indexPort("inputIndex", 0, "Index");
  registerMember(registry, QString(), QStringLiteral("Structure Index Member"), index,
                 makeEvaluator<MemberAtIndex>);
  registerMember(registry, QStringLiteral("key"), QStringLiteral("Structure Key Member"),
                 stringPort("inputKey", "", "Key"), makeEvaluator<MemberForKey>);
  registerMember(registry, QStringLiteral("keyAtIndex"), QStringLiteral("Structure Key at Index"),
                 index, makeEvaluator<KeyAtIndex>);
  registerListPatch(registry, QStringLiteral("QCStructureCount"), QStringLiteral("Structure Count"),
                    {{structureInput()}, {indexOutput("outputCount", "Count")}},
                    makeEvaluator<StructureCount>);
  registerListPatch(registry, QStringLiteral("QCStructureRange"), QStringLiteral("Structure Range"),
                    {{structureInput(), index, indexPort("inputLength", 0, "Length")},
                     {portOf(PortType::Structure, "outputStructure", "Structure")}},
                    makeEvaluator<StructureRange>);
  registerListPatch(
      registry, QStringLiteral("QCStructureReverse"), QStringLiteral("Structure Reverse"),
      {{structureInput()}, {portOf(PortType::Structure, "outputStructure", "Reversed Structure")}},
      makeEvaluator<StructureReverse>);
  registerListPatch(registry, QStringLiteral("QCStructureSort"), QStringLiteral("Structure Sort"),
                    {{structureInput(), stringPort("inputSortingKey", "", "Sorting Descriptor")},
                     {portOf(PortType::Structure, "outputStructure", "Sorted Structure")}},
                    makeEvaluator<StructureSort>);
}

}  // namespace runtime::patches
