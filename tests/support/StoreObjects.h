#pragma once

#include <QRandomGenerator>

#include "store/EntityFactories.h"
#include "store/ObjectContext.h"

template <>
struct store::CodecOf<foundation::PropertyValue> {
  [[nodiscard]] static foundation::PropertyValue encode(const foundation::PropertyValue& value) {
    return value;
  }
  [[nodiscard]] static foundation::PropertyValue decode(const foundation::PropertyValue& stored) {
    return stored;
  }
};

namespace support {

class Item;

/// Holds items.
class Box : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("Box")) {}
    store::ToMany<Item> items = toMany<Item>("items", store::DeleteRule::Cascade);
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  Box() : ManagedObject(declaration()) {}
};

/// An attribute of each common type, and one that takes any value.
class Item : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("Item")) {}
    store::Property<QString> title = property<QString>("title", QStringLiteral("untitled"));
    store::Property<double> x = property<double>("x");
    store::Property<double> y = property<double>("y");
    store::Property<foundation::PropertyValue> any = property<foundation::PropertyValue>("any");
    store::Property<double> shade = transient<double>("shade");
    store::ToOne<Box> box = toOne<Box>("box", "items");
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  Item() : ManagedObject(declaration()) {}
  [[nodiscard]] const QString& title() const { return get(declaration().title); }
  void setTitle(const QString& title) { set(declaration().title, title); }
  [[nodiscard]] double x() const { return get(declaration().x); }
  void setX(double x) { set(declaration().x, x); }
  [[nodiscard]] const foundation::PropertyValue& any() const { return get(declaration().any); }
  void setAny(const foundation::PropertyValue& any) { set(declaration().any, any); }
  void setBox(Box* box) { set(declaration().box, box); }
};

/// The entity "Item" as an older program knows it: without "any", "y" and its box.
class OlderItem : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("Item")) {}
    store::Property<QString> title = property<QString>("title");
    store::Property<double> x = property<double>("x");
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  OlderItem() : ManagedObject(declaration()) {}
  void setX(double x) { set(declaration().x, x); }
};

inline store::EntityFactories storeEntities() {
  return {{QStringLiteral("Box"), [] { return std::make_unique<Box>(); }},
          {QStringLiteral("Item"), [] { return std::make_unique<Item>(); }}};
}

inline store::EntityFactories olderStoreEntities() {
  return {{QStringLiteral("Item"), [] { return std::make_unique<OlderItem>(); }}};
}

/// Values of every kind, odd ones included.
class RandomValues {
 public:
  explicit RandomValues(quint32 seed) : m_random(seed) {}

  [[nodiscard]] int below(int count) { return static_cast<int>(m_random.bounded(count)); }
  [[nodiscard]] foundation::PropertyValue value(int depth = 0) {
    using foundation::PropertyValue;
    switch (below(depth > 3 ? 8 : 10)) {
      case 0:
        return below(2) == 0;
      case 1:
        return below(2) == 0 ? PropertyValue(below(2000) - 1000) : PropertyValue(bits());
      case 2:
        return real();
      case 3:
        return text();
      case 4:
        return data();
      case 5:
        return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(bits() >> (8 + below(40))),
                                              Qt::UTC);
      case 6:
        return PropertyValue::Uid{bits()};
      case 7:
        return {};
      case 8: {
        foundation::PropertyArray items;
        for (int i = below(5); i > 0; --i) items.append(value(depth + 1));
        return items;
      }
      default: {
        foundation::PropertyDictionary entries;
        for (int i = below(5); i > 0; --i) entries.insert(text(), value(depth + 1));
        return entries;
      }
    }
  }
  [[nodiscard]] quint64 bits() { return m_random.generate64(); }
  [[nodiscard]] double real() {
    const quint64 pattern = bits() >> (below(4) == 0 ? 12 : 0);
    double value = 0;
    std::memcpy(&value, &pattern, sizeof value);
    return value;
  }
  [[nodiscard]] QString text() {
    static constexpr char16_t letters[] =
        u"a Z\t\n\r<&>\"'\\\0\x1B\x85\xE4\uFEFF\uFFFE\xD83D\xDE00]";
    QString out;
    for (int i = below(12); i > 0; --i)
      out += QChar(letters[below(static_cast<int>(std::size(letters)) - 1)]);
    return out;
  }
  [[nodiscard]] QByteArray data() {
    QByteArray out(below(4) == 0 ? below(300) : below(12), '\0');
    for (char& c : out) c = static_cast<char>(bits());
    return out;
  }

 private:
  QRandomGenerator m_random;
};

}  // namespace support
