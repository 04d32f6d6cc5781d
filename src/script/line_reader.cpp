#include "script/line_reader.h"

#include <algorithm>
#include <cstring>

namespace quorvelant {

bool LineReader::Fill() {
  if (start_ > 0) {
    std::copy(window_.begin() + static_cast<std::ptrdiff_t>(start_),
              window_.begin() + static_cast<std::ptrdiff_t>(end_), window_.begin());
    end_ -= start_;
    start_ = 0;
  }
  if (end_ == window_.size()) {
    window_.resize(window_.size() * 2);
  }
  stream_.read(window_.data() + end_, static_cast<std::streamsize>(window_.size() - end_));
  const auto count = static_cast<std::size_t>(stream_.gcount());
  end_ += count;
  bytesRead_ += count;
  return count > 0;
}

void LineReader::PassOverRest() {
  for (;;) {
    const char* from = window_.data() + start_;
    const auto* found = static_cast<const char*>(std::memchr(from, '\n', end_ - start_));
    if (found != nullptr) {
      start_ += static_cast<std::size_t>(found - from) + 1;
      return;
    }
    start_ = end_ = 0;
    if (!Fill()) {
      return;
    }
  }
}

bool LineReader::Next() {
  if (restUnread_) {
    PassOverRest();
    restUnread_ = false;
  }
  std::size_t seen = 0;
  for (;;) {
    const char* from = window_.data() + start_;
    const auto* found = static_cast<const char*>(std::memchr(from + seen, '\n', end_ - start_ - seen));
    if (found != nullptr) {
      line_ = std::string_view(from, static_cast<std::size_t>(found - from));
      start_ += line_.size() + 1;
      break;
    }
    seen = end_ - start_;
    if (seen > MostLineBytes) {
      line_ = std::string_view(from, seen);
      start_ = end_;
      restUnread_ = true;
      break;
    }
    if (!Fill()) {
      if (start_ == end_) {
        return false;
      }
      line_ = std::string_view(window_.data() + start_, end_ - start_);
      start_ = end_;
      break;
    }
  }
  ++number_;
  tooLong_ = line_.size() > MostLineBytes;
  if (tooLong_) {
    line_ = line_.substr(0, MostLineBytes);
  } else if (line_.ends_with('\r')) {
    line_.remove_suffix(1);
  }
  return true;
}

}  // namespace quorvelant
