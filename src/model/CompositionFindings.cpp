#include "model/CompositionFindings.h"

#include <QDir>
#include <QFileInfo>

#include "model/ComponentProgram.h"
#include "model/Composition.h"
#include "model/RichFontValue.h"
#include "runtime/CompiledComposition.h"
#include "runtime/text/FontResolver.h"

namespace model {

namespace {

constexpr qsizetype mostStopFrames = 255;

class FindingsCollector {
 public:
  explicit FindingsCollector(const Composition& composition) : m_composition(composition) {
    const QUrl& file = composition.fileURL();
    if (file.isLocalFile()) m_folder = QFileInfo(file.toLocalFile()).absolutePath();
  }

  QList<CompositionFinding> collect() {
    checkStopFrames();
    checkBackground();
    for (const QuartzComponent* component : m_composition.componentsSortedByZLevel()) {
      m_component = component->objectId();
      checkComponent(*component);
    }
    return m_findings;
  }

 private:
  void add(const char* code, const QString& object, const QString& sentence) {
    m_findings.append({{QString::fromLatin1(code), object, sentence}, m_component, m_attribute});
  }

  void checkStopFrames() {
    const QString object = QStringLiteral("Composition");
    if (m_composition.stopFrames().size() > mostStopFrames)
      add("too-many-stop-frames", object,
          QStringLiteral("has %1 stop frames; with more than %2 an export does not stop at all")
              .arg(m_composition.stopFrames().size())
              .arg(mostStopFrames));
    for (const double time : m_composition.stopFrameTimepoints())
      if (time > m_composition.duration())
        add("stop-frame-outside", object,
            QStringLiteral("has a stop frame at %1 s, after its end").arg(time));
  }

  void checkBackground() {
    if (m_composition.solidColorBackgroundMode())
      checkAlpha(QStringLiteral("Composition"), m_composition.backgroundColor());
    const QString& movie = m_composition.backgroundMovie();
    if (m_composition.imageBackgroundMode() && !movie.isEmpty() && !exists(movie))
      add("missing-file", QStringLiteral("Composition"),
          QStringLiteral("the background movie \"%1\" does not exist").arg(movie));
  }

  void checkComponent(const QuartzComponent& component) {
    const QString& title = component.title();
    if (!component.program())
      add("component-not-loadable", title, QStringLiteral("its composition cannot be opened"));
    else
      checkProgram(title, *component.program());
    if (component.endTime() > m_composition.duration())
      add("ends-after-composition", title,
          QStringLiteral("ends at %1 s, after the composition's end at %2 s")
              .arg(component.endTime())
              .arg(m_composition.duration()));
    const double left = std::max(0.0, component.marginX());
    const double below = std::max(0.0, component.marginY());
    if (left > 0 || below > 0)
      add("margin-moves-export", title,
          QStringLiteral("has margins; an export draws it %1 pixels further left and %2 lower than "
                         "the editor")
              .arg(left)
              .arg(below));
    for (const Attribute* attribute : component.attributes()) {
      m_attribute = attribute->objectId();
      checkAttribute(component, *attribute);
    }
    m_attribute = 0;
  }

  void checkProgram(const QString& title, const ComponentProgram& program) {
    for (const runtime::PatchUse& use : program.compiled()->patchUses())
      if (!use.known)
        add("unknown-class", title,
            QStringLiteral("uses the patch \"%1\", which is not known and does nothing")
                .arg(use.identifier.isEmpty() ? use.className : use.identifier));
    if (program.rootNodeCount() > 1)
      add("only-first-node-exported", title,
          QStringLiteral("its composition has %1 nodes at the top, of which an export takes the "
                         "first; put them into one macro")
              .arg(program.rootNodeCount()));
  }

  void checkAttribute(const QuartzComponent& component, const Attribute& attribute) {
    const QString object = component.title() + QLatin1Char('/') + attribute.label();
    if (attribute.lostPermissionToAnimation())
      add("field-lost-to-animation", object,
          QStringLiteral("was a field of the template until it was animated"));
    if (attribute.isAnimatedInExport() && attribute.permissionToChange())
      add("animated-field", object,
          QStringLiteral("is a field of the template, but animated and therefore not published"));
    if (attribute.type() == AttributeType::Image && attribute.quartzAttribute() &&
        attribute.permissionToChange() && attribute.quartzValues().isEmpty())
      add("empty-field", object,
          QStringLiteral("is a field of the template, but holds no picture to begin with, and is "
                         "therefore not published"));
    checkColors(object, attribute);
    if (attribute.isAnimatedInExport()) checkKeyFrames(component, object, attribute);
    checkFonts(object, attribute.currentValue());
    if (attribute.isFilePath()) checkFile(object, attribute.currentValue().toString());
    checkPublishedKey(component, object, attribute);
  }

  /// True when it was told.
  bool checkAlpha(const QString& object, const AttributeValue& value) {
    const auto* color = value.as<foundation::Color>();
    if (!color || color->alpha >= 1) return false;
    add("color-alpha-dropped", object,
        QStringLiteral("has an opacity of %1 %, which an export makes 100 %")
            .arg(qRound(color->alpha * 100)));
    return true;
  }

  /// Once an attribute.
  void checkColors(const QString& object, const Attribute& attribute) {
    for (const double time : attribute.sortedKeyFrames()) {
      const AttributeValue value = attribute.valueForTimepoint(time);
      if (checkAlpha(object, value)) return;
      const auto* rich = value.as<std::shared_ptr<const RichFontValue>>();
      if (!rich || !*rich) continue;
      for (const AttributeValue& part : (*rich)->renderAttributes())
        if (checkAlpha(object, part)) return;
    }
  }

  void checkKeyFrames(const QuartzComponent& component, const QString& object,
                      const Attribute& attribute) {
    for (const double time : attribute.sortedKeyFrames())
      if (compareTimeInterval(time, component.startTime()) < 0 ||
          compareTimeInterval(time, component.endTime()) > 0) {
        add("key-frame-outside-times", object,
            QStringLiteral(
                "has a key frame at %1 s, while the component is shown from %2 s to %3 s")
                .arg(time)
                .arg(component.startTime())
                .arg(component.endTime()));
        return;
      }
  }

  void checkFonts(const QString& object, const AttributeValue& value) {
    QString name;
    if (const auto* font = value.as<FontValue>()) name = font->name;
    if (const auto* rich = value.as<std::shared_ptr<const RichFontValue>>(); rich && *rich)
      name = (*rich)->font().name;
    if (!name.isEmpty() && !runtime::FontResolver::contains(name))
      add("missing-font", object, QStringLiteral("the font \"%1\" is not installed").arg(name));
  }

  void checkFile(const QString& object, const QString& path) {
    if (path.isEmpty()) return;
    if (!exists(path)) {
      add("missing-file", object, QStringLiteral("the file \"%1\" does not exist").arg(path));
      return;
    }
    const QString name = QFileInfo(path).fileName();
    const QString full = QDir::cleanPath(QDir(m_folder).absoluteFilePath(path));
    const QString first = m_pathByName.value(name);
    if (!first.isEmpty() && first != full)
      add("same-file-name", object,
          QStringLiteral("\"%1\" has the name of \"%2\"; when both are embedded, one replaces the "
                         "other")
              .arg(path, first));
    else
      m_pathByName.insert(name, full);
  }

  void checkPublishedKey(const QuartzComponent& component, const QString& object,
                         const Attribute& attribute) {
    const bool published = attribute.permissionToChange() && !attribute.isAnimatedInExport() &&
                           !attribute.key().startsWith(QLatin1String("margin")) &&
                           attribute.key() != QLatin1String("visibleInCompositionEditor");
    if (!published) return;
    const QString key = Composition::stringByTrimmingInvalidKeyCharacters(
        component.title() + QLatin1Char('_') + attribute.key());
    if (m_publishedKeys.contains(key))
      add("key-gets-counter", object,
          QStringLiteral("would be published as \"%1\" like \"%2\", and gets a number behind it")
              .arg(key, m_publishedKeys.value(key)));
    else
      m_publishedKeys.insert(key, object);
  }

  [[nodiscard]] bool exists(const QString& path) const {
    const QFileInfo file(path);
    // A relative path in a document that was never saved leads nowhere yet.
    if (file.isRelative()) return m_folder.isEmpty() || QDir(m_folder).exists(path);
    return file.exists();
  }

  const Composition& m_composition;
  QString m_folder;
  QList<CompositionFinding> m_findings;
  store::ObjectId m_component = 0;  ///< looked at now
  store::ObjectId m_attribute = 0;
  QHash<QString, QString> m_pathByName;
  QHash<QString, QString> m_publishedKeys;
};

}  // namespace

QList<CompositionFinding> compositionFindings(const Composition& composition) {
  return FindingsCollector(composition).collect();
}

}  // namespace model
