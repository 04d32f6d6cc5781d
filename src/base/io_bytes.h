// Memory that files are read into.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace quorvelant {

inline constexpr std::size_t PageBytes = 4096;

// Memory that begins with a page. Where it does not, as behind the head that malloc puts before large blocks,
// each load of a copy from the page cache waits for the store 16 bytes before, whose address has the same low
// 12 bits: the copy takes up to six times as long.
template <class T>
struct PageAllocator {
  using value_type = T;

  PageAllocator() = default;
  template <class Other>
  PageAllocator(const PageAllocator<Other>& /*other*/) noexcept {}  // NOLINT(google-explicit-constructor)

  // NOLINTBEGIN(readability-identifier-naming): the names that containers ask for
  T* allocate(std::size_t count) { return static_cast<T*>(::operator new(count * sizeof(T), Page)); }
  void deallocate(T* memory, std::size_t /*count*/) { ::operator delete(memory, Page); }
  // NOLINTEND(readability-identifier-naming)
  template <class Other>
  bool operator==(const PageAllocator<Other>& /*other*/) const {
    return true;
  }

 private:
  static constexpr std::align_val_t Page{PageBytes};
};

using IoBytes = std::vector<std::uint8_t, PageAllocator<std::uint8_t>>;

}  // namespace quorvelant
