// Multiplexes tracks into a temporary folder and reads the sectors back without the multiplexer's help.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mux/mux_track.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "support/vob_walk.h"

namespace quorvelant {

class MuxRun {
 public:
  explicit MuxRun(Rules rules = Rules::Players);

  MuxOutcome Mux(const MuxInput& input) { return Mux(std::vector{input}); }
  MuxOutcome Mux(const std::vector<MuxInput>& tracks);

  std::vector<std::string> VobFiles() const;
  Bytes Sectors() const { return SectorsOf(VobFiles()); }
  std::vector<ReadPack> Packs() const;
  std::vector<ReadPack> PacksOf(int stream) const;
  // The bytes of a stream: VideoPack, or a substream id of private stream 1.
  Bytes Stream(int id) const;
  // What ffmpeg says when it decodes the files to their end; empty when all is well.
  std::vector<std::string> Complaints() const;
  // A stream ("a:0") as ffmpeg decodes it into this raw format, with its options.
  Bytes Decoded(const std::string& stream, const std::string& format) const;
  std::string Base() const { return Folder / "VTS_01"; }
  std::string LogText() const { return TempFolder::Read(Folder.Path() / "log.txt"); }

  TempFolder Folder;
  RecordingUi Ui;
  Log RunLog;
  Random Files;
  MuxBuild Build;
  VobSetRecords Records;
  std::uint32_t Split = MostVobSectors;
};

Bytes FileBytes(const std::string& path);
std::string Saved(const TempFolder& folder, const Bytes& bytes, const std::string& name = "film.m2v");
MuxInput MotionTrack(const std::vector<std::string>& videos, bool ntsc = false);
// PAL of so many frames with this sound.
MuxInput FilmWith(const std::vector<MuxAudioStream>& audio, int frames = 25);
// A mark before each of these frames, and one at the start.
std::vector<MuxMark> MarksAt(const std::vector<std::int64_t>& frames);
MuxAudioStream Ac3Stream(const std::string& path, int number = 0);
// A file without any header.
MuxAudioStream PcmStream(const std::string& path, int bits, int channels, int kiloHertz = 48, int number = 0);

}  // namespace quorvelant
