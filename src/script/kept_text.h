// What a person put into a script and a project does not hold: comments, and how lines end.
#pragma once

#include <string>
#include <string_view>

namespace quorvelant {

// A line of a script that starts with it, blanks and tabs aside, is a comment.
inline constexpr std::string_view CommentMark = "#";

// `written`, a script of the project that `original` was read into, with the original's comments: each before
// the line that it stood before, or the next after that which is still there, otherwise at the end.
[[nodiscard]] std::string WithCommentsOf(std::string_view original, std::string written);

// `written`, whose lines end with CR LF, with LF alone where the original has it so from its first line on.
[[nodiscard]] std::string WithLineEndsOf(std::string_view original, std::string written);

}  // namespace quorvelant
