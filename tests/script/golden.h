// Scripts that are compared byte for byte with files of tests/script/data.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {

inline std::string Fixture(const std::string& name) {
  return SourceFile("tests/script/data/" + name);
}

// With QUORVELANT_UPDATE set the file is written anew: read the difference before it is committed.
inline void ExpectGolden(const std::string& name, const std::string& script) {
  if (std::getenv("QUORVELANT_UPDATE") != nullptr) {  // NOLINT(concurrency-mt-unsafe): nobody sets it
    std::ofstream(Fixture(name), std::ios::binary) << script;
  }
  std::istringstream golden(TempFolder::Read(Fixture(name)));
  std::istringstream written(script);
  std::string expected;
  std::string line;
  for (int number = 1; std::getline(golden, expected); ++number) {
    ASSERT_TRUE(std::getline(written, line)) << name << " goes on with " << expected;
    ASSERT_EQ(line, expected) << name << ":" << number;
  }
  EXPECT_FALSE(std::getline(written, line)) << line;
}

}  // namespace quorvelant
