#include "disc_maker.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "base/timecode.h"
#include "edit/file_scanner.h"
#include "picture/bmp.h"
#include "script/script_reader.h"
#include "support/folders.h"
#include "vm/check_commands.h"

namespace quorvelant {

std::string DiscMaker::Expanded(const std::string& text, const Words& words) const {
  std::istringstream lines(text);
  std::string expanded;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t mark = std::min(line.find('@'), line.size());
    const std::string word = line.substr(std::min(mark + 1, line.size()));
    expanded += line.substr(0, mark);
    if (const auto given = words.find(word); given != words.end()) {
      expanded += Expanded(given->second, words);
    } else if (word.starts_with("PAL ")) {
      expanded += Video.Standard == "PAL" ? word.substr(4) : "";
    } else if (!word.empty()) {
      expanded += FramesToTimecode(std::stoi(word), FramesPerSecond(Video.Standard));
    }
    expanded += "\n";
  }
  return expanded;
}

void DiscMaker::Load(const std::string& script, const Words& words) {
  const std::string text = Expanded(TempFolder::Read(SourceFile("tests/author/data/" + script)), words);
  const FileScanner scanner(Rules::Players, Ui);
  const LoadOptions options{.Rules = Rules::Players, .Scanner = &scanner};
  EXPECT_TRUE(LoadScriptFile(Temp.Write(script, text), Disc, options, Ui).MayAuthor());
}

void DiscMaker::LoadSmall(double seconds, const std::string& sound) {
  Link("film.m2v", SampleVideo(Video));
  Link("film." + sound, sound == "wav" ? SampleWav({.Seconds = seconds}) : SampleAc3({.Seconds = seconds}));
  Load("small.qvp", {{"SOUND", sound}});
}

void DiscMaker::LoadShown(const std::string& displayMode) {
  Link("film.m2v", SampleVideo(Video));
  const int height = Video.Standard == "PAL" ? 576 : 480;
  Link("frame.m2v", SampleVideo({.Standard = Video.Standard, .Aspect = Video.Aspect, .Frames = 1}));
  Link("film.ac3", SampleAc3({.Seconds = 6}));
  Link("menu.ac3", SampleAc3({.Seconds = 3}));
  Link("film.wav", SampleWav({.Seconds = 3.5}));
  Paint("words.bmp", 400, 250, 0x000000);
  Paint("red.bmp", 360, height / 2, 0xA02040);
  for (const auto& [name, colour] : {std::pair{"blue.bmp", 0x4060A0U},
                                     {"green.bmp", 0x208040U},
                                     {"brown.bmp", 0x805020U},
                                     {"navy.bmp", 0x202080U},
                                     {"purple.bmp", 0x602060U}}) {
    Paint(name, 720, height, colour);
  }
  Load("shown.qvp", {{"DISPLAY", displayMode}});
  for (Track& track : Disc.Tracks) {  // a script has no aspect of bitmaps
    track.Aspect = Video.Aspect;
  }
  for (VTS_P& set : Disc.Disc) {
    set.VTSTitleInfo.Aspect = set.VTSMenuInfo.Aspect = Video.Aspect;
  }
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
  Temp.Write(name, WriteBmp(picture));
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

std::map<std::string, std::string> DiscMaker::Files() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(Folder)) {
    files[entry.path().filename().string()] = TempFolder::Read(entry.path());
  }
  return files;
}

}  // namespace quorvelant
