#include "script/build_project.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/random.h"
#include "base/text.h"
#include "disc/audio_format.h"
#include "model/default_structure.h"
#include "model/display_mode.h"
#include "model/keys.h"
#include "model/stream_maps.h"
#include "model/update_my_dvd.h"
#include "model/walk.h"
#include "script/messages.h"
#include "script/script_tracks.h"
#include "script/special_keys.h"
#include "script/values.h"

namespace quorvelant {

namespace {

// All that the stages work on.
struct ProjectBuild {
  ReaderState& State;
  const LoadOptions& Options;
  UserInterface& Ui;
  LoadResult& Result;
  Project& Target;
};

// Calls `visit` with every PGC of the disc, languages before titles.
template <class Visit>
void ForEachPgc(Project& project, Visit visit) {
  for (VTS_P& entry : project.Disc) {
    for (Lang_P& language : entry.Lang) {
      for (PGC_P& pgc : language.PGC) {
        visit(pgc);
      }
    }
    for (Title_P& title : entry.Title) {
      for (PGC_P& pgc : title.PGC) {
        visit(pgc);
      }
    }
  }
}

// --- tracks ---

// Streams of the other dialect take what stands with the title sets and titles.
void CreateStreamIds(ProjectBuild& build) {
  if (!build.State.Traits.IsScenarist) {
    return;
  }
  build.Ui.Status("Creating SubPicture & Audio ID's");
  CarryScriptExtensions(build.Target);
  const SceneIndex scenes = IndexScenes(build.Target.Tracks);
  for (const TitleLanguages& languages : build.State.Languages) {
    CarryScriptLanguages(build.Target.Tracks, scenes, *languages.Title, languages.Streams);
  }
}

void NameTrack(Track& track, std::size_t index) {
  if (track.TrackName.empty()) {
    track.TrackName = fmt::format("Track_{}", index + 1);
  }
  track.VideoFrames = track.FrameCount;
}

// Every track has a first scene, and every scene a name to be used by.
void NameScenes(Track& track, std::size_t index, ReaderState& state) {
  if (track.Scenes.empty()) {
    track.Scenes.emplace_back();
  }
  for (std::size_t i = 0; i < track.Scenes.size(); ++i) {
    Scene& scene = track.Scenes[i];
    if (scene.Name.empty()) {
      scene.Name = fmt::format("{}_Scene{}", track.TrackName, i + 1);
      // Scene names are one of a kind in a project, track names are not.
      while (!state.Scenes.ByName.emplace(scene.Name, ScenePlace{index, i}).second) {
        scene.Name += fmt::format("_{}", index + 1);
      }
    }
  }
}

// By the first file's name, where the script does not say the kind.
void FillFormats(Track& track, const Rules& rules) {
  for (AudioStream& stream : track.AudioStreams) {
    const bool said = rules.OtherDialectInFull && !stream.Format.empty();
    if (!said && !stream.AudioPlays.empty()) {
      std::string format = GetAudioType(stream.AudioPlays.front().File);
      stream.Format = format.empty() ? std::move(stream.Format) : std::move(format);
    }
  }
}

// Times that a clock shows, as frames count. The own dialect marks each by a ";": its writer writes none, so
// that times which are counted stay.
void FollowDropFrames(ProjectBuild& build) {
  constexpr int NtscRate = 30;
  if (!build.Options.Rules.DropFramesCounted) {
    return;
  }
  const bool all = build.State.Traits.IsScenarist;
  for (Track& track : build.Target.Tracks) {
    const bool ntsc = TrackFramesPerSecond(build.Target, track) == NtscRate;
    for (SubtitleStream& stream : track.SubStreams) {
      const bool drops = ntsc && stream.DropFrame != 0;
      for (SubPicturePlay& play : stream.SubPlays) {
        for (std::string* time : {&play.Start, &play.Duration}) {
          const bool marked = all ? !time->empty() : Contains(*time, ";");
          *time = drops && marked ? WithoutDropFrames(*time) : ColonTimecode(*time);
        }
      }
    }
  }
}

// Scenes whose track learnt its standard only from its file, or has none and goes by the disc's.
void SetPendingTimes(ProjectBuild& build) {
  for (const PendingTime& pending : build.State.Scenes.PendingTimes) {
    Track& track = build.Target.Tracks[pending.Place.Track];
    track.Scenes[pending.Place.Scene].Frame =
        SceneFrame(pending.Timecode, TrackFramesPerSecond(build.Target, track));
  }
}

// The analysis may take scenes away, so the later ones of a track move up.
void AnalyseChapters(ProjectBuild& build) {
  if (!build.Options.AnalyseChapters) {
    return;
  }
  for (auto& [name, place] : build.State.Scenes.ByName) {
    place.Removed = true;
  }
  for (std::size_t i = 0; i < build.Target.Tracks.Count(); ++i) {
    build.Options.AnalyseChapters(build.Target, i);
    const std::vector<Scene>& scenes = build.Target.Tracks[i].Scenes;
    for (std::size_t scene = 0; scene < scenes.size(); ++scene) {
      build.State.Scenes.ByName[scenes[scene].Name] = {i, scene};
    }
  }
}

void CreateTrackList(ProjectBuild& build) {
  build.Ui.Status("Creating Track List");
  const std::string folder = build.Target.SourceFolder();
  const bool aspectsSaid = build.Options.Rules.OtherDialectInFull || !build.State.Traits.IsScenarist;
  for (std::size_t i = 0; i < build.Target.Tracks.Count(); ++i) {
    Track& track = build.Target.Tracks[i];
    NameTrack(track, i);
    NameScenes(track, i, build.State);
    FillFormats(track, build.Options.Rules);
    if (build.Options.Scanner != nullptr) {
      ScanTrack(track, *build.Options.Scanner, folder, aspectsSaid);
    }
    FollowDisplayMode(track, build.Options.Rules);
  }
  SetPendingTimes(build);
  AnalyseChapters(build);
}

// --- layout ---

void CreateCell(ProjectBuild& build, const PGC_P& pgc, const PG_P& program, std::int32_t number,
                Cell_P& cell) {
  const auto found = build.State.Scenes.ByName.find(cell.SceneUsed);
  const bool known = found != build.State.Scenes.ByName.end();
  if (!known) {
    build.Result.Notes.push_back(MessageOf(message::SceneUnknown, cell.Key, cell.SceneUsed));
  }
  if (!known || found->second.Removed) {
    cell.EnableSeamlessFlag = cell.Seamless;
    return;
  }
  const ScenePlace place = found->second;
  // A still track brings a still time of its own; the script's stands.
  const std::int32_t stillTime = cell.StillTime;
  UpdateMyDVD(build.Target, {.Key = pgc.Key + program.Key.substr(pgc.Key.size()),
                             .AddCell = true,
                             .TrackName = build.Target.Tracks[place.Track].TrackName,
                             .Segment = static_cast<std::int32_t>(place.Track),
                             .ReNameOnly = true,
                             .Scene = static_cast<std::int32_t>(place.Scene),
                             .Seamless = cell.Seamless,
                             .NewName = {},
                             .CellCounter = number,
                             .KeepName = true});
  cell.StillTime = stillTime;
  cell.iStill = stillTime;
  if (cell.CellName.empty()) {
    cell.CellName = fmt::format("Cell_{} ->{}", number, cell.SceneUsed);
  }
}

void CreateCells(ProjectBuild& build) {
  ForEachPgc(build.Target, [&build](PGC_P& pgc) {
    for (PG_P& program : pgc.PG) {
      std::int32_t number = 0;
      for (Cell_P& cell : program.Cell) {
        CreateCell(build, pgc, program, ++number, cell);
      }
    }
  });
}

// Whether the tracks that cells use are of one standard; a track whose standard is unknown fits any.
bool OneStandard(const Project& project) {
  const std::string* first = nullptr;
  for (const Track& track : project.Tracks) {
    if (!track.UsedInStructure || track.Standard.empty()) {
      continue;
    }
    if (first == nullptr) {
      first = &track.Standard;
    } else if (*first != track.Standard) {
      return false;
    }
  }
  return true;
}

bool CreateLayout(ProjectBuild& build) {
  build.Ui.Status("Creating DVD Layout");
  CreateCells(build);
  if (!build.Options.AnalyseChapters) {  // which has moved them
    SetPendingTimes(build);              // cells bring the disc its standard
  }
  FollowDropFrames(build);
  if (OneStandard(build.Target)) {
    return true;
  }
  std::string script = build.Target.ScriptFile;
  MakeDefaultStructure(build.Target);
  CheckCommands(build.Target, build.Options.Rules);
  build.Target.ScriptFile = std::move(script);
  build.Ui.Status("Import Failed");
  build.Result.Failure = MessageOf(message::StandardsMixed, build.Target.ScriptFile);
  build.Ui.Tell(build.Result.Failure);
  return false;
}

// --- the rest ---

void CreatePaletteList(ProjectBuild& build) {
  build.Ui.Status("Creating Palette List");
  ForEachPgc(build.Target, [&build](PGC_P& pgc) {
    if (pgc.PaletteName == DefaultPalette || build.Target.Palettes.Item(pgc.PaletteName) != nullptr) {
      return;
    }
    if (!pgc.PaletteName.empty()) {
      const bool hasDefault = build.Target.Palettes.Item(std::string(DefaultPalette)) != nullptr;
      build.Result.Notes.push_back(MessageOf(message::PaletteUnknown, pgc.Key,
                                             hasDefault ? "\"Default\" is used" : "it has none",
                                             pgc.PaletteName));
    }
    pgc.PaletteName = DefaultPalette;
  });
}

// Calls `visit` with every command of the project.
template <class Visit>
void ForEachCommand(Project& project, Visit visit) {
  const auto visitPgc = [&visit](PGC_P& pgc) {
    for (CommandList* list : {&pgc.PreCommands, &pgc.PostCommands, &pgc.CellCommands}) {
      std::for_each(list->begin(), list->end(), visit);
    }
    for (PG_P& program : pgc.PG) {
      for (Cell_P& cell : program.Cell) {
        for (ButtonCommands_P& entry : cell.ButtonCommands) {
          std::for_each(entry.Commands.begin(), entry.Commands.end(), visit);
        }
      }
    }
  };
  visitPgc(project.FirstPlay);
  ForEachPgc(project, visitPgc);
}

// A command that brings a stored target comes to name it, and the text alone is kept: what is saved loads to
// the same bytes.
void FollowStoredTargets(ProjectBuild& build, const ResolveOptions& options) {
  NameIndex names(build.Target, build.Options.Rules);
  ForEachCommand(build.Target, [&](VMICommand_P& command) {
    if (command.To_Action.empty()) {
      return;
    }
    ResolveCommand(command, names, options);
    if (!command.CommandHex.empty()) {
      command.To_Action.clear();
      command.CommandHex.clear();
    }
  });
}

void CreateCommands(ProjectBuild& build) {
  build.Ui.Status("Creating Command Structure");
  ForEachPgc(build.Target, [](PGC_P& pgc) {
    for (Cell_P* cell : AllCells(pgc)) {
      KeyButtons(*cell);
    }
  });
  const ResolveOptions options{.Numbers = NumbersOf(build.State.Traits.IsScenarist)};
  if (build.State.Traits.TargetsStored) {
    FollowStoredTargets(build, options);
  }
  build.Result.Commands = CheckCommands(build.Target, build.Options.Rules, options);
  if (!build.Result.Commands.Errors.empty()) {
    build.Target.ScriptHadCommandErrors = true;
    build.Ui.Status("Import Failed");
    build.Ui.Tell(MessageOf(message::CommandErrorsNoted, build.Target.ScriptFile));
  }
}

void LockStreams(ProjectBuild& build) {
  if (!build.State.Traits.StreamNumbersGiven) {
    return;
  }
  for (Track& track : build.Target.Tracks) {
    track.IDsLocked = true;
  }
}

}  // namespace

void ScanTrack(Track& track, const SourceScanner& scanner, const std::string& folder, bool aspectSaid) {
  if (!track.VideoPlays.empty() && !track.VideoPlays.front().File.empty()) {
    if (const auto seen = scanner.Video(SystemPath(track.VideoPlays.front().File, folder))) {
      // What the script says stands; the file fills in the rest.
      track.Standard = track.Standard.empty() ? seen->Standard : track.Standard;
      const bool said = aspectSaid && seen->IsPicture && track.Aspect == "16:9";
      track.Aspect = said || seen->Aspect.empty() ? track.Aspect : seen->Aspect;
      track.Resolution = seen->Resolution;
      track.Coding = seen->Coding;
    }
  }
  for (AudioStream& stream : track.AudioStreams) {
    const std::string_view file =
        stream.AudioPlays.empty() ? "" : std::string_view(stream.AudioPlays.front().File);
    const auto traits = file.empty() ? std::nullopt : scanner.Audio(SystemPath(file, folder), stream.Format);
    stream.Traits = traits.value_or(AudioTraits{});
  }
}

bool BuildProject(ReaderState& state, const LoadOptions& options, UserInterface& ui, LoadResult& result) {
  ProjectBuild build{state, options, ui, result, state.Target};
  CreateStreamIds(build);
  FillStreamDefaults(build.Target.Tracks);
  CreateTrackList(build);
  if (!CreateLayout(build)) {
    return false;
  }
  CreatePaletteList(build);
  CreateCommands(build);
  LockStreams(build);
  ui.Status("Import Complete");
  return true;
}

}  // namespace quorvelant
