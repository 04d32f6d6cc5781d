// A remote's keys at libdvdnav, one press after the other, and where its player stands then.
#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace quorvelant {

enum class WayKey : std::uint8_t {
  Up,
  Down,
  Left,
  Right,
  Ok,
  Number,
  Select,
  Wait,  // until a page begins, a still is reached or over, or the cell ends
  StopStill,
  TitleMenu,
  RootMenu,
  AudioMenu,
  SubpictureMenu,
  AngleMenu,
  PartMenu,
  Resume,
  Return,
  NextPart,
  PreviousPart,
  TopPart,
  Title,
  Part,
};

// Numbers count from 1; of a player that stopped all are 0.
struct WayPlace {
  char Domain = 'x';  // first play 'f', manager's menu 'm', set's menu 's', title 't', stopped 'x'
  int Set = 0;        // of menus and titles of sets
  int Chain = 0;
  int Cell = 0;
  int Title = 0;  // of the disc, and its part; 0 in menus
  int Part = 0;
  int Button = 0;  // 0 while none show

  // Before a set has played, libdvdnav does not always tell the chain of a manager's menu.
  static constexpr int NotTold = -1;
  friend bool operator==(const WayPlace& one, const WayPlace& other) {
    const auto rest = [](const WayPlace& place) {
      return std::tuple(place.Domain, place.Set, place.Cell, place.Title, place.Part, place.Button);
    };
    return rest(one) == rest(other) &&
           (one.Chain == other.Chain || one.Chain == NotTold || other.Chain == NotTold);
  }
  friend std::ostream& operator<<(std::ostream& out, const WayPlace& place);
};

class KeyPlayer {
 public:
  // The disc goes into a player of this menu language, two letters. Raises std::runtime_error where the
  // folder cannot be opened.
  KeyPlayer(const std::string& folder, const std::string& language);
  KeyPlayer(const KeyPlayer&) = delete;
  KeyPlayer& operator=(const KeyPlayer&) = delete;
  ~KeyPlayer();

  // Keys that the disc forbids, or that nothing answers, change nothing. Gives the command that a button ran,
  // as sixteen digits.
  std::string Press(WayKey key, int number);
  [[nodiscard]] WayPlace Place() const;
  [[nodiscard]] int Buttons() const;      // that show
  [[nodiscard]] int FirstNumber() const;  // key of the first of them

  // Numbers that libdvdnav drew with rand() since this was asked last.
  static std::vector<int> Drawn();
  static void Seed(unsigned seed);

 private:
  // Keys that lead to a place. False where nothing answered.
  bool Search(WayKey key, int number);

  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvelant
