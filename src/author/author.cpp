#include "author/author.h"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "author/disc_folder.h"
#include "author/fix_up.h"
#include "author/folder_lock.h"
#include "author/message_recorder.h"
#include "author/messages.h"
#include "author/output_folder.h"
#include "author/size_text.h"
#include "author/source_stamps.h"
#include "author/write_disc.h"
#include "base/log.h"
#include "base/random.h"
#include "verify/named_files.h"
#include "verify/read_back.h"
#include "verify/verify_disc.h"

namespace quorvelant {
namespace {

struct AuthorRun {
  const AuthorOrder& Order;
  const DiscPlan& Plan;
  MessageRecorder& Ui;
  AuthorResult& Result;

  bool Refuse(const Message& message) const {
    Ui.Tell(message);
    return false;
  }
};

bool AnnouncePlan(const AuthorRun& run, std::optional<std::uint64_t> freeBytes) {
  for (const Message& finding : run.Plan.Findings) {
    run.Ui.Tell(finding);
  }
  if (run.Order.Announce) {
    run.Order.Announce(run.Plan, freeBytes);
  }
  return !run.Plan.HasErrors();
}

// Surely too little below the size of the sources; above it the estimate may be wrong.
bool HasSpace(const AuthorRun& run, std::optional<std::uint64_t> freeBytes) {
  const std::uint64_t needed = run.Plan.NeededBytes();
  if (run.Order.InPlace || !freeBytes || *freeBytes >= needed) {
    return true;
  }
  const bool sure = *freeBytes < run.Plan.VideoBytes + run.Plan.AudioBytes && !run.Order.DryRun;
  run.Ui.Tell(MessageOf(sure ? message::SpaceTooLittle : message::SpaceDoubtful, run.Order.Folder,
                        SizeText(needed), SizeText(*freeBytes)));
  return !sure;
}

bool WarningsAllow(const AuthorRun& run) {
  const bool forbid = run.Order.Strict && (run.Order.WarnedBefore || run.Ui.HasWarnings());
  return !forbid || run.Refuse(MessageOf(message::WarningsForbidDisc, {}));
}

// Where the files go.
struct Target {
  std::string Folder;
  std::optional<FolderLock> Lock = {};     // of a folder that is written to at once
  std::optional<OutputFolder> Aside = {};  // to be put in its place at the end
};

std::optional<Target> PrepareFolder(const AuthorRun& run) {
  const AuthorOrder& order = run.Order;
  if (order.InPlace) {
    if (order.DryRun) {
      return Target{order.Folder};
    }
    std::filesystem::create_directories(order.Folder);
    auto lock = FolderLock::Take(DestinationPath(order.Folder), run.Ui);
    return lock ? std::optional<Target>(Target{order.Folder, std::move(lock)}) : std::nullopt;
  }
  if (order.DryRun) {
    const bool accepted = OutputFolder::Judge(order.Folder, order.Force, run.Ui);
    return accepted ? std::optional<Target>(Target{order.Folder}) : std::nullopt;
  }
  auto aside = OutputFolder::Prepare(order.Folder, order.Force, run.Ui);
  return aside ? std::optional<Target>(Target{aside->Path(), {}, std::move(aside)}) : std::nullopt;
}

bool TellAll(const AuthorRun& run, const std::vector<Message>& faults) {
  for (const Message& fault : faults) {
    run.Ui.Tell(fault);
  }
  return faults.empty();
}

// Nothing is summed before all that the tables name is there.
bool EnterSums(const AuthorRun& run, const std::string& folder) {
  if (run.Order.DryRun) {
    return true;
  }
  if (run.Order.ReadBack && !TellAll(run, NamedFileFaults(folder, run.Ui))) {
    return false;
  }
  const auto foreign = FixUp(folder, run.Ui);
  return !foreign || run.Refuse(MessageOf(message::ForeignFile, folder, *foreign));
}

// Neither a source nor the project's own script is taken for a file of the disc before.
bool KeepsSources(const AuthorRun& run, const SourceStamps& stamps) {
  const std::string& folder = run.Order.Folder;
  if (folder.empty()) {
    return true;
  }
  auto replaced = stamps.FirstReplacedIn(folder);
  if (const std::string script = SystemPath(run.Plan.Disc->ScriptFile);
      !script.empty() && IsReplacedIn(folder, script)) {
    replaced = script;
  }
  return !replaced || run.Refuse(MessageOf(message::SourceInDestination, *replaced));
}

bool SourcesStand(const AuthorRun& run, const SourceStamps& stamps) {
  const auto changed = stamps.FirstChanged();
  return !changed || run.Refuse(MessageOf(message::SourceChanged, *changed));
}

AuthorOutcome WriteFiles(const AuthorRun& run, const std::string& folder, const SourceStamps& stamps) {
  const AuthorOrder& order = run.Order;
  Log log = StartLog(order.LogFile);
  AuthorOutcome outcome = WriteDisc({run.Plan, order, folder, run.Ui, log}, run.Result);
  if (outcome == AuthorOutcome::Done && !(SourcesStand(run, stamps) && EnterSums(run, folder))) {
    outcome = AuthorOutcome::Failed;
  }
  if (outcome == AuthorOutcome::Done) {
    run.Ui.Status(CompletedStatus);
  }
  if (order.MustLog && !std::filesystem::exists(order.LogFile)) {
    run.Ui.Tell(MessageOf(message::LogNotWritten, order.LogFile));
  }
  return outcome;
}

bool ReadsBack(const AuthorRun& run, const std::string& folder) {
  if (run.Order.DryRun || !run.Order.ReadBack) {
    return true;
  }
  run.Ui.Status(ReadingBackStatus);
  return TellAll(run, ReadBack(folder, run.Ui));
}

// What is wrong keeps the disc from its place; notes do not.
bool IsProven(const AuthorRun& run, const std::string& folder) {
  if (run.Order.DryRun || !run.Order.Verify) {
    return true;
  }
  run.Ui.Status(VerifyingStatus);
  const VerifyResult result = VerifyDisc(folder, run.Ui);
  for (const DiscFinding& finding : result.Findings.All()) {
    run.Ui.Tell(MessageOfFinding(finding, folder));
  }
  return !result.Findings.HasFaults() && !result.Stopped;
}

bool Place(const AuthorRun& run, Target& target) {
  return !target.Aside || target.Aside->Place(run.Ui, run.Order.Sync);
}

AuthorOutcome MakeDisc(const AuthorRun& run) {
  const auto freeBytes = FreeBytes(run.Order.Folder);
  run.Result.Begun = AnnouncePlan(run, freeBytes) && HasSpace(run, freeBytes) && WarningsAllow(run);
  const SourceStamps stamps(run.Plan);
  run.Result.Begun = run.Result.Begun && KeepsSources(run, stamps);
  auto target = run.Result.Begun ? PrepareFolder(run) : std::nullopt;
  if (!target) {
    return AuthorOutcome::Failed;
  }
  const AuthorOutcome written = WriteFiles(run, target->Folder, stamps);
  if (written != AuthorOutcome::Done) {
    return written;
  }
  if (!ReadsBack(run, target->Folder) || !IsProven(run, target->Folder)) {
    return run.Order.Verify && run.Ui.StopRequested() ? AuthorOutcome::Stopped : AuthorOutcome::Failed;
  }
  const bool placed = WarningsAllow(run) && Place(run, *target);
  return placed ? AuthorOutcome::Done : AuthorOutcome::Failed;
}

}  // namespace

AuthorResult TryOut(const Project& project, const Rules& rules, PictureLoader* pictures, UserInterface& ui) {
  return Author(project, {.Rules = rules, .Pictures = pictures, .DryRun = true, .InPlace = true}, ui);
}

AuthorResult Author(const Project& project, const AuthorOrder& order, UserInterface& ui) {
  MessageRecorder told(ui);
  AuthorResult result;
  const DiscPlan plan = PlanDisc(project, order.Rules, told, order.Pictures);
  result.Ntsc = plan.Ntsc;
  try {
    result.Outcome = MakeDisc({order, plan, told, result});
  } catch (const FileError& error) {
    told.Tell(MessageOf(message::FileFailed, {}, error.OneLine()));
  } catch (const std::filesystem::filesystem_error& error) {
    told.Tell(MessageOf(message::FileFailed, error.path1().string(), error.code().message()));
  } catch (const std::system_error& error) {
    told.Tell(MessageOf(message::SystemRefused, {}, error.code().message()));
  }
  result.Findings = told.Release();
  return result;
}

}  // namespace quorvelant
