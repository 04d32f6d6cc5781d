#include "verify/search_check.h"

#include <algorithm>
#include <array>
#include <optional>

#include "disc/nav_layout.h"
#include "verify/numbered_names.h"

namespace quorvelant {
namespace {

constexpr std::int64_t HalfSecond = 45000;
constexpr std::int64_t Tolerance = HalfSecond / 2;  // half a step
constexpr std::size_t RowCount = 19;
// Half seconds of the rows, the shortest first.
constexpr std::array<int, RowCount> Steps{1,  2,  3,  4,  5,  6,  7,  8,   9,  10,
                                          11, 12, 13, 14, 15, 20, 60, 120, 240};
constexpr int LongStep = 20;  // from here on rows tell of video on the way

// One cell's VOBUs, as `first` to before `end` of a VOB's.
class CellSearch {
 public:
  CellSearch(const VobState& vob, const NavCheckOrder& order, std::size_t first, std::size_t end)
      : vob_(&vob), order_(&order), first_(first), end_(end) {}

  void Run() {
    for (at_ = first_; at_ < end_; ++at_) {
      CheckNext(nav::NextVideo, NextVideo(1), true);
      CheckNext(nav::NextVobu, Neighbour(1), false);
      CheckNext(nav::PreviousVobu, Neighbour(-1), false);
      CheckNext(nav::PreviousVideo, NextVideo(-1), true);
      CheckJumps(1);
      CheckJumps(-1);
    }
  }

 private:
  using Place = std::optional<std::size_t>;

  [[nodiscard]] const NavRecord& Record(std::size_t i) const { return vob_->Records[i]; }
  [[nodiscard]] const NavRecord& Here() const { return Record(at_); }
  [[nodiscard]] bool HasVideo(std::size_t i) const { return vob_->Video.Vobus()[i].Pictures > 0; }
  [[nodiscard]] Place Neighbour(int step) const {
    const auto next = static_cast<std::ptrdiff_t>(at_) + step;
    const bool inside =
        next >= static_cast<std::ptrdiff_t>(first_) && next < static_cast<std::ptrdiff_t>(end_);
    return inside ? Place(static_cast<std::size_t>(next)) : std::nullopt;
  }
  [[nodiscard]] Place NextVideo(int step) const {
    for (std::size_t i = at_ + static_cast<std::size_t>(step); i >= first_ && i < end_;
         i += static_cast<std::size_t>(step)) {
      if (HasVideo(i)) {
        return i;
      }
      if (i == 0) {
        break;
      }
    }
    return std::nullopt;
  }
  template <class Expected>
  void Bad(std::size_t offset, const std::string& field, const Expected& expected,
           std::uint32_t value) const {
    order_->Teller.Tell(message::SearchWrong, Here().Vobu.Sector, offset, "DSI", field, expected,
                        fmt::format("0x{:08X}", value));
  }

  void CheckNext(const disc::Field<disc::Number, 4>& row, const Place& wanted, bool video) const {
    const std::uint32_t value = Here().Long(row.Offset);
    const std::string field(row.Name);
    if (!wanted) {
      const std::uint32_t none = video ? nav::NoVideoVobu : nav::NoVobu;
      if (order_->IsOurs ? value != none : (value & nav::NoVobu) != nav::NoVobu) {
        Bad(row.Offset, field, fmt::format("0x{:08X}, since the cell has none", none), value);
      }
      return;
    }
    const std::uint32_t here = Here().Vobu.Sector;
    const std::uint32_t there = Record(*wanted).Vobu.Sector;
    const std::uint32_t distance = std::max(here, there) - std::min(here, there);
    const std::uint32_t right = distance | (HasVideo(*wanted) ? nav::HasVideoBit : 0);
    const std::uint32_t counted = order_->IsOurs ? 0xFFFFFFFF : nav::NoVobu | nav::HasVideoBit;
    if ((value & counted) != right) {
      Bad(row.Offset, field, fmt::format("0x{:08X}", right), value);
    }
  }

  // The VOBU of the cell that begins at this sector.
  [[nodiscard]] Place At(std::int64_t sector) const {
    const auto begin = vob_->Records.begin() + static_cast<std::ptrdiff_t>(first_);
    const auto end = vob_->Records.begin() + static_cast<std::ptrdiff_t>(end_);
    const auto found = std::lower_bound(begin, end, sector, [](const NavRecord& record, std::int64_t wanted) {
      return record.Vobu.Sector < wanted;
    });
    return found != end && found->Vobu.Sector == sector
               ? Place(static_cast<std::size_t>(found - vob_->Records.begin()))
               : std::nullopt;
  }

  // The VOBU that shows a time well within the cell.
  [[nodiscard]] Place Showing(std::int64_t time) const {
    const std::int64_t start = Record(first_).Vobu.StartPtm;
    const std::int64_t stop = Record(end_ - 1).Vobu.EndPtm;
    if (time < start + Tolerance || time >= stop - Tolerance) {
      return std::nullopt;
    }
    const auto begin = vob_->Records.begin() + static_cast<std::ptrdiff_t>(first_);
    const auto end = vob_->Records.begin() + static_cast<std::ptrdiff_t>(end_);
    const auto after = std::upper_bound(begin, end, time, [](std::int64_t wanted, const NavRecord& record) {
      return wanted < record.Vobu.StartPtm;
    });
    return after == begin ? std::nullopt : Place(static_cast<std::size_t>(after - vob_->Records.begin()) - 1);
  }

  void CheckJumps(int way) const {
    static const auto forward = NumberedNames<Steps.back() + 1>("FWDA");
    static const auto backward = NumberedNames<Steps.back() + 1>("BWDA");
    Place before = at_;  // where the row before leads
    for (std::size_t i = 0; i < RowCount; ++i) {
      const int step = Steps.at(i);
      const std::size_t offset =
          way > 0 ? nav::ForwardJumps.Offset + 4 * (RowCount - 1 - i) : nav::BackwardJumps.Offset + 4 * i;
      const std::string& field = (way > 0 ? forward : backward).at(static_cast<std::size_t>(step));
      const std::int64_t time = std::int64_t{Here().Vobu.StartPtm} + std::int64_t{way} * step * HalfSecond;
      before =
          CheckJump(Here().Long(offset), offset, field, time, way, step >= LongStep ? before : std::nullopt);
    }
  }

  // Gives where the row leads.
  Place CheckJump(std::uint32_t value, std::size_t offset, const std::string& field, std::int64_t time,
                  int way, const Place& before) const {
    const std::uint32_t distance = value & nav::NoVobu;
    if (distance == nav::NoVobu) {
      const Place shows = Showing(time);
      if (shows && *shows != at_) {
        Bad(offset, field, fmt::format("the VOBU at sector {}", Record(*shows).Vobu.Sector), value);
      } else if (order_->IsOurs && (value & nav::HasVideoBit) != 0) {
        Bad(offset, field, "no video flag without a VOBU", value);
      } else {
        CheckBetween(value, offset, field, before, std::nullopt, way);
      }
      return std::nullopt;
    }
    const Place found = At(std::int64_t{Here().Vobu.Sector} + way * std::int64_t{distance});
    if (!found) {
      Bad(offset, field, "the head of a VOBU of the cell", value);
      return std::nullopt;
    }
    const VobuFacts& there = Record(*found).Vobu;
    const std::int64_t off =
        std::max({std::int64_t{there.StartPtm} - time, time - std::int64_t{there.EndPtm}, std::int64_t{0}});
    if (off > Tolerance) {
      Bad(offset, field, "a VOBU shown at that time", value);
    }
    if (((value & nav::HasVideoBit) != 0) != HasVideo(*found)) {
      Bad(offset, field, HasVideo(*found) ? "the video flag" : "no video flag", value);
    }
    CheckBetween(value, offset, field, before, found, way);
    return found;
  }

  // This program's discs tell in long rows, and in those alone, whether video lies on the way from the row
  // before, or from there to the end of the cell.
  void CheckBetween(std::uint32_t value, std::size_t offset, const std::string& field, const Place& before,
                    const Place& found, int way) const {
    const bool said = (value & nav::VideoBetweenBit) != 0;
    if (!order_->IsOurs) {
      return;
    }
    bool between = false;
    if (before) {
      const std::size_t first = way > 0 ? *before + 1 : found ? *found + 1 : first_;
      const std::size_t end = way > 0 ? found.value_or(end_) : *before;
      for (std::size_t i = first; i < end; ++i) {
        between = between || HasVideo(i);
      }
    }
    if (said != between) {
      Bad(offset, field, between ? "the flag of video on the way" : "no flag of video on the way", value);
    }
  }

  const VobState* vob_;
  const NavCheckOrder* order_;
  std::size_t first_;
  std::size_t end_;
  std::size_t at_ = 0;
};

}  // namespace

void CheckSearchTables(const VobState& vob, const NavCheckOrder& order) {
  std::size_t first = 0;
  for (std::size_t i = 1; i <= vob.Records.size(); ++i) {
    if (i == vob.Records.size() || vob.Records[i].Vobu.CellId != vob.Records[first].Vobu.CellId) {
      CellSearch(vob, order, first, i).Run();
      first = i;
    }
  }
}

}  // namespace quorvelant
