#include "verify/disc_source.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "disc/disc_files.h"
#include "verify/image_source.h"

namespace quorvelant {
namespace {

class FolderSource : public DiscSource {
 public:
  FolderSource(std::string folder, Disk& disk) : folder_(std::move(folder)), disk_(&disk) {
    std::vector<DiscSourceFile> files;
    for (const DiscFile& file : ListFiles(folder_)) {
      files.push_back({.Name = file.Name, .Size = file.Size});
    }
    SetFiles(std::move(files));
  }

  std::size_t Read(const DiscSourceFile& file, std::uint64_t offset, ByteSpan target) override {
    if (!open_ || openName_ != file.Name) {
      open_ = disk_->Open(folder_ + "/" + file.Name, FileAccess::Read);
      openName_ = file.Name;
      at_ = 0;
    }
    if (at_ != offset) {
      open_->Seek(offset);
    }
    const std::size_t count = open_->Read(target);
    at_ = offset + count;
    return count;
  }

 private:
  std::string folder_;
  Disk* disk_;
  std::unique_ptr<File> open_;
  std::string openName_;
  std::uint64_t at_ = 0;
};

}  // namespace

const DiscSourceFile* DiscSource::Find(const std::string& name) const {
  const auto found = std::ranges::lower_bound(files_, name, {}, &DiscSourceFile::Name);
  return found != files_.end() && found->Name == name ? &*found : nullptr;
}

void DiscSource::SetFiles(std::vector<DiscSourceFile> files) {
  files_ = std::move(files);
  std::ranges::sort(files_, {}, &DiscSourceFile::Name);
}

std::unique_ptr<DiscSource> OpenDisc(const std::string& path, DiscFindings& findings, Disk& disk) {
  if (disk.KindOf(path) != FileKind::Folder) {
    return std::make_unique<ImageSource>(disk.Open(path, FileAccess::Read), findings);
  }
  const std::string inner = path + "/VIDEO_TS";
  const bool holdsOne = disk.KindOf(inner) == FileKind::Folder;
  return std::make_unique<FolderSource>(holdsOne ? inner : path, disk);
}

}  // namespace quorvelant
