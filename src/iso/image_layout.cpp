#include "iso/image_layout.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>

#include "disc/disc_files.h"
#include "disc/disc_media.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
#include "iso/messages.h"
#include "iso/udf_files.h"

namespace quorvelant {
namespace {

// Positions before the whole is put into the image: they count from the Video Manager's first sector.
struct Placement {
  std::vector<PlacedFile> Files;
  std::uint64_t End = 0;
};

std::uint32_t RoundUp(std::uint32_t value, std::uint32_t multiple) {
  return (value + multiple - 1) / multiple * multiple;
}

// Where the search table of titles says that each set begins; a set without titles is missing.
std::map<std::size_t, std::uint32_t> ToldStarts(ByteView manager) {
  std::map<std::size_t, std::uint32_t> starts;
  const std::size_t table = std::size_t{Get(manager, vmgi::TitleSearch).Value} * SectorBytes;
  if (table == 0 || table + table_head::Size > manager.size()) {
    return starts;
  }
  const std::size_t count = Get(manager.subspan(table), table_head::Count).Value;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = table + table_head::Size + i * title_entry::Size;
    if (at + title_entry::Size > manager.size()) {
      break;
    }
    const ByteView entry = manager.subspan(at, title_entry::Size);
    starts.emplace(Get(entry, title_entry::TitleSet).Value, Get(entry, title_entry::SetStart).Value);
  }
  return starts;
}

class Placer {
 public:
  explicit Placer(std::vector<Message>& faults) : faults_(faults) {}

  Placement Place(const DiscTree& tree) {
    const auto starts = ToldStarts(tree.Sets[0].Tables);
    for (std::size_t number = 0; number < tree.Sets.size(); ++number) {
      const auto told = starts.find(number);
      PlaceSet(tree.Sets[number], number > 0, told == starts.end() || number == 0 ? at_ : told->second);
    }
    return {std::move(files_), at_};
  }

 private:
  void PlaceSet(const TreeSet& set, bool hasTitles, std::uint64_t start) {
    // The pointers stand at the same place in both kinds of IFO.
    const std::uint64_t end = start + Get(set.Tables, vtsi::SetLast).Value + 1;
    Put(set.Ifo, start, set);
    if (set.MenuVob) {
      Put(*set.MenuVob, start + Get(set.Tables, vtsi::MenuVobs).Value, set);
    }
    std::uint64_t next = hasTitles ? start + Get(set.Tables, vtsi::TitleVobs).Value : at_;
    for (const TreeFile& vob : set.TitleVobs) {
      Put(vob, next, set);
      next += vob.Sectors();
    }
    Put(set.Backup, end >= set.Backup.Sectors() ? end - set.Backup.Sectors() : 0, set);
  }

  // The first contradiction is told: what follows it stands wrong because of it.
  void Put(const TreeFile& file, std::uint64_t start, const TreeSet& set) {
    if (start < at_ && faults_.empty()) {
      faults_.push_back(MessageOf(message::IsoTablesDisagree, file.Path, start, at_, set.Ifo.Name));
    }
    files_.push_back({file, static_cast<std::uint32_t>(std::min<std::uint64_t>(start, UINT32_MAX))});
    at_ = start + file.Sectors();
  }

  std::vector<Message>& faults_;
  std::vector<PlacedFile> files_;
  std::uint64_t at_ = 0;  // the first free sector
};

struct SetEnds {
  std::uint32_t IfoLast = 0;
  std::uint32_t Backup = 0;  // the first sector
};

std::vector<SetEnds> EndsOf(std::span<const PlacedFile> files) {
  std::vector<SetEnds> ends;
  for (const PlacedFile& file : files) {
    if (file.File.Name.ends_with(".IFO")) {
      ends.push_back({file.End() - 1, 0});
    } else if (file.File.Name.ends_with(".BUP")) {
      ends.back().Backup = file.Start;
    }
  }
  return ends;
}

std::vector<std::size_t> TogetherAt(std::span<const SetEnds> sets, std::uint32_t shift) {
  std::vector<std::size_t> together;
  for (std::size_t i = 0; i < sets.size(); ++i) {
    if ((sets[i].IfoLast + shift) / EccSectors == (sets[i].Backup + shift) / EccSectors) {
      together.push_back(i);
    }
  }
  return together;
}

std::vector<std::vector<TitleCell>> CellsOf(const DiscTree& tree) {
  std::vector<std::vector<TitleCell>> cells;
  for (const TreeSet& set : tree.Sets) {
    cells.push_back(cells.empty() ? std::vector<TitleCell>() : TitleCellsOf(set.Tables));
  }
  return cells;
}

std::vector<SetCells> StartsOf(const Placement& placement, std::span<const std::vector<TitleCell>> cells) {
  std::vector<SetCells> sets;
  for (const PlacedFile& file : placement.Files) {
    if (file.File.Name.ends_with("_1.VOB")) {
      const std::size_t set = sets.size() + 1;
      sets.push_back({set, file.Start, cells[set]});
    }
  }
  return sets;
}

// The image with its first file at `start`.
ImageLayout LayoutAt(std::uint32_t start, const Placement& placement, std::span<const SetEnds> ends,
                     std::span<const SetCells> cells) {
  ImageLayout layout;
  layout.Sectors = RoundUp(start + static_cast<std::uint32_t>(placement.End) + 1, EccSectors);
  layout.Together = TogetherAt(ends, start);
  layout.TwoLayers = layout.Size() > SingleLayerBytes;
  if (layout.TwoLayers) {
    layout.Break = ChooseBreak(cells, layout.Sectors, start);
  }
  return layout;
}

// What is better comes first.
auto Rank(const ImageLayout& layout, std::uint32_t start) {
  const bool lacksBreak = layout.TwoLayers && !layout.Break;
  const bool holdsManager = !layout.Together.empty() && layout.Together.front() == 0;
  return std::tuple(layout.Together.size(), holdsManager, lacksBreak, layout.Break ? layout.Break->Sector : 0,
                    start % EccSectors != 0, start);
}

double Gigabytes(std::uint64_t bytes) {
  return static_cast<double>(bytes) / 1e9;
}

bool IsTooLarge(std::uint64_t sectors, std::vector<Message>& faults) {
  const std::uint64_t bytes = sectors * SectorBytes;
  if (bytes > DualLayerBytes) {
    faults.push_back(MessageOf(message::IsoTooLarge, {}, Gigabytes(bytes), Gigabytes(DualLayerBytes)));
  }
  return bytes > DualLayerBytes;
}

}  // namespace

std::uint32_t VideoNameBlocks(std::size_t files) {
  const std::size_t bytes = udf::ParentNameBytes + files * udf::FileNameBytes;
  return static_cast<std::uint32_t>((bytes + SectorBytes - 1) / SectorBytes);
}

ImageLayout LayOutImage(const DiscTree& tree, std::vector<Message>& faults) {
  if (!faults.empty() || tree.Sets.empty()) {
    return {};
  }
  const Placement placement = Placer(faults).Place(tree);
  if (!faults.empty() || IsTooLarge(placement.End, faults)) {
    return {};
  }
  const auto files = static_cast<std::uint32_t>(placement.Files.size());
  const std::uint32_t first =
      image_sector::Partition + image_block::VideoNames + VideoNameBlocks(files) + files;
  const auto ends = EndsOf(placement.Files);
  const auto cells = CellsOf(tree);
  const auto starts = StartsOf(placement, cells);
  std::uint32_t best = first;
  ImageLayout layout = LayoutAt(first, placement, ends, starts);
  for (std::uint32_t start = first + 1; start < first + EccSectors; ++start) {
    ImageLayout other = LayoutAt(start, placement, ends, starts);
    if (Rank(other, start) < Rank(layout, best)) {
      best = start;
      layout = std::move(other);
    }
  }
  if (IsTooLarge(layout.Sectors, faults)) {
    return {};
  }
  layout.Files = placement.Files;
  for (PlacedFile& file : layout.Files) {
    file.Start += best;
  }
  return layout;
}

}  // namespace quorvelant
