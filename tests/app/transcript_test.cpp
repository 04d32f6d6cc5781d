// The program as a user runs it. Each file of transcripts/ is a case: command lines, what each prints, and
// how it ends. The command lines of README and docs/ run too, and print what stands below them there.
//
//     $ quorvelant check project.qvp     a line for bash, in a folder of its own with the example and its
//     media > goes on with the command what it prints                     "*" stands for any letters, a line
//     "..." for any lines ! what it says on standard error   after the output; without the words that tell
//     how far it is [1]                                its exit status where that is not 0 # a comment
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <span>
#include <sstream>

#include "support/folders.h"
#include "support/temp_folder.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

struct Step {
  int Line = 0;
  std::string Command;
  std::optional<Lines> Expected;  // nothing: it ends well, whatever it prints
};

struct Transcript {
  std::string Name;
  fs::path File;
  std::vector<Step> Steps;
};
void PrintTo(const Transcript& transcript, std::ostream* out) {
  *out << transcript.Name;
}

Lines LinesIn(const std::string& text, const std::string& mark = {}) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) {
      lines.push_back(mark + line);
    }
  }
  return lines;
}

std::vector<Step> StepsOf(const fs::path& file) {
  std::vector<Step> steps;
  std::istringstream stream(TempFolder::Read(file));
  int number = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    if (line.starts_with("$ ")) {
      steps.push_back({number, line.substr(2), Lines{}});
    } else if (line.starts_with("> ")) {
      steps.back().Command.append("\n").append(line, 2);
    } else if (!line.empty() && !line.starts_with("#")) {
      steps.back().Expected->push_back(line);
    }
  }
  return steps;
}

// "first_disc", "manual_first_disc"
std::string NameOfPage(const fs::path& page) {
  const std::string stem = page.stem().string();
  const std::string folder = page.parent_path().filename().string();
  return folder == "manual" ? folder + "_" + stem : stem;
}

// What a page shows in code blocks: those of "sh" run whole; text under a line that ends with a file's name
// is that file; lines that run the program, indented or fenced, run alone, after "$ " with what it prints
// below. What the page's reader has at hand is made by pages/NAME.sh.
class PageReader {
 public:
  explicit PageReader(const fs::path& page) : text_(TempFolder::Read(page)) {
    const fs::path prelude = SourceFile("tests/app/pages/" + NameOfPage(page) + ".sh");
    if (fs::exists(prelude)) {
      steps_.push_back({0, TempFolder::Read(prelude), std::nullopt});
    }
  }

  std::vector<Step> Steps() && {
    for (std::string line; std::getline(text_, line);) {
      ++number_;
      if (line.starts_with("```")) {
        Fence(line.substr(3));
      } else if (fence_) {
        Fenced(line);
      } else {
        Plain(line);
      }
    }
    return std::move(steps_);
  }

 private:
  void Fence(const std::string& kind) {
    fence_ = fence_ ? std::nullopt : std::optional(kind);
    if (!fence_) {
      if (std::exchange(isFile_, false)) {
        steps_.back().Command += "END\n";
      }
      return;
    }
    static const std::regex File("`([a-z0-9_./]+)`:$");
    std::smatch name;
    isFile_ = kind != "sh" && std::regex_search(before_, name, File);
    if (isFile_ || kind == "sh") {
      steps_.push_back(
          {number_, isFile_ ? fmt::format("cat > {} <<'END'\n", name[1].str()) : "set -e\n", std::nullopt});
    }
    printing_ = false;
  }

  void Fenced(const std::string& line) {
    if (isFile_ || *fence_ == "sh") {
      steps_.back().Command.append(line).append("\n");
    } else {
      Code(line);
    }
  }

  void Plain(const std::string& line) {
    before_ = line.empty() ? before_ : line;
    if (line.starts_with("    ")) {
      Code(line.substr(4));
    }
  }

  void Code(const std::string& code) {
    const bool shown = code.starts_with("$ ");
    if (code.starts_with("quorvelant ") || code.starts_with("$ quorvelant ")) {
      steps_.push_back({number_, code.substr(shown ? 2 : 0), shown ? std::optional(Lines{}) : std::nullopt});
      printing_ = shown;
    } else if (printing_) {
      steps_.back().Expected->push_back(code);
    }
  }

  std::istringstream text_;
  std::vector<Step> steps_;
  int number_ = 0;
  std::optional<std::string> fence_;  // what stands after it, within a block
  bool isFile_ = false;
  bool printing_ = false;
  std::string before_;  // the last line of prose
};

std::vector<Transcript> AllTranscripts() {
  std::vector<Transcript> all;
  for (const auto& entry : fs::directory_iterator(SourceFile("tests/app/transcripts"))) {
    all.push_back({entry.path().stem().string(), entry.path(), StepsOf(entry.path())});
  }
  std::vector<fs::path> pages{SourceFile("README.md")};
  for (const auto& entry : fs::recursive_directory_iterator(SourceFile("docs"))) {
    pages.push_back(entry.path());
  }
  for (const fs::path& page : pages) {
    std::vector<Step> steps = page.extension() == ".md" ? PageReader(page).Steps() : std::vector<Step>();
    if (!steps.empty()) {
      all.push_back({"page_" + NameOfPage(page), page, std::move(steps)});
    }
  }
  std::ranges::sort(all, {}, &Transcript::Name);
  return all;
}

bool LineMatches(const std::string& pattern, const std::string& line) {
  const std::string escaped = std::regex_replace(pattern, std::regex(R"([.^$|()\[\]{}+?\\])"), R"(\$&)");
  return std::regex_match(line, std::regex(std::regex_replace(escaped, std::regex("\\*"), ".*")));
}

bool Matches(std::span<const std::string> expected, std::span<const std::string> printed) {
  if (expected.empty()) {
    return printed.empty();
  }
  if (expected[0] == "...") {
    return Matches(expected.subspan(1), printed) ||
           (!printed.empty() && Matches(expected, printed.subspan(1)));
  }
  return !printed.empty() && LineMatches(expected[0], printed[0]) &&
         Matches(expected.subspan(1), printed.subspan(1));
}

class Transcripts : public testing::TestWithParam<Transcript> {
 protected:
  Transcripts() {
    fs::create_directories(folder_.Path() / "run");
    fs::copy(SourceFile("examples"), folder_.Path() / "run/examples", fs::copy_options::recursive);
    fs::copy(SourceFile("examples/media"), folder_.Path() / "run/media");
    for (const auto& [from, to] : {std::pair{"demo.qvp", "project.qvp"},
                                   {"media/second.m2v", "film.m2v"},
                                   {"media/second.ac3", "film.ac3"},
                                   {"media/slide1.png", "page.png"}}) {
      fs::copy(SourceFile(std::string("examples/") + from), folder_.Path() / "run" / to);
    }
    folder_.Write("run/film.sst",
                  "Directory\tsubs\nPalette entries\nRGB1 (1,2,3)\nDisplay_Start\tforced\nSP_NUMBER\n"
                  "1\t00:00:01:00\t00:00:02:24\ta.bmp\n2\t00:00:03:00\t00:00:04:00\tb.bmp\n");
  }

  // Everything that the command says, as a transcript tells it.
  Lines Run(const std::string& command) const {
    const std::string script = folder_.Write("script", command + "\n");
    const fs::path bin = fs::read_symlink("/proc/self/exe").parent_path() / "../..";
    const int status = std::system(  // NOLINT(concurrency-mt-unsafe,bugprone-command-processor)
        fmt::format("cd '{0}/run' && env -u DISPLAY -u WAYLAND_DISPLAY -u XDG_CONFIG_HOME -u XDG_STATE_HOME "
                    "HOME='{0}' LC_ALL=C.UTF-8 "
                    "PATH='{1}':\"$PATH\" DOCS='{3}' bash '{2}' >'{0}/out' 2>'{0}/err' </dev/null",
                    folder_.Path().string(), fs::canonical(bin).string(), script, SourceFile("docs"))
            .c_str());
    static const std::regex Stage(
        R"(! (Creating|DVD Completed|Generating|Import Complete|Import Failed|Indexing|Processing|Reading|Writing).*|!  \d+ %)");
    Lines lines = LinesIn(TempFolder::Read(folder_ / "out"));
    for (const std::string& line : LinesIn(TempFolder::Read(folder_ / "err"), "! ")) {
      if (!std::regex_match(line, Stage)) {
        lines.push_back(line);
      }
    }
    if (status != 0) {
      lines.push_back(fmt::format("[{}]", WIFEXITED(status) ? WEXITSTATUS(status) : status));
    }
    return lines;
  }

  TempFolder folder_;
};

TEST_P(Transcripts, RunAsTheyStand) {
  for (const Step& step : GetParam().Steps) {
    const Lines printed = Run(step.Command);
    const bool asTold = step.Expected ? Matches(*step.Expected, printed)
                                      : printed.empty() || !printed.back().starts_with("[");
    EXPECT_TRUE(asTold) << GetParam().File.string() << ":" << step.Line << "\n$ " << step.Command << "\n"
                        << fmt::format("{}", fmt::join(printed, "\n"));
  }
}

INSTANTIATE_TEST_SUITE_P(All, Transcripts, testing::ValuesIn(AllTranscripts()),
                         [](const auto& transcript) { return transcript.param.Name; });

}  // namespace
}  // namespace quorvelant
