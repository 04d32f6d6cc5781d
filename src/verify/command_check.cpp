#include "verify/command_check.h"

#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <utility>

namespace quorvelant {
namespace {

constexpr std::size_t CommandSize = 8;
using Fault = std::optional<CommandFault>;

// Bits that a command of its kind may set.
constexpr std::uint8_t ButtonBits = 0xFC;  // a number of 6 bits
constexpr std::uint8_t SubLinkBits = 0x1F;
constexpr std::uint8_t TitleBits = 0x7F;
constexpr std::uint8_t RegisterBits = 0x0F;     // a general register
constexpr std::uint8_t AnyRegisterBits = 0x9F;  // a system register, too
constexpr std::uint8_t All = 0xFF;

class CommandBits {
 public:
  explicit CommandBits(const CommandBytes& command) : bytes_(command) {
    Allow(0, All);
    Allow(1, All);
  }

  Fault Check() {
    switch (bytes_[0] >> 5U) {
      case 0:
        CheckFlow();
        break;
      case 1:
        IsByNumber() ? CheckJump() : CheckLinkAlone();
        break;
      case 2:
        CheckSystem();
        break;
      case 3:
        CheckGeneral();
        break;
      case 4:
      case 5:
      case 6:
        CheckCompound();
        break;
      default:
        Illegal(0, "a type from 0 to 6", 7);
    }
    return fault_ ? fault_ : Reserved();
  }

 private:
  [[nodiscard]] bool IsByNumber() const { return (bytes_[0] & 0x10U) != 0; }
  [[nodiscard]] unsigned Operation() const { return bytes_[0] & 0x0FU; }
  [[nodiscard]] bool ComparesNumber() const { return (bytes_[1] & 0x80U) != 0; }
  [[nodiscard]] bool Compares() const { return (bytes_[1] & 0x70U) != 0; }
  [[nodiscard]] unsigned Branch() const { return bytes_[1] & 0x0FU; }

  void Allow(std::size_t at, unsigned bits) { allowed_.at(at) |= static_cast<std::uint8_t>(bits); }
  void AllowWord(std::size_t at, unsigned bits) {
    Allow(at, bits >> 8U);
    Allow(at + 1, bits & 0xFFU);
  }
  void Illegal(std::size_t at, std::string expected, unsigned seen) {
    fault_ = fault_ ? fault_
                    : CommandFault{.IsIllegal = true,
                                   .Byte = at,
                                   .Expected = std::move(expected),
                                   .Seen = fmt::format("{}", seen)};
  }

  // General registers are 0 to 15, system registers 128 to 151.
  void AllowRegister(std::size_t at) {
    constexpr unsigned SystemBit = 0x80;
    constexpr unsigned SystemRegisters = 24;
    const unsigned code = bytes_.at(at);
    const unsigned number = code & 0x7FU;
    if (number >= ((code & SystemBit) != 0 ? SystemRegisters : 16U)) {
      Illegal(at, "a register", code);
    }
    Allow(at, AnyRegisterBits);
  }
  void AllowOperand(std::size_t at) { ComparesNumber() ? AllowWord(at, 0xFFFF) : AllowRegister(at + 1); }

  void CheckFlow() {
    if (bytes_[0] != 0 || Branch() > 3) {
      Illegal(bytes_[0] != 0 ? 0 : 1, "NOP, GoTo, Break or SetTmpPML", bytes_[0] != 0 ? bytes_[0] : Branch());
    }
    CompareEarly();
    Allow(6, Branch() == 3 ? RegisterBits : 0U);
    Allow(7, Branch() == 1 || Branch() == 3 ? All : 0U);
  }

  void CompareEarly() {
    if (Compares()) {
      AllowRegister(3);
      AllowOperand(4);
    }
  }

  void CheckLinkAlone() {
    if (Operation() != 0) {
      Illegal(0, "no set", Operation());
    }
    CompareEarly();
    CheckLink();
  }

  void CheckLink() {
    switch (Branch()) {
      case 0:
        return;
      case 1:
        return CheckSubLink();
      case 4:
        return AllowWord(6, 0x7FFF);
      case 5:
        return AllowWord(6, 0xFFFF);
      case 6:
        return AllowWord(6, ButtonBits << 8U | 0x7FU);
      case 7:
        return AllowWord(6, ButtonBits << 8U | 0xFFU);
      default:
        Illegal(1, "a link", Branch());
    }
  }

  void CheckSubLink() {
    const unsigned link = bytes_[7] & SubLinkBits;
    constexpr std::uint32_t Known = 0x13EEF;  // none, cells, programs, chains, tail and resume
    if ((Known >> link & 1U) == 0) {
      Illegal(7, "a link", link);
    }
    Allow(6, ButtonBits);
    Allow(7, SubLinkBits);
  }

  // Compares registers of its last bytes.
  void CheckJump() {
    if (Operation() != 0) {
      Illegal(0, "no set", Operation());
    }
    if (Compares()) {
      AllowRegister(6);
      AllowRegister(7);
    }
    switch (Branch()) {
      case 1:
        return;
      case 2:
      case 3:
        return Allow(5, TitleBits);
      case 5:
        AllowWord(2, 0x3FF);
        return Allow(5, TitleBits);
      case 6:
      case 8:
        return CheckDomain(Branch() == 8);
      default:
        Illegal(1, "Exit, a jump or a call", Branch());
    }
  }

  void CheckDomain(bool isCall) {
    constexpr unsigned DomainBits = 0xC0;
    const unsigned domain = bytes_[5] >> 6U;
    const unsigned menu = bytes_[5] & 0x0FU;
    Allow(5, DomainBits);
    Allow(4, isCall ? All : 0U);
    if (domain == 1 || domain == 2) {
      Allow(5, 0x0F);
      const bool isThere = domain == 1 ? menu == 2 : menu >= 3 && menu <= 7;
      if (!isThere) {
        Illegal(5, domain == 1 ? "menu 2" : "a menu from 3 to 7", menu);
      }
    }
    if (domain == 2 && !isCall) {
      Allow(3, TitleBits);
      Allow(4, TitleBits);
    }
    if (domain == 3) {
      AllowWord(2, 0x7FFF);
    }
  }

  void CheckSystem() {
    constexpr std::uint32_t Known = 0x5E;  // SetSTN, SetNVTMR, SetGPRMMD, SetAMXMD, SetHL_BTNN
    if ((Known >> Operation() & 1U) == 0) {
      Illegal(0, "a setting of the player", Operation());
    }
    switch (Operation()) {
      case 1:
        AllowWord(3, 0xFFFF);
        Allow(5, All);
        break;
      case 2:
        AllowValue(2);
        AllowWord(4, 0x7FFF);
        break;
      case 3:
        AllowValue(2);
        Allow(5, 0x80U | RegisterBits);
        break;
      case 4:
        AllowValue(2);
        AllowWord(4, 0xFFFF);
        break;
      default:
        IsByNumber() ? AllowWord(4, 0xFC00) : Allow(5, RegisterBits);
    }
    if (Compares()) {
      AllowRegister(6);
      AllowRegister(7);
    } else {
      CheckLink();
    }
  }

  // A number of two bytes, or a general register in the second.
  void AllowValue(std::size_t at) { IsByNumber() ? AllowWord(at, 0xFFFF) : Allow(at + 1, RegisterBits); }

  void CheckOperation() {
    constexpr unsigned LastOperation = 11;  // xor
    if (Operation() > LastOperation) {
      Illegal(0, "an operation from mov to xor", Operation());
    }
  }

  void CheckGeneral() {
    CheckOperation();
    Allow(3, RegisterBits);
    IsByNumber() ? AllowWord(4, 0xFFFF) : AllowRegister(5);
    if (Compares()) {
      AllowRegister(2);
      AllowOperand(6);
    } else {
      CheckLink();
    }
  }

  // A set, a comparison and a link in one, in three orders.
  void CheckCompound() {
    CheckOperation();
    const bool setsFirst = bytes_[0] >> 5U == 4;
    if (IsByNumber()) {
      AllowWord(2, 0xFFFF);
    } else {
      AllowRegister(setsFirst ? 3 : 2);
    }
    if (Compares() && setsFirst) {
      AllowOperand(4);
    } else if (Compares() && IsByNumber()) {
      AllowRegister(4);
      AllowRegister(5);
    } else if (Compares()) {
      AllowRegister(3);
      AllowOperand(4);
    }
    CheckSubLink();
  }

  [[nodiscard]] Fault Reserved() const {
    for (std::size_t i = 0; i < CommandSize; ++i) {
      const unsigned beyond = bytes_.at(i) & ~unsigned{allowed_.at(i)};
      if (beyond != 0) {
        return CommandFault{.IsIllegal = false,
                            .Byte = i,
                            .Expected = "reserved bits clear",
                            .Seen = fmt::format("0x{:02X}", bytes_.at(i))};
      }
    }
    return std::nullopt;
  }

  const CommandBytes& bytes_;
  std::array<std::uint8_t, CommandSize> allowed_{};
  Fault fault_;
};

}  // namespace

std::optional<CommandFault> FaultOf(const CommandBytes& command) {
  return CommandBits(command).Check();
}

}  // namespace quorvelant
