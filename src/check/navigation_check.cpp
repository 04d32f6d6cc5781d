#include "check/navigation_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "check/check.h"
#include "check/command_check.h"
#include "check/disc_limits.h"
#include "check/messages.h"
#include "check/nav_of.h"
#include "check/overlay_check.h"
#include "check/structure_check.h"
#include "model/keys.h"
#include "model/walk.h"
#include "vm/command_place.h"
#include "vm/decoder.h"
#include "vm/encoder.h"

namespace quorvelant {

namespace {

bool IsResolved(const CommandList& list) {
  return std::ranges::none_of(
      list, [](const VMICommand_P& command) { return !command.Deleted && command.CommandHex.empty(); });
}

bool IsResolved(const PGC_P& chain) {
  const auto isCell = [](const Cell_P* cell) {
    return cell->SegmentUsed >= 0 && cell->pScene >= 0 &&
           std::ranges::all_of(cell->ButtonCommands,
                               [](const ButtonCommands_P& play) { return IsResolved(play.Commands); });
  };
  return IsResolved(chain.PreCommands) && IsResolved(chain.PostCommands) && IsResolved(chain.CellCommands) &&
         std::ranges::all_of(LiveCells(chain), isCell);
}

bool IsResolved(const Project& project) {
  return IsResolved(project.FirstPlay) &&
         std::ranges::all_of(LivePgcs(project), [](const auto& place) { return IsResolved(*place.Chain); });
}

// The live command of a list by its number, which counts from 1.
const VMICommand_P* Nth(const CommandList* list, std::size_t number) {
  for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
    if (!(*list)[i].Deleted && --number == 0) {
      return &(*list)[i];
    }
  }
  return nullptr;
}

constexpr ListKind ListOf(NavList list) {
  switch (list) {
    case NavList::Pre:
      return ListKind::Pre;
    case NavList::Post:
      return ListKind::Post;
    case NavList::Cell:
      return ListKind::Cell;
    case NavList::Button:
      break;
  }
  return ListKind::Button;
}

// A button's command has the name of its cell and its own key.
const VMICommand_P* ButtonCommand(const Project& project, const NavFinding& finding) {
  const std::size_t blank = finding.Name.rfind(' ');
  const std::string key = finding.Name.substr(0, blank);
  const std::string own = blank == std::string::npos ? std::string() : finding.Name.substr(blank + 1);
  for (std::size_t play = 0;; ++play) {
    const CommandList* list =
        FindCommands(project, CommandPlace{.Key = key, .List = ListKind::Button, .Play = play});
    if (list == nullptr) {
      return nullptr;
    }
    const auto found = std::ranges::find(*list, own, &VMICommand_P::Key);
    if (found != list->end()) {
      return &*found;
    }
  }
}

std::string_view StreamWord(NavFinding::Kind kind) {
  const bool isAudio = kind == NavFinding::Kind::AudioMissing || kind == NavFinding::Kind::AudioUnreachable;
  return isAudio ? "audio" : "subpicture";
}

// What nobody reaches, by name.
std::string LostWords(const NavFinding& finding) {
  using Kind = NavFinding::Kind;
  switch (finding.What) {
    case Kind::TitleUnreachable:
      return fmt::format("Title {}", finding.Number);
    case Kind::PartUnreachable:
      return fmt::format("Chapter {}", finding.Number);
    case Kind::PageUnreachable:
      return finding.At.Cell == 0 ? "The menu" : "The menu page";
    case Kind::AudioUnreachable:
      return fmt::format("Audio stream {}", finding.Number + 1);
    default:
      return fmt::format("Subpicture stream {}", finding.Number + 1);
  }
}

Message MessageFor(const NavFinding& finding, const NavCommandWords& words) {
  using Kind = NavFinding::Kind;
  const std::string& place = words.Place;
  const std::string& way = finding.Way;
  switch (finding.What) {
    case Kind::TargetMissing:
      return finding.Lead == NavLead::Kind::Resume ? MessageOf(message::ResumeEmpty, place, words.Text, way)
                                                   : MessageOf(message::TargetMissing, place, words.Text,
                                                               fmt::format("the way there is {}", way));
    case Kind::TargetForbidden:
      return MessageOf(message::TargetForbidden, place, words.Text, "this place",
                       fmt::format("the way there is {}", way));
    case Kind::CommandLoop:
      return MessageOf(message::CommandLoop, place, words.Text, way);
    case Kind::ButtonIdle:
      return MessageOf(message::ButtonIdle, place, words.Text, finding.Command ? finding.Command->Number : 0,
                       way);
    case Kind::PageTrap:
      return MessageOf(message::PageTrap, place, way);
    case Kind::ButtonsEnd:
      return MessageOf(message::ButtonsEnd, place, way);
    case Kind::ButtonsHidden:
      return MessageOf(message::ButtonsHidden, place, way);
    case Kind::DiscStops:
      return MessageOf(message::DiscStops, place, way);
    case Kind::AudioMissing:
    case Kind::SubpictureMissing:
      return MessageOf(message::StreamMissing, place, words.Text, StreamWord(finding.What),
                       finding.Number + 1, finding.Title, way);
    case Kind::RootKeyDead:
      return MessageOf(message::KeyDead, place, "Menu", "this title set has no root menu");
    case Kind::TitleKeyDead:
      return MessageOf(message::KeyDead, place, "Title", "the disc has no title menu");
    default:
      return MessageOf(message::Unreachable, place, LostWords(finding));
  }
}

// What is told already, by its place.
class ToldPlaces {
 public:
  ToldPlaces(Findings& told, const NavSurvey& survey)
      : buttonsLackCommands_(Has(told, message::ButtonsWithoutCommand)),
        isBlack_(std::ranges::any_of(survey.Findings, [](const NavFinding& finding) {
          return finding.What == NavFinding::Kind::DiscStops && finding.At.Domain == NavDomain::FirstPlay;
        })) {
    constexpr std::array Kinds{&message::TargetMissing, &message::TargetForbidden, &message::MenuLeadsNowhere,
                               &message::FirstPlayLeadsNowhere, &message::ButtonsWithoutCommand};
    for (Message& finding : told) {
      if (std::ranges::any_of(Kinds, [&finding](const MessageKind* kind) { return finding.Is(*kind); })) {
        places_.emplace(finding.Place, &finding);
        firstPlayFails_ =
            firstPlayFails_ || (finding.Level == Severity::Error && finding.Place.starts_with(FirstPgcKey));
      }
    }
  }

  // Whether it is told of its place, which learns the way there. What nobody reaches has no way, and is
  // another fault than what is told of it.
  [[nodiscard]] bool Have(const NavFinding& finding, const NavCommandWords& words) {
    bool isTold = false;
    const auto [first, end] = places_.equal_range(words.Place);
    for (auto at = first; at != end && !finding.Way.empty(); ++at) {
      Message& told = *at->second;
      const bool isTarget = told.Is(message::TargetMissing) || told.Is(message::TargetForbidden);
      isTold = true;
      // What only some languages lack is a warning, until a way there shows that their viewers are left
      // there.
      told.Level = finding.What == NavFinding::Kind::TargetMissing && isTarget ? Severity::Error : told.Level;
      if (isTarget && withWay_.insert(&told).second) {
        told.Text += fmt::format(". The way there: {}", finding.Way);
        break;
      }
    }
    return isTold;
  }

  // Whether what is told of another place says as much.
  [[nodiscard]] bool Explain(const NavFinding& finding, const NavCommandWords& words) const {
    if (finding.Way.empty()) {  // nothing is reached, for the one reason that is told
      return isBlack_ && firstPlayFails_;
    }
    const bool hasCommand = finding.Name.find(' ') != std::string::npos;
    if (finding.What == NavFinding::Kind::ButtonIdle && !hasCommand && buttonsLackCommands_) {
      return true;
    }
    const auto [first, end] = places_.equal_range(words.Place.substr(0, words.Place.find(' ')));
    const bool isNowhere = std::any_of(first, end, [](const auto& told) {
      return told.second->Is(message::MenuLeadsNowhere) || told.second->Is(message::FirstPlayLeadsNowhere);
    });
    return isNowhere || (finding.At.Domain == NavDomain::FirstPlay && firstPlayFails_);
  }

 private:
  std::unordered_multimap<std::string, Message*> places_;
  std::unordered_set<const Message*> withWay_;
  bool buttonsLackCommands_ = false;
  bool isBlack_ = false;  // as soon as it goes in
  bool firstPlayFails_ = false;
};

// Where the structure is not whole, or a command or scene was not found, a walk would say what follows from
// it alone.
bool IsWalkable(const Project& project, const Findings& told) {
  constexpr std::array Kinds{&message::TitleWithoutCells, &message::TitleStartsWithoutCells,
                             &message::SetWithoutTitles, &message::LanguageWithoutPgcs};
  return IsResolved(project) &&
         std::ranges::none_of(Kinds, [&told](const MessageKind* kind) { return Has(told, *kind); }) &&
         !HasErrors(CheckLimits(project));
}

void AddCut(const NavSurvey& survey, Findings& findings) {
  if (!survey.IsWhole) {
    findings.push_back(MessageOf(message::WalkCut, {}, survey.States));
  }
}

}  // namespace

NavNaming NamingOf(const Project& project) {
  return [&project](const NavFinding& finding) {
    NavCommandWords words{.Place = finding.Name, .Text = {}};
    if (!finding.Command) {
      return words;
    }
    const bool isButton = finding.Command->List == NavList::Button;
    const VMICommand_P* command =
        isButton ? ButtonCommand(project, finding)
                 : Nth(FindCommands(project,
                                    CommandPlace{.Key = finding.Name, .List = ListOf(finding.Command->List)}),
                       finding.Command->Number);
    if (command == nullptr) {
      return NameByBytes(finding);
    }
    words.Text = command->FullCommand;
    words.Place = isButton ? finding.Name : fmt::format("{} {}", finding.Name, command->Key);
    return words;
  };
}

NavCommandWords NameByBytes(const NavFinding& finding) {
  NavCommandWords words{.Place = finding.Name, .Text = {}};
  if (finding.Command) {
    const DecodedCommand decoded = DecodeCommand(finding.Bytes);
    words.Text = decoded.Known ? decoded.Text : HexOfCommand(finding.Bytes);
  }
  return words;
}

Findings NavigationFindings(const NavSurvey& survey, const NavNaming& naming) {
  Findings findings;
  for (const NavFinding& finding : survey.Findings) {
    findings.push_back(MessageFor(finding, naming(finding)));
  }
  return findings;
}

Findings DiscNavigation(const NavSurvey& survey, bool isOurs) {
  Findings findings = NavigationFindings(survey, NameByBytes);
  for (Message& finding : findings) {
    constexpr std::array Free{&message::Unreachable, &message::StreamMissing, &message::ButtonsHidden,
                              &message::ButtonIdle,  &message::ButtonsEnd,    &message::ResumeEmpty};
    const bool isFree =
        std::ranges::any_of(Free, [&finding](const MessageKind* kind) { return finding.Is(*kind); });
    finding.Level = isFree && !isOurs ? Severity::Information : finding.Level;
  }
  AddCut(survey, findings);
  return findings;
}

Message WithDisc(Message finding, const std::string& disc) {
  finding.Place = finding.Place.empty() ? disc : disc + "/" + finding.Place;
  return finding;
}

void AddNavigation(const NavSurvey& survey, const NavNaming& naming, Findings& told) {
  ToldPlaces places(told, survey);
  Findings more;
  for (const NavFinding& finding : survey.Findings) {
    const NavCommandWords words = naming(finding);
    if (!places.Have(finding, words) && !places.Explain(finding, words)) {
      more.push_back(MessageFor(finding, words));
    }
  }
  AddCut(survey, more);
  Append(told, std::move(more));
}

void CheckNavigation(const Project& project, const Rules& rules, Findings& told) {
  if (IsWalkable(project, told)) {
    AddNavigation(SurveyOf(NavOf(project, rules)), NamingOf(project), told);
  }
}

ProjectWalk WalkProject(const Project& project, const Rules& rules) {
  ProjectWalk walk{.Told = CheckStructure(project), .Survey = {}};
  Append(walk.Told, CheckCommandTargets(project));
  Append(walk.Told, CheckButtonCommands(project));
  const bool isWalkable = IsWalkable(project, walk.Told);
  if (isWalkable) {
    walk.Survey = SurveyOf(NavOf(project, rules));
    AddNavigation(*walk.Survey, NamingOf(project), walk.Told);
  }
  LevelByRules(walk.Told, rules);
  if (!isWalkable) {
    Findings hinders = CheckNamesAndStreams(project, rules);
    Append(hinders, CheckLimits(project));
    std::erase_if(hinders, [](const Message& finding) { return finding.Level != Severity::Error; });
    Append(walk.Told, std::move(hinders));
  }
  return walk;
}

bool IsNavigationError(const Message& finding) {
  constexpr std::array Kinds{&message::TargetMissing, &message::TargetForbidden, &message::CommandLoop,
                             &message::ButtonIdle,    &message::PageTrap,        &message::ButtonsHidden,
                             &message::ButtonsEnd};
  return finding.Level == Severity::Error &&
         std::ranges::any_of(Kinds, [&finding](const MessageKind* kind) { return finding.Is(*kind); });
}

}  // namespace quorvelant
