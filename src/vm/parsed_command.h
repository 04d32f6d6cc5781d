// One navigation command, taken apart: what the parser reads, the resolver completes and the encoder writes.
#pragma once

#include <cstdint>
#include <string>

namespace quorvelant {

// A plain record. It starts zeroed, and a field that a command does not use stays so.
struct ParsedCommand {
  std::int32_t VtsNumber = 0;    // title set of a JumpSS to a set's menu
  std::int32_t TitleNumber = 0;  // title of a jump
  std::int32_t MenuId = 0;       // 3 root, 4 subpicture, 5 audio, 6 angle, 7 part of title
  std::int32_t PgcNumber = 0;
  std::int32_t PgNumber = 0;
  std::int32_t CellNumber = 0;
  std::int32_t ButtonBits = 0;  // button number times 4; SetHL_BTNN: the plain number or a register
  std::string CompareOp;        // "&", "==", "!=", ">=", ">", "<=", "<"
  bool HasCompare = false;
  bool HasLink = false;          // a link part stands behind the set
  std::int32_t CompareLeft = 0;  // GPRM
  bool RightIsGprm = false;
  bool RightIsSprm = false;
  bool RightIsNumber = false;
  std::int32_t RightGprm = 0;
  std::int32_t RightSprm = 0;
  std::int32_t RightNumber = 0;
  std::int32_t GotoLine = 0;         // of GoTo and SetTmpPML
  std::string Name;                  // command word in lower case, see `Word` in command_parser.h
  std::int32_t ResumeCell = 0;       // of CallSS, 0 for none
  std::int32_t ParentalLevel = 0;    // of SetTmpPML
  std::int32_t AudioValue = 0;       // SetSTN: stream number (from 1) plus 1, register plus 2; 0 unset
  std::int32_t SubpictureValue = 0;  // the same; 255 for the dummy stream 63
  std::int32_t AngleValue = 0;       // number or register plus 1; 0 unset
  bool SubpictureOn = false;
  bool StreamByGprm = false;     // SetSTN takes its numbers from registers
  std::int32_t FirstValue = 0;   // SetNVTMR: seconds or register; SetGPRMMD: the register set
  std::int32_t SecondValue = 0;  // SetGPRMMD: number or register
  bool ValueIsGprm = false;
  bool RegisterMode = false;
  bool ButtonByGprm = false;
  std::int32_t ChannelMix0 = 0;  // SetAMXMD: 16, 8 and 4 for the three switches of channel 0
  std::int32_t ChannelMix1 = 0;  // the same of channel 1, or the register
  std::int32_t LinkSubCode = 0;  // link part: sub-code, then the command's last two bytes
  std::int32_t LinkButton = 0;
  std::int32_t LinkTarget = 0;
  std::int32_t SetSource = 0;  // register arithmetic
  std::int32_t SetDest = 0;
  bool SourceIsGprm = false;
  bool SourceIsSprm = false;
  bool SourceIsNumber = false;
  std::int32_t SetOp = 0;  // 1 mov, 2 swp, ... 11 xor
  bool operator==(const ParsedCommand&) const = default;
};

}  // namespace quorvelant
