#include "verify/decoder_buffer.h"

#include <gmock/gmock.h>

namespace quorvelant {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t Byte = 150;  // in sevenths of a tick of 27 MHz

// Packs of 700 bytes, of which each takes 15000 ticks to arrive, one every 20000.
struct BufferRun {
  explicit BufferRun(std::int64_t size) : Buffer(Teller, "stream") { Buffer.SetSize(size); }
  void Packs(int count) {
    for (int i = 0; i < count; ++i, ++Sent) {
      Buffer.Arrive(static_cast<std::uint32_t>(Sent), 20000 * Sent, 20000 * Sent + 700 * Byte / 7, 700);
    }
  }
  std::vector<std::string> Codes() {
    Buffer.Settle();
    std::vector<std::string> codes;
    for (const DiscFinding& finding : Findings.All()) {
      codes.emplace_back(finding.Kind->Code);
    }
    return codes;
  }
  DiscSourceFile File{.Name = "VTS_01_1.VOB"};
  VobSetFiles Files{{{&File, 0, 100}}};
  DiscFindings Findings;
  VobTeller Teller{Files, Findings};
  int Sent = 0;
  DecoderBuffer Buffer;
};

TEST(DecoderBuffer, HoldsUnitsUntilTheyAreDecoded) {
  const struct {
    const char* What;
    std::int64_t Size;
    std::int64_t FirstUnit;  // when it leaves, 27 MHz
    std::vector<std::string> Codes;
  } cases[] = {
      {"the second unit comes when the first has gone", 700, 20000, {}},
      {"both fit", 1400, 30000, {}},
      {"the first is still there", 1399, 36000, {"verify-buffer-over"}},
      {"a unit leaves as its last byte arrives", 1400, 15000, {}},
      {"a tick before it is not all there", 1400, 14999, {"verify-buffer-under"}},
  };
  for (const auto& test : cases) {
    BufferRun run(test.Size);
    run.Packs(2);
    run.Buffer.AddUnit(700, test.FirstUnit);
    run.Buffer.AddUnit(1400, 90000);
    EXPECT_EQ(run.Codes(), test.Codes) << test.What;
  }
}

}  // namespace
}  // namespace quorvelant
