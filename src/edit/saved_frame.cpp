#include "edit/saved_frame.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "base/file_text.h"
#include "base/random.h"
#include "base/text.h"
#include "disc/video_standard.h"
#include "edit/change.h"
#include "edit/messages.h"
#include "edit/segments.h"
#include "edit/source_paths.h"
#include "model/keys.h"
#include "picture/bmp.h"

namespace quorvelant {

namespace {

// Where a column or row of the new size lies in the old one: between two neighbours, `Weight` of 256 parts to
// the second.
struct Sample {
  int First = 0;
  int Second = 0;
  int Weight = 0;
};

Sample SampleOf(int place, int from, int to) {
  constexpr std::int64_t Unit = 256;
  const std::int64_t middle = (std::int64_t{2} * place + 1) * from * Unit / (std::int64_t{2} * to) - Unit / 2;
  const std::int64_t at = std::clamp<std::int64_t>(middle, 0, (from - 1) * Unit);
  const int first = static_cast<int>(at / Unit);
  return {first, std::min(first + 1, from - 1), static_cast<int>(at % Unit)};
}

int Mixed(int first, int second, int weight) {
  return first * (256 - weight) + second * weight;
}

std::optional<Message> RefuseFrame(const Picture& frame, const std::string& file) {
  if (frame.Width <= 0 || frame.Height <= 0) {
    return MessageOf(message::FrameEmpty, file);
  }
  if (!Lower(file).ends_with(".bmp")) {
    return MessageOf(message::FrameFileUnfit, file, file);
  }
  return RefusePath(file);
}

// The still track as an import of the file makes it.
void FillStill(Track& still, const Track& source, const std::string& file, int width, int height) {
  still.VideoPlays.front().File = file;
  still.VideoFrames = 1;
  still.Standard = source.Standard;
  still.Aspect = source.Aspect;
  still.Resolution = fmt::format("{}x{}", width, height);
  still.Coding = "MPEG2";
  still.Pan = source.Pan;
  still.Letter = source.Letter;
  still.DisplayMode = source.DisplayMode;
}

}  // namespace

Picture Resized(const Picture& picture, int width, int height) {
  Picture result(width, height);
  for (int row = 0; row < height; ++row) {
    const Sample down = SampleOf(row, picture.Height, height);
    std::uint8_t* target = result.Row(row);
    for (int column = 0; column < width; ++column) {
      const Sample across = SampleOf(column, picture.Width, width);
      for (int channel = 0; channel < 3; ++channel) {
        const auto along = [&](int line) {
          const std::uint8_t* pixels = picture.Row(line) + channel;
          return Mixed(pixels[std::ptrdiff_t{3} * across.First], pixels[std::ptrdiff_t{3} * across.Second],
                       across.Weight);
        };
        constexpr int Half = 1 << 15;
        const int mixed = Mixed(along(down.First), along(down.Second), down.Weight);
        *target++ = static_cast<std::uint8_t>((mixed + Half) >> 16);
      }
    }
  }
  return result;
}

Outcome SaveFrame(const EditSession& session, const Picture& frame, const FrameFile& file) {
  const std::string path = SystemPath(file.Path, session.Work().SourceFolder());
  if (auto refusal = RefuseFrame(frame, file.Path)) {
    return Outcome::Refused(std::move(*refusal));
  }
  std::error_code error;
  if (file.Consent == Consent::None && std::filesystem::exists(path, error)) {
    return Outcome::Asks(MessageOf(message::AskReplaceImage, path));
  }
  if (file.DryRun) {
    return Outcome::Done(file.Path);
  }
  const Bytes bytes = WriteBmp(frame);
  const int refusal = WriteAside(path, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  if (refusal != 0) {
    return Outcome::Refused(
        MessageOf(message::ImageUnwritten, path, path, std::generic_category().message(refusal)));
  }
  return Outcome::Done(file.Path);
}

Outcome SaveFrameAsTrack(EditSession& session, std::size_t source, const Picture& frame,
                         const FrameFile& file) {
  const Tracks& tracks = session.Work().Tracks;
  if (source >= tracks.Count() || tracks[source].Removed) {
    return Outcome::Refused(MessageOf(message::NoSuchElement, TrackKey(source), "track", TrackKey(source)));
  }
  if (auto refusal = RefuseFrame(frame, file.Path)) {
    return Outcome::Refused(std::move(*refusal));
  }
  const int height = FullHeight(EqualNoCase(tracks[source].Standard, "NTSC"));
  Outcome saved = SaveFrame(session, Resized(frame, FullWidth, height), file);
  if (!saved.IsDone()) {
    return saved;
  }
  const std::size_t place = tracks.Count();
  Change change(session, "Save Frame");
  Outcome made = NewTrack(session, "Still", {});
  if (!made.IsDone()) {
    return made;
  }
  FillStill(change.EditTrack(place), session.Work().Tracks[source], file.Path, FullWidth, height);
  return change.Commit(VideoPlayKey(place, 1));
}

}  // namespace quorvelant
