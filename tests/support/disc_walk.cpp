#include "support/disc_walk.h"

#include <dvdnav/dvdnav.h>
#include <dvdread/dvd_reader.h>
#include <dvdread/ifo_read.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>

namespace quorvelant {
namespace {

constexpr int MostBlocks = 400000;  // of one stretch of play
constexpr int LoopVobus = 400;      // a menu that has played so many without leaving waits for the viewer

// What is said about the folder being no drive is no complaint about the disc.
bool IsNoise(std::string_view text) {
  constexpr std::string_view Noises[] = {"Encrypted DVD", "device name",   "name block",
                                         "DVDRead",       "dvd_read_name", "Can't read name block"};
  return std::ranges::any_of(Noises, [&](auto noise) { return text.find(noise) != std::string_view::npos; });
}

// The levels of both libraries: 1 is an error, 2 a warning.
template <class Level>
void Collect(void* complaints, Level level, const char* format, va_list arguments) {
  std::array<char, 512> text{};
  vsnprintf(text.data(), text.size(), format, arguments);
  const bool bad = static_cast<int>(level) == 1 || static_cast<int>(level) == 2;
  if (bad && !IsNoise(text.data())) {
    static_cast<std::vector<std::string>*>(complaints)->emplace_back(text.data());
  }
}

class Player {
 public:
  Player(const std::string& folder, DiscWalk& walk) : walk_(walk) {
    logger_.pf_log = &Collect<dvdnav_logger_level_t>;
    if (dvdnav_open2(&nav_, &walk_.Complaints, &logger_, folder.c_str()) != DVDNAV_STATUS_OK) {
      throw std::runtime_error("libdvdnav cannot open " + folder);
    }
    dvdnav_set_readahead_flag(nav_, 0);
    dvdnav_set_PGC_positioning_flag(nav_, 1);
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  ~Player() { dvdnav_close(nav_); }
  dvdnav_t* Nav() { return nav_; }

  // Plays on until `done` says so after a VOBU's start, the disc stops, or nothing new comes.
  void Play(const std::function<bool()>& done) {
    for (int blocks = 0; blocks < MostBlocks && !stopped_; ++blocks) {
      const std::int32_t event = NextBlock();
      if (event == DVDNAV_STILL_FRAME) {
        dvdnav_still_skip(nav_);
      } else if (event == DVDNAV_WAIT) {
        dvdnav_wait_skip(nav_);
      } else if (event == DVDNAV_NAV_PACKET) {
        ++Vobus;
      }
      stopped_ = event == DVDNAV_STOP;
      if (event == DVDNAV_NAV_PACKET && done()) {
        return;
      }
    }
  }
  void PlayToVobu() {
    Play([] { return true; });
  }
  // The VM starts with the first block; only then jumps are possible.
  void Start() { NextBlock(); }

  bool InTitle() const { return dvdnav_is_domain_vts(nav_) != 0; }
  bool IsIn(int title) const { return !stopped_ && InTitle() && Info().first == title; }
  int Chapter() const { return Info().second; }
  std::string Place() const {
    return stopped_ ? "stop" : InTitle() ? "title " + std::to_string(Info().first) : "menu";
  }
  int Vobus = 0;  // begun so far

 private:
  std::int32_t NextBlock() {
    std::int32_t event = DVDNAV_STOP;
    std::int32_t length = 0;
    if (dvdnav_get_next_block(nav_, block_.data(), &event, &length) != DVDNAV_STATUS_OK) {
      walk_.Complaints.emplace_back(dvdnav_err_to_string(nav_));
      return DVDNAV_STOP;
    }
    return event;
  }
  std::pair<int, int> Info() const {
    std::int32_t title = 0;
    std::int32_t part = 0;
    dvdnav_current_title_info(nav_, &title, &part);
    return {title, part};
  }

  DiscWalk& walk_;
  dvdnav_logger_cb logger_{};
  dvdnav_t* nav_ = nullptr;
  bool stopped_ = false;
  std::array<std::uint8_t, DVD_VIDEO_LB_LEN> block_{};
};

WalkedTitle PlayTitle(const std::string& folder, int title, int chapters, DiscWalk& walk) {
  WalkedTitle result{title, chapters, false, {}, ""};
  Player player(folder, walk);
  player.Start();
  if (dvdnav_title_play(player.Nav(), title) != DVDNAV_STATUS_OK) {
    walk.Complaints.push_back(fmt::format("title {} does not start", title));
    return result;
  }
  bool begun = false;
  player.Play([&] {
    const bool inside = player.IsIn(title);
    begun = begun || inside;
    if (inside && std::ranges::find(result.ChaptersSeen, player.Chapter()) == result.ChaptersSeen.end()) {
      result.ChaptersSeen.push_back(player.Chapter());
    }
    return begun && !inside;
  });
  result.ReachedEnd = begun && !player.IsIn(title);
  result.After = player.Place();
  return result;
}

void PlayChapters(const std::string& folder, const WalkedTitle& title, DiscWalk& walk) {
  for (int chapter = 1; chapter <= title.Chapters; ++chapter) {
    Player player(folder, walk);
    player.Start();
    const bool starts = dvdnav_part_play(player.Nav(), title.Title, chapter) == DVDNAV_STATUS_OK;
    player.PlayToVobu();
    if (!starts || !player.IsIn(title.Title) || player.Chapter() != chapter) {
      walk.Complaints.push_back(fmt::format("chapter {} led to {}", chapter, player.Place()));
    }
  }
}

// Presses the button as soon as buttons show. False where none do before the menu has played long.
bool Press(Player& player, int button) {
  pci_t* found = nullptr;
  const int limit = player.Vobus + LoopVobus;
  player.Play([&] {
    pci_t* pci = dvdnav_get_current_nav_pci(player.Nav());
    if ((pci->hli.hl_gi.hli_ss & 3) != 0 && !player.InTitle()) {
      found = pci;
    }
    return found != nullptr || player.Vobus > limit;
  });
  return found != nullptr &&
         dvdnav_button_select_and_activate(player.Nav(), found, button) == DVDNAV_STATUS_OK;
}

// Opens the tables of each set, played or not.
void OpenIfos(const std::string& folder, DiscWalk& walk) {
  dvd_logger_cb logger{};
  logger.pf_log = &Collect<dvd_logger_level_t>;
  const std::unique_ptr<dvd_reader_t, decltype(&DVDClose)> reader(
      DVDOpen2(&walk.Complaints, &logger, folder.c_str()), &DVDClose);
  if (!reader) {
    throw std::runtime_error("libdvdread cannot open " + folder);
  }
  for (int set = 0; set == 0 || std::filesystem::exists(fmt::format("{}/VTS_{:02}_0.IFO", folder, set));
       ++set) {
    const std::unique_ptr<ifo_handle_t, decltype(&ifoClose)> ifo(ifoOpen(reader.get(), set), &ifoClose);
    if (!ifo || (set != 0 && (ifo->vts_ptt_srpt == nullptr || ifo->vts_pgcit == nullptr))) {
      walk.Complaints.push_back(fmt::format("a table of set {} was not read", set));
    }
  }
}

}  // namespace

DiscWalk WalkDisc(const std::string& folder) {
  DiscWalk walk;
  testing::internal::CaptureStderr();
  OpenIfos(folder, walk);
  const std::string said = testing::internal::GetCapturedStderr();
  if (!said.empty() && !IsNoise(said)) {
    walk.Complaints.push_back(said);
  }
  Player first(folder, walk);
  first.PlayToVobu();
  walk.FirstPlay = first.Place();
  std::int32_t titles = 0;
  dvdnav_get_number_of_titles(first.Nav(), &titles);
  for (std::int32_t title = 1; title <= titles; ++title) {
    std::int32_t chapters = 0;
    dvdnav_get_number_of_parts(first.Nav(), title, &chapters);
    walk.Titles.push_back(PlayTitle(folder, title, chapters, walk));
    PlayChapters(folder, walk.Titles.back(), walk);
  }
  return walk;
}

std::string PressButtons(const std::string& folder, int title, const std::vector<int>& buttons) {
  DiscWalk walk;
  Player player(folder, walk);
  player.Start();
  if (title > 0) {
    dvdnav_title_play(player.Nav(), title);
    player.PlayToVobu();
  }
  dvdnav_menu_call(player.Nav(), title > 0 ? DVD_MENU_Root : DVD_MENU_Title);
  for (const int button : buttons) {
    if (!Press(player, button)) {
      return fmt::format("no button {}", button);
    }
  }
  player.PlayToVobu();
  std::string place = player.Place();
  if (place.starts_with("title")) {
    place += fmt::format(" chapter {}", player.Chapter());
  }
  return walk.Complaints.empty() ? place : walk.Complaints.front();
}

}  // namespace quorvelant
