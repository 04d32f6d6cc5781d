// Single faults in finished discs: the verifier finds them.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>

#include "disc_faults.h"
#include "disc_maker.h"
#include "support/trial.h"
#include "verify/verify_disc.h"

namespace quorvelant {
namespace {

class VerifyFaults : public testing::TestWithParam<int> {
 protected:
  void MakeDisc() {
    switch (GetParam()) {
      case 0:
        maker_.Video = {.Width = 352, .Height = 288, .Frames = 60, .Closed = true, .KbitPerSecond = 500};
        maker_.LoadSmall(2);
        break;
      case 1:
        maker_.Video = {.Standard = "NTSC", .Aspect = "16:9", .Frames = 150, .Closed = true};
        maker_.LoadShown("Only LetterBox");
        break;
      default:
        maker_.Video = {.Standard = "PAL", .Frames = 250};
        maker_.LoadSmall(10, "wav");
    }
    ASSERT_EQ(maker_.Author().Outcome, AuthorOutcome::Done);
    files_ = maker_.Files();
  }

  // In the IFO and its backup alike, so that they do not give it away.
  void Put(const DiscFault& fault, unsigned mask) {
    std::vector<std::string> names{fault.File};
    if (fault.File.ends_with(".IFO")) {
      names.push_back(fault.File.substr(0, fault.File.size() - 3) + "BUP");
    }
    for (const std::string& name : names) {
      std::fstream file(maker_.Folder + "/" + name, std::ios::in | std::ios::out | std::ios::binary);
      file.seekp(static_cast<std::streamoff>(fault.Offset));
      file.put(static_cast<char>(static_cast<unsigned char>(files_.at(fault.File)[fault.Offset]) ^ mask));
    }
  }
  bool IsFound() { return VerifyDisc(maker_.Folder, maker_.Ui).Findings.HasFaults(); }

  DiscMaker maker_;
  DiscBytes files_;
};

TEST_P(VerifyFaults, NearlyAllAreFound) {
  MakeDisc();
  const VerifyResult clean = VerifyDisc(maker_.Folder, maker_.Ui);
  for (const DiscFinding& finding : clean.Findings.All()) {
    EXPECT_EQ(finding.Kind->Level, Severity::Information) << MessageOfFinding(finding, "").Text;
  }
  FaultSource source(files_, 20 + static_cast<unsigned>(GetParam()));
  const int count = TrialCount(90, 334);
  int missed = 0;
  for (int i = 0; i < count; ++i) {
    const DiscFault fault = i % 3 == 0   ? source.InTables()
                            : i % 3 == 1 ? source.InNavPack()
                                         : source.InPackHeader();
    Put(fault, 1U << fault.Bit);
    if (!IsFound()) {
      ++missed;
      std::cout << "missed: " << fault.File << " byte " << fault.Offset << " (0x" << std::hex
                << fault.Offset % SectorBytes << std::dec << " of its sector) bit " << fault.Bit << ": "
                << fault.Name << '\n';
    }
    Put(fault, 0);
  }
  EXPECT_LE(missed, std::max(1, count / 100));
  EXPECT_FALSE(IsFound());  // all was put back
}

INSTANTIATE_TEST_SUITE_P(Discs, VerifyFaults, testing::Values(0, 1, 2));

}  // namespace
}  // namespace quorvelant
