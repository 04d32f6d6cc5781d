// Decoded pictures that may be asked for again.
#pragma once

#include <QImage>
#include <cstddef>
#include <list>
#include <map>
#include <utility>

#include "ui/picture_worker.h"

namespace quorvelant {

// Within its bytes, the least recently used go first; the newest one always stays.
class PictureCache {
 public:
  static constexpr std::size_t UsualBytes = std::size_t{64} << 20U;

  explicit PictureCache(std::size_t mostBytes = UsualBytes) : mostBytes_(mostBytes) {}

  // Null where it is not kept.
  [[nodiscard]] QImage Find(const PictureOrder& order) {
    const auto found = places_.find(order);
    if (found == places_.end()) {
      return {};
    }
    pictures_.splice(pictures_.begin(), pictures_, found->second);
    return found->second->second;
  }

  void Keep(const PictureOrder& order, const QImage& picture) {
    if (places_.contains(order)) {
      return;
    }
    pictures_.emplace_front(order, picture);
    places_[order] = pictures_.begin();
    bytes_ += BytesOf(picture);
    while (bytes_ > mostBytes_ && pictures_.size() > 1) {
      bytes_ -= BytesOf(pictures_.back().second);
      places_.erase(pictures_.back().first);
      pictures_.pop_back();
    }
  }

  [[nodiscard]] std::size_t Bytes() const { return bytes_; }

 private:
  static std::size_t BytesOf(const QImage& picture) {
    return static_cast<std::size_t>(picture.sizeInBytes());
  }

  std::list<std::pair<PictureOrder, QImage>> pictures_;
  std::map<PictureOrder, std::list<std::pair<PictureOrder, QImage>>::iterator> places_;
  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
};

}  // namespace quorvelant
