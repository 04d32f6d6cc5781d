#include "ui/picture_leads.h"

#include <algorithm>
#include <exception>

#include "base/file_text.h"
#include "disc/start_codes.h"

namespace quorvelant {

namespace {

constexpr int Slot = 0;
// Sequence and group headers and their user data, such as captions, take less.
constexpr std::uint64_t MostHeadBytes = 4096;

}  // namespace

std::int64_t LeadIn(ByteView head) {
  constexpr std::uint8_t PictureStart = 0x00;
  constexpr std::uint8_t GroupStart = 0xB8;
  bool hasGroup = false;
  for (std::size_t at = 0; at + 6 <= head.size(); ++at) {
    if (head[at] != 0 || head[at + 1] != 0 || head[at + 2] != 1) {
      continue;
    }
    if (head[at + 3] == PictureStart) {
      return hasGroup ? head[at + 4] << 2U | head[at + 5] >> 6U : 0;
    }
    hasGroup = hasGroup || head[at + 3] == GroupStart;
  }
  return 0;
}

bool LeadReader::Open(std::size_t play) {
  if (open_ != play) {
    open_ = play;
    film_.reset();
    if (play < paths_.size() && WhyNotPlainFile(paths_[play]).empty()) {
      ui_ = std::make_unique<SilentUi>();
      auto film = std::make_unique<Random>(*ui_);
      film->DimFiles(Slot);
      film_ = film->OpenSource(paths_[play], Slot) ? std::move(film) : nullptr;
    }
  }
  return film_ != nullptr;
}

std::int64_t LeadReader::Read(const ViewerPicture& picture) {
  try {
    if (!Open(picture.Play)) {
      return 0;
    }
    const std::uint64_t bytes =
        picture.Bytes == 0 ? MostHeadBytes : std::min<std::uint64_t>(picture.Bytes, MostHeadBytes);
    film_->SeekAbsolute(picture.Offset, Slot);
    return LeadIn(film_->ReadBytes(static_cast<std::size_t>(bytes), Slot));
  } catch (const std::exception&) {
    film_.reset();
    return 0;
  }
}

bool LeadReader::ReadFor(std::chrono::milliseconds time, std::vector<ViewerPicture>& pictures,
                         std::int64_t frames) {
  const auto end = std::chrono::steady_clock::now() + time;
  for (; next_ < pictures.size(); ++next_) {
    if (std::chrono::steady_clock::now() >= end) {
      return false;
    }
    ViewerPicture& picture = pictures[next_];
    const std::int64_t until = next_ + 1 < pictures.size() ? pictures[next_ + 1].Frame : frames;
    const std::int64_t lead = Read(picture);
    picture.Lead = until > 0 && picture.Frame + lead >= until ? 0 : lead;
  }
  return true;
}

}  // namespace quorvelant
