#include "mux/highlights.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "base/timecode.h"
#include "disc/command_hex.h"
#include "disc/nav_layout.h"

namespace quorvelant {
namespace {

constexpr std::size_t ButtonBytes = 18;
constexpr std::int64_t Endless = std::numeric_limits<std::int64_t>::max();

// Whether a picture may wait with its buttons: in a still track, and for players also in a cell with a still
// time.
bool ButtonsMayStay(const NavSource& source) {
  return source.Input.Kind == TrackKind::Still || source.Rules.ButtonsOutlastStillTime;
}

// Whether the cell of this VOBU waits with its buttons.
bool ButtonsStay(const NavSource& source, const VobuRecord& record) {
  const MuxMark* mark = MarkOf(source, record);
  const bool waits = source.Input.Kind == TrackKind::Still || (mark != nullptr && mark->HoldsByStillTime);
  return waits && ButtonsMayStay(source);
}

// When the cell of this VOBU starts, in ticks; a tick early where a VOBU of NTSC starts between two frames.
std::int64_t CellStartPts(const NavSource& source, const VobuRecord& record) {
  return record.StartPts - (record.CellFields * TimingOf(source.Input.Ntsc).FramePeriod + 1) / 2;
}

// The set in force in a VOBU and the time at which it ends there.
struct Candidate {
  const MuxHighlight* Set = nullptr;
  std::int64_t EndPts = 0;
};

Candidate SetOf(const NavSource& source, const VobuRecord& record) {
  const auto& sets = source.Input.Highlights;
  // After the last set that may have begun: within this VOBU, or traditionally before it.
  const auto next = source.Rules.ButtonsStartInTheirVobu
                        ? std::ranges::lower_bound(sets, record.EndPts, {}, &MuxHighlight::StartPts)
                        : std::ranges::upper_bound(sets, record.StartPts, {}, &MuxHighlight::StartPts);
  if (next == sets.begin()) {
    return {};
  }
  const MuxHighlight& set = *(next - 1);
  const std::int64_t following = next == sets.end() ? Endless : next->StartPts;
  const std::int64_t end = std::min(set.EndPts > set.StartPts ? set.EndPts : Endless, following);
  if (end > CellStartPts(source, record) && ButtonsStay(source, record)) {
    return {&set, Endless};
  }
  return record.StartPts < end ? Candidate{&set, end} : Candidate{};
}

std::uint32_t EndTicksOf(const NavSource& source, std::int64_t endPts) {
  if (endPts == Endless) {
    return ButtonsMayStay(source) ? EndlessHighlight : static_cast<std::uint32_t>(source.VobEndPts);
  }
  return static_cast<std::uint32_t>(endPts);
}

std::uint8_t Nibbles(std::int32_t high, std::int32_t low) {
  return static_cast<std::uint8_t>((high & 0xF) << 4 | (low & 0xF));
}

// Two bytes in the order emphasis 2, emphasis 1, pattern, background.
disc::Number Quad(const ColorQuad& quad) {
  return {static_cast<std::uint64_t>(Nibbles(quad[0], quad[1]) << 8 | Nibbles(quad[2], quad[3]))};
}

// Two coordinates of ten bits after two bits of another field.
std::uint64_t Span(std::int32_t lead, std::int32_t start, std::int32_t end) {
  const auto coordinate = [](std::int32_t value) {
    return static_cast<std::uint64_t>(std::clamp(value, 0, 1023));
  };
  return static_cast<std::uint64_t>(lead & 0b11) << 22 | coordinate(start) << 12 | coordinate(end);
}

// The number of the button that a link names; the button's own where the name is nowhere.
std::uint64_t LinkedButton(const std::vector<HighlightButton>& buttons, std::string_view name,
                           std::size_t own, std::size_t count) {
  return FindButton(std::span(buttons).first(count), name).value_or(own) + 1;
}

void PutButton(const MuxHighlight& set, std::size_t own, std::size_t count, std::size_t areaPlace,
               ByteSpan target) {
  const HighlightButton& button = set.Play->Buttons[own];
  const HighlightArea& area = button.Areas[areaPlace];
  PutBytes(target, 0, 3, Span(button.ColorScheme, area.X1, area.X2));
  PutBytes(target, 3, 3, Span(button.AutoAction ? 1 : 0, area.Y1, area.Y2));
  std::size_t at = 6;
  for (const std::string* link : {&button.Up, &button.Down, &button.Left, &button.Right}) {
    PutBytes(target, at++, 1, LinkedButton(set.Play->Buttons, *link, own, count));
  }
  if (own < set.CommandHex.size()) {
    const auto command = ParseCommandHex(set.CommandHex[own]);
    std::ranges::copy(command, target.begin() + 10);
  }
}

// BTN_MD: the number of groups, then the display of each.
disc::Number ButtonMode(const std::vector<ButtonGroup>& groups) {
  std::uint64_t mode = groups.size() << 12;
  for (std::size_t i = 0; i < groups.size(); ++i) {
    mode |= std::uint64_t{groups[i].DisplayType} << (8 - 4 * i);
  }
  return {mode};
}

void PutColours(const HighlightPlay& play, ByteSpan sector) {
  std::size_t at = 0;
  for (const ColorScheme& scheme : play.Schemes) {
    for (const ColorQuad* quad :
         {&scheme.SelectionColor, &scheme.SelectionContrast, &scheme.ActionColor, &scheme.ActionContrast}) {
      Put(sector, nav::ButtonColours, Quad(*quad), at++);
    }
  }
}

}  // namespace

MuxHighlight TimeHighlight(const HighlightPlay& play, const FrameTiming& timing) {
  const auto ticks = [&](const std::string& timecode) {
    return TimecodeToFrames(timecode, timing.FramesPerSecond) * timing.FramePeriod;
  };
  MuxHighlight set;
  set.Play = &play;
  set.StartPts = VideoStartPts + ticks(play.StartTimeToVideo);
  set.EndPts = set.StartPts + ticks(play.Duration);
  const std::int64_t selection = ticks(play.SelectionEndTime);
  set.SelectionEndPts = selection == 0 ? 0 : VideoStartPts + selection;
  return set;
}

std::optional<ShownHighlight> FindHighlight(const NavSource& source, std::size_t index) {
  const VobuRecord& record = source.Records[index];
  const Candidate here = SetOf(source, record);
  if (here.Set == nullptr) {
    return std::nullopt;
  }
  ShownHighlight shown{.Set = here.Set, .EndTicks = EndTicksOf(source, here.EndPts)};
  const bool cellBegins = index > 0 && source.Records[index - 1].CellId != record.CellId;
  if (index > 0 && !(cellBegins && source.Rules.ButtonsAnewInEachCell)) {
    shown.Repeated = SetOf(source, source.Records[index - 1]).Set == here.Set;
  }
  return shown;
}

std::vector<std::size_t> UnshownHighlights(const NavSource& source) {
  const auto& sets = source.Input.Highlights;
  std::vector<bool> shown(sets.size());
  for (const VobuRecord& record : source.Records) {
    if (const MuxHighlight* set = sets.empty() ? nullptr : SetOf(source, record).Set) {
      shown[static_cast<std::size_t>(set - sets.data())] = true;
    }
  }
  std::vector<std::size_t> unshown;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    if (!shown[i]) {
      unshown.push_back(i);
    }
  }
  return unshown;
}

void PutHighlight(const ShownHighlight& shown, const std::vector<ButtonGroup>& groups, ByteSpan sector) {
  const MuxHighlight& set = *shown.Set;
  const HighlightPlay& play = *set.Play;
  const std::size_t places = MostButtonsOnDisc(groups.size());
  const std::size_t count = std::min(play.Buttons.size(), places);
  const std::int64_t selectionEnd = set.SelectionEndPts == 0 ? shown.EndTicks : set.SelectionEndPts;
  const auto within = [count](std::int32_t button) {
    return disc::Number{
        button >= 0 && static_cast<std::size_t>(button) <= count ? static_cast<std::uint64_t>(button) : 0};
  };

  Put(sector, nav::HliSs, disc::Number{shown.Repeated ? 2U : 1U});
  Put(sector, nav::HliSPtm, disc::Ticks{static_cast<std::uint32_t>(set.StartPts)});
  Put(sector, nav::HliEPtm, disc::Ticks{shown.EndTicks});
  Put(sector, nav::BtnSlEPtm,
      disc::Ticks{static_cast<std::uint32_t>(std::min<std::int64_t>(selectionEnd, shown.EndTicks))});
  Put(sector, nav::BtnMd, ButtonMode(groups));
  Put(sector, nav::BtnOfn, disc::Number{static_cast<std::uint8_t>(play.Offset)});
  Put(sector, nav::BtnNs, disc::Number{count});
  Put(sector, nav::NslBtnNs,
      disc::Number{
          std::min<std::uint64_t>(count, static_cast<std::uint32_t>(std::max(play.NumericalButtons, 0)))});
  Put(sector, nav::FoslBtn, within(play.ForcedSelect));
  Put(sector, nav::FoacBtn, within(play.ForcedAction));
  PutColours(play, sector);
  for (std::size_t group = 0; group < groups.size(); ++group) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t at = nav::Buttons.Offset + (group * places + i) * ButtonBytes;
      PutButton(set, i, count, groups[group].AreaPlace, sector.subspan(at, ButtonBytes));
    }
  }
}

}  // namespace quorvelant
