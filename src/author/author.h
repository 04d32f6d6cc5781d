// A project becomes a disc.
#pragma once

#include "author/author_order.h"
#include "author/author_result.h"
#include "base/user_interface.h"
#include "model/project.h"

namespace quorvelant {

inline constexpr std::string_view CompletedStatus = "DVD Completed";
inline constexpr std::string_view ReadingBackStatus = "Reading back";
inline constexpr std::string_view VerifyingStatus = "Verifying";

// Plans the disc, announces the plan, looks at the space, prepares the folder, writes the files, enters the
// sums of their sectors, reads everything back and puts the folder in its place. Whatever is in the way is
// told through `ui`, once, and ends the run; the destination is as it was then, unless the order is to write
// straight into it.
[[nodiscard]] AuthorResult Author(const Project& project, const AuthorOrder& order, UserInterface& ui);

// The same without a disc: what would be told of one. The result's findings are complete.
[[nodiscard]] AuthorResult TryOut(const Project& project, const Rules& rules, PictureLoader* pictures,
                                  UserInterface& ui);

}  // namespace quorvelant
