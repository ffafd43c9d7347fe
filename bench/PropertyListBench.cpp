// Reading a large composition into the patch model, XML and binary, against libplist, which only
// parses into its own tree. Everything is the median of one run.
#include <plist/plist.h>

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "foundation/PropertyList.h"
#include "foundation/detail/PlistBinaryBuilder.h"
#include "foundation/detail/PlistBinaryCheck.h"
#include "foundation/detail/PlistXmlBuilder.h"
#include "foundation/detail/PlistXmlCheck.h"
#include "quartz/QuartzComposition.h"

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyList;
using foundation::PropertyValue;
using quartz::QuartzComposition;

namespace {

PropertyValue portState(int i) {
  return PropertyDictionary{{QStringLiteral("value"), PropertyValue(i * 0.37 - 11.0 / (i + 1))}};
}

// The shape of a node in a composition file: a dozen port states, a name, a placement blob.
PropertyValue node(int i) {
  static const char16_t* const kPorts[] = {u"inputX",        u"inputY",       u"inputZ",
                                           u"inputRX",       u"inputRY",      u"inputRZ",
                                           u"inputWidth",    u"inputHeight",  u"inputColor",
                                           u"inputBlending", u"inputCulling", u"inputZBuffer"};
  QList<PropertyDictionary::Entry> ports;
  for (int p = 0; p < 12; ++p) ports.append({QString::fromUtf16(kPorts[p]), portState(i * 12 + p)});
  const QByteArray placement =
      QByteArray("\x04\x0bstreamtyped", 13) + QByteArray::number(i * 7919).repeated(18);
  PropertyDictionary state{
      {QStringLiteral("customInputPortStates"), PropertyDictionary::fromEntries(ports)},
      {QStringLiteral("enabled"), PropertyValue(i % 5 != 0)},
      {QStringLiteral("userInfo"), PropertyValue(placement)},
      {QStringLiteral("version"), PropertyValue(i % 3)},
      {QStringLiteral("title"),
       PropertyValue(QStringLiteral("Element %1 of the lower third").arg(i))}};
  return PropertyDictionary{
      {QStringLiteral("class"), PropertyValue(u"QCSprite")},
      {QStringLiteral("key"), PropertyValue(QStringLiteral("QCSprite_%1").arg(i))},
      {QStringLiteral("state"), PropertyValue(state)}};
}

PropertyValue macro(const QString& key, const PropertyArray& nodes) {
  return PropertyDictionary{
      {QStringLiteral("class"), PropertyValue(u"QCPatch")},
      {QStringLiteral("key"), PropertyValue(key)},
      {QStringLiteral("state"),
       PropertyValue(PropertyDictionary{{QStringLiteral("nodes"), PropertyValue(nodes)}})}};
}

// A root patch with macros of forty nodes.
PropertyValue composition(qsizetype wantedBytes) {
  PropertyArray macros;
  PropertyArray nodes;
  const auto one = PropertyList::toXml(node(1));
  const auto count = static_cast<int>(wantedBytes / (one ? one->size() * 1.15 : 2000));
  for (int i = 0; i < count; ++i) {
    nodes.append(node(i));
    if (nodes.size() < 40) continue;
    macros.append(macro(QStringLiteral("Patch_%1").arg(macros.size() + 1), nodes));
    nodes.clear();
  }
  return PropertyDictionary{{QStringLiteral("rootPatch"), macro(QStringLiteral("Root"), macros)}};
}

double median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

template <typename Work>
double milliseconds(Work work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

struct Times {
  std::vector<double> parse, free, check, build, model, whole;
};

void libraryTimes(const QByteArray& bytes, Times& times) {
  plist_t root = nullptr;
  times.parse.push_back(milliseconds(
      [&] { plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root); }));
  times.free.push_back(milliseconds([&] { plist_free(root); }));
}

// The steps of reading, one by one. They sum up to less than the whole, which runs first and finds
// no memory that is already mapped.
void stepTimes(const QByteArray& bytes, Times& times) {
  const bool binary = bytes.startsWith("bplist");
  foundation::detail::PlistBinaryLayout layout;
  PropertyValue value;
  times.check.push_back(milliseconds([&] {
    if (binary ? foundation::detail::checkPlistBinary(bytes, layout)
               : foundation::detail::checkPlistXml(bytes))
      std::puts("refused");
  }));
  times.build.push_back(milliseconds([&] {
    value = binary ? foundation::detail::buildCheckedBinary(layout)
                   : foundation::detail::buildCheckedXml(bytes);
  }));
  std::unique_ptr<QuartzComposition> model;
  times.model.push_back(milliseconds([&] {
    model = QuartzComposition::compositionWithDictionary(std::move(value.editDictionary()));
  }));
}

// The model outlives the measurement, as it outlives reading in the program.
void wholeTime(const QByteArray& bytes, Times& times) {
  foundation::Result<std::unique_ptr<QuartzComposition>> model;
  times.whole.push_back(milliseconds(
      [&] { model = QuartzComposition::compositionWithData(bytes, QStringLiteral("bench")); }));
  if (!model) std::puts("cannot be read");
}

void compare(const char* form, const QByteArray& bytes) {
  Times times;
  for (int i = 0; i < 9; ++i) {
    libraryTimes(bytes, times);
    wholeTime(bytes, times);
    stepTimes(bytes, times);
  }
  const double parse = median(times.parse);
  const double free = median(times.free);
  const double whole = median(times.whole);
  std::printf("%-6s %5.1f MB  libplist %6.1f ms + free %5.1f ms  model %6.1f ms  ratio %.2f", form,
              static_cast<double>(bytes.size()) / 1e6, parse, free, whole, whole / (parse + free));
  std::printf(" (without free %.2f)\n", whole / parse);
  std::printf("       steps: check %.1f ms, values %.1f ms, patches %.1f ms\n", median(times.check),
              median(times.build), median(times.model));
}

}  // namespace

int main() {
  constexpr qsizetype kSize = 20'000'000;
  const auto xml = PropertyList::toXml(composition(kSize));
  if (!xml) return 1;
  compare("xml", *xml);
  const auto small = PropertyList::toBinary(composition(kSize));
  if (!small) return 1;
  const auto factor = static_cast<double>(kSize) / static_cast<double>(small->size());
  const auto binary = PropertyList::toBinary(composition(static_cast<qsizetype>(kSize * factor)));
  if (!binary) return 1;
  compare("binary", *binary);
  return 0;
}
