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

}  // namespace
}  // namespace quorvelant
