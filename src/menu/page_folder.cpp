#include "menu/page_folder.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>
#include <utility>

#include "base/fresh_name.h"
#include "menu/messages.h"
#include "menu/page_tracks.h"

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

fs::path Around(const std::string& path) {
  const fs::path parent = fs::path(path).parent_path();
  return parent.empty() ? fs::path(".") : parent;
}

std::string FreshBeside(const std::string& path) {
  const fs::path whole(path);
  const std::string stem = fmt::format(".{}.making.", whole.filename().string());
  return (whole.parent_path() / FreshName(stem)).string();
}

// Only such a folder gives way: whatever else somebody keeps there stays.
bool HoldsPagesAlone(const std::string& path) {
  std::error_code failed;
  fs::directory_iterator at(path, failed);
  for (; !failed && at != fs::directory_iterator(); at.increment(failed)) {
    std::error_code unknown;
    if (!at->is_regular_file(unknown) || !IsPageFile(at->path().filename().string())) {
      return false;
    }
  }
  return !failed;
}

Message Unwritten(const std::string& path, const std::error_code& reason) {
  return MessageOf(message::PagesUnwritten, path, path, reason.message());
}

}  // namespace

PageFolder::PageFolder(std::string path, bool replace) : path_(std::move(path)), replace_(replace) {}

PageFolder::~PageFolder() {
  std::error_code failed;  // nobody is left to tell
  if (!aside_.empty()) {
    fs::remove_all(aside_, failed);
  }
  if (isPlaced_) {
    fs::remove_all(path_, failed);
  }
  if (!former_.empty()) {
    fs::rename(former_, path_, failed);
  }
}

std::optional<Message> PageFolder::Refusal() const {
  std::error_code failed;
  const fs::file_status there = fs::symlink_status(path_, failed);
  if (!fs::is_directory(Around(path_), failed)) {
    return MessageOf(message::PagesWithoutFolder, path_, Around(path_).string());
  }
  if (!fs::exists(there)) {
    return std::nullopt;
  }
  if (!fs::is_directory(there)) {
    return MessageOf(message::PagesInTheWay, path_, path_);
  }
  if (!replace_) {
    return MessageOf(message::PagesThere, path_, path_);
  }
  return HoldsPagesAlone(path_) ? std::nullopt
                                : std::optional(MessageOf(message::PagesAmongOthers, path_, path_));
}

std::optional<Message> PageFolder::Begin() {
  if (auto refusal = Refusal()) {
    return refusal;
  }
  const std::string aside = FreshBeside(path_);
  std::error_code failed;
  if (!fs::create_directory(aside, failed)) {
    return Unwritten(path_, failed ? failed : std::make_error_code(std::errc::file_exists));
  }
  aside_ = aside;
  return std::nullopt;
}

std::optional<Message> PageFolder::Place() {
  if (auto refusal = Refusal()) {
    return refusal;
  }
  std::error_code failed;
  if (fs::exists(path_, failed)) {
    const std::string former = FreshBeside(path_);
    fs::rename(path_, former, failed);
    if (failed) {
      return Unwritten(path_, failed);
    }
    former_ = former;
  }
  fs::rename(aside_, path_, failed);
  if (failed) {
    return Unwritten(path_, failed);
  }
  aside_.clear();
  isPlaced_ = true;
  return std::nullopt;
}

void PageFolder::Keep() {
  isPlaced_ = false;
  std::error_code failed;  // a folder that stays beside hinders nothing
  if (!former_.empty()) {
    fs::remove_all(std::exchange(former_, {}), failed);
  }
}

}  // namespace quorvelant
