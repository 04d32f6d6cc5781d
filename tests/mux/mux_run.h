// Multiplexes tracks into a temporary folder and reads the sectors back without the multiplexer's help.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mux/mux_track.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorvelant {

// A pack as a reader sees it.
struct ReadPack {
  std::int64_t Scr = 0;  // 27 MHz ticks
  int StreamId = 0;      // 0xBB for a navigation pack
  int Substream = -1;    // of private stream 1
  std::optional<std::int64_t> Pts = {};
  std::optional<std::int64_t> Dts = {};
  int BufferKib = 0;
  int Frames = 0;  // of the audio header
  int Pointer = 0;
  Bytes AudioBits = {};  // of an LPCM header
  Bytes Payload = {};    // behind all headers
};

class MuxRun {
 public:
  explicit MuxRun(Rules rules = Rules::Players);

  MuxOutcome Mux(const MuxInput& input);
  MuxOutcome Mux(const std::vector<MuxInput>& tracks);

  // The sectors of all files in a row.
  Bytes Sectors() const;
  std::vector<ReadPack> Packs() const;
  // The bytes of a stream: 0xE0, or a substream id of private stream 1.
  Bytes Stream(int id) const;
  // What ffmpeg says when it decodes the first file to its end; empty when all is well.
  std::string DecodeComplaints() const;
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
  std::uint32_t Split = SplitSectors;
};

MuxInput MotionTrack(const std::vector<std::string>& videos, bool ntsc = false);
MuxAudioStream Ac3Stream(const std::string& path, int number = 0);
// A file without any header.
MuxAudioStream PcmStream(const std::string& path, int bits, int channels, int kiloHertz = 48, int number = 0);
MuxMark MarkAt(std::int64_t frame, int scene);

}  // namespace quorvelant
