#include "verify/nav_check.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "disc/nav_layout.h"
#include "verify/numbered_names.h"
#include "verify/search_check.h"

namespace quorvelant {
namespace {

class NavCheck {
 public:
  NavCheck(const VobState& vob, std::span<const std::uint8_t> tags, const NavCheckOrder& order)
      : vob_(&vob), tags_(tags), order_(&order), records_(vob.Records) {}

  void Run() {
    CheckVobTimes();
    for (std::size_t i = 0; i < records_.size(); ++i) {
      const NavRecord& record = records_[i];
      const bool newCell = i == 0 || records_[i - 1].Vobu.CellId != record.Vobu.CellId;
      cellStart_ = newCell ? record.Vobu.StartPtm : cellStart_;
      CheckGeneral(i);
      CheckReferences(i);
      CheckAudioSync(record);
      CheckSubpictureSync(record);
      CheckInterleaving(record);
    }
  }

 private:
  template <class Expected, class Seen>
  void Tell(const MessageKind& kind, const NavRecord& record, std::size_t offset, std::string_view field,
            const Expected& expected, const Seen& seen) const {
    order_->Teller.Tell(kind, record.Vobu.Sector, offset, offset < nav::DsiStartCode.Offset ? "PCI" : "DSI",
                        field, expected, seen);
  }
  [[nodiscard]] const VobuVideo& VideoOf(std::size_t i) const { return vob_->Video.Vobus().at(i); }

  void CheckVobTimes() const {
    const auto& videos = vob_->Video.Vobus();
    const auto shown = [](const VobuVideo& each) { return each.Start.has_value(); };
    const auto first = std::ranges::find_if(videos, shown);
    if (first == videos.end()) {
      return;
    }
    const auto last = std::find_if(videos.rbegin(), videos.rend(), shown);
    const std::int64_t end = records_.back().Vobu.EndPtm;
    for (const NavRecord& record : records_) {
      const std::int64_t start = record.Long(nav::VobVSPtm.Offset);
      if (std::abs(2 * start - *first->Start) > 1) {
        Tell(message::NavWrong, record, nav::VobVSPtm.Offset, nav::VobVSPtm.Name, *first->Start / 2, start);
      }
      const std::int64_t stop = record.Long(nav::VobVEPtm.Offset);
      const bool held = stop == end && 2 * stop > last->Stop;  // the last picture may stay
      if (std::abs(2 * stop - last->Stop) > 1 && !held) {
        Tell(message::NavWrong, record, nav::VobVEPtm.Offset, nav::VobVEPtm.Name, last->Stop / 2, stop);
      }
    }
  }

  void CheckGeneral(std::size_t i) const {
    const NavRecord& record = records_[i];
    const VobuFacts& vobu = record.Vobu;
    const std::uint32_t sectors = vobu.Last - vobu.Sector;
    if (record.Long(nav::VobuEa.Offset) != sectors) {
      Tell(message::NavWrong, record, nav::VobuEa.Offset, nav::VobuEa.Name, sectors,
           record.Long(nav::VobuEa.Offset));
    }
    if (i > 0 && std::abs(std::int64_t{vobu.StartPtm} - records_[i - 1].Vobu.EndPtm) > 1) {
      Tell(message::NavWrong, record, nav::VobuSPtm.Offset, nav::VobuSPtm.Name,
           fmt::format("{}, where the VOBU before ends", records_[i - 1].Vobu.EndPtm), vobu.StartPtm);
    }
    if (vobu.EndPtm <= vobu.StartPtm) {
      Tell(message::NavWrong, record, nav::VobuEPtm.Offset, nav::VobuEPtm.Name,
           fmt::format("after {}", vobu.StartPtm), vobu.EndPtm);
    }
    CheckPictureTimes(i);
    const std::int64_t elapsed = std::int64_t{vobu.StartPtm} - cellStart_;
    for (const auto& [raw, offset] :
         {std::pair{record.Elapsed, nav::PciElapsed.Offset},
          std::pair{record.Long(nav::DsiElapsed.Offset), nav::DsiElapsed.Offset}}) {
      const IfoTime time{raw};
      const TimeAgreement agrees =
          time.IsValid() ? Agreement(time, elapsed, order_->IsNtsc) : TimeAgreement::None;
      const bool rateOdd = raw != 0 && time.Rate() != (order_->IsNtsc ? 30 : 25);
      if (agrees == TimeAgreement::None || rateOdd) {
        Tell(message::PlayTimeWrong, record, offset, "C_ELTM",
             fmt::format("{:.3f} s", static_cast<double>(elapsed) / 90000), time.Text());
      } else if (agrees == TimeAgreement::RealSeconds) {
        Tell(message::PlayTimeLoose, record, offset, "C_ELTM", "frames counted", "real seconds");
      }
    }
  }

  void CheckPictureTimes(std::size_t i) const {
    const NavRecord& record = records_[i];
    const VobuVideo& video = VideoOf(i);
    if (!video.Start) {
      if (record.SequenceEndPtm != 0) {
        Tell(message::NavWrong, record, nav::VobuSeEPtm.Offset, nav::VobuSeEPtm.Name, "0 without video",
             record.SequenceEndPtm);
      }
      return;
    }
    if (std::abs(2 * std::int64_t{record.Vobu.StartPtm} - *video.Start) > 1) {
      Tell(message::NavWrong, record, nav::VobuSPtm.Offset, nav::VobuSPtm.Name, *video.Start / 2,
           record.Vobu.StartPtm);
    }
    const std::int64_t late = 2 * std::int64_t{record.Vobu.EndPtm} - video.Stop;
    const bool still = video.EndsWithCode && video.Pictures == 1 && late > 0;
    if (std::abs(late) > 1 && !still) {
      const bool held = late > 0 && i + 1 == records_.size();
      Tell(held ? message::NavLoose : message::NavWrong, record, nav::VobuEPtm.Offset, nav::VobuEPtm.Name,
           video.Stop / 2, record.Vobu.EndPtm);
    }
    if (record.SequenceEndPtm != 0) {
      const std::int64_t off = 2 * std::int64_t{record.SequenceEndPtm} - video.Stop;
      if (!video.EndsWithCode || (std::abs(off) > 1 && record.SequenceEndPtm != record.Vobu.EndPtm)) {
        Tell(message::NavWrong, record, nav::VobuSeEPtm.Offset, nav::VobuSeEPtm.Name,
             video.EndsWithCode ? video.Stop / 2 : 0, record.SequenceEndPtm);
      }
    } else if (video.EndsWithCode) {
      Tell(message::NavLoose, record, nav::VobuSeEPtm.Offset, nav::VobuSeEPtm.Name, video.Stop / 2, 0);
    }
  }

  void CheckReferences(std::size_t i) const {
    const NavRecord& record = records_[i];
    const VobuVideo& video = VideoOf(i);
    const std::uint32_t sectors = record.Vobu.Last - record.Vobu.Sector;
    for (std::size_t k = 0; k < 3; ++k) {
      const std::size_t offset = nav::ReferenceEa.Offset + 4 * k;
      const std::uint32_t said = record.Long(offset);
      constexpr std::array Fields{"VOBU_1STREF_EA", "VOBU_2NDREF_EA", "VOBU_3RDREF_EA"};
      const char* field = Fields.at(k);
      const auto& ends = video.ReferenceEnds;
      if (k < ends.size()) {
        const std::uint32_t wanted = ends[k] - record.Vobu.Sector;
        const bool late = said > wanted && said <= sectors && !order_->IsOurs;
        // The code that ends the sequence may be taken for a part of the last picture.
        const bool isCode =
            k + 1 == ends.size() && video.EndsWithCode && said == video.CodeEnd - record.Vobu.Sector;
        if (said != wanted && !isCode) {
          Tell(late ? message::NavLoose : message::NavWrong, record, offset, field, wanted, said);
        }
        continue;
      }
      const std::uint32_t lastEnd = ends.empty() ? 0 : ends.back() - record.Vobu.Sector;
      if (said != 0 && (ends.empty() || (said != lastEnd && said != record.Long(offset - 4)))) {
        Tell(message::NavWrong, record, offset, field, lastEnd, said);
      }
    }
  }

  // A_SYNCA leads to the pack whose sound is due at the start of the VOBU, or next.
  void CheckAudioSync(const NavRecord& record) const {
    static const auto fields = NumberedNames<8>("A_SYNCA");
    for (unsigned i = 0; i < 8; ++i) {
      const std::size_t offset = nav::AudioSync.Offset + std::size_t{2} * i;
      const auto value = static_cast<unsigned>(record.Get(offset, 2));
      const std::uint8_t there = TagAt(AudioSector(record, value));
      const std::pair<const unsigned, AudioWalk>* stream = nullptr;
      for (const auto& each : vob_->Audio) {
        const bool leads = each.first == there;  // streams of two codings may bear one number
        stream = (each.first & 7U) == i && (stream == nullptr || leads) ? &each : stream;
      }
      if (stream != nullptr) {
        CheckAudioTarget(record, offset, fields.at(i), value, *stream);
      } else if (value != 0) {
        // By its number there is no stream. Others count the tracks instead, or those of the whole title set.
        const bool quiet = (value & nav::NoAudioPack) == nav::NoAudioPack || vob_->Audio.contains(there);
        Tell(order_->IsOurs || !quiet ? message::SyncWrong : message::SyncLoose, record, offset, fields.at(i),
             "0 without the stream", fmt::format("0x{:04X}", value));
      }
    }
  }

  [[nodiscard]] static std::int64_t AudioSector(const NavRecord& record, unsigned value) {
    const auto distance = static_cast<std::int64_t>(value & 0x7FFFU);
    return std::int64_t{record.Vobu.Sector} + ((value & 0x8000U) != 0 ? -distance : distance);
  }
  // What the sector holds; 0 outside.
  [[nodiscard]] std::uint8_t TagAt(std::int64_t sector) const {
    return sector >= 0 && sector < static_cast<std::int64_t>(tags_.size())
               ? tags_[static_cast<std::size_t>(sector)]
               : std::uint8_t{0};
  }

  void CheckAudioTarget(const NavRecord& record, std::size_t offset, const std::string& field, unsigned value,
                        const std::pair<const unsigned, AudioWalk>& stream) const {
    const auto& starts = stream.second.Starts();
    const auto seen = [value] { return fmt::format("0x{:04X}", value); };
    if (value == 0) {
      Tell(message::SyncLoose, record, offset, field, "a pack of the stream", seen());
      return;
    }
    if ((value & nav::NoAudioPack) == nav::NoAudioPack) {
      if (!starts.empty() && starts.back().Pts >= record.Vobu.StartPtm) {
        Tell(order_->IsOurs ? message::SyncWrong : message::SyncLoose, record, offset, field,
             "a pack, since there is more sound", seen());
      }
      return;
    }
    const std::int64_t sector = AudioSector(record, value);
    const bool there = TagAt(sector) == stream.first;
    if (!there) {
      Tell(message::SyncWrong, record, offset, field, "a pack of the stream",
           fmt::format("{} at sector {}", seen(), sector));
      return;
    }
    const auto start =
        std::ranges::lower_bound(starts, static_cast<std::uint32_t>(sector), {}, &AudioPackStart::Sector);
    const std::uint32_t from = record.Vobu.StartPtm;
    // The pack with the sound that is due, or the first whose sound begins later.
    const bool found = start != starts.end() && start->Sector == sector;
    const bool early =
        found && start->Pts < from && std::next(start) != starts.end() && std::next(start)->Pts <= from;
    const bool late = found && start->Pts > from && start != starts.begin() && std::prev(start)->Pts >= from;
    if (!found || early || late) {
      Tell(order_->IsOurs ? message::SyncWrong : message::SyncLoose, record, offset, field,
           fmt::format("the pack with sound for {}", from),
           found ? fmt::format("one for {}", start->Pts) : "one in which no frame starts");
    }
  }

  void CheckSubpictureSync(const NavRecord& record) const {
    static const auto fields = NumberedNames<32>("SP_SYNCA");
    for (unsigned i = 0; i < 32; ++i) {
      const std::size_t offset = nav::SubpictureSync.Offset + std::size_t{4} * i;
      const std::uint32_t value = record.Long(offset);
      const std::string& field = fields.at(i);
      const unsigned stream = 0x20 + i;
      const bool exists = vob_->Subpictures.contains(stream);
      if (value == 0 || !exists) {
        if ((value != 0) != exists) {
          Tell(exists ? message::SyncLoose : message::SyncWrong, record, offset, field,
               exists ? "a pack of the stream" : "0 without the stream", fmt::format("0x{:08X}", value));
        }
        continue;
      }
      if ((value & nav::NoVobu) == nav::NoVobu) {
        continue;
      }
      const auto distance = static_cast<std::int64_t>(value & 0x7FFFFFFFU);
      const std::int64_t sector =
          std::int64_t{record.Vobu.Sector} + ((value & 0x80000000U) != 0 ? -distance : distance);
      if (!LeadsTo(sector, static_cast<std::uint8_t>(stream))) {
        // Some programs lead to a VOBU that has none: a player finds nothing there, and goes on.
        const bool isVobu = sector >= 0 && sector < static_cast<std::int64_t>(tags_.size()) &&
                            tags_[static_cast<std::size_t>(sector)] == NavTag;
        Tell(isVobu && !order_->IsOurs ? message::SyncLoose : message::SyncWrong, record, offset, field,
             "a pack of the stream, or the VOBU that has one", fmt::format("sector {}", sector));
      }
    }
  }

  // A pack of the stream, or the head of a VOBU that has one.
  [[nodiscard]] bool LeadsTo(std::int64_t sector, std::uint8_t stream) const {
    if (sector < 0 || sector >= static_cast<std::int64_t>(tags_.size())) {
      return false;
    }
    const auto at = static_cast<std::size_t>(sector);
    if (tags_[at] == NavTag) {
      const auto sectorOf = [](const NavRecord& each) { return each.Vobu.Sector; };
      const auto vobu = std::ranges::lower_bound(records_, at, {}, sectorOf);
      const bool found = vobu != records_.end() && vobu->Vobu.Sector == at;
      const auto packs = found ? tags_.subspan(at, vobu->Vobu.Last - at + 1) : tags_.first(0);
      return std::ranges::find(packs, stream) != packs.end();
    }
    return tags_[at] == stream;
  }

  // Addresses of interleaved units and of other angles.
  void CheckInterleaving(const NavRecord& record) const {
    constexpr unsigned Interleaved = 0x4000;
    const auto category = static_cast<unsigned>(record.Get(nav::VobuSmlCat.Offset, 2));
    const std::uint32_t unitEnd = record.Long(nav::IlvuEa.Offset);
    const std::uint32_t nextUnit = record.Long(nav::NextIlvuSa.Offset);
    const auto nextSize = static_cast<unsigned>(record.Get(nav::NextIlvuSize.Offset, 2));
    const std::uint32_t none = 0xFFFFFFFF;
    const bool quiet =
        unitEnd == 0 && (nextUnit == 0 || nextUnit == none) && (nextSize == 0 || nextSize == 0xFFFF);
    if ((category & Interleaved) == 0 && !quiet) {
      Tell(message::NavWrong, record, nav::IlvuEa.Offset, "ILVU_EA, NXT_ILVU_SA, NXT_ILVU_SZ",
           "0 in a VOBU that is not interleaved", fmt::format("{}, {}, {}", unitEnd, nextUnit, nextSize));
    }
    if (order_->IsOurs && category != 0) {  // this program interleaves nothing
      Tell(message::NavWrong, record, nav::VobuSmlCat.Offset, nav::VobuSmlCat.Name, 0,
           fmt::format("0x{:04X}", category));
    } else if ((category & 0x0FFFU) != 0) {
      Tell(message::NavLoose, record, nav::VobuSmlCat.Offset, nav::VobuSmlCat.Name, "reserved bits clear",
           fmt::format("0x{:04X}", category));
    }
    CheckAngles(record);
    CheckGaps(record);
  }

  void CheckAngles(const NavRecord& record) const {
    for (std::size_t i = 0; i < 18; ++i) {
      const bool seamless = i >= 9;
      const std::uint32_t word = seamless ? record.Long(nav::SeamlessAngles.Offset + 6 * (i - 9))
                                          : static_cast<std::uint32_t>(GetBytes(record.Angles, 4 * i, 4));
      const std::uint32_t distance = word & 0x7FFFFFFFU;
      const bool quiet = distance == 0 || distance == 0x7FFFFFFF;
      const bool hasSize = seamless && record.Get(nav::SeamlessAngles.Offset + 6 * (i - 9) + 4, 2) != 0;
      if (order_->IsOurs ? word == 0 && !hasSize : quiet) {  // this program makes no angles
        continue;
      }
      const std::int64_t sector =
          std::int64_t{record.Vobu.Sector} +
          ((word & 0x80000000U) != 0 ? -std::int64_t{distance} : std::int64_t{distance});
      const bool there = sector >= 0 && sector < static_cast<std::int64_t>(tags_.size());
      const bool ahead = there && sector > record.Vobu.Last;  // not read as yet, perhaps
      if (order_->IsOurs || !there || (!ahead && tags_[static_cast<std::size_t>(sector)] != NavTag)) {
        Tell(message::NavWrong, record,
             seamless ? nav::SeamlessAngles.Offset + 6 * (i - 9) : nav::NonSeamlessAngles.Offset + 4 * i,
             seamless ? "SML_AGL_DSTA" : "NSML_AGL_DSTA", "the head of a VOBU",
             fmt::format("sector {}", sector));
      }
    }
  }

  // Where sound stops within the VOB, it does while the VOB plays.
  void CheckGaps(const NavRecord& record) const {
    for (std::size_t i = 0; i < 32; ++i) {
      const std::size_t offset = nav::AudioGaps.Offset + 4 * i;
      const std::uint32_t value = record.Long(offset);
      const bool isTime = i % 4 < 2;  // two times, then two lengths, for each stream
      const std::uint32_t first = records_.front().Vobu.StartPtm;
      const std::uint32_t last = records_.back().Vobu.EndPtm + 90000;
      if (value != 0 && isTime && (value < first || value > last)) {
        Tell(message::NavWrong, record, offset, "VOB_A_STP_PTM", fmt::format("0, or {} to {}", first, last),
             value);
      } else if (value != 0 && !isTime && record.Long(offset - 8) == 0) {
        Tell(message::NavWrong, record, offset, "VOB_A_GAP_LEN", "0 without a stop", value);
      }
    }
  }

  const VobState* vob_;
  std::span<const std::uint8_t> tags_;
  const NavCheckOrder* order_;
  std::span<const NavRecord> records_;
  std::int64_t cellStart_ = 0;
};

}  // namespace

void CheckNavRecords(const VobState& vob, std::span<const std::uint8_t> tags, const NavCheckOrder& order) {
  NavCheck(vob, tags, order).Run();
  CheckSearchTables(vob, order);
}

TimeAgreement Agreement(const IfoTime& time, std::int64_t ticks, bool ntsc) {
  const std::int64_t frame = ntsc ? 3003 : 3600;
  if (std::abs(time.Frames() * frame - ticks) < frame) {
    return TimeAgreement::Frames;
  }
  return std::abs(time.Frames() * 90000 / (ntsc ? 30 : 25) - ticks) < frame ? TimeAgreement::RealSeconds
                                                                            : TimeAgreement::None;
}

}  // namespace quorvelant
