#include "author/disc_size.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "author/messages.h"
#include "author/size_text.h"
#include "disc/disc_media.h"

namespace quorvelant {
namespace {

constexpr std::size_t MostNamed = 12;

std::string SizesOf(std::vector<TrackSize> tracks) {
  std::ranges::stable_sort(tracks, std::greater<>(), &TrackSize::Bytes);
  std::string text;
  for (std::size_t i = 0; i < std::min(tracks.size(), MostNamed); ++i) {
    text += fmt::format("{}{} {}", i == 0 ? "" : ", ", tracks[i].Name, SizeText(tracks[i].Bytes));
  }
  return tracks.size() > MostNamed ? text + fmt::format(", and {} more", tracks.size() - MostNamed) : text;
}

}  // namespace

std::optional<Message> WarningOfSize(const DiscPlan& plan) {
  const std::uint64_t needed = plan.NeededBytes();
  if (needed <= DualLayerBytes) {
    return std::nullopt;
  }
  return MessageOf(message::DiscTooLarge, {}, SizeText(needed), SizeText(DualLayerBytes),
                   SizesOf(plan.TrackSizes));
}

bool IsSurelyTooLarge(const DiscPlan& plan) {
  return plan.LeastBytes() > DualLayerBytes;
}

}  // namespace quorvelant
