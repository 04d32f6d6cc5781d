#include "mux_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "support/disc_judges.h"
#include "support/media.h"

namespace quorvelant {

MuxRun::MuxRun(Rules rules) : Files(Ui), Build{Ui, RunLog, Files, rules} {
  RunLog.SetFile(Folder / "log.txt");
  Files.DimFiles(9);
}

MuxOutcome MuxRun::Mux(const std::vector<MuxInput>& tracks) {
  VobOutput output(Files, {Base()}, Build.DryRun, Split);
  for (const MuxInput& track : tracks) {
    const MuxOutcome outcome = MuxTrack(track, Build, output, Records);
    if (outcome != MuxOutcome::Done) {
      return outcome;
    }
  }
  output.Finish();
  return MuxOutcome::Done;
}

std::vector<std::string> MuxRun::VobFiles() const {
  return TitleVobs(Folder.Path().string(), 1);
}

std::vector<ReadPack> MuxRun::Packs() const {
  const Bytes sectors = Sectors();
  std::vector<ReadPack> packs;
  for (std::size_t at = 0; at < sectors.size(); at += SectorBytes) {
    packs.push_back(ReadPackOf(ByteView(sectors).subspan(at, SectorBytes)));
  }
  return packs;
}

std::vector<ReadPack> MuxRun::PacksOf(int stream) const {
  std::vector<ReadPack> packs = Packs();
  std::erase_if(packs, [&](const ReadPack& pack) { return pack.Stream() != stream; });
  return packs;
}

Bytes MuxRun::Stream(int id) const {
  Bytes bytes;
  for (const ReadPack& pack : PacksOf(id)) {
    bytes.insert(bytes.end(), pack.Payload.begin(), pack.Payload.end());
  }
  return bytes;
}

std::vector<std::string> MuxRun::Complaints() const {
  return Decode(VobFiles()).Complaints;
}

Bytes MuxRun::Decoded(const std::string& stream, const std::string& format) const {
  const std::string out = Folder / "sound.raw";
  const auto complaints =
      LinesOf(fmt::format("ffmpeg -nostdin -hide_banner -v error -y -i '{}_1.VOB' -map 0:{} -f {} '{}'",
                          Base(), stream, format, out));
  if (!complaints.empty()) {
    throw std::runtime_error(complaints.front());
  }
  return FileBytes(out);
}

Bytes FileBytes(const std::string& path) {
  const std::string text = TempFolder::Read(path);
  return {text.begin(), text.end()};
}

std::string Saved(const TempFolder& folder, const Bytes& bytes, const std::string& name) {
  return folder.Write(name, bytes);
}

MuxInput MotionTrack(const std::vector<std::string>& videos, bool ntsc) {
  MuxInput input;
  input.Name = "Film";
  input.Aspect = "4:3";
  input.Ntsc = ntsc;
  for (const std::string& video : videos) {
    input.Video.push_back({.Path = video});
  }
  input.Marks = MarksAt({});
  return input;
}

MuxInput FilmWith(const std::vector<MuxAudioStream>& audio, int frames) {
  MuxInput input = MotionTrack({SampleVideo({.Frames = frames})});
  input.Audio = audio;
  return input;
}

std::vector<MuxMark> MarksAt(const std::vector<std::int64_t>& frames) {
  std::vector<MuxMark> marks{{.Name = "Scene1"}};
  for (const std::int64_t frame : frames) {
    const int scene = static_cast<int>(marks.size());
    marks.push_back({.Scene = scene, .Frame = frame, .Name = fmt::format("Scene{}", scene + 1)});
  }
  return marks;
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

}  // namespace quorvelant
