#include "Library.h"

#include <QDir>

#include "document/recovery/ValueStream.h"
#include "foundation/DurableFile.h"
#include "store/StoreSnapshot.h"
#include "support/RestoreSnapshot.h"

namespace document {

using store::ObjectContext;
using store::UndoStep;

Library& Library::withContents() {
  Shelf* shelf = context.insert(std::make_unique<Shelf>());
  addBook(shelf, QStringLiteral("One"))->setText(QByteArray(10'000, 'x'));
  context.clearHistory();
  context.markSaved();
  return *this;
}

Book* Library::addBook(Shelf* shelf, const QString& title) {
  const UndoStep step(context);
  Book* book = context.insert(std::make_unique<Book>());
  book->setTitle(title);
  book->setShelf(shelf);
  return book;
}

template <typename T>
T* firstOf(const ObjectContext& context) {
  for (const auto& [id, object] : context.objects())
    if (auto* found = dynamic_cast<T*>(object.get())) return found;
  return nullptr;
}

Shelf* Library::shelf() const {
  return firstOf<Shelf>(context);
}

Book* Library::book() const {
  return firstOf<Book>(context);
}

QByteArray Library::bytes() const {
  QByteArray bytes;
  ValueWriter(bytes).value(store::storeSnapshot(context));
  return bytes;
}

foundation::Result<void> Library::read(const QByteArray& bytes, const QString& path,
                                       ObjectContext& context) {
  ValueReader reader(bytes);
  const foundation::PropertyValue stored = reader.value();
  if (reader.failed()) return foundation::failure(QStringLiteral("is damaged"), path);
  return support::restoreSnapshot(stored, factories(), context);
}

const store::EntityFactories& Library::factories() {
  static const store::EntityFactories factories{
      {QStringLiteral("Book"), [] { return std::make_unique<Book>(); }},
      {QStringLiteral("Shelf"), [] { return std::make_unique<Shelf>(); }}};
  return factories;
}

RecoveryJournal::Host Library::host(QStringList* warnings) {
  return {[this] { return bytes(); },
          [warnings](const foundation::Error& error) {
            if (warnings) warnings->append(error.text());
          }};
}

void Library::saveTo(const QString& documentPath) const {
  QDir().mkpath(documentPath);
  if (!foundation::replaceFile(storePathOf(documentPath), bytes())) qFatal("cannot save");
}

template <typename T>
T* RandomEdits::any(ObjectContext& context) {
  std::vector<T*> all;
  for (const auto& [id, object] : context.objects())
    if (auto* found = dynamic_cast<T*>(object.get())) all.push_back(found);
  return all.empty() ? nullptr : all[upTo(static_cast<quint32>(all.size()))];
}

void RandomEdits::step(ObjectContext& context) {
  const quint32 kind = upTo(10);
  if (kind == 0) return context.undo();
  if (kind == 1) return context.redo();
  const UndoStep step(context);
  for (quint32 left = kind == 2 ? 5 : 1; left > 0; --left) edit(context);
}

void RandomEdits::edit(ObjectContext& context) {
  static const QStringList titles{QStringLiteral("Größe"), QStringLiteral("\u4e2d\u6587"),
                                  QStringLiteral("\U0001f3ac"), QString(QChar(0xd800)), QString()};
  auto* shelf = any<Shelf>(context);
  auto* book = any<Book>(context);
  const quint32 kind = upTo(10);
  if (!shelf || kind == 0) {
    context.insert(std::make_unique<Shelf>());
  } else if (!book || kind <= 2) {
    book = context.insert(std::make_unique<Book>());
    book->setShelf(upTo(4) == 0 ? nullptr : shelf);
    book->setText(QByteArray(static_cast<qsizetype>(upTo(20'000)), static_cast<char>(upTo(256))));
  } else if (kind == 3) {
    context.remove(*book);
  } else if (kind == 4 && shelf->objectId() > 1) {  // the first one is the document itself
    context.remove(*shelf);
  } else if (kind == 5) {
    book->setShelf(shelf);
  } else if (kind == 6) {
    book->setTitle(titles[upTo(5)] + QString::number(upTo(1000)));
  } else if (kind == 7) {
    shelf->setLabels({titles[upTo(5)], titles[upTo(5)]});
  } else {
    book->setX(upTo(100) / 7.0);
    book->setY(upTo(100) / 7.0);
    book->setSeen(upTo(100));
  }
}

}  // namespace document
