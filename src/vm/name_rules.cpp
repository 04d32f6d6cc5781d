#include "vm/name_rules.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/text.h"
#include "model/keys.h"
#include "vm/disc_place.h"
#include "vm/messages.h"
#include "vm/name_index.h"
#include "vm/numbered_target.h"
#include "vm/references.h"

namespace quorvelant {

namespace {

// The commands that lead to a kind.
struct KindRow {
  ElementKind Kind;
  ReferenceKind Leads;
  std::vector<std::string_view> Forms;  // fmt's field for the name
  std::vector<TargetKind> Numbers;      // whose numbers a name could be taken for
};

const KindRow& RowOf(ElementKind kind) {
  static const std::array<KindRow, 4> rows{{
      {ElementKind::Title,
       ReferenceKind::JumpTitle,
       {"JumpTT {}", "If ( GPRM0 == 1 ) JumpTT {}"},
       {TargetKind::JumpTitle}},
      {ElementKind::Pgc,
       ReferenceKind::LinkPgc,
       {"LinkPGCN {}", "If ( GPRM0 == 1 ) LinkPGCN {}", "{{ SetSTN audio=1 ; LinkPGCN {} }}"},
       {TargetKind::VmgPgc}},
      {ElementKind::Program,
       ReferenceKind::LinkProgram,
       {"LinkPGN {}", "LinkPGN {}, button=1", "{{ SetSTN audio=1 ; LinkPGN {}, button=1 }}"},
       {TargetKind::LinkProgram, TargetKind::JumpSetPart}},
      {ElementKind::Cell,
       ReferenceKind::LinkCell,
       {"LinkCN {}", "LinkCN {}, button=1", "{{ SetSTN audio=1 ; LinkCN {}, button=1 }}"},
       {TargetKind::LinkCell}},
  }};
  return rows.at(static_cast<std::size_t>(kind));
}

// Whether a command leads to the name and can be given another one.
bool Carries(std::string_view command, ReferenceKind kind, std::string_view name) {
  const auto references = TextReferencesOf(command);
  return references.size() == 1 && references[0].Kind == kind && SameName(references[0].Name, name) &&
         command.substr(references[0].Offset, references[0].Length) == Trim(name);
}

// The key of another live element of this kind that has the name; empty where there is none.
std::string KeyOfNamed(const Project& project, ElementKind kind, std::string_view name,
                       std::string_view own) {
  std::string found;
  const auto look = [&](const DiscPlace& place, const std::string& other) {
    if (found.empty() && SameName(name, other)) {
      std::string key = KeyOf(place);
      found = key == own ? std::string() : std::move(key);
    }
  };
  std::uint32_t number = 0;
  for (const VTS_P& entry : project.Disc) {
    ++number;
    if (kind == ElementKind::Title && IsLive(entry)) {
      VisitLive(entry.Title, {.Entry = number, .InTitles = true}, &DiscPlace::Unit,
                [&](const DiscPlace& at, const Title_P& title) { look(at, title.TitleName); });
      continue;
    }
    VisitLivePgcs(entry, number, [&](const DiscPlace& at, const PGC_P& pgc) {
      if (kind == ElementKind::Pgc) {
        look(at, pgc.PGCName);
        return;
      }
      VisitLive(pgc.PG, at, &DiscPlace::Program, [&](const DiscPlace& program, const PG_P& named) {
        if (kind == ElementKind::Program) {
          look(program, named.PGName);
          return;
        }
        VisitLive(named.Cell, program, &DiscPlace::Cell,
                  [&](const DiscPlace& cell, const Cell_P& last) { look(cell, last.CellName); });
      });
    });
  }
  return found;
}

}  // namespace

std::optional<Message> RefuseNameForm(ElementKind kind, std::string_view name, std::string_view own) {
  const std::string key = NameKey(name);
  if (key.empty()) {
    return MessageOf(message::NameEmpty, own);
  }
  if (key == "none") {
    return MessageOf(message::NameReserved, own, name);
  }
  if (name.find_first_of(";\t\r\n") != std::string_view::npos) {
    return MessageOf(message::NameBreaksLine, own, name);
  }
  const KindRow& row = RowOf(kind);
  const std::string lowered = Lower(Trim(name));
  if (std::ranges::any_of(row.Numbers, [&lowered](TargetKind target) {
        return ReadNumberedTarget(target, lowered).has_value();
      })) {
    return MessageOf(message::NameIsNumber, own, name);
  }
  for (const std::string_view form : row.Forms) {
    const std::string command = fmt::format(fmt::runtime(form), name);
    if (!Carries(command, row.Leads, name)) {
      return MessageOf(message::NameNotCarried, own, name, command);
    }
  }
  return std::nullopt;
}

std::optional<Message> RefuseName(const Project& project, ElementKind kind, std::string_view name,
                                  std::string_view own) {
  if (auto refusal = RefuseNameForm(kind, name, own)) {
    return refusal;
  }
  const std::string other = KeyOfNamed(project, kind, name, own);
  return other.empty() ? std::nullopt : std::optional(MessageOf(message::NameInUse, own, name, other));
}

}  // namespace quorvelant
