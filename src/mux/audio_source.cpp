#include "mux/audio_source.h"

#include <fmt/format.h>

#include <algorithm>

namespace quorvelant {
namespace {

constexpr std::size_t ReadBytes = std::size_t{128} << 10;
constexpr std::size_t WindowBytes = 2 * ReadBytes;

}  // namespace

AudioSource::AudioSource(Random& files, int slot, const MuxAudioStream& stream, std::size_t sampleBytes)
    : stream_(&stream), sampleBytes_(sampleBytes), file_(files, slot), window_(WindowBytes) {}

bool AudioSource::OpenNext() {
  if (filesOpened_ == stream_->Paths.size()) {
    file_.Close();
    return false;
  }
  const std::uint64_t bytes = stream_->DataBytes[filesOpened_];
  file_.Open(stream_->Paths[filesOpened_], stream_->DataOffsets[filesOpened_], bytes - bytes % sampleBytes_);
  ++filesOpened_;
  return true;
}

ByteView AudioSource::Peek(std::size_t bytes) {
  while (window_.HeldBytes() < bytes) {
    if (file_.Left() > 0) {
      window_.Added(file_.Read(window_.Room(ReadBytes).first(ReadBytes)));
    } else if (!OpenNext()) {
      break;
    }
  }
  return window_.Held().first(std::min(bytes, window_.HeldBytes()));
}

void AudioSource::Consume(std::size_t bytes) {
  window_.Drop(bytes);
}

std::uint64_t AudioSource::BytesLeft() const {
  std::uint64_t bytes = window_.HeldBytes() + file_.Left();
  for (std::size_t i = filesOpened_; i < stream_->DataBytes.size(); ++i) {
    bytes += stream_->DataBytes[i];
  }
  return bytes;
}

std::string AudioSource::Place() const {
  if (filesOpened_ == 0) {
    return {};
  }
  const std::uint64_t readTo = file_.Position();
  return fmt::format("{}@{}", stream_->Paths[filesOpened_ - 1],
                     readTo - std::min<std::uint64_t>(readTo, window_.HeldBytes()));
}

}  // namespace quorvelant
