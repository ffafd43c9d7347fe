#pragma once

#include <QList>
#include <iterator>
#include <vector>

namespace store {

class ManagedObject;

/// Objects ordered by their number, that is by the order in which they were made: the same set has
/// the same order, whatever changes led to it.
class ObjectSet {
 public:
  /// Constant time for the newest object.
  void insert(ManagedObject* object);
  void erase(const ManagedObject* object);
  [[nodiscard]] bool contains(const ManagedObject* object) const;
  [[nodiscard]] const std::vector<ManagedObject*>& objects() const { return m_objects; }

 private:
  std::vector<ManagedObject*> m_objects;
};

/// The same set as objects of their class.
template <typename T>
class ObjectsOf {
 public:
  explicit ObjectsOf(const ObjectSet& set) : m_objects(&set.objects()) {}

  class Iterator {
   public:
    using difference_type = std::ptrdiff_t;
    using value_type = T*;
    using pointer = T* const*;
    using reference = T*;
    using iterator_category = std::forward_iterator_tag;
    Iterator() = default;
    explicit Iterator(std::vector<ManagedObject*>::const_iterator at) : m_at(at) {}
    T* operator*() const { return static_cast<T*>(*m_at); }
    Iterator& operator++() {
      ++m_at;
      return *this;
    }
    Iterator operator++(int) {
      Iterator before = *this;
      ++m_at;
      return before;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    std::vector<ManagedObject*>::const_iterator m_at;
  };

  [[nodiscard]] Iterator begin() const { return Iterator(m_objects->begin()); }
  [[nodiscard]] Iterator end() const { return Iterator(m_objects->end()); }
  [[nodiscard]] qsizetype size() const { return static_cast<qsizetype>(m_objects->size()); }
  [[nodiscard]] bool isEmpty() const { return m_objects->empty(); }
  [[nodiscard]] T* operator[](qsizetype index) const {
    return static_cast<T*>((*m_objects)[static_cast<size_t>(index)]);
  }
  [[nodiscard]] T* front() const { return static_cast<T*>(m_objects->front()); }
  [[nodiscard]] T* back() const { return static_cast<T*>(m_objects->back()); }
  /// A copy, for loops that change the set.
  [[nodiscard]] QList<T*> list() const { return QList<T*>(begin(), end()); }

 private:
  const std::vector<ManagedObject*>* m_objects;
};

}  // namespace store
