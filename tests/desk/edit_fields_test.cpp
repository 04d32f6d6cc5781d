#include "desk/edit_fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "edit/structure.h"
#include "model/keys.h"

namespace quorvelant {
namespace {

using Json = nlohmann::json;

// A project with an element of every kind that has fields: a second PGC to link to, and a 16:9 slideshow with
// streams.
struct FieldSession {
  FieldSession() {
    Project project = Session.Work();
    Track& track = project.Tracks.Add({});
    track.TrackName = "Slides";
    track.TrackType = "SlideShow";
    track.Standard = "PAL";
    track.Aspect = "16:9";
    track.DisplayMode = "Only LetterBox";
    track.VideoPlays.resize(1);
    track.VideoPlays[0].SlideDuration = "00:00:10:00";
    track.AudioStreams.resize(1);
    track.SubStreams.resize(1);
    track.SubStreams[0].DisplayMode = "Wide";
    track.Scenes.resize(1);
    track.Scenes[0].Name = "Slides_Scene1";
    PG_P program;
    program.Key = "VTS1.TITLE1.PGC1.PG1";
    program.PGName = "P";
    Cell_P cell;
    cell.Key = program.Key + ".CELL1";
    cell.CellName = "C";
    program.Cell.Add(cell);
    PGC_P& chain = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
    chain.PG.Add(program);
    VMICommand_P command;
    command.Key = "Cell1";
    command.FullCommand = "NOP";
    chain.CellCommands.resize(2, command);
    project.Palettes.Add({.Key = "Second", .PaletteColors = {}});
    Session.Replace(std::move(project), {});
    static_cast<void>(NewPgc(Session, "VTS1.TITLE1", "More"));
  }
  EditSession Session{Rules::Players};
};

// Another value that the field can have; nothing where it has but one.
Json Another(const ElementField& field) {
  switch (field.Kind) {
    case FieldKind::Text:
      return "other";
    case FieldKind::Time:
      return "00:00:07:00";
    case FieldKind::Number:
      return field.Value == field.Most ? field.Least : field.Most;
    case FieldKind::Flag:
      return !field.Value.get<bool>();
    case FieldKind::Choice:
      return field.Choices.back() == field.Value ? field.Choices.front() : field.Choices.back();
    case FieldKind::Names:
      return field.Value.empty() ? Json{field.Choices[3], field.Choices[20]} : Json::array();
    case FieldKind::Numbers:
    case FieldKind::Flags: {
      Json list = field.Value;
      const Json first = list.front();
      list.front() = field.Kind == FieldKind::Flags ? Json(!first.get<bool>())
                     : first == field.Most          ? Json(field.Least)
                                                    : Json(field.Most);
      return list;
    }
  }
  return {};
}

// Every field takes another value by the name by which it is shown, is shown with it, and goes back.
TEST(ElementFields, AreShownAsTheyAreSetAndUndone) {
  FieldSession film;
  EditSession& session = film.Session;
  std::set<std::string_view> seen;
  std::size_t only = 0;
  for (const std::string key : {"FirstPGC", "VMG1", "VTS1", "VMG1.LANGUAGE1.PGC1", "VTS1.LANGUAGE1.PGC1",
                                "VTS1.TITLE1", "VTS1.TITLE1.PGC1", "VTS1.TITLE1.PGC1.PG1.CELL1", "Track.0",
                                "Track.0.Video1", "Track.0.Audio1", "Track.0.Sub1", "Track.0.Scene1"}) {
    const auto fields = FieldsOf(session.Work(), key);
    EXPECT_FALSE(fields.empty()) << key;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      SCOPED_TRACE(key + " " + std::string(fields[i].Name));
      EXPECT_FALSE(fields[i].Label.empty());
      seen.insert(fields[i].Name);
      const Json wanted = Another(fields[i]);
      if (wanted == fields[i].Value) {
        ++only;  // a menu's map has stream 0 alone, and the links of a lonely menu lead nowhere
      }
      const Json object{{std::string(fields[i].Name), wanted}};
      ASSERT_TRUE(SetFields(session, key, {"fields", object}).IsDone());
      EXPECT_EQ(FieldsOf(session.Work(), key).at(i).Value, wanted);
      if (wanted != fields[i].Value) {
        session.Undo();
      }
      EXPECT_EQ(FieldsOf(session.Work(), key).at(i).Value, fields[i].Value);
    }
  }
  EXPECT_EQ(seen.size(), 37U);
  EXPECT_LE(only, 4U);
}

TEST(ElementFields, OfWhatIsNotThereAreNone) {
  FieldSession film;
  for (const std::string key : {"", "VTS9", "VTS1.TITLE1.PGC9", "VTS1.TITLE1.PGC1.PG1", "VTS1.LANGUAGE1",
                                "Track.9", "Track.0.Sub2", "Track.0.Audios", "Track.0.Scene0"}) {
    EXPECT_TRUE(FieldsOf(film.Session.Work(), key).empty()) << key;
  }
}

}  // namespace
}  // namespace quorvelant
