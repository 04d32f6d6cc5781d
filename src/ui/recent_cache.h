// What was made and may be asked for again.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <utility>

namespace quorvelant {

// Within its bytes, the least recently used go first; the newest one always stays.
template <class Key, class Value>
class RecentCache {
 public:
  explicit RecentCache(std::size_t mostBytes) : mostBytes_(mostBytes) {}

  // Null where it is not kept.
  [[nodiscard]] const Value* Find(const Key& key) {
    const auto found = places_.find(key);
    if (found == places_.end()) {
      return nullptr;
    }
    kept_.splice(kept_.begin(), kept_, found->second);
    return &found->second->Held;
  }

  void Keep(const Key& key, Value value, std::size_t bytes) {
    if (places_.contains(key)) {
      return;
    }
    kept_.push_front({key, std::move(value), bytes});
    places_[key] = kept_.begin();
    bytes_ += bytes;
    while (bytes_ > mostBytes_ && kept_.size() > 1) {
      bytes_ -= kept_.back().Bytes;
      places_.erase(kept_.back().Name);
      kept_.pop_back();
    }
  }

  [[nodiscard]] std::size_t Bytes() const { return bytes_; }

 private:
  struct Item {
    Key Name;
    Value Held;
    std::size_t Bytes = 0;
  };
  std::list<Item> kept_;
  std::map<Key, typename std::list<Item>::iterator> places_;
  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
};

}  // namespace quorvelant
