#include "author/author.h"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "author/disc_folder.h"
#include "author/disc_size.h"
#include "author/fix_up.h"
#include "author/folder_lock.h"
#include "author/message_recorder.h"
#include "author/messages.h"
#include "author/output_folder.h"
#include "author/size_text.h"
#include "author/source_stamps.h"
#include "author/write_disc.h"
#include "base/log.h"
#include "base/message_error.h"
#include "base/random.h"
#include "check/navigation_check.h"
#include "verify/named_files.h"
#include "verify/nav_of_disc.h"
#include "verify/read_back.h"
#include "verify/verify_disc.h"

namespace quorvelant {
namespace {

// Of a folder that goes once its image stands: its name beside the image's.
constexpr std::string_view FolderOfImageSuffix = ".VIDEO_TS";

struct AuthorRun {
  const AuthorOrder& Order;
  const DiscPlan& Plan;
  MessageRecorder& Ui;
  AuthorResult& Result;
  bool KeepsFolder = true;  // and does not want an image alone

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

// The image is a second disc where it lies beside the folder.
std::uint64_t CopiesBeside(const AuthorRun& run) {
  return !run.KeepsFolder || (run.Order.Image && SharesDisk(run.Order.Folder, run.Order.Image->Path)) ? 2 : 1;
}

// Surely too little below the size of the sources; above it the estimate may be wrong.
bool HasSpace(const AuthorRun& run, std::optional<std::uint64_t> freeBytes) {
  const std::uint64_t copies = CopiesBeside(run);
  const std::uint64_t needed = copies * run.Plan.NeededBytes();
  if (run.Order.InPlace || !freeBytes || *freeBytes >= needed) {
    return true;
  }
  const bool sure = *freeBytes < copies * (run.Plan.VideoBytes + run.Plan.AudioBytes) && !run.Order.DryRun;
  run.Ui.Tell(MessageOf(sure ? message::SpaceTooLittle : message::SpaceDoubtful, run.Order.Folder,
                        SizeText(needed), SizeText(*freeBytes)));
  return !sure;
}

bool WarningsAllow(const AuthorRun& run) {
  const bool forbid = run.Order.Strict && (run.Order.WarnedBefore || run.Ui.HasWarnings());
  return !forbid || run.Refuse(MessageOf(message::WarningsForbidDisc, {}));
}

bool FitsMedium(const AuthorRun& run) {
  return !run.Order.Image || !IsSurelyTooLarge(run.Plan) ||
         run.Refuse(MessageOf(message::ImageTooLarge, run.Order.Image->Path));
}

// Neither a source nor the disc's own folder is taken for the image's place.
bool ImageStandsFree(const AuthorRun& run, const SourceStamps& stamps) {
  if (!run.Order.Image) {
    return true;
  }
  const std::string& image = run.Order.Image->Path;
  if (stamps.Holds(image)) {
    return run.Refuse(MessageOf(message::ImageIsSource, image));
  }
  const bool within = DestinationPath(image).parent_path() == DestinationPath(run.Order.Folder);
  return !within || run.Refuse(MessageOf(message::ImageInFolder, image));
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
  if (outcome == AuthorOutcome::Done && order.Image && !order.DryRun) {
    MarkLayerBreak(folder, run.Ui);
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

// Tells what the ways through the disc come to. A way that leads nowhere keeps the disc from its place; what
// its project was warned of before does not.
bool LeadsSomewhere(const AuthorRun& run, const std::string& folder, const VerifyResult& disc) {
  if (!disc.HasTables()) {
    return true;
  }
  Findings ways = ByRules(DiscNavigation(SurveyOf(NavOfDisc(disc)), disc.IsOurs), run.Order.Rules);
  for (Message& way : ways) {
    const bool isForced = run.Order.ForceNavigation && IsNavigationError(way);
    way.Level = isForced ? Severity::Warning : way.Level;
    way = WithDisc(std::move(way), folder);
    run.Ui.Tell(way);
  }
  return !HasErrors(ways);
}

// What is wrong keeps the disc from its place; notes do not.
// It is named as it will be.
bool IsProven(const AuthorRun& run, const std::string& folder) {
  if (run.Order.DryRun || !run.Order.Verify || !run.KeepsFolder) {
    return true;
  }
  run.Ui.Status(VerifyingStatus);
  const VerifyResult result = VerifyDisc(folder, run.Ui);
  for (const DiscFinding& finding : result.Findings.All()) {
    run.Ui.Tell(MessageOfFinding(finding, run.Order.Folder));
  }
  return !result.Stopped && LeadsSomewhere(run, run.Order.Folder, result) && !result.Findings.HasFaults();
}

// The image as it lies on the disk, named as it will be. Where its folder was proven, its faults alone are
// told: the notes are those of the folder, and so are the ways.
AuthorOutcome ProveImage(const AuthorRun& run, const ImageFile& image) {
  if (!run.Order.Verify) {
    return AuthorOutcome::Done;
  }
  const std::string& name = run.Order.Image->Path;
  run.Ui.Status(VerifyingStatus);
  const VerifyResult result = VerifyDisc(image.AsidePath(), run.Ui);
  for (const DiscFinding& finding : result.Findings.All()) {
    if (!run.KeepsFolder || finding.Kind->Level != Severity::Information) {
      run.Ui.Tell(MessageOfFinding(finding, name));
    }
  }
  if (result.Stopped) {
    return AuthorOutcome::Stopped;
  }
  const bool leads = run.KeepsFolder || LeadsSomewhere(run, name, result);
  return leads && !result.Findings.HasFaults() ? AuthorOutcome::Done : AuthorOutcome::Failed;
}

bool Place(const AuthorRun& run, Target& target) {
  return !target.Aside || !run.KeepsFolder || target.Aside->Place(run.Ui, run.Order.Sync);
}

// The folder first: it cannot be taken back once it stands, which is told where the image then cannot.
bool PlaceBoth(const AuthorRun& run, Target& target, ImageFile& image) {
  const ImageOrder& order = *run.Order.Image;
  image.Finish(order.Sync);
  if (!Place(run, target)) {
    return false;
  }
  const bool placed = image.Place(order.Replace, order.Sync, run.Ui);
  if (!placed && run.KeepsFolder) {
    run.Ui.Tell(MessageOf(message::FolderWithoutImage, run.Order.Folder));
  }
  return placed;
}

// The image is whole, and proven, before the folder takes its place: one that cannot be made leaves neither.
AuthorOutcome PlaceAll(const AuthorRun& run, Target& target) {
  if (!run.Order.Image || run.Order.DryRun) {
    return WarningsAllow(run) && Place(run, target) ? AuthorOutcome::Done : AuthorOutcome::Failed;
  }
  ImageOrder order = *run.Order.Image;
  order.Folder = target.Folder;
  WrittenImage image = WriteImageAside(order, run.Ui);
  AuthorOutcome outcome = AuthorOutcome::Failed;
  if (image.Result.Outcome == ImageOutcome::Stopped) {
    outcome = AuthorOutcome::Stopped;
  } else if (image.Aside) {
    outcome = ProveImage(run, *image.Aside);
  }
  if (outcome == AuthorOutcome::Done && !(WarningsAllow(run) && PlaceBoth(run, target, *image.Aside))) {
    outcome = AuthorOutcome::Failed;
  }
  run.Result.Image = image.Result;
  run.Result.Image.Outcome = outcome == AuthorOutcome::Done      ? ImageOutcome::Done
                             : outcome == AuthorOutcome::Stopped ? ImageOutcome::Stopped
                                                                 : ImageOutcome::Failed;
  return outcome;
}

AuthorOutcome MakeDisc(const AuthorRun& run) {
  const auto freeBytes = FreeBytes(run.Order.Folder);
  run.Result.Begun =
      AnnouncePlan(run, freeBytes) && FitsMedium(run) && HasSpace(run, freeBytes) && WarningsAllow(run);
  const SourceStamps stamps(run.Plan);
  run.Result.Begun = run.Result.Begun && KeepsSources(run, stamps) && ImageStandsFree(run, stamps);
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
  return PlaceAll(run, *target);
}

}  // namespace

AuthorResult TryOut(const Project& project, const Rules& rules, PictureLoader* pictures, UserInterface& ui) {
  return Author(project, {.Rules = rules, .Pictures = pictures, .DryRun = true, .InPlace = true}, ui);
}

AuthorResult Author(const Project& project, const AuthorOrder& order, UserInterface& ui) {
  MessageRecorder told(ui);
  AuthorOrder whole = order;
  const bool keepsFolder = !order.Image || !order.Folder.empty();
  if (!keepsFolder) {
    whole.Folder = order.Image->Path + std::string(FolderOfImageSuffix);
  }
  AuthorResult result;
  const DiscPlan plan = PlanDisc(project, order.Rules, told, order.Pictures);
  result.Ntsc = plan.Ntsc;
  try {
    result.Outcome = MakeDisc({whole, plan, told, result, keepsFolder});
  } catch (const MessageError& error) {
    told.Tell(error.What());
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
