#include "mux/vobus.h"

#include <algorithm>

#include "disc/limits.h"
#include "mux/failures.h"
#include "mux/interleave.h"
#include "mux/missed_marks.h"
#include "mux/pack_header.h"
#include "mux/padding_packet.h"
#include "mux/vobu_decision.h"

namespace quorvelant {
namespace {

std::optional<std::int64_t> NextMarkFields(const MuxState& state) {
  if (state.NextMark >= state.Input.Marks.size()) {
    return {};
  }
  return 2 * state.Input.Marks[state.NextMark].Frame;
}

// Lengths of the current picture and those after it, up to the least frames of a VOBU.
std::int64_t LengthAhead(MuxState& state) {
  std::int64_t fields = 0;
  for (std::size_t i = 0; fields < 2 * std::int64_t{state.Timing.VobuMinFrames}; ++i) {
    const PictureUnit* unit = state.Pictures.After(i);
    if (unit == nullptr) {
      break;
    }
    fields += unit->LengthFields;
  }
  return fields;
}

// Fields from the current picture to the first sequence header at or after `mark`, or to the end of
// the track; no further than a VOBU may reach.
std::int64_t FieldsToMarked(MuxState& state, std::int64_t mark) {
  std::int64_t fields = state.Picture.ShownFields();
  for (std::size_t i = 1; fields <= MostVobuFields(state.Timing); ++i) {
    const PictureUnit* unit = state.Pictures.After(i);
    if (unit == nullptr || (unit->SequenceHeader && state.FieldsBeforePicture() + fields >= mark)) {
      break;
    }
    fields += unit->ShownFields();
  }
  return fields;
}

VobuDecision DecideAtPicture(MuxState& state) {
  VobuQuestion question{.Elapsed = state.FieldsBeforePicture(),
                        .InVobu = state.FieldsBeforePicture() - state.VobuStartFields,
                        .NextMark = NextMarkFields(state),
                        .Ahead = LengthAhead(state),
                        .EndsSequence = state.Picture.EndCode,
                        .Still = state.Input.Kind == TrackKind::Still};
  if (MarkIsNear(question, state.Timing)) {
    question.ToMarked = FieldsToMarked(state, *question.NextMark);
  }
  return DecideVobu(question, state.Timing, state.Build.Rules);
}

// Begins the cell after `fields` fields.
void BeginCell(MuxState& state, std::size_t mark, std::int64_t fields) {
  const bool known = mark < state.Input.Marks.size();
  state.Cells.push_back({.CellId = static_cast<std::uint8_t>(state.Cells.size() + 1),
                         .Scene = known ? state.Input.Marks[mark].Scene : 0,
                         .StartSector = state.Output.TotalSectors(),
                         .StartPts = state.PtsOfFields(fields)});
  state.CellMark = mark;
  state.CellStartFields = fields;
}

void EndCell(MuxState& state, std::int64_t endPts, std::int64_t endFields) {
  VobuRecord& last = state.Vobus.back();
  last.LastOfCell = true;
  CellRecord& cell = state.Cells.back();
  cell.EndSector = last.EndSector;
  cell.LastVobuStartSector = last.StartSector;
  cell.EndPts = endPts;
  cell.Frames = static_cast<int>((endFields - state.CellStartFields + 1) / 2);
}

void EndVobu(MuxState& state, std::int64_t endPts) {
  VobuRecord& last = state.Vobus.back();
  last.EndSector = state.Output.TotalSectors() - 1;
  last.EndPts = endPts;
}

// Takes the sector of the navigation pack and begins its record after `fields` fields.
void BeginVobu(MuxState& state, Clock navScr, std::int64_t fields, bool hasVideo) {
  VobuRecord record{.StartSector = state.Output.TotalSectors(),
                    .VobId = state.VobId,
                    .CellId = state.Cells.back().CellId,
                    .HasVideo = hasVideo,
                    .NavScr = navScr,
                    .StartPts = state.PtsOfFields(fields),
                    .CellFields = fields - state.CellStartFields,
                    .Mark = state.CellMark};
  record.SubSync = SubpictureSync(state.Subpictures, record.StartPts, record.StartSector);
  // Written when the addresses of later VOBUs are known.
  std::ranges::fill(state.Output.NextSector(), std::uint8_t{0});
  record.FileNumber = state.Output.FileNumber();
  record.FileSector = state.Output.FileSectors() - 1;
  state.Vobus.push_back(record);
  state.VobuStartFields = fields;
  state.ReferencesInVobu = 0;
  state.ReferencePairOpen = false;
  state.NavScr = navScr;
  state.LastScr = navScr;
  for (AudioState& stream : state.Audio) {
    AlignAudioClock(stream, navScr);
  }
}

// Opens the cell of the mark that was met; further marks met with it are missed.
void BeginMarkedCell(MuxState& state, std::int64_t fields) {
  const std::size_t mark = state.NextMark++;
  const std::size_t missed = state.NextMark;
  while (NextMarkFields(state) && *NextMarkFields(state) <= fields) {
    ++state.NextMark;
  }
  EndCell(state, state.Vobus.back().EndPts, fields);
  BeginCell(state, mark, fields);
  ReportMissedMarks(state, missed, state.NextMark);
}

bool RoomForCell(const MuxState& state) {
  return state.Cells.size() < MostCells;
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
  while (NextMarkFields(state) && *NextMarkFields(state) <= 0) {
    ++state.NextMark;
  }
  BeginCell(state, 0, 0);
  ReportMissedMarks(state, 1, state.NextMark);
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
  const Clock wanted = state.TimeOfFields(state.FieldsBeforePicture() - state.PreviousLengthFields);
  SendAudioAhead(state, wanted, state.Times.Dts);
  const Clock navScr = std::max(wanted, state.LastScr + SectorTicks);
  CheckBitRate(state, navScr);
  EndVobu(state, state.PtsOfFields(state.FieldsBeforePicture()));
  if (decision.OpensCell && RoomForCell(state)) {
    BeginMarkedCell(state, state.FieldsBeforePicture());
  }
  BeginVobu(state, navScr, state.FieldsBeforePicture(), true);
}

void OpenHeldVobu(MuxState& state, Clock wanted) {
  const std::int64_t fields = state.ElapsedFields;
  const bool marked = NextMarkFields(state) && *NextMarkFields(state) <= fields && RoomForCell(state);
  if (marked) {
    PadLoneNavPack(state);
  }
  const Clock navScr = std::max(wanted, state.LastScr + SectorTicks);
  EndVobu(state, state.PtsOfFields(fields));
  if (marked) {
    BeginMarkedCell(state, fields);
  }
  BeginVobu(state, navScr, fields, false);
}

void NotePictureEnd(MuxState& state) {
  const PictureUnit& picture = state.Picture;
  VobuRecord& record = state.Vobus.back();
  if (picture.EndCode) {
    record.SeqEndPts = state.PtsOfFields(state.ElapsedFields);
  }
  if (picture.Type == PictureType::B) {
    return;
  }
  const bool second = picture.IsField() && state.ReferencePairOpen;
  state.ReferencePairOpen = picture.IsField() && !second;
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
  EndCell(state, endPts, state.ElapsedFields);
}

}  // namespace quorvelant
