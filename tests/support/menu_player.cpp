#include "support/menu_player.h"

#include <dvdnav/dvdnav.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace quorvelant {
namespace {

constexpr int MostBlocks = 40000;
constexpr int Forever = 255;

void Collect(void* complaints, dvdnav_logger_level_t level, const char* format, va_list arguments) {
  std::array<char, 512> text{};
  vsnprintf(text.data(), text.size(), format, arguments);
  const bool bad = level == DVDNAV_LOGGER_LEVEL_ERROR || level == DVDNAV_LOGGER_LEVEL_WARN;
  constexpr std::array<std::string_view, 5> Noises{"Encrypted DVD", "device name", "name block", "DVDRead",
                                                   "dvd_read_name"};
  const std::string_view said(text.data());
  if (bad && std::ranges::none_of(Noises, [&](auto noise) { return said.find(noise) != said.npos; })) {
    static_cast<std::vector<std::string>*>(complaints)->emplace_back(said);
  }
}

}  // namespace

struct MenuPlayer::State {
  std::vector<std::string> Complaints;
  dvdnav_logger_cb Logger{};
  dvdnav_t* Nav = nullptr;
  std::array<std::uint8_t, DVD_VIDEO_LB_LEN> Block{};
  int Set = 0;
  int Cell = 0;
  bool Stopped = false;
  std::string Trouble;

  void Check(dvdnav_status_t status, std::string_view what) {
    if (status != DVDNAV_STATUS_OK) {
      Complaints.push_back(fmt::format("{}: {}", what, dvdnav_err_to_string(Nav)));
    }
  }

  [[nodiscard]] bool InTitle() const { return dvdnav_is_domain_vts(Nav) != 0; }
  [[nodiscard]] std::pair<int, int> TitleAndChapter() const {
    std::int32_t title = 0;
    std::int32_t chapter = 0;
    dvdnav_current_title_info(Nav, &title, &chapter);
    return {title, chapter};
  }

  // Plays on until `done` says so after a NAV pack, or a still without an end comes in a menu.
  template <class Done>
  void Play(Done done) {
    for (int blocks = 0; blocks < MostBlocks && !Stopped; ++blocks) {
      std::int32_t event = DVDNAV_STOP;
      std::int32_t length = 0;
      if (dvdnav_get_next_block(Nav, Block.data(), &event, &length) != DVDNAV_STATUS_OK) {
        Complaints.emplace_back(dvdnav_err_to_string(Nav));
        Stopped = true;
        return;
      }
      if (event == DVDNAV_STILL_FRAME) {
        dvdnav_still_event_t still{};
        std::memcpy(&still, Block.data(), sizeof still);
        if (still.length == Forever && !InTitle()) {
          return;
        }
        dvdnav_still_skip(Nav);
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
      }
      Stopped = event == DVDNAV_STOP;
      if (event == DVDNAV_NAV_PACKET && done()) {
        return;
      }
    }
    Trouble = Stopped ? Trouble : "runs on";
  }
  // A jump to a title leaves libdvdnav waiting for the still of the menu before it; a call of that menu ends
  // it.
  void LeaveMenu() {
    if (!Stopped && !InTitle()) {
      dvdnav_menu_call(Nav, dvdnav_is_domain_vmgm(Nav) != 0 ? DVD_MENU_Title : DVD_MENU_Root);
    }
    Stopped = false;
  }
  void Settle() {
    Trouble.clear();
    Play([this] { return InTitle(); });
  }
};

MenuPlayer::MenuPlayer(const std::string& folder) : state_(std::make_unique<State>()) {
  state_->Logger.pf_log = &Collect;
  if (dvdnav_open2(&state_->Nav, &state_->Complaints, &state_->Logger, folder.c_str()) != DVDNAV_STATUS_OK) {
    throw std::runtime_error("libdvdnav cannot open " + folder);
  }
  dvdnav_set_readahead_flag(state_->Nav, 0);
  dvdnav_set_PGC_positioning_flag(state_->Nav, 1);
  state_->Settle();
}

MenuPlayer::~MenuPlayer() {
  dvdnav_close(state_->Nav);
}

void MenuPlayer::Press(int button) {
  if (button > Buttons()) {
    state_->Complaints.push_back(fmt::format("no button {} in {}", button, Place()));
    return;
  }
  pci_t* pci = dvdnav_get_current_nav_pci(state_->Nav);
  state_->Check(dvdnav_button_select_and_activate(state_->Nav, pci, button), "button");
  state_->Settle();
}

void MenuPlayer::Press(RemoteKey key) {
  const auto call = [this](DVDMenuID_t menu) { return dvdnav_menu_call(state_->Nav, menu); };
  switch (key) {
    case RemoteKey::Title:
      state_->Check(call(DVD_MENU_Title), "title key");
      break;
    case RemoteKey::Menu:
      state_->Check(call(DVD_MENU_Root), "menu key");
      break;
    case RemoteKey::Return:
      state_->Check(dvdnav_go_up(state_->Nav), "return key");
      break;
    case RemoteKey::Resume:
      state_->Check(call(DVD_MENU_Escape), "resume key");
      break;
  }
  state_->Settle();
}

void MenuPlayer::PlayTitle(int title) {
  state_->LeaveMenu();
  state_->Check(dvdnav_title_play(state_->Nav, title), "title");
  state_->Settle();
}

void MenuPlayer::PlayChapter(int title, int chapter) {
  state_->LeaveMenu();
  state_->Check(dvdnav_part_play(state_->Nav, title, chapter), "chapter");
  state_->Settle();
}

void MenuPlayer::PlayToEnd() {
  const int title = state_->TitleAndChapter().first;
  const int last = state_->TitleAndChapter().second;
  int before = last;
  state_->Play([&] {
    const auto [now, chapter] = state_->TitleAndChapter();
    const bool isLeft = !state_->InTitle() || now != title || chapter < before;
    before = chapter;
    return isLeft && state_->InTitle();
  });
}

std::string MenuPlayer::Place() const {
  if (state_->Stopped) {
    return "stop";
  }
  if (!state_->Trouble.empty()) {
    return state_->Trouble;
  }
  if (state_->InTitle()) {
    const auto [title, chapter] = state_->TitleAndChapter();
    return fmt::format("title {} chapter {}", title, chapter);
  }
  std::int32_t title = 0;
  std::int32_t pgc = 0;
  std::int32_t program = 0;
  dvdnav_current_title_program(state_->Nav, &title, &pgc, &program);
  return dvdnav_is_domain_vmgm(state_->Nav) != 0
             ? fmt::format("manager page {}", state_->Cell)  // its PGC is not always known
             : fmt::format("set {} menu {} page {}", state_->Set, pgc, state_->Cell);
}

int MenuPlayer::Audio() const {
  return dvdnav_get_active_audio_stream(state_->Nav);
}

int MenuPlayer::Subtitles() const {
  const int stream = dvdnav_get_active_spu_stream(state_->Nav);
  return stream < 0 ? -1 : stream;
}

int MenuPlayer::Buttons() const {
  const pci_t* pci = dvdnav_get_current_nav_pci(state_->Nav);
  return (pci->hli.hl_gi.hli_ss & 3) == 0 ? 0 : pci->hli.hl_gi.btn_ns;
}

int MenuPlayer::FirstNumber() const {
  return dvdnav_get_current_nav_pci(state_->Nav)->hli.hl_gi.btn_ofn;
}

int MenuPlayer::Arrow(int button, char direction) const {
  const btni_t& place = dvdnav_get_current_nav_pci(state_->Nav)->hli.btnit[button - 1];
  switch (direction) {
    case 'u':
      return place.up;
    case 'd':
      return place.down;
    case 'l':
      return place.left;
    default:
      return place.right;
  }
}

const std::vector<std::string>& MenuPlayer::Complaints() const {
  return state_->Complaints;
}

}  // namespace quorvelant
