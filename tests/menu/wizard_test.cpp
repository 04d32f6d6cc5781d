// The wizard: what it makes of names, and that it leaves nothing where it does not get to the end.
#include "menu/wizard.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "check/check.h"
#include "edit/project_file.h"
#include "menu/order_check.h"
#include "model/walk.h"
#include "platform/platform_pictures.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/rules_without.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Passes on to another, but for saving, which fails from a picture on.
class FailingPictures : public PictureService {
 public:
  FailingPictures(PictureService& next, int failing) : next_(next), failing_(failing) {}
  Picture Load(const std::string& path) override { return next_.Load(path); }
  Picture LoadOver(const std::string& path, std::uint32_t background) override {
    return next_.LoadOver(path, background);
  }
  Picture Scale(const Picture& picture, int width, int height, bool smooth) override {
    return next_.Scale(picture, width, height, smooth);
  }
  void Save(const Picture& picture, const std::string& path) override {
    if (++saved_ >= failing_) {
      throw PictureError(Message{Severity::Error, {}, "the disk is full", {}});
    }
    next_.Save(picture, path);
  }
  void DrawText(Picture& picture, int x, int y, std::string_view text, const TextStyle& style) override {
    next_.DrawText(picture, x, y, text, style);
  }
  TextSize MeasureText(std::string_view text, const TextStyle& style) override {
    return next_.MeasureText(text, style);
  }
  std::string MissingLetters(std::string_view text, const TextStyle& style) override {
    return next_.MissingLetters(text, style);
  }
  std::string FontTaken(const std::string& family) override { return next_.FontTaken(family); }

 private:
  PictureService& next_;
  int failing_;
  int saved_ = 0;
};

class Wizard : public testing::Test {
 protected:
  Wizard() {
    Ui.Unattended = true;
    Order.Films.push_back({.Name = "Track_2", .Video = Film, .ChapterSeconds = 1});
    Order.Films.push_back({.Name = "a;b{c}\t", .Video = Film});
    Order.Films.push_back({.Name = "track_2", .Video = Film});
    for (OrderedFilm& film : Order.Films) {
      film.Audio = {{Sound, "", ""}, {Sound, "", ""}};
    }
  }

  Outcome Make(EditSession& session, PictureService& pictures) {
    Made = {};
    PageFolder pages(Temp / "disc.menus", false);
    Outcome outcome = MakeDisc(session, Order, pages, {pictures, Ui}, Made);
    if (outcome.IsDone()) {
      pages.Keep();
    }
    return outcome;
  }
  std::vector<std::string> Left() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Temp.Path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
  static std::vector<std::string> TrackNames(const EditSession& session) {
    std::vector<std::string> names;
    for (const Track* track : Live(session.Work().Tracks)) {
      names.push_back(track->TrackName);
    }
    return names;
  }

  TempFolder Temp;
  RecordingUi Ui;
  const std::string Film = SampleVideo({.Frames = 75});
  const std::string Sound = SampleAc3({.Seconds = 3});
  DiscOrder Order;
  MadeDisc Made;
  std::unique_ptr<PictureService> Pictures = MakePlatformPictures();
};

TEST_F(Wizard, NamesOfFilmsLoadAgain) {
  EditSession session(Rules::Players, {}, IndexStore(true));
  const Outcome outcome = Make(session, *Pictures);
  ASSERT_TRUE(outcome.IsDone()) << outcome.Words.Text;
  EXPECT_THAT(TrackNames(session),
              ElementsAre("Track_2", "a_b_c__", "track_2_2", "Track_4", "Track_5", "Track_6", "Track_7",
                          "Track_8", "Track_9", "Track_10", "Track_11"));
  ASSERT_TRUE(SaveProjectAs(session, Temp / "disc.qvp", Ui));
  EditSession again(Rules::Players);
  ASSERT_TRUE(OpenProjectFile(again, Temp / "disc.qvp", false, Ui));
  EXPECT_EQ(again.File(), Temp / "disc.qvp");
  EXPECT_THAT(CheckProject(again.Work(), Rules::Players), IsEmpty());
  session.Undo();
  EXPECT_THAT(TrackNames(session), IsEmpty());

  const MadePage& page = Made.Pages.front();
  const std::string before = TempFolder::Read(page.NormalFile);
  session.Redo();
  EXPECT_TRUE(RemakePage(session, page, {.Theme = "Daylight"}, {*Pictures, Ui}).IsDone());
  EXPECT_NE(TempFolder::Read(page.NormalFile), before);
}

TEST_F(Wizard, LeavesNothingWhereItEnds) {
  for (int polls = 1, done = 0; done == 0; polls += 3) {
    EditSession session(Rules::Players, {}, IndexStore(true));
    int left = polls;
    Ui.StopWhen = [&left] { return --left <= 0; };
    const Outcome outcome = Make(session, *Pictures);
    done = outcome.IsDone() ? 1 : 0;
    EXPECT_EQ(outcome.Words.Text, "");
    EXPECT_EQ(session.IsUnsaved(), outcome.IsDone());
    EXPECT_EQ(Left().size(), outcome.IsDone() ? 1U : 0U) << "stopped at " << polls;
  }
  std::filesystem::remove_all(Temp / "disc.menus");
  Ui.StopWhen = {};
  for (const int failing : {1, 2, 9}) {
    EditSession session(Rules::Players, {}, IndexStore(true));
    FailingPictures pictures(*Pictures, failing);
    EXPECT_EQ(Make(session, pictures).Words.Text, "the disk is full");
    EXPECT_FALSE(session.IsUnsaved());
    EXPECT_THAT(Left(), IsEmpty());
  }
}

// Letters of fixed places have the size of the font that a page is painted with again.
TEST_F(Wizard, RemakesAPageWithAnotherSize) {
  EditSession session(Rules::Classic, {}, IndexStore(true));
  Order.Films.resize(1);
  Order.Look.Theme = "Midnight";
  ASSERT_TRUE(Make(session, *Pictures).IsDone());
  const MadePage& page = Made.Pages.back();
  const std::string normal = TempFolder::Read(page.NormalFile);
  const std::string sublayer = TempFolder::Read(page.SublayerFile);
  MenuLook larger{.Theme = "Midnight"};
  for (const bool isLarger : {false, true}) {
    larger.Fonts[static_cast<std::size_t>(FontSlot::Item)].PixelHeight = isLarger ? 44 : 0;
    EXPECT_TRUE(RemakePage(session, page, larger, {*Pictures, Ui}).IsDone());
    EXPECT_EQ(TempFolder::Read(page.NormalFile) != normal, isLarger);
    EXPECT_EQ(TempFolder::Read(page.SublayerFile) != sublayer, isLarger);
  }
}

// What the traditional wizard makes of films that nothing is told of.
TEST_F(Wizard, HabitsOfTheTraditionalOne) {
  const std::string bitmap = "SP_NUMBER\n1\t00:00:00:10\t00:00:01:00\ta.bmp\n";
  Pictures->Save(Picture(720, 576), Temp / "a.bmp");
  Order.Films.resize(1);
  Order.Films[0].Name.clear();
  Order.Films[0].Subtitles = {{Temp.Write("a.sst", "Palette entries\nRGB1 (1,2,3)\n" + bitmap), "", ""}};
  EditSession session(PlayersWithout(&Rules::WizardTakesAllStreams), {}, IndexStore(true));
  const Outcome outcome = Make(session, *Pictures);
  ASSERT_TRUE(outcome.IsDone()) << outcome.Words.Text;
  const Track& film = session.Work().Tracks[0];
  EXPECT_EQ(film.TrackName, "Track_1");
  EXPECT_EQ(film.AudioStreams[0].Language + film.AudioStreams[1].Language, "EnglishSpanish");
  std::vector<std::string> palettes;
  for (const Palette_P* palette : Live(session.Work().Palettes)) {
    palettes.push_back(palette->Name());
  }
  EXPECT_THAT(palettes, testing::IsSupersetOf({"Subtitle Palette 1", "Subtitle Outline Palette 1"}));

  Order.Films[0].Subtitles.resize(3, Order.Films[0].Subtitles[0]);
  for (const Rules& rules : {session.RulesInForce(), Rules::Players}) {
    EXPECT_EQ(JudgeOrder(Order, rules, *Pictures, Ui).size(), rules.WizardTakesAllStreams ? 0U : 1U);
  }
}

}  // namespace
}  // namespace quorvelant
