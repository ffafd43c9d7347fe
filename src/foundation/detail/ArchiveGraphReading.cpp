#include "foundation/detail/ArchiveGraphReading.h"

namespace foundation::detail {

namespace {

using Item = ArchiveGraph::Item;
using Object = ArchiveGraph::Object;
using Group = ArchiveGraph::Group;

constexpr int kMaxValues = 1'000'000;

/// The first value of the numbered group when that group has the wanted type.
const Item* firstItem(const Object& object, qsizetype group, const char* types) {
  if (group >= object.groups.size() || object.groups[group].types != types) return nullptr;
  return object.groups[group].items.isEmpty() ? nullptr : &object.groups[group].items.first();
}

double real(const Item& item) {
  if (const double* v = std::get_if<double>(&item)) return *v;
  const qint64* v = std::get_if<qint64>(&item);
  return v ? static_cast<double>(*v) : 0;
}

ArchiveValue unknown(const QByteArray& className) {
  return ArchiveObject{QString::fromUtf8(className), {}};
}

// Numbers, points, sizes and rectangles, in single or double precision.
ArchiveValue valueOfGroup(const Group& group) {
  const QList<Item>& items = group.items;
  if (group.types.contains("Rect=") && items.size() == 4)
    return QRectF(real(items[0]), real(items[1]), real(items[2]), real(items[3]));
  if (group.types.contains("Point=") && items.size() == 2)
    return QPointF(real(items[0]), real(items[1]));
  if (group.types.contains("Size=") && items.size() == 2)
    return QSizeF(real(items[0]), real(items[1]));
  if (items.size() != 1) return unknown("NSValue");
  if (const double* v = std::get_if<double>(&items[0])) return *v;
  if (const qint64* v = std::get_if<qint64>(&items[0]))
    return group.types == "B" ? ArchiveValue(*v != 0) : ArchiveValue(*v);
  return unknown("NSValue");
}

// The colour's space stands first: 1 and 2 are red-green-blue, 3 and 4 grey, 5 is ink.
ArchiveValue color(const Object& object) {
  const Item* space = firstItem(object, 0, "c");
  if (!space || object.groups.size() < 2) return unknown("NSColor");
  const qint64* kind = std::get_if<qint64>(space);
  const QList<Item>& c = object.groups[1].items;
  if (kind && (*kind == 1 || *kind == 2) && c.size() == 4)
    return Color{real(c[0]), real(c[1]), real(c[2]), real(c[3])};
  if (kind && (*kind == 3 || *kind == 4) && c.size() == 2)
    return Color{real(c[0]), real(c[0]), real(c[0]), real(c[1])};
  if (kind && *kind == 5 && c.size() == 5) {
    const double light = 1 - real(c[3]);
    return Color{(1 - real(c[0])) * light, (1 - real(c[1])) * light, (1 - real(c[2])) * light,
                 real(c[4])};
  }
  return unknown("NSColor");
}

}  // namespace

ArchiveGraphReading::ArchiveGraphReading(const ArchiveGraph& graph)
    : m_graph(graph), m_open(static_cast<size_t>(graph.objects.size())), m_budget(kMaxValues) {}

Result<ArchiveValue> ArchiveGraphReading::read() {
  ArchiveValue out;
  if (!m_graph.root.isEmpty() && !m_graph.root.first().items.isEmpty())
    out = value(m_graph.root.first().items.first());
  if (m_problem.isEmpty()) return out;
  return failure(QStringLiteral("The archive cannot be read"), {}, m_problem);
}

void ArchiveGraphReading::fail(const char* reason) {
  if (m_problem.isEmpty()) m_problem = QString::fromLatin1(reason);
}

ArchiveValue ArchiveGraphReading::value(const Item& item) {
  const auto* target = std::get_if<ArchiveGraph::ObjectReference>(&item);
  if (!target || !m_problem.isEmpty()) return {};
  const auto index = static_cast<size_t>(target->index);
  if (m_open[index]) return fail("an object that contains itself"), ArchiveValue();
  if (--m_budget < 0) return fail("shared objects expand beyond all bounds"), ArchiveValue();
  m_open[index] = true;
  ArchiveValue out = objectValue(m_graph.objects[target->index]);
  m_open[index] = false;
  return out;
}

ArchiveValue ArchiveGraphReading::objectValue(const Object& object) {
  if (m_graph.isKindOf(object, "NSString")) {
    const Item* text = firstItem(object, 0, "+");
    const auto* bytes = text ? std::get_if<QByteArray>(text) : nullptr;
    return bytes ? QString::fromUtf8(*bytes) : QString(QLatin1String(""));
  }
  if (m_graph.isKindOf(object, "NSDictionary")) return dictionary(object);
  if (m_graph.isKindOf(object, "NSArray") || m_graph.isKindOf(object, "NSSet"))
    return array(object);
  if (m_graph.isKindOf(object, "NSValue") && object.groups.size() == 2)
    return valueOfGroup(object.groups[1]);
  if (m_graph.isKindOf(object, "NSColor")) return color(object);
  if (m_graph.isKindOf(object, "NSData") && object.groups.size() == 2 &&
      !object.groups[1].items.isEmpty())
    if (const auto* bytes = std::get_if<QByteArray>(&object.groups[1].items.first())) return *bytes;
  if (m_graph.isKindOf(object, "NSImage")) return image(object);
  return unknown(object.classIndex < 0 ? QByteArray() : m_graph.classes[object.classIndex].name);
}

// The picture file of the image's first bitmap.
ArchiveValue ArchiveGraphReading::image(const Object& object) const {
  for (const Group& group : object.groups) {
    const auto* target = group.items.isEmpty()
                             ? nullptr
                             : std::get_if<ArchiveGraph::ObjectReference>(&group.items.first());
    if (!target || !m_graph.isKindOf(m_graph.objects[target->index], "NSBitmapImageRep")) continue;
    for (const Group& part : m_graph.objects[target->index].groups) {
      const auto* bytes =
          part.items.isEmpty() ? nullptr : std::get_if<QByteArray>(&part.items.first());
      if (part.types.startsWith('[') && bytes) return ArchiveImage{*bytes};
    }
  }
  return unknown("NSImage");
}

// A count, then as many objects.
ArchiveValue ArchiveGraphReading::array(const Object& object) {
  ArchiveArray out;
  for (qsizetype i = 1; i < object.groups.size(); ++i)
    if (const Item* item = firstItem(object, i, "@")) out.append(value(*item));
  return out;
}

ArchiveValue ArchiveGraphReading::dictionary(const Object& object) {
  QList<ArchiveDictionary::Entry> entries;
  for (qsizetype i = 1; i + 1 < object.groups.size(); i += 2) {
    const Item* key = firstItem(object, i, "@");
    const Item* item = firstItem(object, i + 1, "@");
    if (!key || !item) continue;
    const ArchiveValue name = value(*key);
    ArchiveValue content = value(*item);
    if (const QString* text = name.as<QString>())
      entries.append(ArchiveDictionary::Entry(*text, std::move(content)));
  }
  return ArchiveDictionary(std::move(entries));
}

}  // namespace foundation::detail
