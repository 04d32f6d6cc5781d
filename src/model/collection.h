// Ordered collections of the disc structure.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quorvelant {

// An ordered list whose elements may bear a key (`T::Key`). Elements keep their address and their
// 1-based number for life: removal is by the element's own `Removed` flag, and readers pass over such
// elements. With equal keys the first added is found.
template <class T>
class Collection {
 public:
  Collection() = default;
  Collection(Collection&&) noexcept = default;
  Collection& operator=(Collection&&) noexcept = default;
  Collection(const Collection&) = default;
  Collection& operator=(const Collection&) = default;
  ~Collection() = default;

  T& Add(T element) {
    if (!element.Key.empty()) {
      numbers_.emplace(element.Key, elements_.size() + 1);
    }
    return elements_.emplace_back(std::move(element));
  }

  // By 1-based number; nullptr where there is none.
  T* Item(std::size_t number) {
    return number >= 1 && number <= elements_.size() ? &elements_[number - 1] : nullptr;
  }
  const T* Item(std::size_t number) const {
    return number >= 1 && number <= elements_.size() ? &elements_[number - 1] : nullptr;
  }
  // By key, exactly; nullptr where there is none.
  T* Item(const std::string& key) {
    const auto found = numbers_.find(key);
    return found == numbers_.end() ? nullptr : &elements_[found->second - 1];
  }
  const T* Item(const std::string& key) const {
    const auto found = numbers_.find(key);
    return found == numbers_.end() ? nullptr : &elements_[found->second - 1];
  }

  std::size_t Count() const { return elements_.size(); }
  // Marks the element as removed; its number stays taken.
  void Remove(std::size_t number) {
    if (T* element = Item(number)) {
      element->Removed = true;
    }
  }
  // Takes the last element away as if it had never been added. There must be one.
  void DropLast() {
    const auto found = numbers_.find(elements_.back().Key);
    if (found != numbers_.end() && found->second == elements_.size()) {
      numbers_.erase(found);
    }
    elements_.pop_back();
  }
  void Clear() {
    elements_.clear();
    numbers_.clear();
  }

  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

  bool operator==(const Collection& other) const { return elements_ == other.elements_; }

 private:
  std::deque<T> elements_;
  std::unordered_map<std::string, std::size_t> numbers_;
};

}  // namespace quorvelant
