#include "verify/disc_finding.h"

#include <gmock/gmock.h>

#include "verify/messages.h"

namespace quorvelant {
namespace {

// However much is wrong, the list stays short, and nothing is left uncounted.
TEST(DiscFindings, ListTheFirstOfAKindAndCountTheRest) {
  const struct {
    const MessageKind& Kind;
    int Fields;
    int Each;
    std::size_t Listed;
  } cases[] = {
      {message::NavWrong, 1, 100, DiscFindings::MostListed},
      {message::NavWrong, 100, 1, DiscFindings::MostOfKind},
      {message::NavWrong, 100, 100, DiscFindings::MostOfKind},
      {message::NavLoose, 1, 100, DiscFindings::MostNotes},
  };
  for (const auto& test : cases) {
    DiscFindings findings;
    for (const char* file : {"VTS_01_0.VOB", "VTS_01_1.VOB"}) {
      for (int i = 0; i < test.Fields * test.Each; ++i) {
        findings.Add(test.Kind, {.File = file}, "DSI", std::to_string(i % test.Fields), "0", "1");
      }
    }
    std::uint64_t counted = 0;
    for (const DiscFinding& finding : findings.All()) {
      counted += 1 + finding.More;
    }
    EXPECT_EQ(findings.All().size(), 2 * test.Listed) << test.Fields;
    EXPECT_EQ(counted, static_cast<std::uint64_t>(2 * test.Fields * test.Each)) << test.Fields;
  }
}

TEST(DiscFindings, NameTheirPlaceOnce) {
  const auto place = [](const DiscSpot& spot) {
    DiscFindings findings;
    findings.Add(message::ImageDamaged, spot, "image", "", "whole", "cut");
    return MessageOfFinding(findings.All().front(), "discs/one.iso").Place;
  };
  EXPECT_EQ(place({}), "discs/one.iso");
  EXPECT_EQ(place({.Sector = 16}), "discs/one.iso sector 16");
  EXPECT_EQ(place({.File = "VTS_01_0.IFO", .Sector = 1, .Offset = 0x804}),
            "discs/one.iso/VTS_01_0.IFO sector 1 byte 0x804");
}

}  // namespace
}  // namespace quorvelant
