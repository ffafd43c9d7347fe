#include "document/KeyFrameClipboard.h"

#include "document/CompositionDocument.h"
#include "model/AttributeWords.h"

namespace document {

using foundation::failure;
using foundation::Result;
using model::Attribute;
using model::Composition;
using model::QuartzComponent;

namespace {

bool takes(const Attribute& attribute, const KeyFrameTrack& track) {
  return attribute.animationPossible() && model::AttributeWords::typeWord(attribute.type()) ==
                                              model::AttributeWords::typeWord(track.type);
}

bool comesFromOneComponent(const KeyFrameTable& table) {
  const auto& tracks = table.tracks();
  return std::all_of(tracks.begin(), tracks.end(), [&](const KeyFrameTrack& track) {
    return track.component == tracks.first().component;
  });
}

void addTo(Attribute& attribute, const KeyFrameTrack& track, double offset) {
  for (const auto& [time, value] : track.keyFrames) {
    // One that stands there but for rounding is replaced.
    const double at = attribute.animateable()
                          ? attribute.values().timepointNear(time + offset).value_or(time + offset)
                          : time + offset;
    attribute.addTimepoint(at, value);
    attribute.setTimePointSelected(at, true);
  }
}

}  // namespace

bool KeyFrameClipboard::canCopy() const {
  const Composition* composition = m_document.composition();
  return composition && !composition->attributesWithSelectedKeyframes().isEmpty();
}

std::unique_ptr<QMimeData> KeyFrameClipboard::copy() const {
  if (!canCopy()) return nullptr;
  const KeyFrameTable table = KeyFrameTable::selectedIn(*m_document.composition());
  const auto bytes = table.toData();
  if (table.isEmpty() || !bytes) return nullptr;
  auto data = std::make_unique<QMimeData>();
  data->setData(type(), *bytes);
  data->setText(table.toText());
  return data;
}

std::unique_ptr<QMimeData> KeyFrameClipboard::cut() {
  auto data = copy();
  if (!data) return nullptr;
  const store::UndoStep step(m_document.context(), tr("Cut Key Frames"));
  deleteSelected();
  return data;
}

void KeyFrameClipboard::deleteSelected() {
  if (!canCopy()) return;
  const store::UndoStep step(m_document.context(), tr("Delete Key Frames"));
  for (Attribute* attribute : m_document.composition()->attributesWithSelectedKeyframes())
    attribute->deleteSelectedTimepoints();
}

bool KeyFrameClipboard::holdsKeyFrames(const QMimeData& data) {
  return data.hasFormat(type()) || (data.hasText() && KeyFrameTable::isTable(data.text()));
}

Result<void> KeyFrameClipboard::paste(const QMimeData& data, Attribute* target) {
  Composition* composition = m_document.composition();
  if (!composition) return failure(tr("The document holds no composition."));
  const auto table = data.hasFormat(type()) ? KeyFrameTable::fromData(data.data(type()))
                                            : KeyFrameTable::fromText(data.text());
  if (!table) return tl::unexpected(table.error());
  const auto destinations = destinationsOf(*table, target);
  if (!destinations) return tl::unexpected(destinations.error());

  const store::UndoStep step(m_document.context(), tr("Paste Key Frames"));
  double at = composition->editorTimepoint();
  static_cast<void>(composition->validateEditorTimepoint(at));
  composition->deselectAllKeyFrames();
  for (const Destination& destination : *destinations)
    addTo(*destination.attribute, *destination.track, at - table->firstTime());
  return {};
}

Result<KeyFrameClipboard::Destinations> KeyFrameClipboard::destinationsOf(
    const KeyFrameTable& table, Attribute* target) const {
  const auto& tracks = table.tracks();
  if (target && tracks.size() == 1) {
    if (takes(*target, tracks.first())) return Destinations{{&tracks.first(), target}};
    const auto word = model::AttributeWords::typeWord;
    return failure(tr("\"%1\" is of the type %2; the copied key frames are of the type %3.")
                       .arg(target->title(), word(target->type()), word(tracks.first().type)));
  }
  Destinations found;
  for (const KeyFrameTrack& track : tracks) {
    const qsizetype before = found.size();
    for (const QuartzComponent* component : componentsFor(track, table, target))
      if (Attribute* attribute = component->attributeForKey(track.key);
          attribute && takes(*attribute, track))
        found.append({&track, attribute});
    if (found.size() == before)
      return failure(tr("Select a component that has an attribute \"%1\" of the type %2.")
                         .arg(track.attribute, model::AttributeWords::typeWord(track.type)));
  }
  return found;
}

QList<QuartzComponent*> KeyFrameClipboard::componentsFor(const KeyFrameTrack& track,
                                                         const KeyFrameTable& table,
                                                         const Attribute* target) const {
  const Composition& composition = *m_document.composition();
  const QList<QuartzComponent*> selected = composition.selectedComponents();
  if (comesFromOneComponent(table)) {
    for (QuartzComponent* component : composition.components())
      if (target && component == target->component()) return {component};
    if (!selected.isEmpty()) return selected;
  }
  // Several components were copied from, or nothing is selected: each goes back by its title.
  const auto titled = [&track](QList<QuartzComponent*> components) {
    components.removeIf([&track](const QuartzComponent* component) {
      return component->title() != track.component;
    });
    return components;
  };
  const QList<QuartzComponent*> chosen = titled(selected);
  return chosen.isEmpty() ? titled(composition.componentArray()) : chosen;
}

}  // namespace document
