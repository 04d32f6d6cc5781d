#include "author/source_stamps.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "author/disc_folder.h"
#include "base/random.h"
#include "disc/disc_files.h"

namespace quorvelant {
namespace {

bool IsSame(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

SourceStamps::SourceStamps(const DiscPlan& plan) {
  const auto addDomain = [this](const DomainPlan& domain) {
    for (const MuxInput& input : domain.Inputs) {
      AddInput(input);
    }
  };
  for (const SetPlan& set : plan.Sets) {
    addDomain(set.Menu);
    addDomain(set.Title);
  }
  addDomain(plan.Manager.Menu);
}

void SourceStamps::AddInput(const MuxInput& input) {
  for (const MuxVideoFile& file : input.Video) {
    Add(file.Path);
  }
  for (const MuxAudioStream& stream : input.Audio) {
    for (const std::string& path : stream.Paths) {
      Add(path);
    }
  }
  for (const MuxSubStream& stream : input.Subpictures) {
    for (const SubPicturePlay& play : stream.Stream->SubPlays) {
      Add(SystemPath(play.File, input.SourceFolder));
    }
  }
}

void SourceStamps::Add(const std::string& path) {
  struct stat stamp {};
  if (stat(path.c_str(), &stamp) == 0) {
    stamps_.try_emplace(path, stamp);
  }
}

std::optional<std::string> SourceStamps::FirstChanged() const {
  for (const auto& [path, stamp] : stamps_) {
    struct stat now {};
    if (stat(path.c_str(), &now) != 0 || !IsSame(stamp, now)) {
      return path;
    }
  }
  return std::nullopt;
}

std::optional<std::string> SourceStamps::FirstReplacedIn(const std::string& folder) const {
  for (const auto& [path, stamp] : stamps_) {
    if (IsReplacedIn(folder, path)) {
      return path;
    }
  }
  return std::nullopt;
}

bool SourceStamps::Holds(const std::string& path) const {
  struct stat file {};
  return stat(path.c_str(), &file) == 0 && std::ranges::any_of(stamps_, [&file](const auto& one) {
           return one.second.st_dev == file.st_dev && one.second.st_ino == file.st_ino;
         });
}

bool IsReplacedIn(const std::string& folder, const std::string& file) {
  const std::filesystem::path destination = DestinationPath(folder);
  std::error_code failed;
  const std::array<std::filesystem::path, 2> names{
      std::filesystem::canonical(file, failed), std::filesystem::absolute(file, failed).lexically_normal()};
  return std::ranges::any_of(names, [&](const std::filesystem::path& name) {
    return IsDiscFileName(name.filename().string()) &&
           std::filesystem::weakly_canonical(name.parent_path(), failed) == destination;
  });
}

}  // namespace quorvelant
