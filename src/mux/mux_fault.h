// How a track's multiplex ends before its time. Raised by the steps, told once by MuxTrack.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace quorvelant {

inline constexpr std::string_view MuxErrorTitle = "Mux Error";

// A failure that ends the build. `Place` is a file, "file@byte", or empty where the text says it all.
struct MuxFault : std::runtime_error {
  explicit MuxFault(const std::string& text, std::string place = {}, std::string_view title = MuxErrorTitle)
      : std::runtime_error(text), Title(title), Place(std::move(place)) {}
  std::string Title;
  std::string Place;
};

// The user asked to stop.
struct MuxStopped : std::runtime_error {
  MuxStopped() : std::runtime_error("stopped") {}
};

}  // namespace quorvelant
