// A project as script text, and its way onto the disk.
#pragma once

#include <string>
#include <string_view>

#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::string_view SavePathTitle = "Please choose your output location";
inline constexpr std::string_view SavePathFilter = "Project Files (*.Qvp)|*.Qvp";

// The whole project as script text in lines that end in CR LF. Elements marked as removed, tracks without
// a first file and subtitles that are not used are left out; everything else reads back as it was, but for
// texts that hold a line break or a tab, which a script cannot carry.
std::string WriteScript(const Project& project);

// Writes the script aside and puts it in the place of `path` when it is whole, so a failure leaves an
// existing file as it was. False, and said, when that fails.
[[nodiscard]] bool SaveData(const Project& project, const std::string& path, UserInterface& ui);

// The project as the script that `SaveDataLike` writes.
[[nodiscard]] std::string ScriptLike(const Project& project, std::string_view original);
[[nodiscard]] bool SaveScriptText(const std::string& text, const std::string& path, UserInterface& ui);

// The same with the comments and the line ends of the script that the project was read from.
[[nodiscard]] bool SaveDataLike(const Project& project, std::string_view original, const std::string& path,
                                UserInterface& ui);

// Asks for a path (nothing or an empty text ends it), stores it as the project's own, saves and reports.
[[nodiscard]] bool SaveDataPath(Project& project, UserInterface& ui);

}  // namespace quorvelant
