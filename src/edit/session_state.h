#pragma once

// What a session holds, for it and the changes made in it.

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <vector>

#include "edit/session.h"
#include "edit/track_uses.h"
#include "vm/command_aims.h"

namespace quorvelant {

class Change;

// The parts as they were before the step, or after it once it is undone.
struct HistoryStep {
  std::string Words;
  PartImages Images;
  std::size_t Bytes = 0;
  std::uint64_t Former = 0;  // the content's number on the other side of the step
};

struct EditSession::State {
  State(const Rules& rules, EditOptions options, IndexStore indexes)
      : InForce(rules), Chosen(std::move(options)), Indexes(std::move(indexes)) {}

  Project Work;
  std::string File;
  std::string Script;
  Rules InForce;
  EditOptions Chosen;
  IndexStore Indexes;

  std::deque<HistoryStep> Done;
  std::deque<HistoryStep> Undone;
  std::size_t Bytes = 0;  // of both
  // Every content that the project has had has a number; undo brings the content back, and so its number.
  std::uint64_t Content = 0;
  std::uint64_t LastContent = 0;
  std::uint64_t SavedContent = 0;

  CommandAims Aims{Work, InForce};
  TrackUses Uses;
  CommandCheck Commands;
  std::vector<CommandError> AskedErrors;
  bool CommandsStale = true;
  bool JoinsNext = false;
  Change* Open = nullptr;
  std::vector<EditListener*> Listeners;

  void Record(std::string words, PartImages images);
  // Adds a step to the last one; parts of both keep the older image.
  void Join(PartImages images);
  // Of entries that changed: what is kept beside the project.
  void Reread(std::span<const std::size_t> entries);
  void ForgetHistory();
  // Exchanges the step's images for what stands in their places and moves the step to the other side.
  void Take(std::deque<HistoryStep>& from, std::deque<HistoryStep>& to);
  void TellChanged(const PartImages& before) const;
};

}  // namespace quorvelant
