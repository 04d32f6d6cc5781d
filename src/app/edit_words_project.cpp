// Operations on the project as a whole: its history, its file and its disc.
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "app/command_author.h"
#include "app/edit_words.h"
#include "app/message_json.h"
#include "app/messages.h"
#include "author/author.h"
#include "author/messages.h"
#include "base/random.h"
#include "check/check.h"
#include "check/check_sources.h"
#include "check/disc_limits.h"
#include "desk/author_options.h"
#include "edit/messages.h"
#include "edit/outline_json.h"
#include "edit/project_file.h"
#include "edit/structure.h"
#include "platform/platform_pictures.h"
#include "script/load_findings.h"
#include "script/script_reader.h"

namespace quorvelant {

namespace {

using Json = nlohmann::ordered_json;

// --- the history ---

EditAnswer UndoStep(EditDesk& desk, const EditLine& /*line*/) {
  if (!desk.Session.CanUndo()) {
    return Outcome::Refused(MessageOf(message::EditNothingToUndo, {}));
  }
  const std::string step = desk.Session.UndoWords();
  desk.Session.Undo();
  return {Outcome::Done(), Json{{"step", step}}};
}

EditAnswer RedoStep(EditDesk& desk, const EditLine& /*line*/) {
  if (!desk.Session.CanRedo()) {
    return Outcome::Refused(MessageOf(message::EditNothingToRedo, {}));
  }
  const std::string step = desk.Session.RedoWords();
  desk.Session.Redo();
  return {Outcome::Done(), Json{{"step", step}}};
}

// --- looking at it ---

// What `check` would find in the project as it stands. `whole`: with what the plan of a disc judges itself.
Findings FindingsOf(EditDesk& desk, bool whole) {
  const Rules& rules = desk.Session.RulesInForce();
  LoadResult load;
  load.Loaded = true;
  load.TakenCount = 1;
  load.Commands = desk.Session.Commands();
  Findings findings = LoadFindings(load);
  const Project& project = desk.Session.Work();
  Append(findings, CheckProject(project, rules));
  if (whole || HasErrors(findings)) {
    Append(findings, CheckLimits(project, rules));
    Append(findings, LookForSources(project, desk.Ui, rules));
  }
  return findings;
}

EditAnswer CheckWork(EditDesk& desk, const EditLine& /*line*/) {
  const Findings findings = FindingsOf(desk, true);
  return {Outcome::Done(), Json{{"errors", CountOf(findings, Severity::Error)},
                                {"warnings", CountOf(findings, Severity::Warning)},
                                {"messages", MessagesJson(findings)}}};
}

// The node of a key, where it is below this one.
OutlineNode* NodeOf(OutlineNode& node, const std::string& key) {
  if (node.Key == key) {
    return &node;
  }
  for (OutlineNode& child : node.Children) {
    if (OutlineNode* found = NodeOf(child, key)) {
      return found;
    }
  }
  return nullptr;
}

EditAnswer ShowTree(EditDesk& desk, const EditLine& line) {
  desk.Session.Commands();  // the outline shows their digits
  OutlineNode outline = OutlineOf(desk.Session.Work());
  const std::string key = line.TextIf("key").value_or("");
  const OutlineNode* node = key.empty() ? &outline : NodeOf(outline, key);
  if (node == nullptr) {
    return Outcome::Refused(MessageOf(message::NoSuchElement, key, "element", key));
  }
  return {Outcome::Done(key), Json{{"outline", OutlineJson(*node)}}};
}

// --- what is written ---

EditAnswer Save(EditDesk& desk, const EditLine& line) {
  if (desk.SaveRefusal) {
    return Outcome::Refused(*desk.SaveRefusal);
  }
  OperationUi ui(desk.Ui, ConsentOf(line));
  if (!desk.DryRun && !SaveProjectAs(desk.Session, desk.SaveTo, ui)) {
    return GaveUp(ui);
  }
  ui.TellKept();
  return Outcome::Done(desk.SaveTo);
}

AuthorOrder OrderFrom(const EditDesk& desk, const EditLine& line, PictureLoader& pictures) {
  AuthorOrder order = OrderOf(desk.Options, desk.Session.RulesInForce());
  order.Folder = line.TextIf("folder").value_or(SystemPath(desk.Session.Work().DestinationFolder));
  order.Force = line.FlagIf("force");
  order.Strict = line.FlagIf("strict");
  order.DryRun = desk.DryRun;
  order.LogFile = desk.LogFile;
  order.Pictures = &pictures;
  return order;
}

EditAnswer AuthorDisc(EditDesk& desk, const EditLine& line) {
  const auto pictures = MakePlatformPictures();
  AuthorOrder order = OrderFrom(desk, line, *pictures);
  if (order.Folder.empty()) {
    return Outcome::Refused(MessageOf(message::DestinationMissing, {}));
  }
  const Findings findings = FindingsOf(desk, false);
  OperationUi ui(desk.Ui, ConsentOf(line));
  for (const Message& finding : findings) {
    ui.Tell(finding);
  }
  if (HasErrors(findings)) {
    return GaveUp(ui);
  }
  order.WarnedBefore = CountOf(findings, Severity::Warning) > 0;
  const AuthorResult result = Author(desk.Session.Work(), order, ui);
  if (result.Outcome != AuthorOutcome::Done) {
    Outcome refused = GaveUp(ui);
    if (refused.Words.Is(message::DestinationHoldsDisc)) {  // in words of lines
      refused.Words = MessageOf(message::EditDiscThere, refused.Words.Place);
    }
    return refused;
  }
  ui.TellKept();
  return {Outcome::Done(order.Folder), Json{{"titles", result.Titles.size()}, {"bytes", result.Bytes}}};
}

constexpr std::array Words{
    EditWord{"destination", "folder",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return SetDestination(desk.Session, line.Text("folder"));
             }},
    EditWord{"undo", "", UndoStep},
    EditWord{"redo", "", RedoStep},
    EditWord{"check", "", CheckWork},
    EditWord{"tree", "key?", ShowTree},
    EditWord{"save", "", Save},
    EditWord{"author", "folder? force? strict?", AuthorDisc},
};

}  // namespace

std::span<const EditWord> ProjectWords() {
  return Words;
}

}  // namespace quorvelant
