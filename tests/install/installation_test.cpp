// What `cmake --install` puts somewhere works there.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "desk/version.h"
#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

int RunShell(const std::string& command) {
  return std::system(command.c_str());  // NOLINT(concurrency-mt-unsafe,bugprone-command-processor)
}

// The programs start from where they are installed, and the module for pictures and the example are found.
TEST(Installation, WorksWhereItIsPut) {
  const TempFolder folder;
  const std::string root = folder.Path().string();
  ASSERT_EQ(
      RunShell(fmt::format("cmake --install '{}' --prefix '{}/usr' >'{}/log'", BuildFile(""), root, root)),
      0);
  const std::string bin = root + "/usr/bin";
  EXPECT_EQ(RunShell(fmt::format("cd '{0}' && '{1}/quorvelant' author usr/share/quorvelant/examples/demo.qvp "
                                 "-o disc --quiet --no-sync && '{1}/quorvelant-window' --version >version",
                                 root, bin)),
            0);
  EXPECT_EQ(TempFolder::Read(folder / "version"), fmt::format("quorvelant-window {}\n", ProgramVersion()));
  for (const char* const file :
       {"man/man1/quorvelant.1", "man/man1/quorvelant-window.1", "bash-completion/completions/quorvelant",
        "applications/org.quorvelant.Quorvelant.desktop", "metainfo/org.quorvelant.Quorvelant.metainfo.xml",
        "mime/packages/org.quorvelant.Quorvelant.xml", "doc/quorvelant/docs/manual/index.md",
        "icons/hicolor/48x48/apps/org.quorvelant.Quorvelant.png",
        "icons/hicolor/scalable/mimetypes/application-x-quorvelant-project.svg"}) {
    EXPECT_GT(fs::file_size(folder / ("usr/share/" + std::string(file))), 100U) << file;
  }
}

}  // namespace
}  // namespace quorvelant
