#include "vm/core_command.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/text.h"
#include "vm/command_words.h"

namespace quorvelant {

namespace {

constexpr std::string_view Gprm = "gprm";
constexpr std::string_view Sprm = "sprm";

std::string Without(std::string_view text, std::string_view part) {
  return Replace(text, part, {});
}

struct WordRow;

// What a word's reader works on.
struct CoreText {
  CommandForm& Form;
  std::string_view Text;   // the core, trimmed, without its button
  std::size_t WordAt = 0;  // place of the word in the whole; `End` where it stood nowhere
  std::size_t End = 0;     // end of the last name in the whole
  std::string_view Word;

  ParsedCommand& Command() const { return Form.Command; }
  std::string_view After() const { return Trim(Text.substr(Text.find(Word) + Word.size())); }
  std::string Removed() const { return std::string(Trim(Without(Text, Word))); }
  void Refer(TargetKind kind, std::string_view name) const {
    Form.Target = CommandReference{kind, std::string(Trim(name)), WordAt, End};
  }
};

enum class Test { Holds, Equals };

struct WordRow {
  Test How;
  std::string_view Word;
  Instruction What;
  void (*Read)(const CoreText&);
};

void ReadPlain(const CoreText&) {}

void ReadGoTo(const CoreText& t) {
  t.Command().Line = LeadingNumber(NameKey(t.After()));
}

void ReadSubInstruction(const CoreText& t) {
  const auto* const sub = std::find_if(SubInstructions.begin(), SubInstructions.end(),
                                       [&t](const SubInstruction& known) { return known.Read == t.Word; });
  t.Command().Link.Kind = LinkKind::SubInstruction;
  t.Command().Link.Number = sub->Code;
}

template <TargetKind Kind>
void ReadNamed(const CoreText& t) {
  t.Refer(Kind, t.After());
}

template <LinkKind Kind>
void ReadLink(const CoreText& t) {
  t.Command().Link.Kind = Kind;
  t.Refer(TargetOf(Kind), t.After());
}

void ReadJumpToTitleMenu(const CoreText& t) {
  t.Command().Space = SystemSpace::TitleMenu;
}

void ReadJumpToFirstPlay(const CoreText& t) {
  t.Command().Space = SystemSpace::FirstPlay;
  if (t.Text != word::JumpSsFp && t.Text != "jumpss fp_dom") {
    t.Form.Faults |= TextFault::NameTakenForWord;
  }
}

std::int32_t MenuIdOf(std::string_view name) {
  const auto* const menu = std::find_if(MenuWords.begin(), MenuWords.end(),
                                        [name](const MenuWord& known) { return known.Read == name; });
  return menu == MenuWords.end() ? 0 : FirstMenuId + static_cast<std::int32_t>(menu - MenuWords.begin());
}

void ReadJumpSs(const CoreText& t) {
  const std::string removed = t.Removed();
  const std::vector<std::string_view> parts = Split(removed, ":");
  std::string rest(parts[0]);
  if (parts.size() > 1) {
    t.Command().MenuId = MenuIdOf(Trim(parts[1]));
    for (std::size_t i = 2; i < parts.size(); ++i) {
      rest.append(parts[i]);
    }
  }
  if (Contains(rest, "vts_ttn_")) {
    const std::vector<std::string_view> pieces = Split(rest, ",");
    t.Command().Space = SystemSpace::SetMenu;
    t.Command().TitleSet = NumberWithout(pieces[0], "vts_");
    t.Command().Title = pieces.size() > 1 ? NumberWithout(pieces[1], "vts_ttn_") : 0;
    if (t.Command().MenuId == 0) {
      t.Form.Faults |= TextFault::UnknownMenu;
    }
    return;
  }
  t.Command().Space = SystemSpace::VmgPgc;
  t.Refer(TargetKind::VmgPgc, rest);
  t.Form.Target->Begin = std::min(t.WordAt + t.Word.size(), t.End);
}

// The word of a call's target that the text holds, empty for a PGC of the Video Manager.
std::string_view CallTargetWord(ParsedCommand& command, std::string_view text) {
  constexpr std::string_view FirstPlay = "fp_dom";
  constexpr std::string_view TitleMenu = "titlemenu";
  if (Contains(text, FirstPlay)) {
    command.Space = SystemSpace::FirstPlay;
    return FirstPlay;
  }
  if (Contains(text, TitleMenu)) {
    command.Space = SystemSpace::TitleMenu;
    return TitleMenu;
  }
  for (const std::string_view menu : {"rootmenu", "audiomenu", "anglemenu", "ptt_menu", "sub-picturemenu"}) {
    if (Contains(text, menu)) {
      command.Space = SystemSpace::SetMenu;
      command.MenuId = MenuIdOf(menu);
      return menu;
    }
  }
  command.Space = SystemSpace::VmgPgc;
  return {};
}

void ReadCallSs(const CoreText& t) {
  constexpr std::string_view ResumeWord = "rsm=";
  const std::string text = t.Removed();
  std::vector<std::string_view> pieces = Split(text, ",");
  const std::string_view target = CallTargetWord(t.Command(), text);
  const bool resume =
      Contains(pieces[0], ResumeWord) || (pieces.size() > 1 && (target.empty() || Trim(pieces[0]) != target));
  if (resume) {
    const std::string cell = Without(pieces[0], ResumeWord);
    if (!Trim(cell).empty()) {
      t.Form.Resume = CommandReference{TargetKind::ResumeCell, std::string(Trim(cell)), 0, 0};
    }
    pieces.erase(pieces.begin());
  }
  if (target.empty()) {
    const auto name = std::find_if(pieces.begin(), pieces.end(),
                                   [](std::string_view piece) { return !Trim(piece).empty(); });
    t.Refer(TargetKind::VmgPgc, name == pieces.end() ? std::string_view() : *name);
    t.Form.Target->Begin = t.Form.Target->End = 0;
  } else if (std::none_of(pieces.begin(), pieces.end(),
                          [target](std::string_view piece) { return Trim(piece) == target; })) {
    t.Form.Faults |= TextFault::NameTakenForWord;
  }
}

// One operand of SetSTN.
Operand ReadStream(const CoreText& t, std::string_view text) {
  constexpr std::int32_t Most = 1 << 24;  // which leaves room for codes above it
  Operand stream = ReadGeneralOperand(text);
  stream.Number = std::min(stream.Number, Most);
  t.Command().StreamsByRegister = t.Command().StreamsByRegister || stream.Is(OperandKind::Gprm);
  return stream;
}

// Reads what one piece of SetSTN says of the subpicture stream.
void ReadSubpicture(const CoreText& t, std::string_view piece, std::string_view value) {
  const std::size_t colon = piece.find(':');
  t.Command().SubpictureOn = colon == std::string_view::npos || Contains(piece.substr(colon), "on");
  t.Command().Subpicture = Contains(piece, "dummy")
                               ? Operand{OperandKind::Number, DummySubpicture}
                               : ReadStream(t, value.substr(0, std::min(value.find(':'), value.size())));
}

void ReadSetStn(const CoreText& t) {
  const std::string text = t.Removed();
  std::size_t operands = 0;
  std::size_t registers = 0;
  const auto after = [&](std::string_view piece, std::string_view word) {
    ++operands;
    registers += Contains(piece, Gprm) ? 1U : 0U;
    return piece.substr(piece.find(word) + word.size());
  };
  for (const std::string_view piece : Split(text, ",")) {
    if (Contains(piece, "audio=")) {
      const std::string_view value = after(piece, "audio=");
      t.Command().Audio = Contains(piece, "16:none") ? NoAudio : ReadStream(t, value);
    }
    if (Contains(piece, "angle=")) {
      t.Command().Angle = ReadStream(t, after(piece, "angle="));
    }
    if (Contains(piece, "subpicture=")) {
      ReadSubpicture(t, piece, after(piece, "subpicture="));
    }
  }
  if (registers > 0 && registers < operands) {
    t.Form.Faults |= TextFault::MixedStreamValues;
  }
}

void ReadSetNvtmr(const CoreText& t) {
  const std::string text = Without(t.Text, "setnvtmr nv_tmr=");
  const std::vector<std::string_view> pieces = Split(text, ",");
  t.Command().Source = ReadGeneralOperand(pieces[0]);
  t.Refer(TargetKind::TimerPgc, pieces.size() > 1 ? Without(pieces[1], "tt_pgcn=") : std::string());
  t.Form.Target->Begin = t.Form.Target->End = 0;
}

void ReadSetGprmMd(const CoreText& t) {
  constexpr std::string_view RegisterWord = "registermode";
  const std::string removed = t.Removed();
  t.Command().RegisterMode = Contains(removed, RegisterWord);
  const std::string text = Without(Without(removed, RegisterWord), "countermode");
  const std::vector<std::string_view> sides = Split(text, "=");
  t.Command().Destination = NumberWithout(sides[0], Gprm);
  if (sides.size() > 1) {
    t.Command().Source = ReadGeneralOperand(sides[1]);
  }
}

// The first three switches of a channel: 16, 8 and 4 where they are on.
std::int32_t ChannelMix(std::string_view side) {
  const std::vector<std::string_view> switches = Split(side, ",");
  std::int32_t sum = 0;
  for (std::size_t i = 0; i < std::min<std::size_t>(switches.size(), 3); ++i) {
    sum += Contains(switches[i], "on") ? 16 >> i : 0;
  }
  return sum;
}

void ReadSetAmxmd(const CoreText& t) {
  std::string text = t.Removed();
  if (Contains(text, Gprm)) {
    t.Command().Source = ReadGeneralOperand(text);
    return;
  }
  std::erase_if(text, [](char c) { return c == '(' || c == ')' || c == ':'; });
  const std::vector<std::string_view> sides = Split(text, "ach1");
  t.Command().ChannelMix = {ChannelMix(sides[0]), sides.size() > 1 ? ChannelMix(sides[1]) : 0};
}

void ReadSetHlBtnn(const CoreText& t) {
  const std::string text = Without(Without(t.Removed(), "hl_bttn="), "hl_btnn=");
  t.Command().Source = ReadGeneralOperand(text);
}

void ReadSetTmpPml(const CoreText& t) {
  const std::string text = NameKey(t.Removed());
  const std::vector<std::string_view> pieces = Split(text, "command");
  t.Command().ParentalLevel = NumberWithout(pieces[0], "parental:");
  t.Command().Line = pieces.size() > 1 ? NumberWithout(pieces[1], ":") : 0;
}

// The words in the order of their tests. The order is part of the language: a name that holds a word
// standing further up is taken for that word.
constexpr std::array WordRows{
    WordRow{Test::Holds, word::Nop, Instruction::Nop, ReadPlain},
    WordRow{Test::Holds, word::GoTo, Instruction::GoTo, ReadGoTo},
    WordRow{Test::Holds, word::Break, Instruction::Break, ReadPlain},
    WordRow{Test::Holds, word::Exit, Instruction::Exit, ReadPlain},
    WordRow{Test::Equals, "linknolink", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linktopc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linknextc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linkprevc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linktoppg", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linknextpg", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linkprevpg", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linknextpgc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linktoppgc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linkprevpgc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linkgouppgc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Equals, "linktailpgc", Instruction::Link, ReadSubInstruction},
    WordRow{Test::Holds, word::LinkPgcn, Instruction::Link, ReadLink<LinkKind::Pgc>},
    WordRow{Test::Holds, word::LinkPtt, Instruction::Link, ReadLink<LinkKind::Part>},
    WordRow{Test::Holds, word::LinkPgn, Instruction::Link, ReadLink<LinkKind::Program>},
    WordRow{Test::Holds, word::LinkCn, Instruction::Link, ReadLink<LinkKind::Cell>},
    WordRow{Test::Holds, word::JumpTt, Instruction::JumpTt, ReadNamed<TargetKind::JumpTitle>},
    WordRow{Test::Holds, word::JumpVtsTt, Instruction::JumpVtsTt, ReadNamed<TargetKind::JumpSetTitle>},
    WordRow{Test::Holds, word::JumpVtsPtt, Instruction::JumpVtsPtt, ReadNamed<TargetKind::JumpSetPart>},
    WordRow{Test::Holds, word::JumpSsFp, Instruction::JumpSs, ReadJumpToFirstPlay},
    WordRow{Test::Equals, word::JumpSsTitleMenu, Instruction::JumpSs, ReadJumpToTitleMenu},
    WordRow{Test::Holds, word::JumpSs, Instruction::JumpSs, ReadJumpSs},
    WordRow{Test::Holds, word::CallSs, Instruction::CallSs, ReadCallSs},
    WordRow{Test::Holds, word::Rsm, Instruction::Link, ReadSubInstruction},
    WordRow{Test::Holds, word::SetStn, Instruction::SetStn, ReadSetStn},
    WordRow{Test::Holds, word::SetNvtmr, Instruction::SetNvtmr, ReadSetNvtmr},
    WordRow{Test::Holds, word::SetGprmMd, Instruction::SetGprmMd, ReadSetGprmMd},
    WordRow{Test::Holds, word::SetAmxmd, Instruction::SetAmxmd, ReadSetAmxmd},
    WordRow{Test::Holds, word::SetHlBtnn, Instruction::SetHlBtnn, ReadSetHlBtnn},
    WordRow{Test::Holds, word::SetTmpPml, Instruction::SetTmpPml, ReadSetTmpPml},
};

bool Matches(const WordRow& row, std::string_view text) {
  return row.How == Test::Equals ? text == row.Word : Contains(text, row.Word);
}

const std::string_view* ArithmeticWordOf(std::string_view text) {
  const auto* const found = std::find_if(ArithmeticWords.begin(), ArithmeticWords.end(),
                                         [text](std::string_view word) { return text.starts_with(word); });
  return found == ArithmeticWords.end() ? nullptr : found;
}

// Whether a text that reads as `row` begins with a word that stands further down: the author meant that.
bool MeansAnother(const WordRow& row, std::string_view text) {
  if (text.starts_with(row.Word)) {
    return false;
  }
  const bool later = std::any_of(&row + 1, WordRows.data() + WordRows.size(), [text](const WordRow& other) {
    return other.How == Test::Equals ? text == other.Word : text.starts_with(other.Word);
  });
  return later || ArithmeticWordOf(text) != nullptr;
}

}  // namespace

ButtonText TakeButton(std::string_view text) {
  constexpr std::string_view ButtonWord = "button=";
  ButtonText result;
  const std::size_t at = text.find(ButtonWord);
  const std::string_view head = text.substr(0, at);
  result.NameEnd = head.find_last_not_of(" ,") + 1;
  result.Rest = head;
  if (at != std::string_view::npos) {
    std::string_view tail = text.substr(at + ButtonWord.size());
    result.Number = LeadingNumber(tail);
    tail.remove_prefix(std::min(tail.find_first_not_of(" +-"), tail.size()));
    tail.remove_prefix(std::min(tail.find_first_not_of("0123456789"), tail.size()));
    result.Rest.append(tail);
    std::erase(result.Rest, ',');
  }
  result.Rest = Trim(result.Rest);
  return result;
}

std::int32_t NumberWithout(std::string_view text, std::string_view word) {
  const std::size_t at = text.find(word);
  return at == std::string_view::npos ? LeadingNumber(text) : LeadingNumber(Without(text, word));
}

Operand ReadGeneralOperand(std::string_view text) {
  return {Contains(text, Gprm) ? OperandKind::Gprm : OperandKind::Number, NumberWithout(text, Gprm)};
}

Operand ReadOperand(std::string_view text) {
  return !Contains(text, Gprm) && Contains(text, Sprm) ? Operand{OperandKind::Sprm, NumberWithout(text, Sprm)}
                                                       : ReadGeneralOperand(text);
}

bool ReadArithmetic(ParsedCommand& command, std::string_view text) {
  const std::string_view* const found = ArithmeticWordOf(text);
  if (found == nullptr) {
    return false;
  }
  command.Operation = static_cast<Arithmetic>(found - ArithmeticWords.data() + 1);
  const std::vector<std::string_view> pieces = Split(text.substr(found->size()), ",");
  const std::string_view source = pieces.size() > 1 ? pieces[1] : std::string_view();
  command.Destination = NumberWithout(pieces[0], Gprm);
  command.Source = ReadOperand(source);
  return true;
}

void ReadCoreCommand(CommandForm& form, std::string_view whole, std::string_view core) {
  const ButtonText parts = TakeButton(core);
  form.Command.Link.Button = parts.Number;
  const std::string_view text = parts.Rest;
  const auto* const row = std::find_if(WordRows.begin(), WordRows.end(),
                                       [text](const WordRow& known) { return Matches(known, text); });
  if (row == WordRows.end()) {
    if (ReadArithmetic(form.Command, text)) {
      form.Command.What = Instruction::Set;
    }
    return;
  }
  form.Command.What = row->What;
  if (MeansAnother(*row, text)) {
    form.Faults |= TextFault::NameTakenForWord;
  }
  const auto begin = static_cast<std::size_t>(core.data() - whole.data());
  const std::size_t at = std::min(core.find(row->Word), parts.NameEnd);
  row->Read({form, text, begin + at, begin + parts.NameEnd, row->Word});
}

}  // namespace quorvelant
