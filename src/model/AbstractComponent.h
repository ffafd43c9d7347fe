#pragma once

#include <QStringList>
#include <memory>

#include "foundation/Result.h"
#include "model/Attribute.h"

namespace runtime {
class CompositionRenderer;
}

namespace model {

class ComponentProgram;

/// Input values that replace the file's own when a component is made, by input key.
using InputValues = QMap<QString, AttributeValue>;

/// One graphic element: a composition file, held as bytes, whose published inputs are attributes.
/// Owns its attributes and its renderer. The renderer is made when it is first asked for, and
/// changes of attributes reach it by themselves.
class AbstractComponent : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    explicit Declaration(const QString& name);
    store::Property<QString> compositionFilename = property<QString>("compositionFilename");
    store::Property<QString> title = property<QString>("title");
    store::Property<double> startTime = property<double>("startTime");
    store::Property<double> endTime = property<double>("endTime");
    store::Property<QByteArray> quartzCompositionData =
        property<QByteArray>("quartzCompositionData");
    store::Property<bool> expanded = transient<bool>("expanded");
    store::Property<bool> needsUpdate = transient<bool>("needsUpdate");
    store::ToMany<Attribute> attributes =
        toMany<Attribute>("attributes", store::DeleteRule::Cascade);
  };

  ~AbstractComponent() override;

  /// The file that the component was made from.
  [[nodiscard]] const QString& compositionFilename() const {
    return get(fields().compositionFilename);
  }
  [[nodiscard]] const QByteArray& quartzCompositionData() const {
    return get(fields().quartzCompositionData);
  }
  [[nodiscard]] const QString& title() const { return get(fields().title); }
  void setTitle(const QString& title) { set(fields().title, title); }
  [[nodiscard]] bool titleEditable() const { return true; }
  [[nodiscard]] bool isLeaf() const { return true; }
  /// Seconds; shown from the start to the end time, both included.
  [[nodiscard]] double startTime() const { return get(fields().startTime); }
  void setStartTime(double time) { set(fields().startTime, time); }
  [[nodiscard]] double endTime() const { return get(fields().endTime); }
  void setEndTime(double time) { set(fields().endTime, time); }
  [[nodiscard]] double duration() const { return endTime() - startTime(); }
  /// A negative duration is ignored.
  void setDuration(double duration);
  /// An end before the start becomes the start, a start after the end the end; single precision
  /// then.
  [[nodiscard]] double validatedEndTime(double proposed) const;
  [[nodiscard]] double validatedStartTime(double proposed) const;
  /// The time that attributes are read at.
  [[nodiscard]] virtual double renderTimepoint() const { return 0; }
  [[nodiscard]] bool visible() const;
  /// Whether the timeline shows the attributes.
  [[nodiscard]] bool expanded() const { return get(fields().expanded); }
  void setExpanded(bool expanded) { set(fields().expanded, expanded); }
  /// Set when the next picture would be another one.
  [[nodiscard]] bool needsUpdate() const { return get(fields().needsUpdate); }
  void setNeedsUpdate(bool needsUpdate) { set(fields().needsUpdate, needsUpdate); }

  [[nodiscard]] store::ObjectsOf<Attribute> attributes() const { return get(fields().attributes); }
  /// The first attribute of exactly that key, or none.
  [[nodiscard]] Attribute* attributeForKey(const QString& key) const;
  [[nodiscard]] QList<Attribute*> attributesSortedByTitle() const;
  /// Those that can be animated, by title: the rows below the component in the timeline.
  [[nodiscard]] QList<Attribute*> children() const;
  /// 1 all attributes are animated, 0 none, -1 some.
  [[nodiscard]] int animateable() const;
  /// 1 animates every attribute, anything else none.
  void setAnimateable(int animateable);

  [[nodiscard]] static QString previewOutputPort() { return QStringLiteral("outputImage"); }
  /// Loads the composition from its bytes, else from its file, whose bytes are then kept.
  [[nodiscard]] foundation::Result<void> initializeQuartzComposition();
  /// None when the composition cannot be loaded.
  [[nodiscard]] runtime::CompositionRenderer* renderer() const;
  [[nodiscard]] const ComponentProgram* program() const;
  void setAttributeValuesOnQuartzComposition();
  /// Points the component at another version of its file. Attributes whose input and type are still
  /// there keep their values; those of new inputs are added, those of vanished ones removed. On
  /// failure nothing changes.
  [[nodiscard]] foundation::Result<void> updateWithFile(const QString& path, QStringList& warnings);

  /// The form in which components are copied, with all attributes.
  [[nodiscard]] virtual foundation::PropertyDictionary dictionaryWithData() const;
  /// What file browsers are told: "title" and "attributes".
  [[nodiscard]] foundation::PropertyDictionary componentInfo() const;
  /// Writes title and values to the log.
  void bugInfo() const;

  /// Announces every attribute by its key on the component, so that what is bound to a component by
  /// attribute key refreshes.
  enum class Announced { All, OnlyAnimateable };
  void sendChangeNotificationForValues(Announced which);
  void attributeValueChanged() { announce(QStringLiteral("attributes")); }
  /// Called by its attributes for every change of their values.
  virtual void attributeDidChange(const Attribute& attribute);

 protected:
  explicit AbstractComponent(const Declaration& declaration);
  /// The renderer if it was made already.
  [[nodiscard]] runtime::CompositionRenderer* madeRenderer() const { return m_renderer.get(); }

  /// Takes the file's title and makes an attribute of each of its inputs. The component must be in
  /// a context.
  [[nodiscard]] foundation::Result<void> initializeWithFile(const QString& path,
                                                            const InputValues& inputValues,
                                                            QStringList& warnings);
  /// Sets everything but the attributes, which it makes.
  void initializeWithDictionary(const foundation::PropertyDictionary& dictionaryData);
  [[nodiscard]] virtual bool shallCreateAttributeForKey(const QString&) const { return true; }
  /// Where a file that cannot be used as it is lies in a form that can.
  [[nodiscard]] virtual foundation::Result<QString> usablePath(const QString& path) const {
    return path;
  }
  /// Called when a new renderer is there, before the attributes' values are set on it.
  virtual void setupRenderer(runtime::CompositionRenderer& renderer) const { Q_UNUSED(renderer) }
  Attribute* addAttribute(std::unique_ptr<Attribute> attribute);

  void awakeFromFetch() override;
  void awakeFromReplay() override;
  void didLeaveContext() override;
  void valueDidChange(const QString& key) override;
  [[nodiscard]] QVariant valueForUndefinedKey(const QString& key) const override;
  bool setValueForUndefinedKey(const QVariant& value, const QString& key) override;

 private:
  [[nodiscard]] const Declaration& fields() const {
    return static_cast<const Declaration&>(entity());
  }
  void dropRenderer() const;
  void readLabelsOfPorts();

  mutable std::shared_ptr<const ComponentProgram> m_program;
  mutable std::unique_ptr<runtime::CompositionRenderer> m_renderer;
  mutable bool m_failedToLoad = false;
};

}  // namespace model
