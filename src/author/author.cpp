#include "author/author.h"

#include <fmt/format.h>

#include <deque>
#include <filesystem>
#include <optional>

#include "author/fix_up.h"
#include "author/ifo_files.h"
#include "ifo/title_tables.h"
#include "ifo/vts_ifo.h"

namespace quorvelant {
namespace {

constexpr std::string_view TrackListLine = "{} TRACK LIST FOR VTS {}";
constexpr std::string_view MenuVobLine = "WRITING MENU VOBIDS";
constexpr std::string_view TitleVobLine = "WRITING TITLE VOBIDS";
constexpr std::string_view ManagerVobLine = "WRITING VMG VOBIDS";
constexpr std::string_view IfoLine = "WRITING IFO";
constexpr std::string_view MenuStatus = "Generating VTS {:02} LanguageUnits";
constexpr std::string_view TitleStatus = "Generating VTS {:02} Title";
constexpr std::string_view ManagerStatus = "Generating VIDEO_TS LanguageUnits";
constexpr std::string_view VobStatus = "Writing VOBID: {} of {}";

// Ends the run from within; what went wrong is told already.
struct RunEnds {
  AuthorOutcome Outcome;
};

// One run and what it has come to.
struct AuthorRun {
  const DiscPlan& Plan;
  const AuthorOptions& Options;
  UserInterface& Ui;
  Log& RunLog;
  Random Files;
  MuxBuild Build;
  std::deque<DomainRecords> Records;  // a set's two domains, set after set; they keep their place
  std::vector<WrittenSet> Sets;
  AuthorResult Result;

  AuthorRun(const DiscPlan& plan, const AuthorOptions& options, UserInterface& ui, Log& log)
      : Plan(plan),
        Options(options),
        Ui(ui),
        RunLog(log),
        Files(ui),
        Build{.Ui = ui, .RunLog = log, .Files = Files, .Rules = plan.Rules} {
    Files.DimFiles(slot::Last);
    Build.RemoveSeqEnd = options.RemoveSeqEnd;
    Build.DryRun = options.DryRun;
    Build.Pictures = options.Pictures;
    Build.Coded = &plan.Coded;
    Build.SourceBytesTotal = plan.VideoBytes;
  }
  std::string PathOf(std::string_view name) const { return fmt::format("{}/{}", Options.Folder, name); }
};

void TellFindings(AuthorRun& run) {
  for (const Message& finding : run.Plan.Findings) {
    run.Ui.Tell(finding);
  }
  if (run.Plan.HasErrors()) {
    throw RunEnds{AuthorOutcome::Failed};
  }
}

void MakeFolder(const AuthorRun& run) {
  if (!run.Options.DryRun) {
    std::filesystem::create_directories(run.Options.Folder);
  }
}

// What the log and the status line say of a domain, and how its VOB files are named.
struct DomainWords {
  std::string_view ListKind;
  std::string_view LogLine;
  std::string Status;
  VobFiles Vobs;
};

void LogTrackList(AuthorRun& run, const DomainPlan& domain, const DomainWords& words, int entryNumber) {
  run.RunLog.Header(fmt::format(TrackListLine, words.ListKind, entryNumber));
  for (const TrackListRow& row : domain.List) {
    run.RunLog.WriteText(row.TrackName, 1);
  }
  run.RunLog.EndHeader();
}

CarriedStreams StreamsOf(const MuxInput& input) {
  CarriedStreams carried;
  for (const MuxAudioStream& stream : input.Audio) {
    carried.Audio.set(static_cast<std::size_t>(stream.StreamNumber));
  }
  for (const MuxSubStream& stream : input.Subpictures) {
    carried.Subs.set(static_cast<std::size_t>(stream.StreamNumber));
  }
  return carried;
}

void MuxTracks(AuthorRun& run, const DomainPlan& domain, const VobFiles& vobs, DomainRecords& records) {
  VobOutput output(run.Files, {run.PathOf(vobs.Name), vobs.OneFile}, run.Options.DryRun);
  for (std::size_t i = 0; i < domain.Inputs.size(); ++i) {
    run.Ui.Status(fmt::format(VobStatus, i + 1, domain.Inputs.size()));
    const MuxOutcome outcome = MuxTrack(domain.Inputs[i], run.Build, output, records.Vobs);
    if (outcome == MuxOutcome::Stopped || run.Build.StopRequested || run.Ui.StopRequested()) {
      throw RunEnds{AuthorOutcome::Stopped};
    }
    if (outcome == MuxOutcome::Failed) {
      throw RunEnds{AuthorOutcome::Failed};
    }
    records.AddVob(records.Vobs.Vobs.size() - 1, StreamsOf(domain.Inputs[i]));
  }
  output.Finish();
  run.Result.Bytes += std::uint64_t{output.TotalSectors()} * SectorBytes;
}

// The VOBs of one domain; nothing is created for one without tracks.
DomainRecords& WriteDomain(AuthorRun& run, const DomainPlan& domain, const DomainWords& words,
                           int entryNumber) {
  DomainRecords& records = run.Records.emplace_back();
  records.Audio = domain.Audio;
  records.Subs = domain.Subs;
  LogTrackList(run, domain, words, entryNumber);
  run.RunLog.WriteText(words.LogLine);
  run.Ui.Status(words.Status);
  MuxTracks(run, domain, words.Vobs, records);
  return records;
}

void WriteIfo(AuthorRun& run, const std::string& baseName, const Bytes& ifo) {
  if (!run.Options.DryRun) {
    WriteIfoAndBackup(run.PathOf(baseName), ifo, run.Files);
  }
  run.Result.Bytes += 2 * ifo.size();
}

void CollectTitles(AuthorRun& run, const EntryRecords& records, int setNumber) {
  const auto titles = Live(records.Entry.Title);
  const auto chapters = ChaptersOf(records.Entry, records.Title);
  for (std::size_t i = 0; i < titles.size(); ++i) {
    TitleFigures& figures = run.Result.Titles.emplace_back();
    figures.TitleSet = setNumber;
    figures.Title = static_cast<int>(i + 1);
    figures.Name = titles[i]->TitleName;
    figures.Chapters = chapters[i].size();
    figures.Frames = FramesOf(*titles[i], records);
  }
}

void WriteTitleSet(AuthorRun& run, const SetPlan& set, int setNumber) {
  const std::string name = fmt::format("VTS_{:02}", setNumber);
  const DomainRecords& menu = WriteDomain(
      run, set.Menu, {"MENU", MenuVobLine, fmt::format(MenuStatus, setNumber), {name + "_0.VOB", true}},
      set.EntryNumber);
  const DomainRecords& title = WriteDomain(
      run, set.Title, {"TITLE", TitleVobLine, fmt::format(TitleStatus, setNumber), {name}}, set.EntryNumber);
  run.RunLog.WriteText(IfoLine);
  const EntryRecords records{*run.Plan.Disc, *set.Menu.Entry, menu, title, run.Plan.Rules, run.Plan.Ntsc};
  WriteIfo(run, name + "_0", BuildTitleSetIfo(records, run.RunLog));
  CollectTitles(run, records, setNumber);
  run.Sets.push_back({set.Menu.Entry, &menu, &title});
}

void CheckThereAreTitles(AuthorRun& run) {
  if (!run.Plan.HasTitles()) {
    TellError(run.Ui, NoTitleTitle, NoTitleText);
    throw RunEnds{AuthorOutcome::NoTitles};
  }
}

void WriteVideoManager(AuthorRun& run) {
  const SetPlan& manager = run.Plan.Manager;
  const DomainRecords& menu = WriteDomain(
      run, manager.Menu, {"MENU", ManagerVobLine, std::string(ManagerStatus), {"VIDEO_TS.VOB", true}},
      manager.EntryNumber);
  const EntryRecords records{*run.Plan.Disc, *manager.Menu.Entry, menu, menu, run.Plan.Rules, run.Plan.Ntsc};
  WriteIfo(run, "VIDEO_TS", BuildVideoManagerIfo(records, run.Sets, RegionMaskOf(run.Options.Regions)));
}

void FixUpFolder(AuthorRun& run) {
  if (!run.Options.DryRun) {
    FixUp(run.Options.Folder, run.Files);
  }
}

void TellCompletion(AuthorRun& run) {
  run.Ui.Status(CompletedStatus);
  if (run.Options.TellSuccess) {
    run.Ui.Tell({Severity::Information, std::string(SuccessTitle), std::string(SuccessText), {}});
  }
}

void WriteDisc(AuthorRun& run) {
  TellFindings(run);
  MakeFolder(run);
  for (std::size_t i = 0; i < run.Plan.Sets.size(); ++i) {
    WriteTitleSet(run, run.Plan.Sets[i], static_cast<int>(i + 1));
  }
  CheckThereAreTitles(run);
  WriteVideoManager(run);
  FixUpFolder(run);
  TellCompletion(run);
}

}  // namespace

AuthorResult AuthorDisc(const DiscPlan& plan, const AuthorOptions& options, UserInterface& ui, Log& log) {
  AuthorRun run(plan, options, ui, log);
  try {
    WriteDisc(run);
    run.Result.Outcome = AuthorOutcome::Done;
  } catch (const RunEnds& end) {
    run.Result.Outcome = end.Outcome;
  } catch (const FileError& error) {
    TellError(ui, AuthorErrorTitle, error.OneLine());
  } catch (const std::filesystem::filesystem_error& error) {
    TellError(ui, AuthorErrorTitle, error.code().message(), error.path1().string());
  }
  run.Result.Underflows = run.Build.UnderflowCount;
  run.Result.BufferFaults = run.Build.BufferFaultCount;
  return run.Result;
}

}  // namespace quorvelant
