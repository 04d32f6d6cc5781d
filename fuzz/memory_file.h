// What fuzz targets of file readers share: an input as a file that lives in memory, and nobody to ask.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"

namespace quorvelant {

class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t byteCount) : handle_(memfd_create("fuzz", MFD_CLOEXEC)) {
    if (handle_ < 0 || write(handle_, data, byteCount) != static_cast<ssize_t>(byteCount)) {
      std::abort();
    }
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(handle_); }
  std::string Path() const { return "/proc/self/fd/" + std::to_string(handle_); }

 private:
  int handle_;
};

class SilentUi : public UserInterface {
 public:
  void Tell(const Message& /*message*/) override {}
  bool Ask(std::string_view /*title*/, std::string_view /*text*/, bool unattended) override {
    return unattended;
  }
  std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*text*/,
                                     std::string_view proposal) override {
    return std::string(proposal);
  }
  void Status(std::string_view /*words*/) override {}
  void Progress(double /*done*/, double /*total*/) override {}
  bool StopRequested() override { return false; }
};

}  // namespace quorvelant
