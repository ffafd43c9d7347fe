#include "foundation/detail/ArchiveGraphBuilder.h"

namespace foundation::detail {

namespace {
using Item = ArchiveGraph::Item;
constexpr int kMaxDepth = 200;
}  // namespace

Result<ArchiveGraph> ArchiveGraphBuilder::build(const ArchiveValue& value) {
  m_graph.root.append({"@", {item(value)}});
  if (m_problem.isEmpty()) return std::move(m_graph);
  return failure(QStringLiteral("The archive cannot be written"), {}, m_problem);
}

qsizetype ArchiveGraphBuilder::classNamed(const char* name, qint64 version, qsizetype parent) {
  for (qsizetype i = 0; i < m_graph.classes.size(); ++i)
    if (m_graph.classes[i].name == name) return i;
  m_graph.classes.append({name, version, parent});
  return m_graph.classes.size() - 1;
}

ArchiveGraph::ObjectReference ArchiveGraphBuilder::add(qsizetype classIndex,
                                                       QList<ArchiveGraph::Group> groups) {
  m_graph.objects.append({classIndex, std::move(groups)});
  return {m_graph.objects.size() - 1};
}

Item ArchiveGraphBuilder::item(const ArchiveValue& value) {
  if (value.isNil() || !m_problem.isEmpty()) return ArchiveGraph::Nil();
  if (const bool* v = value.as<bool>()) return number("c", qint64(*v ? 1 : 0));
  if (const qint64* v = value.as<qint64>()) return number("i", *v);
  if (const double* v = value.as<double>()) return number("d", *v);
  if (const QPointF* v = value.as<QPointF>()) return geometry("{CGPoint=dd}", {v->x(), v->y()});
  if (const QSizeF* v = value.as<QSizeF>())
    return geometry("{CGSize=dd}", {v->width(), v->height()});
  if (const QRectF* v = value.as<QRectF>())
    return geometry("{CGRect={CGPoint=dd}{CGSize=dd}}", {v->x(), v->y(), v->width(), v->height()});
  if (const ArchiveArray* v = value.as<ArchiveArray>()) return array(*v);
  if (const ArchiveDictionary* v = value.as<ArchiveDictionary>()) return dictionary(*v);
  if (const QString* v = value.as<QString>())
    return add(classNamed("NSString", 1, objectClass()), {{"+", {v->toUtf8()}}});
  if (const QByteArray* v = value.as<QByteArray>()) {
    const QByteArray type = '[' + QByteArray::number(v->size()) + "c]";
    const qsizetype parent = classNamed("NSData", 0, objectClass());
    return add(classNamed("NSMutableData", 0, parent), {{"i", {qint64(v->size())}}, {type, {*v}}});
  }
  if (const Color* v = value.as<Color>())
    return add(classNamed("NSColor", 0, objectClass()),
               {{"c", {qint64(1)}}, {"ffff", {v->red, v->green, v->blue, v->alpha}}});
  m_problem = QStringLiteral("an image or an object of another class");
  return ArchiveGraph::Nil();
}

Item ArchiveGraphBuilder::number(const char* type, const Item& value) {
  const qsizetype parent = classNamed("NSValue", 0, objectClass());
  return add(classNamed("NSNumber", 0, parent), {{"*", {QByteArray(type)}}, {type, {value}}});
}

Item ArchiveGraphBuilder::geometry(const char* type, QList<Item> values) {
  return add(classNamed("NSValue", 0, objectClass()),
             {{"*", {QByteArray(type)}}, {type, std::move(values)}});
}

Item ArchiveGraphBuilder::array(const ArchiveArray& items) {
  if (++m_depth > kMaxDepth) m_problem = QStringLiteral("nested too deeply");
  QList<ArchiveGraph::Group> groups{{"i", {qint64(items.size())}}};
  for (const ArchiveValue& one : items) groups.append({"@", {item(one)}});
  --m_depth;
  const qsizetype parent = classNamed("NSArray", 0, objectClass());
  return add(classNamed("NSMutableArray", 0, parent), std::move(groups));
}

Item ArchiveGraphBuilder::dictionary(const ArchiveDictionary& entries) {
  if (++m_depth > kMaxDepth) m_problem = QStringLiteral("nested too deeply");
  QList<ArchiveGraph::Group> groups{{"i", {qint64(entries.entries().size())}}};
  for (const auto& [key, one] : entries.entries()) {
    groups.append({"@", {item(key)}});
    groups.append({"@", {item(one)}});
  }
  --m_depth;
  const qsizetype parent = classNamed("NSDictionary", 0, objectClass());
  return add(classNamed("NSMutableDictionary", 0, parent), std::move(groups));
}

}  // namespace foundation::detail
