#include "mux_run.h"

#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace quorvelant {
namespace {

std::int64_t StampAt(ByteView sector, std::size_t at) {
  const std::uint64_t bits = GetBytes(sector, at, 5);
  return static_cast<std::int64_t>((bits >> 33 & 7) << 30 | (bits >> 17 & 0x7FFF) << 15 |
                                   (bits >> 1 & 0x7FFF));
}

void ReadAudioHeader(ReadPack& pack, Bytes& data) {
  const std::size_t header = pack.Substream >= 0xA0 ? 7 : 4;
  pack.Frames = data[1];
  pack.Pointer = data[2] << 8 | data[3];
  pack.AudioBits = {data.begin() + 4, data.begin() + static_cast<std::ptrdiff_t>(header)};
  data.erase(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(header));
}

ReadPack PackOf(ByteView sector) {
  ReadPack pack;
  const std::uint64_t clock = GetBytes(sector, 4, 6);
  const std::uint64_t base = (clock >> 43 & 7) << 30 | (clock >> 27 & 0x7FFF) << 15 | (clock >> 11 & 0x7FFF);
  pack.Scr = static_cast<std::int64_t>(base * 300 + (clock >> 1 & 0x1FF));
  pack.StreamId = sector[17];
  if (pack.StreamId == 0xBB) {
    return pack;
  }
  const std::size_t end = 20 + GetBytes(sector, 18, 2);
  const unsigned flags = sector[21];
  std::size_t at = 23;
  if ((flags & 0x80) != 0) {
    pack.Pts = StampAt(sector, at);
    at += 5;
  }
  if ((flags & 0x40) != 0) {
    pack.Dts = StampAt(sector, at);
    at += 5;
  }
  if ((flags & 1) != 0) {
    pack.BufferKib = static_cast<int>(GetBytes(sector, at + 1, 2) & 0x1FFF);
  }
  const ByteView data = sector.subspan(0, end).subspan(23U + sector[22]);
  pack.Payload = {data.begin(), data.end()};
  if (pack.StreamId == 0xBD) {
    pack.Substream = pack.Payload[0];
    if (pack.Substream >= 0x80) {
      ReadAudioHeader(pack, pack.Payload);
    } else {
      pack.Payload.erase(pack.Payload.begin());
    }
  }
  return pack;
}

std::string OutputOf(const std::string& command) {
  const TempFolder folder;
  const std::string line = fmt::format("{} >'{}' 2>&1", command, folder / "out");
  const int status = std::system(line.c_str());  // NOLINT(concurrency-mt-unsafe,bugprone-command-processor)
  std::string text = TempFolder::Read(folder.Path() / "out");
  return status == 0 ? text : fmt::format("status {}: {}", status, text);
}

}  // namespace

MuxRun::MuxRun(Rules rules) : Files(Ui), Build{Ui, RunLog, Files, rules} {
  RunLog.SetFile(Folder / "log.txt");
  Files.DimFiles(9);
}

MuxOutcome MuxRun::Mux(const MuxInput& input) {
  return Mux(std::vector{input});
}

MuxOutcome MuxRun::Mux(const std::vector<MuxInput>& tracks) {
  VobOutput output(Files, Base(), Build.DryRun, Split);
  for (const MuxInput& track : tracks) {
    const MuxOutcome outcome = MuxTrack(track, Build, output, Records);
    if (outcome != MuxOutcome::Done) {
      return outcome;
    }
  }
  output.Finish();
  return MuxOutcome::Done;
}

Bytes MuxRun::Sectors() const {
  Bytes bytes;
  for (int i = 1; std::filesystem::exists(fmt::format("{}_{}.VOB", Base(), i)); ++i) {
    const std::string file = TempFolder::Read(fmt::format("{}_{}.VOB", Base(), i));
    bytes.insert(bytes.end(), file.begin(), file.end());
  }
  return bytes;
}

std::vector<ReadPack> MuxRun::Packs() const {
  const Bytes sectors = Sectors();
  std::vector<ReadPack> packs;
  for (std::size_t at = 0; at + SectorBytes <= sectors.size(); at += SectorBytes) {
    packs.push_back(PackOf(ByteView(sectors).subspan(at, SectorBytes)));
  }
  return packs;
}

Bytes MuxRun::Stream(int id) const {
  Bytes bytes;
  for (const ReadPack& pack : Packs()) {
    if ((pack.StreamId == 0xBD ? pack.Substream : pack.StreamId) == id) {
      bytes.insert(bytes.end(), pack.Payload.begin(), pack.Payload.end());
    }
  }
  return bytes;
}

std::string MuxRun::DecodeComplaints() const {
  return OutputOf(
      fmt::format("ffmpeg -nostdin -hide_banner -v warning -i '{}_1.VOB' -map 0:v -map 0:a? "
                  "-fps_mode passthrough -enc_time_base:v 1:90000 -f null -",
                  Base()));
}

Bytes MuxRun::Decoded(const std::string& stream, const std::string& format) const {
  const std::string out = Folder / "sound.raw";
  const std::string complaints =
      OutputOf(fmt::format("ffmpeg -nostdin -hide_banner -v error -y -i '{}_1.VOB' -map 0:{} -f {} '{}'",
                           Base(), stream, format, out));
  if (!complaints.empty()) {
    throw std::runtime_error(complaints);
  }
  const std::string text = TempFolder::Read(out);
  return {text.begin(), text.end()};
}

MuxInput MotionTrack(const std::vector<std::string>& videos, bool ntsc) {
  MuxInput input;
  input.Name = "Film";
  input.Aspect = "4:3";
  input.Ntsc = ntsc;
  for (const std::string& video : videos) {
    input.Video.push_back({.Path = video});
  }
  input.Marks = {MarkAt(0, 0)};
  return input;
}

MuxAudioStream Ac3Stream(const std::string& path, int number) {
  MuxAudioStream stream;
  stream.StreamNumber = number;
  stream.Paths = {path};
  stream.DataOffsets = {0};
  stream.DataBytes = {std::filesystem::file_size(path)};
  return stream;
}

MuxAudioStream PcmStream(const std::string& path, int bits, int channels, int kiloHertz, int number) {
  MuxAudioStream stream = Ac3Stream(path, number);
  stream.Pcm = true;
  stream.Traits.Quantisation = bits;
  stream.Traits.ChannelCount = channels;
  stream.Traits.SampleRate = kiloHertz;
  return stream;
}

MuxMark MarkAt(std::int64_t frame, int scene) {
  MuxMark mark;
  mark.Scene = scene;
  mark.Frame = frame;
  mark.Name = fmt::format("Scene{}", scene + 1);
  return mark;
}

}  // namespace quorvelant
