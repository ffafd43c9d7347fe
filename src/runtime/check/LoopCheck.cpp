#include "runtime/check/Checks.h"

namespace runtime::check {

using foundation::Findings;

namespace {

/// A loop of connections is broken at the node that is being evaluated, which then uses its
/// previous output. Compositions rely on that: counting up a value and latching a switch are done
/// so. What cannot be meant is a loop into which nothing comes from outside: whatever it gives
/// depends on the number of frames that were drawn, or never changes at all.
class ClosedLoops {
 public:
  explicit ClosedLoops(const CompiledComposition& composition)
      : m_composition(composition), m_isFed(composition.nodes().size(), false) {
    for (const PublishedPort& input : composition.inputs()) feed(input.node);
    for (size_t i = 0; i < m_isFed.size(); ++i)
      if (bringsValues(composition.nodes()[i])) feed(static_cast<int>(i));
    spread();
  }

  /// One loop after the other, in the direction in which values go.
  std::vector<std::vector<int>> loops() const {
    std::vector<std::vector<int>> found;
    std::vector<size_t> seen(m_isFed.size(), 0);  // in which walk, from 1
    for (size_t start = 0; start < m_isFed.size(); ++start) {
      std::vector<int> walk;
      size_t at = start;
      while (!m_isFed[at] && seen[at] == 0) {
        seen[at] = start + 1;
        walk.push_back(static_cast<int>(at));
        at = static_cast<size_t>(sourceOf(at));
      }
      if (m_isFed[at] || seen[at] != start + 1) continue;
      const auto first = std::find(walk.begin(), walk.end(), static_cast<int>(at));
      std::reverse(first + 1, walk.end());  // the walk went against the values
      found.emplace_back(first, walk.end());
    }
    return found;
  }

 private:
  /// Something that changes by itself, a value that is set, or content that cannot be judged here.
  static bool bringsValues(const CompiledNode& node) {
    if (!node.patchClass || node.patchClass->isVolatile() || node.content >= 0) return true;
    return std::none_of(node.links.begin(), node.links.end(),
                        [](const Link& link) { return link.node >= 0; });
  }
  void feed(int node) {
    if (m_isFed[static_cast<size_t>(node)]) return;
    m_isFed[static_cast<size_t>(node)] = true;
    m_fresh.push_back(node);
  }
  void spread() {
    std::vector<std::vector<int>> users(m_isFed.size());
    for (size_t i = 0; i < m_isFed.size(); ++i)
      for (const Link& link : m_composition.nodes()[i].links)
        if (link.node >= 0) users[static_cast<size_t>(link.node)].push_back(static_cast<int>(i));
    while (!m_fresh.empty()) {
      const int node = m_fresh.back();
      m_fresh.pop_back();
      for (const int user : users[static_cast<size_t>(node)]) feed(user);
    }
  }
  /// What is not fed has a source, and that is not fed either.
  [[nodiscard]] int sourceOf(size_t node) const {
    for (const Link& link : m_composition.nodes()[node].links)
      if (link.node >= 0) return link.node;
    return -1;
  }

  const CompiledComposition& m_composition;
  std::vector<bool> m_isFed;
  std::vector<int> m_fresh;
};

}  // namespace

void checkLoops(const CompiledComposition& composition, Findings& findings) {
  for (const std::vector<int>& loop : ClosedLoops(composition).loops()) {
    QStringList names;
    for (const int node : loop) {
      const QString& path = composition.nodes()[static_cast<size_t>(node)].path;
      if (names.size() < 8) names.append(path);
    }
    const QString object = QStringLiteral("Root/") + names.first();
    if (loop.size() > 8) names.append(QStringLiteral("…"));
    names.append(names.first());
    findings.append({QStringLiteral("feedback-loop"), object,
                     QStringLiteral("nothing comes into the loop %1 from outside")
                         .arg(names.join(QStringLiteral(" → ")))});
  }
}

}  // namespace runtime::check
