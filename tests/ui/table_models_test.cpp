#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <functional>
#include <random>

#include "model/default_structure.h"
#include "model/keys.h"
#include "ui/button_model.h"
#include "ui/chapter_model.h"
#include "ui/command_model.h"
#include "ui/offer_model.h"
#include "ui/subtitle_model.h"

namespace quorvelant {
namespace {

using testing::ElementsAre;

// Every model follows any change of its list, row by row, and says what the list holds by then.
template <class Model, class Row>
void FollowsChanges(const std::function<Row(int)>& make) {
  Model model;
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  std::vector<Row> rows;
  for (int i = 0; i < 20; ++i) {
    rows.push_back(make(i));
  }
  model.Show(rows);
  const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
  std::mt19937 random(7);  // NOLINT: the same each time
  for (int step = 0; step < 200; ++step) {
    const auto at = rows.empty() ? 0 : static_cast<std::ptrdiff_t>(random() % rows.size());
    switch (random() % 5) {
      case 0:
        rows.insert(rows.begin() + at, static_cast<std::size_t>(random() % 3), make(step));
        break;
      case 1:
        rows.resize(rows.size() / 2);
        break;
      case 2:
        std::ranges::reverse(rows);
        break;
      case 3:
        rows.push_back(make(step));
        break;
      default:
        if (!rows.empty()) {
          rows[static_cast<std::size_t>(at)] = make(step);
        }
    }
    model.Take(rows);
    ASSERT_EQ(model.Rows(), rows) << step;
    for (int row = 0; row < model.rowCount(); ++row) {
      EXPECT_FALSE(model.index(row, 0).data(Qt::AccessibleTextRole).toString().isEmpty());
    }
  }
  EXPECT_EQ(resets.count(), 0);
}

TEST(TableModels, FollowChangesRowByRow) {
  FollowsChanges<SubtitleModel, SubPicturePlay>([](int number) {
    SubPicturePlay entry;
    entry.File = std::to_string(number);
    return entry;
  });
  FollowsChanges<ButtonModel, ButtonRow>([](int number) {
    ButtonRow row;
    row.Button.Name = std::to_string(number);
    return row;
  });
  FollowsChanges<ChapterModel, ChapterRow>([](int number) {
    ChapterRow row;
    row.Scene.Frame = number;
    return row;
  });
  FollowsChanges<CommandModel, CommandRow>([](int number) {
    return CommandRow{
        .Place = {.Key = "FirstPGC"}, .List = "pre", .Text = std::to_string(number), .Digits = {}};
  });
  OfferModel offers;
  const QAbstractItemModelTester tester(&offers, QAbstractItemModelTester::FailureReportingMode::Fatal);
  offers.Show({{"NOP", "No Operation"}, {"RSM", "Resume"}});
  EXPECT_EQ(offers.index(1).data(Qt::EditRole), "RSM");
  EXPECT_EQ(offers.index(1).data(), "RSM  ·  Resume");
}

QStringList TextsOf(const QAbstractItemModel& model, int row) {
  QStringList texts;
  for (int column = 0; column < model.columnCount(); ++column) {
    const QVariant tick = model.index(row, column).data(Qt::CheckStateRole);
    texts << (tick.isValid() ? (tick.toBool() ? "yes" : "no") : model.index(row, column).data().toString());
  }
  return texts;
}

TEST(TableModels, SayWhatTheirRowsHold) {
  SubtitleModel subtitles;
  SubPicturePlay entry;
  entry.Start = "00:00:04:00";
  entry.Duration = "00:00:02:10";
  entry.File = R"(C:\subs\de_0103.png)";
  entry.ColorP = 15;
  entry.Forced = true;
  SubPicturePlay open = entry;
  open.Duration.clear();
  open.Used = false;
  subtitles.SetPalette({0x010203});
  subtitles.Show({entry, open});
  subtitles.Mark(1);
  EXPECT_THAT(TextsOf(subtitles, 0), ElementsAre("1", "00:00:04:00", "00:00:02:10", "00:00:06:10",
                                                 "de_0103.png", "0 0 15 0", "yes", "yes"));
  EXPECT_THAT(TextsOf(subtitles, 1),
              ElementsAre("2", "00:00:04:00", "…", "…", "de_0103.png", "0 0 15 0", "yes", "no"));
  EXPECT_EQ(subtitles.index(1, 0).data(Qt::AccessibleTextRole),
            "Subtitle 2, 00:00:04:00 to …, de_0103.png, forced, not used, shown");
  EXPECT_EQ(subtitles.index(0, SubtitleModel::Colours).data(SubtitleModel::SwatchRole).toList().front(),
            QColor(3, 2, 1));

  Track track;
  for (const int frame : {0, 100, 207}) {
    track.Scenes.push_back({"S" + std::to_string(frame), frame, {}});
  }
  track.Scenes[1].Uops.set(3);
  const std::vector<ViewerPicture> pictures{{.Frame = 0}, {.Frame = 100}, {.Frame = 200}};
  ChapterModel chapters;
  chapters.Show(ChapterRowsOf(track, pictures));
  EXPECT_EQ(TextsOf(chapters, 1)[ChapterModel::Picture], "here");
  EXPECT_FALSE(TextsOf(chapters, 1)[ChapterModel::Operations].isEmpty());
  EXPECT_EQ(TextsOf(chapters, 2).mid(1, 3),
            (QStringList{"S207", "00:00:08:07", "00:00:08:00, 7 frame(s) earlier"}));
  chapters.Take(ChapterRowsOf(track, {}));
  EXPECT_EQ(TextsOf(chapters, 0)[ChapterModel::Picture], "not indexed");
}

TEST(CommandRows, AreTheListsOfAPgcOrCell) {
  Project project;
  MakeDefaultStructure(project);
  PGC_P& chain = *FindPgc(project.Disc, "VTS1.TITLE1.PGC1");
  PG_P& program = chain.PG.Add({});
  program.Key = "VTS1.TITLE1.PGC1.PG1";
  Cell_P& cell = program.Cell.Add({});
  cell.Key = "VTS1.TITLE1.PGC1.PG1.CELL1";
  cell.CellName = "Cell1";
  VMICommand_P command;
  command.FullCommand = "NOP";
  chain.PreCommands = {command, command};
  chain.PostCommands.clear();
  const auto lists = [&project](const std::string& key) {
    CommandModel model;
    model.Show(CommandRowsOf(project, CommandOwner(project, key)));
    std::string texts;
    for (int row = 0; row < model.rowCount(); ++row) {
      texts += model.index(row, 0).data().toString().toStdString() + "|";
    }
    return texts;
  };
  EXPECT_EQ(lists("VTS1.TITLE1.PGC1"), "pre 1|pre 2|pre +|post +|cell +|");
  EXPECT_EQ(lists("VTS1.TITLE1"), lists("VTS1.TITLE1.PGC1"));
  EXPECT_EQ(lists("VTS1.TITLE1.PGC1.PG1"), lists("VTS1.TITLE1.PGC1"));
  EXPECT_EQ(lists(cell.Key), "button +|");
  FindCell(project.Disc, cell.Key)->ButtonCommands.push_back({{command}});
  EXPECT_EQ(lists(cell.Key), "button 1|button +|");
  EXPECT_EQ(lists("VTS1.TITLE1.PGC1"),
            "pre 1|pre 2|pre +|post +|cell +|button of Cell1 1|button of Cell1 +|");
  EXPECT_EQ(lists("FirstPGC").substr(0, 4), "pre ");
  EXPECT_EQ(lists("VTS1"), "");
  EXPECT_EQ(lists("Track.0"), "");
}

}  // namespace
}  // namespace quorvelant
