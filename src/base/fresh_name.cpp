#include "base/fresh_name.h"

#include <fmt/format.h>

#include <random>

namespace quorvelant {

namespace {

constexpr std::size_t Digits = 8;

}  // namespace

std::string FreshName(std::string_view stem) {
  std::random_device draw;
  return fmt::format("{}{:08x}", stem, draw());
}

bool IsFreshName(std::string_view name, std::string_view stem) {
  return name.size() == stem.size() + Digits && name.starts_with(stem) &&
         name.find_first_not_of("0123456789abcdef", stem.size()) == std::string_view::npos;
}

}  // namespace quorvelant
