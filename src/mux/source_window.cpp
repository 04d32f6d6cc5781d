#include "mux/source_window.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "mux/messages.h"
#include "mux/mux_fault.h"

namespace quorvelant {
ByteSpan SlidingWindow::Room(std::size_t bytes) {
  if (buffer_.size() - end_ < bytes) {
    // By whole pages, so that addresses and offsets in the file stay equal modulo a page (base/io_bytes.h).
    const std::size_t by = begin_ - begin_ % PageBytes;
    std::memmove(buffer_.data() + begin_ - by, buffer_.data() + begin_, end_ - begin_);
    end_ -= by;
    begin_ -= by;
  }
  if (buffer_.size() - end_ < bytes) {
    buffer_.resize(end_ + bytes);
  }
  return ByteSpan(buffer_).subspan(end_);
}

void SlidingWindow::Replace(std::size_t at, std::size_t removed, ByteView inserted) {
  if (inserted.size() > removed) {
    Room(inserted.size() - removed);
  }
  const ByteSpan from = ByteSpan(buffer_).subspan(begin_ + at);
  const std::size_t rest = end_ - begin_ - at - removed;
  std::memmove(from.data() + inserted.size(), from.data() + removed, rest);
  std::ranges::copy(inserted, from.begin());
  end_ = end_ - removed + inserted.size();
}

SourceFile::SourceFile(SourceFile&& other) noexcept
    : files_(other.files_),
      slot_(other.slot_),
      path_(std::move(other.path_)),
      position_(other.position_),
      left_(other.left_),
      open_(std::exchange(other.open_, false)),
      made_(std::move(other.made_)) {}

void SourceFile::Open(const std::string& path, std::uint64_t from, std::uint64_t bytes) {
  Close();
  if (!files_->OpenSource(path, slot_)) {
    throw MuxFault(message::MuxSourceNotOpened, path, path);
  }
  open_ = true;
  path_ = path;
  position_ = from;
  const std::uint64_t size = files_->FileBytes(slot_);
  left_ = bytes != WholeFile ? bytes : size - std::min(from, size);
  files_->SeekAbsolute(from, slot_);
}

void SourceFile::OpenMade(const std::string& path, Bytes made) {
  Close();
  path_ = path;
  position_ = 0;
  left_ = made.size();
  made_ = std::move(made);
}

void SourceFile::Close() {
  if (open_) {
    files_->CloseFile(slot_);
    open_ = false;
  }
  left_ = 0;
  made_ = {};
}

std::size_t SourceFile::Read(ByteSpan target) {
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(target.size(), left_));
  if (!open_) {
    std::copy_n(made_.begin() + static_cast<std::ptrdiff_t>(position_), wanted, target.begin());
    position_ += wanted;
    left_ -= wanted;
    return wanted;
  }
  const std::size_t got = files_->ReadInto(target.first(wanted), slot_);
  if (got < wanted) {
    throw MuxFault(message::MuxSourceShrunk, fmt::format("{}@{}", path_, position_ + got), path_,
                   position_ + got, left_ - got);
  }
  position_ += got;
  left_ -= got;
  return got;
}

}  // namespace quorvelant
