#include "check/navigation_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "check/messages.h"
#include "check/nav_of.h"
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
  const auto ofButtons = [](const Cell_P* cell) {
    return std::ranges::all_of(cell->ButtonCommands,
                               [](const ButtonCommands_P& play) { return IsResolved(play.Commands); });
  };
  return IsResolved(chain.PreCommands) && IsResolved(chain.PostCommands) && IsResolved(chain.CellCommands) &&
         std::ranges::all_of(LiveCells(chain), ofButtons);
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
  const std::string digits = HexOfCommand(finding.Bytes);
  for (std::size_t play = 0;; ++play) {
    const CommandList* list =
        FindCommands(project, CommandPlace{.Key = key, .List = ListKind::Button, .Play = play});
    if (list == nullptr) {
      return nullptr;
    }
    const auto found = std::ranges::find_if(*list, [&](const VMICommand_P& command) {
      return command.Key == own && !command.Deleted &&
             ParseCommandHex(command.CommandHex) == ParseCommandHex(digits);
    });
    if (found != list->end()) {
      return &*found;
    }
  }
}

std::string WayTo(const NavFinding& finding) {
  return finding.Way;
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
      return fmt::format("Audio stream {}", finding.Number);
    default:
      return fmt::format("Subpicture stream {}", finding.Number);
  }
}

Message MessageFor(const NavFinding& finding, const NavCommandWords& words) {
  using Kind = NavFinding::Kind;
  const std::string& place = words.Place;
  const std::string way = WayTo(finding);
  switch (finding.What) {
    case Kind::TargetMissing:
      return MessageOf(message::TargetMissing, place, words.Text,
                       finding.Lead == NavLead::Kind::Resume
                           ? fmt::format("nothing was left that it could come back to ({})", way)
                           : fmt::format("the way there is {}", way));
    case Kind::TargetForbidden:
      return MessageOf(message::TargetForbidden, place, words.Text, "this place",
                       fmt::format("the way there is {}", way));
    case Kind::CommandLoop:
      return MessageOf(message::CommandLoop, place, words.Text, way);
    case Kind::ButtonIdle:
      return MessageOf(message::ButtonIdle, place, words.Text, way);
    case Kind::PageTrap:
      return MessageOf(message::PageTrap, place, way);
    case Kind::ButtonsHidden:
      return MessageOf(message::ButtonsHidden, place, way);
    case Kind::DiscStops:
      return MessageOf(message::DiscStops, place, way);
    case Kind::AudioMissing:
    case Kind::SubpictureMissing:
      return MessageOf(message::StreamMissing, place, words.Text, StreamWord(finding.What), finding.Number,
                       way);
    case Kind::RootKeyDead:
      return MessageOf(message::KeyDead, place, "Menu", "this title set has no root menu");
    case Kind::TitleKeyDead:
      return MessageOf(message::KeyDead, place, "Title", "the disc has no title menu");
    default:
      return MessageOf(message::Unreachable, place, LostWords(finding));
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
    const bool isFree = finding.Is(message::Unreachable) || finding.Is(message::StreamMissing);
    finding.Level = isFree && !isOurs ? Severity::Information : finding.Level;
  }
  return findings;
}

Findings CheckNavigation(const Project& project, const Rules& rules, const Findings& told) {
  if (!IsResolved(project)) {
    return {};
  }
  const NavDisc disc = NavOf(project, rules);
  return NewFindings(NavigationFindings(SurveyOf(disc), NamingOf(project)), told);
}

Findings NewFindings(Findings findings, const Findings& told) {
  std::unordered_set<std::string> places;
  for (const Message& finding : told) {
    if (finding.Level == Severity::Error || finding.Is(message::TargetMissing) ||
        finding.Is(message::MenuLeadsNowhere) || finding.Is(message::FirstPlayLeadsNowhere)) {
      places.insert(finding.Place);
    }
  }
  std::erase_if(findings, [&places](const Message& finding) { return places.contains(finding.Place); });
  return findings;
}

bool IsNavigationError(const Message& finding) {
  constexpr std::array Kinds{&message::TargetMissing, &message::TargetForbidden, &message::CommandLoop,
                             &message::ButtonIdle,    &message::PageTrap,        &message::ButtonsHidden};
  return finding.Level == Severity::Error &&
         std::ranges::any_of(Kinds, [&finding](const MessageKind* kind) { return finding.Is(*kind); });
}

}  // namespace quorvelant
