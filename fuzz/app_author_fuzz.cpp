// Video and sound of any bytes through the whole of `author`: a disc with a menu and a title of two
// chapters. The first byte holds switches, the second how many 256ths of the rest are video; what remains
// is sound. A run ends with a disc or with nothing in its place.
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/command_form.h"
#include "memory_file.h"

namespace {

namespace fs = std::filesystem;
using namespace quorvelant;  // NOLINT(google-build-using-namespace): a program of its own

enum Switch : unsigned {
  Classic = 1,
  Wave = 2,        // the sound is a WAV file
  TwoFiles = 4,    // every play list names its file twice
  Ntsc = 8,        // the script's word; the video has its own
  Analyse = 16,    // chapters move onto pictures
  TwoStreams = 32  // the sound stands in two streams
};

// The folder of this process, gone with it.
struct WorkFolder {
  fs::path Path = fs::temp_directory_path() / ("app_author_fuzz" + std::to_string(getpid()));
  WorkFolder() { fs::create_directories(Path); }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() { fs::remove_all(Path); }
};

const fs::path& Work() {
  static const WorkFolder folder;
  return folder.Path;
}

void Save(const fs::path& path, const std::uint8_t* data, std::size_t byteCount) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(byteCount));
}

std::string TrackText(const std::string& name, const std::string& sound, unsigned switches) {
  const int files = (switches & TwoFiles) != 0 ? 2 : 1;
  const int streams = (switches & TwoStreams) != 0 ? 2 : 1;
  std::string text = "Item=Track\nName=" + name +
                     "\nDisplayMode=Not Specified\nResolution=" + ((switches & Ntsc) != 0 ? "NTSC" : "PAL") +
                     "\nItem=Video Play List\n";
  for (int i = 0; i < files; ++i) {
    text += "Item=Video Play\nVideoFile=film.m2v\n";
  }
  for (int stream = 0; stream < streams; ++stream) {
    text += "Item=Audio Play List\nName=Audio Stream\nAudioLanguage=English\nDelay=" +
            std::to_string(40 * stream) + "\nStreamNumber=" + std::to_string(stream) + "\n";
    for (int i = 0; i < files; ++i) {
      text += "Item=Audio Play\nAudioFile=" + sound + "\n";
    }
  }
  return text + "Item=Scene\nName=" + name + "_Scene1\nSceneTime=00:00:00:00\n";
}

void SaveProject(const fs::path& path, unsigned switches) {
  const std::string sound = (switches & Wave) != 0 ? "sound.wav" : "sound.ac3";
  std::ofstream(path) << "Data=Tracks\n"
                      << TrackText("Menu", sound, switches) << TrackText("Film", sound, switches)
                      << "Item=Scene\nName=Film_Scene2\nSceneTime=00:00:00:12\n"
                         "Data=Structure\nItem=FirstPGC\nItem=PreCommands\nCommand=JumpTT VTS1_Title1\n"
                         "Item=VMG\nItem=VTS\nItem=Language\nLanguage=English\n"
                         "Item=PGC\nName=VTS1_Root\nItem=Program\nName=PG1\nItem=Cell\nName=PG1_CELL1\n"
                         "UsingScene=Menu_Scene1\nItem=Title\nName=VTS1_Title1\n"
                         "Item=PGC\nName=VTS1_Title1_PGC1\nItem=Program\nName=PG1\nItem=Cell\n"
                         "Name=PG1_CELL1\nUsingScene=Film_Scene1\nItem=Program\nName=PG2\nItem=Cell\n"
                         "Name=PG2_CELL1\nUsingScene=Film_Scene2\n";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  if (byteCount < 2) {
    return 0;
  }
  const unsigned switches = data[0];
  const std::size_t videoBytes = (byteCount - 2) * data[1] / 255;
  const fs::path disc = Work() / "disc";
  fs::remove_all(disc);
  fs::remove(Work() / "film.m2v.qvi");  // what --analyse leaves beside the film
  Save(Work() / "film.m2v", data + 2, videoBytes);
  Save(Work() / ((switches & Wave) != 0 ? "sound.wav" : "sound.ac3"), data + 2 + videoBytes,
       byteCount - 2 - videoBytes);
  SaveProject(Work() / "film.qvp", switches);

  std::vector<std::string> arguments{"author", Work() / "film.qvp", "-o", disc};
  if ((switches & Classic) != 0) {
    arguments.insert(arguments.end(), {"--rules", "classic"});
  }
  if ((switches & Analyse) != 0) {
    arguments.insert(arguments.end(), {"--analyse", "--reindex"});
  }
  SilentUi ui;
  std::ostringstream out;
  const int status =
      RunCommandForm(arguments, ui, out, out, [](const std::string& /*name*/) { return std::string(); });
  const bool complete = fs::exists(disc / "VIDEO_TS.IFO") && fs::exists(disc / "VTS_01_1.VOB");
  if (status == ExitUsage || complete != (status == ExitDone) || fs::exists(disc) != complete) {
    std::abort();
  }
  return 0;
}
