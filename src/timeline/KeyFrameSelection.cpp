#include "timeline/KeyFrameSelection.h"

#include "model/Composition.h"

namespace timeline {

using model::Attribute;

QList<double> KeyFrameSelection::timesOf(const Attribute& attribute) {
  return attribute.animateable() ? attribute.sortedKeyFrames() : QList<double>();
}

QList<KeyFrameReference> KeyFrameSelection::all() const {
  QList<KeyFrameReference> result;
  for (const model::QuartzComponent* component : m_composition.componentsSortedByInverseZLevel())
    for (Attribute* attribute : component->children())
      for (const double time : timesOf(*attribute)) result.append({attribute, time});
  return result;
}

QList<KeyFrameReference> KeyFrameSelection::keyFrames() const {
  QList<KeyFrameReference> result;
  for (const model::QuartzComponent* component : m_composition.componentsSortedByInverseZLevel())
    for (Attribute* attribute : component->children()) {
      if (attribute->selectedTimepoints().isEmpty()) continue;
      for (const double time : timesOf(*attribute))
        if (attribute->isTimePointSelected(time)) result.append({attribute, time});
    }
  return result;
}

bool KeyFrameSelection::isEmpty() const {
  return m_composition.attributesWithSelectedKeyframes().isEmpty();
}

bool KeyFrameSelection::contains(const KeyFrameReference& keyFrame) {
  return keyFrame.attribute && keyFrame.attribute->isTimePointSelected(keyFrame.time);
}

void KeyFrameSelection::add(const KeyFrameReference& keyFrame) {
  if (keyFrame.attribute && keyFrame.attribute->values().contains(keyFrame.time))
    keyFrame.attribute->setTimePointSelected(keyFrame.time, true);
}

void KeyFrameSelection::remove(const KeyFrameReference& keyFrame) {
  if (keyFrame.attribute) keyFrame.attribute->setTimePointSelected(keyFrame.time, false);
}

void KeyFrameSelection::clear() {
  m_composition.deselectAllKeyFrames();
}

void KeyFrameSelection::set(const QList<KeyFrameReference>& keyFrames) {
  clear();
  for (const KeyFrameReference& keyFrame : keyFrames) add(keyFrame);
}

}  // namespace timeline
