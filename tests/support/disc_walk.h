// Plays a finished folder with libdvdnav, which nobody here wrote.
#pragma once

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

// Lets libdvdnav run First Play, every title to its end and from every chapter. Stills are skipped; a menu
// that waits or loops counts as reached.
DiscWalk WalkDisc(const std::string& folder);

// Goes to the root menu of a title's set (or, with 0, the title menu), presses these buttons one after the
// other, each as soon as buttons show, and tells where that led, as above with the chapter: "title 2 chapter
// 3".
std::string PressButtons(const std::string& folder, int title, const std::vector<int>& buttons);

}  // namespace quorvelant
