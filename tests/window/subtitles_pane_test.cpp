#include "window/subtitles_pane.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QPushButton>
#include <QSignalSpy>
#include <filesystem>

#include "base/timecode.h"
#include "pane_bench.h"
#include "support/folders.h"
#include "support/media.h"
#include "support/temp_folder.h"
#include "window/cell_table.h"
#include "window/color_line.h"

namespace quorvelant {
namespace {

// A film of 40 s with a stream of subtitles from 4 to 6, 8 to 10 and 12 to 14 s, whose bitmap is there, and
// buttons from 30 s on.
Project FilmWithSubtitles() {
  Project project;
  Track& track = project.Tracks.Add({});
  track.TrackName = "Film";
  track.Standard = "PAL";
  track.Aspect = "4:3";
  track.VideoFrames = 1000;
  track.Scenes.resize(1);
  SubtitleStream& stream = track.SubStreams.emplace_back();
  stream.DisplayMode = "Normal";
  for (const char* second : {"04", "08", "12"}) {
    SubPicturePlay& entry = stream.SubPlays.emplace_back();
    entry.Start = std::string("00:00:") + second + ":00";
    entry.Duration = "00:00:02:00";
    entry.File = SourceFile("examples/media/en1.png");
  }
  HighlightPlay& set = track.HighlightPlays.emplace_back();
  set.StartTimeToVideo = "00:00:12:00";
  set.Duration = "00:00:10:00";
  set.Buttons.resize(1);
  project.Palettes.Add({.Key = "Default", .PaletteColors = {}});
  return project;
}

struct SubtitlesBench : PaneBench {
  SubtitlesBench() {
    Doc.Session().Replace(FilmWithSubtitles(), {});
    Pane = &Open<SubtitlesPane>();
    Table = Pane->findChild<CellTable*>();
    new QAbstractItemModelTester(Table->model(), QAbstractItemModelTester::FailureReportingMode::Fatal,
                                 Table);
    Chosen.Choose("Track.0.Sub1");
  }
  [[nodiscard]] std::string Times() const {
    std::string times;
    for (int row = 0; row < Table->model()->rowCount(); ++row) {
      for (const int column : {SubtitleModel::Start, SubtitleModel::End}) {
        times += Table->model()->index(row, column).data().toString().mid(6).toStdString() +
                 (column == SubtitleModel::Start ? "-" : " ");
      }
    }
    return times;
  }
  SubtitlesPane* Pane = nullptr;
  CellTable* Table = nullptr;
};

constexpr const char* AsLoaded = "04:00-06:00 08:00-10:00 12:00-14:00 ";

TEST(SubtitlesPane, CellsTakeTimesOrSayAtTheirPlaceWhyNot) {
  const struct {
    int Row;
    int Column;
    const char* Text;
    const char* Refusal;  // a part of it; empty: taken
    const char* After = AsLoaded;
  } cases[] = {
      {1, SubtitleModel::Start, "00:00:09:00", "", "04:00-06:00 09:00-11:00 12:00-14:00 "},
      {1, SubtitleModel::Start, "7:00", "", "04:00-06:00 07:00-09:00 12:00-14:00 "},
      {1, SubtitleModel::Start, "+5", "", "04:00-06:00 08:05-10:05 12:00-14:00 "},
      {1, SubtitleModel::Start, "00:00:20:00", "", "04:00-06:00 12:00-14:00 20:00-22:00 "},  // it moves there
      {1, SubtitleModel::Duration, "00:00:01:00", "", "04:00-06:00 08:00-09:00 12:00-14:00 "},
      {1, SubtitleModel::End, "00:00:11:24", "", "04:00-06:00 08:00-11:24 12:00-14:00 "},
      {1, SubtitleModel::End, "00:00:12:00", "overlap of the next subtitle (00:00:12:00)"},
      {1, SubtitleModel::Start, "00:00:06:00", "overlap of the previous subtitle"},
      {1, SubtitleModel::Start, "00:00:39:99", "a time as HH:MM:SS:FF"},
      {1, SubtitleModel::Start, "soon", "a time as HH:MM:SS:FF"},
      {1, SubtitleModel::Start, "", "a time as HH:MM:SS:FF"},
      {2, SubtitleModel::Start, "00:00:40:00", "is not before the end of the track"},
      {2, SubtitleModel::Duration, "00:00:00:00", "lasts a frame at least"},
      {2, SubtitleModel::End, "00:00:11:00", "lasts a frame at least"},
      {0, SubtitleModel::Start, "00:00:04:00", ""},
      {0, SubtitleModel::Bitmap, "x", "no editor"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Text);
    SubtitlesBench bench;
    const QString refusal = WriteCell(*bench.Table, test.Row, test.Column, QString::fromUtf8(test.Text));
    EXPECT_EQ(refusal.isEmpty(), test.Refusal[0] == '\0') << refusal.toStdString();
    EXPECT_TRUE(refusal.contains(QString::fromUtf8(test.Refusal))) << refusal.toStdString();
    EXPECT_EQ(bench.Times(), test.After);
    EXPECT_EQ(bench.Table->viewport()->findChild<QLineEdit*>(), nullptr);
    bench.Doc.Undo();
    EXPECT_EQ(bench.Times(), AsLoaded);
    EXPECT_EQ(bench.Told, "");
  }
}

TEST(SubtitlesPane, RowsAndViewerGoTogether) {
  SubtitlesBench bench;
  bench.Table->setFocus();
  bench.Table->GoToRow(0);
  QTest::keyClick(bench.Table, Qt::Key_Down);
  EXPECT_EQ(bench.View.State().Frame, 200);
  bench.View.Move(ViewerMove::LastSub);
  EXPECT_EQ(bench.Table->CurrentRow(), 1);  // it may be the one that is to end here
  EXPECT_TRUE(bench.Table->model()->index(2, 0).data(Qt::FontRole).value<QFont>().bold());
  bench.Commands.Handle(ActionId::LastSubtitle, [] {});
  bench.Press(ActionId::LastSubtitle);
  EXPECT_TRUE(QTest::qWaitFor([&bench] { return bench.Table->CurrentRow() == 2; }));
  bench.View.ToFrame(170);
  EXPECT_FALSE(bench.Table->model()->index(2, 0).data(Qt::FontRole).isValid());
}

// Arrows look for the picture at which the chosen one is to start; Tab goes through its cells and on.
TEST(SubtitlesPane, ArrowsStepThroughPictures) {
  const TempFolder folder;
  std::filesystem::copy_file(SampleVideo({.Frames = 250}), folder / "film.m2v");
  SubtitlesBench bench;
  Project project = FilmWithSubtitles();
  project.Tracks[0].TrackType = "Motion";
  project.Tracks[0].VideoPlays.emplace_back().File = folder / "film.m2v";
  bench.Doc.Session().Replace(std::move(project), {});
  bench.Chosen.Choose("Track.0.Sub1");
  ASSERT_TRUE(QTest::qWaitFor([&bench] { return bench.View.Pictures().size() > 10; }));
  QString status;
  QObject::connect(&bench.Speaks, &Voice::StatusTold, [&status](const QString& words) { status = words; });
  bench.Table->setFocus();
  bench.Table->GoToRow(0);
  ASSERT_EQ(bench.View.State().Frame, 100);
  bench.Press(ActionId::SubtitleStart);
  EXPECT_TRUE(status.startsWith("Nothing changed")) << status.toStdString();
  QTest::keyClick(bench.Table, Qt::Key_Right);
  QTest::keyClick(bench.Table, Qt::Key_Right);
  QTest::keyClick(bench.Table, Qt::Key_Left);
  EXPECT_EQ(bench.View.State().Frame, 108);
  EXPECT_EQ(bench.Table->currentIndex(), bench.Table->model()->index(0, 0));
  bench.Press(ActionId::SubtitleStart);
  EXPECT_EQ(bench.Times(), "04:08-06:00 08:00-10:00 12:00-14:00 ");
  QTest::keyClick(bench.Table, Qt::Key_Tab);
  EXPECT_EQ(bench.Table->currentIndex(), bench.Table->model()->index(0, 1));
  QTest::keyClick(bench.Table, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(bench.Table->currentIndex(), bench.Table->model()->index(0, 0));
  QTest::keyClick(bench.Table, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_FALSE(bench.Table->hasFocus());
  bench.Table->setFocus();
  for (int column = 0; column < bench.Table->model()->columnCount(); ++column) {
    EXPECT_TRUE(bench.Table->hasFocus());
    QTest::keyClick(bench.Table, Qt::Key_Tab);
  }
  EXPECT_FALSE(bench.Table->hasFocus());
}

TEST(SubtitlesPane, StartAndEndStandAtTheViewersFrame) {
  const struct {
    ActionId Id;
    std::int64_t Frame;
    const char* After;
    const char* Told = "";
  } cases[] = {
      {ActionId::SubtitleStart, 210, "04:00-06:00 08:10-10:00 12:00-14:00 "},
      {ActionId::SubtitleStart, 190, "04:00-06:00 07:15-10:00 12:00-14:00 "},
      {ActionId::SubtitleEnd, 240, "04:00-06:00 08:00-09:15 12:00-14:00 "},
      {ActionId::SubtitleEnd, 300, AsLoaded, "subtitle-meets-next"},
      {ActionId::SubtitleEnd, 190, AsLoaded, "subtitle-times-unfit"},
      {ActionId::SubtitleStartAlong, 210, "04:00-06:00 08:10-10:10 12:10-14:10 "},
      {ActionId::SubtitleEndAlong, 275, "04:00-06:00 08:00-11:00 13:00-15:00 "},
      {ActionId::SubtitleStartAlong, 150, AsLoaded, "subtitle-meets-earlier"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Frame);
    SubtitlesBench bench;
    bench.Table->GoToRow(1);
    bench.View.ToFrame(test.Frame);
    bench.Press(test.Id);
    EXPECT_EQ(bench.Times(), test.After);
    EXPECT_EQ(bench.Told, test.Told);
  }
}

TEST(SubtitlesPane, TicksAskTheProject) {
  SubtitlesBench bench;
  const auto tick = [&bench](int row, int column) {
    bench.Table->setCurrentIndex(bench.Table->model()->index(row, column));
    QTest::keyClick(bench.Table, Qt::Key_Space);
    return bench.Table->model()->index(row, column).data(Qt::CheckStateRole).toBool();
  };
  bench.Table->setFocus();
  EXPECT_TRUE(tick(0, SubtitleModel::Forced));
  EXPECT_FALSE(tick(0, SubtitleModel::Forced));
  EXPECT_FALSE(tick(0, SubtitleModel::Used));
  EXPECT_TRUE(tick(2, SubtitleModel::Forced));
  EXPECT_TRUE(tick(2, SubtitleModel::Forced));  // buttons show with it
  EXPECT_THAT(bench.Told, testing::HasSubstr("forced"));
}

TEST(SubtitlesPane, NewOnesAndOtherBitmapsComeFromFiles) {
  SubtitlesBench bench;
  const std::string other = SourceFile("examples/media/de1.png");
  bench.View.ToFrame(170);
  bench.Answers.Files = {{other}, {}, {SourceFile("README.md")}, {other}};
  bench.Press(ActionId::NewSubtitle);
  EXPECT_EQ(bench.Times(), "04:00-06:00 06:20-07:24 08:00-10:00 12:00-14:00 ");
  EXPECT_EQ(bench.Table->CurrentRow(), 1);
  bench.Press(ActionId::ReplaceBitmap);  // given up
  bench.Press(ActionId::ReplaceBitmap);
  EXPECT_EQ(bench.Told, "subtitle-no-picture");
  bench.Table->GoToRow(0);
  bench.Press(ActionId::ReplaceBitmap);
  EXPECT_EQ(bench.Table->model()->index(0, SubtitleModel::Bitmap).data(), "de1.png");
}

TEST(SubtitlesPane, ColoursSpreadOverTheStream) {
  SubtitlesBench bench;
  bench.Table->GoToRow(0);
  auto* const lines = bench.Pane->findChild<ColorLine*>();
  const auto press = [&bench](const QString& words) {
    for (QPushButton* button : bench.Pane->findChildren<QPushButton*>()) {
      if (button->text() == words) {
        button->click();
      }
    }
  };
  const auto conversion = [&bench](std::size_t entry) {
    return bench.Doc.Work().Tracks[0].SubStreams[0].SubPlays[entry].ConversionBg;
  };
  lines->setText("#0102zz");
  press("Bitmap colours to the stream");
  EXPECT_EQ(bench.Told, "color-unfit");
  EXPECT_EQ(conversion(2), 0U);
  lines->setText("#010203");
  press("Bitmap colours to all streams");
  EXPECT_EQ(conversion(0), 0x030201U);
  EXPECT_EQ(conversion(2), 0x030201U);
}

// 18,000 entries: an edit neither resets the table nor loses the row.
TEST(SubtitlesPane, AnEditOfALongStreamMovesNothing) {
  SubtitlesBench bench;
  Project project = FilmWithSubtitles();
  auto& entries = project.Tracks[0].SubStreams[0].SubPlays;
  project.Tracks[0].VideoFrames = 1'000'000;
  for (int i = 3; i < 18'000; ++i) {
    entries.push_back(entries.front());
    entries.back().Start = FramesToTimecode(400 + i * 50, 25);
    entries.back().Duration = "00:00:01:00";
  }
  bench.Doc.Session().Replace(std::move(project), {});
  bench.Chosen.Choose("Track.0.Sub1");
  bench.Table->GoToRow(17'000);
  const QSignalSpy resets(bench.Table->model(), &QAbstractItemModel::modelReset);
  EXPECT_EQ(WriteCell(*bench.Table, 17'000, SubtitleModel::Start, "+3"), "");
  EXPECT_EQ(resets.count(), 0);
  EXPECT_EQ(bench.Table->CurrentRow(), 17'000);
  bench.Chosen.Choose("");
  EXPECT_EQ(bench.Table->model()->rowCount(), 18'000);
}

}  // namespace
}  // namespace quorvelant
