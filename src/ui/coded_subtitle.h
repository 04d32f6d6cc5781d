// What a player makes of the subtitle that is looked at.
#pragma once

#include <QObject>
#include <cstdint>
#include <optional>
#include <string>

#include "subpicture/unit_reader.h"
#include "ui/picture_worker.h"
#include "ui/recent_cache.h"

namespace quorvelant {

// Coded by the worker as the disc will have it, and kept for the next time. The newest request wins.
class CodedSubtitle : public QObject {
  Q_OBJECT
 public:
  explicit CodedSubtitle(PictureWorker& worker);

  // At once where it is kept, or else later: until then the last one stays. Nothing for no subtitle.
  void Find(std::optional<UnitOrder> order);

  [[nodiscard]] const std::optional<ShownUnit>& Now() const { return now_.Unit; }
  [[nodiscard]] const std::string& Hindrance() const { return now_.Why; }  // why there is none

 signals:
  void Found();

 private:
  void Take(std::uint64_t number, const std::string& key, const FoundUnit& found);

  PictureWorker& worker_;
  std::uint64_t number_ = 0;
  std::string key_;  // of what is shown or looked for
  FoundUnit now_;
  RecentCache<std::string, FoundUnit> cache_{std::size_t{16} << 20U};
};

}  // namespace quorvelant
