#include "support/key_player.h"

#include <dvdnav/dvdnav.h>
#include <fmt/format.h>

#include <array>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <random>
#include <stdexcept>
#include <utility>

namespace {

std::mt19937 drawing;      // NOLINT(cert-msc51-cpp): seeded by each way
std::vector<int> numbers;  // drawn so far

}  // namespace

// libdvdnav draws from the C library; here it finds this instead.
extern "C" int rand() noexcept {
  numbers.push_back(static_cast<int>(drawing() % (static_cast<unsigned>(RAND_MAX) + 1U)));
  return numbers.back();
}

namespace quorvelant {
namespace {

constexpr int MostBlocks = 40000;
constexpr int Forever = 255;

void Silence(void* /*nobody*/, dvdnav_logger_level_t /*level*/, const char* /*format*/, va_list /*values*/) {}

}  // namespace

std::ostream& operator<<(std::ostream& out, const WayPlace& place) {
  return out << fmt::format("{} set {} chain {} cell {} title {} part {} button {}", place.Domain, place.Set,
                            place.Chain, place.Cell, place.Title, place.Part, place.Button);
}

std::vector<int> KeyPlayer::Drawn() {
  return std::exchange(numbers, {});
}

void KeyPlayer::Seed(unsigned seed) {
  drawing.seed(seed);
  numbers.clear();
}

struct KeyPlayer::State {
  dvdnav_logger_cb Logger{&Silence};
  dvdnav_t* Nav = nullptr;
  std::array<std::uint8_t, DVD_VIDEO_LB_LEN> Block{};
  int Set = 0;
  int Cell = 0;
  int Still = 0;           // seconds of the still that shows; 0 for none
  bool StillMet = false;   // somebody waited for it
  std::uint32_t Page = 0;  // when the buttons that show began
  int Kept = 0;            // the button that is selected while a cell begins
  bool Stopped = false;

  [[nodiscard]] int Selected() const {
    std::int32_t button = 0;
    dvdnav_get_current_highlight(Nav, &button);
    return button;
  }
  // Whatever shows. When a cell begins, libdvdnav selects what the page before forced, as it looks at a
  // navigation pack that is over; in the format nothing but commands, keys and the coming page select.
  void Select(int button) const {
    constexpr int MostButtons = 36;
    pci_t any{};
    any.pci_gi.nv_pck_lbn = 1;  // none that was left by a button
    any.hli.hl_gi.hli_ss = 1;
    any.hli.hl_gi.btn_ns = MostButtons;
    dvdnav_button_select(Nav, &any, button);
  }
  [[nodiscard]] const pci_t& Pci() const { return *dvdnav_get_current_nav_pci(Nav); }
  [[nodiscard]] bool ShowsButtons() const { return (Pci().hli.hl_gi.hli_ss & 3U) != 0; }

  // The next thing that is no part of a picture.
  std::int32_t Next() {
    std::int32_t event = DVDNAV_STOP;
    std::int32_t length = 0;
    if (dvdnav_get_next_block(Nav, Block.data(), &event, &length) != DVDNAV_STATUS_OK) {
      event = DVDNAV_STOP;
    }
    if (event == DVDNAV_STILL_FRAME) {
      dvdnav_still_event_t still{};
      std::memcpy(&still, Block.data(), sizeof still);
      Still = still.length;
    } else if (event == DVDNAV_WAIT) {
      dvdnav_wait_skip(Nav);
    } else if (event == DVDNAV_VTS_CHANGE) {
      dvdnav_vts_change_event_t change{};
      std::memcpy(&change, Block.data(), sizeof change);
      Set = change.new_vtsN;
    } else if (event == DVDNAV_CELL_CHANGE) {
      dvdnav_cell_change_event_t change{};
      std::memcpy(&change, Block.data(), sizeof change);
      Cell = change.cellN;
      Still = 0;
      StillMet = false;
      Page = 0;
      Kept = Selected();
    } else if (event == DVDNAV_NAV_PACKET && Kept != 0) {
      Select(std::exchange(Kept, 0));
    }
    Stopped = Stopped || event == DVDNAV_STOP;
    return event;
  }

  // True where a page of buttons began with the navigation pack. libdvdnav leaves forced selections to the
  // program that shows its pictures.
  bool BeginsPage() {
    const hl_gi_t& hli = Pci().hli.hl_gi;
    const bool begins = (hli.hli_ss & 3U) == 1 && hli.hli_s_ptm != Page;
    Page = ShowsButtons() ? hli.hli_s_ptm : Page;
    if (begins && hli.fosl_btnn != 0) {
      Select(hli.fosl_btnn);
    }
    return begins;
  }

  // Until a cell has begun, where one was to begin; else no more than a sector is read.
  void Follow() {
    bool jumped = false;
    for (int blocks = 0; blocks < MostBlocks && !Stopped; ++blocks) {
      const std::int32_t event = Next();
      jumped = jumped || event == DVDNAV_HOP_CHANNEL || event == DVDNAV_CELL_CHANGE;
      if (event == DVDNAV_NAV_PACKET) {
        BeginsPage();
        return Settle();
      }
      if (event == DVDNAV_STILL_FRAME || (event == DVDNAV_BLOCK_OK && !jumped)) {
        return;
      }
    }
  }
  // After a navigation pack libdvdnav tells of the button that is selected now.
  void Settle() { Next(); }

  void Wait() {
    if (Still != 0 && StillMet) {
      return Still == Forever ? void() : EndStill();
    }
    bool changed = false;
    for (int blocks = 0; blocks < MostBlocks && !Stopped && Still == 0; ++blocks) {
      const std::int32_t event = Next();
      changed = changed || event == DVDNAV_CELL_CHANGE;
      if (event == DVDNAV_NAV_PACKET && (BeginsPage() || changed)) {
        return Settle();
      }
    }
    StillMet = Still != 0;
  }
  void EndStill() {
    Still = 0;
    dvdnav_still_skip(Nav);
    Follow();
  }
};

KeyPlayer::KeyPlayer(const std::string& folder, const std::string& language)
    : state_(std::make_unique<State>()) {
  if (dvdnav_open2(&state_->Nav, nullptr, &state_->Logger, folder.c_str()) != DVDNAV_STATUS_OK) {
    throw std::runtime_error("libdvdnav cannot open " + folder);
  }
  dvdnav_set_readahead_flag(state_->Nav, 0);
  dvdnav_set_PGC_positioning_flag(state_->Nav, 1);
  state_->Follow();
  // Before it has opened a set, libdvdnav does not tell the chains of the manager's menus.
  dvdnav_title_play(state_->Nav, 1);
  dvdnav_reset(state_->Nav);
  *state_ = {.Logger = state_->Logger, .Nav = state_->Nav, .Block = {}};
  numbers.clear();
  std::string code = language;
  dvdnav_menu_language_select(state_->Nav, code.data());
  state_->Follow();
}

KeyPlayer::~KeyPlayer() {
  dvdnav_close(state_->Nav);
}

int KeyPlayer::Buttons() const {
  return state_->ShowsButtons() ? state_->Pci().hli.hl_gi.btn_ns : 0;
}

int KeyPlayer::FirstNumber() const {
  return state_->Pci().hli.hl_gi.btn_ofn + 1;
}

bool KeyPlayer::Search(WayKey key, int number) {
  dvdnav_t* nav = state_->Nav;
  const user_ops_t forbids = dvdnav_get_restrictions(nav);
  const bool isTitle = dvdnav_is_domain_vts(nav) != 0;
  const auto menu = [&](unsigned forbidden, DVDMenuID_t id) {
    return forbidden == 0 && dvdnav_menu_call(nav, id) == DVDNAV_STATUS_OK;
  };
  // From the manager's menus libdvdnav goes to the set that it opened last; the format ties these menus to
  // the set that plays.
  const auto menuOfSet = [&](unsigned forbidden, DVDMenuID_t id) {
    return dvdnav_is_domain_vmgm(nav) == 0 && menu(forbidden, id);
  };
  // Some of its searches leave libdvdnav waiting in the still that they came from; another one ends it.
  const auto outOfStill = [&](dvdnav_status_t status) {
    if (status == DVDNAV_STATUS_OK && state_->Still != 0) {
      dvdnav_top_pg_search(nav);
    }
    return status == DVDNAV_STATUS_OK;
  };
  switch (key) {
    case WayKey::TitleMenu:
      return menu(forbids.title_menu_call, DVD_MENU_Title);
    case WayKey::AudioMenu:
      return menuOfSet(forbids.audio_menu_call, DVD_MENU_Audio);
    case WayKey::SubpictureMenu:
      return menuOfSet(forbids.subpic_menu_call, DVD_MENU_Subpicture);
    case WayKey::AngleMenu:
      return menuOfSet(forbids.angle_menu_call, DVD_MENU_Angle);
    case WayKey::PartMenu:
      return menuOfSet(forbids.chapter_menu_call, DVD_MENU_Part);
    case WayKey::RootMenu:
      return menuOfSet(forbids.root_menu_call, DVD_MENU_Root);
    case WayKey::Resume:
      return !isTitle && menu(forbids.resume, DVD_MENU_Escape);
    case WayKey::NextPart:
      return forbids.next_pg_search == 0 && dvdnav_next_pg_search(nav) == DVDNAV_STATUS_OK;
    case WayKey::PreviousPart:
      return forbids.prev_or_top_pg_search == 0 && dvdnav_prev_pg_search(nav) == DVDNAV_STATUS_OK;
    case WayKey::TopPart:
      return forbids.prev_or_top_pg_search == 0 && dvdnav_top_pg_search(nav) == DVDNAV_STATUS_OK;
    case WayKey::Return:
      return forbids.go_up == 0 && outOfStill(dvdnav_go_up(nav));
    case WayKey::Title:
      return forbids.title_play == 0 && outOfStill(dvdnav_title_play(nav, number));
    case WayKey::Part:
      return forbids.chapter_search_or_play == 0 && isTitle &&
             outOfStill(dvdnav_part_play(nav, Place().Title, number));
    default:
      return false;
  }
}

std::string KeyPlayer::Press(WayKey key, int number) {
  State& state = *state_;
  dvdnav_t* nav = state.Nav;
  pci_t pci = state.Pci();
  const user_ops_t forbids = dvdnav_get_restrictions(nav);
  const bool mayPress = state.ShowsButtons() && forbids.button_select_or_activate == 0;
  std::string command;
  const auto run = [&](int button) {
    if (button >= 1 && button <= Buttons()) {
      const vm_cmd_t& bytes = pci.hli.btnit[button - 1].cmd;
      for (const std::uint8_t byte : bytes.bytes) {
        command += fmt::format("{:02X}", byte);
      }
    }
  };
  switch (key) {
    case WayKey::Up:
    case WayKey::Down:
    case WayKey::Left:
    case WayKey::Right:
      if (mayPress) {
        constexpr std::array Arrows{&dvdnav_upper_button_select, &dvdnav_lower_button_select,
                                    &dvdnav_left_button_select, &dvdnav_right_button_select};
        Arrows.at(static_cast<std::size_t>(key))(nav, &pci);
      }
      break;
    case WayKey::Ok:
      if (mayPress) {
        run(state.Selected());
        dvdnav_button_activate(nav, &pci);
      }
      break;
    case WayKey::Number:
      number =
          number - pci.hli.hl_gi.btn_ofn <= pci.hli.hl_gi.nsl_btn_ns ? number - pci.hli.hl_gi.btn_ofn : 0;
      [[fallthrough]];
    case WayKey::Select:
      if (mayPress && number >= 1 && number <= Buttons()) {
        dvdnav_button_select(nav, &pci, number);
        if (key == WayKey::Number || pci.hli.btnit[number - 1].auto_action_mode == 1) {
          run(number);
          dvdnav_button_activate(nav, &pci);
        }
      }
      break;
    case WayKey::Wait:
      state.Wait();
      return command;
    case WayKey::StopStill:
      if (state.Still != 0 && state.StillMet && forbids.still_off == 0) {
        state.EndStill();
      }
      return command;
    default:
      // Each look at the stream plays some of it, so where nothing answers nobody looks.
      if (!Search(key, number)) {
        return command;
      }
      break;
  }
  state.Follow();
  return command;
}

WayPlace KeyPlayer::Place() const {
  const State& state = *state_;
  if (state.Stopped) {
    return {};
  }
  dvdnav_t* nav = state.Nav;
  WayPlace place;
  std::int32_t title = 0;
  std::int32_t program = 0;
  if (dvdnav_current_title_program(nav, &title, &place.Chain, &program) != DVDNAV_STATUS_OK) {
    place.Chain = WayPlace::NotTold;
  }
  place.Domain = dvdnav_is_domain_fp(nav) != 0     ? 'f'
                 : dvdnav_is_domain_vmgm(nav) != 0 ? 'm'
                 : dvdnav_is_domain_vtsm(nav) != 0 ? 's'
                                                   : 't';
  place.Set = place.Domain == 's' || place.Domain == 't' ? state.Set : 0;
  place.Cell = state.Cell;
  if (place.Domain == 't') {
    dvdnav_current_title_info(nav, &place.Title, &place.Part);
  }
  place.Button = Buttons() > 0 ? state.Selected() : 0;
  return place;
}

}  // namespace quorvelant
