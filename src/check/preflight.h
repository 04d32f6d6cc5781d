// What subtitles and buttons would do wrong on the disc, found before its first sector is written.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/rules.h"
#include "base/user_interface.h"
#include "model/tracks.h"
#include "picture/picture_service.h"
#include "subpicture/coded_bitmaps.h"

namespace quorvelant {

// The texts, each with what fmt puts into it.
namespace preflight_text {
inline constexpr std::string_view SubtitleTitle = "Subtitle Check";
inline constexpr std::string_view EndsBeforeStart = "the subtitle ends ({}) before it starts ({})";
inline constexpr std::string_view NoDuration = "the subtitle has no duration and stays until the next one";
inline constexpr std::string_view OutOfOrder = "the subtitle starts ({}) before the one ahead of it ({})";
inline constexpr std::string_view SameStart =
    "the subtitle starts with the one ahead of it ({}), which never shows";
inline constexpr std::string_view Overlap = "the subtitle starts ({}) before the one ahead of it ends ({})";
inline constexpr std::string_view StartsPastEnd = "the subtitle starts ({}) past the end of the track ({})";
inline constexpr std::string_view EndsPastEnd = "the subtitle ends ({}) past the end of the track ({})";
inline constexpr std::string_view BadIndex = "colours and contrasts of a subtitle are 0 to 15, not {}";
inline constexpr std::string_view NoFile = "the subtitle has no bitmap";

inline constexpr std::string_view HighlightTitle = "Button Check";
inline constexpr std::string_view TooManyButtons = "{} buttons, and {} display modes leave room for {}";
inline constexpr std::string_view NoSuchButton =
    R"(the {} link of button "{}" names "{}", which does not exist)";
inline constexpr std::string_view SameName = R"(two buttons are named "{}": links reach the first)";
inline constexpr std::string_view BadScheme = R"(button "{}" has colour scheme {}, and there are 1 to 3)";
inline constexpr std::string_view BadArea = R"(button "{}" has no area within the picture ({},{} to {},{}))";
inline constexpr std::string_view BadForced = "the {} button is number {}, and there are {}";
inline constexpr std::string_view OutsideTrack = "the buttons start ({}) past the end of the track ({})";
inline constexpr std::string_view SetEndsPastEnd =
    "the buttons last ({}) past the end of the track ({}) and are cut";
inline constexpr std::string_view SetsOutOfOrder = "the buttons start ({}) before the set ahead of them ({})";
inline constexpr std::string_view SetsOverlap =
    "the buttons start ({}) before the set ahead of them ends ({}), which is cut";
inline constexpr std::string_view NothingForced = "no forced subtitle shows while the buttons can be pressed";
}  // namespace preflight_text

// What a check needs besides the track.
struct SubpictureChecks {
  quorvelant::Rules Rules;
  PictureLoader& Pictures;
  UserInterface& Ui;
  std::string SourceFolder = {};  // relative bitmap paths count from here
  bool MuxedOnly = false;         // streams that go on the disc, by their marks
  bool ButtonLinks = true;        // links between buttons as well
  CodedBitmaps* Coded = nullptr;  // takes what was coded, for the multiplexer
};

// Checks the track of that index: times, colours and bitmaps of its subtitle streams, the links, areas and
// spans of its buttons. Every bitmap is loaded and coded. Each message names the track, stream and entry as
// its place; an error hinders authoring, a warning tells what will not show as told. Ends early when the
// voice asks to stop.
std::vector<Message> CheckTrackSubpictures(const Track& track, std::size_t trackIndex,
                                           const SubpictureChecks& checks);

}  // namespace quorvelant
