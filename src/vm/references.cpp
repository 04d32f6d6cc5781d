#include "vm/references.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "vm/command_words.h"
#include "vm/encoder.h"
#include "vm/numbered_target.h"

namespace quorvelant {

namespace {

constexpr std::size_t None = std::string_view::npos;
constexpr std::int32_t TitleMenuId = 2;

// A piece of the lowered text.
struct Span {
  std::size_t Offset = 0;
  std::size_t Length = 0;
};

// The first occurrence of `name` at or after `from`.
Span Find(std::string_view text, std::string_view name, std::size_t from) {
  const std::size_t at = name.empty() ? None : text.find(name, from);
  return at == None ? Span() : Span{at, name.size()};
}

// The place after a word, or `from` where the text has no such word.
std::size_t After(std::string_view text, std::string_view word, std::size_t from = 0) {
  const std::size_t at = text.find(word, from);
  return at == None ? from : at + word.size();
}

// A name without what readers take from it or write in another way.
std::string Bare(std::string_view name) {
  std::string bare = NameKey(name);
  std::erase_if(bare, [](char c) { return std::string_view(",{}()").find(c) != None; });
  return bare;
}

// Where a name stands whose reference says where it ends with its word: at that end, as a rule. A name from
// which commas or brackets were taken is all that stands after the word.
Span SpanOf(std::string_view text, const CommandReference& reference, std::string_view word) {
  const std::string_view name = reference.Name;
  const std::size_t end = std::min(reference.End, text.size());
  if (name.empty()) {
    return {};
  }
  if (end >= reference.Begin + name.size() && text.substr(end - name.size(), name.size()) == name) {
    return {end - name.size(), name.size()};
  }
  const std::size_t begin = text.find_first_not_of(' ', After(text.substr(0, end), word, reference.Begin));
  return begin < end && Bare(text.substr(begin, end - begin)) == Bare(name) ? Span{begin, end - begin}
                                                                            : Find(text, name, end);
}

std::string_view WordOf(TargetKind kind) {
  switch (kind) {
    case TargetKind::LinkPgc:
      return word::LinkPgcn;
    case TargetKind::LinkProgram:
      return word::LinkPgn;
    case TargetKind::LinkPart:
      return word::LinkPtt;
    case TargetKind::LinkCell:
      return word::LinkCn;
    case TargetKind::JumpTitle:
      return word::JumpTt;
    case TargetKind::JumpSetTitle:
      return word::JumpVtsTt;
    case TargetKind::JumpSetPart:
      return word::JumpVtsPtt;
    default:
      return {};  // no word stands before the name in its span
  }
}

// Collects the references of one text.
class ReferenceReader {
 public:
  explicit ReferenceReader(std::string_view text)
      : form_(ParseCommand(text)), lowered_(form_.Lowered), lead_(text.find_first_not_of(' ')) {}

  std::vector<TextReference> Run() {
    if (form_.Target) {
      AddNamed(*form_.Target, SpanOfTarget(*form_.Target));
    }
    ReadSystemSpace();
    if (form_.Resume) {
      const std::size_t after = After(lowered_, word::CallSs);
      AddNamed(*form_.Resume, Find(lowered_, form_.Resume->Name, After(lowered_, "rsm=", after)));
    }
    if (form_.Link) {
      AddNamed(*form_.Link, SpanOf(lowered_, *form_.Link, WordOf(form_.Link->Kind)));
    }
    return std::move(references_);
  }

 private:
  [[nodiscard]] Span SpanOfTarget(const CommandReference& target) const {
    if (target.Kind == TargetKind::TimerPgc) {
      return Find(lowered_, target.Name, After(lowered_, "tt_pgcn=", After(lowered_, word::SetNvtmr)));
    }
    if (form_.Command.What == Instruction::CallSs) {
      // The last: the resume cell may begin with its PGC's name.
      const std::size_t at = target.Name.empty() ? None : lowered_.rfind(target.Name);
      return at == None ? Span() : Span{at, target.Name.size()};
    }
    return SpanOf(lowered_, target, WordOf(target.Kind));
  }

  void Add(ReferenceKind kind, Span span, std::optional<std::int32_t> number, std::int32_t within = 0) {
    references_.push_back({kind, lead_ + span.Offset, span.Length, {}, number, within});
  }

  void AddNamed(const CommandReference& reference, Span span) {
    const auto number = ReadNumberedTarget(reference.Kind, reference.Name);
    const bool ofTitle = number && reference.Kind == TargetKind::JumpSetPart;
    if (reference.Name.empty() ||
        (reference.Kind == TargetKind::ResumeCell && number && number->Number == 0)) {
      return;  // a call without a resume cell comes back to where it was
    }
    Add(static_cast<ReferenceKind>(reference.Kind), span,
        number ? std::optional(number->Number) : std::nullopt, ofTitle ? number->Title : 0);
    references_.back().Name = reference.Name;
  }

  void ReadSystemSpace() {
    const ParsedCommand& command = form_.Command;
    if (command.What != Instruction::JumpSs && command.What != Instruction::CallSs) {
      return;
    }
    switch (command.Space) {
      case SystemSpace::FirstPlay:
        Add(ReferenceKind::FirstPlay, {}, std::nullopt);
        break;
      case SystemSpace::TitleMenu:
        Add(ReferenceKind::Menu, {}, TitleMenuId);
        break;
      case SystemSpace::SetMenu:
        ReadSetMenu(command);
        break;
      case SystemSpace::VmgPgc:
        break;
    }
  }

  void ReadSetMenu(const ParsedCommand& command) {
    if (command.What == Instruction::CallSs) {
      Add(ReferenceKind::Menu, {}, command.MenuId, TextReference::OwnSet);
      return;
    }
    constexpr std::string_view TitleWord = "vts_ttn_";
    const std::size_t start = After(lowered_, word::JumpSs);
    const std::size_t title = lowered_.find(TitleWord, start);
    const std::size_t set = After(lowered_.substr(0, title), "vts_", start);
    Add(ReferenceKind::MenuSet, Digits(set, command.TitleSet), command.TitleSet);
    if (command.Title != 0) {  // 0 is any
      Add(ReferenceKind::MenuTitle, Digits(After(lowered_, TitleWord, start), command.Title), command.Title,
          command.TitleSet);
    }
    Add(ReferenceKind::Menu, {}, command.MenuId, command.TitleSet);
  }

  // The digits at a place, if they are those of `number`.
  [[nodiscard]] Span Digits(std::size_t from, std::int32_t number) const {
    const std::size_t begin = std::min(lowered_.find_first_not_of(' ', from), lowered_.size());
    const std::size_t end = std::min(lowered_.find_first_not_of("0123456789", begin), lowered_.size());
    const auto found = PlainNumber(lowered_.substr(begin, end - begin));
    return found == number ? Span{begin, end - begin} : Span();
  }

  CommandForm form_;
  std::string_view lowered_;
  std::size_t lead_;  // blanks before the text that was read
  std::vector<TextReference> references_;
};

std::string Replaced(std::string_view text, const TextReference& reference, std::string_view piece) {
  std::string result(text.substr(0, reference.Offset));
  return result.append(piece).append(text.substr(reference.Offset + reference.Length));
}

}  // namespace

std::vector<TextReference> TextReferencesOf(std::string_view text) {
  return ReferenceReader(text).Run();
}

std::optional<std::string> RenamedText(std::string_view text, const TextReference& reference,
                                       std::string_view newName) {
  if (reference.Length == 0) {
    return std::nullopt;
  }
  std::string renamed = Replaced(text, reference, newName);
  const auto before = TextReferencesOf(text);
  const auto after = TextReferencesOf(renamed);
  const auto same = [&](const TextReference& now, const TextReference& former) {
    const bool meant = former.Kind == reference.Kind && former.Offset == reference.Offset;
    return now.Kind == former.Kind &&
           NameKey(now.Name) == NameKey(meant ? newName : std::string_view(former.Name));
  };
  return std::ranges::equal(after, before, same) ? std::optional(std::move(renamed)) : std::nullopt;
}

std::string RenumberedText(std::string_view text, const TextReference& reference, std::int32_t number,
                           std::int32_t within) {
  const bool digitsOnly = reference.Kind > ReferenceKind::TimerPgc;
  const auto kind = digitsOnly ? TargetKind::LinkPgc : static_cast<TargetKind>(reference.Kind);
  return reference.Length == 0
             ? std::string(text)
             : Replaced(text, reference,
                        NumberedTargetText(kind, reference.Name, {.Number = number, .Title = within}));
}

void ResetToNop(VMICommand_P& command) {
  command.FullCommand = "NOP";
  command.CommandHex = NopHex;
  command.To_Action.clear();
  command.Naming.clear();
  command.LinkNaming.clear();
}

}  // namespace quorvelant
