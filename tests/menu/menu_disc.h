// Whole discs with menus, their pages painted as plain boxes, by a description of a line.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "edit/session.h"
#include "menu/menu_structure.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {

struct MenuDiscKind {
  const char* Name = "";
  int Titles = 1;
  int Chapters = 1;
  int Audio = 1;
  int Subtitles = 0;
  const char* Standard = "PAL";
  const char* Aspect = "4:3";
  AfterFilm After = AfterFilm::Menu;
  AtInsertion Insertion = AtInsertion::Menu;
  bool HasMenus = true;
  int StartSubtitles = 0;  // 0 for none
  quorvelant::Rules Rules = Rules::Players;

  friend void PrintTo(const MenuDiscKind& kind, std::ostream* out) { *out << kind.Name; }
};

class MenuDisc {
 public:
  explicit MenuDisc(const MenuDiscKind& kind);

  // Films, pages, structure; what was refused.
  Outcome Make();
  // Into `Folder`; what was wrong with it, empty for nothing.
  std::string Author();

  MenuDiscKind Kind;
  TempFolder Temp;
  RecordingUi Ui;
  EditSession Session;
  MenuPlan Plan;
  std::string Folder = Temp / "VIDEO_TS";

 private:
  Outcome AddFilm(int number);
  void LayOut();
  Outcome AddPages(const PageGroup& group, std::size_t film);
};

}  // namespace quorvelant
