// The pictures of the manual, grabbed from the window with the example in it. QUORVELANT_UPDATE=1 writes them
// anew; without it each must be there in the size that it is grabbed in now, and show something.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QStyleFactory>
#include <QTest>
#include <QTreeView>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>

#include "open_window.h"
#include "support/folders.h"
#include "support/pressed_action.h"
#include "support/temp_folder.h"
#include "window/main_window.h"
#include "window/map_chart.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

struct Shot {
  std::string Name;
  std::function<QWidget*(MainWindow&)> Prepare;  // what is grabbed; null for the window
  QSize Size{1280, 860};
  bool IsDark = false;
  int Scale = 1;
  std::string Line = {};     // of the example's script, for which
  std::string Instead = {};  // this stands
};
void PrintTo(const Shot& shot, std::ostream* out) {
  *out << shot.Name;
}

QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 53));
  dark.setColor(QPalette::Base, QColor(35, 35, 35));
  dark.setColor(QPalette::AlternateBase, QColor(45, 45, 45));
  dark.setColor(QPalette::Highlight, QColor(42, 130, 190));
  dark.setColor(QPalette::HighlightedText, Qt::white);
  dark.setColor(QPalette::Link, QColor(90, 170, 230));
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
    dark.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
  }
  return dark;
}

// Chooses an element, goes to a pane, and waits until nothing is worked on any more.
void Show(MainWindow& window, const std::string& key, const char* pane) {
  window.Parts().Chosen.Choose(key);
  for (auto* dock : window.findChildren<QDockWidget*>()) {
    if (dock->objectName() == QLatin1String(pane)) {
      dock->raise();
    }
  }
  QTest::qWait(100);
  const bool isReady = QTest::qWaitFor(
      [&window] {
        const WindowParts& parts = window.Parts();
        return !parts.Work.AnyRunning() && (parts.View.Shown() == nullptr || parts.View.IsPictureReady());
      },
      20000);
  EXPECT_TRUE(isReady) << key;
  QTest::qWait(400);  // findings and size come a moment after a step
}

QDialog* DialogOf(MainWindow& window, ActionId action) {
  Press(*window.Parts().Commands.Of(action));
  QTest::qWait(800);
  for (auto* dialog : window.findChildren<QDialog*>()) {
    if (dialog->isVisible()) {
      for (auto* folder : dialog->findChildren<QLineEdit*>()) {
        if (folder->accessibleName() == QLatin1String("Folder")) {
          folder->setText(QStringLiteral("/home/anna/Discs/Example/VIDEO_TS"));
        }
      }
      return dialog;
    }
  }
  ADD_FAILURE() << "no dialog opened";
  return nullptr;
}

QWidget* Author(MainWindow& window) {
  Show(window, "VTS1.TITLE1", "Commands");
  return DialogOf(window, ActionId::Author);
}

QWidget* Simulator(MainWindow& window) {
  Show(window, "VMG1.LANGUAGE1.PGC1", "Commands");
  Press(*window.Parts().Commands.Of(ActionId::Simulate));
  const Simulation& player = window.Parts().Player;
  const auto isReady = [&player] { return player.Look() != nullptr && player.Look()->IsReady(); };
  EXPECT_TRUE(QTest::qWaitFor(isReady, 20000));
  window.Parts().Player.Press({NavKey::Down, 0});
  QTest::qWait(800);
  return nullptr;
}

QWidget* Subtitles(MainWindow& window) {
  Show(window, "Track.1.Sub1", "Subtitles");
  Press(*window.Parts().Commands.Of(ActionId::NextSubtitle));
  Show(window, "Track.1.Sub1", "Subtitles");
  return nullptr;
}

const std::vector<Shot>& Shots() {
  const auto showing = [](const char* key, const char* pane) {
    return [key, pane](MainWindow& window) -> QWidget* {
      Show(window, key, pane);
      return nullptr;
    };
  };
  static const std::vector<Shot> All{
      {"window", showing("Track.0", "Buttons")},
      {"dark", showing("Track.0", "Buttons"), {1280, 860}, true},
      {"small", showing("Track.0", "Buttons"), {1024, 700}},
      {"fine", showing("Track.0", "Buttons"), {1024, 700}, false, 2},
      {"subtitles", Subtitles, {1100, 760}},
      {"buttons", showing("Track.0", "Buttons"), {1100, 760}},
      {"chapters", showing("Track.1", "Chapters"), {1100, 760}},
      {"commands", showing("VMG1.LANGUAGE1.PGC1", "Commands"), {1100, 760}},
      {"disc", showing("VTS1.TITLE1.PGC1", "Properties"), {1100, 760}},
      {"problems",
       showing("VMG1.LANGUAGE1.PGC1", "Problems"),
       {1100, 760},
       false,
       1,
       "JumpTT VTS2_Title1",
       "JumpTT Slide show"},
      {"simulator", Simulator, {1280, 860}},
      {"map",
       [](MainWindow& window) -> QWidget* {
         QDialog* const map = DialogOf(window, ActionId::ShowMap);
         map->resize(1200, 400);
         QTest::qWait(50);
         map->findChild<MapChart*>()->ShowWhole();
         return map;
       },
       {1280, 860},
       false,
       1,
       "JumpTT VTS1_Title2",
       "JumpTT VTS1_Title1"},
      {"author", Author},
      {"settings", [](MainWindow& window) -> QWidget* { return DialogOf(window, ActionId::Settings); }},
  };
  return All;
}

class ManualPictures : public testing::TestWithParam<Shot> {};

TEST_P(ManualPictures, AreAsTheWindowIs) {
  const Shot& shot = GetParam();
  const TempFolder folder;
  fs::copy(SourceFile("examples"), folder / "Example", fs::copy_options::recursive);
  const std::string project = folder / "Example/demo.qvp";
  std::string script = TempFolder::Read(project);
  if (!shot.Line.empty()) {
    ASSERT_NE(script.find(shot.Line), std::string::npos);
    folder.Write("Example/demo.qvp", script.replace(script.find(shot.Line), shot.Line.size(), shot.Instead));
  }
  const QPalette palette = QApplication::palette();
  const QFont font = QApplication::font();
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  QApplication::setPalette(shot.IsDark ? DarkPalette() : QApplication::style()->standardPalette());
  {
    OpenWindow open(folder);
    MainWindow& window = open.Window;
    window.resize(shot.Size);
    window.Open({project});
    EXPECT_TRUE(OpenWindow::Wait([&open] { return open.Work().Tracks.Count() > 0; }));
    open.Settle();
    QWidget* const grabbed = shot.Prepare(window);
    QWidget& shown = grabbed == nullptr ? window : *grabbed;
    EXPECT_EQ(window.size(), shot.Size) << "the window does not fit";

    QImage image(shown.size() * shot.Scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(shot.Scale);
    shown.render(&image);
    image.setDevicePixelRatio(1);
    const QString file = QString::fromStdString(SourceFile("docs/pictures/manual/" + shot.Name + ".png"));
    if (std::getenv("QUORVELANT_UPDATE") != nullptr) {  // NOLINT(concurrency-mt-unsafe)
      EXPECT_TRUE(image.save(file, "PNG", 0));
    }
    EXPECT_EQ(QImage(file).size(), image.size()) << "write it anew with QUORVELANT_UPDATE=1";
    std::set<QRgb> colors;
    for (int i = 0; i < image.width() * image.height(); i += 7) {
      colors.insert(image.pixel(i % image.width(), i / image.width()));
    }
    EXPECT_GT(colors.size(), 20U) << "nothing shows";
  }
  QApplication::setPalette(palette);
  QApplication::setFont(font);
}

INSTANTIATE_TEST_SUITE_P(All, ManualPictures, testing::ValuesIn(Shots()),
                         [](const auto& shot) { return shot.param.Name; });

}  // namespace
}  // namespace quorvelant
