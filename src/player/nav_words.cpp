#include "player/nav_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/text.h"
#include "player/nav_lookup.h"

namespace quorvelant {

namespace {

struct KeyWord {
  NavKey Key;
  std::string_view Word;
};
// The first word of a key is the one that is written.
constexpr std::array KeyWords{
    KeyWord{NavKey::Up, "Up"},
    KeyWord{NavKey::Down, "Down"},
    KeyWord{NavKey::Left, "Left"},
    KeyWord{NavKey::Right, "Right"},
    KeyWord{NavKey::Activate, "OK"},
    KeyWord{NavKey::Wait, "wait"},
    KeyWord{NavKey::RootMenu, "Menu"},
    KeyWord{NavKey::TitleMenu, "Title"},
    KeyWord{NavKey::SubpictureMenu, "Subtitle Menu"},
    KeyWord{NavKey::AudioMenu, "Audio Menu"},
    KeyWord{NavKey::AngleMenu, "Angle Menu"},
    KeyWord{NavKey::PartMenu, "Chapter Menu"},
    KeyWord{NavKey::Return, "Return"},
    KeyWord{NavKey::Resume, "Resume"},
    KeyWord{NavKey::NextPart, "Next"},
    KeyWord{NavKey::PreviousPart, "Previous"},
    KeyWord{NavKey::TopPart, "Top"},
    KeyWord{NavKey::StopStill, "skip"},
    KeyWord{NavKey::TimeOver, "timer"},
};
// Keys with a number after them.
constexpr std::array NumberedWords{
    KeyWord{NavKey::Select, "point at"},     KeyWord{NavKey::Title, "title"},
    KeyWord{NavKey::Part, "chapter"},        KeyWord{NavKey::Audio, "audio"},
    KeyWord{NavKey::Subpicture, "subtitle"}, KeyWord{NavKey::Angle, "angle"},
};

constexpr std::array<std::string_view, 8> MenuNames{
    "menu", "menu", "title menu", "root menu", "subpicture menu", "audio menu", "angle menu", "chapter menu"};

std::string MenuWords(const NavDisc& disc, const NavState& state) {
  const NavChain* chain = ChainAt(disc, state.At, state.Registers.Of(Sprm::MenuLanguage));
  const bool hasName =
      chain != nullptr && chain->IsEntry && chain->MenuId < MenuNames.size() && chain->MenuId > 1;
  std::string words =
      hasName ? std::string(MenuNames.at(chain->MenuId)) : fmt::format("menu {}", state.At.Chain);
  if (state.At.Domain == NavDomain::SetMenu) {
    words += fmt::format(" of set {}", state.At.Set);
  } else if (!hasName) {
    words += " of the Video Manager";
  }
  if (chain != nullptr && chain->Cells.size() > 1) {
    words += fmt::format(", page {}", state.At.Cell);
  }
  return words;
}

std::string_view StopWords(NavStop why) {
  switch (why) {
    case NavStop::Exit:
      return "Exit";
    case NavStop::NoWay:
      return "nothing follows";
    case NavStop::Loop:
      return "commands without an end";
    case NavStop::Missing:
      return "a target that is not there";
    default:
      return "no disc";
  }
}

bool SameTitle(const NavState& a, const NavState& b) {
  const bool titles = a.At.Domain == NavDomain::Title;
  return a.At.Domain == b.At.Domain && a.At.Set == b.At.Set && b.Phase != NavPhase::Stopped &&
         (titles ? a.Registers.Of(Sprm::TitleOfSet) == b.Registers.Of(Sprm::TitleOfSet)
                 : a.At.Chain == b.At.Chain);
}

bool SameChapter(const NavState& a, const NavState& b) {
  return SameTitle(a, b) &&
         (a.At.Domain == NavDomain::Title ? a.Registers.Of(Sprm::Part) == b.Registers.Of(Sprm::Part)
                                          : a.At.Cell == b.At.Cell);
}

std::string EndWords(const NavState& from, const NavState& to) {
  const bool titles = from.At.Domain == NavDomain::Title;
  if (!SameTitle(from, to)) {
    return titles ? fmt::format("end of title {}", from.Registers.Of(Sprm::Title)) : "end of menu";
  }
  if (!SameChapter(from, to)) {
    return titles ? fmt::format("end of chapter {}", from.Registers.Of(Sprm::Part))
                  : fmt::format("end of page {}", from.At.Cell);
  }
  return "wait";
}

std::string WordOf(const NavStride& stride) {
  if (stride.Event.Key == NavKey::Wait) {
    return EndWords(stride.From, stride.To);
  }
  return PressWords(stride.Event);
}

std::optional<std::uint16_t> NumberIn(std::string_view text) {
  std::uint16_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

std::optional<NavPress> PressOf(std::string_view word) {
  if (const auto number = NumberIn(word)) {
    return NavPress{{NavKey::Number, *number}, NavPress::Span::Once, std::string(word)};
  }
  const auto* const plain =
      std::ranges::find_if(KeyWords, [&](const KeyWord& row) { return EqualNoCase(row.Word, word); });
  if (plain != KeyWords.end()) {
    return NavPress{{plain->Key, 0}, NavPress::Span::Once, std::string(plain->Word)};
  }
  const std::string lowered = Lower(word);
  if (lowered == "end" || lowered.starts_with("end of ")) {
    const bool part = Contains(lowered, "chapter") || Contains(lowered, "page");
    return NavPress{
        {NavKey::Wait, 0}, part ? NavPress::Span::Chapter : NavPress::Span::Title, std::string(word)};
  }
  for (const KeyWord& row : NumberedWords) {
    const std::string head = Lower(row.Word) + " ";
    const auto number =
        lowered.starts_with(head) ? NumberIn(std::string_view(lowered).substr(head.size())) : std::nullopt;
    if (number) {
      return NavPress{{row.Key, *number}, NavPress::Span::Once, std::string(word)};
    }
  }
  return std::nullopt;
}

}  // namespace

std::string PlaceWords(const NavDisc& disc, const NavState& state) {
  if (state.Phase == NavPhase::Stopped) {
    return fmt::format("stopped ({})", StopWords(state.Stop));
  }
  std::string words;
  if (state.At.Domain == NavDomain::Title) {
    words =
        fmt::format("title {}, chapter {}", state.Registers.Of(Sprm::Title), state.Registers.Of(Sprm::Part));
  } else {
    words = state.At.Domain == NavDomain::FirstPlay ? "First Play" : MenuWords(disc, state);
  }
  const NavPage* page = PageAt(disc, state);
  if (page != nullptr) {
    words += fmt::format(", button {}", state.Registers.Button());
  }
  return words;
}

std::string PressWords(const NavEvent& event) {
  if (event.Key == NavKey::Number) {
    return fmt::format("{}", event.Number);
  }
  const auto* const numbered = std::ranges::find(NumberedWords, event.Key, &KeyWord::Key);
  return numbered != NumberedWords.end()
             ? fmt::format("{} {}", numbered->Word, event.Number)
             : std::string(std::ranges::find(KeyWords, event.Key, &KeyWord::Key)->Word);
}

std::string LanguageLetters(std::uint16_t language) {
  const std::string letters{static_cast<char>(language >> 8U), static_cast<char>(language & 0xFFU)};
  const bool prints = std::ranges::all_of(letters, [](char letter) { return letter > ' ' && letter <= '~'; });
  return prints ? letters : fmt::format("{:04X}", language);
}

std::string WayWords(std::span<const NavStride> way, std::uint16_t language) {
  std::string words = language == 0 ? "insert" : fmt::format("insert ({})", LanguageLetters(language));
  for (std::size_t i = 0; i < way.size(); ++i) {
    NavStride joined = way[i];
    while (joined.Event.Key == NavKey::Wait && i + 1 < way.size() && way[i + 1].Event.Key == NavKey::Wait &&
           SameTitle(joined.From, way[i].To)) {
      ++i;
      joined.To = way[i].To;
      joined.From = way[i].From;
    }
    words += ", " + WordOf(joined);
  }
  return words;
}

std::optional<std::vector<NavPress>> PressesOf(std::string_view words, std::string& wrong) {
  std::vector<NavPress> presses;
  while (!words.empty()) {
    const std::size_t comma = std::min(words.find(','), words.size());
    const std::string_view word = Trim(words.substr(0, comma));
    words.remove_prefix(std::min(comma + 1, words.size()));
    if (word.empty() || EqualNoCase(word, "insert") || Lower(word).starts_with("insert (")) {
      continue;
    }
    auto press = PressOf(word);
    if (!press) {
      wrong = word;
      return std::nullopt;
    }
    presses.push_back(std::move(*press));
  }
  return presses;
}

NavOutcome CarryOut(const NavDisc& disc, const NavState& state, const NavPress& press,
                    const NavRandom& random) {
  constexpr int MostWaits = 1000;
  NavOutcome whole{.State = state, .Happened = {}};
  for (int i = 0; i < MostWaits; ++i) {
    const NavOutcome step = NavStep(disc, whole.State, press.Event, random);
    const bool refused = std::ranges::any_of(
        step.Happened, [](const NavHappening& one) { return one.What == NavHappening::Kind::Refused; });
    whole.State = step.State;
    whole.Happened.insert(whole.Happened.end(), step.Happened.begin(), step.Happened.end());
    const bool isOver = press.Until == NavPress::Span::Once      ? true
                        : press.Until == NavPress::Span::Chapter ? !SameChapter(state, whole.State)
                                                                 : !SameTitle(state, whole.State);
    if (refused || isOver || whole.State.Phase == NavPhase::Stopped) {
      break;
    }
  }
  return whole;
}

}  // namespace quorvelant
