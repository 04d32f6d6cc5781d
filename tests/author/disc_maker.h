// Makes whole discs of sample media for the tests.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "author/author.h"
#include "author/disc_plan.h"
#include "model/project.h"
#include "support/media.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {

class DiscMaker {
 public:
  // The Video Manager with one language and a title menu without cells; First Play goes there.
  explicit DiscMaker(VideoSample video = {});

  // Instead: the disc of a script of data/, in which "=@n" stands for the time of frame n, other words
  // with "=@" for what they are given here, and lines with "@PAL" for themselves in PAL and for nothing in
  // NTSC.
  void Load(const std::string& script, const std::map<std::string, std::string>& words = {});
  // Lets a script find a sample under this name.
  void Link(const std::string& name, const std::string& sample) const;
  // The same for a bitmap, a chequered one of this colour and white.
  void Paint(const std::string& name, int width, int height, std::uint32_t colour) const;

  // A track with scenes at these frames; its streams are numbered in order.
  int AddTrack(const std::string& name, const std::string& video, const std::vector<std::string>& sounds,
               const std::vector<std::int32_t>& scenes);
  // The next title set, with a root menu without cells that calls the title menu.
  VTS_P& AddSet();
  // A title of the set with one chain: a program a scene of the track; after it the set's root menu.
  PGC_P& AddTitle(VTS_P& set, int track);
  // A cell for each scene of a track in one program; also sets the domain's attributes.
  void PlaceAll(PGC_P& chain, int track, VideoInfo_P& info);
  PGC_P& TitleMenu() { return *Disc.Disc.Item(1)->Lang.Item(1)->PGC.Item(1); }
  static PGC_P& RootMenu(VTS_P& set) { return *set.Lang.Item(1)->PGC.Item(1); }

  // Resolves the commands and authors into `Folder`.
  AuthorResult Author(const Rules& rules = Rules::Players, bool dryRun = false);

  Project Disc;
  VideoSample Video;
  TempFolder Temp;
  std::string Folder = Temp / "VIDEO_TS";
  RecordingUi Ui;
};

}  // namespace quorvelant
