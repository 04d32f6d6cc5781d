// Any bytes as a script. Every finding has a code; what loads is written; what was written loads to the same
// text.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "check/check.h"
#include "check/check_sources.h"
#include "edit/outline.h"
#include "script/kept_text.h"
#include "script/load_findings.h"
#include "script/script_reader.h"
#include "script/script_writer.h"

namespace {

using namespace quorvelant;

class NobodyUi : public UserInterface {
 public:
  void Tell(const Message& /*message*/) override {}
  bool Ask(std::string_view /*title*/, std::string_view /*text*/, bool unattended) override {
    return unattended;
  }
  std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*text*/,
                                     std::string_view proposal) override {
    return std::string(proposal);
  }
  void Status(std::string_view /*words*/) override {}
  void Progress(double /*done*/, double /*total*/) override {}
  bool StopRequested() override { return false; }
};

LoadResult Load(const std::string& text, Project& project) {
  NobodyUi ui;
  std::istringstream stream(text);
  return LoadScript(stream, text.size(), "fuzz/project.qvp", project, {.Rules = Rules::Players}, ui);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  const std::string text(reinterpret_cast<const char*>(data), byteCount);
  Project project;
  const LoadResult load = Load(text, project);
  OutlineText(OutlineOf(project));
  NobodyUi ui;
  Findings findings = LoadFindings(load);
  Append(findings, CheckProject(project));
  Append(findings, LookForSources(project, ui));
  if (std::ranges::any_of(findings, &std::string_view::empty, &Message::Code)) {
    std::abort();
  }
  if (!load.Loaded) {
    return 0;
  }
  Project again;
  if (!Load(WriteScript(project), again).Loaded) {
    std::abort();
  }
  const std::string second = WriteScript(again);
  Project third;
  if (!Load(second, third).Loaded || WriteScript(third) != second) {
    std::abort();
  }
  Project noted;  // comments change nothing
  if (!Load(WithCommentsOf(text, second), noted).Loaded || WriteScript(noted) != second) {
    std::abort();
  }
  return 0;
}
