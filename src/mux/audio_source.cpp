#include "mux/audio_source.h"

#include <fmt/format.h>

#include <algorithm>

#include "mux/messages.h"
#include "mux/mux_fault.h"

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
  starts_.push_back(bytesRead_);
  return true;
}

// False at the end of the last file.
bool AudioSource::ReadMore() {
  while (file_.Left() == 0) {
    if (!OpenNext()) {
      atEnd_ = true;
      return false;
    }
  }
  const std::size_t got = file_.Read(window_.Room(ReadBytes).first(ReadBytes));
  window_.Added(got);
  bytesRead_ += got;
  return true;
}

void AudioSource::MendFrames() {
  mender_.emplace(ReadAc3Frame(Peek(ReadBytes), 0));
  mended_ = 0;
}

void AudioSource::MendTo(std::size_t bytes) {
  using enum Ac3Mender::Answer;
  while (mended_ < bytes) {
    const std::size_t places = mender_->Damage().Places;
    const Where here = places == 0 ? WhereIs(mended_) : Where{};
    const Ac3Mender::Answer answer = mender_->Look(window_, mended_, atEnd_);
    if (places == 0 && mender_->Damage().Places > 0) {
      firstDamage_ = fmt::format("{}@{}", stream_->Paths[here.File], here.Byte);
    }
    if (answer == Frame) {
      mended_ += mender_->Kind().Bytes;
    } else if (answer == MoreBytes) {
      ReadMore();
    } else if (answer == Changed) {
      throw MuxFault(message::AudioChanges, Place(mended_), File(mended_), WhereIs(mended_).Byte,
                     WordsOf(mender_->Kind()), WordsOf(ReadAc3Frame(window_.Held(), mended_)));
    } else if (answer == End) {
      return;
    }
  }
}

ByteView AudioSource::Peek(std::size_t bytes) {
  if (mender_) {
    MendTo(bytes);
    return window_.Held().first(std::min(bytes, mended_));
  }
  while (window_.HeldBytes() < bytes && ReadMore()) {
  }
  return window_.Held().first(std::min(bytes, window_.HeldBytes()));
}

void AudioSource::Consume(std::size_t bytes) {
  window_.Drop(bytes);
  mended_ -= mender_ ? bytes : 0;
}

std::uint64_t AudioSource::BytesLeft() const {
  std::uint64_t bytes = window_.HeldBytes() + file_.Left();
  for (std::size_t i = filesOpened_; i < stream_->DataBytes.size(); ++i) {
    bytes += stream_->DataBytes[i];
  }
  return bytes;
}

AudioSource::Where AudioSource::WhereIs(std::size_t ahead) const {
  const std::uint64_t behind = window_.HeldBytes() - std::min(ahead, window_.HeldBytes());
  const std::uint64_t at = bytesRead_ - std::min(bytesRead_, behind);
  const auto next = std::ranges::upper_bound(starts_, at);
  const auto file = static_cast<std::size_t>(next - starts_.begin() - (next == starts_.begin() ? 0 : 1));
  return {file, starts_.empty() ? 0 : stream_->DataOffsets[file] + at - std::min(at, starts_[file])};
}

std::string AudioSource::Place(std::size_t ahead) const {
  return starts_.empty() ? std::string() : fmt::format("{}@{}", File(ahead), WhereIs(ahead).Byte);
}

std::string AudioSource::File(std::size_t ahead) const {
  return starts_.empty() ? std::string() : stream_->Paths[WhereIs(ahead).File];
}

}  // namespace quorvelant
