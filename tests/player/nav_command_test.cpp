// Commands by their bytes, as DVD-Video lays them out.
#include "player/nav_command.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "disc/command_hex.h"

namespace quorvelant {
namespace {

using Kind = NavLead::Kind;

NavLead RunHex(std::string_view hex, NavRegisters& registers, std::uint16_t drawn = 1) {
  return RunNavCommand(ParseCommandHex(hex), registers, [drawn](std::uint16_t /*bound*/) { return drawn; });
}

std::string CommandHexOf(const NavCommand& command) {
  std::string hex;
  for (const std::uint8_t byte : command) {
    hex += fmt::format("{:02X}", byte);
  }
  return hex;
}

TEST(NavCommand, LeadsWhereItsBytesSay) {
  struct Case {
    std::string Hex;
    NavLead Lead;
  };
  const std::vector<Case> cases{
      {"0000000000000000", {}},
      {"0001000000000007", {.What = Kind::GoTo, .Number = 7}},
      {"0002000000000000", {.What = Kind::Break}},
      {"0003000000000109", {.What = Kind::GoTo, .Number = 9}},
      {"3001000000000000", {.What = Kind::Exit}},
      {"2001000000000810", {.What = Kind::Resume, .Button = 2}},
      {"200100000000000A", {.What = Kind::NextChain}},
      {"200100000000000D", {.What = Kind::TailChain}},
      {"2004000000000123", {.What = Kind::Chain, .Number = 0x123}},
      {"2005000000000C05", {.What = Kind::Part, .Number = 5, .Button = 3}},
      {"2006000000000404", {.What = Kind::Program, .Number = 4, .Button = 1}},
      {"200700000000000C", {.What = Kind::Cell, .Number = 12}},
      {"3002000000030000", {.What = Kind::JumpTitle, .Number = 3}},
      {"3003000000020000", {.What = Kind::JumpTitleOfSet, .Number = 2}},
      {"3005000700020000", {.What = Kind::JumpPart, .Number = 7, .Title = 2}},
      {"3006000000000000", {.What = Kind::JumpFirstPlay}},
      {"3006000000420000", {.What = Kind::JumpManagerMenu, .Number = 2}},
      {"3006000102830000", {.What = Kind::JumpSetMenu, .Number = 3, .Set = 2, .Title = 1}},
      {"3006000500C00000", {.What = Kind::JumpManagerChain, .Number = 5}},
      {"3008000004830000", {.What = Kind::CallSetMenu, .Number = 3, .ResumeCell = 4}},
      {"3008000201C00000", {.What = Kind::CallManagerChain, .Number = 2, .ResumeCell = 1}},
      {"7104000300050002", {.What = Kind::Chain, .Number = 2}},
      {"2001000000000001", {.What = Kind::TopCell}},
      {"FFFFFFFFFFFFFFFF", {.What = Kind::Unknown}},
  };
  for (const Case& row : cases) {
    NavRegisters registers;
    EXPECT_EQ(RunHex(row.Hex, registers), row.Lead) << row.Hex;
  }
}

TEST(NavCommand, ComputesWithinSixteenBits) {
  struct Case {
    std::string Hex;  // on register 1
    std::uint16_t Before;
    std::uint16_t After;
  };
  const std::vector<Case> cases{
      {"7100000100070000", 3, 7},  {"7300000100070000", 3, 10},     {"7300000100070000", 0xFFFE, 0xFFFF},
      {"7400000100070000", 3, 0},  {"7500000100070000", 3, 21},     {"7500000180000000", 3, 0xFFFF},
      {"7600000100020000", 9, 4},  {"7600000100000000", 9, 0xFFFF}, {"7700000100040000", 9, 1},
      {"7900000100060000", 3, 2},  {"7A00000100060000", 3, 7},      {"7B00000100060000", 3, 5},
      {"7800000100090000", 3, 6},   // a random number: the one that was drawn
      {"6200000100020000", 3, 40},  // swapped with register 2
      {"6100000100830000", 3, 1},   // a system register: the angle
  };
  for (const Case& row : cases) {
    NavRegisters registers;
    registers.General[1] = row.Before;
    registers.General[2] = 40;
    registers.Put(Sprm::Angle, 1);
    RunHex(row.Hex, registers, 6);
    EXPECT_EQ(registers.General[1], row.After) << row.Hex;
  }
}

TEST(NavCommand, ComparesWhereEachTypeHasItsOperands) {
  struct Case {
    std::string Hex;
    bool Holds;
  };
  // Register 1 is 5, register 2 is 6.
  const std::vector<Case> cases{
      {"00A1000100050003", true},  {"00B1000100050003", false}, {"0091000100040003", true},
      {"00C1000100050003", true},  {"00D1000100050003", false}, {"00E1000100050003", true},
      {"00F1000100060003", true},  {"0071000100020003", true},  {"20A4000100050003", true},
      {"20A4000100060003", false}, {"3022000000010101", true},  {"3022000000010102", false},
      {"81A1000700050001", false},  // sets register 1 to that of 7, which is 0, then compares
      {"A1A3000100050001", true},
  };
  for (const Case& row : cases) {
    NavRegisters registers;
    registers.General[1] = 5;
    registers.General[2] = 6;
    EXPECT_EQ(RunHex(row.Hex, registers).What != Kind::None, row.Holds) << row.Hex;
  }
}

TEST(NavCommand, SetsStreamsTimersButtonsAndCounters) {
  NavRegisters registers;
  registers.General[4] = 0x42;
  RunHex("5100008182830000", registers);
  EXPECT_EQ(registers.Of(Sprm::Audio), 1);
  EXPECT_EQ(registers.Of(Sprm::Subpicture), 2);
  EXPECT_EQ(registers.Of(Sprm::Angle), 3);
  RunHex("4100000084000000", registers);
  EXPECT_EQ(registers.Of(Sprm::Audio), 1);
  EXPECT_EQ(registers.Of(Sprm::Subpicture), 0x42);
  RunHex("5200003C00050000", registers);
  EXPECT_EQ(registers.Of(Sprm::Timer), 60);
  EXPECT_EQ(registers.Of(Sprm::TimerChain), 5);
  RunHex("5600000008000000", registers);
  EXPECT_EQ(registers.Button(), 2);
  RunHex("5300000900830000", registers);
  EXPECT_EQ(registers.General[3], 9);
  EXPECT_TRUE(registers.Counts[3]);
}

// What the facts of a command say that it reads is all that makes a difference to what it does.
TEST(NavCommand, FactsNameEveryRegisterThatMatters) {
  std::mt19937 random(7);  // NOLINT(cert-msc51-cpp): the same each time
  std::uniform_int_distribution<unsigned> any(0, 0xFFFF);
  const NavRandom half = [](std::uint16_t bound) { return static_cast<std::uint16_t>(bound / 2U + 1U); };
  for (int i = 0; i < 40000; ++i) {
    NavCommand command{};
    std::ranges::generate(command, [&] { return static_cast<std::uint8_t>(any(random)); });
    command[0] = static_cast<std::uint8_t>((any(random) % 7U) << 5U | (command[0] & 0x1FU));
    for (const std::size_t at : {2U, 3U, 4U, 5U, 6U, 7U}) {  // few registers, so that they meet
      command.at(at) = static_cast<std::uint8_t>(command.at(at) & (any(random) % 4U == 0 ? 0xFFU : 0x83U));
    }
    NavRegisters one;
    std::ranges::generate(one.General, [&] { return static_cast<std::uint16_t>(any(random) % 4U); });
    NavRegisters other = one;
    const std::size_t changed = any(random) % 8U;
    const std::size_t number = changed % 4U;
    std::uint16_t& value = changed < 4 ? other.General.at(number) : other.System.at(number);
    value = static_cast<std::uint16_t>(value + 1U + any(random) % 3U);
    const NavFacts facts = FactsOf(command);
    const std::uint64_t bit = std::uint64_t{1} << (changed < 4 ? number : 16U + number);
    if ((facts.Reads & bit) != 0) {
      continue;
    }
    const NavLead lead = RunNavCommand(command, one, half);
    EXPECT_EQ(RunNavCommand(command, other, half), lead) << CommandHexOf(command) << " register " << changed;
    (changed < 4 ? other.General.at(number) : other.System.at(number)) =
        changed < 4 ? one.General.at(number) : one.System.at(number);
    EXPECT_EQ(other, one) << CommandHexOf(command) << " register " << changed;
  }
}

}  // namespace
}  // namespace quorvelant
