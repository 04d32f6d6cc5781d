#include "verify/subpicture_walk.h"

#include <algorithm>
#include <array>

namespace quorvelant {
namespace {

constexpr std::int64_t BufferBytes = 52LL * 1024;
constexpr std::size_t MostUnitBytes = 53220;
constexpr std::int64_t ClockTicks = 300;  // 27 MHz, of a tick of 90 kHz

// Commands of a control sequence.
constexpr unsigned SetArea = 5;
constexpr unsigned SetData = 6;
constexpr unsigned ChangeColors = 7;
constexpr unsigned EndOfSequence = 0xFF;
constexpr std::array<std::size_t, 7> CommandBytes{0, 0, 0, 2, 2, 6, 4};  // after the code, by code

}  // namespace

SubpictureWalk::SubpictureWalk(const VobTeller& teller, unsigned stream, int height)
    : teller_(&teller),
      name_(fmt::format("subpicture stream 0x{:02X}", stream)),
      height_(height),
      buffer_(teller, name_ + " buffer") {
  buffer_.SetSize(BufferBytes);
}

template <class Expected, class Seen>
void SubpictureWalk::Bad(const char* field, const Expected& expected, const Seen& seen) const {
  teller_->Tell(message::SubpictureBroken, unitSector_, 0, name_, field, expected, seen);
}

std::size_t SubpictureWalk::UnitBytes() const {
  return unit_.size() < 2 ? 0 : GetBytes(unit_, 0, 2);
}

void SubpictureWalk::Feed(const ScannedPacket& packet) {
  const ByteView payload = packet.Payload.subspan(1);
  buffer_.Arrive(packet.Sector, packet.Begin, packet.End, payload.size());
  if (packet.Pts) {
    if (open_) {
      Bad("SPDSZ", fmt::format("{} bytes before the next unit", UnitBytes()), unit_.size());
    }
    if (lastPts_ && *packet.Pts <= *lastPts_) {
      teller_->Tell(message::StampWrong, packet.Sector, 0, name_, "PTS", fmt::format("after {}", *lastPts_),
                    *packet.Pts);
    }
    unit_.clear();
    unitSector_ = packet.Sector;
    unitPts_ = *packet.Pts;
    firstPts_ = firstPts_.value_or(unitPts_);
    lastPts_ = unitPts_;
    open_ = true;
  } else if (!open_) {
    teller_->Tell(message::SubpictureBroken, packet.Sector, packet.At, name_, "",
                  "a packet that continues a unit", "one without a unit");
    return;
  }
  unit_.insert(unit_.end(), payload.begin(), payload.end());
  if (unit_.size() >= std::max<std::size_t>(4, UnitBytes())) {
    open_ = false;
    if (unit_.size() > UnitBytes()) {
      Bad("SPDSZ", fmt::format("{} bytes to the end of the packet", unit_.size()), UnitBytes());
    }
    buffer_.AddUnit(buffer_.Total(), unitPts_ * ClockTicks);
    CheckUnit();
  }
  buffer_.Settle();
}

void SubpictureWalk::EndVob() {
  if (open_) {
    Bad("SPDSZ", fmt::format("{} bytes before the end of the VOB", UnitBytes()), unit_.size());
  }
}

void SubpictureWalk::CheckUnit() {
  const std::size_t bytes = UnitBytes();
  const std::size_t table = GetBytes(unit_, 2, 2);
  if (bytes > MostUnitBytes) {
    Bad("SPDSZ", fmt::format("at most {}", MostUnitBytes), bytes);
  }
  if (table < 4 || table + 5 > bytes || bytes > unit_.size()) {
    Bad("SP_DCSQTA", fmt::format("an offset within {} bytes", bytes), table);
    return;
  }
  commands_ = 0;
  sequenceTime_ = 0;
  std::optional<std::size_t> at = table;
  while (at) {
    at = CheckSequence(*at);
  }
  constexpr unsigned Needed = 0b111'1000;  // colours, contrasts, area, data
  if ((commands_ & Needed) != Needed || (commands_ & 3U) == 0) {
    Bad("SP_DCSQ", "colours, contrasts, area, data and a start", "less");
  }
}

std::optional<std::size_t> SubpictureWalk::CheckSequence(std::size_t at) {
  const auto time = static_cast<std::uint32_t>(GetBytes(unit_, at, 2));
  const std::size_t next = GetBytes(unit_, at + 2, 2);
  if (time < sequenceTime_) {
    Bad("SP_DCSQ_STM", fmt::format("{} or later", sequenceTime_), time);
  }
  sequenceTime_ = time;
  std::optional<std::size_t> command = at + 4;
  while (command && *command < UnitBytes() && unit_[*command] != EndOfSequence) {
    command = CheckControl(*command);
  }
  if (!command) {
    return std::nullopt;
  }
  if (*command >= UnitBytes()) {
    Bad("SP_DCSQ", "an end of the sequence", "none");
    return std::nullopt;
  }
  if (next == at) {
    return std::nullopt;
  }
  if (next <= *command || next + 5 > UnitBytes()) {
    Bad("SP_NXT_DCSQ_SA", "a later sequence of the unit", next);
    return std::nullopt;
  }
  return next;
}

std::optional<std::size_t> SubpictureWalk::CheckControl(std::size_t at) {
  const unsigned code = unit_[at];
  std::size_t bytes = 0;
  if (code < CommandBytes.size()) {
    bytes = CommandBytes.at(code);
  } else if (code == ChangeColors && at + 3 <= UnitBytes()) {
    bytes = std::max<std::size_t>(2, GetBytes(unit_, at + 1, 2));
  } else {
    Bad("SP_DCSQ", "a command of the format", fmt::format("0x{:02X}", code));
    return std::nullopt;
  }
  if (at + 1 + bytes >= UnitBytes()) {
    Bad("SP_DCSQ", "a command within the unit", fmt::format("{} bytes at {}", bytes, at));
    return std::nullopt;
  }
  commands_ |= 1U << code;
  const ByteView values = ByteView(unit_).subspan(at + 1, bytes);
  if (code == SetArea) {
    const unsigned left = values[0] << 4U | values[1] >> 4U;
    const unsigned right = (values[1] & 15U) << 8U | values[2];
    const unsigned top = values[3] << 4U | values[4] >> 4U;
    const unsigned bottom = (values[4] & 15U) << 8U | values[5];
    if (left > right || right > 719 || top > bottom || bottom >= static_cast<unsigned>(height_)) {
      Bad("SET_DAREA", fmt::format("an area of 720x{}", height_),
          fmt::format("{} to {}, {} to {}", left, right, top, bottom));
    }
  } else if (code == SetData) {
    const std::size_t table = GetBytes(unit_, 2, 2);
    for (const std::size_t field : {GetBytes(values, 0, 2), GetBytes(values, 2, 2)}) {
      if (field < 4 || field > table) {
        Bad("SET_DSPXA", fmt::format("4 to {}", table), field);
      }
    }
  }
  return at + 1 + bytes;
}

}  // namespace quorvelant
