#include "disc_maker.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "analysis/quick_scan.h"
#include "base/timecode.h"
#include "edit/file_scanner.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "picture/bmp.h"
#include "script/script_reader.h"
#include "support/folders.h"
#include "vm/check_commands.h"

namespace quorvelant {
namespace {

PGC_P MenuChain(const std::string& name, const std::string& type, const std::string& command) {
  PGC_P chain;
  chain.PGCName = name;
  chain.MenuType = type;
  AddCommand(chain.PostCommands, "Post", command);
  return chain;
}

Lang_P English(const PGC_P& chain) {
  Lang_P language;
  language.Language = "en";
  language.PGC.Add(chain);
  return language;
}

}  // namespace

DiscMaker::DiscMaker(VideoSample video) : Video(std::move(video)) {
  AddCommand(Disc.FirstPlay.PreCommands, "FirstPGC", "JumpSS TitleMenu");
  VTS_P manager;
  manager.Key = EntryKey(1);
  manager.Lang.Add(English(MenuChain("Top", "TitleMenu", "LinkPGCN Top")));
  Disc.Disc.Add(manager);
}

void DiscMaker::Load(const std::string& script, const std::map<std::string, std::string>& words) {
  const bool pal = Video.Standard == "PAL";
  std::istringstream lines(TempFolder::Read(SourceFile("tests/author/data/" + script)));
  std::string text;
  for (std::string line; std::getline(lines, line); text += line + "\n") {
    if (const auto mark = line.find("@PAL "); mark != std::string::npos) {
      line = pal ? line.substr(mark + 5) : "";
    } else if (const auto value = line.find("=@"); value != std::string::npos) {
      const std::string word = line.substr(value + 2);
      line.replace(value + 1, std::string::npos,
                   words.contains(word) ? words.at(word) : FramesToTimecode(std::stoi(word), pal ? 25 : 30));
    }
  }
  const FileScanner scanner(Rules::Players, Ui);
  EXPECT_TRUE(
      LoadScriptFile(Temp.Write(script, text), Disc, {.Rules = Rules::Players, .Scanner = &scanner}, Ui)
          .MayAuthor());
}

void DiscMaker::Link(const std::string& name, const std::string& sample) const {
  std::filesystem::create_symlink(sample, Temp.Path() / name);
}

void DiscMaker::Paint(const std::string& name, int width, int height, std::uint32_t colour) const {
  Picture picture(width, height);
  for (int i = 0; i < width * height; ++i) {
    const int x = i % width;
    const int y = i / width;
    picture.Set(x, y, (x / 8 + y / 8) % 2 == 0 ? colour : 0xFFFFFF);
  }
  const Bytes bmp = WriteBmp(picture);
  Temp.Write(name, std::string(bmp.begin(), bmp.end()));
}

int DiscMaker::AddTrack(const std::string& name, const std::string& video,
                        const std::vector<std::string>& sounds, const std::vector<std::int32_t>& scenes) {
  Track track;
  track.TrackName = name;
  track.Filled = true;
  track.Standard = Video.Standard;
  track.Aspect = Video.Aspect;
  track.Coding = "MPEG2";
  const int fullHeight = Video.Standard == "PAL" ? 576 : 480;
  track.Resolution = fmt::format("{}x{}", Video.Width, Video.Height != 0 ? Video.Height : fullHeight);
  track.VideoPlays.emplace_back().File = video;
  track.HasAudio = !sounds.empty();
  for (std::size_t i = 0; i < sounds.size(); ++i) {
    AudioStream stream;
    stream.AudioPlays.emplace_back().File = sounds[i];
    stream.StreamNumber = static_cast<std::int32_t>(i);
    stream.Format = sounds[i].ends_with("ac3") ? "AC3" : "PCM";
    const auto sound = QuickScanAudio(sounds[i], stream.Format, Rules::Players, Ui);
    stream.Traits.ChannelCount = sound->ChannelCount();
    stream.Traits.SampleRate = sound->SampleRate;
    stream.Traits.Quantisation = sound->Quantisation;
    stream.Traits.FrameBytes = sound->FrameBytes;
    stream.Traits.BitRate = sound->BitRate;
    track.AudioStreams.push_back(stream);
  }
  for (std::size_t i = 0; i < scenes.size(); ++i) {
    track.Scenes.push_back({fmt::format("{}_Scene{}", name, i + 1), scenes[i], {}});
  }
  Disc.Tracks.Add(track);
  return static_cast<int>(Disc.Tracks.Count()) - 1;
}

VTS_P& DiscMaker::AddSet() {
  const int number = static_cast<int>(Disc.Disc.Count());
  VTS_P set;
  set.Key = EntryKey(number + 1);
  set.Lang.Add(English(MenuChain(fmt::format("Root{}", number), "Root", "JumpSS TitleMenu")));
  return Disc.Disc.Add(set);
}

PGC_P& DiscMaker::AddTitle(VTS_P& set, int track) {
  Title_P title;
  title.TitleName = fmt::format("{}_Title{}", set.Key, set.Title.Count() + 1);
  PGC_P chain;
  chain.PGCName = title.TitleName + "_PGC1";
  AddCommand(chain.PostCommands, "Post", "CallSS RootMenu");
  title.PGC.Add(chain);
  Title_P& added = set.Title.Add(title);
  PlaceAll(*added.PGC.Item(1), track, set.VTSTitleInfo);
  return *added.PGC.Item(1);
}

void DiscMaker::PlaceAll(PGC_P& chain, int track, VideoInfo_P& info) {
  const Track& source = Disc.Tracks[static_cast<std::size_t>(track)];
  info = {source.Standard, source.Resolution, source.Aspect, false, false, source.Coding, true};
  for (std::size_t i = 0; i < source.Scenes.size(); ++i) {
    Cell_P cell;
    cell.SegmentUsed = track;
    cell.TrackName = source.TrackName;
    cell.SceneUsed = source.Scenes[i].Name;
    cell.pScene = static_cast<std::int32_t>(i);
    cell.Seamless = true;
    PG_P program;
    program.PGName = fmt::format("{}_PG{}", chain.PGCName, i + 1);
    program.Cell.Add(cell);
    chain.PG.Add(program);
  }
}

AuthorResult DiscMaker::Author(const Rules& rules, bool dryRun) {
  const CommandCheck commands = CheckCommands(Disc, rules);
  EXPECT_TRUE(commands.Errors.empty()) << commands.Errors.front().Command;
  BmpLoader bitmaps;
  const AuthorOrder order{.Folder = Folder,
                          .Rules = rules,
                          .Regions = AllRegions,
                          .RemoveSeqEnd = true,
                          .Pictures = &bitmaps,
                          .DryRun = dryRun,
                          .InPlace = true,
                          .ReadBack = false};
  return quorvelant::Author(Disc, order, Ui);
}

}  // namespace quorvelant
