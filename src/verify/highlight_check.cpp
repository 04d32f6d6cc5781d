#include "verify/highlight_check.h"

#include <algorithm>
#include <array>

#include "disc/nav_layout.h"
#include "disc/video_standard.h"
#include "verify/command_check.h"

namespace quorvelant {
namespace {

constexpr std::size_t ButtonsAt = 187;
constexpr std::size_t ButtonBytes = 18;
constexpr unsigned MostButtons = 36;
constexpr unsigned KeepsButton = 63;     // of a forced button
constexpr std::size_t MostKept = 10000;  // highlights of a VOB set
constexpr std::uint32_t ForEver = 0xFFFFFFFF;

// HLI_SS.
constexpr unsigned None = 0;
constexpr unsigned New = 1;
constexpr unsigned Same = 2;

}  // namespace

template <class Expected, class Seen>
void HighlightCheck::Bad(std::size_t offset, std::string_view field, const Expected& expected,
                         const Seen& seen) const {
  teller_->Tell(message::HighlightWrong, sector_, offset, "HLI", field, expected, seen);
}

void HighlightCheck::Check(ByteView nav, const VobuFacts& vobu, std::vector<HighlightFacts>& kept) {
  sector_ = vobu.Sector;
  if (vobu.VobId != vobId_ || vobu.CellId != cellId_) {
    before_.clear();
    vobId_ = vobu.VobId;
    cellId_ = vobu.CellId;
  }
  const auto word = static_cast<unsigned>(Get(nav, nav::HliSs).Value);
  const unsigned status = word & 3U;
  if (word > 3) {
    Bad(nav::HliSs.Offset, nav::HliSs.Name, "0 to 3", word);
  }
  if (status == None) {
    before_.clear();
    return;
  }
  const ByteView hli = nav.subspan(HliAt, HliBytes);
  if (status != New && before_.empty()) {
    Bad(nav::HliSs.Offset, nav::HliSs.Name, "0 or 1 after a VOBU without buttons", status);
  }
  const bool differs = before_.empty() || !std::equal(hli.begin() + 2, hli.end(), before_.begin() + 2);
  if (status == Same && !before_.empty()) {
    const bool filled = std::any_of(hli.begin() + 2, hli.end(), [](std::uint8_t byte) { return byte != 0; });
    if (filled && differs) {
      Bad(nav::HliSs.Offset, nav::HliSs.Name, "1, since the buttons differ from those before", status);
    }
    return;
  }
  if (differs) {
    CheckGeneral(nav, vobu);
    if (kept.size() < MostKept) {
      kept.push_back({vobu.Sector, vobu.VobId, vobu.CellId, Bytes(hli.begin(), hli.end())});
    }
  }
  before_.assign(hli.begin(), hli.end());
}

void HighlightCheck::CheckGeneral(ByteView nav, const VobuFacts& vobu) const {
  const auto at = [&](std::size_t offset) { return unsigned{nav[offset]}; };
  const unsigned groups = at(nav::BtnMd.Offset) >> 4U & 3U;
  const unsigned count = at(nav::BtnNs.Offset) & 0x3FU;
  if (groups == 0) {
    Bad(nav::BtnMd.Offset, "BTNGR_Ns", "1 to 3", groups);
    return;
  }
  const unsigned most = MostButtons / groups;
  if (count < 1 || count > most || at(nav::BtnNs.Offset) > 0x3F) {
    Bad(nav::BtnNs.Offset, nav::BtnNs.Name, fmt::format("1 to {} in {} groups", most, groups),
        at(nav::BtnNs.Offset));
    return;
  }
  if (at(nav::NslBtnNs.Offset) > count) {
    Bad(nav::NslBtnNs.Offset, nav::NslBtnNs.Name, fmt::format("at most {}", count), at(nav::NslBtnNs.Offset));
  }
  if (at(nav::BtnOfn.Offset) + count > 255) {
    Bad(nav::BtnOfn.Offset, nav::BtnOfn.Name, fmt::format("at most {}", 255 - count), at(nav::BtnOfn.Offset));
  }
  for (const auto& [row, name] : {std::pair{nav::FoslBtn.Offset, nav::FoslBtn.Name},
                                  std::pair{nav::FoacBtn.Offset, nav::FoacBtn.Name}}) {
    if (at(row) > count && at(row) != KeepsButton) {
      Bad(row, name, fmt::format("at most {}, or 63", count), at(row));
    }
  }
  if (at(nav::HliReserved.Offset) != 0) {
    Bad(nav::HliReserved.Offset, "reserved", 0, at(nav::HliReserved.Offset));
  }
  const std::uint32_t start = Get(nav, nav::HliSPtm).Value;
  const std::uint32_t end = Get(nav, nav::HliEPtm).Value;
  const std::uint32_t choice = Get(nav, nav::BtnSlEPtm).Value;
  if (start > vobu.EndPtm || start >= end) {
    Bad(nav::HliSPtm.Offset, nav::HliSPtm.Name, fmt::format("at most {}, and before HLI_E_PTM", vobu.EndPtm),
        fmt::format("{} to {}", start, end));
  }
  if ((choice < start || choice > end) && choice != ForEver) {
    Bad(nav::BtnSlEPtm.Offset, nav::BtnSlEPtm.Name, fmt::format("{} to {}", start, end), choice);
  }
  CheckGroups(nav, groups);
  for (unsigned i = 0; i < groups * count; ++i) {
    const unsigned group = i / count;
    const unsigned button = i % count;
    CheckButton(nav, ButtonsAt + ButtonBytes * (group * most + button),
                fmt::format("BTNI {} of group {}", button + 1, group + 1), count);
  }
}

// Each group is for displays of its own: 0 normal, else bits for wide, letterbox and pan & scan.
void HighlightCheck::CheckGroups(ByteView nav, unsigned groups) const {
  const unsigned high = nav[nav::BtnMd.Offset];
  const unsigned low = nav[nav::BtnMd.Offset + 1];
  const std::array kinds{high & 7U, low >> 4U & 7U, low & 7U};
  unsigned displays = 0;
  for (unsigned i = 0; i < kinds.size(); ++i) {
    const unsigned kind = kinds.at(i);
    const bool used = i < groups;
    const bool overlaps = used && i > 0 && ((kind & displays) != 0 || kind == 0);
    if (overlaps || (!used && kind != 0) || (used && isKnown_ && !video_.IsWide() && kind != 0)) {
      Bad(nav::BtnMd.Offset, nav::BtnMd.Name, "a display of its own for each group",
          fmt::format("0x{:02X}{:02X}", high, low));
      return;
    }
    displays |= used ? kind : 0;
  }
  if ((high & 0xC8U) != 0 || (low & 0x88U) != 0) {
    Bad(nav::BtnMd.Offset, nav::BtnMd.Name, "reserved bits clear", fmt::format("0x{:02X}{:02X}", high, low));
  }
}

void HighlightCheck::CheckButton(ByteView nav, std::size_t at, const std::string& name,
                                 unsigned count) const {
  const auto byte = [&](std::size_t offset) { return unsigned{nav[at + offset]}; };
  const unsigned left = (byte(0) & 0x3FU) << 4U | byte(1) >> 4U;
  const unsigned right = (byte(1) & 3U) << 8U | byte(2);
  const unsigned top = (byte(3) & 0x3FU) << 4U | byte(4) >> 4U;
  const unsigned bottom = (byte(4) & 3U) << 8U | byte(5);
  const auto height = static_cast<unsigned>(FullHeight(video_.IsNtsc()));
  if (left >= right || right >= FullWidth || top >= bottom || bottom >= height) {
    Bad(at, name, fmt::format("an area of {}x{}", FullWidth, height),
        fmt::format("{} to {}, {} to {}", left, right, top, bottom));
  }
  if ((byte(1) & 0x0CU) != 0 || (byte(4) & 0x0CU) != 0 || byte(3) >> 6U > 1) {
    Bad(at, name, "reserved bits clear", "others");
  }
  for (std::size_t i = 6; i < 10; ++i) {
    if (byte(i) < 1 || byte(i) > count) {
      Bad(at + i, name, fmt::format("a neighbour from 1 to {}", count), byte(i));
    }
  }
  constexpr std::size_t CommandAt = 10;
  CommandBytes command{};
  std::copy_n(nav.begin() + static_cast<std::ptrdiff_t>(at + CommandAt), command.size(), command.begin());
  if (const auto fault = FaultOf(command)) {
    teller_->Tell(KindOf(*fault, isOurs_), sector_, at + CommandAt + fault->Byte, "HLI", name + " BTN_CMD",
                  fault->Expected, fault->Seen);
  }
}

}  // namespace quorvelant
