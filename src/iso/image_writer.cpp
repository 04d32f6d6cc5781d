#include "iso/image_writer.h"

#include <algorithm>
#include <span>
#include <vector>

#include "base/io_bytes.h"
#include "base/message_error.h"
#include "iso/iso9660.h"
#include "iso/messages.h"
#include "iso/udf_files.h"
#include "iso/udf_volume.h"

namespace quorvelant {
namespace {

// Stays within a processor's cache: a larger one goes through memory twice.
constexpr std::size_t BufferBytes = std::size_t{256} << 10U;
constexpr std::uint64_t WriteBackBytes = std::uint64_t{16} << 20U;

std::uint64_t OffsetOf(std::uint32_t sector) {
  return std::uint64_t{sector} * SectorBytes;
}

class ImageWriter {
 public:
  ImageWriter(const ImageLayout& layout, File& out, Disk& disk, bool writeBackEarly, UserInterface& ui)
      : layout_(layout),
        out_(out),
        disk_(disk),
        writeBackEarly_(writeBackEarly),
        ui_(ui),
        buffer_(BufferBytes) {
    for (const PlacedFile& file : layout.Files) {
      total_ += file.File.Size;
    }
  }

  bool CopyFiles() {
    std::size_t set = 0;
    for (const PlacedFile& file : layout_.Files) {
      if (!Copy(file, MarksIn(file, set))) {
        return false;
      }
      set += file.File.Name.ends_with(".BUP") ? 1U : 0U;  // the last file of a set
    }
    return true;
  }

  void WriteAt(std::uint32_t sector, ByteView bytes) {
    out_.Seek(OffsetOf(sector));
    out_.Write(bytes);
  }

 private:
  std::span<const TableByte> MarksIn(const PlacedFile& file, std::size_t set) const {
    const bool isMarked = layout_.Break && layout_.Break->Set == set && !file.File.Name.ends_with(".VOB");
    return isMarked ? std::span<const TableByte>(layout_.Break->Marks) : std::span<const TableByte>();
  }

  bool Copy(const PlacedFile& placed, std::span<const TableByte> marks) {
    const TreeFile& file = placed.File;
    const auto source = disk_.Open(file.Path, FileAccess::Read);
    if (source->ByteCount() != file.Size) {
      throw MessageError(MessageOf(message::IsoSourceChanged, file.Path));
    }
    out_.Seek(OffsetOf(placed.Start));
    for (std::uint64_t at = 0; at < file.Size;) {
      if (ui_.StopRequested()) {
        return false;
      }
      const ByteSpan part = ByteSpan(buffer_).first(std::min<std::uint64_t>(BufferBytes, file.Size - at));
      if (source->Read(part) != part.size()) {
        throw MessageError(MessageOf(message::IsoSourceChanged, file.Path));
      }
      for (const TableByte& mark : marks) {
        if (mark.At >= at && mark.At < at + part.size()) {
          part[mark.At - at] = mark.Value;
        }
      }
      out_.Write(part);
      at += part.size();
      Count(part.size());
    }
    return true;
  }

  void Count(std::uint64_t bytes) {
    done_ += bytes;
    unasked_ += bytes;
    if (writeBackEarly_ && unasked_ >= WriteBackBytes) {
      out_.StartWriteBack();
      unasked_ = 0;
    }
    ui_.Progress(static_cast<double>(done_), static_cast<double>(total_));
  }

  const ImageLayout& layout_;
  File& out_;
  Disk& disk_;
  bool writeBackEarly_;
  UserInterface& ui_;
  IoBytes buffer_;
  std::uint64_t total_ = 0;  // bytes of all files
  std::uint64_t done_ = 0;
  std::uint64_t unasked_ = 0;  // bytes written since the last wish
};

}  // namespace

Bytes ImageHead(const ImageLayout& layout, const ImageVolume& volume) {
  constexpr std::uint32_t FolderCount = 3;
  const udf::Volume own{.Label = volume.Label,
                        .Serial = volume.Serial,
                        .Sectors = layout.Sectors,
                        .Files = static_cast<std::uint32_t>(layout.Files.size()),
                        .Folders = FolderCount,
                        .Time = volume.Time};
  Bytes head(OffsetOf(layout.Files.front().Start));
  const auto put = [&head](std::uint32_t sector, const Bytes& bytes) {
    std::ranges::copy(bytes, head.begin() + static_cast<std::ptrdiff_t>(OffsetOf(sector)));
  };
  put(image_sector::IsoVolume, iso9660::VolumeDescriptors(layout, volume.Label, volume.Time));
  put(image_sector::Recognition, udf::Recognition());
  put(image_sector::MainSequence, udf::Sequence(own, image_sector::MainSequence));
  put(image_sector::ReserveSequence, udf::Sequence(own, image_sector::ReserveSequence));
  put(image_sector::Integrity, udf::Integrity(own));
  put(image_sector::LittlePathTable, iso9660::Folders(layout, volume.Time));
  put(image_sector::Anchor, udf::Anchor(image_sector::Anchor));
  put(image_sector::Partition, udf::FileStructure(layout, volume.Label, volume.Time));
  return head;
}

bool WriteImage(const ImageLayout& layout, const ImageVolume& volume, File& out, Disk& disk,
                bool writeBackEarly, UserInterface& ui) {
  ImageWriter writer(layout, out, disk, writeBackEarly, ui);
  if (!writer.CopyFiles()) {
    return false;
  }
  const std::uint32_t end = layout.Files.back().End();
  Bytes tail((layout.Sectors - 1 - end) * SectorBytes);
  const Bytes anchor = udf::Anchor(layout.Sectors - 1);
  tail.insert(tail.end(), anchor.begin(), anchor.end());
  writer.WriteAt(end, tail);
  writer.WriteAt(1, ByteView(ImageHead(layout, volume)).subspan(SectorBytes));
  return !ui.StopRequested();
}

}  // namespace quorvelant
