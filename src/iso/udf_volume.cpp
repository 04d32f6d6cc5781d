#include "iso/udf_volume.h"

#include <fmt/format.h>

#include <functional>

#include "iso/image_layout.h"
#include "iso/udf_items.h"

namespace quorvelant::udf {
namespace {

constexpr std::string_view SetContents = "+NSR02";
constexpr std::string_view VolumeInfo = "*UDF LV Info";
constexpr std::size_t TagBytes = 16;
constexpr std::size_t DescriptorBytes = 512;

void Append(Bytes& bytes, const Bytes& descriptor) {
  bytes.insert(bytes.end(), descriptor.begin(), descriptor.end());
  bytes.resize((bytes.size() + SectorBytes - 1) / SectorBytes * SectorBytes);
}

std::uint32_t PartitionSectors(const Volume& volume) {
  return volume.Sectors - 1 - image_sector::Partition;  // the last sector is the anchor's
}

void Primary(LittleWriter& out, const Volume& volume) {
  constexpr unsigned SingleVolume = 2;
  out.U32(0);                                                               // PrimaryVolumeDescriptorNumber
  out.DString(volume.Label, 32);                                            // VolumeIdentifier
  out.U16(1);                                                               // VolumeSequenceNumber
  out.U16(1);                                                               // MaximumVolumeSequenceNumber
  out.U16(SingleVolume);                                                    // InterchangeLevel
  out.U16(SingleVolume);                                                    // MaximumInterchangeLevel
  out.U32(1);                                                               // CharacterSetList
  out.U32(1);                                                               // MaximumCharacterSetList
  out.DString(fmt::format("{:016X}{}", volume.Serial, volume.Label), 128);  // VolumeSetIdentifier
  out.CharacterSet();                                                       // DescriptorCharacterSet
  out.CharacterSet();                                                       // ExplanatoryCharacterSet
  out.Extent(0, 0);                                                         // VolumeAbstract
  out.Extent(0, 0);                                                         // VolumeCopyrightNotice
  out.EntityId(Program);                                                    // ApplicationIdentifier
  out.Timestamp(volume.Time);                                               // RecordingDateandTime
  out.EntityId(Program);                                                    // ImplementationIdentifier
  out.Zeros(64);                                                            // ImplementationUse
  out.U32(0);     // PredecessorVolumeDescriptorSequenceLocation
  out.U16(0);     // Flags
  out.Zeros(22);  // reserved
}

void ImplementationUse(LittleWriter& out, const Volume& volume) {
  out.EntityId(VolumeInfo, Revision);  // ImplementationIdentifier
  out.CharacterSet();                  // LVICharset
  out.DString(volume.Label, 128);      // LogicalVolumeIdentifier
  out.DString({}, 36);                 // LVInfo1
  out.DString({}, 36);                 // LVInfo2
  out.DString({}, 36);                 // LVInfo3
  out.EntityId(Program);               // ImplementationID
  out.Zeros(128);                      // ImplementationUse
}

void Partition(LittleWriter& out, const Volume& volume) {
  constexpr unsigned ReadOnly = 1;
  out.U16(1);                         // PartitionFlags: its space is allocated
  out.U16(0);                         // PartitionNumber
  out.EntityId(SetContents);          // PartitionContents
  out.Zeros(128);                     // PartitionContentsUse
  out.U32(ReadOnly);                  // AccessType
  out.U32(image_sector::Partition);   // PartitionStartingLocation
  out.U32(PartitionSectors(volume));  // PartitionLength
  out.EntityId(Program);              // ImplementationIdentifier
  out.Zeros(128);                     // ImplementationUse
  out.Zeros(156);                     // reserved
}

void LogicalVolume(LittleWriter& out, const Volume& volume) {
  constexpr unsigned MapBytes = 6;
  out.CharacterSet();                                      // DescriptorCharacterSet
  out.DString(volume.Label, 128);                          // LogicalVolumeIdentifier
  out.U32(SectorBytes);                                    // LogicalBlockSize
  out.EntityId(Domain, DomainSuffix);                      // DomainIdentifier
  out.LongAddress(2 * SectorBytes, image_block::FileSet);  // LogicalVolumeContentsUse: the file set
  out.U32(MapBytes);                                       // MapTableLength
  out.U32(1);                                              // NumberofPartitionMaps
  out.EntityId(Program);                                   // ImplementationIdentifier
  out.Zeros(128);                                          // ImplementationUse
  out.Extent(image_sector::IntegritySectors * SectorBytes,
             image_sector::Integrity);  // IntegritySequenceExtent
  out.U8(1);                            // PartitionMaps: of type 1,
  out.U8(MapBytes);                     // so long,
  out.U16(1);                           // on this volume,
  out.U16(0);                           // the partition of this number
}

void UnallocatedSpace(LittleWriter& out, const Volume& /*volume*/) {
  out.U32(0);  // NumberofAllocationDescriptors
}

}  // namespace

Bytes Recognition() {
  Bytes bytes;
  for (const std::string_view identifier : {"BEA01", "NSR02", "TEA01"}) {
    LittleWriter out;
    out.U8(0);             // StructureType
    out.Text(identifier);  // StandardIdentifier
    out.U8(1);             // StructureVersion
    Append(bytes, out.Take());
  }
  return bytes;
}

Bytes Sequence(const Volume& volume, std::uint32_t sector) {
  struct Row {
    Tag Kind;
    void (*Fill)(LittleWriter&, const Volume&);
  };
  const std::array rows{Row{Tag::PrimaryVolume, Primary}, Row{Tag::ImplementationUse, ImplementationUse},
                        Row{Tag::Partition, Partition}, Row{Tag::LogicalVolume, LogicalVolume},
                        Row{Tag::UnallocatedSpace, UnallocatedSpace}};
  Bytes bytes;
  std::uint32_t number = 0;
  for (const Row& row : rows) {
    LittleWriter out;
    out.U32(number);  // VolumeDescriptorSequenceNumber
    row.Fill(out, volume);
    Append(bytes, Tagged(row.Kind, sector + number, out.Take()));
    ++number;
  }
  Append(bytes, Tagged(Tag::Terminating, sector + number, Bytes(DescriptorBytes - TagBytes)));
  bytes.resize(std::size_t{image_sector::SequenceSectors} * SectorBytes);
  return bytes;
}

Bytes Integrity(const Volume& volume) {
  constexpr unsigned Closed = 1;
  constexpr std::uint64_t FirstUniqueId = 16;
  constexpr unsigned UseBytes = 46;
  LittleWriter out;
  out.Timestamp(volume.Time);                              // RecordingDateandTime
  out.U32(Closed);                                         // IntegrityType
  out.Extent(0, 0);                                        // NextIntegrityExtent
  out.U64(FirstUniqueId + volume.Files + volume.Folders);  // LogicalVolumeContentsUse: the next unique id
  out.Zeros(24);
  out.U32(1);                         // NumberofPartitions
  out.U32(UseBytes);                  // LengthofImplementationUse
  out.U32(0);                         // FreeSpaceTable
  out.U32(PartitionSectors(volume));  // SizeTable
  out.EntityId(Program);              // ImplementationUse: who wrote it,
  out.U32(volume.Files);              // files,
  out.U32(volume.Folders);            // folders,
  out.U16(Revision);                  // the least revision that reads it,
  out.U16(Revision);                  // that writes it,
  out.U16(Revision);                  // and the highest that has written it
  Bytes bytes;
  Append(bytes, Tagged(Tag::Integrity, image_sector::Integrity, out.Take()));
  Append(bytes, Tagged(Tag::Terminating, image_sector::Integrity + 1, Bytes(DescriptorBytes - TagBytes)));
  return bytes;
}

Bytes Anchor(std::uint32_t sector) {
  constexpr std::uint64_t SequenceBytes = std::uint64_t{image_sector::SequenceSectors} * SectorBytes;
  LittleWriter out;
  out.Extent(SequenceBytes, image_sector::MainSequence);     // MainVolumeDescriptorSequenceExtent
  out.Extent(SequenceBytes, image_sector::ReserveSequence);  // ReserveVolumeDescriptorSequenceExtent
  out.Zeros(480);                                            // reserved
  Bytes bytes;
  Append(bytes, Tagged(Tag::AnchorPointer, sector, out.Take()));
  return bytes;
}

}  // namespace quorvelant::udf
