#include "iso/iso9660.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

#include "iso/udf_items.h"

namespace quorvelant::iso9660 {
namespace {

using udf::LittleWriter;

constexpr std::string_view StandardId = "CD001";
constexpr std::uint8_t FolderFlag = 0x02;

// Numbers stand in both byte orders.
void Both16(LittleWriter& out, std::uint16_t value) {
  out.U16(value);
  out.U8(value >> 8U);
  out.U8(value);
}

void Both32(LittleWriter& out, std::uint32_t value) {
  Bytes big(4);
  PutBytes(big, 0, 4, value);
  out.U32(value);
  out.Raw(big);
}

void Padded(LittleWriter& out, std::string_view text, std::size_t width) {
  out.Text(fmt::format("{:<{}}", text, width));
}

// 8.4.26.1: digits and the distance to UTC.
void LongDate(LittleWriter& out, const ImageTime& time) {
  out.Text(fmt::format("{:04}{:02}{:02}{:02}{:02}{:02}00", time.Year, time.Month, time.Day, time.Hour,
                       time.Minute, time.Second));
  out.U8(0);
}

void NoDate(LittleWriter& out) {
  out.Text("0000000000000000");
  out.U8(0);
}

struct Record {
  std::string Name;  // one byte for a folder itself (0) and the one above (1)
  std::uint32_t Sector = 0;
  std::uint32_t Size = 0;  // bytes
  std::uint8_t Flags = 0;
};

// 9.1. Its length is even.
Bytes DirectoryRecord(const Record& record, const ImageTime& time) {
  constexpr std::size_t HeadBytes = 33;
  constexpr int FirstYear = 1900;
  const std::size_t pad = record.Name.size() % 2 == 0 ? 1 : 0;
  LittleWriter out;
  out.U8(HeadBytes + record.Name.size() + pad);               // Length of Directory Record
  out.U8(0);                                                  // Extended Attribute Record Length
  Both32(out, record.Sector);                                 // Location of Extent
  Both32(out, record.Size);                                   // Data Length
  out.U8(static_cast<std::uint64_t>(time.Year - FirstYear));  // Recording Date and Time
  out.U8(time.Month);
  out.U8(time.Day);
  out.U8(time.Hour);
  out.U8(time.Minute);
  out.U8(time.Second);
  out.U8(0);
  out.U8(record.Flags);        // File Flags
  out.U8(0);                   // File Unit Size
  out.U8(0);                   // Interleave Gap Size
  Both16(out, 1);              // Volume Sequence Number
  out.U8(record.Name.size());  // Length of File Identifier
  out.Text(record.Name);       // File Identifier
  out.Zeros(pad);
  return out.Take();
}

// Records lie whole in a sector.
Bytes Folder(const Record& self, const Record& parent, std::span<const Record> content,
             const ImageTime& time) {
  Bytes bytes;
  const auto add = [&](const Record& record) {
    const Bytes one = DirectoryRecord(record, time);
    if (bytes.size() % SectorBytes + one.size() > SectorBytes) {
      bytes.resize((bytes.size() + SectorBytes - 1) / SectorBytes * SectorBytes);
    }
    bytes.insert(bytes.end(), one.begin(), one.end());
  };
  add({std::string(1, '\0'), self.Sector, self.Size, FolderFlag});
  add({std::string(1, '\1'), parent.Sector, parent.Size, FolderFlag});
  std::ranges::for_each(content, add);
  bytes.resize((bytes.size() + SectorBytes - 1) / SectorBytes * SectorBytes);
  return bytes;
}

std::vector<Record> FilesOf(const ImageLayout& layout) {
  std::vector<Record> files;
  for (const PlacedFile& file : layout.Files) {
    files.push_back({file.File.Name + ";1", file.Start, static_cast<std::uint32_t>(file.File.Size), 0});
  }
  std::ranges::sort(files, {}, &Record::Name);
  return files;
}

struct Tree {
  Record Root{{}, image_sector::IsoRoot, SectorBytes, FolderFlag};
  Record Audio{"AUDIO_TS", image_sector::IsoAudioFolder, SectorBytes, FolderFlag};
  Record Video{"VIDEO_TS", image_sector::IsoVideoFolder, 0, FolderFlag};
};

Tree TreeOf(const ImageLayout& layout) {
  Tree tree;
  tree.Video.Size = static_cast<std::uint32_t>(Folder({}, {}, FilesOf(layout), {}).size());
  return tree;
}

// 9.4: the root is number 1, and its own parent.
Bytes PathTable(const Tree& tree, bool bigEndian) {
  LittleWriter out;
  const auto number = [&](unsigned width, std::uint64_t value) {
    Bytes bytes(width);
    PutBytes(bytes, 0, width, value);
    if (!bigEndian) {
      std::ranges::reverse(bytes);
    }
    out.Raw(bytes);
  };
  for (const Record* folder : {&tree.Root, &tree.Audio, &tree.Video}) {
    const std::string name = folder->Name.empty() ? std::string(1, '\0') : folder->Name;
    out.U8(name.size());        // Length of Directory Identifier
    out.U8(0);                  // Extended Attribute Record Length
    number(4, folder->Sector);  // Location of Extent
    number(2, 1);               // Parent Directory Number
    out.Text(name);             // Directory Identifier
    out.Zeros(name.size() % 2);
  }
  return out.Take();
}

}  // namespace

Bytes VolumeDescriptors(const ImageLayout& layout, std::string_view label, const ImageTime& time) {
  const Tree tree = TreeOf(layout);
  const auto pathBytes = static_cast<std::uint32_t>(PathTable(tree, false).size());
  LittleWriter out;
  out.U8(1);                               // Volume Descriptor Type
  out.Text(StandardId);                    // Standard Identifier
  out.U8(1);                               // Volume Descriptor Version
  out.U8(0);                               // unused
  Padded(out, {}, 32);                     // System Identifier
  Padded(out, label, 32);                  // Volume Identifier
  out.Zeros(8);                            // unused
  Both32(out, layout.Sectors);             // Volume Space Size
  out.Zeros(32);                           // unused
  Both16(out, 1);                          // Volume Set Size
  Both16(out, 1);                          // Volume Sequence Number
  Both16(out, SectorBytes);                // Logical Block Size
  Both32(out, pathBytes);                  // Path Table Size
  out.U32(image_sector::LittlePathTable);  // Location of Occurrence of Type L Path Table
  out.U32(0);                              // the same, optional
  Bytes big(8);
  PutBytes(big, 0, 4, image_sector::BigPathTable);
  out.Raw(big);  // Location of Occurrence of Type M Path Table, and optional
  out.Raw(DirectoryRecord({std::string(1, '\0'), tree.Root.Sector, tree.Root.Size, FolderFlag}, time));
  Padded(out, label, 128);        // Volume Set Identifier
  Padded(out, {}, 128);           // Publisher Identifier
  Padded(out, {}, 128);           // Data Preparer Identifier
  Padded(out, Application, 128);  // Application Identifier
  Padded(out, {}, 37);            // Copyright File Identifier
  Padded(out, {}, 37);            // Abstract File Identifier
  Padded(out, {}, 37);            // Bibliographic File Identifier
  LongDate(out, time);            // Volume Creation Date and Time
  LongDate(out, time);            // Volume Modification Date and Time
  NoDate(out);                    // Volume Expiration Date and Time
  LongDate(out, time);            // Volume Effective Date and Time
  out.U8(1);                      // File Structure Version
  Bytes bytes = out.Take();
  bytes.resize(SectorBytes);
  LittleWriter end;
  end.U8(255);           // Volume Descriptor Type
  end.Text(StandardId);  // Standard Identifier
  end.U8(1);             // Volume Descriptor Version
  const Bytes terminator = end.Take();
  bytes.insert(bytes.end(), terminator.begin(), terminator.end());
  bytes.resize(2 * SectorBytes);
  return bytes;
}

Bytes Folders(const ImageLayout& layout, const ImageTime& time) {
  const Tree tree = TreeOf(layout);
  const std::array<Record, 2> root{tree.Audio, tree.Video};
  Bytes bytes;
  const auto add = [&bytes](const Bytes& part) {
    bytes.insert(bytes.end(), part.begin(), part.end());
    bytes.resize((bytes.size() + SectorBytes - 1) / SectorBytes * SectorBytes);
  };
  add(PathTable(tree, false));
  add(PathTable(tree, true));
  add(Folder(tree.Root, tree.Root, root, time));
  add(Folder(tree.Audio, tree.Root, {}, time));
  add(Folder(tree.Video, tree.Root, FilesOf(layout), time));
  return bytes;
}

}  // namespace quorvelant::iso9660
