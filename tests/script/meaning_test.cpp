// What a script means, by both sets of rules: a script a row, and what it comes to.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "script/script_reader.h"
#include "support/recording_ui.h"

namespace quorvelant {
namespace {

struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::string Script;  // "|" ends a line
  std::string (*Says)(const Project& project);
  std::string Players;
  std::string Classic;
  bool Rules::*Flag = nullptr;  // where they differ, the one by which they do
};

const SubPicturePlay& FirstPlay(const Project& project) {
  return project.Tracks[0].SubStreams[0].SubPlays[0];
}
std::string Corner(const Project& project) {
  return fmt::format("{},{}", FirstPlay(project).X1, FirstPlay(project).Y1);
}
std::string Start(const Project& project) {
  return FirstPlay(project).Start;
}
std::string Policy(const Project& project) {
  const Title_P& title = *project.Disc.Item(2)->Title.Item(1);
  return fmt::format("{:d}{:d}{:d}", title.AudioAssignments[0], title.AudioAssignments[1],
                     title.SubAssignments[31]);
}
std::string Scheme(const Project& project) {
  const ColorScheme& scheme = project.Tracks[0].HighlightPlays[0].Schemes[0];
  return fmt::format("{} {}", scheme.SelectionColor[0], scheme.ActionContrast[0]);
}
std::string Sound(const Project& project) {
  return project.Tracks[0].AudioStreams[0].Format + project.Tracks[0].AudioStreams[0].Language;
}
std::string MenuLanguage(const Project& project) {
  return project.Disc.Item(2)->Lang.Item(1)->Language;
}
std::string Maps(const Project& project) {
  const PGC_P& chain = *project.Disc.Item(2)->Title.Item(1)->PGC.Item(1);
  return fmt::format("{}{}{}{}", chain.NormalAssignments[3], chain.WideAssignments[3],
                     chain.LetterAssignments[3], chain.PanAssignments[3]);
}
std::string Buttons(const Project& project) {
  const auto& buttons = project.Tracks[0].HighlightPlays[0].Buttons;
  return fmt::format("{}{}", buttons[0].Number, buttons[1].Number);
}

std::string Extension(const Project& project) {
  return project.Tracks[0].AudioStreams[0].Extension;
}
std::string Letterbox(const Project& project) {
  return fmt::format("{:d}", project.Tracks[0].Letter);
}

std::vector<Row> Rows() {
  const std::string title = "Item=VTS|Item=Title|Name=T|Item=PGC|Name=P|";
  const std::string subtitle = "Item=SubPicture|DropFrame=1|Item=SubPicture Play|File=a.bmp|";
  const std::string data = "Object=Data Folder|Item=AC3 Audio|Name=a|File=a.wav|";
  const std::string other = data + "Item=Video Track|Name=V|";
  const std::string quad = "{|Color 1(E2)=7|}|";
  return {
      {"OneStreamSwitchedOff", title + "Audio Custom Policy=Custom|Audio Stream 1=No|", Policy, "101", "000",
       &Rules::UnnamedStreamsAvailable},
      {"OriginBeforeArea", "Item=Track|" + subtitle + "Origin=80,480|DisplayArea=0,2,719,573|", Corner,
       "80,480", "0,2", &Rules::OriginPlacesBitmaps},
      {"AreaBeforeOrigin", "Item=Track|" + subtitle + "DisplayArea=0,2,719,573|Origin=80,480|", Corner,
       "80,480", "80,480"},
      {"AreaAlone", "Item=Track|" + subtitle + "DisplayArea=0,2,719,573|", Corner, "0,2", "0,2"},
      {"DropFrameOfAnOwnScript", "Item=Track|Resolution=NTSC|" + subtitle + "Start=00:01:00;02|", Start,
       "00:01:00:00", "00:01:00:02", &Rules::DropFramesCounted},
      {"DropFrameOfATenthMinute", "Item=Track|Resolution=NTSC|" + subtitle + "Start=00:10:00;00|", Start,
       "00:09:59:12", "00:10:00:00", &Rules::DropFramesCounted},
      {"CountedTimesStay", "Item=Track|Resolution=NTSC|" + subtitle + "Start=00:01:00:02|", Start,
       "00:01:00:02", "00:01:00:02"},
      {"DropFrameBeforeTheStandard", other + subtitle + "Start=00:01:00:02|Resolution=NTSC|", Start,
       "00:01:00:00", "00:01:00:02", &Rules::DropFramesCounted},
      {"DropFrameOfPal", "Item=Track|Resolution=PAL|" + subtitle + "Start=00:01:00;02|", Start, "00:01:00:02",
       "00:01:00:02"},
      {"AllQuadsOfAScheme",
       other + "Item=Highlight Play|Button Color 1=Button Color|{|Selection Color=Selection Color|" + quad +
           "Action Contrast=Action Contrast|" + quad + "}|",
       Scheme, "7 7", "7 0", &Rules::OtherDialectInFull},
      {"KindOfAudioAsItSays", other + "Item=Audio Stream|Item=Audio Play|Name=a|", Sound, "AC3English",
       "PCMEnglish", &Rules::OtherDialectInFull},
      {"BlanksAfterALanguage", "Item=Track|Item=Audio Play List|AudioLanguage=German |", Sound, "German",
       "German "},
      {"BlanksAfterAnExtension", "Item=Track|Item=Audio Play List|AudioExtension=Directors Comments |",
       Extension, "Directors Comments", "Directors Comments ", &Rules::BlanksAroundWords},
      {"LanguageByItsLetters", "Item=Track|Item=Audio Play List|AudioLanguage=de|", Sound, "German", "de",
       &Rules::NamesLanguagesAnyWay},
      {"LanguageInTheOtherDialect", other + "Item=Audio Stream|Language=DEU|Item=Audio Play|Name=a|", Sound,
       "AC3German", "PCMDEU"},
      {"LanguageOfATitle",
       other + "Item=Audio Stream|Item=Audio Play|Name=a|Item=Scene|Name=S|Item=VTS|Item=Title|"
               "Audio Attribute=0|Language=fra|Item=PGC|Item=Program|Item=Cell|UsingScene=S|",
       Sound, "AC3French", "PCMfra"},
      {"MenuLanguageByThreeLetters", "Item=VTS|Item=Language|LU=ger|", MenuLanguage, "de", "ger",
       &Rules::NamesLanguagesAnyWay},
      {"MenuLanguageInTheOtherDialect", data + "Item=VTS|Item=Language|Language Name=ger|", MenuLanguage,
       "de", "ger", &Rules::NamesLanguagesAnyWay},
      {"WideWithoutDisplay", "Item=Track|Aspect=16:9|", Letterbox, "1", "0", &Rules::WideTakesLetterbox},
      {"StreamOfAllDisplays", title + "SubPicture Stream 3 Decodes=5|", Maps, "5555", "5555"},
      {"ButtonsByPlace", "Item=Track|Item=Highlight Play|Item=Button|Name=A|Item=Button|Name=B|", Buttons,
       "12", "12"},
  };
}

class MeaningTest : public testing::TestWithParam<Row> {};

TEST_P(MeaningTest, ByPlayersAndByTradition) {
  std::string script = GetParam().Script;
  std::ranges::replace(script, '|', '\n');
  Rules without = Rules::Players;
  if (GetParam().Flag != nullptr) {
    without.*GetParam().Flag = false;
  }
  const std::string other = GetParam().Flag != nullptr ? GetParam().Classic : GetParam().Players;
  const std::pair<Rules, std::string> cases[] = {
      {Rules::Players, GetParam().Players}, {without, other}, {Rules::Classic, GetParam().Classic}};
  for (const auto& [rules, meaning] : cases) {
    std::istringstream stream(script);
    Project project;
    RecordingUi ui;
    LoadScript(stream, script.size(), "p.qvp", project, {.Rules = rules}, ui);
    EXPECT_EQ(GetParam().Says(project), meaning);
  }
}

INSTANTIATE_TEST_SUITE_P(Scripts, MeaningTest, testing::ValuesIn(Rows()),
                         [](const auto& row) { return row.param.Name; });

}  // namespace
}  // namespace quorvelant
