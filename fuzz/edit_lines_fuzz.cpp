// Any bytes as lines of operations on a small project. Every answer is one of the three; the project can
// always be written; and undo leads back to where it began.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "app/edit_run.h"
#include "base/silent_ui.h"
#include "edit/change.h"
#include "edit/drop.h"
#include "script/script_writer.h"

namespace {

using namespace quorvelant;  // NOLINT(google-build-using-namespace): a program of its own

void AddFilm(EditSession& session) {
  Track track;
  track.TrackName = "Film";
  track.Standard = "PAL";
  track.Aspect = "16:9";
  track.Filled = true;
  track.VideoFrames = 5000;
  track.VideoPlays.emplace_back().File = "film.m2v";
  track.AudioStreams.emplace_back().AudioPlays.emplace_back().File = "film.ac3";
  track.SubStreams.emplace_back().DisplayMode = "Wide";
  for (const int frame : {0, 1000, 2000}) {
    track.Scenes.push_back({.Name = "Film_Scene" + std::to_string(frame), .Frame = frame, .Uops = {}});
  }
  {
    Change change(session, "Film");
    change.Touch({Part::OfTrack(0)}).Tracks.Add(std::move(track));
    static_cast<void>(change.Commit());
  }
  static_cast<void>(Drop(session, {.Track = 0, .Scene = {}}, "VTS1.TITLE1.PGC1"));
}

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  SilentUi ui;
  EditSession session(Rules::Players, {}, IndexStore(true));
  AddFilm(session);
  EditDesk desk{.Session = session, .Ui = ui};
  desk.SaveTo = "fuzz.qvp";
  desk.DryRun = true;
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), byteCount));
  std::stringstream out;
  static_cast<void>(RunEditLines(in, desk, true, out));
  for (std::string line; std::getline(out, line);) {
    const auto answer = nlohmann::json::parse(line);
    Require(answer.contains("done") + answer.contains("refused") + answer.contains("asks") == 1);
  }
  session.Commands();
  static_cast<void>(WriteScript(session.Work()));
  while (session.CanUndo()) {
    session.Undo();
  }
  EditSession fresh(Rules::Players);
  Require(WriteScript(session.Work()) == WriteScript(fresh.Work()));
  return 0;
}
