// From a few films to a disc whose menus work.
#pragma once

#include <string>
#include <vector>

#include "edit/outcome.h"
#include "edit/session.h"
#include "menu/disc_order.h"
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
  std::size_t Number = 0;  // of the group's pages, from 0
  MenuPage Layout;
  std::string NormalFile;  // paths of this system
  std::string SublayerFile;
};

struct MadeDisc {
  std::vector<MadePage> Pages;
};

// Makes the whole disc on a session that stands on the default structure, as one step of its history. Pages
// go to `folder`, which must not be there; it is left behind only when all was done. Every film, font and
// picture is looked at before the first file is written.
Outcome MakeDisc(EditSession& session, const DiscOrder& order, const std::string& folder,
                 const WizardServices& services, MadeDisc& made);

// Paints a page again, with other fonts or another background, over its files.
Outcome RemakePage(const EditSession& session, const MadePage& page, const MenuLook& look,
                   const WizardServices& services);

}  // namespace quorvelant
