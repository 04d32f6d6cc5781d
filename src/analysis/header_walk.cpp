#include "analysis/header_walk.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

#include "analysis/find_next_header.h"

namespace quorvelant {

namespace {

constexpr std::string_view ShrunkLine = "The file '{}' became shorter while it was read.";

// Bytes at a window's end that may be a start code cut by it.
constexpr std::size_t CutPrefixBytes = 3;

}  // namespace

HeaderWalk::HeaderWalk(Random& files, int slot, const WalkOptions& options)
    : files_(&files), slot_(slot), options_(options), fileBytes_(files.FileBytes(slot)) {
  const std::size_t blockBytes =
      std::min<std::uint64_t>(std::max(options.BlockBytes, HeaderBytes), fileBytes_);
  static_assert(HeaderBytes <= PageBytes);
  buffer_.resize(PageBytes + blockBytes);
  block_ = ByteSpan(buffer_).subspan(PageBytes);
  files.SeekAbsolute(0, slot);
  Refill(0);
}

// The next window starts at `from` of the present one, of which less than a header is left there.
void HeaderWalk::Refill(std::size_t from) {
  const std::size_t kept = window_.size() - from;
  std::copy(window_.end() - static_cast<std::ptrdiff_t>(kept), window_.end(), block_.data() - kept);
  base_ += from;
  const std::size_t wanted = std::min<std::uint64_t>(block_.size(), fileBytes_ - readTo_);
  if (files_->ReadInto(block_.first(wanted), slot_) < wanted) {
    throw FileError(FileError::UnknownNumber, fmt::format(ShrunkLine, files_->FileName(slot_)));
  }
  readTo_ += wanted;
  window_ = {block_.data() - kept, kept + wanted};
  searchFrom_ = 0;
  if (options_.Ui != nullptr) {
    options_.Ui->Progress(static_cast<double>(base_), static_cast<double>(fileBytes_));
    stopped_ = options_.Ui->StopRequested();
  }
}

std::optional<FoundHeader> HeaderWalk::Next() {
  while (!stopped_) {
    std::size_t position = searchFrom_ + 1;
    int pictureType = 0;
    const std::string_view word = FindNextHeader(window_, position, options_.SkipNonPictureHeaders,
                                                 pictureType, options_.WantPictureType);
    std::size_t start = position - 1;
    if (word == headers::None) {
      start = std::max(searchFrom_, window_.size() - std::min(CutPrefixBytes, window_.size()));
    }
    const bool whole = window_.size() - start >= HeaderBytes;
    if (!whole && !AllRead()) {
      Refill(start);
      continue;
    }
    if (word == headers::None || word == headers::NoRoom) {
      return std::nullopt;
    }
    searchFrom_ = start + 1;
    if (word == headers::NoFrametypeRoom) {
      continue;  // the forbidden type 0, or a picture cut by the file's end
    }
    const ByteView rest = window_.subspan(start);
    return FoundHeader{word, base_ + start, rest.first(std::min(rest.size(), HeaderBytes)), pictureType};
  }
  return std::nullopt;
}

}  // namespace quorvelant
