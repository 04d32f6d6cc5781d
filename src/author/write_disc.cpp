#include "author/write_disc.h"

#include <fmt/format.h>

#include <deque>
#include <string_view>
#include <vector>

#include "author/ifo_files.h"
#include "author/messages.h"
#include "ifo/domain_records.h"
#include "ifo/title_tables.h"
#include "ifo/vmg_ifo.h"
#include "ifo/vts_ifo.h"
#include "mux/mux_track.h"
#include "mux/vob_output.h"

namespace quorvelant {
namespace {

constexpr std::string_view TrackListLine = "{} TRACK LIST FOR VTS {}";
constexpr std::string_view IfoLine = "WRITING IFO";
constexpr std::string_view MenuStatus = "Generating VTS {:02} LanguageUnits";
constexpr std::string_view TitleStatus = "Generating VTS {:02} Title";
constexpr std::string_view ManagerStatus = "Generating VIDEO_TS LanguageUnits";
constexpr std::string_view VobStatus = "Writing VOBID: {} of {}";

// What the log and the status line say of a domain, and how its VOB files are named.
struct DomainWords {
  std::string_view ListKind;
  std::string_view LogLine;
  std::string Status;
  VobFiles Vobs;
};

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

class DiscWriter {
 public:
  DiscWriter(const DiscWriting& writing, AuthorResult& result)
      : plan_(writing.Plan),
        order_(writing.Order),
        folder_(writing.Folder),
        ui_(writing.Ui),
        log_(writing.RunLog),
        result_(result),
        files_(writing.Ui),
        build_{.Ui = writing.Ui, .RunLog = writing.RunLog, .Files = files_, .Rules = writing.Plan.Rules} {
    files_.DimFiles(slot::Last);
    files_.WriteBackEarly(order_.Sync && !order_.InPlace);
    build_.RemoveSeqEnd = order_.RemoveSeqEnd;
    build_.DryRun = order_.DryRun;
    build_.Pictures = order_.Pictures;
    build_.Coded = &plan_.Coded;
    build_.SourceBytesTotal = plan_.VideoBytes;
  }

  AuthorOutcome Write() {
    for (std::size_t i = 0; i < plan_.Sets.size(); ++i) {
      const AuthorOutcome outcome = WriteTitleSet(plan_.Sets[i], static_cast<int>(i + 1));
      if (outcome != AuthorOutcome::Done) {
        return outcome;
      }
    }
    if (!plan_.HasTitles()) {
      ui_.Tell(MessageOf(message::NoTitles, {}));
      return AuthorOutcome::NoTitles;
    }
    return WriteVideoManager();
  }

 private:
  AuthorOutcome WriteTitleSet(const SetPlan& set, int setNumber) {
    const std::string name = fmt::format("VTS_{:02}", setNumber);
    DomainRecords& menu = RecordsOf(set.Menu);
    DomainRecords& title = RecordsOf(set.Title);
    AuthorOutcome outcome = WriteDomain(
        set, set.Menu, menu,
        {"MENU", "WRITING MENU VOBIDS", fmt::format(MenuStatus, setNumber), {name + "_0.VOB", true}});
    if (outcome == AuthorOutcome::Done) {
      outcome = WriteDomain(set, set.Title, title,
                            {"TITLE", "WRITING TITLE VOBIDS", fmt::format(TitleStatus, setNumber), {name}});
    }
    if (outcome != AuthorOutcome::Done) {
      return outcome;
    }
    log_.WriteText(IfoLine);
    const EntryRecords records{*plan_.Disc, *set.Menu.Entry, menu, title, plan_.Rules, plan_.Ntsc};
    WriteIfo(name + "_0", BuildTitleSetIfo(records, log_));
    CollectTitles(records, setNumber);
    sets_.push_back({set.Menu.Entry, &menu, &title});
    return AuthorOutcome::Done;
  }

  AuthorOutcome WriteVideoManager() {
    const SetPlan& manager = plan_.Manager;
    DomainRecords& menu = RecordsOf(manager.Menu);
    const AuthorOutcome outcome =
        WriteDomain(manager, manager.Menu, menu,
                    {"MENU", "WRITING VMG VOBIDS", std::string(ManagerStatus), {"VIDEO_TS.VOB", true}});
    if (outcome != AuthorOutcome::Done) {
      return outcome;
    }
    const EntryRecords records{*plan_.Disc, *manager.Menu.Entry, menu, menu, plan_.Rules, plan_.Ntsc};
    WriteIfo("VIDEO_TS", BuildVideoManagerIfo(records, sets_, RegionMaskOf(order_.Regions)));
    return AuthorOutcome::Done;
  }

  DomainRecords& RecordsOf(const DomainPlan& domain) {
    DomainRecords& records = records_.emplace_back();
    records.Audio = domain.Audio;
    records.Subs = domain.Subs;
    return records;
  }

  // The VOBs of one domain; nothing is created for one without tracks.
  AuthorOutcome WriteDomain(const SetPlan& set, const DomainPlan& domain, DomainRecords& records,
                            const DomainWords& words) {
    log_.Header(fmt::format(TrackListLine, words.ListKind, set.EntryNumber));
    for (const TrackListRow& row : domain.List) {
      log_.WriteText(row.TrackName, 1);
    }
    log_.EndHeader();
    log_.WriteText(words.LogLine);
    ui_.Status(words.Status);
    return MuxTracks(domain, words.Vobs, records);
  }

  AuthorOutcome MuxTracks(const DomainPlan& domain, const VobFiles& vobs, DomainRecords& records) {
    VobOutput output(files_, {PathOf(vobs.Name), vobs.OneFile}, order_.DryRun);
    for (std::size_t i = 0; i < domain.Inputs.size(); ++i) {
      ui_.Status(fmt::format(VobStatus, i + 1, domain.Inputs.size()));
      const MuxOutcome outcome = MuxTrack(domain.Inputs[i], build_, output, records.Vobs);
      result_.Underflows = build_.UnderflowCount;
      result_.BufferFaults = build_.BufferFaultCount;
      if (outcome == MuxOutcome::Stopped || build_.StopRequested || ui_.StopRequested()) {
        return AuthorOutcome::Stopped;
      }
      if (outcome == MuxOutcome::Failed) {
        return AuthorOutcome::Failed;
      }
      records.AddVob(records.Vobs.Vobs.size() - 1, StreamsOf(domain.Inputs[i]));
    }
    output.Finish();
    result_.Bytes += std::uint64_t{output.TotalSectors()} * SectorBytes;
    return AuthorOutcome::Done;
  }

  void WriteIfo(const std::string& baseName, const Bytes& ifo) {
    if (!order_.DryRun) {
      WriteIfoAndBackup(PathOf(baseName), ifo, files_);
    }
    result_.Bytes += 2 * ifo.size();
  }

  void CollectTitles(const EntryRecords& records, int setNumber) {
    const auto titles = Live(records.Entry.Title);
    const auto chapters = ChaptersOf(records.Entry, records.Title);
    for (std::size_t i = 0; i < titles.size(); ++i) {
      result_.Titles.push_back({.TitleSet = setNumber,
                                .Title = static_cast<int>(i + 1),
                                .Name = titles[i]->TitleName,
                                .Chapters = chapters[i].size(),
                                .Frames = FramesOf(*titles[i], records)});
    }
  }

  std::string PathOf(std::string_view name) const { return fmt::format("{}/{}", folder_, name); }

  const DiscPlan& plan_;
  const AuthorOrder& order_;
  std::string folder_;
  UserInterface& ui_;
  Log& log_;
  AuthorResult& result_;
  Random files_;
  MuxBuild build_;
  std::deque<DomainRecords> records_;  // a set's two domains, set after set; they keep their place
  std::vector<WrittenSet> sets_;
};

}  // namespace

AuthorOutcome WriteDisc(const DiscWriting& writing, AuthorResult& result) {
  return DiscWriter(writing, result).Write();
}

}  // namespace quorvelant
