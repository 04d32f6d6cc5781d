#include "edit/change.h"

#include <utility>

#include "edit/session_state.h"
#include "edit/settle.h"

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
  for (auto image = images_.rbegin(); image != images_.rend(); ++image) {
    Exchange(session_->state_->Work, image->first, std::move(image->second));
  }
  images_.clear();
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

Project& Change::Touch(std::initializer_list<Part> parts) {
  for (const Part& part : parts) {
    Keep(part);
  }
  return session_->state_->Work;
}

Outcome Change::Commit(std::string key) {
  SettleStructure(*this);
  isCommitted_ = true;
  EditSession::State& state = *session_->state_;
  if (outer_ != nullptr) {
    outer_->images_.merge(images_);  // of a part that both touched, the outer one's is the older
  } else {
    state.Record(std::move(words_), std::move(images_));
  }
  return Outcome::Done(std::move(key));
}

}  // namespace quorvelant
