#include "menu/button_texts.h"

#include <fmt/format.h>

#include <string_view>

#include "model/keys.h"

namespace quorvelant {

namespace {

constexpr const char* ManagerLanguage = "English";

std::string_view WordOf(PageKind kind) {
  switch (kind) {
    case PageKind::Root:
      return "Root";
    case PageKind::Audio:
      return "Audio";
    case PageKind::Subtitle:
      return "Subtitle";
    default:
      return "Chapter";
  }
}

bool TurnsPage(const std::string& key) {
  return key == menu_key::Previous || key == menu_key::Next;
}

// Cells count from 1, pages from 0.
std::string TurnPageText(const std::string& key, const MenuButtonPlace& place) {
  const std::size_t cell = key == menu_key::Next ? place.Page + 2 : place.Page;
  return fmt::format("LinkCN {}_PG1_CELL{} button=1", MenuChainName(place.Kind, place.Set), cell);
}

// Of a title set by its number, as text.
std::string JumpToRootOf(std::string_view set) {
  return fmt::format("JumpSS vts_{}, vts_ttn_1 : RootMenu", set);
}

std::string ShowSubtitlesText(std::string_view number) {
  return fmt::format("SetSTN subpicture={}:ON", number);
}

std::string SetAndReturn(const std::string& setting, const MenuButtonPlace& place) {
  return fmt::format("{{ {} ; LinkPGCN {} }}", setting, MenuChainName(PageKind::Root, place.Set));
}

std::string RootText(const std::string& key, const MenuButtonPlace& place) {
  if (key == menu_key::Play) {
    return "JumpVTS_TT " + FilmTitleName(place.Set);
  }
  if (key == menu_key::Main) {
    return "JumpSS TitleMenu";
  }
  const PageKind kind = key == menu_key::Audio      ? PageKind::Audio
                        : key == menu_key::Subtitle ? PageKind::Subtitle
                                                    : PageKind::Chapter;
  return "LinkPGCN " + MenuChainName(kind, place.Set);
}

std::string ChoiceText(const std::string& key, const MenuButtonPlace& place, const Rules& rules) {
  if (!rules.TitlePagesTurn) {
    return JumpToRootText(static_cast<int>(place.Running));
  }
  return TurnsPage(key) ? TurnPageText(key, place) : JumpToRootOf(key);
}

}  // namespace

std::string CommandOfButton(const MenuButton& button, const MenuButtonPlace& place, const Rules& rules) {
  const std::string& key = button.Key;
  if (place.Kind == PageKind::Root) {
    return RootText(key, place);
  }
  if (place.Kind == PageKind::TitleChoice) {
    return ChoiceText(key, place, rules);
  }
  if (key == menu_key::Main) {
    return "LinkPGCN " + MenuChainName(PageKind::Root, place.Set);
  }
  if (TurnsPage(key)) {
    return TurnPageText(key, place);
  }
  switch (place.Kind) {
    case PageKind::Audio:
      return SetAndReturn("SetSTN audio=" + key, place);
    case PageKind::Subtitle:
      return SetAndReturn(key == menu_key::SubtitlesOff ? SubtitlesOffText(rules) : ShowSubtitlesText(key),
                          place);
    default:
      return fmt::format("JumpVTS_PTT {}_PG{}", FilmChainName(place.Set), key);
  }
}

std::string SubtitlesOffText(const Rules& rules) {
  return rules.SubtitlesSwitchOff ? "SetSTN subpicture=1:OFF" : "SetSTN subpicture=63 Dummy:ON";
}

std::string SubtitlesOnText(int number) {
  return ShowSubtitlesText(std::to_string(number));
}

std::string MenuChainName(PageKind kind, int set) {
  return kind == PageKind::TitleChoice ? MenuPgcName(1, ManagerLanguage, 1)
                                       : fmt::format("VTS{}_{}", set, WordOf(kind));
}

std::string FilmTitleName(int set) {
  return fmt::format("VTS{}_Title1", set);
}

std::string FilmChainName(int set) {
  return fmt::format("VTS{}_TitlePGC", set);
}

std::string JumpToRootText(int set) {
  return JumpToRootOf(std::to_string(set));
}

}  // namespace quorvelant
