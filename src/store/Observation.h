#pragma once

#include <QHash>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

namespace store {

class ManagedObject;

/// One announcement: the value of a key has changed. Derived keys and to-many relations carry no
/// old and new value.
struct Change {
  ManagedObject* object = nullptr;
  QString key;
  QVariant oldValue;
  QVariant newValue;
};
using Observer = std::function<void(const Change& change)>;

/// Ends an observation when it goes out of scope. May outlive what it observes.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::shared_ptr<void> token) : m_token(std::move(token)) {}
  void cancel() { m_token.reset(); }
  [[nodiscard]] bool isActive() const { return m_token != nullptr; }

 private:
  std::shared_ptr<void> m_token;
};

/// Callbacks by key. A callback may add and end observations, its own too; one that was ended
/// during an announcement is not called any more.
template <typename Argument>
class ObserverList {
 public:
  using Callback = std::function<void(const Argument&)>;

  [[nodiscard]] Subscription add(Callback callback) {
    auto entry = std::make_shared<Callback>(std::move(callback));
    m_entries.push_back(entry);
    return Subscription(entry);
  }
  void call(const Argument& argument) {
    const auto entries = m_entries;  // callbacks may change the list
    bool ended = false;
    for (const std::weak_ptr<Callback>& weak : entries) {
      if (const std::shared_ptr<Callback> callback = weak.lock())
        (*callback)(argument);
      else
        ended = true;
    }
    if (ended) std::erase_if(m_entries, [](const auto& entry) { return entry.expired(); });
  }
  [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }

 private:
  std::vector<std::weak_ptr<Callback>> m_entries;
};

}  // namespace store
