#include "mux/vobus.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/pack_header.h"
#include "mux/padding_packet.h"
#include "mux/vobu_decision.h"

namespace quorvelant {
namespace {

constexpr std::string_view MissedMarkTitle = "Chapter Mark";
constexpr std::string_view MissedMark =
    "Scene \"{}\" of track \"{}\" opens no cell: its mark at frame {} has no sequence header of its own "
    "behind "
    "it. Players can't jump to it.";

std::optional<std::int64_t> NextMarkHalves(const MuxState& state) {
  if (state.NextMark >= state.Input.Marks.size()) {
    return {};
  }
  return 2 * state.Input.Marks[state.NextMark].Frame;
}

// Lengths of the current picture and those behind it, up to the least frames of a VOBU.
std::int64_t LengthAhead(MuxState& state) {
  std::int64_t halves = 0;
  for (std::size_t i = 0; halves < 2 * std::int64_t{state.Timing.VobuMinFrames}; ++i) {
    const PictureUnit* unit = state.Pictures.Ahead(i);
    if (unit == nullptr) {
      break;
    }
    halves += unit->LengthHalves;
  }
  return halves;
}

// Half frames from the current picture to the first sequence header at or behind `mark`, or to the end of
// the track; no further than a VOBU may reach.
std::int64_t HalvesToMarked(MuxState& state, std::int64_t mark) {
  std::int64_t halves = state.Picture.ShownHalves();
  for (std::size_t i = 1; halves <= MostVobuHalves(state.Timing); ++i) {
    const PictureUnit* unit = state.Pictures.Ahead(i);
    if (unit == nullptr || (unit->SequenceHeader && state.HalvesAhead() + halves >= mark)) {
      break;
    }
    halves += unit->ShownHalves();
  }
  return halves;
}

VobuDecision DecideAtPicture(MuxState& state) {
  VobuQuestion question{.Elapsed = state.HalvesAhead(),
                        .InVobu = state.HalvesAhead() - state.VobuStartHalves,
                        .NextMark = NextMarkHalves(state),
                        .Ahead = LengthAhead(state),
                        .EndsSequence = state.Picture.EndCode,
                        .Still = state.Input.Kind == TrackKind::Still};
  if (MarkIsNear(question, state.Timing)) {
    question.ToMarked = HalvesToMarked(state, *question.NextMark);
  }
  return DecideVobu(question, state.Timing, state.Build.Rules);
}

// Begins the cell behind the half frames `halves`.
void BeginCell(MuxState& state, std::size_t mark, std::int64_t halves) {
  const bool known = mark < state.Input.Marks.size();
  state.Cells.push_back({.CellId = static_cast<std::uint8_t>(state.Cells.size() + 1),
                         .Scene = known ? state.Input.Marks[mark].Scene : 0,
                         .StartSector = state.Output.TotalSectors(),
                         .StartPts = state.PtsOfHalves(halves)});
  state.CellUopMask = known ? state.Input.Marks[mark].UopMask : 0;
  state.CellStartHalves = halves;
}

void EndCell(MuxState& state, std::int64_t endPts, std::int64_t endHalves) {
  VobuRecord& last = state.Vobus.back();
  last.LastOfCell = true;
  CellRecord& cell = state.Cells.back();
  cell.EndSector = last.EndSector;
  cell.LastVobuStartSector = last.StartSector;
  cell.EndPts = endPts;
  cell.Frames = static_cast<int>((endHalves - state.CellStartHalves + 1) / 2);
}

void EndVobu(MuxState& state, std::int64_t endPts) {
  VobuRecord& last = state.Vobus.back();
  last.EndSector = state.Output.TotalSectors() - 1;
  last.EndPts = endPts;
}

// Takes the sector of the navigation pack and begins its record behind the half frames `halves`.
void BeginVobu(MuxState& state, Clock navScr, std::int64_t halves, bool hasVideo) {
  VobuRecord record{.StartSector = state.Output.TotalSectors(),
                    .VobId = state.VobId,
                    .CellId = state.Cells.back().CellId,
                    .HasVideo = hasVideo,
                    .NavScr = navScr,
                    .StartPts = state.PtsOfHalves(halves),
                    .FramesAtStart = static_cast<double>(halves) / 2,
                    .CellFramesAtStart = static_cast<double>(halves - state.CellStartHalves) / 2,
                    .UopMask = state.CellUopMask};
  record.SubSync = SubpictureSync(state.Subpictures, record.StartPts, record.StartSector);
  // Written when the addresses of later VOBUs are known.
  std::ranges::fill(state.Output.NextSector(), std::uint8_t{0});
  record.FileNumber = state.Output.FileNumber();
  record.FileSector = state.Output.FileSectors() - 1;
  state.Vobus.push_back(record);
  state.VobuStartHalves = halves;
  state.ReferencesInVobu = 0;
  state.ReferencePairOpen = false;
  state.NavScr = navScr;
  state.LastScr = navScr;
  for (AudioState& stream : state.Audio) {
    AlignAudioClock(stream, navScr);
  }
}

// Opens the cell of the mark that was met; further marks met with it are missed.
void BeginMarkedCell(MuxState& state, std::int64_t halves) {
  const std::size_t mark = state.NextMark++;
  const std::size_t missed = state.NextMark;
  while (NextMarkHalves(state) && *NextMarkHalves(state) <= halves) {
    ++state.NextMark;
  }
  WarnOfMissedMarks(state, missed, state.NextMark);
  EndCell(state, state.Vobus.back().EndPts, halves);
  BeginCell(state, mark, halves);
}

bool RoomForCell(const MuxState& state) {
  return state.Cells.size() < std::numeric_limits<std::uint8_t>::max();
}

// Players wait the length of a cell once more where its last VOBU is a navigation pack alone.
void PadLoneNavPack(MuxState& state) {
  if (!state.Build.Rules.PadLoneNavPack ||
      state.Vobus.back().StartSector + 1 != state.Output.TotalSectors()) {
    return;
  }
  state.LastScr += SectorTicks;
  const ByteSpan sector = state.Output.NextSector();
  PutPackHeader(sector, ScrOf(state.LastScr, PackKind::Navigation, state.Build.Rules));
  PutPaddingPacket(sector, PackHeaderBytes);
}

}  // namespace

void OpenVob(MuxState& state) {
  while (NextMarkHalves(state) && *NextMarkHalves(state) <= 0) {
    ++state.NextMark;
  }
  WarnOfMissedMarks(state, 1, state.NextMark);
  BeginCell(state, 0, 0);
  BeginVobu(state, {}, 0, true);
}

void OpenVobuIfDue(MuxState& state) {
  if (!state.Picture.SequenceHeader || state.Picture.Type != PictureType::I) {
    return;
  }
  const VobuDecision decision = DecideAtPicture(state);
  if (!decision.Starts) {
    return;
  }
  SendDueUnits(state, state.LatestPts);  // of the VOBU that ends here
  const Clock wanted = state.TimeOfHalves(state.HalvesAhead() - state.FormerLengthHalves);
  SendAudioAhead(state, wanted, state.Times.Dts);
  const Clock navScr = std::max(wanted, state.LastScr + SectorTicks);
  CheckBitRate(state, navScr);
  EndVobu(state, state.PtsOfHalves(state.HalvesAhead()));
  if (decision.OpensCell && RoomForCell(state)) {
    BeginMarkedCell(state, state.HalvesAhead());
  }
  BeginVobu(state, navScr, state.HalvesAhead(), true);
}

void OpenHeldVobu(MuxState& state, Clock wanted) {
  const std::int64_t halves = state.ElapsedHalves;
  const bool marked = NextMarkHalves(state) && *NextMarkHalves(state) <= halves && RoomForCell(state);
  if (marked) {
    PadLoneNavPack(state);
  }
  const Clock navScr = std::max(wanted, state.LastScr + SectorTicks);
  EndVobu(state, state.PtsOfHalves(halves));
  if (marked) {
    BeginMarkedCell(state, halves);
  }
  BeginVobu(state, navScr, halves, false);
}

void NotePictureEnd(MuxState& state) {
  const PictureUnit& picture = state.Picture;
  VobuRecord& record = state.Vobus.back();
  if (picture.EndCode) {
    record.SeqEndPts = state.PtsOfHalves(state.ElapsedHalves);
  }
  if (picture.Type == PictureType::B) {
    return;
  }
  const bool second = picture.Field() && state.ReferencePairOpen;
  state.ReferencePairOpen = picture.Field() && !second;
  if (!second) {
    ++state.ReferencesInVobu;
  }
  if (state.ReferencesInVobu <= record.RefEnds.size()) {
    record.RefEnds[state.ReferencesInVobu - 1] = state.DataEndSector;
  }
}

void NoteAudioPack(MuxState& state, std::size_t index, std::uint32_t sector, std::int64_t pts) {
  const auto number = static_cast<std::size_t>(state.Audio[index].Input->StreamNumber);
  std::size_t& first = state.FirstUnsynced[index];
  if (!state.Build.Rules.AudioSyncLeavesVobu) {
    first = std::max(first, state.Vobus.size() - 1);
  }
  for (; first < state.Vobus.size() && pts >= state.Vobus[first].StartPts; ++first) {
    state.Vobus[first].AudioSync.at(number) = sector;
  }
}

void CloseRecords(MuxState& state, std::int64_t endPts) {
  PadLoneNavPack(state);
  EndVobu(state, endPts);
  EndCell(state, endPts, state.ElapsedHalves);
}

void WarnOfMissedMarks(const MuxState& state, std::size_t first, std::size_t last) {
  for (std::size_t i = first; i < last && i < state.Input.Marks.size(); ++i) {
    const MuxMark& mark = state.Input.Marks[i];
    TellWarning(state.Build.Ui, MissedMarkTitle,
                fmt::format(MissedMark, mark.Name, state.Input.Name, mark.Frame));
  }
}

}  // namespace quorvelant
