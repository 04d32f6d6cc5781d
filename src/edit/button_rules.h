// Buttons while they are edited on the picture of a track.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "base/rules.h"
#include "edit/outcome.h"
#include "model/tracks.h"

namespace quorvelant {

// A button under work: on the disc's 720 columns (`Button.Areas`) and on the screen, per group.
struct EditedButton {
  HighlightButton Button;
  std::array<HighlightArea, 3> Screen;
  bool Removed = false;
  std::optional<std::size_t> Saved = {};  // its index in the set as it was last saved; nothing for a new one
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

// How many buttons the editor makes with one, two or three display modes.
std::size_t ButtonLimit(std::size_t displayModes, const Rules& rules);
// Why the set takes no further button.
std::optional<Message> RefuseButton(std::span<const EditedButton> buttons, std::size_t displayModes,
                                    const Rules& rules);

// Adds the button of a drag, given in screen pixels and clipped to the picture here; false, and nothing
// added, for drags of 2 pixels or less in a direction. The set must have room for it. All groups get its
// rectangle. It is named "Button_" and the lowest number that is free; a removed button keeps its name until
// the set is saved.
bool AddButton(std::vector<EditedButton>& buttons, HighlightArea drag, const ButtonView& view);

// The first button whose rectangle in the view's group holds the point, edges included.
std::optional<std::size_t> ButtonAt(std::span<const EditedButton> buttons, int x, int y,
                                    const ButtonView& view);

// Gives a button the rectangle of a move, in screen pixels; with `equalSizes` in every group.
void MoveButton(EditedButton& button, const HighlightArea& screen, const ButtonView& view, bool equalSizes);

enum class LinkDirection { Left, Right, Up, Down };
// Which of a button's links leads this way. It holds the name of a button, empty for none.
[[nodiscard]] std::string HighlightButton::*LinkTowards(LinkDirection direction);
// Links `from` to `to`; nothing changes where both are the same.
void LinkButton(std::span<EditedButton> buttons, std::size_t from, std::size_t to, LinkDirection direction);

// Sets the button's mark, which it asks about. Links to it stay as they are.
Outcome RemoveButton(EditedButton& button, Consent consent);

// The buttons of a saved set, for work.
std::vector<EditedButton> EditedButtons(const HighlightPlay& set, const ButtonView& view);
// The same for a set that is to hold `wanted`: those that bear the name of a saved one are that button, and
// the saved ones that are not wanted are removed.
std::vector<EditedButton> EditedButtons(const HighlightPlay& set, std::span<const HighlightButton> wanted,
                                        const ButtonView& view);

// The buttons to save: without the removed ones, numbered from 1.
std::vector<HighlightButton> KeptButtons(std::span<const EditedButton> buttons);
// The number that each button of the saved set has among the kept ones; 0 for a removed one.
std::vector<std::int32_t> NewNumbers(std::size_t savedButtons, std::span<const EditedButton> buttons);

// Puts the kept buttons into a set of the track. Its groups get their usual names where none has one, its
// forced buttons and the reach of the number keys follow, the track is marked, and subtitles that show with
// the buttons, whose pixels they are, are forced.
void SaveButtons(Track& track, HighlightPlay& set, std::span<const EditedButton> buttons,
                 int framesPerSecond);

}  // namespace quorvelant
