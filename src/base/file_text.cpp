#include "base/file_text.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace quorvelant {

namespace {

int WriteAll(int handle, std::string_view content) {
  while (!content.empty()) {
    const ssize_t put = write(handle, content.data(), content.size());
    if (put > 0) {
      content.remove_prefix(static_cast<std::size_t>(put));
    } else if (put == 0 || errno != EINTR) {
      return put == 0 ? ENOSPC : errno;
    }
  }
  return 0;
}

}  // namespace

int WriteAside(const std::string& path, std::string_view content) {
  // The process id keeps two runs over one folder apart.
  const std::string aside = fmt::format("{}.{}.part", path, getpid());
  const int handle = open(aside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (handle < 0) {
    return errno;
  }
  int refusal = WriteAll(handle, content);
  if (close(handle) != 0 && refusal == 0) {
    refusal = errno;
  }
  if (refusal == 0 && std::rename(aside.c_str(), path.c_str()) != 0) {
    refusal = errno;
  }
  if (refusal != 0) {
    unlink(aside.c_str());
  }
  return refusal;
}

std::optional<std::string> ReadWhole(const std::string& path, std::uint64_t mostBytes) {
  std::error_code missing;
  if (!std::filesystem::is_regular_file(path, missing)) {
    return std::nullopt;
  }
  const std::uint64_t bytes = std::filesystem::file_size(path, missing);
  std::ifstream file(path, std::ios::binary);
  if (missing || bytes > mostBytes || !file) {
    return std::nullopt;
  }
  std::string content(bytes, '\0');
  file.read(content.data(), static_cast<std::streamsize>(bytes));
  content.resize(static_cast<std::size_t>(file.gcount()));
  return content;
}

std::string_view NoPlainFile(const std::string& path) {
  using std::filesystem::file_type;
  std::error_code failed;
  switch (std::filesystem::status(path, failed).type()) {
    case file_type::regular:
      return {};
    case file_type::directory:
      return "it is a folder, not a file";
    case file_type::fifo:
    case file_type::socket:
    case file_type::block:
    case file_type::character:
      return "it is a pipe or a device, not a file";
    case file_type::not_found:
      return "there is no such file";
    default:
      return "it cannot be reached";
  }
}

}  // namespace quorvelant
