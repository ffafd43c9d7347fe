#pragma once

#include <QCoreApplication>
#include <QList>
#include <utility>

#include "foundation/Result.h"
#include "model/Attribute.h"

namespace model {
class Composition;
}

namespace document {

/// Key frames of one attribute, apart from it.
struct KeyFrameTrack {
  QString component;  ///< title of the component that they were copied from
  QString attribute;  ///< title of the attribute
  QString key;
  model::AttributeType type = model::AttributeType::Number;
  QList<std::pair<double, model::AttributeValue>> keyFrames = {};  ///< seconds, ascending
};

/// Key frames apart from their attributes, as a clipboard holds them: as data that is the same
/// again, and as a text that people can read, change in a spreadsheet and paste.
class KeyFrameTable {
  Q_DECLARE_TR_FUNCTIONS(KeyFrameTable)

 public:
  KeyFrameTable() = default;
  /// Those that are selected, in the order of the timeline's rows.
  [[nodiscard]] static KeyFrameTable selectedIn(const model::Composition& composition);

  [[nodiscard]] const QList<KeyFrameTrack>& tracks() const { return m_tracks; }
  [[nodiscard]] bool isEmpty() const { return m_tracks.isEmpty(); }
  /// Of the earliest key frame; 0 in an empty table.
  [[nodiscard]] double firstTime() const;

  /// A line of titles, then one for each key frame; cells are parted by tabs, times are seconds.
  [[nodiscard]] QString toText() const;
  /// Whether the text begins with the line of titles.
  [[nodiscard]] static bool isTable(const QString& text);
  /// Fails with the line that is wrong and why. Lines may come in any order.
  [[nodiscard]] static foundation::Result<KeyFrameTable> fromText(const QString& text);

  [[nodiscard]] foundation::Result<QByteArray> toData() const;
  [[nodiscard]] static foundation::Result<KeyFrameTable> fromData(const QByteArray& data);

 private:
  [[nodiscard]] foundation::Result<void> addLine(const QStringList& cells);
  KeyFrameTrack& trackFor(const KeyFrameTrack& like);

  QList<KeyFrameTrack> m_tracks;
};

}  // namespace document
