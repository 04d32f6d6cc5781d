#include "window/settings_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QTest>
#include <functional>
#include <map>

#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "window/main_window.h"

namespace quorvelant {
namespace {

// Every control changes one line of the file, by its name as a screen reader would say it, and holds at once.
TEST(SettingsDialog, WritesEveryLineWhenItCloses) {
  const TempFolder folder;
  const std::string path = folder / "settings.ini";
  ScriptedAnswers answers;
  MainWindow window({.Answers = &answers, .StateFolder = folder / "state", .SettingsPath = path});
  Settings expected = window.Parts().Options;
  auto* const dialog = new SettingsDialog(window.Parts(), &window);
  dialog->show();
  for (QCheckBox* box : dialog->findChildren<QCheckBox*>()) {
    box->toggle();
  }
  for (bool* flag :
       {&expected.RemoveSeqEnd, &expected.Subrip, &expected.ScenesNotSeamless, &expected.SeamlessPGC,
        &expected.UseTrackNames, &expected.AutoCreateChapters, &expected.AutoSlideChapters,
        &expected.ExtendFinalSlide, &expected.ExtendFinalSubtitle}) {
    *flag = !*flag;
  }
  for (bool& region : expected.RegionAllowed) {
    region = !region;
  }
  const std::map<std::string, QString> times{{"Interval of chapters, PAL", "00:10:00:01"},
                                             {"Interval of chapters, NTSC", "00:11:00:01"},
                                             {"Time of a slide, PAL", "00:00:12:01"},
                                             {"Time of a slide, NTSC", "00:00:13:01"}};
  for (QSpinBox* box : dialog->findChildren<QSpinBox*>()) {
    box->selectAll();
    QTest::keyClicks(box, times.at(box->accessibleName().toStdString()));
  }
  for (QLineEdit* line : dialog->findChildren<QLineEdit*>()) {
    if (line->accessibleName() == QStringLiteral("Folder for discs")) {
      line->setText(QStringLiteral("/discs"));
    }
  }
  dialog->close();
  const Settings written = ReadSettings(path);
  expected.DestinationFolder = "/discs";
  expected.PalChapters = 600 * 25 + 1;
  expected.NtscChapters = 660 * 30 + 1;
  expected.PalSlideDuration = 12 * 25 + 1;
  expected.NtscSlideDuration = 13 * 30 + 1;
  EXPECT_EQ(SettingsText(window.Parts().Options), SettingsText(expected));
  Settings inFile = expected;
  inFile.SeamlessPGC = false;                    // holds until the window closes
  inFile.RegionAllowed = written.RegionAllowed;  // a file without any region allows all
  EXPECT_EQ(SettingsText(written), SettingsText(inFile));
  EXPECT_TRUE(window.Parts().Doc.Session().Options().SubRip);
}

}  // namespace
}  // namespace quorvelant
