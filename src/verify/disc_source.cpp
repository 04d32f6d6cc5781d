#include "verify/disc_source.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "disc/disc_files.h"
#include "verify/image_source.h"
#include "verify/messages.h"

namespace quorvelant {
namespace {

class FolderReader : public DiscReader {
 public:
  FolderReader(std::string folder, bool areSmall, Disk& disk)
      : folder_(std::move(folder)), areSmall_(areSmall), disk_(&disk) {}

  std::size_t Read(const DiscSourceFile& file, std::uint64_t offset, ByteSpan target) override {
    if (!open_ || openName_ != file.Name) {
      open_ = disk_->Open(folder_ + "/" + (areSmall_ ? Lower(file.Name) : file.Name), FileAccess::Read);
      openName_ = file.Name;
      at_ = 0;
    }
    if (std::exchange(at_, std::nullopt) != offset) {
      open_->Seek(offset);
    }
    const std::size_t count = open_->Read(target);
    at_ = offset + count;
    return count;
  }

 private:
  std::string folder_;
  bool areSmall_;
  Disk* disk_;
  std::unique_ptr<File> open_;
  std::string openName_;
  std::optional<std::uint64_t> at_;  // nothing after a read that failed
};

class FolderSource : public DiscSource {
 public:
  FolderSource(std::string folder, Disk& disk, DiscFindings& findings)
      : folder_(std::move(folder)), disk_(&disk) {
    const std::vector<DiscFile> listed = ListFiles(folder_);
    // As some systems show a disc that is mounted.
    areSmall_ = !listed.empty() && std::ranges::all_of(listed, [](const DiscFile& file) {
      return file.Name == Lower(file.Name);
    });
    std::vector<DiscSourceFile> files;
    files.reserve(listed.size());
    for (const DiscFile& file : listed) {
      files.push_back({.Name = areSmall_ ? Upper(file.Name) : file.Name, .Size = file.Size});
    }
    if (areSmall_) {
      findings.Add(message::FileOdd, {.File = listed.front().Name}, "VIDEO_TS", "names", "capital letters",
                   "small ones in all");
    }
    SetFiles(std::move(files));
  }

  [[nodiscard]] std::unique_ptr<DiscReader> NewReader() const override {
    return std::make_unique<FolderReader>(folder_, areSmall_, *disk_);
  }

 private:
  std::string folder_;
  Disk* disk_;
  bool areSmall_ = false;
};

}  // namespace

std::string WhyUnread(const FileError& error) {
  return error.SystemCode == 0 ? error.OneLine() : std::generic_category().message(error.SystemCode);
}

const DiscSourceFile* DiscSource::Find(const std::string& name) const {
  const auto found = std::ranges::lower_bound(files_, name, {}, &DiscSourceFile::Name);
  return found != files_.end() && found->Name == name ? &*found : nullptr;
}

void DiscSource::SetFiles(std::vector<DiscSourceFile> files) {
  files_ = std::move(files);
  std::ranges::sort(files_, {}, &DiscSourceFile::Name);
}

std::unique_ptr<DiscSource> OpenDisc(const std::string& path, DiscFindings& findings, Disk& disk) {
  if (disk.KindOf(path) == FileKind::Special) {
    throw FileError(
        FileError::OpenNumber,
        fmt::format("'{}' is a device or a pipe: a folder or the file of an image is read", path));
  }
  if (disk.KindOf(path) != FileKind::Folder) {
    return std::make_unique<ImageSource>(path, disk, findings);
  }
  for (const char* name : {"/VIDEO_TS", "/video_ts"}) {
    if (const std::string inner = path + name; disk.KindOf(inner) == FileKind::Folder) {
      return std::make_unique<FolderSource>(inner, disk, findings);
    }
  }
  return std::make_unique<FolderSource>(path, disk, findings);
}

bool IsImage(const std::string& path, Disk& disk) {
  constexpr std::uint64_t VolumeDescriptors = 16;
  if (disk.KindOf(path) != FileKind::Plain) {
    return false;
  }
  try {
    const std::unique_ptr<File> file = disk.Open(path, FileAccess::Read);
    file->Seek(VolumeDescriptors * SectorBytes);
    std::array<std::uint8_t, 6> head{};  // the type, then the standard's name
    const bool isWhole = file->Read(head) == head.size();
    const std::string name(head.begin() + 1, head.end());
    return isWhole && (name == "CD001" || name == "BEA01");
  } catch (const FileError&) {
    return false;
  }
}

}  // namespace quorvelant
