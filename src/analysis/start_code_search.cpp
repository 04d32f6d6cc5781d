#include "analysis/start_code_search.h"

#include <bit>
#include <cstdint>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace quorvelant {

namespace {

// Where the search of whole vectors ended: a hit, or the offset from which bytes are left to look at.
struct Progress {
  bool Hit;
  std::size_t Offset;
};

#if defined(__x86_64__)

// Per offset i of a vector: byte i is 0, byte i + 1 is 0 and byte i + 2 is 1. Three loads at distances of
// one byte answer that for a whole vector at once; two vectors share one branch.
__attribute__((target("avx2"))) Progress SearchAvx2(ByteView data, std::size_t from) {
  constexpr std::size_t Width = 32;
  const __m256i zero = _mm256_setzero_si256();
  const __m256i one = _mm256_set1_epi8(1);
  const auto load = [&](std::size_t at) __attribute__((target("avx2"))) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(data.data() + at));
  };
  const auto hits = [&](std::size_t at) __attribute__((target("avx2"))) {
    // Both zero bytes at once: their bitwise or is 0.
    const __m256i zeros = _mm256_cmpeq_epi8(_mm256_or_si256(load(at), load(at + 1)), zero);
    return _mm256_and_si256(zeros, _mm256_cmpeq_epi8(load(at + 2), one));
  };
  std::size_t at = from;
  for (; at + 2 * Width + 2 <= data.size(); at += 2 * Width) {
    const __m256i first = hits(at);
    const __m256i second = hits(at + Width);
    if (_mm256_testz_si256(_mm256_or_si256(first, second), _mm256_set1_epi8(-1)) == 0) {
      const auto low = static_cast<std::uint32_t>(_mm256_movemask_epi8(first));
      const auto high = static_cast<std::uint32_t>(_mm256_movemask_epi8(second));
      const std::uint64_t mask = (std::uint64_t{high} << 32) | low;
      return {true, at + static_cast<std::size_t>(std::countr_zero(mask))};
    }
  }
  return {false, at};
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

Progress SearchVectors(ByteView data, std::size_t from) {
  static const bool hasAvx2 = static_cast<bool>(__builtin_cpu_supports("avx2"));
  return hasAvx2 ? SearchAvx2(data, from) : SearchSse2(data, from);
}

#else

Progress SearchVectors(ByteView, std::size_t from) {
  return {false, from};
}

#endif

}  // namespace

std::size_t FindStartCode(ByteView data, std::size_t from) {
  const Progress found = SearchVectors(data, from);
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
