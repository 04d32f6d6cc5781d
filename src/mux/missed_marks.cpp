#include "mux/missed_marks.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <utility>

#include "disc/limits.h"
#include "mux/failures.h"
#include "mux/messages.h"

namespace quorvelant {
namespace {

// Pictures that are looked through for the next place.
constexpr std::size_t MostAhead = 256;

// The frame of the first picture after the current one at which a cell can open.
std::optional<std::int64_t> NextPlace(MuxState& state) {
  std::int64_t fields = state.ElapsedFields;
  for (std::size_t i = 1; state.Input.Kind == TrackKind::Motion && i < MostAhead; ++i) {
    const PictureUnit* unit = state.Pictures.After(i);
    if (unit == nullptr) {
      break;
    }
    if (unit->SequenceHeader && unit->Type == PictureType::I) {
      return (fields + 1) / 2;
    }
    fields += unit->ShownFields();
  }
  return std::nullopt;
}

// The same at the end of the track: its last VOBU, unless that opens a cell already.
std::optional<std::int64_t> LastPlace(const MuxState& state) {
  const bool free = state.VobuStartFields > state.CellStartFields && state.Input.Kind == TrackKind::Motion;
  return free ? std::optional((state.VobuStartFields + 1) / 2) : std::nullopt;
}

std::string Remedy(std::optional<std::int64_t> place) {
  return place ? fmt::format(
                     "The nearest frame that works is {}: move the mark there, or let --analyse move "
                     "every mark to such a frame.",
                     *place)
               : std::string("Remove the mark.");
}

// What stands in the way of a mark, and the way out.
Message WhyMissed(MuxState& state, const MuxMark& mark) {
  if (state.Cells.size() >= MostCells) {
    return MessageOf(message::MarkBeyondCells, {}, mark.Name, state.Input.Name, mark.Frame, MostCells);
  }
  const bool ended = state.Pictures.AtEnd() && state.Pictures.Front() == nullptr;
  std::string reason;
  std::optional<std::int64_t> place;
  if (ended && 2 * mark.Frame >= state.ElapsedFields) {
    reason =
        fmt::format("lies after the end of the track, which has {} frames", (state.ElapsedFields + 1) / 2);
    place = LastPlace(state);
  } else if (ended) {
    reason = fmt::format("falls on picture {}, after the last sequence header", mark.Frame);
    place = LastPlace(state);
  } else {
    const MuxMark& owner = state.Input.Marks[state.CellMark];
    reason = fmt::format("leads to picture {}, where scene \"{}\" begins already", state.CellStartFields / 2,
                         owner.Name);
    place = NextPlace(state);
  }
  return MessageOf(message::MarkOpensNoCell, {}, mark.Name, state.Input.Name, mark.Frame, reason,
                   Remedy(place));
}

}  // namespace

void ReportMissedMarks(MuxState& state, std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < last && i < state.Input.Marks.size(); ++i) {
    const MuxMark& mark = state.Input.Marks[i];
    Message why = WhyMissed(state, mark);
    if (mark.Plays) {
      RefuseOrWarn(state.Build, std::move(why));
    } else {
      why.Level = Severity::Warning;
      state.Build.Ui.Tell(why);
    }
  }
}

}  // namespace quorvelant
