// Any bytes as a disc and as keys: the machine answers each key, and never stands outside of the disc.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "player/nav_lookup.h"
#include "player/nav_machine.h"

namespace {

using namespace quorvelant;

class Source {
 public:
  Source(const std::uint8_t* data, std::size_t count) : data_(data), count_(count) {}
  std::uint8_t Byte() { return at_ < count_ ? data_[at_++] : std::uint8_t{0}; }
  [[nodiscard]] bool IsOver() const { return at_ >= count_; }
  NavCommand Command() {
    NavCommand command{};
    for (std::uint8_t& byte : command) {
      byte = Byte();
    }
    return command;
  }

 private:
  const std::uint8_t* data_;
  std::size_t count_;
  std::size_t at_ = 0;
};

std::vector<NavCommand> List(Source& source) {
  std::vector<NavCommand> commands(source.Byte() % 4U);
  for (NavCommand& command : commands) {
    command = source.Command();
  }
  return commands;
}

NavCell Cell(Source& source) {
  NavCell cell;
  cell.StillTime = source.Byte();
  cell.Command = source.Byte();
  cell.Pages.resize(source.Byte() % 3U);
  for (NavPage& page : cell.Pages) {
    page.Start = source.Byte();
    page.ForcedSelect = source.Byte();
    page.ForcedAction = source.Byte();
    page.ByNumber = source.Byte();
    page.Buttons.resize(source.Byte() % 5U);
    for (NavButton& button : page.Buttons) {
      button = {source.Command(),
                source.Byte(),
                source.Byte(),
                source.Byte(),
                source.Byte(),
                source.Byte() > 200,
                ""};
    }
  }
  return cell;
}

NavChain Chain(Source& source) {
  NavChain chain;
  chain.Pre = List(source);
  chain.Post = List(source);
  chain.CellCommands = List(source);
  for (unsigned i = source.Byte() % 4U; i > 0; --i) {
    chain.Programs.push_back(source.Byte());
  }
  for (unsigned i = source.Byte() % 4U; i > 0; --i) {
    chain.Cells.push_back(Cell(source));
  }
  chain.Next = source.Byte();
  chain.Previous = source.Byte();
  chain.GoUp = source.Byte() == 255 ? 0xFFFF : 1;
  chain.Playback = source.Byte();
  chain.StillTime = source.Byte();
  chain.UserOperations = source.Byte();
  chain.MenuId = source.Byte() % 8U;
  chain.IsEntry = chain.MenuId != 0;
  return chain;
}

NavDisc Disc(Source& source) {
  NavDisc disc;
  disc.FirstPlay = Chain(source);
  disc.Menus.resize(source.Byte() % 3U);
  for (NavMenus& menus : disc.Menus) {
    menus.Chains.push_back(Chain(source));
  }
  disc.Sets.resize(source.Byte() % 3U);
  for (NavSet& set : disc.Sets) {
    set.Menus.resize(source.Byte() % 2U);
    for (NavMenus& menus : set.Menus) {
      menus.Chains.push_back(Chain(source));
    }
    for (unsigned i = source.Byte() % 3U; i > 0; --i) {
      set.Titles.push_back(Chain(source));
      set.Parts.push_back({{source.Byte(), source.Byte()}, {1, 1}});
    }
  }
  for (unsigned i = source.Byte() % 4U; i > 0; --i) {
    disc.Titles.push_back({"", source.Byte(), source.Byte(), 0});
  }
  return disc;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  Source source(data, byteCount);
  const NavDisc disc = Disc(source);
  const NavRandom random = [&source](std::uint16_t /*bound*/) { return source.Byte(); };
  NavState state = InsertDisc(disc, FreshRegisters(0x656E), random).State;
  for (int key = 0; key < 40 && !source.IsOver(); ++key) {
    const NavEvent event{static_cast<NavKey>(source.Byte() % (static_cast<int>(NavKey::TimeOver) + 1)),
                         source.Byte()};
    state = NavStep(disc, state, event, random).State;
    if (state.Phase != NavPhase::Stopped && CellAt(disc, state) == nullptr) {
      std::abort();
    }
  }
  return 0;
}
