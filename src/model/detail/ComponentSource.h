#pragma once

#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "model/detail/SourceReader.h"

namespace model {

/// Adds the component that one object of a source describes to a composition. Throws SourceFault.
class ComponentSource {
 public:
  ComponentSource(const SourceObject& source, const QString& baseFolder,
                  const StandardComponents& standardComponents);
  void addTo(Composition& composition, QStringList& warnings);

 private:
  [[nodiscard]] QString componentPath() const;
  void readPlace();
  void readTimes();
  void readInputs();
  void readKeyFrames();
  void readPermissions();
  void setInput(const SourceObject& inputs, const QString& key);
  bool setMemberOfRichFont(const QString& key, const QJsonValue& json);
  void addKeyFrames(Attribute& attribute, const QJsonArray& frames, const QString& place);
  [[nodiscard]] Attribute& attribute(const QString& key, const QString& place) const;
  [[nodiscard]] AttributeValue valueFor(const Attribute& attribute, const QJsonValue& json,
                                        const QString& place) const;
  [[nodiscard]] AttributeValue indexValue(const Attribute& attribute, const QJsonValue& json,
                                          const QString& place) const;
  [[nodiscard]] AttributeValue fontValue(const QJsonValue& json, const QString& place) const;
  [[nodiscard]] QString filePath(const QJsonValue& json, const QString& place) const;
  [[nodiscard]] QImage image(const QJsonValue& json, const QString& place) const;

  const SourceObject& m_source;
  QString m_baseFolder;
  const StandardComponents& m_standardComponents;
  QuartzComponent* m_component = nullptr;
};

}  // namespace model
