#include "edit/title_row.h"

#include <algorithm>
#include <utility>

#include "edit/drop.h"
#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/structure.h"
#include "model/default_structure.h"
#include "model/keys.h"
#include "model/update_my_dvd.h"
#include "model/walk.h"

namespace quorvelant {

namespace {

constexpr std::string_view ManagerMenus = "VMG1.LANGUAGE1";

}  // namespace

Outcome TitleRow::Add(std::size_t track, bool isLedTo) {
  const std::string title = steps_.Do([&] { return TitleFor(track); });
  steps_.Do([&] { return Drop(session_, {.Track = track, .Scene = {}}, PgcKey(title, 1)); });
  if (steps_.GoOn() && !last_.empty() && isLedTo) {
    GoOnWith(title);
  }
  last_ = title;
  return steps_.GoOn() ? Outcome::Done(title) : steps_.Refusal();
}

// The first title of a new disc, one more in the set of the last, or that of a new set.
Outcome TitleRow::TitleFor(std::size_t track) {
  if (last_.empty()) {
    return Outcome::Done("VTS1.TITLE1");
  }
  const std::string set = last_.substr(0, last_.find('.'));
  if (FitsInto(*LiveEntry(session_.Work(), set), session_.Work().Tracks[track])) {
    return NewTitle(session_, set, ProposedName(session_, set));
  }
  Outcome made = NewTitleSet(session_);
  made.Key = made.IsDone() ? TitleKey(made.Key, 1) : std::string();
  return made;
}

bool TitleRow::FitsInto(const VTS_P& set, const Track& track) const {
  const auto cells = LiveCells(set, Domain::Title);
  return std::ranges::all_of(cells, [&](const Cell_P* cell) {
    const Track& other = session_.Work().Tracks[static_cast<std::size_t>(cell->SegmentUsed)];
    return other.Aspect == track.Aspect && other.Resolution == track.Resolution &&
           !CompareAudioStreams(other, track) && !CompareSubStreams(other, track);
  });
}

// The title before the new one comes to lead to it.
void TitleRow::GoOnWith(const std::string& title) {
  const std::string command = steps_.Do([&] { return MakeWayToTitle(session_, last_, title); });
  steps_.Do([&] { return AppendCommand(session_, PgcKey(last_, 1), &PGC_P::PostCommands, command); });
}

Outcome MakeWayToTitle(EditSession& session, std::string_view from, std::string_view to) {
  const std::string name = LiveTitle(session.Work(), to)->TitleName;
  if (TitleSetEntry(to) == TitleSetEntry(from)) {
    return Outcome::Done("JumpVTS_TT " + name);
  }
  Outcome made = NewPgc(session, ManagerMenus, FreeName(session, ElementKind::Pgc, "Play_" + name + "_", 1));
  if (made.IsDone()) {
    made = AppendCommand(session, made.Key, &PGC_P::PreCommands, "JumpTT " + name);
  }
  return made.IsDone() ? Outcome::Done("CallSS RSM=0,, " + LivePgc(session.Work(), made.Key)->PGCName) : made;
}

Outcome AppendCommand(EditSession& session, std::string_view chain, CommandList PGC_P::*list,
                      std::string text) {
  return SetPgc(session, chain, [&](PGC_P& pgc) {
    AddCommand(pgc.*list, list == &PGC_P::PreCommands ? "Pre" : "Post", text);
    return Outcome::Done();
  });
}

}  // namespace quorvelant
