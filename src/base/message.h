// What the user is told, as a value.
#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

namespace quorvelant {

enum class Severity { Information, Warning, Error };

// One row of a room's table of messages (`<room>/messages.h`).
struct MessageKind {
  // Lower-case words with hyphens, e.g. "stream-missing": what programs know a message by. It goes into JSON
  // and never changes; no two kinds share one. Titles and texts may change, and nobody compares them.
  std::string_view Code;
  Severity Level = Severity::Error;
  std::string_view Title;  // the kind of trouble, e.g. "Import Error"; empty for a plain box
  std::string_view Text;   // with fmt's fields where values go
};

// `Place` says where in the user's material the trouble lies: a project key, "file:line", "file@byte" or
// "file sector n"; empty where the text says it all.
struct Message {
  Severity Level = Severity::Error;
  std::string Title;
  std::string Text;
  std::string Place;
  std::string_view Code = {};  // of a `MessageKind`, which lives as long as the program

  [[nodiscard]] bool Is(const MessageKind& kind) const { return Code == kind.Code; }
};

// A message of a kind with the values of its text.
template <class... Values>
[[nodiscard]] Message MessageOf(const MessageKind& kind, std::string_view place, const Values&... values) {
  return {.Level = kind.Level,
          .Title = std::string(kind.Title),
          .Text = fmt::format(fmt::runtime(kind.Text), values...),
          .Place = std::string(place),
          .Code = kind.Code};
}

}  // namespace quorvelant
