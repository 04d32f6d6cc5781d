// The operations of `quorvelant edit`: a table from words to functions.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/message.h"
#include "base/user_interface.h"
#include "desk/edit_line.h"
#include "desk/settings.h"
#include "edit/operation_ui.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// What operations work on.
struct EditDesk {
  EditSession& Session;
  UserInterface& Ui;  // for progress, warnings and the wish to stop
  Settings Options = {};
  std::string SaveTo = {};                            // the project file that `save` writes
  std::optional<Message> SaveRefusal = std::nullopt;  // why it may not
  std::string LogFile = {};                           // of authoring; empty for none
  bool DryRun = false;                                // nothing is written
};

struct EditAnswer {
  Outcome Result;
  nlohmann::ordered_json More = nlohmann::ordered_json::object();  // beside "done"

  EditAnswer(Outcome result) : Result(std::move(result)) {}  // NOLINT(google-explicit-constructor)
  EditAnswer(Outcome result, nlohmann::ordered_json more)
      : Result(std::move(result)), More(std::move(more)) {}
};

struct EditWord {
  std::string_view Word;
  std::string_view Fields;  // as `EditLine::Expect` takes them
  EditAnswer (*Run)(EditDesk& desk, const EditLine& line);
};

// By theme, each in the order of docs/edit.md.
[[nodiscard]] std::span<const EditWord> StructureWords();
[[nodiscard]] std::span<const EditWord> SegmentWords();
[[nodiscard]] std::span<const EditWord> OverlayWords();
[[nodiscard]] std::span<const EditWord> CommandWords();
[[nodiscard]] std::span<const EditWord> ProjectWords();

// Runs the operation of a line. What is no operation is refused.
[[nodiscard]] EditAnswer RunEditLine(EditDesk& desk, const EditLine& line);

// An answer as the program prints it.
[[nodiscard]] nlohmann::ordered_json AnswerJson(const EditAnswer& answer);

// Of work that tells what is in its way: the last error told is the refusal.
[[nodiscard]] Outcome GaveUp(OperationUi& ui);

// The consent of a line.
[[nodiscard]] inline Consent ConsentOf(const EditLine& line) {
  return line.Agrees() ? Consent::Given : Consent::None;
}

}  // namespace quorvelant
