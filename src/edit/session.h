#pragma once

// A project under work, with its history.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "analysis/picture_index.h"
#include "base/rules.h"
#include "edit/import_video.h"
#include "edit/part.h"
#include "edit/tree.h"
#include "model/project.h"
#include "vm/check_commands.h"
#include "vm/command_aims.h"

namespace quorvelant {

// Is told after every operation, undo and redo; the project stands in its new state by then.
class EditListener {
 public:
  EditListener() = default;
  EditListener(const EditListener&) = delete;
  EditListener& operator=(const EditListener&) = delete;
  virtual ~EditListener() = default;

  virtual void Changed(std::span<const TreeChange> tree, std::span<const Part> parts) = 0;
  // Another project; every key is new.
  virtual void Replaced() = 0;
};

// What the user's settings say of operations.
struct EditOptions {
  VideoImportOptions Import;
  std::int32_t PalSlide = 250;  // frames that a slide shows
  std::int32_t NtscSlide = 300;
  bool SlideChapters = true;
  bool ExtendFinalSlide = true;
  bool ExtendFinalSubtitle = false;
  bool ScenesNotSeamless = false;
  bool SeamlessPgc = false;
  bool SubRip = false;
  std::string DestinationFolder;
};

// Only `Change` (edit/change.h) writes to the project, so that every step can be undone. Undo and redo hold
// at most `MostHistoryBytes`, but always the last step; the oldest steps go first.
class EditSession {
 public:
  static constexpr std::size_t MostHistoryBytes = std::size_t{64} << 20U;

  // Starts on the default structure, its commands encoded.
  explicit EditSession(const Rules& rules, EditOptions options = {}, IndexStore indexes = IndexStore());
  EditSession(const EditSession&) = delete;
  EditSession& operator=(const EditSession&) = delete;
  ~EditSession();

  [[nodiscard]] const Project& Work() const;
  [[nodiscard]] const Rules& RulesInForce() const;
  [[nodiscard]] const EditOptions& Options() const;
  // For operations from now on.
  void SetOptions(EditOptions options);
  [[nodiscard]] IndexStore& Indexes();

  // Whether the content differs from what was last loaded or saved; false again after undo.
  [[nodiscard]] bool IsUnsaved() const;
  [[nodiscard]] bool CanUndo() const;
  [[nodiscard]] bool CanRedo() const;
  // "New PGC", "Remove Title"; empty where there is nothing to take back.
  [[nodiscard]] std::string UndoWords() const;
  [[nodiscard]] std::string RedoWords() const;
  // Nothing where there is nothing to undo or redo.
  void Undo();
  void Redo();
  // The next step and the last one become one where their words are the same: moves of one gesture. It holds
  // for one step that changes something.
  void JoinNextStep();
  // How many bytes the history takes, and its last step.
  [[nodiscard]] std::size_t HistoryBytes() const;
  [[nodiscard]] std::size_t LastStepBytes() const;

  // Digits and error rows of all commands; resolved when they are asked for and stale: numbers count live
  // elements.
  const CommandCheck& Commands();
  // Whether there are rows that no call of this before has counted: each is asked about once.
  [[nodiscard]] bool TakeNewCommandErrors();
  // Which commands lead where, by now.
  [[nodiscard]] const CommandAims& Aims() const;

  // The file that the content was loaded from or saved to last; empty for none. Relative source paths count
  // from where the project was loaded, wherever it is saved.
  [[nodiscard]] const std::string& File() const;
  // What stood in that file then: its comments go on with the project, and who else has written to it shows.
  [[nodiscard]] const std::string& Script() const;
  // Another project, and the script that it was read from: what follows from its structure is settled and
  // the history ends.
  void Replace(Project project, std::string file, std::string script = {});
  // The default structure, as a new session has it.
  void StartAnew();
  // The content stands in `file` now, as `script`.
  void MarkSaved(std::string file, std::string script);
  // Nothing that the content could be undone to is saved: it was given up before, or its sources moved.
  void MarkUnsaved();

  void Listen(EditListener& listener);
  void Leave(EditListener& listener);

 private:
  friend class Change;
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvelant
