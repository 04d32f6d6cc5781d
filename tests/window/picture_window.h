// A picture pane over a copy of the example project.
#pragma once

#include <gtest/gtest.h>

#include <QMainWindow>
#include <QTest>
#include <filesystem>
#include <string>

#include "edit/project_file.h"
#include "platform/platform_pictures.h"
#include "support/folders.h"
#include "support/recording_ui.h"
#include "support/scripted_answers.h"
#include "support/temp_folder.h"
#include "window/picture_pane.h"

namespace quorvelant {

class PictureWindow {
 public:
  PictureWindow() {
    namespace fs = std::filesystem;
    fs::copy(SourceFile("examples/media"), Folder / "media");
    fs::copy(SourceFile("examples/demo.qvp"), Folder / "demo.qvp");
    RecordingUi ui;
    ui.Unattended = true;
    EXPECT_TRUE(OpenProjectFile(Doc.Session(), Folder / "demo.qvp", false, ui));
    Frame.setCentralWidget(Pane = new PicturePane(Parts));
    Frame.resize(760, 640);
    Frame.show();
    QObject::connect(&Speaks, &Voice::Told, &Frame,
                     [this](const Message& message) { Told += message.Text + "\n"; });
  }

  // Shows a track, and waits for its picture and what shows over it.
  void Show(std::size_t track) {
    Chosen.Choose("Track." + std::to_string(track));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Look.IsPictureReady(); }))
        << Look.PictureWords().toStdString();
    Settle();
  }
  void Settle() { QTest::qWait(20); }
  [[nodiscard]] PictureView& View() { return Pane->View(); }
  [[nodiscard]] const std::vector<HighlightButton>& Buttons(std::size_t track, std::size_t set = 0) {
    return Doc.Work().Tracks[track].HighlightPlays.at(set).Buttons;
  }
  // A place of the widget from one of the disc.
  [[nodiscard]] QPoint At(int column, int line) {
    return View().Geometry().ToSpace(QPointF(column + 0.5, line + 0.5)).toPoint();
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mousePress(&View(), Qt::LeftButton, keys, from);
    QTest::mouseMove(&View(), (from + to) / 2);
    QTest::mouseMove(&View(), to);
    QTest::mouseRelease(&View(), Qt::LeftButton, keys, to);
  }

  TempFolder Folder;
  ScriptedAnswers Answers;
  std::string Told;
  Voice Speaks{Answers};
  Document Doc{{}, {}, Speaks};
  Selection Chosen{Doc};
  Jobs Work{Speaks};
  std::unique_ptr<PictureService> Pictures = MakePlatformPictures();
  Viewer Look{Doc, Chosen, Work, *Pictures};
  Settings Options;
  QMainWindow Frame;
  Actions Commands{&Frame};
  Simulation Player{Doc, Work, *Pictures};
  WindowParts Parts{Doc, Chosen, Look, Player, Work, Commands, Answers, *Pictures, Options, {}, {}, {}, {}};
  PicturePane* Pane = nullptr;
};

}  // namespace quorvelant
