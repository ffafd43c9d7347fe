// Opening and writing the store of documents of 10 to 10,000 components, beside reading and writing
// the same contents as a plain property list. Opened twice: as objects that only hold their values,
// which is the store alone, and as those of the model, which wake up.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <tuple>

#include "foundation/PropertyList.h"
#include "model/Composition.h"
#include "model/ModelEntities.h"
#include "model/StandardComponents.h"
#include "store/StoreSnapshot.h"
#include "store/XmlStore.h"

namespace {

using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;

/// The median of five runs, in milliseconds.
template <typename Operation>
double milliseconds(const Operation& operation) {
  std::array<double, 5> runs{};
  for (double& run : runs) {
    QElapsedTimer timer;
    timer.start();
    operation();
    run = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
  }
  std::sort(runs.begin(), runs.end());
  return runs[2];
}

/// Holds the values of an entity and does nothing with them.
class Plain : public store::ManagedObject {
 public:
  explicit Plain(const store::Entity& entity) : ManagedObject(entity) {}
};

store::EntityFactories plainEntities() {
  store::EntityFactories factories;
  for (const store::Entity* entity : std::initializer_list<const store::Entity*>{
           &model::Composition::declaration(), &model::QuartzComponent::declaration(),
           &model::Attribute::declaration(), &model::StopFrame::declaration(),
           &model::Ruler::declaration()})
    factories.insert(entity->name(), [entity] { return std::make_unique<Plain>(*entity); });
  return factories;
}

/// Text components with a few key frames each.
void fill(model::Composition& composition, int count) {
  const store::UndoSuspension suspension(*composition.context());
  const auto standard = model::StandardComponents::located();
  const auto path = standard.pathOf(QStringLiteral("Text"));
  if (!path) qFatal("no standard components in %s", qPrintable(standard.folder()));
  QStringList warnings;
  auto* first = composition.addComponenWithQuartzCompositionFile(*path, {}, warnings);
  if (!first) qFatal("%s", qPrintable(warnings.join(u' ')));
  for (int i = 0; i < 4; ++i)
    first->attributeForKey(QStringLiteral("originX"))->addTimepoint(i * 0.5, 100.0 * i);
  const PropertyDictionary dictionary = first->dictionaryWithData();
  for (int i = 1; i < count; ++i)
    (void)model::QuartzComponent::createWithDictionaryData(dictionary, composition, warnings);
}

/// The tree with long data as names, and that data once, as the store has it.
PropertyValue withoutBlocks(const PropertyValue& value, PropertyDictionary& blocks) {
  if (value.isData() && value.toData().size() > 57) {
    const QString name = QString::number(qHash(value.toData()), 16);
    blocks.insert(name, value);
    return name;
  }
  if (value.isArray()) {
    PropertyArray items;
    for (const PropertyValue& item : value.array()) items.append(withoutBlocks(item, blocks));
    return items;
  }
  if (value.isDictionary()) {
    PropertyDictionary entries;
    for (const auto& [key, item] : value.dictionary())
      entries.insert(key, withoutBlocks(item, blocks));
    return entries;
  }
  return value;
}

void measure(int count) {
  store::ObjectContext context;
  auto* composition = context.insert(
      std::make_unique<model::Composition>(model::VideoResolution(QStringLiteral("HD 1080p50"))));
  fill(*composition, count);
  const QByteArray bytes = store::XmlStore(model::modelEntities()).write(context);
  PropertyDictionary blocks;
  PropertyValue list = withoutBlocks(store::storeSnapshot(context), blocks);
  list = PropertyArray{list, blocks};
  const QByteArray listBytes = foundation::PropertyList::toXml(list).value();

  const auto open = [&](const store::EntityFactories& factories) {
    store::ObjectContext opened;
    store::XmlStore file(factories);
    if (const auto read = file.read(bytes, {}, opened); !read)
      qFatal("%s", qPrintable(read.error().text()));
  };
  store::ObjectContext held;
  store::XmlStore file(plainEntities());
  if (!file.read(bytes, {}, held)) qFatal("cannot be read");
  const double listRead =
      milliseconds([&] { (void)foundation::PropertyList::fromData(listBytes, {}); });
  const double read = milliseconds([&] { open(plainEntities()); });
  const double awake = milliseconds([&] { open(model::modelEntities()); });
  const double listWrite =
      milliseconds([&] { std::ignore = foundation::PropertyList::toXml(list); });
  const double write = milliseconds([&] { std::ignore = file.write(held); });
  std::printf("%10d %9zu %9.2f %9.2f %10.2f %10.2f %7.2f %12.2f %11.2f %11.2f %7.2f\n", count,
              context.objects().size(), static_cast<double>(bytes.size()) / 1e6,
              static_cast<double>(listBytes.size()) / 1e6, listRead, read, read / listRead, awake,
              listWrite, write, write / listWrite);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication app(argc, argv);
  std::printf("%10s %9s %9s %9s %10s %10s %7s %12s %11s %11s %7s\n", "components", "objects",
              "store, MB", "list, MB", "list, ms", "store, ms", "ratio", "awake, ms", "list w, ms",
              "write, ms", "ratio");
  for (const int count : {10, 100, 1000, 10000}) measure(count);
  return 0;
}
