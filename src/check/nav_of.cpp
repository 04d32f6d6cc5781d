#include "check/nav_of.h"

#include <algorithm>
#include <bitset>
#include <string>
#include <utility>

#include "base/text.h"
#include "check/disc_contents.h"
#include "check/nav_buttons.h"
#include "disc/limits.h"
#include "ifo/pgc_numbers.h"
#include "model/cls_dvd.h"
#include "model/menu_kind.h"
#include "model/stream_maps.h"
#include "model/walk.h"
#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

constexpr std::uint8_t MenuIdMask = 0x0F;
constexpr std::uint8_t EntryBit = 0x80;

std::vector<NavCommand> CommandsOf(const CommandList& list) {
  std::vector<NavCommand> commands;
  for (const VMICommand_P& command : list) {
    if (!command.Deleted) {
      commands.push_back(ParseCommandHex(command.CommandHex));
    }
  }
  return commands;
}

std::uint8_t Byte(std::int64_t value) {
  return static_cast<std::uint8_t>(std::clamp<std::int64_t>(value, 0, 0xFF));
}

// A unit names its language by its code or by its name.
std::uint16_t LanguageOf(const Lang_P& unit) {
  const std::string code =
      unit.Language.size() == 2 ? unit.Language : std::string(CLsDVD::LangNameToLangCode(unit.Language));
  return code.size() == 2 ? static_cast<std::uint16_t>(static_cast<unsigned char>(code[0]) << 8U |
                                                       static_cast<unsigned char>(code[1]))
                          : std::uint16_t{0xFFFF};
}

// Streams by their numbers.
struct Carried {
  std::bitset<AudioStreamCount> Audio;
  std::bitset<SubStreamCount> Subs;
};

// One domain of an entry.
class DomainFiller {
 public:
  DomainFiller(const Project& project, const VTS_P& entry, Domain domain, const HeldCells& held,
               Tracks& tracks, const Rules& rules)
      : domain_(domain), buttons_(project, entry, domain, held) {
    const TrackList list = BuildTrackList(entry, domain, tracks);
    audio_ = BuildAudioMap(list, tracks, rules);
    subs_ = BuildSubMap(list, tracks, rules);
    carried_.resize(tracks.Count());
    for (const TrackListRow& row : list) {
      carried_[row.Index] = CarriedBy(tracks[row.Index]);
    }
  }

  NavChain Fill(const PGC_P& chain, const Title_P* title, const PgcNumbers& numbers) {
    NavChain filled;
    filled.Name = chain.Key;
    filled.Pre = CommandsOf(chain.PreCommands);
    filled.Post = CommandsOf(chain.PostCommands);
    filled.CellCommands = CommandsOf(chain.CellCommands);
    Carried used;
    for (const PG_P* program : Live(chain.PG)) {
      const auto cells = Live(program->Cell);
      if (cells.empty() || filled.Cells.size() + cells.size() > MostCells) {
        continue;
      }
      filled.Programs.push_back(Byte(static_cast<std::int64_t>(filled.Cells.size()) + 1));
      for (const Cell_P* cell : cells) {
        filled.Cells.push_back({.Name = cell->Key,
                                .Ticks = buttons_.TicksOf(*cell),
                                .StillTime = Byte(cell->StillTime),
                                .Command = Byte(cell->CellCommand),
                                .UserOperations = buttons_.UserOperationsOf(*cell)});
        buttons_.AddPages(*cell, filled.Cells.back());
        Use(*cell, used);
      }
    }
    PutLinks(chain, numbers, filled);
    filled.StillTime = Byte(chain.StillTime);
    filled.UserOperations = static_cast<std::uint32_t>(chain.Uops.to_ulong());
    PutStreams(chain, title, used, filled);
    return filled;
  }

 private:
  static Carried CarriedBy(const Track& track) {
    Carried carried;
    for (const AudioStream* stream : Live(track.AudioStreams)) {
      if (stream->MuxThisStream && std::cmp_less(stream->StreamNumber, AudioStreamCount)) {
        carried.Audio.set(static_cast<std::size_t>(std::max(stream->StreamNumber, 0)));
      }
    }
    for (const SubtitleStream* stream : Live(track.SubStreams)) {
      if (stream->MuxThisStream && std::cmp_less(stream->StreamNumber, SubStreamCount)) {
        carried.Subs.set(static_cast<std::size_t>(std::max(stream->StreamNumber, 0)));
      }
    }
    return carried;
  }

  void Use(const Cell_P& cell, Carried& used) const {
    if (cell.SegmentUsed >= 0 && std::cmp_less(cell.SegmentUsed, carried_.size())) {
      used.Audio |= carried_[static_cast<std::size_t>(cell.SegmentUsed)].Audio;
      used.Subs |= carried_[static_cast<std::size_t>(cell.SegmentUsed)].Subs;
    }
  }

  void PutLinks(const PGC_P& chain, const PgcNumbers& numbers, NavChain& filled) const {
    const bool menu = domain_ == Domain::Menu;
    filled.Next = numbers.Of(chain.NextPGC);
    filled.Previous = menu ? std::uint16_t{0} : numbers.Of(chain.PrevPGC);
    const bool resumes = menu && Contains(Lower(chain.GoUpPGC), "resume");
    filled.GoUp = resumes ? GoUpResumes : numbers.Of(chain.GoUpPGC);
    if (!menu && chain.PlayBackMode != PlayBack::Sequential) {
      const auto count = static_cast<std::uint8_t>(std::clamp(chain.Repeat - 1, 0, 0x7F));
      filled.Playback = chain.PlayBackMode == PlayBack::Shuffle ? count | 0x80U : count;
    }
    const std::uint8_t kind = menu ? MenuKindOf(chain.MenuType).Category : std::uint8_t{0};
    filled.IsEntry = (kind & EntryBit) != 0;
    filled.MenuId = filled.IsEntry ? kind & MenuIdMask : 0;
  }

  // Entry i is row i of the domain's map.
  void PutStreams(const PGC_P& chain, const Title_P* title, const Carried& used, NavChain& filled) const {
    constexpr unsigned AudioAvailable = 0x8000;
    constexpr std::uint32_t SubAvailable = 0x80000000;
    const bool menu = domain_ == Domain::Menu;
    for (std::size_t i = 0; i < std::min(audio_.size(), menu ? 1 : AudioStreamCount); ++i) {
      const auto stream = static_cast<std::size_t>(audio_[i].StreamNumber);
      const bool leftOut = title != nullptr && title->Custom && stream < AudioStreamCount &&
                           !title->AudioAssignments.at(stream);
      if (stream < AudioStreamCount && used.Audio[stream] && !leftOut) {
        const auto number = static_cast<unsigned>(std::clamp(chain.AudioAssignments.at(stream), 0, 7));
        filled.Audio.at(i) = static_cast<std::uint16_t>(AudioAvailable | number << 8U);
      }
    }
    for (std::size_t i = 0; i < std::min(subs_.size(), menu ? 1 : SubStreamCount); ++i) {
      const auto stream = static_cast<std::size_t>(subs_[i].StreamNumber);
      const bool leftOut = title != nullptr && title->SubCustom && stream < SubStreamCount &&
                           !title->SubAssignments.at(stream);
      if (stream < SubStreamCount && used.Subs[stream] && !leftOut) {
        filled.Subpictures.at(i) = SubAvailable;
      }
    }
  }

  Domain domain_;
  NavButtons buttons_;
  AudioMap audio_;
  SubMap subs_;
  std::vector<Carried> carried_;  // by track
};

class DiscFiller {
 public:
  DiscFiller(const Project& project, const Rules& rules)
      : project_(project), rules_(rules), held_(project, rules), tracks_(project.Tracks) {}

  NavDisc Fill() {
    NavDisc disc;
    NavChain& firstPlay = disc.FirstPlay.emplace();
    firstPlay.Name = project_.FirstPlay.Key;
    firstPlay.Pre = CommandsOf(project_.FirstPlay.PreCommands);
    firstPlay.Post = CommandsOf(project_.FirstPlay.PostCommands);
    firstPlay.UserOperations = static_cast<std::uint32_t>(project_.FirstPlay.Uops.to_ulong());
    if (const VTS_P* manager = project_.Disc.Item(1); manager != nullptr && !manager->Removed) {
      disc.Menus = MenusOf(*manager);
    }
    const DiscContents contents(project_);
    for (const VTS_P* entry : contents.Sets()) {
      NavSet& set = disc.Sets.emplace_back();
      set.Menus = MenusOf(*entry);
      AddTitles(*entry, static_cast<std::uint8_t>(disc.Sets.size()), set, disc);
    }
    return disc;
  }

 private:
  std::vector<NavMenus> MenusOf(const VTS_P& entry) {
    std::vector<NavMenus> units;
    DomainFiller filler(project_, entry, Domain::Menu, held_, tracks_, rules_);
    for (const Lang_P* language : Live(entry.Lang)) {
      NavMenus& menus = units.emplace_back();
      menus.Language = LanguageOf(*language);
      const PgcNumbers numbers = PgcNumbers::OfUnit(entry, *language, rules_);
      for (const PGC_P* chain : Live(language->PGC)) {
        menus.Chains.push_back(filler.Fill(*chain, nullptr, numbers));
      }
    }
    return units;
  }

  void AddTitles(const VTS_P& entry, std::uint8_t number, NavSet& set, NavDisc& disc) {
    DomainFiller filler(project_, entry, Domain::Title, held_, tracks_, rules_);
    const PgcNumbers numbers = PgcNumbers::OfTitles(entry, rules_);
    for (const Title_P* title : Live(entry.Title)) {
      std::vector<NavPart>& parts = set.Parts.emplace_back();
      const auto inSet = static_cast<std::uint8_t>(set.Parts.size());
      bool isEntry = true;
      for (const PGC_P* chain : Live(title->PGC)) {
        NavChain& filled = set.Titles.emplace_back(filler.Fill(*chain, title, numbers));
        filled.Title = inSet;
        filled.IsEntry = std::exchange(isEntry, false);
        for (std::size_t i = 1; i <= filled.Programs.size(); ++i) {
          parts.push_back({static_cast<std::uint16_t>(set.Titles.size()), static_cast<std::uint8_t>(i)});
        }
      }
      const unsigned restrictions = (title->UOPPTTPlay ? 2U : 0U) | (title->UOPTimePlay ? 1U : 0U);
      disc.Titles.push_back({.Name = title->Key,
                             .Set = number,
                             .Number = inSet,
                             .Restrictions = static_cast<std::uint8_t>(restrictions)});
    }
  }

  const Project& project_;
  const Rules& rules_;
  HeldCells held_;
  Tracks tracks_;  // building a map marks the streams
};

}  // namespace

NavDisc NavOf(const Project& project, const Rules& rules) {
  return DiscFiller(project, rules).Fill();
}

}  // namespace quorvelant
