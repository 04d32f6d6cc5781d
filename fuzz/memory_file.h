// What fuzz targets of file readers share: an input as a file that lives in memory.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/silent_ui.h"

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

}  // namespace quorvelant
