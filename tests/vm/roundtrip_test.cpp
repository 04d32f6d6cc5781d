// Random commands of every shape: what the encoder makes, the decoder says in words that make it again.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "support/trial.h"
#include "vm/command_words.h"
#include "vm/decoder.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

// Draws commands from a grammar: "<name>" stands for one of the forms of that name, "#n" for a number below
// n.
class Composer {
 public:
  std::string Draw(std::string_view form = "<command>") {
    std::string text;
    for (std::size_t at = 0; at < form.size(); ++at) {
      if (form[at] == '<' && form.find('>', at) != std::string_view::npos && form[at + 1] != ' ') {
        const std::size_t end = form.find('>', at);
        text += Draw(OneOf(form.substr(at + 1, end - at - 1)));
        at = end;
      } else if (form[at] == '#') {
        const std::size_t end = std::min(form.find_first_not_of("0123456789", at + 1), form.size());
        text += fmt::format("{}", Below(static_cast<unsigned>(LeadingNumber(form.substr(at + 1)))));
        at = end - 1;
      } else {
        text += form[at];
      }
    }
    return text;
  }

 private:
  unsigned Below(unsigned bound) { return std::uniform_int_distribution<unsigned>(0, bound - 1)(random_); }

  std::string OneOf(std::string_view name) {
    if (name == "operator") {
      return std::string(CompareOperators.at(Below(CompareOperators.size())).Text);
    }
    if (name == "arithmetic") {
      return std::string(ArithmeticWords.at(Below(ArithmeticWords.size())));
    }
    if (name == "menu") {
      return std::string(MenuWords.at(Below(MenuWords.size())).Shown);
    }
    if (name == "sub") {
      const SubInstruction& sub = SubInstructions.at(Below(SubInstructions.size()));
      return std::string(sub.Shown) + (sub.Read == word::Rsm ? "" : ", button=#37");
    }
    static const std::map<std::string_view, std::vector<std::string>> Forms{
        {"command",
         {"<core>", "<if><core>", "<if><system>", "<system>", "{ <set> ; <link> }", "{ <system> ; <link> }",
          "<set> ; <if><link>", "<if>{ <set> ; <link> }", "<if>{ <set> ; } <link>"}},
        {"if", {"If ( GPRM#16 <operator> <value> ) "}},
        {"value", {"GPRM#16", "SPRM#24", "<number>"}},
        {"number", {"#20", "#20", "#70000"}},
        {"source", {"GPRM#16", "<number>"}},
        {"set", {"<arithmetic> GPRM#16, <value>"}},
        {"link",
         {"<sub>", "<sub>", "LinkPGCN #1100", "LinkPTT #1100, button=#37", "LinkPGN #1100, button=#37",
          "LinkCN #1100, button=#37"}},
        {"core",
         {"GoTo #200", "SetTmpPML parental:#16 command:#129", "NOP", "Break", "Exit", "<link>", "<set>",
          "<jump>", "<jump>"}},
        {"jump",
         {"JumpTT #100", "JumpVTS_TT #100", "JumpVTS_PTT ptt_#1000 @ vts_ttn_#100", "JumpSS pgc_#40000",
          "JumpSS vts_#100, vts_ttn_#100 : <menu>", "CallSS RSM=#256,<menu>", "CallSS RSM=#256,, pgc_#40000",
          "JumpSS FP_DOM", "JumpSS TitleMenu", "CallSS FP_DOM", "CallSS RSM=1,TitleMenu"}},
        {"system",
         {"SetNVTMR NV_TMR=<source>, TT_PGCN=#1000", "SetGPRMMD RegisterModeGPRM#16=<source>",
          "SetGPRMMD CounterModeGPRM#16=<source>", "SetAMXMD GPRM#16",
          "SetAMXMD ACH0(4:<on>,3:<on>,2:<on>), ACH1(4:<on>,3:<on>,2:<on>)", "SetHL_BTNN HL_BTTN=<source>",
          "SetSTN <angle><audio><subpicture>", "SetSTN angle=GPRM#16, audio=GPRM#16, subpicture=GPRM#16"}},
        {"on", {"ON", "OFF"}},
        {"angle", {"", "angle=#10, "}},
        {"audio", {"", "audio=#17, ", "audio=16:None, "}},
        {"subpicture", {"", "subpicture=#33:<on>", "subpicture=63 Dummy:<on>"}},
    };
    const std::vector<std::string>& forms = Forms.at(name);
    return forms[Below(static_cast<unsigned>(forms.size()))];
  }

  std::mt19937 random_{20240517};  // NOLINT(cert-msc51-cpp): the same commands in every run
};

TEST(Roundtrip, EncodeOfDecodeIsTheSameBytes) {
  constexpr ResolveOptions Numeric{.Numbers = NumericTargets::First};
  Composer composer;
  for (int left = TrialCount(4000, 20000); left > 0; --left) {
    const std::string text = composer.Draw();
    const std::string hex = ResolveText(text, {}, nullptr, Numeric).Hex;
    const DecodedCommand decoded = DecodeCommand(hex);
    ASSERT_TRUE(decoded.Known) << text << " -> " << hex;
    ASSERT_EQ(ResolveText(decoded.Text, {}, nullptr, Numeric).Hex, hex) << text << " -> " << decoded.Text;
  }
}

// The decoder's word is final: what it says of any bytes leads back to them, whatever they are.
TEST(Roundtrip, AnyBytesAreSaidTrulyOrNotAtAll) {
  std::mt19937 random(7);  // NOLINT(cert-msc51-cpp)
  int known = 0;
  const int draws = TrialCount(20000, 200000);
  for (int left = draws; left > 0; --left) {
    CommandBytes bytes{};
    for (std::uint8_t& byte : bytes) {
      byte = static_cast<std::uint8_t>(random() % 4 == 0 ? random() % 256 : random() % 8);
    }
    bytes[0] = static_cast<std::uint8_t>(random() % 256);
    const DecodedCommand decoded = DecodeCommand(bytes);
    if (decoded.Known) {
      ++known;
      ASSERT_EQ(ResolveText(decoded.Text, {}, nullptr, {.Numbers = NumericTargets::First}).Hex,
                HexOfCommand(bytes));
    }
  }
  EXPECT_GT(known, draws / 200);
}

}  // namespace
}  // namespace quorvelant
