#pragma once

#include <QByteArray>
#include <QList>
#include <variant>

namespace foundation {

/// A non-keyed archive exactly as stored: typed groups of values over tables of classes and
/// objects. Objects refer to each other by index, so shared and even cyclic archives are plain
/// values. Writing an unchanged graph gives the bytes it was read from.
struct ArchiveGraph {
  struct Nil {
    friend bool operator==(Nil, Nil) = default;
  };
  struct ObjectReference {
    qsizetype index = 0;  ///< into objects
    friend bool operator==(ObjectReference, ObjectReference) = default;
  };
  struct ClassReference {
    qsizetype index = 0;  ///< into classes
    friend bool operator==(ClassReference, ClassReference) = default;
  };
  /// An integer, a real, bytes (of C strings, counted strings and character arrays), or a
  /// reference.
  using Item = std::variant<Nil, qint64, double, QByteArray, ObjectReference, ClassReference>;
  /// The values of one type description, structures and arrays flattened to their members.
  struct Group {
    QByteArray types;  ///< such as "@", "i", "ffff", "{CGPoint=dd}", "[12c]"
    QList<Item> items;
    friend bool operator==(const Group&, const Group&) = default;
  };
  struct Class {
    QByteArray name;
    qint64 version = 0;
    qsizetype parent = -1;  ///< into classes, -1 for none
    friend bool operator==(const Class&, const Class&) = default;
  };
  struct Object {
    qsizetype classIndex = -1;
    QList<Group> groups;
    friend bool operator==(const Object&, const Object&) = default;
  };

  bool bigEndian = false;
  qint64 systemVersion = 1000;
  QList<Class> classes;
  QList<Object> objects;
  QList<Group> root;

  /// The object is of this class or of one derived from it.
  [[nodiscard]] bool isKindOf(const Object& object, const char* className) const;
  friend bool operator==(const ArchiveGraph&, const ArchiveGraph&) = default;
};

}  // namespace foundation
