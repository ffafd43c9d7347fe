#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "foundation/Result.h"
#include "model/Attribute.h"

namespace runtime {
class CompositionRenderer;
}

namespace model {

/// One graphic element: a composition file, held as bytes, whose published inputs are attributes.
/// Owns its attributes and its renderer.
class AbstractComponent {
 public:
  AbstractComponent();
  virtual ~AbstractComponent();
  AbstractComponent(const AbstractComponent&) = delete;
  AbstractComponent& operator=(const AbstractComponent&) = delete;

  /// The file that the component was made from.
  [[nodiscard]] const QString& compositionFilename() const { return m_compositionFilename; }
  [[nodiscard]] const QByteArray& quartzCompositionData() const { return m_quartzCompositionData; }
  [[nodiscard]] const QString& title() const { return m_title; }
  void setTitle(const QString& title) { m_title = title; }
  /// Seconds; shown from the start to the end time, both included.
  [[nodiscard]] double startTime() const { return m_startTime; }
  void setStartTime(double time) { m_startTime = time; }
  [[nodiscard]] double endTime() const { return m_endTime; }
  void setEndTime(double time) { m_endTime = time; }
  [[nodiscard]] double duration() const { return m_endTime - m_startTime; }
  /// A negative duration is ignored.
  void setDuration(double duration);
  /// An end before the start becomes the start, a start after the end the end.
  [[nodiscard]] double validatedEndTime(double proposed) const;
  [[nodiscard]] double validatedStartTime(double proposed) const;
  /// The time that attributes are read at.
  [[nodiscard]] virtual double renderTimepoint() const { return 0; }
  [[nodiscard]] bool visible() const;

  [[nodiscard]] const std::vector<std::unique_ptr<Attribute>>& attributes() const {
    return m_attributes;
  }
  /// The first attribute of exactly that key, or none.
  [[nodiscard]] Attribute* attributeForKey(const QString& key) const;
  [[nodiscard]] QList<Attribute*> attributesSortedByTitle() const;
  /// 1 all attributes are animated, 0 none, -1 some.
  [[nodiscard]] int animateable() const;
  /// 1 animates every attribute, anything else none.
  void setAnimateable(int animateable);

  /// None before the composition was loaded.
  [[nodiscard]] runtime::CompositionRenderer* renderer() const { return m_renderer.get(); }
  void setAttributeValuesOnQuartzComposition();

 protected:
  /// Input values that replace the file's own when a component is made, by input key.
  using InputValues = QMap<QString, AttributeValue>;

  /// Loads the composition from its bytes, else from its file, whose bytes are then kept.
  [[nodiscard]] foundation::Result<void> initializeQuartzComposition();
  /// Takes the file's title and makes an attribute of each of its inputs.
  [[nodiscard]] foundation::Result<void> initializeWithFile(const QString& path,
                                                            const InputValues& inputValues,
                                                            QStringList& warnings);
  [[nodiscard]] virtual bool shallCreateAttributeForKey(const QString&) const { return true; }
  Attribute* addAttribute(std::unique_ptr<Attribute> attribute);

 private:
  [[nodiscard]] AttributeValue initialValue(const QString& key, const InputValues& inputValues,
                                            QStringList& warnings) const;

  QString m_compositionFilename;
  QByteArray m_quartzCompositionData;
  QString m_title;
  double m_startTime = 0;
  double m_endTime = 0;
  std::vector<std::unique_ptr<Attribute>> m_attributes;
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;
};

}  // namespace model
