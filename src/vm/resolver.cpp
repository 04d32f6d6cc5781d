#include "vm/resolver.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "base/text.h"
#include "vm/encoder.h"
#include "vm/numbered_target.h"

namespace quorvelant {

namespace {

// What a reference came to.
struct Found {
  std::int32_t Number = 1;
  std::int32_t Title = 1;
  bool Missing = true;
  const std::string* Name = nullptr;
};

// One text on its way to its bytes.
class TextResolver {
 public:
  TextResolver(std::string_view target, NameIndex* names, const ResolveOptions& options)
      : target_(target), names_(names), options_(options) {}

  Resolution Run(std::string_view text) {
    CommandForm form = ParseCommand(text);
    Resolution result;
    result.TargetMissing = Has(form.Faults, TextFault::UnknownLink);
    if (form.Target) {
      const Found found = Look(*form.Target);
      PutTarget(form, found);
      TellBeyondField(form, *form.Target, found);
      Note(result, *form.Target, result.Naming, found);
      FollowRename(form, *form.Target, found);
    }
    if (form.Resume) {
      const Found found = Look(*form.Resume);
      form.Command.ResumeCell = found.Number;
      Miss(result, *form.Resume, found);
    }
    if (form.Link) {
      const Found found = Look(*form.Link);
      form.Command.LinkAfterSet->Number = found.Number;
      TellBeyondField(form, *form.Link, found);
      Note(result, *form.Link, result.LinkNaming, found);
      FollowRename(form, *form.Link, found);
    }
    result.Text = edits_.empty() ? std::string(text) : Edited(form.Lowered);
    result.Hex = EncodeCommand(form.Command);
    result.Faults = form.Faults;
    return result;
  }

 private:
  struct Edit {
    std::size_t Begin;
    std::size_t End;
    std::string Text;
  };

  Found Look(const CommandReference& reference) const {
    if (options_.Numbers == NumericTargets::First && reference.Kind == TargetKind::VmgPgc &&
        NumberAfter(reference.Name, PgcWord)) {
      return ByNumber(reference);
    }
    const bool resume = reference.Kind == TargetKind::ResumeCell;
    if (names_ != nullptr) {
      // The stored target is the command's, never that of its resume part.
      if (const NamedTarget* hit =
              names_->Find(reference.Kind, reference.Name, resume ? std::string_view() : target_)) {
        return {hit->Number, hit->Title, false, hit->Name};
      }
    }
    return resume || options_.Numbers != NumericTargets::Refused ? ByNumber(reference) : Found{};
  }

  // A number in a name's place stands for itself, if the disc has as many.
  Found ByNumber(const CommandReference& reference) const {
    const auto target = ReadNumberedTarget(reference.Kind, reference.Name);
    if (!target) {
      return {};
    }
    const bool counted =
        reference.Kind != TargetKind::ResumeCell && reference.Kind != TargetKind::JumpSetPart;
    const bool reached = names_ == nullptr || !counted ||
                         (target->Number >= 1 && target->Number <= names_->Most(reference.Kind));
    return reached ? Found{target->Number, target->Title, false, nullptr} : Found{};
  }

  // Where nothing tells how many there are, a number that its bytes do not hold becomes another one.
  void TellBeyondField(CommandForm& form, const CommandReference& reference, const Found& found) const {
    const auto most = [&reference] {
      switch (reference.Kind) {
        case TargetKind::LinkPgc:
        case TargetKind::VmgPgc:
        case TargetKind::TimerPgc:
          return 0x7FFF;
        case TargetKind::LinkPart:
        case TargetKind::JumpSetPart:
          return 0x3FF;
        default:
          return 0xFF;
      }
    };
    if (names_ == nullptr && (found.Number > most() || found.Title > 0xFF)) {
      form.Faults |= TextFault::NumberBeyondField;
    }
  }

  static void PutTarget(CommandForm& form, const Found& found) {
    ParsedCommand& command = form.Command;
    switch (form.Target->Kind) {
      case TargetKind::LinkPgc:
      case TargetKind::LinkProgram:
      case TargetKind::LinkPart:
      case TargetKind::LinkCell:
        command.Link.Number = found.Number;
        break;
      case TargetKind::VmgPgc:
      case TargetKind::TimerPgc:
        command.Pgc = found.Number;
        break;
      case TargetKind::JumpSetPart:
        command.Part = found.Number;
        command.Title = found.Missing ? 0 : found.Title;
        break;
      case TargetKind::JumpTitle:
      case TargetKind::JumpSetTitle:
        command.Title = found.Number;
        break;
      case TargetKind::ResumeCell:
        break;
    }
  }

  static void Miss(Resolution& result, const CommandReference& reference, const Found& found) {
    if (found.Missing) {
      result.TargetMissing = true;
      result.MissingNames.push_back(reference.Name);
    }
  }

  static void Note(Resolution& result, const CommandReference& reference, std::string& naming,
                   const Found& found) {
    Miss(result, reference, found);
    if (found.Name != nullptr) {
      naming = *found.Name;
    }
  }

  // With a stored target the text comes to name that target.
  void FollowRename(const CommandForm& form, const CommandReference& reference, const Found& found) {
    if (target_.empty() || found.Name == nullptr || reference.End == 0) {
      return;
    }
    constexpr std::array<std::pair<TargetKind, std::string_view>, 8> Shown{
        {{TargetKind::LinkPgc, " LinkPGCN "},
         {TargetKind::LinkPart, " LinkPTT "},
         {TargetKind::LinkProgram, " LinkPGN "},
         {TargetKind::LinkCell, " LinkCN "},
         {TargetKind::JumpTitle, " JumpTT "},
         {TargetKind::JumpSetTitle, " JumpVTS_TT "},
         {TargetKind::JumpSetPart, " JumpVTS_PTT "},
         {TargetKind::VmgPgc, " "}}};
    const auto* const word = std::find_if(Shown.begin(), Shown.end(),
                                          [&](const auto& row) { return row.first == reference.Kind; });
    if (word != Shown.end() && reference.End <= form.Lowered.size()) {
      // The blanks before belong to the piece, so that resolving again changes nothing.
      const std::string_view head = std::string_view(form.Lowered).substr(0, reference.Begin);
      edits_.push_back(
          {head.find_last_not_of(' ') + 1, reference.End, std::string(word->second) + Lower(target_)});
    }
  }

  // The edits in order of their places; each replaces its piece.
  std::string Edited(const std::string& lowered) const {
    std::string text;
    std::size_t from = 0;
    for (const Edit& edit : edits_) {
      text.append(lowered, from, edit.Begin - from).append(edit.Text);
      from = edit.End;
    }
    text.append(lowered, from);
    return std::string(Trim(text));
  }

  std::string_view target_;
  NameIndex* names_;
  const ResolveOptions& options_;
  std::vector<Edit> edits_;
};

}  // namespace

Resolution ResolveText(std::string_view text, std::string_view target, NameIndex* names,
                       const ResolveOptions& options) {
  return TextResolver(target, names, options).Run(text);
}

Resolution ResolveCommand(VMICommand_P& command, NameIndex& names, const ResolveOptions& options) {
  Resolution result = ResolveText(command.FullCommand, command.To_Action, &names, options);
  if (command.FullCommand != result.Text) {
    command.FullCommand = result.Text;
  }
  if (!result.TargetMissing) {
    command.CommandHex = result.Hex;
    command.Naming = result.Naming;
    command.LinkNaming = result.LinkNaming;
  }
  return result;
}

}  // namespace quorvelant
