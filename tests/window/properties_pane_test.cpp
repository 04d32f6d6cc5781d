#include "window/properties_pane.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QSpinBox>
#include <QTextDocument>
#include <QToolButton>

#include "desk/edit_fields.h"
#include "edit/removal.h"
#include "edit/structure.h"
#include "model/keys.h"
#include "pane_bench.h"
#include "window/buttons_pane.h"
#include "window/chapters_pane.h"
#include "window/color_line.h"
#include "window/commands_pane.h"
#include "window/palette_editor.h"
#include "window/subtitles_pane.h"

namespace quorvelant {
namespace {

// A slideshow with streams, a second PGC to link to and a second palette.
struct PropertiesBench : PaneBench {
  PropertiesBench() {
    Project project = Doc.Work();
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
    project.Palettes.Add({.Key = "Second", .PaletteColors = {}});
    Doc.Session().Replace(std::move(project), {});
    EXPECT_TRUE(NewPgc(Doc.Session(), "VTS1.TITLE1", "More").IsDone());
    Pane = &Open<PropertiesPane>();
  }
  [[nodiscard]] QWidget* Control(std::string_view field) const {
    return Pane->findChild<QWidget*>(QString::fromUtf8(field.data(), static_cast<int>(field.size())));
  }
  [[nodiscard]] nlohmann::json Value(const std::string& key, std::size_t field) const {
    return FieldsOf(Doc.Work(), key).at(field).Value;
  }
  PropertiesPane* Pane = nullptr;
};

// Gives a control another value as a user would.
void Change(QWidget& control) {
  control.setFocus();
  if (auto* const line = qobject_cast<QLineEdit*>(&control)) {
    const bool isTime = line->text().contains(u':');
    line->selectAll();
    QTest::keyClicks(line, isTime ? "00:00:07:00" : "7 6");
    QTest::keyClick(line, Qt::Key_Return);
  } else if (auto* const number = qobject_cast<QSpinBox*>(&control)) {
    QTest::keyClick(number, number->value() == number->maximum() ? Qt::Key_Down : Qt::Key_Up);
  } else if (auto* const flag = qobject_cast<QCheckBox*>(&control)) {
    QTest::keyClick(flag, Qt::Key_Space);
  } else if (auto* const choice = qobject_cast<QComboBox*>(&control)) {
    QTest::keyClick(choice, choice->currentIndex() == choice->count() - 1 ? Qt::Key_Up : Qt::Key_Down);
  } else if (auto* const list = qobject_cast<QListWidget*>(&control)) {
    list->setCurrentRow(2);
    QTest::keyClick(list, Qt::Key_Space);
  }
}

TEST(PropertiesPane, EveryFieldIsChangedByKeysAndUndone) {
  PropertiesBench bench;
  std::size_t changed = 0;
  for (const std::string key :
       {"FirstPGC", "VTS1", "VTS1.LANGUAGE1.PGC1", "VTS1.TITLE1", "VTS1.TITLE1.PGC1", "Track.0",
        "Track.0.Video1", "Track.0.Audio1", "Track.0.Sub1", "Track.0.Scene1"}) {
    bench.Chosen.Choose(key);
    const auto fields = FieldsOf(bench.Doc.Work(), key);
    for (std::size_t i = 0; i < fields.size(); ++i) {
      SCOPED_TRACE(key + " " + std::string(fields[i].Name));
      QWidget* const control = bench.Control(fields[i].Name);
      ASSERT_NE(control, nullptr);
      EXPECT_EQ(control->accessibleName().toStdString(), fields[i].Label);
      const bool isAlone =
          fields[i].Choices.size() == 1 ||
          (fields[i].Kind == FieldKind::Numbers && fields[i].Value.size() == 1 && fields[i].Most == 0);
      Change(*control);
      if (isAlone) {
        continue;
      }
      ++changed;
      EXPECT_NE(bench.Value(key, i), fields[i].Value);
      EXPECT_EQ(bench.Control(fields[i].Name), control);  // the form stays
      bench.Doc.Undo();
      EXPECT_EQ(bench.Value(key, i), fields[i].Value);
    }
  }
  EXPECT_GE(changed, 35U);
  EXPECT_EQ(bench.Told, "");
}

TEST(PropertiesPane, WhatIsRefusedGivesWayToWhatStands) {
  const struct {
    const char* Key;
    const char* Field;
    const char* Text;
    const char* Told;
  } cases[] = {
      {"VTS1.TITLE1.PGC1", "audioMap", "0 1 9", "edit-field-unfit"},
      {"VTS1.TITLE1.PGC1", "audioMap", "0 x", "edit-field-unfit"},
      {"VTS1.TITLE1.PGC1", "wideMap",
       "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 28 "
       "29 30 31 0 0",
       "edit-list-unfit"},
      {"Track.0.Video1", "duration", "soon", "edit-field-unfit"},
      {"VTS1.TITLE1.PGC1", "name", "More", "name-in-use"},
      {"VTS1.TITLE1", "name", "", "name-empty"},
      {"Track.0", "name", "a;b", "track-name-unfit"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Text);
    PropertiesBench bench;
    bench.Chosen.Choose(test.Key);
    auto* const line = qobject_cast<QLineEdit*>(bench.Control(test.Field));
    ASSERT_NE(line, nullptr);
    const QString before = line->text();
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, test.Text);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_FALSE(bench.Told.empty());
    if (std::string_view(test.Field) != "name") {
      EXPECT_EQ(bench.Told, test.Told);
    }
    EXPECT_EQ(line->text(), before);
    EXPECT_FALSE(bench.Doc.Session().CanUndo() && bench.Doc.Session().UndoWords() != "New PGC");
  }
}

TEST(PropertiesPane, NamesAreGivenAndWhatGoesLeavesTheForm) {
  PropertiesBench bench;
  bench.Chosen.Choose("VTS1.TITLE1.PGC2");
  auto* const line = qobject_cast<QLineEdit*>(bench.Control("name"));
  line->selectAll();
  QTest::keyClicks(line, "Extras\r");
  EXPECT_EQ(FindPgc(bench.Doc.Work().Disc, "VTS1.TITLE1.PGC2")->PGCName, "Extras");
  bench.Doc.Undo();
  EXPECT_EQ(line->text(), "More");
  bench.Doc.Undo();  // the PGC is gone
  EXPECT_EQ(bench.Control("palette"), nullptr);
}

// A name is shown letter by letter and from its beginning, and lists stand whole.
TEST(PropertiesPane, ShowsNamesAndListsWhole) {
  PropertiesBench bench;
  const std::string name = "<b>A</b> " + std::string(200, 'x');
  EXPECT_TRUE(Rename(bench.Doc.Session(), "VTS1.TITLE1.PGC2", name).IsDone());
  bench.Chosen.Choose("VTS1.TITLE1.PGC2");
  bool isThere = false;
  for (const QLabel* label : bench.Pane->findChildren<QLabel*>()) {
    isThere = isThere || label->text().toStdString() == name;
    EXPECT_TRUE(label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()));
  }
  EXPECT_TRUE(isThere);
  auto* const line = qobject_cast<QLineEdit*>(bench.Control("name"));
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->cursorPosition(), 0);
  line->setFocus();
  line->end(false);
  line->clearFocus();
  EXPECT_EQ(line->cursorPosition(), 0);
  const auto lists = bench.Pane->findChildren<QListWidget*>();
  EXPECT_FALSE(lists.isEmpty());
  for (const QListWidget* list : lists) {
    EXPECT_GE(list->viewport()->height(), list->visualItemRect(list->item(list->count() - 1)).bottom() + 1);
  }
}

TEST(PropertiesPane, PalettesAreMadeAndColouredByKeys) {
  PropertiesBench bench;
  auto& editor = *bench.Pane->findChild<PaletteEditor*>();
  auto& palettes = *editor.findChild<QComboBox*>();
  auto& color = *editor.findChild<ColorLine*>();
  bench.Chosen.Choose("VTS1.TITLE1.PGC1");
  EXPECT_EQ(palettes.currentText(), "Default");  // that of the PGC
  bench.Answers.Texts = {"Second", "Mine"};
  bench.Press(ActionId::NewPalette);
  EXPECT_EQ(bench.Told, "palette-name-taken");
  EXPECT_EQ(palettes.currentText(), "Mine");
  auto* const swatch = editor.findChildren<QToolButton*>().at(4);  // the first makes palettes
  swatch->setFocus();
  QTest::keyClick(swatch, Qt::Key_Space);
  color.selectAll();
  QTest::keyClicks(&color, "#102030\r");
  const auto colors = [&bench] { return bench.Doc.Work().Palettes.Item(3)->PaletteColors; };
  EXPECT_EQ(std::ranges::count(colors(), Color{0x302010}), 1);
  const QString held = color.text();
  color.selectAll();
  QTest::keyClicks(&color, "red\r");
  EXPECT_EQ(color.text(), held);
  EXPECT_THAT(bench.Told, testing::EndsWith("color-unfit"));
  bench.Answers.Texts = {std::nullopt};
  bench.Press(ActionId::NewPalette);
  EXPECT_EQ(bench.Doc.Work().Palettes.Count(), 3U);
}

// Whoever hears the window instead of seeing it knows each control.
TEST(TablePanes, EveryControlHasAName) {
  PropertiesBench bench;
  bench.Open<SubtitlesPane>();
  bench.Open<ButtonsPane>();
  bench.Open<ChaptersPane>();
  bench.Open<CommandsPane>();
  bench.Chosen.Choose("VTS1.TITLE1.PGC1");
  for (QWidget* control : bench.Host.findChildren<QWidget*>()) {
    const auto* const button = qobject_cast<QAbstractButton*>(control);
    const bool isOwn = control->window() == &bench.Host && !control->objectName().startsWith("qt_");
    if (isOwn && (control->focusPolicy() & Qt::TabFocus) != 0) {
      EXPECT_FALSE(control->accessibleName().isEmpty() && (button == nullptr || button->text().isEmpty()))
          << control->metaObject()->className() << " in "
          << control->parentWidget()->metaObject()->className();
    }
  }
}

}  // namespace
}  // namespace quorvelant
