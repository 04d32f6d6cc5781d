// Every source that a project names.
#pragma once

#include <set>
#include <string>

#include "base/rules.h"
#include "base/user_interface.h"
#include "check/findings.h"
#include "check/source_judge.h"
#include "model/project.h"
#include "picture/picture_loader.h"
#include "subpicture/coded_bitmaps.h"

namespace quorvelant {

struct SourceChecks {
  quorvelant::Rules Rules;
  UserInterface& Ui;
  PictureLoader* Pictures = nullptr;  // loads the bitmaps of subtitles, which are coded then
  CodedBitmaps* Coded = nullptr;      // takes what was coded
  // The keys of the tracks and streams that reach the disc: what is wrong with others hinders nothing and is
  // a warning. Null where all count.
  const std::set<std::string>* OnDisc = nullptr;
};

// Looks at the head of every source of the live tracks, and at what the project alone says of its sources:
// the kinds of audio streams, the times of subtitles, buttons. A finding's place is a project key. Ends early
// when the user asks to stop.
[[nodiscard]] Findings CheckSources(const Project& project, SourceJudge& judge, const SourceChecks& checks);

// The same with a judge of its own: heads alone.
[[nodiscard]] Findings LookForSources(const Project& project, UserInterface& ui,
                                      const Rules& rules = Rules::Players);
// The same, and codes every subtitle.
[[nodiscard]] Findings OpenSources(const Project& project, const Rules& rules, PictureLoader& pictures,
                                   UserInterface& ui);

}  // namespace quorvelant
