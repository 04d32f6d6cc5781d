#include "ui/player_words.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "model/cls_dvd.h"
#include "model/stream_maps.h"
#include "player/nav_lookup.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

using Kind = NavHappening::Kind;

constexpr std::uint16_t SubpictureShows = 0x40;

QString Tr(const char* text) {
  return QCoreApplication::translate("SimulationLog", text);
}

QString ListWords(NavList list) {
  switch (list) {
    case NavList::Pre:
      return Tr("pre");
    case NavList::Post:
      return Tr("post");
    case NavList::Cell:
      return Tr("cell");
    case NavList::Button:
      break;
  }
  return Tr("button");
}

QString StopWords(NavStop why) {
  switch (why) {
    case NavStop::Exit:
      return Tr("The disc stops: Exit");
    case NavStop::Loop:
      return Tr("The disc stops: commands go round without an end");
    case NavStop::Missing:
      return Tr("The disc stops: a command leads to what is not there");
    default:
      return Tr("The disc stops: nothing follows");
  }
}

const NavChain* ChainOf(const NavDisc& disc, const NavHappening& one, const NavState& state) {
  return ChainAt(disc, one.At, state.Registers.Of(Sprm::MenuLanguage));
}

const NavButton* ButtonOf(const NavChain* chain, const NavHappening& one) {
  const bool hasPage = chain != nullptr && one.List == NavList::Button && one.At.Cell >= 1 &&
                       one.At.Cell <= chain->Cells.size() && one.Page >= 1 &&
                       one.Page <= chain->Cells[one.At.Cell - 1U].Pages.size();
  if (!hasPage) {
    return nullptr;
  }
  const auto& buttons = chain->Cells[one.At.Cell - 1U].Pages[one.Page - 1U].Buttons;
  return one.Number >= 1 && one.Number <= buttons.size() ? &buttons[one.Number - 1U] : nullptr;
}

NavCommandWords CommandOf(const Project& project, const NavChain* chain, const NavHappening& one) {
  NavFinding named;
  named.At = one.At;
  named.Command = NavCommandAt{one.At, one.List, one.Page, one.Number};
  named.Name = chain == nullptr ? std::string() : chain->Name;
  if (const NavButton* const button = ButtonOf(chain, one)) {
    named.Name = button->Name;
    named.Bytes = button->Command;
  }
  return NamingOf(project)(named);
}

// A command that ran, or that leads nowhere: where it stood when it ran. Keys and the insertion of the disc
// lead on without one.
SimulatedStep CommandStep(const Project& project, const NavDisc& disc, const NavState& state,
                          const NavHappening& one, const NavHappening* ran) {
  const bool isMissing = one.What == Kind::Missing;
  if (ran == nullptr) {
    return {.Place = {},
            .Words = one.Lead.What == NavLead::Kind::JumpTitle
                         ? Tr("Title %1 has no PGC to play").arg(one.Lead.Number)
                         : Tr("The place that follows is not there"),
            .IsFault = true};
  }
  const NavChain* const chain = ChainOf(disc, *ran, state);
  const NavCommandWords command = CommandOf(project, chain, *ran);
  return {.Place = command.Place,
          .Words = (isMissing ? Tr("%1 %2: %3 leads nowhere") : Tr("%1 %2: %3"))
                       .arg(ListWords(one.List))
                       .arg(one.Number)
                       .arg(Shown(command.Text)),
          .IsFault = isMissing};
}

// The command of a happening among all; null for none.
const NavHappening* RanBefore(std::span<const NavHappening> all, std::size_t at) {
  for (std::size_t i = at + 1; i-- > 0;) {
    if (all[i].What == Kind::Ran && all[i].List == all[at].List && all[i].Number == all[at].Number) {
      return &all[i];
    }
  }
  return nullptr;
}

SimulatedStep StepOf(const Project& project, const NavDisc& disc, const NavState& state,
                     const NavHappening& one, const NavHappening* ran) {
  const NavChain* const chain = ChainOf(disc, one, state);
  SimulatedStep step{.Place = chain == nullptr ? std::string() : chain->Name, .Words = {}};
  switch (one.What) {
    case Kind::Entered:
      step.Words = Tr("enters %1").arg(Shown(NameOfElement(project, step.Place)));
      break;
    case Kind::Plays:
      if (chain != nullptr && one.At.Cell >= 1 && one.At.Cell <= chain->Cells.size()) {
        step.Place = chain->Cells[one.At.Cell - 1U].Name;
      }
      step.Words = Tr("plays %1").arg(Shown(NameOfElement(project, step.Place)));
      break;
    case Kind::Refused:
      step.Words = Tr("This key does nothing here");
      break;
    case Kind::Stopped:
      step.Words = StopWords(state.Stop);
      step.IsFault = state.Stop != NavStop::Exit;
      step.IsStop = true;
      break;
    case Kind::Ran:
    case Kind::Missing:
      step = CommandStep(project, disc, state, one, ran);
  }
  return step;
}

enum class ValueKind : std::uint8_t { Number, Language, Audio, Subpicture, Button };

struct SystemRow {
  Sprm Number;
  const char* Name;
  ValueKind Kind = ValueKind::Number;
};
constexpr std::array SystemRows{SystemRow{Sprm::MenuLanguage, "menu language", ValueKind::Language},
                                SystemRow{Sprm::Audio, "audio", ValueKind::Audio},
                                SystemRow{Sprm::Subpicture, "subtitles", ValueKind::Subpicture},
                                SystemRow{Sprm::Angle, "angle"},
                                SystemRow{Sprm::Title, "title"},
                                SystemRow{Sprm::TitleOfSet, "title of the set"},
                                SystemRow{Sprm::TitleChain, "PGC"},
                                SystemRow{Sprm::Part, "chapter"},
                                SystemRow{Sprm::Button, "button", ValueKind::Button},
                                SystemRow{Sprm::Timer, "timer, seconds"},
                                SystemRow{Sprm::TimerChain, "PGC of the timer"},
                                SystemRow{Sprm::AudioMix, "audio mix"},
                                SystemRow{Sprm::Country, "country"},
                                SystemRow{Sprm::ParentalLevel, "parental level"},
                                SystemRow{Sprm::VideoPreference, "screen"},
                                SystemRow{Sprm::AudioCapability, "audio that can be played"},
                                SystemRow{Sprm::AudioLanguage, "audio language", ValueKind::Language},
                                SystemRow{Sprm::AudioExtension, "kind of audio"},
                                SystemRow{Sprm::SubpictureLanguage, "subtitle language", ValueKind::Language},
                                SystemRow{Sprm::SubpictureExtension, "kind of subtitles"},
                                SystemRow{Sprm::Region, "region"}};

QString ValueOf(const NavRegisters& registers, const SystemRow& row) {
  constexpr std::uint16_t NoAudio = 15;
  constexpr std::uint16_t NoSubtitles = 62;
  const std::uint16_t value = registers.Of(row.Number);
  switch (row.Kind) {
    case ValueKind::Language:
      return Tr("%1 (%2)").arg(value).arg(LanguageWords(value));
    case ValueKind::Audio:
      return value == NoAudio ? Tr("%1 (none)").arg(value) : Tr("%1 (stream %2)").arg(value).arg(value + 1);
    case ValueKind::Subpicture:
      if ((value & (SubpictureShows - 1U)) == NoSubtitles) {
        return Tr("%1 (none)").arg(value);
      }
      return ((value & SubpictureShows) != 0 ? Tr("%1 (stream %2, shown)") : Tr("%1 (stream %2, hidden)"))
          .arg(value)
          .arg((value & (SubpictureShows - 1U)) + 1U);
    case ValueKind::Button:
      return Tr("%1 (button %2)").arg(value).arg(registers.Button());
    case ValueKind::Number:
      break;
  }
  return QString::number(value);
}

}  // namespace

void SimulationLog::Clear() {
  first_ += steps_.size() + 1;  // those who follow see that all is new
  steps_.clear();
}

void SimulationLog::Add(SimulatedStep step) {
  if (steps_.size() >= Most) {
    constexpr std::size_t Part = Most / 5;
    steps_.erase(steps_.begin(), steps_.begin() + Part);
    first_ += Part;
  }
  steps_.push_back(std::move(step));
}

void SimulationLog::Add(const Project& project, const NavDisc& disc, const NavOutcome& outcome) {
  constexpr std::size_t MostOfOne = 500;
  const std::span<const NavHappening> happened = outcome.Happened;
  for (std::size_t i = 0; i < happened.size(); ++i) {
    if (i == MostOfOne && happened.size() > MostOfOne + 1) {
      Add({.Place = {}, .Words = Tr("%1 steps are left out").arg(happened.size() - MostOfOne - 1)});
      i = happened.size() - 1;
    }
    Add(StepOf(project, disc, outcome.State, happened[i], RanBefore(happened, i)));
  }
}

std::vector<SimulatedRegister> RegistersInWords(const NavRegisters& registers) {
  std::vector<SimulatedRegister> all;
  for (std::size_t i = 0; i < registers.General.size(); ++i) {
    const QString value = QString::number(registers.General.at(i));
    all.push_back({QStringLiteral("GPRM%1").arg(i),
                   registers.Counts.at(i) ? Tr("%1 (counts seconds)").arg(value) : value});
  }
  for (const SystemRow& row : SystemRows) {
    all.push_back({QStringLiteral("SPRM%1  %2").arg(static_cast<int>(row.Number)).arg(Tr(row.Name)),
                   ValueOf(registers, row)});
  }
  return all;
}

namespace {

TrackList TitleTracksOf(const Project& project, const std::string& chain) {
  const VTS_P* const entry = LiveEntry(project, chain.substr(0, chain.find('.')));
  return entry == nullptr ? TrackList() : BuildTitleTrackList(*entry, project.Tracks);
}

template <typename Map>
QString NamedStream(const QString& word, const Map& map, std::size_t number) {
  const QString words = QStringLiteral("%1 %2").arg(word).arg(number + 1);
  return number < map.size() && !map[number].Language.empty()
             ? QStringLiteral("%1 %2").arg(words, Shown(map[number].Language))
             : words;
}

}  // namespace

QString AudioWords(const Project& project, const std::string& chain, std::size_t number) {
  return NamedStream(Tr("audio"), ViewAudioMap(TitleTracksOf(project, chain), project.Tracks), number);
}

QString SubtitleWords(const Project& project, const std::string& chain, std::size_t number) {
  return NamedStream(Tr("subtitles"), ViewSubMap(TitleTracksOf(project, chain), project.Tracks), number);
}

QString LanguageWords(std::uint16_t language) {
  const std::string code{static_cast<char>(language >> 8U), static_cast<char>(language & 0xFFU)};
  const auto row = CLsDVD::LanguageCalled(code);
  return row && language != 0 ? Shown(std::string(CLsDVD::LangCodeToLangName(code))) : Tr("none");
}

}  // namespace quorvelant
