// Checks the buttons of navigation packs.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "base/bytes.h"
#include "verify/ifo_tables.h"
#include "verify/vob_place.h"
#include "verify/vobu_facts.h"

namespace quorvelant {

class HighlightCheck {
 public:
  // `isKnown`: of the video more than its standard is; `isOurs`: this program made the disc.
  HighlightCheck(const VobTeller& teller, const IfoVideo& video, bool isKnown, bool isOurs)
      : teller_(&teller), video_(video), isKnown_(isKnown), isOurs_(isOurs) {}

  // The navigation pack of a VOBU; keeps its buttons in `kept` where they are new.
  void Check(ByteView nav, const VobuFacts& vobu, std::vector<HighlightFacts>& kept);

 private:
  template <class Expected, class Seen>
  void Bad(std::size_t offset, std::string_view field, const Expected& expected, const Seen& seen) const;
  void CheckGeneral(ByteView nav, const VobuFacts& vobu) const;
  void CheckGroups(ByteView nav, unsigned groups) const;
  void CheckButton(ByteView nav, std::size_t at, const std::string& name, unsigned count) const;

  const VobTeller* teller_;
  IfoVideo video_;
  bool isKnown_;
  bool isOurs_;
  Bytes before_;  // the HLI of the VOBU before in this cell; empty for none
  std::uint16_t vobId_ = 0;
  std::uint8_t cellId_ = 0;
  std::uint32_t sector_ = 0;
};

}  // namespace quorvelant
