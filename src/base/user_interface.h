// How the core speaks to the user: the only way it has.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/message.h"

namespace quorvelant {

// The core never writes to a stream, never exits and never waits for a person by itself: the console,
// the window and the tests each implement this.
class UserInterface {
 public:
  UserInterface() = default;
  UserInterface(const UserInterface&) = delete;
  UserInterface& operator=(const UserInterface&) = delete;
  virtual ~UserInterface() = default;

  // Tells a failure, a warning or a result. Returns when it was read, at once where nobody is there.
  virtual void Tell(const Message& message) = 0;

  // A question with Yes and No; `unattended` is the answer to take when nobody is there.
  virtual bool Ask(std::string_view title, std::string_view text, bool unattended) = 0;

  // Asks for a text; nothing on cancel. Where nobody is there the answer is `proposal`.
  virtual std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                             std::string_view proposal) = 0;

  // The words of the status line: the stage of a long operation.
  virtual void Status(std::string_view words) = 0;

  // How much of the present stage is done, in the work's own units (bytes, lines, sectors).
  virtual void Progress(double done, double total) = 0;

  // Whether the user asked to stop. Polled by every long loop.
  virtual bool StopRequested() = 0;
};

}  // namespace quorvelant
