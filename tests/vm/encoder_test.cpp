// Texts and the bytes that the DVD-Video instruction tables give them; written from the bit fields, so that
// each row can be read against the format: operation byte, comparison byte, operands. The rows of
// docs/commands.md are not repeated here.
#include "vm/encoder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "base/text.h"
#include "support/folders.h"
#include "support/trial.h"
#include "vm/check_commands.h"
#include "vm/decoder.h"
#include "vm/messages.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

constexpr ResolveOptions Numeric{.Numbers = NumericTargets::First};

std::string Hex(std::string_view text) {
  return ResolveText(text, {}, nullptr, Numeric).Hex;
}

struct Row {
  std::string_view Text;
  std::string_view Hex;
};

// Each text is the decoder's own wording, so both directions are checked.
constexpr Row Exact[] = {
    // Type 0: flow. A comparison is left in byte 3, right in bytes 4 and 5; bit 7 of byte 1 for a number.
    {"GoTo 5", "0001000000000005"},
    {"SetTmpPML parental:3 command:7", "0003000000000307"},
    {"If ( GPRM1 <= 3 ) Break", "00E2000100030000"},
    {"If ( GPRM2 == SPRM3 ) GoTo 4", "0021000200830004"},
    {"If ( GPRM1 & GPRM2 ) SetTmpPML parental:3 command:7", "0013000100020307"},
    {"If ( GPRM15 != 65535 ) NOP", "00B0000FFFFF0000"},
    // Type 1: links; the button in the upper six bits of byte 6.
    {"LinkNoLink, button=0", "2001000000000000"},
    {"LinkNextC, button=0", "2001000000000002"},
    {"LinkPrevC, button=0", "2001000000000003"},
    {"LinkTopPG, button=0", "2001000000000005"},
    {"LinkPrevPG, button=0", "2001000000000007"},
    {"LinkTopPGC, button=0", "2001000000000009"},
    {"LinkPrevPGC, button=0", "200100000000000B"},
    {"LinkTailPGC, button=36", "200100000000900D"},
    {"If ( GPRM0 != 9 ) LinkNextPGC, button=2", "20B100000009080A"},
    {"LinkPGCN 300", "200400000000012C"},
    {"LinkPTT 700, button=36", "20050000000092BC"},
    {"LinkPGN 5, button=3", "2006000000000C05"},
    {"If ( GPRM3 >= 1 ) LinkCN 5, button=3", "20C7000300010C05"},
    // Type 1 with bit 4: jumps and calls; left in byte 6, right in byte 7.
    {"JumpTT 3", "3002000000030000"},
    {"If ( GPRM4 > GPRM5 ) JumpTT 2", "3052000000020405"},
    {"JumpVTS_TT 3", "3003000000030000"},
    {"JumpVTS_PTT ptt_1 @ vts_ttn_1", "3005000100010000"},
    {"JumpSS vts_99, vts_ttn_2 : Sub-pictureMenu", "3006000263840000"},
    {"JumpSS vts_1, vts_ttn_1 : AudioMenu", "3006000101850000"},
    {"JumpSS vts_1, vts_ttn_1 : AngleMenu", "3006000101860000"},
    {"JumpSS vts_1, vts_ttn_1 : PTT_Menu", "3006000101870000"},
    {"JumpSS pgc_258", "3006010200C00000"},
    {"CallSS RSM=7,FP_DOM", "3008000007000000"},
    {"CallSS RSM=2,RootMenu", "3008000002830000"},
    {"CallSS RSM=4,, pgc_3", "3008000304C00000"},
    // Type 2: system sets; bit 4 of byte 0 for numbers, bit 7 of an operand byte says that it is set.
    {"SetSTN audio=1, subpicture=1:ON", "51000080C0000000"},
    {"SetSTN angle=2, audio=16:None", "5100008F00820000"},
    {"SetSTN subpicture=32:ON", "51000000DF000000"},
    {"SetSTN subpicture=2:OFF", "5100000081000000"},
    {"SetSTN angle=GPRM1, audio=GPRM3, subpicture=GPRM4", "4100008384810000"},
    {"If ( GPRM1 == SPRM2 ) SetSTN audio=2", "5120008100000182"},
    {"{ SetSTN audio=2 ; LinkPGCN 7 }", "5104008100000007"},
    {"SetNVTMR NV_TMR=600, TT_PGCN=2", "5200025800020000"},
    {"SetNVTMR NV_TMR=GPRM7, TT_PGCN=2", "4200000700020000"},
    {"SetGPRMMD RegisterModeGPRM3=5", "5300000500030000"},
    {"SetGPRMMD CounterModeGPRM3=GPRM9", "4300000900830000"},
    {"SetAMXMD ACH0(4:ON,3:OFF,2:ON), ACH1(4:OFF,3:ON,2:OFF)", "5400000014080000"},
    {"If ( GPRM1 == GPRM2 ) SetAMXMD ACH0(4:ON,3:ON,2:ON), ACH1(4:OFF,3:OFF,2:OFF)", "542000001C000102"},
    {"SetAMXMD GPRM6", "4400000000060000"},
    {"SetHL_BTNN HL_BTTN=36", "5600000090000000"},
    {"{ SetHL_BTNN HL_BTTN=GPRM5 ; LinkTopC, button=0 }", "4601000000050001"},
    // Type 3: register arithmetic.
    {"mov GPRM0, GPRM0", "6100000000000000"},
    {"mov GPRM1, 500", "7100000101F40000"},
    {"swp GPRM1, GPRM2", "6200000100020000"},
    {"mul GPRM1, 2", "7500000100020000"},
    {"div GPRM1, 2", "7600000100020000"},
    {"mod GPRM1, 2", "7700000100020000"},
    {"rnd GPRM1, 2", "7800000100020000"},
    {"and GPRM1, 2", "7900000100020000"},
    {"or GPRM1, 2", "7A00000100020000"},
    {"xor GPRM1, SPRM8", "6B00000100880000"},
    {"If ( GPRM1 >= 5 ) add GPRM2, 1", "73C0010200010005"},
    {"{ sub GPRM2, GPRM3 ; LinkNextC, button=0 }", "6401000200030002"},
    {"{ mov GPRM2, 1 ; LinkPTT 700, button=36 }", "71050002000192BC"},
    // Types 4 to 6: the set register in the low nibble of byte 1.
    {"mov GPRM1, 5 ; If ( GPRM1 == 3 ) LinkTopC, button=1", "91A1000500030401"},
    {"add GPRM2, GPRM3 ; If ( GPRM2 < GPRM4 ) LinkNextC, button=0", "8372000300040002"},
    {"If ( GPRM1 == 258 ) { mov GPRM3, SPRM4 ; RSM }", "A1A3840101020010"},
    {"If ( GPRM1 == 258 ) { mov GPRM3, GPRM4 ; } RSM", "C1A3040101020010"},
};

void ExpectBothWays(const Row& row) {
  const Resolution result = ResolveText(row.Text, {}, nullptr, Numeric);
  EXPECT_EQ(result.Hex, row.Hex) << row.Text;
  EXPECT_EQ(result.Faults, TextFault::None) << row.Text;
  EXPECT_EQ(DecodeCommand(row.Hex).Text, row.Text) << row.Hex;
}

TEST(Encoder, EveryFormOfTheFormatAndBack) {
  std::ranges::for_each(Exact, &ExpectBothWays);
}

TEST(Encoder, EveryExampleOfThePageForUsers) {
  std::ifstream page(SourceFile("docs/commands.md"));
  int examples = 0;
  for (std::string line; std::getline(page, line);) {
    const std::vector<std::string_view> ticks = Split(line, "`");
    if (line.starts_with("| `") && ticks.size() >= 5) {
      ExpectBothWays({ticks[1], ticks[3]});
      ++examples;
    }
  }
  EXPECT_GT(examples, 35);
}

// Other ways to write what is read the same, and values at the edges.
TEST(Encoder, LooseFormsReadAlike) {
  constexpr Row Rows[] = {
      {"", "0000000000000000"},
      {"  linktopc ,BUTTON= 1 ", "2001000000000401"},
      {"LinkTopC", "2001000000000001"},
      {"LinkCN 4 button=1", "2007000000000404"},
      {"if(gprm1<=3)break", "00E2000100030000"},
      {"SetHL_BTNN HL_BTNN=2", "5600000008000000"},
      {"SetSTN subpicture=63 Dummy:OFF", "5100000080000000"},
      {"SetSTN subpicture=3", "51000000C2000000"},
      {"SetSTN audio=1, ", "5100008000000000"},
      {"{ SetSTN subpicture=63 Dummy:ON ; LinkPGCN 2 button=1 }", "51040000FF000002"},
      {"CallSS FP_DOM", "3008000000000000"},
      {"CallSS RSM=0, , pgc_5", "3008000500C00000"},
      {"JumpSS pgc_0", "3006000100C00000"},
      {"{mov GPRM1,5;If(GPRM1==3)LinkTopC,button=1}", "91A1000500030401"},
      {"or GPRM1, GPRM2", "6A00000100020000"},
      {"LinkPGN 5, button=64", "2006000000000005"},
      {"JumpSS 3", "3006000300C00000"},
      {"SetAMXMD ACH0(4:ON,3:OFF,2:OFF,1:ON), ACH1(4:OFF,3:OFF,2:ON,1:ON)", "5400000010040000"},
  };
  for (const Row& row : Rows) {
    EXPECT_EQ(Hex(row.Text), row.Hex) << row.Text;
  }
}

// The bytes of texts that the format cannot carry, and the one warning that each is given.
TEST(Encoder, WhatTheFormatCannotCarry) {
  struct FaultRow {
    std::string_view Text;
    std::string_view Hex;
    const MessageKind& Warning;
  };
  constexpr FaultRow Rows[] = {
      {"If ( GPRM1 == 5 ) JumpTT 2", "30A2000000020105", message::CommandNumberNotComparable},
      {"If ( GPRM1 == 5 ) SetSTN audio=1", "5120008000000105", message::CommandNumberNotComparable},
      {"If ( GPRM1 == 5 ) SetHL_BTNN HL_BTTN=1", "5620000004000180", message::CommandNumberNotComparable},
      {"If ( GPRM1 == 5 ) { mov GPRM3, 7 ; RSM }", "B1A3000701050010", message::CommandNumberNotComparable},
      {"mov GPRM1, 5 ; If ( GPRM2 == 3 ) RSM", "91A1000500030010", message::CommandComparesSetRegister},
      {"mov GPRM1, 5 ; If ( GPRM1 == 3 ) LinkPGCN 9", "91A1000500030009", message::CommandLinkNotCarried},
      {"If ( GPRM1 ) Break", "0000000000000000", message::CommandWithoutOperator},
      {"If ( GPRM1 ) LinkTopC", "2000000000000001", message::CommandWithoutOperator},
      {"If ( GPRM1 == GPRM2 ) { SetSTN audio=1 ; RSM }", "A020000100020010", message::CommandSetNotCarried},
      {"SetSTN audio=1, angle=GPRM2", "4100008000820000", message::CommandMixesStreamValues},
      {"JumpSS vts_1, vts_ttn_1 : MainMenu", "3006000101800000", message::CommandMenuUnknown},
      {"mov GPRM16, 1", "7100001000010000", message::CommandRegisterBeyondRange},
      {"add GPRM1, SPRM24", "6300000100980000", message::CommandRegisterBeyondRange},
      {"If ( GPRM16 == GPRM1 ) Break", "0022001000010000", message::CommandRegisterBeyondRange},
      {"SetSTN audio=GPRM16", "4100009000000000", message::CommandRegisterBeyondRange},
      {"SetSTN subpicture=GPRM16", "4100000090000000", message::CommandRegisterBeyondRange},
      {"SetSTN angle=GPRM16", "4100000000900000", message::CommandRegisterBeyondRange},
      {"SetSTN audio=9", "5100008800000000", message::CommandStreamBeyondDisc},
      {"SetSTN audio=99", "510000E200000000", message::CommandStreamBeyondDisc},
      {"SetSTN subpicture=33:ON", "51000000E0000000", message::CommandStreamBeyondDisc},
      {"{ SetSTN angle=10 ; RSM }", "51010000008A0010", message::CommandStreamBeyondDisc},
      {"SetSTN angle=0", "5100000000800000", message::CommandStreamBeyondDisc},
      {"SetGPRMMD CounterModeGPRM1=GPRM16", "4300001000810000", message::CommandRegisterBeyondRange},
      {"{ mov GPRM1, 2 ; Exit }", "7100000100020000", message::CommandLinkUnknown},
      {"Please play", "0000000000000000", message::CommandUnknown},
      {"LinkPGCN exit_page", "3001000000000000", message::CommandNameTakenForWord},
      {"LinkCN LinkPGN_1", "2006000000000001", message::CommandNameTakenForWord},
      {"CallSS RSM=0,, VMG_TitleMenu_PGC", "3008000000420000", message::CommandNameTakenForWord},
      {"JumpSS fp_menu", "3006000000000000", message::CommandNameTakenForWord},
  };
  for (const FaultRow& row : Rows) {
    const Resolution result = ResolveText(row.Text, {}, nullptr, Numeric);
    EXPECT_EQ(result.Hex, row.Hex) << row.Text;
    const std::vector<Message> warnings = WarningsFor(result.Faults, "P", row.Text, "VTS1 Pre1");
    ASSERT_EQ(warnings.size(), 1U) << row.Text;
    EXPECT_EQ(warnings[0].Code, row.Warning.Code) << row.Text;
    EXPECT_TRUE(warnings[0].Text.starts_with(fmt::format("P: \"{}\"", row.Text))) << warnings[0].Text;
    EXPECT_EQ(warnings[0].Level, Severity::Warning);
  }
}

TEST(Decoder, BytesNoTextMakesAreUnknown) {
  for (const std::string_view hex :
       {"2001000000000004", "2008000000000000", "3004000000000000", "3006000000430000", "E000000000000000",
        "0000000000000001", "5500000000000000", "0080000000000000", "200100000000000", "x001000000000000"}) {
    EXPECT_FALSE(DecodeCommand(hex).Known) << hex;
  }
}

// The decoder gives no text that does not lead back to the bytes, so it must know what the encoder makes: of
// each text with any digits, and after a comparison.
TEST(Decoder, KnowsWhateverTheEncoderMakes) {
  std::mt19937 random(20240517);  // NOLINT(cert-msc51-cpp): the same commands in every run
  for (int left = TrialCount(100, 1000); left > 0; --left) {
    for (const Row& row : Exact) {
      std::string text = left % 2 == 0 ? "" : "If ( GPRM1 >= GPRM2 ) ";
      for (const char letter : row.Text) {
        text += letter < '0' || letter > '9' ? letter : static_cast<char>('0' + random() % 10);
      }
      EXPECT_TRUE(DecodeCommand(Hex(text)).Known) << text << " -> " << Hex(text);
    }
  }
}

TEST(Encoder, DigitsAndBytes) {
  EXPECT_EQ(HexOfCommand(ParseCommandHex("30080000014200fF")), "30080000014200FF");
}

}  // namespace
}  // namespace quorvelant
