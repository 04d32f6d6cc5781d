// What the boxes say that users know, to the letter.
#pragma once

#include <fmt/format.h>
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "base/message.h"
#include "support/folders.h"

namespace quorvelant {

// Words with the code of a box are those of the box, and so are those of a question with its title. A box is
// a line of the table: code, title and text; "*" stands for values and line ends.
inline void ExpectBox(const Message& words) {
  const std::string own = fmt::format("|{}|{}", words.Title, words.Text);
  bool isKnown = false;
  bool isRight = false;
  std::ifstream table(SourceFile("tests/edit/data/boxes.txt"));
  for (std::string box; std::getline(table, box);) {
    const std::string said = box.substr(box.find('|'));
    const bool isMeant = words.Code.empty() ? said.starts_with(fmt::format("|{}|", words.Title))
                                            : box.starts_with(fmt::format("{}|", words.Code));
    isKnown = isKnown || isMeant;
    isRight = isRight || (isMeant && fnmatch(said.c_str(), own.c_str(), 0) == 0);
  }
  EXPECT_TRUE(table.eof() && (isRight || !isKnown)) << words.Code << own;
}

}  // namespace quorvelant
