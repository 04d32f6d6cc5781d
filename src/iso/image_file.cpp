#include "iso/image_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/bytes.h"
#include "iso/iso9660.h"
#include "iso/messages.h"

namespace quorvelant {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view AsideSuffix = ".making";
constexpr std::string_view Mark = "quorvelant: an image that is not complete\n";
constexpr int MostTries = 100;

// With links followed, so that what a link means is replaced and the link stays.
std::string TargetOf(const std::string& path) {
  std::error_code failed;
  const fs::path target = fs::weakly_canonical(fs::absolute(path), failed);
  return failed ? path : target.string();
}

std::string AsideOf(const fs::path& target) {
  std::string name = ".";
  name += target.filename().string();
  name += AsideSuffix;
  return (target.parent_path() / name).string();
}

enum class AsideState { Free, Leftover, Busy, Gone, Foreign };

// What the name means is no file of ours to open: a link, a folder, a file of several names.
bool IsForeign(const std::string& aside) {
  struct stat status {};
  return lstat(aside.c_str(), &status) == 0 && (!S_ISREG(status.st_mode) || status.st_nlink > 1);
}

// Whether it is an image of this program without its mark: a run was ended between its last byte and its
// name.
bool IsOwnImage(File& file) {
  Bytes volume(SectorBytes);
  file.Seek(iso9660::PrimaryVolume * SectorBytes);
  const bool isWhole = file.Read(volume) == volume.size();
  const auto is = [&volume](std::size_t at, std::string_view text) {
    return std::equal(text.begin(), text.end(), volume.begin() + static_cast<std::ptrdiff_t>(at));
  };
  return isWhole && is(1, "CD001") && is(iso9660::ApplicationAt, iso9660::Application);
}

// Whether the name still means the open file: a run that ends removes or renames its own.
bool StillNamed(const File& file) {
  struct stat open {};
  struct stat named {};
  return fstat(file.Handle(), &open) == 0 && lstat(file.Path().c_str(), &named) == 0 &&
         open.st_ino == named.st_ino && open.st_dev == named.st_dev;
}

AsideState Take(File& file) {
  if (flock(file.Handle(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    return AsideState::Busy;
  }
  if (!StillNamed(file)) {
    return AsideState::Gone;
  }
  if (file.ByteCount() == 0) {
    return AsideState::Free;
  }
  Bytes head(Mark.size());
  head.resize(file.Read(head));
  const bool isMarked =
      std::ranges::equal(head, Mark, {}, [](std::uint8_t byte) { return static_cast<char>(byte); });
  return isMarked || IsOwnImage(file) ? AsideState::Leftover : AsideState::Foreign;
}

void WriteMark(File& file) {
  Bytes sector(SectorBytes);
  std::ranges::copy(Mark, sector.begin());
  (void)ftruncate(file.Handle(), 0);  // what it leaves is written over
  file.Seek(0);
  file.Write(sector);
}

// A file system that cannot sync a folder has no more to promise.
void SyncFolderOf(const std::string& path) {
  const int folder = open(fs::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    fsync(folder);
    close(folder);
  }
}

}  // namespace

std::optional<ImageFile> ImageFile::Begin(const std::string& path, Disk& disk, UserInterface& ui) {
  const std::string target = TargetOf(path);
  const std::string aside = AsideOf(target);
  for (int left = MostTries; left > 0; --left) {
    if (IsForeign(aside)) {
      break;
    }
    auto file = disk.Open(aside, FileAccess::ReadWrite);
    const AsideState found = Take(*file);
    if (found == AsideState::Busy) {
      ui.Tell(MessageOf(message::IsoBusy, path));
      return std::nullopt;
    }
    if (found == AsideState::Foreign) {
      break;
    }
    if (found == AsideState::Gone) {
      continue;
    }
    if (found == AsideState::Leftover) {
      ui.Tell(MessageOf(message::IsoLeftoverTaken, path, aside));
    }
    ImageFile image(target, std::move(file), disk);
    WriteMark(image.Out());
    return image;
  }
  ui.Tell(MessageOf(message::IsoAsideForeign, aside));
  return std::nullopt;
}

ImageFile::ImageFile(std::string path, std::unique_ptr<File> file, Disk& disk)
    : path_(std::move(path)), aside_(file->Path()), file_(std::move(file)), disk_(&disk) {}

ImageFile::ImageFile(ImageFile&& other) noexcept
    : path_(std::move(other.path_)),
      aside_(std::exchange(other.aside_, {})),
      file_(std::move(other.file_)),
      disk_(other.disk_) {}

ImageFile::~ImageFile() {
  if (!aside_.empty()) {
    disk_->Remove(aside_);  // while the lock is held: nobody else's
  }
}

bool ImageFile::NotPlaced(UserInterface& ui, const std::string& reason) {
  ui.Tell(MessageOf(message::IsoNotPlaced, path_, reason, aside_));
  aside_.clear();
  return false;
}

void ImageFile::Finish(bool sync) {
  if (!file_) {
    return;
  }
  if (sync) {
    file_->Flush();
  }
  file_->Seek(0);
  file_->Write(Bytes(SectorBytes));
  if (sync) {
    file_->Flush();
  }
  file_->Close();
  file_.reset();
}

bool ImageFile::Place(bool replace, bool sync, UserInterface& ui) {
  Finish(sync);
  const FileKind there = disk_->KindOf(path_);
  if (there != FileKind::Missing && (there != FileKind::Plain || !replace)) {
    return NotPlaced(ui, std::generic_category().message(EEXIST));
  }
  if (const int refused = disk_->Rename(aside_, path_); refused != 0) {
    return NotPlaced(ui, std::generic_category().message(refused));
  }
  aside_.clear();
  if (sync) {
    SyncFolderOf(path_);
  }
  return true;
}

}  // namespace quorvelant
