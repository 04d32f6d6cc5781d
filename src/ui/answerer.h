// Who answers what the program has to ask.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

// A kind of file to choose among: "Video", {"m2v", "mpv"}.
struct FileFilter {
  std::string Name;
  std::vector<std::string> Extensions;  // without the dot; none for all files
};

// The boxes and file dialogs of a window, or the answers of a test. Called in the window's thread alone; each
// returns when it is answered.
class Answerer {
 public:
  Answerer() = default;
  Answerer(const Answerer&) = delete;
  Answerer& operator=(const Answerer&) = delete;
  virtual ~Answerer() = default;

  // A question with two verbs on its buttons ("Remove", "Keep"); false for the second, and where it is
  // closed.
  virtual bool Ask(std::string_view title, std::string_view text, std::string_view yes,
                   std::string_view no) = 0;
  // The same where "yes" destroys what no undo brings back: that is not done by a mere Enter.
  virtual bool AskToDestroy(std::string_view title, std::string_view text, std::string_view yes,
                            std::string_view no) {
    return Ask(title, text, yes, no);
  }
  // A question with a way out, where both answers go on; nothing on cancel.
  virtual std::optional<bool> AskOrStay(std::string_view title, std::string_view text, std::string_view yes,
                                        std::string_view no) {
    return Ask(title, text, yes, no);
  }
  // Nothing on cancel.
  virtual std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                             std::string_view proposal) = 0;
  // One of a list, by its place; nothing on cancel.
  virtual std::optional<std::size_t> Choose(std::string_view title, std::string_view text,
                                            const std::vector<std::string>& choices) = 0;
  // Files to read; none on cancel. Paths of this system, like the next two.
  virtual std::vector<std::string> FilesToOpen(std::string_view title, const std::vector<FileFilter>& kinds,
                                               bool several) = 0;
  virtual std::optional<std::string> FileToSave(std::string_view title, std::string_view proposal,
                                                const std::vector<FileFilter>& kinds) = 0;
  virtual std::optional<std::string> FolderToUse(std::string_view title, std::string_view proposal) = 0;
};

}  // namespace quorvelant
