#include "vm/command_parser.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "vm/command_types.h"
#include "vm/command_words.h"
#include "vm/core_command.h"

namespace quorvelant {

namespace {

constexpr std::size_t None = std::string_view::npos;

// `text` before and after the first `mark`; all of it and nothing where there is none.
std::pair<std::string_view, std::string_view> Cut(std::string_view text, char mark) {
  const std::size_t at = text.find(mark);
  return {text.substr(0, at), at == None ? text.substr(text.size()) : text.substr(at + 1)};
}

// Reads the comparison up to the first ")" and gives what stands after it, trimmed.
std::string_view ReadComparison(ParsedCommand& command, std::string_view text) {
  const auto [head, rest] = Cut(text, ')');
  std::string sides = Replace(head, "if", {});
  std::erase_if(sides, [](char c) { return c == '(' || c == '}' || c == ' '; });
  Comparison& compare = command.Compare.emplace();
  const auto* const op =
      std::find_if(CompareOperators.begin(), CompareOperators.end(),
                   [&sides](const CompareOperator& known) { return Contains(sides, known.Text); });
  if (op != CompareOperators.end()) {
    const std::vector<std::string_view> pieces = Split(sides, op->Text);
    compare = {op->Operation, NumberWithout(pieces[0], "gprm"), ReadOperand(pieces[1])};
  }
  return Trim(rest);
}

// Reads the link after a set: a sub-instruction or a named link. Anything else marks the form.
void ReadLinkPart(CommandForm& form, std::string_view whole, std::string_view link) {
  ButtonText parts = TakeButton(link);
  std::erase(parts.Rest, '}');
  if (Contains(link, "button")) {
    std::erase(parts.Rest, ',');
  }
  const std::string_view text = Trim(parts.Rest);
  LinkTarget& target = form.Command.LinkAfterSet.emplace();
  target.Button = parts.Number;
  const auto* const sub = std::find_if(SubInstructions.begin(), SubInstructions.end(),
                                       [text](const SubInstruction& known) { return known.Read == text; });
  if (sub != SubInstructions.end()) {
    target.Kind = LinkKind::SubInstruction;
    target.Number = sub->Code;
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
  target.Kind = named->Kind;
  const auto begin = static_cast<std::size_t>(link.data() - whole.data());
  const std::string_view name = text.substr(text.find(named->Name) + named->Name.size());
  const std::size_t last = link.substr(0, parts.NameEnd).find_last_not_of(" ,}");
  const std::size_t end = last == None ? 0 : last + 1;
  form.Link = CommandReference{TargetOf(named->Kind), std::string(Trim(name)),
                               begin + std::min(link.find(named->Name), end), begin + end};
}

// Set, comparison and link in one: `text` is the lowered text with round brackets for braces, `compact`
// the same without blanks.
void ReadCompound(CommandForm& form, std::string_view text, std::string_view compact) {
  ParsedCommand& command = form.Command;
  std::string_view set;
  std::string_view link;
  if (!compact.starts_with("if(")) {
    command.What = Instruction::SetCompareLink;
    std::tie(set, link) = Cut(text, ';');
    link = ReadComparison(command, link);
  } else if (compact.ends_with(')')) {
    command.What = Instruction::CompareSetAndLink;
    std::tie(set, link) = Cut(text, ';');
    set = ReadComparison(command, set);
  } else {
    command.What = Instruction::CompareSetThenLink;
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
    // The shape test looks for "if(" as it was written, before the exchange of brackets.
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
  auto [core, rest] = Cut(text, ';');
  core.remove_prefix(std::min(core.find_first_not_of(" {"), core.size()));
  ReadCoreCommand(form, text, core);
  ReadLinkPart(form, text, Cut(rest, ';').first);
}

bool BeyondRegisters(std::int32_t number, std::int32_t count) {
  return number < 0 || number >= count;
}

constexpr std::int32_t GeneralRegisters = 16;
constexpr std::int32_t SystemRegisters = 24;

bool BeyondRegisters(const Operand& operand) {
  return (operand.Is(OperandKind::Gprm) && BeyondRegisters(operand.Number, GeneralRegisters)) ||
         (operand.Is(OperandKind::Sprm) && BeyondRegisters(operand.Number, SystemRegisters));
}

// Players find a register in the byte of every stream that is set, also in that of a number among registers.
// The code just below the first, of number -1, says that the stream is left alone.
bool BeyondRegisters(const Operand& stream, std::int32_t firstCode) {
  const std::int32_t code = StreamCode(stream, firstCode);
  return !stream.Is(OperandKind::None) && code != firstCode - 1 &&
         BeyondRegisters(code - FirstRegisterCode, GeneralRegisters);
}

bool BeyondRegisters(const ParsedCommand& c) {
  return (c.Compare &&
          (BeyondRegisters(c.Compare->LeftGprm, GeneralRegisters) || BeyondRegisters(c.Compare->Right))) ||
         BeyondRegisters(c.Destination, GeneralRegisters) || BeyondRegisters(c.Source) ||
         (c.StreamsByRegister &&
          (BeyondRegisters(c.Audio, FirstAudioCode) || BeyondRegisters(c.Subpicture, FirstSubpictureCode) ||
           BeyondRegisters(c.Angle, FirstAngleCode)));
}

// --- what the bytes do not hold ---

constexpr std::int32_t MostWord = 65535;
constexpr std::int32_t MostByte = 255;
constexpr std::int32_t MostButton = 63;

bool Beyond(std::int32_t number, std::int32_t most) {
  return number < 0 || number > most;
}
bool Beyond(const Operand& operand, std::int32_t most) {
  return operand.Is(OperandKind::Number) && Beyond(operand.Number, most);
}

// A register may hold what a negative number comes to, and arithmetic counts on that.
bool BeyondWord(const Operand& operand) {
  return operand.Is(OperandKind::Number) && (operand.Number < -MostWord / 2 || operand.Number > MostWord);
}

bool IsJump(const ParsedCommand& c) {
  return c.What >= Instruction::Exit && c.What <= Instruction::CallSs;
}

bool NumberIsLost(const ParsedCommand& c) {
  constexpr std::int32_t MostLine = 128;
  constexpr std::int32_t MostLevel = 15;
  if (c.Compare && (IsJump(c) ? Beyond(c.Compare->Right, MostByte) : BeyondWord(c.Compare->Right))) {
    return true;
  }
  if (Beyond(c.Link.Button, MostButton) || (c.LinkAfterSet && Beyond(c.LinkAfterSet->Button, MostButton))) {
    return true;
  }
  switch (c.What) {
    case Instruction::GoTo:
      return c.Line < 1 || c.Line > MostLine;
    case Instruction::SetTmpPml:
      return Beyond(c.Line, MostLine) || Beyond(c.ParentalLevel, MostLevel);
    case Instruction::SetHlBtnn:
      return Beyond(c.Source, MostButton);
    case Instruction::JumpSs:
      return Beyond(c.TitleSet, MostByte) || Beyond(c.Title, MostByte);
    default:
      return BeyondWord(c.Source);
  }
}

// By number -1 a stream is left alone.
bool BeyondDisc(const Operand& stream, NumberRange range) {
  return stream.Is(OperandKind::Number) && stream.Number != -1 &&
         (stream.Number < range.Least || stream.Number > range.Most);
}

bool StreamIsLost(const ParsedCommand& c) {
  constexpr Operand Dummy{OperandKind::Number, DummySubpicture};
  return c.What == Instruction::SetStn && !c.StreamsByRegister &&
         ((c.Audio != NoAudio && BeyondDisc(c.Audio, range::Audio)) ||
          (c.Subpicture != Dummy && BeyondDisc(c.Subpicture, range::Subpicture)) ||
          BeyondDisc(c.Angle, range::Angle));
}

// The text of the first comparison's left side, as far as it goes.
bool LeftIsNoRegister(std::string_view lowered) {
  const std::size_t open = lowered.find("if");
  const std::size_t bracket = open == None ? None : lowered.find('(', open);
  if (bracket == None) {
    return false;
  }
  const std::string_view left = Trim(lowered.substr(bracket + 1));
  return !left.starts_with("gprm") && !left.starts_with("(");
}

bool SetsNothing(const ParsedCommand& c) {
  return c.What == Instruction::SetStn && c.Audio.Is(OperandKind::None) &&
         c.Subpicture.Is(OperandKind::None) && c.Angle.Is(OperandKind::None);
}

bool CarriesLink(const ParsedCommand& c) {
  return c.What >= Instruction::SetStn;
}

TextFault LossesOf(const CommandForm& form) {
  const ParsedCommand& c = form.Command;
  TextFault faults = TextFault::None;
  if (NumberIsLost(c)) {
    faults |= TextFault::NumberBeyondField;
  }
  if (StreamIsLost(c)) {
    faults |= TextFault::StreamBeyondDisc;
  }
  if (c.Compare && LeftIsNoRegister(form.Lowered)) {
    faults |= TextFault::LeftNoRegister;
  }
  if (SetsNothing(c)) {
    faults |= TextFault::NothingSet;
  }
  if (c.LinkAfterSet && !CarriesLink(c)) {
    faults |= TextFault::LinkLost;
  }
  return faults;
}

TextFault FaultsOf(const CommandForm& form) {
  const ParsedCommand& c = form.Command;
  TextFault faults = form.Faults;
  if (c.What == Instruction::None) {
    return TextFault::UnknownText;
  }
  if (c.Compare && c.Compare->Operation == CompareOperation::None) {
    faults |= TextFault::NoOperator;
  } else if (c.Compare && c.Compare->Right.Is(OperandKind::Number) && ComparesRegistersOnly(c)) {
    faults |= TextFault::NumberNotComparable;
  }
  if (IsCompound(c)) {
    if (form.Link) {
      faults |= TextFault::LinkNotCarried;
    }
    if (c.What == Instruction::SetCompareLink && c.Operation != Arithmetic::None &&
        c.Compare->LeftGprm != c.Destination) {
      faults |= TextFault::LeftNotTheSetRegister;
    }
  }
  if (BeyondRegisters(c)) {
    faults |= TextFault::RegisterBeyondRange;
  }
  return faults | LossesOf(form);
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
