#include "disc/start_code_search.h"

#include <bit>
#include <cstdint>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace quorvelant {

namespace {

bool IsSlice(ByteView data, std::size_t startCode) {
  constexpr std::uint8_t FirstSlice = 0x01;
  constexpr std::uint8_t LastSlice = 0xAF;
  return startCode + 3 < data.size() && data[startCode + 3] >= FirstSlice && data[startCode + 3] <= LastSlice;
}

// Where the search of whole vectors ended: a hit, or the offset from which bytes are left to look at.
struct Progress {
  bool Hit;
  std::size_t Offset;
};

#if defined(__x86_64__)

// Looks at pairs of bytes: a prefix holds either the pair 00 00, or at the other alignment the pair 00 01.
// Both are 0 in a 16-bit lane but for the low bit of its second byte, and rare in coded data; so one load,
// one mask and one minimum serve 32 bytes, and four vectors share a branch. A block of pairs from `at` tells
// of the prefixes that start at `at` - 1 to `at` + 126.
template <bool PassSlices>
__attribute__((target("avx2"))) Progress SearchAvx2(ByteView data, std::size_t from) {
  constexpr std::size_t Width = 32;
  constexpr std::size_t Step = 4 * Width;
  const __m256i zero = _mm256_setzero_si256();
  const __m256i pairMask = _mm256_set1_epi16(static_cast<short>(0xFEFF));
  const auto load = [&](std::size_t at) __attribute__((target("avx2"))) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data.data() + at));
  };
  const auto pairs = [&](std::size_t at) __attribute__((target("avx2"))) {
    return _mm256_and_si256(load(at), pairMask);
  };
  const auto hits = [&](std::size_t at) __attribute__((target("avx2"))) {
    const __m256i zeros = _mm256_cmpeq_epi8(_mm256_or_si256(load(at), load(at + 1)), zero);
    const __m256i ones = _mm256_cmpeq_epi8(load(at + 2), _mm256_set1_epi8(1));
    const int mask = _mm256_movemask_epi8(_mm256_and_si256(zeros, ones));
    return std::uint64_t{static_cast<std::uint32_t>(mask)};
  };
  std::size_t at = from + 1;
  while (at + Step + 1 <= data.size()) {
    const __m256i smallest = _mm256_min_epu16(_mm256_min_epu16(pairs(at), pairs(at + Width)),
                                              _mm256_min_epu16(pairs(at + 2 * Width), pairs(at + 3 * Width)));
    if (_mm256_movemask_epi8(_mm256_cmpeq_epi16(smallest, zero)) == 0) {
      at += Step;
      continue;
    }
    // Which of the four it was is worked out without a branch: it would be guessed wrong each time.
    const std::size_t first = at - 1;
    const std::uint64_t low = hits(first) | (hits(first + Width) << Width);
    const std::uint64_t high = hits(first + 2 * Width) | (hits(first + 3 * Width) << Width);
    if ((low | high) == 0) {
      at += Step;
      continue;
    }
    const int offset =
        low != 0 ? std::countr_zero(low) : 2 * static_cast<int>(Width) + std::countr_zero(high);
    const std::size_t found = first + static_cast<std::size_t>(offset);
    if (!PassSlices || !IsSlice(data, found)) {
      return {true, found};
    }
    at = found + 5;  // no prefix starts within a slice's code
  }
  return {false, at - 1};
}

Progress SearchSse2(ByteView data, std::size_t from) {
  constexpr std::size_t Width = 16;
  const __m128i zero = _mm_setzero_si128();
  const __m128i one = _mm_set1_epi8(1);
  const auto load = [&](std::size_t at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data.data() + at));
  };
  std::size_t at = from;
  for (; at + Width + 2 <= data.size(); at += Width) {
    const __m128i zeros = _mm_cmpeq_epi8(_mm_or_si128(load(at), load(at + 1)), zero);
    const auto mask = static_cast<std::uint32_t>(
        _mm_movemask_epi8(_mm_and_si128(zeros, _mm_cmpeq_epi8(load(at + 2), one))));
    if (mask != 0) {
      return {true, at + static_cast<std::size_t>(std::countr_zero(mask))};
    }
  }
  return {false, at};
}

template <bool PassSlices>
Progress SearchVectors(ByteView data, std::size_t from) {
  static const bool hasAvx2 = static_cast<bool>(__builtin_cpu_supports("avx2"));
  const Progress wide = hasAvx2 ? SearchAvx2<PassSlices>(data, from) : Progress{false, from};
  return wide.Hit ? wide : SearchSse2(data, wide.Offset);  // of what wide vectors leave, most
}

Progress SearchNarrow(ByteView data, std::size_t from) {
  return SearchSse2(data, from);
}

#else

Progress SearchNarrow(ByteView, std::size_t from) {
  return {false, from};
}

template <bool PassSlices>
Progress SearchVectors(ByteView, std::size_t from) {
  return {false, from};
}

#endif

}  // namespace

std::size_t FindStartCode(ByteView data, std::size_t from) {
  const Progress found = SearchVectors<false>(data, from);
  return found.Hit ? found.Offset : FindStartCodePlainly(data, found.Offset);
}

std::size_t FindHeaderStartCode(ByteView data, std::size_t from) {
  while (true) {
    const Progress progress = SearchVectors<true>(data, from);
    const std::size_t found = progress.Hit ? progress.Offset : FindStartCodePlainly(data, progress.Offset);
    if (found == NoStartCode || !IsSlice(data, found)) {
      return found;
    }
    from = found + 1;
  }
}

std::size_t FindStartCodeNarrow(ByteView data, std::size_t from) {
  const Progress found = SearchNarrow(data, from);
  return found.Hit ? found.Offset : FindStartCodePlainly(data, found.Offset);
}

std::size_t FindStartCodePlainly(ByteView data, std::size_t from) {
  for (std::size_t at = from; at + 3 <= data.size(); ++at) {
    if (data[at] == 0 && data[at + 1] == 0 && data[at + 2] == 1) {
      return at;
    }
  }
  return NoStartCode;
}

}  // namespace quorvelant
