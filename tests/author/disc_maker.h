// Makes whole discs of sample media for the tests.
#pragma once

#include <map>
#include <string>

#include "author/author.h"
#include "author/disc_plan.h"
#include "model/project.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {

class DiscMaker {
 public:
  explicit DiscMaker(VideoSample video = {}) : Video(std::move(video)) {}

  using Words = std::map<std::string, std::string>;
  // The disc of a script of data/, in which "@n" stands for the time of frame n, other words with "@" for
  // what they are given here, and lines with "@PAL" for themselves in PAL and for nothing in NTSC.
  void Load(const std::string& script, const Words& words = {});
  // The disc of small.qvp: a film of `Video` and as many seconds of sound ("ac3" or "wav"), which is the
  // title and the root menu of the one set.
  void LoadSmall(double seconds, const std::string& sound = "ac3");
  // The disc of shown.qvp: slides, stills and films with subtitles; its menus have buttons whose four arrows
  // lead to four others, in colours and places that differ by scheme and group.
  void LoadShown(const std::string& displayMode);
  // Lets a script find a sample under this name.
  void Link(const std::string& name, const std::string& sample) const;
  // The same for a bitmap, a chequered one of this colour and white.
  void Paint(const std::string& name, int width, int height, std::uint32_t colour) const;

  // Resolves the commands and authors into `Folder`.
  AuthorResult Author(const Rules& rules = Rules::Players, bool dryRun = false);
  // What lies in `Folder`, by name.
  std::map<std::string, std::string> Files() const;

  Project Disc;
  VideoSample Video;
  TempFolder Temp;
  std::string Folder = Temp / "VIDEO_TS";
  RecordingUi Ui;

 private:
  std::string Expanded(const std::string& text, const Words& words) const;
};

}  // namespace quorvelant
