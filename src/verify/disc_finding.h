// What a finished disc is found to have wrong.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "base/message.h"

namespace quorvelant {

// A place of a finding. In an IFO `Offset` counts bytes of the file, in a VOB bytes of the sector.
struct DiscSpot {
  std::string File = {};                      // empty for the image itself
  std::optional<std::uint32_t> Sector = {};   // of the file
  std::optional<std::uint32_t> Sectors = {};  // how many, where the finding is of more than one
  std::optional<std::uint32_t> Offset = {};
  bool operator==(const DiscSpot&) const = default;
};

// One finding, in the terms of the format.
struct DiscFinding {
  const MessageKind* Kind = nullptr;
  DiscSpot Spot;
  std::string Table;  // e.g. "VTS_C_ADT", "PGC 2 cell 1", "DSI"
  std::string Field;  // e.g. "VOBU_EA"
  std::string Expected;
  std::string Seen;
  std::uint64_t More = 0;  // further ones of this kind in the file, which are not listed
};

// "/VTS_01_1.VOB sector 12 byte 0x40F", as messages name it behind the disc.
[[nodiscard]] std::string SpotText(const DiscSpot& spot);
// The finding as a message, with its place in `disc`.
[[nodiscard]] Message MessageOfFinding(const DiscFinding& finding, const std::string& disc);

// The findings of one disc. A damaged disc has millions: of one kind and field a file lists the first few, of
// one kind some more, and counts the rest.
class DiscFindings {
 public:
  static constexpr std::size_t MostListed = 8;
  static constexpr std::size_t MostNotes = 2;
  static constexpr std::size_t MostOfKind = 20;
  static constexpr std::size_t MostUnread = 1000;  // a list that somebody works through

  void Add(const MessageKind& kind, DiscSpot spot, std::string table, std::string_view field,
           std::string expected, std::string seen);

  [[nodiscard]] const std::vector<DiscFinding>& All() const { return findings_; }
  [[nodiscard]] bool HasFaults() const;  // notes aside
  [[nodiscard]] std::size_t Count(Severity level) const;

 private:
  struct Listed {
    std::size_t Count = 0;  // on the list
    std::size_t Last = 0;   // index of the last one listed
  };
  std::vector<DiscFinding> findings_;
  std::map<std::pair<const MessageKind*, std::string>, Listed> kinds_;  // by file
  std::map<std::tuple<const MessageKind*, std::string, std::string>, Listed> fields_;
};

}  // namespace quorvelant
