#include "edit/change.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "edit/session_state.h"
#include "edit/settle.h"
#include "model/keys.h"
#include "vm/command_aims.h"

namespace quorvelant {

Change::Change(EditSession& session, std::string_view words)
    : session_(&session), outer_(std::exchange(session.state_->Open, this)), words_(words) {}

Change::~Change() {
  if (!isCommitted_) {
    PutBack();
  }
  session_->state_->Open = outer_;
}

const Project& Change::Work() const {
  return session_->state_->Work;
}

void Change::Keep(const Part& part) {
  if (!images_.contains(part)) {
    images_.emplace(part, ContentOf(Work(), part));
  }
}

void Change::PutBack() {
  const std::vector<std::size_t> entries = EntriesOf(images_);
  Project& work = session_->state_->Work;
  std::for_each(images_.rbegin(), images_.rend(),
                [&work](auto& image) { Exchange(work, image.first, std::move(image.second)); });
  images_.clear();
  session_->state_->Reread(entries);
}

// Commands that lead by number to elements which have other numbers now.
void Change::FollowNumbers() {
  CommandAims& aims = session_->state_->Aims;
  const std::vector<std::size_t> entries = EntriesOf(images_);
  if (entries.empty()) {
    return;
  }
  for (const CommandEdit& edit : aims.Renumbered(Work(), entries)) {
    EditCommand(edit.Place).FullCommand = edit.Text;
  }
  aims.Update(Work(), EntriesOf(images_));
}

Track& Change::EditTrack(std::size_t index) {
  return Touch({Part::OfTrack(index)}).Tracks[index];
}

VTS_P& Change::EditEntry(std::size_t number) {
  return *Touch({Part::OfEntry(number)}).Disc.Item(number);
}

PGC_P& Change::EditFirstPlay() {
  return Touch({{PartKind::FirstPlay}}).FirstPlay;
}

Collection<Palette_P>& Change::EditPalettes() {
  return Touch({{PartKind::Palettes}}).Palettes;
}

std::string& Change::EditDestination() {
  return Touch({{PartKind::Destination}}).DestinationFolder;
}

VMICommand_P& Change::EditCommand(const CommandPlace& place) {
  const Part part = place.Key == FirstPgcKey
                        ? Part{PartKind::FirstPlay}
                        : Part::OfEntry(static_cast<std::size_t>(TitleSetEntry(place.Key)));
  return *FindCommand(Touch({part}), place);
}

Project& Change::Touch(std::initializer_list<Part> parts) {
  for (const Part& part : parts) {
    Keep(part);
  }
  return session_->state_->Work;
}

std::vector<Part> Change::Touched() const {
  return PartsOf(images_);
}

Outcome Change::Commit(std::string key) {
  TrackUses& uses = session_->state_->Uses;
  uses.Update(Work(), EntriesOf(images_));
  SettleStructure(*this, session_->RulesInForce(), uses);
  FollowNumbers();
  isCommitted_ = true;
  EditSession::State& state = *session_->state_;
  std::erase_if(images_, [this](const auto& image) { return Holds(Work(), image.first, image.second); });
  if (outer_ != nullptr) {
    outer_->images_.merge(images_);  // of a part that both touched, the outer one's is the older
  } else if (!images_.empty()) {
    state.Record(std::move(words_), std::move(images_));
  }
  return Outcome::Done(std::move(key));
}

}  // namespace quorvelant
