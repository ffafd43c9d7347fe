#include "runtime/CompositionChecker.h"

#include <QSet>

#include "runtime/check/Checks.h"

namespace runtime {

using check::PatchOutline;
using foundation::Findings;
using foundation::PropertyDictionary;

namespace {

class Walk {
 public:
  Walk(const QString& fileName, Findings& findings) : m_fileName(fileName), m_findings(findings) {}

  /// A root patch or the content of a virtual patch, with its root values.
  void root(const PatchOutline& outline, const PropertyDictionary& parameters) {
    check::checkInputParameters(outline, parameters, m_findings);
    content(outline, parameters);
  }

 private:
  void content(const PatchOutline& macro, const PropertyDictionary& parameters) {
    check::checkWiring(macro, m_findings);
    check::checkPublishedPorts(macro, m_findings);
    check::checkPortValues(macro, m_findings);
    check::checkLocations(macro, parameters, m_fileName, m_findings);
    for (const auto& node : macro.nodes) {
      tellUnknown(*node);
      if (!node->nodes.empty()) content(*node, {});
    }
  }
  void tellUnknown(const PatchOutline& node) {
    const QString name = node.className();
    if (node.patchClass || name.startsWith(QLatin1Char('/')) || m_unknown.contains(name)) return;
    m_unknown.insert(name);
    m_findings.append(
        {QStringLiteral("unknown-class"), node.path,
         QStringLiteral("the patch %1 is not known here; nobody can say which ports it has")
             .arg(name)});
  }

  const QString& m_fileName;
  Findings& m_findings;
  QSet<QString> m_unknown;
};

PropertyDictionary parametersOf(const quartz::QuartzComposition& composition) {
  return composition.data().value(u"inputParameters").dictionary();
}

}  // namespace

Findings CompositionChecker::check(const quartz::QuartzComposition& composition,
                                   const QString& fileName) {
  Findings findings;
  check::VirtualPatches virtualPatches(composition, findings);
  const auto root =
      PatchOutline::of(*composition.rootPatch(), QStringLiteral("Root"), virtualPatches);
  Walk walk(fileName, findings);
  walk.root(*root, parametersOf(composition));
  for (const auto& [name, embedded] : virtualPatches.all())
    if (embedded.outline) walk.root(*embedded.outline, parametersOf(*embedded.composition));
  if (const auto compiled = CompiledComposition::compile(composition, fileName))
    check::checkLoops(**compiled, findings);
  else
    findings.append({QStringLiteral("not-playable"), root->path, compiled.error().message});
  return findings;
}

}  // namespace runtime
