// The examples of the page for users are true.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "base/text.h"
#include "support/folders.h"
#include "vm/decoder.h"
#include "vm/resolver.h"

namespace quorvelant {
namespace {

TEST(CommandsPage, EveryExampleHasItsDigits) {
  std::ifstream page(SourceFile("docs/commands.md"));
  std::string line;
  int examples = 0;
  while (std::getline(page, line)) {
    const std::vector<std::string_view> ticks = Split(line, "`");
    if (!line.starts_with("| `") || ticks.size() < 5) {
      continue;
    }
    ++examples;
    const std::string_view text = ticks[1];
    const Resolution result = ResolveText(text, {}, nullptr, {.Numbers = NumericTargets::First});
    EXPECT_EQ(result.Hex, ticks[3]) << text;
    EXPECT_EQ(result.Faults, TextFault::None) << text;
    EXPECT_EQ(DecodeCommand(ticks[3]).Text, text);
  }
  EXPECT_GT(examples, 35);
}

}  // namespace
}  // namespace quorvelant
