#include "verify/image_source.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "verify/image_sectors.h"
#include "verify/iso9660_reader.h"
#include "verify/messages.h"
#include "verify/udf_reader.h"

namespace quorvelant {
namespace {

constexpr std::uint32_t VolumeDescriptors = 16;  // the first sector of theirs

using FileReader = std::vector<DiscSourceFile> (*)(const ImageSectors&);

std::vector<DiscSourceFile> FilesBy(FileReader reader, const ImageSectors& sectors, DiscFindings& findings) {
  try {
    return reader(sectors);
  } catch (const ImageFault& fault) {
    findings.Add(message::ImageDamaged, {.Sector = fault.Sector}, fault.Structure, fault.Field,
                 fault.Expected, fault.Seen);
    return {};
  }
}

std::string ExtentText(const DiscSourceFile& file) {
  return fmt::format("{} bytes at sector {}", file.Size, file.FirstSector.value_or(0));
}

// Whether a volume descriptor from sector 16 on bears one of the names. One that cannot be read may: the
// reader of its file system tells.
bool IsNamed(const ImageSectors& sectors, std::initializer_list<std::string_view> names) {
  constexpr std::uint32_t End = 32;
  constexpr std::size_t NameAt = 1;
  for (std::uint32_t i = VolumeDescriptors; i < std::min<std::uint64_t>(End, sectors.Count()); ++i) {
    const std::optional<Bytes> sector = sectors.TryRead(i);
    if (!sector) {
      return true;
    }
    const std::string name(sector->begin() + NameAt, sector->begin() + NameAt + 5);
    if (std::ranges::find(names, name) != names.end()) {
      return true;
    }
  }
  return false;
}

bool HasAnchor(const ImageSectors& sectors) {
  constexpr std::uint32_t Anchor = 256;
  constexpr unsigned AnchorTag = 2;
  if (sectors.Count() <= Anchor) {
    return false;
  }
  const std::optional<Bytes> sector = sectors.TryRead(Anchor);
  return !sector || GetLittle(*sector, 0, 2) == AnchorTag;
}

// An image that lost its end lost an anchor of UDF with it.
void CheckVolumeSize(const ImageSectors& sectors, DiscFindings& findings) {
  constexpr std::size_t SpaceSize = 80;  // of the primary volume descriptor
  const std::optional<Bytes> volume = sectors.TryRead(VolumeDescriptors);
  const std::uint64_t said = volume ? GetLittle(*volume, SpaceSize, 4) : 0;
  if (volume && volume->front() == 1 && said > sectors.Count()) {
    findings.Add(message::ImageShort, {.Sector = VolumeDescriptors}, "primary volume descriptor",
                 "volume space size", fmt::format("at most {} sectors", sectors.Count()),
                 std::to_string(said));
  }
}

// Players read one file system or the other: both name the same bytes.
void Compare(const std::vector<DiscSourceFile>& udf, const std::vector<DiscSourceFile>& iso,
             DiscFindings& findings) {
  std::map<std::string, const DiscSourceFile*> others;
  for (const DiscSourceFile& file : iso) {
    others[file.Name] = &file;
  }
  for (const DiscSourceFile& file : udf) {
    const auto other = others.find(file.Name);
    if (other == others.end() || ExtentText(*other->second) != ExtentText(file)) {
      findings.Add(message::ImageUnlike, {.File = file.Name}, "ISO 9660 directory record", "",
                   ExtentText(file) + " as in UDF",
                   other == others.end() ? "no such file" : ExtentText(*other->second));
    }
    others.erase(file.Name);
  }
  for (const auto& [name, file] : others) {
    findings.Add(message::ImageUnlike, {.File = name}, "UDF file entry", "",
                 ExtentText(*file) + " as in ISO 9660", "no such file");
  }
}

class ImageReader : public DiscReader {
 public:
  explicit ImageReader(std::unique_ptr<File> image) : image_(std::move(image)) {}

  std::size_t Read(const DiscSourceFile& file, std::uint64_t offset, ByteSpan target) override {
    const std::uint64_t left = offset < file.Size ? file.Size - offset : 0;
    const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, target.size()));
    image_->Seek(std::uint64_t{*file.FirstSector} * SectorBytes + offset);
    return image_->Read(target.first(wanted));
  }

 private:
  std::unique_ptr<File> image_;
};

}  // namespace

ImageSource::ImageSource(std::string path, Disk& disk, DiscFindings& findings)
    : path_(std::move(path)), disk_(&disk) {
  const std::unique_ptr<File> image = disk.Open(path_, FileAccess::Read);
  const ImageSectors sectors(*image);
  const bool hasUdf = IsNamed(sectors, {"BEA01", "NSR02", "NSR03", "TEA01"}) || HasAnchor(sectors);
  const bool hasIso = IsNamed(sectors, {"CD001"});
  if (!hasUdf && !hasIso) {
    findings.Add(message::ImageDamaged, {}, "file systems", "", "UDF or ISO 9660", "neither");
    return;
  }
  if (image->ByteCount() % SectorBytes != 0) {
    findings.Add(message::ImageDamaged, {}, "image", "size", "a multiple of 2048 bytes",
                 std::to_string(image->ByteCount()));
  }
  if (hasUdf && !IsNamed(sectors, {"NSR02", "NSR03"})) {
    findings.Add(message::ImageDamaged, {.Sector = VolumeDescriptors}, "UDF volume recognition sequence", "",
                 "NSR02", "none");
  }
  if (hasIso) {
    CheckVolumeSize(sectors, findings);
  }
  std::vector<DiscSourceFile> udf;
  std::vector<DiscSourceFile> iso;
  if (hasUdf) {
    udf = FilesBy(UdfFiles, sectors, findings);
  } else {
    findings.Add(message::ImageWithoutUdf, {}, "file systems", "", "UDF, which players read",
                 "ISO 9660 alone");
  }
  if (hasIso) {
    iso = FilesBy(Iso9660Files, sectors, findings);
  } else {
    findings.Add(message::ImageWithoutIso, {}, "file systems", "", "ISO 9660 too", "UDF alone");
  }
  if (!udf.empty() && !iso.empty()) {
    Compare(udf, iso, findings);
  }
  std::vector<DiscSourceFile> files = udf.empty() ? iso : udf;
  std::erase_if(files, [&](const DiscSourceFile& file) {
    const std::uint64_t end = std::uint64_t{*file.FirstSector} * SectorBytes + file.Size;
    const bool outside = end < file.Size || end > image->ByteCount();
    if (outside) {
      findings.Add(message::ImageDamaged, {.File = file.Name}, "image", "",
                   fmt::format("files within {} sectors", sectors.Count()), ExtentText(file));
    }
    return outside;
  });
  SetFiles(std::move(files));
}

std::unique_ptr<DiscReader> ImageSource::NewReader() const {
  return std::make_unique<ImageReader>(disk_->Open(path_, FileAccess::Read));
}

}  // namespace quorvelant
