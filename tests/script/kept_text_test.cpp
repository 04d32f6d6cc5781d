#include "script/kept_text.h"

#include <gtest/gtest.h>

namespace quorvelant {
namespace {

TEST(KeptText, CommentsStayBeforeTheirLines) {
  struct Row {
    const char* Original;
    const char* Written;
    const char* Merged;
  };
  for (const Row& row : {
           Row{"# top\na=1\n  # in\nb=2\n# end\n", "a=1\r\n\tb=2\r\n",
               "# top\r\na=1\r\n\t# in\r\n\tb=2\r\n# end\r\n"},
           // The writer adds what was not said, writes blanks its own way and leaves out what it does not
           // keep.
           {"x=1\n#1\nA = 1\n#2\nb=2\n#3\nc=3\n", "d=0\r\na=1\r\ne=0\r\nc=3\r\n",
            "d=0\r\n#1\r\na=1\r\ne=0\r\n#2\r\n#3\r\nc=3\r\n"},
           {"i\nn=1\n#1\ni\nn=2\n#2\ni\nn=3", "i\r\nn=1\r\ni\r\ni\r\nn=2\r\ni\r\nn=3\r\n",
            "i\r\nn=1\r\n#1\r\ni\r\ni\r\nn=2\r\n#2\r\ni\r\nn=3\r\n"},
           {"\xEF\xBB\xBF#1\r\na", "a\r\n", "#1\r\na\r\n"},
           {"a=1", "a=1\r\n", "a=1\r\n"},
       }) {
    const std::string merged = WithCommentsOf(row.Original, row.Written);
    EXPECT_EQ(merged, row.Merged) << row.Original;
    EXPECT_EQ(WithCommentsOf(merged, row.Written), merged) << "again";
  }
  EXPECT_EQ(WithLineEndsOf("a\nb\r\n", "c\r\n"), "c\n");
  EXPECT_EQ(WithLineEndsOf("a\r\nb\n", "c\r\n"), "c\r\n");
  EXPECT_EQ(WithLineEndsOf("", "c\r\n"), "c\r\n");
}

}  // namespace
}  // namespace quorvelant
