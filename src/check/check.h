// Everything about a loaded project that its author should know before a disc is made of it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/user_interface.h"
#include "model/project.h"
#include "script/script_reader.h"

namespace quorvelant {

struct CheckReport {
  // In the order of the script: its lines, its names, its sources, its streams. `Place` is "script:line" or
  // a project key.
  std::vector<Message> Messages;
  std::size_t ErrorCount = 0;
  std::size_t WarningCount = 0;
};

// Looks at the project and at how it was loaded. Source files are only looked for, not read.
CheckReport CheckProject(const Project& project, const LoadResult& load);

// Of the same, only what the load itself found: lines, names and commands.
CheckReport CheckLoad(const Project& project, const LoadResult& load);

inline constexpr std::string_view SkippedLineTitle = "Skipped Line";
inline constexpr std::string_view DoubtedValueTitle = "Doubtful Value";
inline constexpr std::string_view UnclosedTitle = "Unclosed Brace";
inline constexpr std::string_view NoProjectTitle = "No Project";
inline constexpr std::string_view NoProjectText =
    "No line of the file is one of a project script: is this the right file?";
inline constexpr std::string_view CommandCheckTitle = "Command Error";
inline constexpr std::string_view SourceMissingTitle = "Missing Source";
inline constexpr std::string_view SourceUnreadTitle = "Unknown Source";
inline constexpr std::string_view LinkMissingTitle = "Unknown Link";
inline constexpr std::string_view CellCommandTitle = "Unknown Cell Command";
inline constexpr std::string_view StillTimeTitle = "Still Time";
inline constexpr std::string_view StreamNumberTitle = "Stream Number";
inline constexpr std::string_view NotMuxedTitle = "Stream Not Multiplexed";

// The error list's own dump: asks for a file and writes one line a row. Nothing on an empty answer; false,
// and told, when the file cannot be written.
bool SaveErrorList(const std::vector<CommandError>& rows, UserInterface& ui);

inline constexpr std::string_view ErrorDumpTitle = "File name for error dump?";
inline constexpr std::string_view ErrorDumpFilter = "Text Files|*.txt";
inline constexpr std::string_view ErrorDumpFailedText = "Unable to write the error list: ";

}  // namespace quorvelant
