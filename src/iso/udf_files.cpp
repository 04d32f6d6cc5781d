#include "iso/udf_files.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "iso/udf_items.h"

namespace quorvelant::udf {
namespace {

constexpr std::uint64_t FirstUniqueId = 16;   // those below are reserved; the root has 0
constexpr std::uint32_t Nobody = 0xFFFFFFFF;  // no user and no group owns it
constexpr std::uint32_t AllMayRead = 0x14A5;  // and look into folders: everybody, the group, the owner
constexpr std::uint8_t FolderType = 4;
constexpr std::uint8_t FileType = 5;
constexpr std::uint8_t IsFolder = 0x02;  // of a file identifier's characteristics
constexpr std::uint8_t IsParent = 0x08;
constexpr std::uint8_t EightBits = 8;

struct Entry {
  std::uint8_t Type = FileType;
  std::uint32_t Block = 0;    // of the entry itself
  std::uint64_t Size = 0;     // bytes
  std::uint32_t Content = 0;  // the block that what it holds begins with
  std::uint16_t Links = 1;    // names that lead here
  std::uint64_t UniqueId = 0;
};

struct Name {
  std::string_view Text;  // empty for the folder above
  std::uint32_t Entry = 0;
  std::uint8_t Characteristics = 0;
};

// What stands at which block; the rest of the structure is zero.
class Blocks {
 public:
  void Put(std::uint32_t block, const Bytes& bytes) {
    const std::size_t at = block * SectorBytes;
    bytes_.resize(std::max(bytes_.size(), (at + bytes.size() + SectorBytes - 1) / SectorBytes * SectorBytes));
    std::ranges::copy(bytes, bytes_.begin() + static_cast<std::ptrdiff_t>(at));
  }
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};

Bytes FileSetDescriptor(std::string_view label, const ImageTime& time) {
  constexpr unsigned Level = 3;
  LittleWriter out;
  out.Timestamp(time);                                   // RecordingDateandTime
  out.U16(Level);                                        // InterchangeLevel
  out.U16(Level);                                        // MaximumInterchangeLevel
  out.U32(1);                                            // CharacterSetList
  out.U32(1);                                            // MaximumCharacterSetList
  out.U32(0);                                            // FileSetNumber
  out.U32(0);                                            // FileSetDescriptorNumber
  out.CharacterSet();                                    // LogicalVolumeIdentifierCharacterSet
  out.DString(label, 128);                               // LogicalVolumeIdentifier
  out.CharacterSet();                                    // FileSetCharacterSet
  out.DString(label, 32);                                // FileSetIdentifier
  out.DString({}, 32);                                   // CopyrightFileIdentifier
  out.DString({}, 32);                                   // AbstractFileIdentifier
  out.LongAddress(SectorBytes, image_block::RootEntry);  // RootDirectoryICB
  out.EntityId(Domain, DomainSuffix);                    // DomainIdentifier
  out.LongAddress(0, 0);                                 // NextExtent
  out.Zeros(48);                                         // reserved
  return Tagged(Tag::FileSet, image_block::FileSet, out.Take());
}

void IcbTag(LittleWriter& out, std::uint8_t type) {
  constexpr unsigned DirectEntries = 4;
  out.U32(0);              // PriorRecordedNumberofDirectEntries
  out.U16(DirectEntries);  // StrategyType
  out.U16(0);              // StrategyParameter
  out.U16(1);              // NumberofEntries
  out.U8(0);               // reserved
  out.U8(type);            // FileType
  out.Zeros(6);            // ParentICBLocation
  out.U16(0);              // Flags: the extents are short
}

Bytes FileEntry(const Entry& entry, const ImageTime& time) {
  constexpr std::size_t ExtentBytes = 8;
  LittleWriter out;
  IcbTag(out, entry.Type);
  out.U32(Nobody);                                        // Uid
  out.U32(Nobody);                                        // Gid
  out.U32(AllMayRead);                                    // Permissions
  out.U16(entry.Links);                                   // FileLinkCount
  out.U8(0);                                              // RecordFormat
  out.U8(0);                                              // RecordDisplayAttributes
  out.U32(0);                                             // RecordLength
  out.U64(entry.Size);                                    // InformationLength
  out.U64((entry.Size + SectorBytes - 1) / SectorBytes);  // LogicalBlocksRecorded
  out.Timestamp(time);                                    // AccessTime
  out.Timestamp(time);                                    // ModificationTime
  out.Timestamp(time);                                    // AttributeTime
  out.U32(1);                                             // Checkpoint
  out.LongAddress(0, 0);                                  // ExtendedAttributeICB
  out.EntityId(Program);                                  // ImplementationIdentifier
  out.U64(entry.UniqueId);                                // UniqueId
  out.U32(0);                                             // LengthofExtendedAttributes
  out.U32(ExtentBytes);                                   // LengthofAllocationDescriptors
  out.Extent(entry.Size, entry.Content);                  // AllocationDescriptors
  return Tagged(Tag::FileEntry, entry.Block, out.Take());
}

// The names of a folder, which lie from `block` on, one after the other whatever block they end in.
Bytes Names(std::uint32_t block, std::span<const Name> names) {
  constexpr unsigned Version = 1;
  Bytes folder;
  for (const Name& name : names) {
    LittleWriter out;
    const std::size_t length = name.Text.empty() ? 0 : name.Text.size() + 1;
    out.U16(Version);                          // FileVersionNumber
    out.U8(name.Characteristics);              // FileCharacteristics
    out.U8(length);                            // LengthofFileIdentifier
    out.LongAddress(SectorBytes, name.Entry);  // ICB
    out.U16(0);                                // LengthofImplementationUse
    if (length > 0) {
      out.U8(EightBits);  // FileIdentifier
      out.Text(name.Text);
    }
    out.Zeros((4 - (38 + length) % 4) % 4);  // Padding
    const auto at = block + static_cast<std::uint32_t>(folder.size() / SectorBytes);
    const Bytes bytes = Tagged(Tag::FileIdentifier, at, out.Take());
    folder.insert(folder.end(), bytes.begin(), bytes.end());
  }
  return folder;
}

// Puts a folder: its entry and, in the block after, its names.
void PutFolder(Blocks& blocks, Entry entry, std::span<const Name> names, const ImageTime& time) {
  entry.Type = FolderType;
  entry.Content = entry.Block + 1;
  const Bytes bytes = Names(entry.Content, names);
  entry.Size = bytes.size();
  blocks.Put(entry.Block, FileEntry(entry, time));
  blocks.Put(entry.Content, bytes);
}

void PutVideoFolder(Blocks& blocks, const ImageLayout& layout, const ImageTime& time) {
  std::vector<Name> names{{{}, image_block::RootEntry, IsFolder | IsParent}};
  std::uint64_t uniqueId = FirstUniqueId + 2;
  std::uint32_t block = image_block::VideoNames + VideoNameBlocks(layout.Files.size());
  for (const PlacedFile& file : layout.Files) {
    names.push_back({file.File.Name, block, 0});
    blocks.Put(block, FileEntry({.Block = block,
                                 .Size = file.File.Size,
                                 .Content = file.Start - image_sector::Partition,
                                 .UniqueId = uniqueId++},
                                time));
    ++block;
  }
  std::ranges::sort(names, {}, &Name::Text);
  PutFolder(blocks, {.Block = image_block::VideoEntry, .UniqueId = FirstUniqueId + 1}, names, time);
}

}  // namespace

Bytes FileStructure(const ImageLayout& layout, std::string_view label, const ImageTime& time) {
  constexpr std::uint16_t LinksOfRoot = 3;  // its own, and those of the two folders in it
  const std::array<Name, 3> root{Name{{}, image_block::RootEntry, IsFolder | IsParent},
                                 Name{"AUDIO_TS", image_block::AudioEntry, IsFolder},
                                 Name{"VIDEO_TS", image_block::VideoEntry, IsFolder}};
  Blocks blocks;
  blocks.Put(image_block::FileSet, FileSetDescriptor(label, time));
  blocks.Put(image_block::FileSet + 1, Tagged(Tag::Terminating, image_block::FileSet + 1, Bytes(496)));
  PutFolder(blocks, {.Block = image_block::RootEntry, .Links = LinksOfRoot}, root, time);
  PutFolder(blocks, {.Block = image_block::AudioEntry, .UniqueId = FirstUniqueId}, std::span(root).first(1),
            time);
  PutVideoFolder(blocks, layout, time);
  return blocks.Take();
}

}  // namespace quorvelant::udf
