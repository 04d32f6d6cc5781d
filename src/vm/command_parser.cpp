#include "vm/command_parser.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "vm/command_words.h"
#include "vm/core_command.h"

namespace quorvelant {

namespace {

constexpr std::size_t None = std::string_view::npos;

// `text` ahead of and behind the first `mark`; all of it and nothing where there is none.
std::pair<std::string_view, std::string_view> Cut(std::string_view text, char mark) {
  const std::size_t at = text.find(mark);
  return {text.substr(0, at), at == None ? text.substr(text.size()) : text.substr(at + 1)};
}

// The kind of the right side decides where its number goes.
void ReadRightSide(ParsedCommand& command, std::string_view text) {
  command.RightIsGprm = Contains(text, "gprm");
  command.RightIsSprm = !command.RightIsGprm && Contains(text, "sprm");
  command.RightIsNumber = !command.RightIsGprm && !command.RightIsSprm;
  if (command.RightIsGprm) {
    command.RightGprm = NumberWithout(text, "gprm");
  } else if (command.RightIsSprm) {
    command.RightSprm = NumberWithout(text, "sprm");
  } else {
    command.RightNumber = LeadingNumber(text);
  }
}

// Reads the comparison up to the first ")" and gives what stands behind it, trimmed.
std::string_view ReadComparison(ParsedCommand& command, std::string_view text) {
  const auto [head, rest] = Cut(text, ')');
  std::string sides = Replace(head, "if", {});
  std::erase_if(sides, [](char c) { return c == '(' || c == '}' || c == ' '; });
  command.HasCompare = true;
  const auto* const op =
      std::find_if(CompareOperators.begin(), CompareOperators.end(),
                   [&sides](const CompareOperator& known) { return Contains(sides, known.Text); });
  if (op != CompareOperators.end()) {
    const std::vector<std::string_view> pieces = Split(sides, op->Text);
    command.CompareOp = op->Text;
    command.CompareLeft = NumberWithout(pieces[0], "gprm");
    ReadRightSide(command, pieces[1]);
  }
  return Trim(rest);
}

TargetKind KindOfLink(std::string_view word) {
  if (word == word::LinkPgcn) {
    return TargetKind::LinkPgc;
  }
  if (word == word::LinkPtt) {
    return TargetKind::LinkPart;
  }
  return word == word::LinkPgn ? TargetKind::LinkProgram : TargetKind::LinkCell;
}

// Reads the link behind a set: a sub-instruction or a named link. Anything else marks the form.
void ReadLinkPart(CommandForm& form, std::string_view whole, std::string_view link) {
  ButtonText parts = TakeButton(link);
  std::erase(parts.Rest, '}');
  if (Contains(link, "button")) {
    std::erase(parts.Rest, ',');
  }
  const std::string_view text = Trim(parts.Rest);
  ParsedCommand& command = form.Command;
  command.HasLink = true;
  command.LinkButton = parts.Bits;
  const auto* const sub = std::find_if(SubInstructions.begin(), SubInstructions.end(),
                                       [text](const SubInstruction& known) { return known.Read == text; });
  if (sub != SubInstructions.end()) {
    command.LinkSubCode = 1;
    command.LinkTarget = sub->Code;
    return;
  }
  const auto* const named =
      std::find_if(NamedLinks.begin(), NamedLinks.end(),
                   [text](const NamedLink& known) { return Contains(text, known.Name); });
  if (named == NamedLinks.end()) {
    form.Faults |= TextFault::UnknownLink;
    return;
  }
  const bool meant = std::none_of(NamedLinks.begin(), NamedLinks.end(), [&](const NamedLink& other) {
    return other.Name != named->Name && text.starts_with(other.Name);
  });
  if (!meant) {
    form.Faults |= TextFault::NameTakenForWord;
  }
  command.LinkSubCode = named->SubCode;
  const auto begin = static_cast<std::size_t>(link.data() - whole.data());
  const std::string_view name = text.substr(text.find(named->Name) + named->Name.size());
  const std::size_t last = link.substr(0, parts.NameEnd).find_last_not_of(" ,}");
  const std::size_t end = last == None ? 0 : last + 1;
  form.Link = CommandReference{KindOfLink(named->Name), std::string(Trim(name)),
                               begin + std::min(link.find(named->Name), end), begin + end};
}

// Set, comparison and link in one: `text` is the lowered text with round brackets for braces, `compact`
// the same without blanks.
void ReadCompound(CommandForm& form, std::string_view text, std::string_view compact) {
  ParsedCommand& command = form.Command;
  std::string_view set;
  std::string_view link;
  if (!compact.starts_with("if(")) {
    command.Name = word::Type3v1;
    std::tie(set, link) = Cut(text, ';');
    link = ReadComparison(command, link);
  } else if (compact.ends_with(')')) {
    command.Name = word::Type3v2;
    std::tie(set, link) = Cut(text, ';');
    set = ReadComparison(command, set);
  } else {
    command.Name = word::Type3v3;
    std::tie(set, link) = Cut(ReadComparison(command, text), ')');
  }
  const std::size_t first = set.find_first_not_of(" (");
  if (!ReadArithmetic(command, first == None ? std::string_view() : set.substr(first))) {
    form.Faults |= TextFault::NoSetInCompound;
  }
  link = Trim(link);
  if (link.ends_with(')') &&
      std::count(link.begin(), link.end(), ')') > std::count(link.begin(), link.end(), '(')) {
    link = Trim(link.substr(0, link.size() - 1));
  }
  ReadLinkPart(form, text, link);
}

// Chooses the shape of the text by what it holds.
void ReadShapes(CommandForm& form) {
  const std::string_view text = form.Lowered;
  const bool pieces = Contains(text, ";");
  if (pieces) {
    std::string brackets = form.Lowered;
    std::replace(brackets.begin(), brackets.end(), '{', '(');
    std::replace(brackets.begin(), brackets.end(), '}', ')');
    // The shape test looks for "if(" as it was written, ahead of the exchange of brackets.
    if (Contains(NameKey(text), "if(")) {
      ReadCompound(form, brackets, NameKey(brackets));
      return;
    }
  }
  if (text.starts_with("if")) {
    ReadCoreCommand(form, text, ReadComparison(form.Command, text));
    return;
  }
  if (!pieces) {
    ReadCoreCommand(form, text, text);
    return;
  }
  auto [core, behind] = Cut(text, ';');
  core.remove_prefix(std::min(core.find_first_not_of(" {"), core.size()));
  ReadCoreCommand(form, text, core);
  ReadLinkPart(form, text, Cut(behind, ';').first);
}

bool IsCompound(const ParsedCommand& c) {
  return c.Name == word::Type3v1 || c.Name == word::Type3v2 || c.Name == word::Type3v3;
}

// Jumps, calls and system sets compare with registers only, and so do the later compounds with a number
// as their source.
bool ComparesRegistersOnly(const ParsedCommand& c) {
  constexpr std::array RegisterWords{
      word::Exit,     word::JumpTt,          word::JumpVtsTt,  word::JumpVtsPtt,
      word::JumpSsFp, word::JumpSsTitleMenu, word::JumpSs,     word::JumpSsVmgm,
      word::CallSsFp, word::CallSsTitleMenu, word::CallSsVtsm, word::CallSsVmgm,
      word::SetStn,   word::SetNvtmr,        word::SetGprmMd,  word::SetAmxmd,
      word::SetHlBtnn};
  if (c.Name == word::Type3v2 || c.Name == word::Type3v3) {
    return c.SourceIsNumber;
  }
  return std::find(RegisterWords.begin(), RegisterWords.end(), c.Name) != RegisterWords.end();
}

bool BeyondRegisters(const ParsedCommand& c) {
  constexpr std::int32_t GeneralRegisters = 16;
  constexpr std::int32_t SystemRegisters = 24;
  const auto beyond = [](bool used, std::int32_t number, std::int32_t count) {
    return used && (number < 0 || number >= count);
  };
  const bool sets = c.SetOp != 0;
  const bool mode = c.Name == word::SetGprmMd;
  return beyond(c.HasCompare, c.CompareLeft, GeneralRegisters) ||
         beyond(c.RightIsGprm, c.RightGprm, GeneralRegisters) ||
         beyond(c.RightIsSprm, c.RightSprm, SystemRegisters) || beyond(sets, c.SetDest, GeneralRegisters) ||
         beyond(sets && c.SourceIsGprm, c.SetSource, GeneralRegisters) ||
         beyond(sets && c.SourceIsSprm, c.SetSource, SystemRegisters) ||
         beyond(mode || (c.Name == word::SetNvtmr && c.ValueIsGprm), c.FirstValue, GeneralRegisters) ||
         beyond(mode && c.ValueIsGprm, c.SecondValue, GeneralRegisters) ||
         beyond(c.Name == word::SetAmxmd && c.ValueIsGprm, c.ChannelMix1, GeneralRegisters) ||
         beyond(c.ButtonByGprm, c.ButtonBits, GeneralRegisters) ||
         beyond(c.StreamByGprm && c.AudioValue != 0, c.AudioValue - 2, GeneralRegisters) ||
         beyond(c.StreamByGprm && c.SubpictureValue != 0, c.SubpictureValue - 2, GeneralRegisters) ||
         beyond(c.StreamByGprm && c.AngleValue != 0, c.AngleValue - 1, GeneralRegisters);
}

TextFault FaultsOf(const CommandForm& form) {
  const ParsedCommand& c = form.Command;
  TextFault faults = form.Faults;
  if (c.Name.empty()) {
    return TextFault::UnknownText;
  }
  if (c.HasCompare && c.CompareOp.empty()) {
    faults |= TextFault::NoOperator;
  } else if (c.HasCompare && c.RightIsNumber && ComparesRegistersOnly(c)) {
    faults |= TextFault::NumberNotComparable;
  }
  if (IsCompound(c)) {
    if (form.Link) {
      faults |= TextFault::LinkNotCarried;
    }
    if (c.Name == word::Type3v1 && c.SetOp != 0 && c.CompareLeft != c.SetDest) {
      faults |= TextFault::LeftNotTheSetRegister;
    }
  }
  if (BeyondRegisters(c)) {
    faults |= TextFault::RegisterBeyondRange;
  }
  return faults;
}

}  // namespace

CommandForm ParseCommand(std::string_view text) {
  CommandForm form;
  form.Lowered = Lower(Trim(text));
  if (!form.Lowered.empty()) {
    ReadShapes(form);
    form.Faults = FaultsOf(form);
  }
  return form;
}

}  // namespace quorvelant
