#pragma once

#include <QTemporaryDir>

#include "document/recovery/RecoveryJournal.h"

namespace document {

class Shelf;

/// A small kind of document: shelves with books.
class Book : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("Book")) {}
    store::Property<QString> title = property<QString>("title");
    store::Property<QByteArray> text = property<QByteArray>("text");
    store::Property<double> x = property<double>("x", 1.5);
    store::Property<double> y = property<double>("y");
    store::Property<double> seen = transient<double>("seen");
    store::ToOne<Shelf> shelf = toOne<Shelf>("shelf", "books");
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  Book() : ManagedObject(declaration()) {}
  void setTitle(const QString& title) { set(declaration().title, title); }
  void setText(const QByteArray& text) { set(declaration().text, text); }
  void setX(double x) { set(declaration().x, x); }
  void setY(double y) { set(declaration().y, y); }
  void setSeen(double seen) { set(declaration().seen, seen); }
  void setShelf(Shelf* shelf) { set(declaration().shelf, shelf); }
};

class Shelf : public store::ManagedObject {
 public:
  struct Declaration : store::Entity {
    Declaration() : Entity(QStringLiteral("Shelf")) {}
    store::Property<qint64> number = property<qint64>("number");
    store::Property<QStringList> labels = property<QStringList>("labels");
    store::ToMany<Book> books = toMany<Book>("books", store::DeleteRule::Cascade);
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  Shelf() : ManagedObject(declaration()) {}
  void setNumber(qint64 number) { set(declaration().number, number); }
  void setLabels(const QStringList& labels) { set(declaration().labels, labels); }
};

/// Such a document with its context and its own way to write the store.
struct Library {
  store::ObjectContext context;

  /// Fills it with one shelf and one book and forgets how.
  Library& withContents();
  Book* addBook(Shelf* shelf, const QString& title);
  [[nodiscard]] Shelf* shelf() const;
  [[nodiscard]] Book* book() const;

  [[nodiscard]] QByteArray bytes() const;
  [[nodiscard]] static foundation::Result<void> read(const QByteArray& bytes, const QString& path,
                                                     store::ObjectContext& context);
  [[nodiscard]] static const store::EntityFactories& factories();
  /// `warnings` gets what cannot be written.
  [[nodiscard]] RecoveryJournal::Host host(QStringList* warnings = nullptr);
  /// Makes a package of the document, as saving does.
  void saveTo(const QString& documentPath) const;
};

/// Changes of all kinds, the same for the same seed: values, titles in many scripts, large texts,
/// insertions, removals that take others along, moves between shelves, undo and redo.
class RandomEdits {
 public:
  explicit RandomEdits(quint32 seed) : m_random(seed) {}
  /// One step, which may be one that changes nothing.
  void step(store::ObjectContext& context);

 private:
  template <typename T>
  [[nodiscard]] T* any(store::ObjectContext& context);
  void edit(store::ObjectContext& context);
  [[nodiscard]] quint32 upTo(quint32 limit) { return limit == 0 ? 0 : next() % limit; }
  [[nodiscard]] quint32 next() { return m_random = m_random * 1664525 + 1013904223, m_random >> 8; }

  quint32 m_random;
};

}  // namespace document
