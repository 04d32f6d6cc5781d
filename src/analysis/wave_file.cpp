#include "analysis/wave_file.h"

#include <algorithm>
#include <string_view>

#include "analysis/messages.h"

namespace quorvelant {

namespace {

constexpr std::uint64_t PlainDataOffset = 44;
constexpr std::size_t HeadBytes = 12;        // RIFF, size, WAVE
constexpr std::size_t ChunkHeadBytes = 8;    // id, size
constexpr std::size_t FormatBytes = 16;      // of the plain "fmt " chunk
constexpr std::size_t ExtensibleBytes = 40;  // with the sub-format's GUID at 24
constexpr std::uint16_t PcmTag = 1;
constexpr std::uint16_t ExtensibleTag = 0xFFFE;
constexpr std::uint32_t SizeElsewhere = 0xFFFFFFFF;  // RF64: in "ds64"; RIFF: written to a pipe, unknown
constexpr int MostChunks = 1000;                     // a longer list is no WAV file but an attempt

std::uint64_t Little(ByteView bytes, std::size_t offset, unsigned width) {
  std::uint64_t value = 0;
  for (unsigned i = width; i-- > 0;) {
    value = (value << 8) | bytes[offset + i];
  }
  return value;
}

bool Is(ByteView bytes, std::size_t offset, std::string_view id) {
  return bytes.size() >= offset + id.size() &&
         std::equal(id.begin(), id.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset),
                    [](char letter, std::uint8_t byte) { return static_cast<std::uint8_t>(letter) == byte; });
}

WaveFormat FormatOf(ByteView chunk) {
  return {.Tag = static_cast<std::uint16_t>(Little(chunk, 0, 2)),
          .Channels = static_cast<std::uint16_t>(Little(chunk, 2, 2)),
          .SamplesPerSecond = static_cast<std::uint32_t>(Little(chunk, 4, 4)),
          .BytesPerSecond = static_cast<std::uint32_t>(Little(chunk, 8, 4)),
          .BlockAlign = static_cast<std::uint16_t>(Little(chunk, 12, 2)),
          .BitsPerSample = static_cast<std::uint16_t>(Little(chunk, 14, 2))};
}

// RIFF, WAVE and "fmt " at their plain places: the head that needs no walk.
WaveFormat PlainFormat(ByteView head) {
  const bool plain = head.size() >= 36 && Is(head, 0, "RIFF") && Is(head, 8, "WAVE") && Is(head, 12, "fmt ");
  return plain ? FormatOf(head.subspan(20, FormatBytes)) : WaveFormat{};
}

// Walks the chunks of the file in slot 0.
class ChunkWalk {
 public:
  explicit ChunkWalk(Random& files) : files_(&files) { wave_.FileBytes = files.FileBytes(0); }

  WaveFile Run() {
    const Bytes head = files_->ReadBytes(HeadBytes, 0);
    longSizes_ = Is(head, 0, "RF64");
    if ((!longSizes_ && !Is(head, 0, "RIFF")) || !Is(head, 8, "WAVE")) {
      return Failed(WaveFault::NotWave);
    }
    std::uint64_t at = HeadBytes;
    for (int chunks = 0; chunks < MostChunks && at + ChunkHeadBytes <= wave_.FileBytes; ++chunks) {
      files_->SeekAbsolute(at, 0);
      const Bytes chunk = files_->ReadBytes(ChunkHeadBytes, 0);
      const std::uint64_t size = Little(chunk, 4, 4);
      at += ChunkHeadBytes;
      if (Is(chunk, 0, "data")) {
        return Finished(at, size);
      }
      TakeChunk(chunk, size);
      at += size + size % 2;  // chunks start at even offsets
    }
    return Failed(seenFormat_ ? WaveFault::NoData : WaveFault::NotWave);
  }

 private:
  WaveFile Failed(WaveFault fault) {
    wave_.Fault = fault;
    return wave_;
  }

  void TakeChunk(ByteView chunk, std::uint64_t size) {
    if (Is(chunk, 0, "fmt ") && size >= FormatBytes && !seenFormat_) {
      const Bytes content = files_->ReadBytes(ExtensibleBytes, 0);
      wave_.Format = FormatOf(content);
      seenFormat_ = true;
      const bool extensible = wave_.Format.Tag == ExtensibleTag && size >= ExtensibleBytes;
      pcm_ = (extensible ? Little(content, 24, 2) : wave_.Format.Tag) == PcmTag;
    } else if (Is(chunk, 0, "ds64") && size >= 16) {
      longDataBytes_ = Little(files_->ReadBytes(16, 0), 8, 8);  // RIFF size, then data size
    }
  }

  WaveFile Finished(std::uint64_t at, std::uint64_t size) {
    if (!seenFormat_) {
      return Failed(WaveFault::NotWave);
    }
    if (!pcm_) {
      return Failed(WaveFault::NotPcm);
    }
    const std::uint64_t rest = wave_.FileBytes - at;
    if (size == SizeElsewhere || size == 0) {
      size = longSizes_ && longDataBytes_ > 0 ? longDataBytes_ : rest;
    }
    wave_.DataOffset = at;
    wave_.DataBytes = std::min(size, rest);
    wave_.ChunksAhead = at != PlainDataOffset;
    return wave_;
  }

  Random* files_;
  WaveFile wave_;
  bool longSizes_ = false;
  bool seenFormat_ = false;
  bool pcm_ = false;
  std::uint64_t longDataBytes_ = 0;
};

WaveFile PlainWave(Random& files) {
  WaveFile wave;
  wave.FileBytes = files.FileBytes(0);
  wave.Format = PlainFormat(files.ReadBytes(PlainDataOffset, 0));
  wave.Fault = wave.Format == WaveFormat{} ? WaveFault::NotWave : WaveFault::None;
  wave.DataOffset = std::min(PlainDataOffset, wave.FileBytes);
  wave.DataBytes = wave.FileBytes - wave.DataOffset;
  return wave;
}

// Runs `read` on the file in slot 0, with what fails told.
template <class Read>
auto WithFile(const std::string& fileName, UserInterface& ui,
              decltype(std::declval<Read>()(std::declval<Random&>())) failed, Read read) {
  Random files(ui);
  files.DimFiles(0);
  try {
    return files.OpenSource(fileName, 0) ? read(files) : failed;
  } catch (const FileError& error) {
    ui.Tell(MessageOf(message::SourceReadFailed, fileName, error.OneLine()));
    return failed;
  }
}

}  // namespace

std::string_view FaultText(WaveFault fault) {
  switch (fault) {
    case WaveFault::NotWave:
      return "it is no WAV file";
    case WaveFault::NoData:
      return "it has no \"data\" chunk";
    case WaveFault::NotPcm:
      return "its samples are not plain PCM";
    case WaveFault::None:
    case WaveFault::Unreadable:
      break;
  }
  return "";
}

WaveFormat ReadWaveFormat(const std::string& fileName, UserInterface& ui) {
  return WithFile(fileName, ui, WaveFormat{},
                  [](Random& files) { return PlainFormat(files.ReadBytes(PlainDataOffset, 0)); });
}

WaveFile ReadWaveFile(const std::string& fileName, const Rules& rules, UserInterface& ui) {
  WaveFile unreadable;
  unreadable.Fault = WaveFault::Unreadable;
  return WithFile(fileName, ui, unreadable, [&](Random& files) {
    return rules.WavWalksToData ? ChunkWalk(files).Run() : PlainWave(files);
  });
}

}  // namespace quorvelant
