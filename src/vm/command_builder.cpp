#include "vm/command_builder.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/text.h"
#include "vm/command_parser.h"
#include "vm/command_types.h"
#include "vm/command_words.h"

namespace quorvelant {

namespace {

// --- the text ---

std::string OperandText(const Operand& operand) {
  switch (operand.Kind) {
    case OperandKind::Gprm:
      return fmt::format("GPRM{}", operand.Number);
    case OperandKind::Sprm:
      return fmt::format("SPRM{}", operand.Number);
    default:
      return fmt::format("{}", operand.Number);
  }
}

// "If ( GPRM1 == 3 ) "; empty where nothing is compared.
std::string CompareText(const std::optional<Comparison>& compare) {
  if (!compare) {
    return {};
  }
  const auto* const op = std::ranges::find(CompareOperators, compare->Operation, &CompareOperator::Operation);
  return op == CompareOperators.end()
             ? std::string()
             : fmt::format("If ( GPRM{} {} {} ) ", compare->LeftGprm, op->Text, OperandText(compare->Right));
}

std::string LinkText(const LinkTarget& link, std::string_view name) {
  if (link.Kind == LinkKind::SubInstruction) {
    const auto* const sub = std::ranges::find(SubInstructions, link.Number, &SubInstruction::Code);
    if (sub == SubInstructions.end()) {
      return {};
    }
    const bool bare = sub->Read == word::Rsm && link.Button == 0;
    return bare ? std::string(sub->Shown) : fmt::format("{}, button={}", sub->Shown, link.Button);
  }
  const auto* const named = std::ranges::find(NamedLinks, link.Kind, &NamedLink::Kind);
  if (named == NamedLinks.end()) {
    return {};
  }
  return link.Kind == LinkKind::Pgc ? fmt::format("{} {}", named->Shown, name)
                                    : fmt::format("{} {}, button={}", named->Shown, name, link.Button);
}

std::string_view MenuText(std::int32_t menuId) {
  const auto menu = static_cast<std::size_t>(menuId - FirstMenuId);
  return menuId >= FirstMenuId && menu < MenuWords.size() ? MenuWords.at(menu).Shown : std::string_view();
}

std::string JumpSsText(const CommandFields& fields) {
  const ParsedCommand& c = fields.Command;
  switch (c.Space) {
    case SystemSpace::FirstPlay:
      return "JumpSS FP_DOM";
    case SystemSpace::TitleMenu:
      return "JumpSS TitleMenu";
    case SystemSpace::SetMenu:
      return fmt::format("JumpSS vts_{}, vts_ttn_{} : {}", c.TitleSet, c.Title, MenuText(c.MenuId));
    default:
      return fmt::format("JumpSS {}", fields.Target);
  }
}

std::string CallSsText(const CommandFields& fields) {
  const bool isDefault = fields.Resume.empty() || fields.Resume == DefaultChoice;
  const std::string resume = fmt::format("CallSS RSM={},", isDefault ? std::string_view("0") : fields.Resume);
  switch (fields.Command.Space) {
    case SystemSpace::FirstPlay:
      return resume + "FP_DOM";
    case SystemSpace::TitleMenu:
      return resume + "TitleMenu";
    case SystemSpace::SetMenu:
      return fmt::format("{}{}", resume, MenuText(fields.Command.MenuId));
    default:
      return fmt::format("{}, {}", resume, fields.Target);
  }
}

std::string SubpictureText(const ParsedCommand& c) {
  if (c.Subpicture.Is(OperandKind::Gprm)) {
    return fmt::format("subpicture={}", OperandText(c.Subpicture));
  }
  const std::string number = c.Subpicture.Number == DummySubpicture ? "63 Dummy" : OperandText(c.Subpicture);
  return fmt::format("subpicture={}:{}", number, c.SubpictureOn ? "ON" : "OFF");
}

std::string StreamsText(const ParsedCommand& c) {
  std::string text = "SetSTN ";
  const auto add = [&text](const std::string& part) {
    text.append(text.ends_with(' ') ? "" : ", ").append(part);
  };
  if (!c.Angle.Is(OperandKind::None)) {
    add("angle=" + OperandText(c.Angle));
  }
  if (!c.Audio.Is(OperandKind::None)) {
    add(c.Audio == NoAudio ? std::string("audio=16:None") : "audio=" + OperandText(c.Audio));
  }
  if (!c.Subpicture.Is(OperandKind::None)) {
    add(SubpictureText(c));
  }
  return text;
}

std::string MixText(unsigned channel, std::int32_t mix) {
  const auto state = [mix](std::int32_t bit) {
    return (static_cast<unsigned>(mix) & static_cast<unsigned>(bit)) != 0 ? "ON" : "OFF";
  };
  return fmt::format("ACH{}(4:{},3:{},2:{})", channel, state(16), state(8), state(4));
}

std::string MixingText(const ParsedCommand& c) {
  return c.Source.Is(OperandKind::Gprm)
             ? fmt::format("SetAMXMD {}", OperandText(c.Source))
             : fmt::format("SetAMXMD {}, {}", MixText(0, c.ChannelMix[0]), MixText(1, c.ChannelMix[1]));
}

std::string ArithmeticText(const ParsedCommand& c) {
  const auto op = static_cast<std::size_t>(c.Operation);
  return op < 1 || op > ArithmeticWords.size()
             ? std::string()
             : fmt::format("{} GPRM{}, {}", ArithmeticWords.at(op - 1), c.Destination, OperandText(c.Source));
}

// The command without its comparison and without the link after it.
std::string CoreText(const CommandFields& fields) {
  const ParsedCommand& c = fields.Command;
  switch (c.What) {
    case Instruction::None:
    case Instruction::Nop:
      return "NOP";
    case Instruction::GoTo:
      return fmt::format("GoTo {}", c.Line);
    case Instruction::Break:
      return "Break";
    case Instruction::SetTmpPml:
      return fmt::format("SetTmpPML parental:{} command:{}", c.ParentalLevel, c.Line);
    case Instruction::Link:
      return LinkText(c.Link, fields.Target);
    case Instruction::Exit:
      return "Exit";
    case Instruction::JumpTt:
      return fmt::format("JumpTT {}", fields.Target);
    case Instruction::JumpVtsTt:
      return fmt::format("JumpVTS_TT {}", fields.Target);
    case Instruction::JumpVtsPtt:
      return fmt::format("JumpVTS_PTT {}", fields.Target);
    case Instruction::JumpSs:
      return JumpSsText(fields);
    case Instruction::CallSs:
      return CallSsText(fields);
    case Instruction::SetStn:
      return StreamsText(c);
    case Instruction::SetNvtmr:
      return fmt::format("SetNVTMR NV_TMR={}, TT_PGCN={}", OperandText(c.Source), fields.Target);
    case Instruction::SetGprmMd:
      return fmt::format("SetGPRMMD {}GPRM{}={}", c.RegisterMode ? "RegisterMode" : "CounterMode",
                         c.Destination, OperandText(c.Source));
    case Instruction::SetAmxmd:
      return MixingText(c);
    case Instruction::SetHlBtnn:
      return fmt::format("SetHL_BTNN HL_BTTN={}", OperandText(c.Source));
    default:
      return ArithmeticText(c);
  }
}

// --- the fields ---

// A name in the case in which it was written; the parser's is a copy in lower case. Where the parser took
// something out of its middle it stays so.
std::string AsWritten(std::string_view text, const CommandForm& form, const CommandReference& reference) {
  const std::string_view name = reference.Name;
  const std::string_view lowered = form.Lowered;
  std::size_t at = lowered.rfind(name);
  if (reference.Kind == TargetKind::ResumeCell) {
    constexpr std::string_view ResumeWord = "rsm=";
    const std::size_t place = lowered.find(ResumeWord);
    at = lowered.find(name, place == std::string_view::npos ? lowered.find(word::CallSs) + word::CallSs.size()
                                                            : place + ResumeWord.size());
  } else if (reference.Kind == TargetKind::TimerPgc) {
    constexpr std::string_view TimerWord = "tt_pgcn=";
    const std::size_t place = lowered.find(TimerWord);
    at = lowered.find(name, place == std::string_view::npos ? 0 : place + TimerWord.size());
  } else if (reference.End >= name.size() && reference.End > 0) {
    at = lowered.substr(reference.End - name.size()).starts_with(name) ? reference.End - name.size() : at;
  }
  return std::string(at == std::string_view::npos ? name : text.substr(at, name.size()));
}

// A link to a PGC has no room for a button.
void DropUnsaid(LinkTarget& link) {
  link.Button = link.Kind == LinkKind::Pgc ? 0 : link.Button;
}

// What the text said and the bytes do not say.
void DropUnsaid(ParsedCommand& c) {
  if (c.What != Instruction::Link) {
    c.Link = {};
  }
  DropUnsaid(c.Link);
  if (c.What < Instruction::SetStn) {
    c.LinkAfterSet.reset();
  }
  if (c.LinkAfterSet) {
    DropUnsaid(*c.LinkAfterSet);
  }
  if (c.Space != SystemSpace::SetMenu) {
    c.MenuId = 0;
  }
}

}  // namespace

std::string CommandText(const CommandFields& fields) {
  const ParsedCommand& c = fields.Command;
  const std::string compare = CompareText(c.Compare);
  const std::string core = CoreText(fields);
  const std::string link = c.LinkAfterSet ? LinkText(*c.LinkAfterSet, fields.LinkTarget) : std::string();
  switch (c.What) {
    case Instruction::SetCompareLink:
      return fmt::format("{} ; {}{}", core, compare, link);
    case Instruction::CompareSetAndLink:
      return fmt::format("{}{{ {} ; {} }}", compare, core, link);
    case Instruction::CompareSetThenLink:
      return fmt::format("{}{{ {} ; }} {}", compare, core, link);
    default:
      break;
  }
  const bool goesOn = c.What >= Instruction::SetStn && compare.empty() && !link.empty();
  return goesOn ? fmt::format("{{ {} ; {} }}", core, link) : compare + core;
}

std::optional<CommandFields> FieldsOf(std::string_view text) {
  constexpr TextFault Unsayable = TextFault::UnknownText | TextFault::NoOperator |
                                  TextFault::NoSetInCompound | TextFault::UnknownMenu |
                                  TextFault::UnknownLink;
  const std::string_view written = Trim(text);
  CommandForm form = ParseCommand(written);
  if (Has(form.Faults, Unsayable)) {
    return std::nullopt;
  }
  CommandFields fields;
  fields.Command = form.Command;
  if (fields.Command.What == Instruction::None) {
    fields.Command.What = Instruction::Nop;
  }
  DropUnsaid(fields.Command);
  if (form.Target) {
    fields.Target = AsWritten(written, form, *form.Target);
  }
  if (form.Resume && form.Resume->Name != "0") {
    fields.Resume = AsWritten(written, form, *form.Resume);
  }
  if (form.Link && fields.Command.LinkAfterSet) {
    fields.LinkTarget = AsWritten(written, form, *form.Link);
  }
  return fields;
}

}  // namespace quorvelant
