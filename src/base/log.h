// The log of an authoring run.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace quorvelant {

// Appends lines to a text file. The file is opened and closed on each call, so that a crash loses
// nothing; a log that cannot be written loses the line, never the run.
class Log {
 public:
  Log() = default;
  explicit Log(std::string file) { SetFile(std::move(file)); }

  const std::string& File() const { return file_; }
  // Setting the path also makes the log active.
  void SetFile(std::string file);
  bool Active() const { return active_; }
  int Options = 3;        // has no effect
  int SeverityLevel = 0;  // lines below it are not written; -1 writes none

  // One line after `tabs` tab characters (0 or less none, at most 3; any other count writes nothing).
  void Output(std::string_view text, int severity, int tabs);
  // Deletes the file if it exists.
  void Reset();
  void Header(std::string_view text);  // "***** text *****"
  void EndHeader();                    // "***** ***** *****" and a line with one blank
  void WriteText(std::string_view text, int tabs = 0);

 private:
  std::string file_;
  bool active_ = false;
};

// An empty log at `file`, whose folder is made where needed; one that writes nothing for an empty path.
Log StartLog(const std::string& file);

}  // namespace quorvelant
