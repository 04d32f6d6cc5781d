// Commands of each type, and what is wrong with others of one bit more.
#include "verify/command_check.h"

#include <gtest/gtest.h>

namespace quorvelant {
namespace {

TEST(CommandCheck, LeavesAloneWhatTheFormatKnows) {
  for (const char* digits :
       {"0000000000000000", "0001000000000004", "0002000000000000", "0003000000000305", "0091000A00840003",
        "2004000000000001", "2006000000000402", "2007000000000403", "2005000000000804", "2001000000000401",
        "2001000000000010", "20E4000100030002", "2001000000000800", "3001000000000000", "3002000000020000",
        "3005000500010000", "3006000000000000", "3006000000420000", "3006000101830000", "3006000200C00000",
        "3008000000420000", "3008000201C00000", "3008000001830000", "3022000000010405", "51000080C0810000",
        "5100008F00000000", "4100008300000000", "5600000004000000", "5200003C00020000", "5300000500830000",
        "5400000010080000", "7100000100050000", "6300000100020000", "5104008100000001", "9121000500840401",
        "B123000701020005", "D123000701020005", "7101000300841C01", "61A0050300840007"}) {
    const auto fault = FaultOf(ParseCommandHex(digits));
    EXPECT_FALSE(fault) << digits << " byte " << fault->Byte << " " << fault->Expected;
  }
}

TEST(CommandCheck, FindsTheByteThatIsWrong) {
  struct Wrong {
    const char* Digits;
    bool IsIllegal;
    std::size_t Byte;
  };
  for (const Wrong& wrong : {Wrong{"E000000000000000", true, 0},  Wrong{"0004000000000001", true, 1},
                             Wrong{"0500000000000000", true, 0},  Wrong{"2002000000000000", true, 1},
                             Wrong{"2001000000000404", true, 7},  Wrong{"2001000000000011", true, 7},
                             Wrong{"3004000000010000", true, 1},  Wrong{"3006000000430000", true, 5},
                             Wrong{"3006000101880000", true, 5},  Wrong{"5700000000000000", true, 0},
                             Wrong{"7C00000100050000", true, 0},  Wrong{"20A4002000030002", true, 3},
                             Wrong{"6300000100990000", true, 5},  Wrong{"0000000000000001", false, 7},
                             Wrong{"0101000000000004", true, 0},  Wrong{"2004000000008001", false, 6},
                             Wrong{"2006000000000482", false, 7}, Wrong{"2001000000000601", false, 6},
                             Wrong{"3002000000820000", false, 5}, Wrong{"3001000000000001", false, 7},
                             Wrong{"3006010000420000", false, 2}, Wrong{"7100001100050000", false, 3}}) {
    const auto fault = FaultOf(ParseCommandHex(wrong.Digits));
    ASSERT_TRUE(fault) << wrong.Digits;
    EXPECT_EQ(fault->IsIllegal, wrong.IsIllegal) << wrong.Digits;
    EXPECT_EQ(fault->Byte, wrong.Byte) << wrong.Digits;
  }
}

}  // namespace
}  // namespace quorvelant
