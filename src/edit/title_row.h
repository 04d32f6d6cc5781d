#pragma once

// Titles that play one after another.

#include <cstddef>
#include <string>
#include <string_view>

#include "edit/outcome.h"
#include "edit/session.h"
#include "edit/steps.h"

namespace quorvelant {

// Makes titles on the default structure, each of which leads to the next. It lives as long as the row grows;
// after a refusal it takes no more.
class TitleRow {
 public:
  explicit TitleRow(EditSession& session) : session_(session) {}

  // A title that plays the track: in the title set of the title before where attributes and kinds of sound
  // agree, otherwise in one of its own. Gives the title's key. Whether the title before leads to it.
  Outcome Add(std::size_t track, bool isLedTo = true);

 private:
  Outcome TitleFor(std::size_t track);
  [[nodiscard]] bool FitsInto(const VTS_P& set, const Track& track) const;
  void GoOnWith(const std::string& title);

  EditSession& session_;
  Steps steps_;
  std::string last_;  // key of the title before
};

// What makes a title go on with another: the command for its post commands, as the outcome's key. Between
// title sets it calls a PGC of the Video Manager, which is made. Both titles are told by their keys.
Outcome MakeWayToTitle(EditSession& session, std::string_view from, std::string_view to);

// One more command at the end of a PGC's list, `&PGC_P::PreCommands` or `&PGC_P::PostCommands`.
Outcome AppendCommand(EditSession& session, std::string_view chain, CommandList PGC_P::*list,
                      std::string text);

}  // namespace quorvelant
