// Random commands of every shape: what the encoder makes, the decoder says in words that make it again.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "vm/command_words.h"
#include "vm/decoder.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

class Composer {
 public:
  std::string Command() {
    switch (Below(9)) {
      case 0:
        return Core();
      case 1:
      case 2:
        return Compare(true) + Core();
      case 3:
      case 4:
        return fmt::format("{{ {} ; {} }}", Below(2) == 0 ? Set() : SystemSet(), Link());
      case 5:
        return fmt::format("{} ; {}{}", Set(), Compare(true), Link());
      case 6:
        return fmt::format("{}{{ {} ; {} }}", Compare(true), Set(), Link());
      case 7:
        return fmt::format("{}{{ {} ; }} {}", Compare(true), Set(), Link());
      default:
        return SystemSet();
    }
  }

 private:
  unsigned Below(unsigned bound) { return std::uniform_int_distribution<unsigned>(0, bound - 1)(random_); }
  std::string Gprm() { return fmt::format("GPRM{}", Below(16)); }
  std::string Number() { return fmt::format("{}", Below(3) == 0 ? Below(70000) : Below(20)); }
  std::string Button() { return fmt::format(", button={}", Below(37)); }
  std::string Value(bool number) {
    switch (Below(number ? 3 : 2)) {
      case 0:
        return Gprm();
      case 1:
        return fmt::format("SPRM{}", Below(24));
      default:
        return Number();
    }
  }
  std::string Compare(bool number) {
    return fmt::format("If ( {} {} {} ) ", Gprm(), CompareOperators.at(Below(7)).Text, Value(number));
  }
  std::string Set() { return fmt::format("{} {}, {}", ArithmeticWords.at(Below(11)), Gprm(), Value(true)); }
  std::string Link() {
    if (Below(2) == 0) {
      const SubInstruction& sub = SubInstructions.at(Below(SubInstructions.size()));
      return std::string(sub.Shown) + (sub.Read == word::Rsm ? "" : Button());
    }
    return fmt::format("{} {}{}", NamedLinks.at(Below(4)).Shown, Below(1100), Button());
  }
  std::string Streams() {
    const bool registers = Below(2) == 0;
    const auto value = [&](unsigned bound) { return registers ? Gprm() : fmt::format("{}", Below(bound)); };
    std::string text = "SetSTN ";
    if (Below(2) == 0) {
      text += fmt::format("angle={}, ", value(10));
    }
    if (Below(2) == 0) {
      text += Below(4) == 0 ? "audio=16:None, " : fmt::format("audio={}, ", value(17));
    }
    if (Below(2) == 0) {
      text += Below(4) == 0 ? "subpicture=63 Dummy" : fmt::format("subpicture={}", value(33));
      text += Below(2) == 0 ? ":ON" : ":OFF";
    }
    return text;
  }
  std::string SystemSet() {
    const auto on = [this] { return Below(2) == 0 ? "ON" : "OFF"; };
    switch (Below(6)) {
      case 0:
        return fmt::format("SetNVTMR NV_TMR={}, TT_PGCN={}", Below(2) == 0 ? Gprm() : Number(), Below(1000));
      case 1:
        return fmt::format("SetGPRMMD {}{}={}", Below(2) == 0 ? "RegisterMode" : "CounterMode", Gprm(),
                           Below(2) == 0 ? Gprm() : Number());
      case 2:
        return "SetAMXMD " + Gprm();
      case 3:
        return fmt::format("SetAMXMD ACH0(4:{},3:{},2:{}), ACH1(4:{},3:{},2:{})", on(), on(), on(), on(),
                           on(), on());
      case 4:
        return fmt::format("SetHL_BTNN HL_BTTN={}", Below(2) == 0 ? Gprm() : Number());
      default:
        return Streams();
    }
  }
  std::string Jump() {
    const std::string_view menu = MenuWords.at(Below(5)).Shown;
    switch (Below(9)) {
      case 0:
        return fmt::format("JumpTT {}", Below(100));
      case 1:
        return fmt::format("JumpVTS_TT {}", Below(100));
      case 2:
        return fmt::format("JumpVTS_PTT ptt_{} @ vts_ttn_{}", Below(1000), Below(100));
      case 3:
        return fmt::format("JumpSS vts_{}, vts_ttn_{} : {}", Below(100), Below(100), menu);
      case 4:
        return fmt::format("JumpSS pgc_{}", Below(40000));
      case 5:
        return fmt::format("CallSS RSM={},{}", Below(256), menu);
      case 6:
        return fmt::format("CallSS RSM={},, pgc_{}", Below(256), Below(40000));
      case 7:
        return Below(2) == 0 ? "JumpSS FP_DOM" : "JumpSS TitleMenu";
      default:
        return Below(2) == 0 ? "CallSS FP_DOM" : "CallSS RSM=1,TitleMenu";
    }
  }
  std::string Core() {
    switch (Below(6)) {
      case 0:
        return fmt::format("GoTo {}", Below(200));
      case 1:
        return fmt::format("SetTmpPML parental:{} command:{}", Below(16), Below(129));
      case 2:
        return std::array{"NOP", "Break", "Exit"}.at(Below(3));
      case 3:
        return Link();
      case 4:
        return Set();
      default:
        return Jump();
    }
  }

  std::mt19937 random_{20240517};  // NOLINT(cert-msc51-cpp): the same commands in every run
};

TEST(Roundtrip, EncodeOfDecodeIsTheSameBytes) {
  constexpr ResolveOptions Numeric{.Numbers = NumericTargets::First};
  Composer composer;
  for (int i = 0; i < 20000; ++i) {
    const std::string text = composer.Command();
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
  for (int i = 0; i < 200000; ++i) {
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
  EXPECT_GT(known, 1000);
}

}  // namespace
}  // namespace quorvelant
