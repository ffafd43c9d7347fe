#include "store/ObjectContext.h"

#include <gmock/gmock.h>

#include "foundation/PropertyList.h"
#include "store/StoreSnapshot.h"

namespace store {

namespace {

using testing::ElementsAre;

class Book;

/// Two small entities: a shelf owns books; a book may be lent to a reader, who stays when it goes.
class Shelf : public ManagedObject {
 public:
  struct Declaration : Entity {
    Declaration() : Entity(QStringLiteral("Shelf")) {
      derive("place", {"room", "number"}, [](const ManagedObject& object) {
        const auto& shelf = static_cast<const Shelf&>(object);
        return QVariant(shelf.room() + QString::number(shelf.number()));
      });
      derive("sign", {"place"});
    }
    Property<QString> room = property<QString>("room", QStringLiteral("A"));
    Property<qint64> number = property<qint64>("number");
    Property<double> light = transient<double>("light", 0.5);
    ToMany<Book> books = toMany<Book>("books", DeleteRule::Cascade);
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  Shelf() : ManagedObject(declaration()) {}
  [[nodiscard]] QString room() const { return get(declaration().room); }
  void setRoom(const QString& room) { set(declaration().room, room); }
  [[nodiscard]] qint64 number() const { return get(declaration().number); }
  void setNumber(qint64 number) { set(declaration().number, number); }
  void setLight(double light) { set(declaration().light, light); }
  [[nodiscard]] ObjectsOf<Book> books() const { return get(declaration().books); }
  int replays = 0;

 protected:
  void awakeFromReplay() override { ++replays; }
};

class Reader : public ManagedObject {
 public:
  struct Declaration : Entity {
    Declaration() : Entity(QStringLiteral("Reader")) {}
    ToMany<Book> lent = toMany<Book>("lent", DeleteRule::Nullify);
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  Reader() : ManagedObject(declaration()) {}
};

class Book : public ManagedObject {
 public:
  struct Declaration : Entity {
    Declaration() : Entity(QStringLiteral("Book")) {}
    Property<QString> title = property<QString>("title");
    ToOne<Shelf> shelf = toOne<Shelf>("shelf", "books");
    ToOne<Reader> reader = toOne<Reader>("reader", "lent");
  };
  static const Declaration& declaration() {
    static const Declaration declaration;
    return declaration;
  }
  explicit Book(const QString& title) : ManagedObject(declaration()) { setTitle(title); }
  [[nodiscard]] QString title() const { return get(declaration().title); }
  void setTitle(const QString& title) { set(declaration().title, title); }
  [[nodiscard]] Shelf* shelf() const { return get(declaration().shelf); }
  void setShelf(Shelf* shelf) { set(declaration().shelf, shelf); }
  [[nodiscard]] Reader* reader() const { return get(declaration().reader); }
  void setReader(Reader* reader) { set(declaration().reader, reader); }
};

Book* addBook(ObjectContext& context, Shelf* shelf, const QString& title) {
  Book* book = context.insert(std::make_unique<Book>(title));
  book->setShelf(shelf);
  return book;
}

QByteArray bytesOf(const ObjectContext& context) {
  return foundation::PropertyList::toXml(storeSnapshot(context)).value();
}

class ObjectContextTest : public testing::Test {
 protected:
  ObjectContext context;
  Shelf* shelf = context.insert(std::make_unique<Shelf>());
};

TEST_F(ObjectContextTest, StepsGroupNestNameAndVanishWhenEmpty) {
  context.clearHistory();
  {
    UndoStep outer(context, QStringLiteral("Move"));
    shelf->setNumber(1);
    {
      UndoStep inner(context, QStringLiteral("Rename"));
      shelf->setRoom(QStringLiteral("B"));
    }
    shelf->setNumber(2);
  }
  { UndoStep empty(context, QStringLiteral("Nothing")); }
  {
    UndoStep back(context, QStringLiteral("There and back"));
    shelf->setNumber(7);
    shelf->setNumber(2);
  }
  ASSERT_EQ(context.history().count(), 1);
  EXPECT_EQ(context.history().undoText(), QStringLiteral("Move"));
  context.undo();
  EXPECT_EQ(shelf->number(), 0);
  EXPECT_EQ(shelf->room(), QStringLiteral("A"));
  EXPECT_EQ(shelf->replays, 1);
  EXPECT_FALSE(context.canUndo());
  context.redo();
  EXPECT_EQ(shelf->number(), 2);
  EXPECT_EQ(shelf->room(), QStringLiteral("B"));
}

TEST_F(ObjectContextTest, AStepMayContinueTheOneBeforeIfItIsTheLastOfThatNameAndUnsaved) {
  context.clearHistory();
  const auto change = [this](int number, const char* name) {
    UndoStep step(context, QString::fromLatin1(name));
    step.continuePrevious();
    shelf->setNumber(number);
  };
  change(1, "Nudge");  // nothing there to continue
  change(2, "Nudge");
  change(3, "Nudge");
  EXPECT_EQ(context.history().count(), 1);
  change(4, "Other");
  EXPECT_EQ(context.history().count(), 2);
  context.undo();
  context.undo();
  EXPECT_EQ(shelf->number(), 0);
  context.redo();
  EXPECT_EQ(shelf->number(), 3);
  context.markSaved();
  change(5, "Nudge");
  EXPECT_EQ(context.history().count(), 2);
  context.undo();
  EXPECT_EQ(shelf->number(), 3);
  EXPECT_FALSE(context.hasChanges());
}

TEST_F(ObjectContextTest, CancellingRollsBackOnlyItsOwnStep) {
  UndoStep outer(context, QStringLiteral("Outer"));
  shelf->setNumber(1);
  Book* kept = addBook(context, shelf, QStringLiteral("kept"));
  {
    UndoStep inner(context);
    shelf->setNumber(5);
    kept->setTitle(QStringLiteral("changed"));
    addBook(context, shelf, QStringLiteral("dropped"));
    context.undo();  // not while a step is open
    inner.cancel();
  }
  EXPECT_EQ(shelf->number(), 1);
  EXPECT_EQ(kept->title(), QStringLiteral("kept"));
  EXPECT_THAT(shelf->books().list(), ElementsAre(kept));
}

TEST_F(ObjectContextTest, RemovingFollowsDeleteRulesAndUndoBringsBackTheSameObjects) {
  Reader* reader = context.insert(std::make_unique<Reader>());
  Book* first = addBook(context, shelf, QStringLiteral("first"));
  Book* second = addBook(context, shelf, QStringLiteral("second"));
  second->setReader(reader);
  const QByteArray before = bytesOf(context);

  context.remove(*shelf);
  EXPECT_EQ(context.objects().size(), 1u);  // books go along, the reader stays
  EXPECT_TRUE(reader->valueForKey(QStringLiteral("lent")).value<QList<ManagedObject*>>().isEmpty());
  const QByteArray after = bytesOf(context);
  context.undo();
  EXPECT_EQ(bytesOf(context), before);
  EXPECT_THAT(shelf->books().list(), ElementsAre(first, second));
  EXPECT_EQ(second->reader(), reader);
  context.redo();
  EXPECT_EQ(bytesOf(context), after);
  context.undo();

  context.remove(*reader);  // the book stays
  EXPECT_EQ(second->reader(), nullptr);
  const QByteArray end = bytesOf(context);
  context.undo();
  EXPECT_EQ(second->reader(), reader);
  while (context.canUndo()) context.undo();
  EXPECT_TRUE(context.objects().empty());
  while (context.canRedo()) context.redo();
  EXPECT_EQ(bytesOf(context), end);
}

TEST_F(ObjectContextTest, AnnouncesOldAndNewValuesByEveryWay) {
  QStringList seen;
  const auto note = [&](const Change& change) {
    seen.append(change.key + QLatin1Char(':') + change.oldValue.toString() + QLatin1Char('>') +
                change.newValue.toString());
  };
  const Subscription number = shelf->observe(QStringLiteral("number"), note);
  const Subscription sign = shelf->observe(QStringLiteral("sign"), note);
  const Subscription books = shelf->observe(QStringLiteral("books"), note);
  shelf->setNumber(3);
  shelf->setNumber(3);  // the same again: nobody is told
  shelf->setLight(0.7);
  context.undo();
  addBook(context, shelf, QStringLiteral("new"));
  EXPECT_THAT(seen, ElementsAre(QStringLiteral("number:0>3"), QStringLiteral("sign:>"),
                                QStringLiteral("number:3>0"), QStringLiteral("sign:>"),
                                QStringLiteral("books:>")));
  EXPECT_EQ(shelf->valueForKey(QStringLiteral("place")).toString(), QStringLiteral("A0"));
}

TEST_F(ObjectContextTest, ObserversMayEndThemselvesAndOutliveTheObject) {
  int calls = 0;
  Subscription once;
  once = shelf->observe(QStringLiteral("number"), [&](const Change&) {
    ++calls;
    once.cancel();
  });
  Subscription orphan;
  {
    ObjectContext other;
    Shelf* gone = other.insert(std::make_unique<Shelf>());
    orphan = gone->observe(QStringLiteral("number"), [](const Change&) {});
  }
  shelf->setNumber(1);
  shelf->setNumber(2);
  EXPECT_EQ(calls, 1);
}

TEST_F(ObjectContextTest, ObserversThatChangeThingsDuringUndo) {
  Shelf* other = context.insert(std::make_unique<Shelf>());
  for (qint64 i = 1; i <= 4; ++i) shelf->setNumber(i);
  {
    const Subscription follower = shelf->observe(QStringLiteral("number"), [&](const Change&) {
      context.undo();  // has to wait
      UndoStep step(context);
      other->setNumber(shelf->number());
      UndoStep(context).cancel();
      other->setRoom(QStringLiteral("follows"));
    });
    const int count = context.history().count();
    context.undo();
    EXPECT_EQ(shelf->number(), 3);
    EXPECT_EQ(other->number(), 3);
    EXPECT_EQ(context.history().count(), count);  // it is no step
    context.redo();
    EXPECT_EQ(shelf->number(), 4);
  }
  // Told when all is over, an observer makes a step of its own, on top of where undo has led to.
  const Subscription late = context.observeChanges([&](const ChangeSet& changes) {
    if (changes.updated.contains(shelf)) other->setRoom(QStringLiteral("late"));
  });
  context.undo();
  const QByteArray end = bytesOf(context);
  EXPECT_FALSE(context.canRedo());
  EXPECT_EQ(context.history().index(), context.history().count());
  context.undo();
  EXPECT_EQ(other->room(), QStringLiteral("follows"));
  EXPECT_EQ(shelf->number(), 3);
  context.redo();
  EXPECT_EQ(bytesOf(context), end);
}

TEST_F(ObjectContextTest, ObserversThatTakeObjectsOutDuringUndoEndTheHistory) {
  Book* book = addBook(context, shelf, QStringLiteral("b"));
  const Subscription remover =
      book->observe(QStringLiteral("title"), [&](const Change&) { context.remove(*book); });
  book->setTitle(QStringLiteral("c"));
  EXPECT_TRUE(shelf->books().isEmpty());
  context.undo();  // brings it back and has it removed again
  EXPECT_TRUE(shelf->books().isEmpty());
  EXPECT_FALSE(context.canUndo() || context.canRedo());
  EXPECT_TRUE(context.hasChanges());
}

TEST_F(ObjectContextTest, UnrecordedRemovalsEndTheOpenStepToo) {
  Book* book = addBook(context, shelf, QStringLiteral("b"));
  {
    const UndoStep step(context);
    book->setTitle(QStringLiteral("c"));
    const UndoSuspension suspension(context);
    context.remove(*book);
  }
  EXPECT_FALSE(context.canUndo());
  Book* second = addBook(context, shelf, QStringLiteral("d"));
  {
    UndoStep step(context);
    second->setShelf(nullptr);
    {
      const UndoSuspension suspension(context);
      context.remove(*second);
    }
    step.cancel();  // there is nothing left to go back to
  }
  EXPECT_TRUE(shelf->books().isEmpty());
}

TEST_F(ObjectContextTest, KeyPathsFollowTheRelation) {
  Shelf* other = context.insert(std::make_unique<Shelf>());
  Book* book = addBook(context, shelf, QStringLiteral("b"));
  int calls = 0;
  const Subscription path =
      book->observeKeyPath(QStringLiteral("shelf.room"), [&](const Change&) { ++calls; });
  shelf->setRoom(QStringLiteral("X"));
  EXPECT_EQ(calls, 1);
  book->setShelf(other);
  EXPECT_EQ(calls, 2);
  shelf->setRoom(QStringLiteral("Y"));  // not on the path any more
  EXPECT_EQ(calls, 2);
  other->setRoom(QStringLiteral("Z"));
  EXPECT_EQ(calls, 3);
}

TEST_F(ObjectContextTest, ChangeSetsAreOnePerStep) {
  QList<std::tuple<size_t, size_t, size_t>> sets;
  const Subscription changes = context.observeChanges([&](const ChangeSet& set) {
    sets.append({set.inserted.objects().size(), set.updated.objects().size(),
                 set.deleted.objects().size()});
  });
  {
    UndoStep step(context);
    Book* book = addBook(context, shelf, QStringLiteral("b"));
    book->setTitle(QStringLiteral("c"));
    shelf->setNumber(9);
  }
  context.undo();
  shelf->setLight(0.1);  // transient: nothing persistent has changed
  EXPECT_THAT(sets, ElementsAre(std::tuple(1, 1, 0), std::tuple(0, 1, 1)));
  context.redo();
  sets.clear();
  {
    UndoStep step(context);
    context.remove(*shelf->books().front());
    step.cancel();  // nobody knew that it was gone
  }
  {
    UndoStep step(context);
    addBook(context, shelf, QStringLiteral("told"));
    context.processPendingChanges();
    step.cancel();
  }
  EXPECT_THAT(sets, ElementsAre(std::tuple(0, 2, 0), std::tuple(1, 1, 0), std::tuple(0, 1, 1)));
}

TEST_F(ObjectContextTest, SuspendedChangesAreNotRecordedButMarkTheDocument) {
  context.clearHistory();
  context.markSaved();
  {
    const UndoSuspension outer(context);
    const UndoSuspension inner(context);
    shelf->setNumber(4);
  }
  EXPECT_TRUE(context.isUndoRegistrationEnabled());
  EXPECT_FALSE(context.canUndo());
  EXPECT_TRUE(context.hasChanges());
  context.markSaved();
  shelf->setNumber(5);
  EXPECT_TRUE(context.hasChanges());
  context.undo();
  EXPECT_FALSE(context.hasChanges());  // back at what was saved
  context.redo();
  {
    const UndoSuspension suspension(context);
    context.remove(*shelf);
  }
  EXPECT_FALSE(context.canUndo());  // its records spoke of the shelf
}

TEST_F(ObjectContextTest, LongDragsStaySmall) {
  Book* book = addBook(context, shelf, QStringLiteral("b"));
  context.clearHistory();
  Journal journal;
  for (qint64 i = 0; i < 1000; ++i) {
    journal.recordValue(*shelf, 1, i, i + 1);
    journal.recordValue(*book, 0, QString::number(i), QString::number(i + 1));
  }
  EXPECT_EQ(journal.size(), 2u);
  // As when every move of the pointer is a step inside the drag's.
  for (qint64 i = 1000; i < 2000; ++i) {
    journal.startSection();
    journal.recordValue(*shelf, 1, i, i + 1);
  }
  const JournalRecords records = journal.takeFrom(0);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].before, QVariant(0));
  EXPECT_EQ(records[0].after, QVariant(2000));
}

TEST_F(ObjectContextTest, ValuesByKey) {
  EXPECT_TRUE(shelf->setValueForKey(12, QStringLiteral("number")));
  EXPECT_EQ(shelf->number(), 12);
  EXPECT_FALSE(shelf->setValueForKey(QVariant::fromValue(QImage()), QStringLiteral("number")));
  EXPECT_FALSE(shelf->setValueForKey(1, QStringLiteral("unknown")));
  EXPECT_FALSE(shelf->valueForKey(QStringLiteral("unknown")).isValid());
  EXPECT_TRUE(shelf->setStoredValue(foundation::PropertyValue(5), QStringLiteral("number")));
  EXPECT_EQ(shelf->number(), 5);
  EXPECT_FALSE(shelf->setStoredValue(foundation::PropertyValue(5), QStringLiteral("light")));
}

TEST_F(ObjectContextTest, RelationsAndTheUnsavedMarkAreSetAsLoadingNeedsThem) {
  Book* book = addBook(context, shelf, QStringLiteral("One"));
  auto* reader = context.insert(std::make_unique<Reader>());
  EXPECT_TRUE(book->setStoredRelation(nullptr, QStringLiteral("shelf")));
  EXPECT_TRUE(book->setStoredRelation(reader, QStringLiteral("reader")));
  EXPECT_TRUE(shelf->books().isEmpty());
  EXPECT_EQ(book->reader(), reader);
  EXPECT_FALSE(book->setStoredRelation(shelf, QStringLiteral("reader"))) << "no inverse";
  EXPECT_FALSE(book->setStoredRelation(shelf, QStringLiteral("title")));
  Book outside(QStringLiteral("Two"));
  EXPECT_FALSE(outside.setStoredRelation(shelf, QStringLiteral("shelf")));
  EXPECT_EQ(book->relatedObject(1), reader);
  EXPECT_EQ(book->propertyValue(0), QVariant(QStringLiteral("One")));
  context.markSaved();
  context.markChanged();
  EXPECT_TRUE(context.hasChanges());
  context.markSaved();
  EXPECT_FALSE(context.hasChanges());
}

TEST(ValueCodecTest, RoundTrips) {
  const foundation::Color color{0.1, 0.2, 0.3, 0.4};
  EXPECT_EQ(CodecOf<foundation::Color>::decode(CodecOf<foundation::Color>::encode(color)), color);
  QImage image(3, 2, QImage::Format_ARGB32);
  image.fill(QColor(10, 20, 30, 40));
  EXPECT_EQ(CodecOf<QImage>::decode(CodecOf<QImage>::encode(image)), image);
  EXPECT_TRUE(CodecOf<QImage>::decode(CodecOf<QImage>::encode({})).isNull());
  const QStringList texts{QStringLiteral("a"), QString()};
  EXPECT_EQ(CodecOf<QStringList>::decode(CodecOf<QStringList>::encode(texts)), texts);
}

}  // namespace

}  // namespace store
