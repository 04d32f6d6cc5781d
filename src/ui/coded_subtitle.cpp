#include "ui/coded_subtitle.h"

#include <utility>

namespace quorvelant {

CodedSubtitle::CodedSubtitle(PictureWorker& worker) : worker_(worker) {
  connect(&worker, &PictureWorker::Coded, this, &CodedSubtitle::Take);
}

void CodedSubtitle::Find(std::optional<UnitOrder> order) {
  std::string key = order ? order->Key() : std::string();
  if (key == key_) {
    return;
  }
  key_ = std::move(key);
  ++number_;
  const FoundUnit* const kept = order ? cache_.Find(key_) : nullptr;
  if (order && kept == nullptr) {
    worker_.Code(number_, *std::move(order));
    return;
  }
  now_ = kept != nullptr ? *kept : FoundUnit();
  emit Found();
}

void CodedSubtitle::Take(std::uint64_t number, const std::string& key, const FoundUnit& found) {
  if (found.Unit) {
    cache_.Keep(key, found, found.Unit->Pixels.size());
  }
  if (number == number_) {
    now_ = found;
    emit Found();
  }
}

}  // namespace quorvelant
