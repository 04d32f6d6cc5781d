// Buttons while they are edited on the picture of a track.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/user_interface.h"
#include "model/tracks.h"

namespace quorvelant {

namespace button_text {
inline constexpr std::string_view DeleteTitle = "Delete Button";
inline constexpr std::string_view DeleteQuestion =
    "Would you like to remove this button? (Any button links will need to be repaired manually!)";
}  // namespace button_text

// A button under work: on the disc's 720 columns (`Button.Areas`) and on the screen, per group.
struct EditedButton {
  HighlightButton Button;
  std::array<HighlightArea, 3> Screen;
  bool Removed = false;
};

enum class ViewMode { Normal, Wide, Pan, LetterBox };

// The group that a view works on: 0 for normal and wide, 1 for letterbox, 2 for pan-scan.
std::size_t GroupOfView(ViewMode view);

// How a track is looked at.
struct ButtonView {
  bool Ntsc = false;
  bool ShowsWide = false;  // the wide picture is on the screen
  ViewMode Mode = ViewMode::Normal;
  std::size_t DisplayModes = 1;  // 1 to 3: how many groups the track has
};

// Screen pixels of a full line in a group: 640 (NTSC) or 768, 853 or 1024 for the wide group while the wide
// picture shows.
int ScreenColumns(const ButtonView& view, std::size_t group);
// Columns of the screen and of the disc, rounded to the nearest; lines are the same in both.
int DiscColumn(int screenColumn, int screenColumns);
int ScreenColumn(int discColumn, int screenColumns);

// How many buttons the editor makes: 12, 6 or 4 with one, two or three display modes.
std::size_t ButtonLimit(std::size_t displayModes);

// Adds the button of a drag, given in screen pixels and clipped to the picture here. Refused (false) at the
// limit, and for drags of 2 pixels or less in a direction. All groups get its rectangle.
bool AddButton(std::vector<EditedButton>& buttons, HighlightArea drag, const ButtonView& view);

// The first button whose rectangle in the view's group holds the point, edges included.
std::optional<std::size_t> ButtonAt(std::span<const EditedButton> buttons, int x, int y,
                                    const ButtonView& view);

// Gives a button the rectangle of a move, in screen pixels; with `equalSizes` in every group.
void MoveButton(EditedButton& button, const HighlightArea& screen, const ButtonView& view, bool equalSizes);

enum class LinkDirection { Left, Right, Up, Down };
// Links `from` to `to`; nothing changes where both are the same.
void LinkButton(std::span<EditedButton> buttons, std::size_t from, std::size_t to, LinkDirection direction);

// Asks, and sets the button's mark (unattended: keeps it). Links to it stay as they are.
void RemoveButton(EditedButton& button, UserInterface& ui);

// The buttons to save: without the removed ones, numbered from 1.
std::vector<HighlightButton> KeptButtons(std::span<const EditedButton> buttons);

// Puts the kept buttons into a set of the track. Its groups get their usual names where none has one, the
// track is marked, and subtitles that show with the buttons, whose pixels they are, are forced.
void SaveButtons(Track& track, HighlightPlay& set, std::span<const EditedButton> buttons,
                 int framesPerSecond);

}  // namespace quorvelant
