// From a few films to a disc whose menus work.
#pragma once

#include <string>
#include <vector>

#include "edit/outcome.h"
#include "edit/session.h"
#include "menu/disc_order.h"
#include "menu/page_folder.h"
#include "menu/page_painter.h"
#include "picture/picture_service.h"

namespace quorvelant {

class UserInterface;

struct WizardServices {
  PictureService& Pictures;
  UserInterface& Ui;
};

// One page as it stands on the disc, for previews and for painting it anew.
struct MadePage {
  PageKind Kind = PageKind::Root;
  std::size_t Film = 0;    // in the order; not looked at for the title choice
  std::size_t Track = 0;   // of the film, index in `Tracks`
  std::size_t Number = 0;  // of the group's pages, from 0
  MenuPage Layout;
  std::string NormalFile;  // paths of this system
  std::string SublayerFile;
};

struct MadeDisc {
  std::vector<MadePage> Pages;  // none where there is nothing to choose
};

// Makes the whole disc on a session that stands on the default structure, as one step of its history. Every
// film, font and picture is looked at before the first file is written. Pages go to the folder, which is
// placed by then, and which the caller keeps once the project is saved. What the order leaves open, its look
// among it, is filled in. Errors before the last one are told.
// A refusal without words: the user stopped it.
Outcome MakeDisc(EditSession& session, DiscOrder& order, PageFolder& folder, const WizardServices& services,
                 MadeDisc& made);

// Paints a page again, with other fonts or another background, over its files.
Outcome RemakePage(EditSession& session, const MadePage& page, const MenuLook& look,
                   const WizardServices& services);

}  // namespace quorvelant
