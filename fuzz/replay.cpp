// Runs a fuzz target over every file of the folders named: the seeds are part of the test run.
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount);

namespace {

int ReplayFolder(const std::filesystem::path& folder) {
  int seeds = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) {
      continue;
    }
    std::ifstream file(entry.path(), std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    ++seeds;
  }
  return seeds;
}

}  // namespace

int main(int argc, char** argv) try {
  int seeds = 0;
  for (int i = 1; i < argc; ++i) {
    seeds += ReplayFolder(argv[i]);
  }
  std::printf("%d seeds replayed\n", seeds);
  return seeds > 0 ? 0 : 1;
} catch (const std::exception& fault) {
  std::fprintf(stderr, "%s\n", fault.what());
  return 1;
}
