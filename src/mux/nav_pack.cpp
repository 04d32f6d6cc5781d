#include "mux/nav_pack.h"

#include <algorithm>

#include "disc/bcd_time.h"
#include "disc/nav_layout.h"
#include "mux/highlights.h"
#include "mux/pack_header.h"

namespace quorvelant {
namespace {

disc::Ticks Stamp(std::int64_t ticks) {
  return {static_cast<std::uint32_t>(ticks)};
}

// The bytes that every navigation pack has.
void PutFrame(ByteSpan sector) {
  std::ranges::fill(sector, std::uint8_t{0});
  std::ranges::copy(nav::SystemHeaderBytes, sector.begin() + nav::SystemHeader.Offset);
  Put(sector, nav::PciStartCode, disc::Number{nav::PrivateStream2});
  Put(sector, nav::PciLength, disc::Number{nav::PciPacketBytes});
  Put(sector, nav::PciSubstream, disc::Number{nav::PciId});
  Put(sector, nav::DsiStartCode, disc::Number{nav::PrivateStream2});
  Put(sector, nav::DsiLength, disc::Number{nav::DsiPacketBytes});
  Put(sector, nav::DsiSubstream, disc::Number{nav::DsiId});
}

// VOBU_SE_E_PTM. In motion video only the VOB's last picture can carry a sequence end code, and its
// display ends with the VOB.
std::int64_t SequenceEndPts(const NavSource& source, const VobuRecord& record, bool lastOfVob) {
  const bool motionEnd = source.Input.Kind == TrackKind::Motion && lastOfVob && record.SeqEndPts != 0;
  return motionEnd ? source.VobEndPts : record.SeqEndPts;
}

void PutPresentation(const NavSource& source, const VobuRecord& record, bool lastOfVob, disc::BcdTime elapsed,
                     ByteSpan sector) {
  Put(sector, nav::PciLbn, disc::Sectors{record.StartSector});
  const MuxMark* mark = MarkOf(source, record);
  Put(sector, nav::VobuUopCtl, disc::Number{mark != nullptr ? mark->UopMask : 0});
  Put(sector, nav::VobuSPtm, Stamp(record.StartPts));
  Put(sector, nav::VobuEPtm, Stamp(lastOfVob ? source.VobEndPts : record.EndPts));
  Put(sector, nav::VobuSeEPtm, Stamp(SequenceEndPts(source, record, lastOfVob)));
  Put(sector, nav::PciElapsed, elapsed);
}

void PutDataSearch(const NavSource& source, const VobuRecord& record, std::uint64_t scrBase,
                   disc::BcdTime elapsed, ByteSpan sector) {
  Put(sector, nav::NvPckScr, disc::Ticks{static_cast<std::uint32_t>(scrBase)});
  Put(sector, nav::DsiLbn, disc::Sectors{record.StartSector});
  Put(sector, nav::VobuEa, disc::Sectors{record.EndSector - record.StartSector});
  for (std::size_t i = 0; i < record.RefEnds.size(); ++i) {
    if (record.RefEnds[i] > record.StartSector) {
      Put(sector, nav::ReferenceEa, disc::Sectors{record.RefEnds[i] - record.StartSector}, i);
    }
  }
  Put(sector, nav::VobIdn, disc::Number{record.VobId});
  Put(sector, nav::CellIdn, disc::Number{record.CellId});
  Put(sector, nav::DsiElapsed, elapsed);
  Put(sector, nav::VobVSPtm, Stamp(source.VobStartPts));
  Put(sector, nav::VobVEPtm, Stamp(source.VobEndPts));
}

// A_SYNCA: the distance to the pack of the first frame that sounds from the VOBU's start on.
disc::Number AudioSyncOf(const VobuRecord& record, std::uint32_t syncSector) {
  const std::uint32_t distance = syncSector == 0 ? nav::NoAudioPack : syncSector - record.StartSector;
  return {std::min<std::uint32_t>(distance, nav::NoAudioPack)};
}

// SP_SYNCA: the distance to the unit shown at the VOBU's start, which lies before it.
disc::Number SubpictureSyncOf(std::uint32_t distance) {
  return {distance == NoSubpictureSync ? distance : (distance & 0x00FFFFFF) | 0x80000000};
}

// Streams that the track does not carry keep 0.
void PutSync(const MuxInput& input, const VobuRecord& record, ByteSpan sector) {
  for (const MuxAudioStream& stream : input.Audio) {
    const auto number = static_cast<std::size_t>(stream.StreamNumber);
    Put(sector, nav::AudioSync, AudioSyncOf(record, record.AudioSync.at(number)), number);
  }
  for (const MuxSubStream& stream : input.Subpictures) {
    const auto number = static_cast<std::size_t>(stream.StreamNumber);
    Put(sector, nav::SubpictureSync, SubpictureSyncOf(record.SubSync.at(number)), number);
  }
}

}  // namespace

const MuxMark* MarkOf(const NavSource& source, const VobuRecord& record) {
  return record.Mark < source.Input.Marks.size() ? &source.Input.Marks[record.Mark] : nullptr;
}

void BuildNavPack(const NavSource& source, const SearchTables& search, std::size_t index, ByteSpan sector) {
  const VobuRecord& record = source.Records[index];
  const FrameTiming& timing = TimingOf(source.Input.Ntsc);
  const bool lastOfVob = index + 1 == source.Records.size();
  const SystemClockReference scr = ScrOf(record.NavScr, PackKind::Navigation, source.Rules);
  const disc::BcdTime elapsed = ToBcdTime(record.CellFields / 2, timing.FramesPerSecond);

  PutFrame(sector);
  PutPackHeader(sector, scr);
  PutPresentation(source, record, lastOfVob, elapsed, sector);
  PutDataSearch(source, record, scr.Base, elapsed, sector);
  search.Fill(index, sector);
  PutSync(source.Input, record, sector);
  if (const auto shown = FindHighlight(source, index)) {
    const HighlightPlay& play = *shown->Set->Play;
    PutHighlight(*shown, ButtonGroupsOf(play, source.Input.Aspect, source.Input.DisplayMode), sector);
  }
}

}  // namespace quorvelant
