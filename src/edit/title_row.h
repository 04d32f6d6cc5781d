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
  // agree, otherwise in one of its own. Gives the title's key.
  Outcome Add(std::size_t track);

 private:
  Outcome TitleFor(std::size_t track);
  [[nodiscard]] bool FitsInto(const VTS_P& set, const Track& track) const;
  void GoOnWith(const std::string& title);
  void AddTo(const std::string& chain, CommandList PGC_P::*list, std::string_view word, std::string text);

  EditSession& session_;
  Steps steps_;
  std::string last_;  // key of the title before
};

}  // namespace quorvelant
