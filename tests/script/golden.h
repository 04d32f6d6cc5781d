// Scripts that are compared byte for byte with files of tests/script/data.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
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
  EXPECT_EQ(script, TempFolder::Read(Fixture(name)));
}

}  // namespace quorvelant
