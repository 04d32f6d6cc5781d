#pragma once

// One step of the history while it is made.

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "edit/outcome.h"
#include "edit/part.h"
#include "edit/session.h"
#include "vm/command_place.h"

namespace quorvelant {

// What is touched is kept; unless committed, all of it is put back, so that a refusal or an exception in the
// middle leaves the project as it was, whatever functions of lower rooms had done by then. A change that is
// made while another one is open becomes a part of that one's step when it is committed, and can still be put
// back alone.
class Change {
 public:
  // `words` name the step ("New PGC").
  Change(EditSession& session, std::string_view words);
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;
  ~Change();

  [[nodiscard]] const Project& Work() const;

  // Each names the part that may be written from now on. The index and the number must be there.
  Track& EditTrack(std::size_t index);
  VTS_P& EditEntry(std::size_t number);
  PGC_P& EditFirstPlay();
  Collection<Palette_P>& EditPalettes();
  std::string& EditDestination();
  VMICommand_P& EditCommand(const CommandPlace& place);
  // The whole, for functions that take it: they may write the parts named here, and no others. One past the
  // last track or entry is the one they add.
  Project& Touch(std::initializer_list<Part> parts);

  [[nodiscard]] std::vector<Part> Touched() const;

  // Settles what follows from the structure, records the step, unless all is as it was, and tells the
  // listeners.
  Outcome Commit(std::string key = {});

 private:
  void Keep(const Part& part);
  void PutBack();
  void FollowNumbers();

  EditSession* session_;
  Change* outer_;
  std::string words_;
  PartImages images_;
  bool isCommitted_ = false;
};

}  // namespace quorvelant
