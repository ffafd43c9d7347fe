// Reading a large composition, XML and binary: the parsing library alone against the whole reader,
// which also checks the bytes and builds the values. Ratios are of the medians of one run.
#include <plist/plist.h>

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "foundation/PropertyList.h"

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyList;
using foundation::PropertyValue;

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

PropertyValue composition(qsizetype wantedBytes) {
  PropertyArray groups;
  PropertyArray nodes;
  const auto one = PropertyList::toXml(node(1));
  const auto count = static_cast<int>(wantedBytes / (one ? one->size() * 1.15 : 2000));
  for (int i = 0; i < count; ++i) {
    nodes.append(node(i));
    if (nodes.size() < 40) continue;
    groups.append(PropertyDictionary{{QStringLiteral("nodes"), PropertyValue(nodes)}});
    nodes.clear();
  }
  return PropertyDictionary{{QStringLiteral("rootPatch"), PropertyValue(groups)}};
}

double median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

double libraryMs(const QByteArray& bytes) {
  QElapsedTimer timer;
  timer.start();
  plist_t root = nullptr;
  plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
  plist_free(root);
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// The values outlive the measurement, as they outlive reading in the program.
double readerMs(const QByteArray& bytes) {
  QElapsedTimer timer;
  timer.start();
  const auto value = PropertyList::fromData(bytes, QStringLiteral("bench"));
  const auto elapsed = static_cast<double>(timer.nsecsElapsed()) / 1e6;
  if (!value) std::puts("cannot be read");
  return elapsed;
}

void compare(const char* form, const QByteArray& bytes) {
  std::vector<double> library;
  std::vector<double> reader;
  for (int i = 0; i < 9; ++i) {
    library.push_back(libraryMs(bytes));
    reader.push_back(readerMs(bytes));
  }
  const double theirs = median(library);
  const double ours = median(reader);
  std::printf("%-6s %5.1f MB  library %6.1f ms  reader %6.1f ms  ratio %.2f\n", form,
              static_cast<double>(bytes.size()) / 1e6, theirs, ours, ours / theirs);
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
