#include "document/KeyFrameTable.h"

#include <charconv>
#include <cmath>

#include "foundation/PropertyList.h"
#include "foundation/SeparatedText.h"
#include "model/AttributeWords.h"
#include "model/Composition.h"

namespace document {

using foundation::failure;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using foundation::Result;
using model::Attribute;
using model::AttributeType;
using model::AttributeValue;
using ValueCodec = store::CodecOf<AttributeValue>;

namespace {

constexpr qsizetype mostKeyFrames = 100'000;
constexpr double longestTime = 1e6;  ///< seconds; single precision still tells frames apart
enum Column { Component, Title, Key, Type, Time, Value, ColumnCount };

QStringList titles() {
  // Not translated: the text is read again, perhaps on another desktop.
  return {QStringLiteral("Component"), QStringLiteral("Attribute"), QStringLiteral("Key"),
          QStringLiteral("Type"),      QStringLiteral("Seconds"),   QStringLiteral("Value")};
}

/// The shortest text of the time in single precision, which key frames stand at.
QString timeText(double seconds) {
  std::array<char, 64> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(),
                                 static_cast<float>(seconds), std::chars_format::fixed);
  return QString::fromLatin1(text.data(), end.ptr - text.data());
}

std::optional<double> timeOf(const QString& text) {
  bool isNumber = false;
  // Spreadsheets write the decimal point of their language.
  const double seconds = QString(text).replace(u',', u'.').toDouble(&isNumber);
  return isNumber && std::abs(seconds) <= longestTime ? std::optional(seconds) : std::nullopt;
}

}  // namespace

KeyFrameTable KeyFrameTable::selectedIn(const model::Composition& composition) {
  KeyFrameTable table;
  for (const auto* component : composition.componentsSortedByInverseZLevel())
    for (const Attribute* attribute : component->children()) {
      if (!attribute->animateable() || attribute->selectedTimepoints().isEmpty()) continue;
      KeyFrameTrack track{component->title(), attribute->title(), attribute->key(),
                          attribute->type()};
      for (const double time : attribute->sortedKeyFrames())
        if (attribute->isTimePointSelected(time))
          track.keyFrames.append({time, attribute->valueForTimepoint(time)});
      if (!track.keyFrames.isEmpty()) table.m_tracks.append(std::move(track));
    }
  return table;
}

double KeyFrameTable::firstTime() const {
  if (isEmpty()) return 0;
  const auto earlier = [](const KeyFrameTrack& a, const KeyFrameTrack& b) {
    return a.keyFrames.first().first < b.keyFrames.first().first;
  };
  return std::min_element(m_tracks.begin(), m_tracks.end(), earlier)->keyFrames.first().first;
}

QString KeyFrameTable::toText() const {
  QList<QStringList> lines{titles()};
  for (const KeyFrameTrack& track : m_tracks)
    for (const auto& [time, value] : track.keyFrames)
      lines.append({track.component, track.attribute, track.key,
                    model::AttributeWords::typeWord(track.type), timeText(time),
                    value.description()});
  return foundation::SeparatedText::write(lines);
}

bool KeyFrameTable::isTable(const QString& text) {
  const QString head = titles().join(u'\t');
  return text.startsWith(head) &&
         (text.size() == head.size() || QStringLiteral("\r\n").contains(text.at(head.size())));
}

Result<KeyFrameTable> KeyFrameTable::fromText(const QString& text) {
  if (!isTable(text)) return failure(tr("The text holds no key frames."));
  const QList<QStringList> lines = foundation::SeparatedText::read(text).lines;
  if (lines.size() > mostKeyFrames) return failure(tr("These are too many key frames."));
  KeyFrameTable table;
  for (qsizetype i = 1; i < lines.size(); ++i) {
    if (lines.at(i).join(QString()).trimmed().isEmpty()) continue;
    if (const auto added = table.addLine(lines.at(i)); !added)
      return failure(tr("Line %1: %2").arg(i + 1).arg(added.error().message));
  }
  if (table.isEmpty()) return failure(tr("The text holds no key frames."));
  for (KeyFrameTrack& track : table.m_tracks)
    std::stable_sort(track.keyFrames.begin(), track.keyFrames.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
  return table;
}

Result<void> KeyFrameTable::addLine(const QStringList& cells) {
  if (cells.size() < ColumnCount)
    return failure(tr("A key frame has %1 cells, here are %2.").arg(ColumnCount).arg(cells.size()));
  const auto type = model::AttributeWords::typeFromWord(cells.at(Type).trimmed());
  if (!type) return failure(tr("\"%1\" is no type that can be animated.").arg(cells.at(Type)));
  const auto time = timeOf(cells.at(Time).trimmed());
  if (!time) return failure(tr("\"%1\" is no time in seconds.").arg(cells.at(Time)));
  auto value = model::AttributeWords::valueFromText(cells.at(Value), *type);
  if (!value)
    return failure(tr("\"%1\" is no value of the type %2.")
                       .arg(cells.at(Value), model::AttributeWords::typeWord(*type)));
  trackFor({cells.at(Component), cells.at(Title), cells.at(Key).trimmed(), *type})
      .keyFrames.append({*time, *value});
  return {};
}

KeyFrameTrack& KeyFrameTable::trackFor(const KeyFrameTrack& like) {
  // Lines of one attribute mostly follow one another.
  for (qsizetype i = m_tracks.size() - 1; i >= 0; --i)
    if (KeyFrameTrack& track = m_tracks[i];
        track.key == like.key && track.component == like.component && track.type == like.type)
      return track;
  m_tracks.append(like);
  return m_tracks.last();
}

Result<QByteArray> KeyFrameTable::toData() const {
  PropertyArray tracks;
  for (const KeyFrameTrack& track : m_tracks) {
    PropertyArray keyFrames;
    for (const auto& [time, value] : track.keyFrames)
      keyFrames.append(PropertyDictionary{{QStringLiteral("time"), time},
                                          {QStringLiteral("value"), ValueCodec::encode(value)}});
    tracks.append(PropertyDictionary{{QStringLiteral("component"), track.component},
                                     {QStringLiteral("attribute"), track.attribute},
                                     {QStringLiteral("key"), track.key},
                                     {QStringLiteral("type"), static_cast<qint64>(track.type)},
                                     {QStringLiteral("keyFrames"), std::move(keyFrames)}});
  }
  return foundation::PropertyList::toBinary(tracks);
}

Result<KeyFrameTable> KeyFrameTable::fromData(const QByteArray& data) {
  const auto stored = foundation::PropertyList::fromData(data, tr("the clipboard"));
  if (!stored) return tl::unexpected(stored.error());
  KeyFrameTable table;
  for (const PropertyValue& entry : stored->array()) {
    const PropertyDictionary& fields = entry.dictionary();
    KeyFrameTrack track{fields[u"component"].toString(), fields[u"attribute"].toString(),
                        fields[u"key"].toString(),
                        static_cast<AttributeType>(fields[u"type"].toInteger())};
    for (const PropertyValue& keyFrame : fields[u"keyFrames"].array()) {
      const double time = keyFrame.dictionary()[u"time"].toDouble();
      AttributeValue value = ValueCodec::decode(keyFrame.dictionary()[u"value"]);
      if (std::abs(time) <= longestTime && !value.isEmpty())
        track.keyFrames.append({time, std::move(value)});
    }
    if (!track.keyFrames.isEmpty()) table.m_tracks.append(std::move(track));
  }
  if (table.isEmpty()) return failure(tr("The clipboard holds no key frames."));
  return table;
}

}  // namespace document
