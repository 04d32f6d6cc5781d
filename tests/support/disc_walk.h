// Plays a finished folder with libdvdread and libdvdnav, which nobody here wrote.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quorvelant {

// One title as the player saw it.
struct WalkedTitle {
  int Title = 0;
  int Chapters = 0;
  bool ReachedEnd = false;        // played until it left the title or the disc stopped
  std::vector<int> ChaptersSeen;  // in the order met, each once
  std::string After;              // where it went: "menu", "title n", "stop"
};

struct DiscWalk {
  std::vector<std::string> Complaints;  // of the libraries, and calls that failed
  std::string FirstPlay;                // where First Play led: "menu", "title n", "stop"
  std::vector<WalkedTitle> Titles;
};

// Opens every IFO with libdvdread, then lets libdvdnav run First Play, every title to its end and from
// every chapter. Stills are skipped; a menu that waits or loops counts as reached.
DiscWalk WalkDisc(const std::string& folder);

// Goes to the root menu of a title's set (or, with 0, the title menu), presses these buttons one after the
// other, each as soon as buttons show, and tells where that led, as above with the chapter: "title 2 chapter
// 3".
std::string PressButtons(const std::string& folder, int title, const std::vector<int>& buttons);

// A button as the player has it.
struct MenuButton {
  std::string Leads;            // the numbers of the buttons that the arrows up, down, left and right select
  std::uint32_t Selected = 0;   // four colours and four contrasts: emphasis 2 and 1, pattern, background
  std::uint32_t Activated = 0;  // the same
  std::vector<std::array<unsigned, 4>> Areas;  // x1, x2, y1, y2 in each group
};
struct MenuPage {
  std::string Displays;  // of the groups: 0 4:3, 1 wide, 2 letterbox, 4 pan-scan
  bool Endless = false;  // its buttons never expire
  std::vector<MenuButton> Buttons;
};

// Goes to that menu, presses the buttons as above and looks at the page that it comes to: every button is
// selected and left by every arrow.
MenuPage LookAtMenu(const std::string& folder, int title, const std::vector<int>& buttons = {});

}  // namespace quorvelant
