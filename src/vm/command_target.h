// Where a command leads, read from its eight bytes.
#pragma once

#include <cstdint>

#include "model/my_dvd.h"
#include "vm/encoder.h"
#include "vm/parsed_command.h"

namespace quorvelant {

// The codes of sub-instructions that are judged by themselves.
inline constexpr std::int32_t NoLinkCode = 0;
inline constexpr std::int32_t NextPgcCode = 10;
inline constexpr std::int32_t PrevPgcCode = 11;
inline constexpr std::int32_t GoUpPgcCode = 12;
inline constexpr std::int32_t ResumeCode = 16;

// `What` is `Link`, `Exit`, a jump or a call, and `None` where the bytes lead nowhere, whatever they set or
// compare. Numbers are those of the format, from 1; a field that has no meaning is 0.
struct CommandTarget {
  Instruction What = Instruction::None;
  LinkTarget Link;
  SystemSpace Space = SystemSpace::FirstPlay;  // JumpSS, CallSS
  std::int32_t TitleSet = 0;
  std::int32_t Title = 0;
  std::int32_t Part = 0;
  std::int32_t MenuId = 0;  // 2 title, 3 root, 4 subpicture, 5 audio, 6 angle, 7 part of title
  std::int32_t Pgc = 0;     // of the Video Manager
  std::int32_t ResumeCell = 0;
  std::int32_t TimerPgc = 0;  // SetNVTMR, which may go on to a link
  std::int32_t Line = 0;      // GoTo, SetTmpPML: of the list, which the command does not leave
  bool LeavesLine = false;    // GoTo, Break and Exit without a condition: the line after it is not reached

  [[nodiscard]] bool IsLink(LinkKind kind) const { return What == Instruction::Link && Link.Kind == kind; }
  [[nodiscard]] bool IsResume() const {
    return IsLink(LinkKind::SubInstruction) && Link.Number == ResumeCode;
  }
};

[[nodiscard]] CommandTarget TargetOf(const CommandBytes& bytes);
// Of a resolved command; one without digits leads nowhere.
[[nodiscard]] CommandTarget TargetOf(const VMICommand_P& command);

}  // namespace quorvelant
