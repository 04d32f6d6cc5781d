#include "iso/disc_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "disc/cell_extent.h"
#include "disc/disc_files.h"
#include "disc/limits.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
#include "iso/messages.h"

namespace quorvelant {
namespace {

constexpr std::string_view FolderName = "VIDEO_TS";
constexpr std::uint64_t MostFileBytes = std::uint64_t{MostVobSectors} * SectorBytes;

class TreeReader {
 public:
  TreeReader(std::string folder, UserInterface& ui, std::vector<Message>& faults)
      : folder_(std::move(folder)), ui_(ui), files_(ui), faults_(faults) {
    files_.DimFiles(0);
    std::error_code failed;
    for (const auto& entry : std::filesystem::directory_iterator(folder_, failed)) {
      names_.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names_);
    for (const DiscFile& file : ListFiles(folder_)) {
      found_[Upper(file.Name)] = {Upper(file.Name), folder_ + "/" + file.Name, file.Size};
    }
  }

  DiscTree Read() {
    DiscTree tree;
    if (!found_.contains(IfoBaseName(0) + ".IFO")) {
      faults_.push_back(MessageOf(message::IsoNoDisc, folder_));
      return tree;
    }
    auto manager = ReadSet(0);
    if (!manager) {
      return tree;
    }
    const std::uint64_t sets = Get(manager->Tables, vmgi::TitleSets).Value;
    tree.Sets.push_back(*std::move(manager));
    if (sets == 0 || sets > MostTitleSets) {
      Fault(message::IsoSetCount, tree.Sets[0].Ifo.Path, sets);
      return tree;
    }
    for (std::size_t number = 1; number <= sets; ++number) {
      if (auto set = ReadSet(number)) {
        tree.Sets.push_back(*std::move(set));
      }
    }
    tree.LeftOut = LeftOut();
    if (faults_.empty()) {
      CompareBackups(tree);
    }
    return tree;
  }

 private:
  template <class... Values>
  void Fault(const MessageKind& kind, const std::string& path, const Values&... values) {
    faults_.push_back(MessageOf(kind, path, values...));
  }

  // Nothing where the set cannot be taken, which is told.
  std::optional<TreeSet> ReadSet(std::size_t number) {
    const std::string base = IfoBaseName(number);
    const std::size_t before = faults_.size();
    TreeSet set;
    set.Ifo = Take(base + ".IFO").value_or(TreeFile{});
    set.Backup = Take(base + ".BUP").value_or(TreeFile{});
    set.MenuVob = TakeIfThere(base + ".VOB");
    if (number > 0) {
      TakeTitleVobs(base.substr(0, base.size() - 1), set);
    }
    if (faults_.size() == before && ReadTables(number == 0 ? ManagerId : TitleSetId, set)) {
      CheckSizes(number, set);
    }
    return faults_.size() == before ? std::optional(std::move(set)) : std::nullopt;
  }

  // A missing number ends the row; a file after it shows that one is missing.
  void TakeTitleVobs(const std::string& stem, TreeSet& set) {
    int last = 0;
    for (int number = 1; number <= MostTitleVobs; ++number) {
      last = found_.contains(fmt::format("{}{}.VOB", stem, number)) ? number : last;
    }
    for (int number = 1; number <= std::max(last, 1); ++number) {
      if (auto vob = Take(fmt::format("{}{}.VOB", stem, number))) {
        set.TitleVobs.push_back(*std::move(vob));
      }
    }
  }

  std::optional<TreeFile> TakeIfThere(const std::string& name) {
    const auto file = found_.find(name);
    return file == found_.end() || file->second.Size == 0 ? std::nullopt : Take(name);
  }

  std::optional<TreeFile> Take(const std::string& name) {
    const auto found = found_.find(name);
    if (found == found_.end()) {
      Fault(message::IsoFileMissing, folder_ + "/" + name);
      return std::nullopt;
    }
    const TreeFile file = found->second;
    taken_.push_back(file.Name);
    if (file.Size == 0 || file.Size % SectorBytes != 0) {
      Fault(message::IsoPartSector, file.Path, file.Size);
      return std::nullopt;
    }
    if (file.Size > MostFileBytes) {
      Fault(message::IsoFileTooLarge, file.Path, file.Size, MostFileBytes);
      return std::nullopt;
    }
    return file;
  }

  bool ReadTables(std::string_view id, TreeSet& set) {
    if (set.Ifo.Size <= MostIfoBytes) {
      set.Tables = ReadWhole(set.Ifo.Path, files_);
    }
    const bool isIfo =
        std::ranges::equal(id, ByteView(set.Tables).first(std::min(id.size(), set.Tables.size())));
    if (!isIfo) {
      Fault(message::IsoNotAnIfo, set.Ifo.Path);
    } else if (set.Backup.Size != set.Ifo.Size) {
      Fault(message::IsoBackupSize, set.Backup.Path, set.Backup.Size, set.Ifo.Size);
    }
    return isIfo;
  }

  void CompareBackups(const DiscTree& tree) {
    for (const TreeSet& set : tree.Sets) {
      if (ReadWhole(set.Backup.Path, files_) != set.Tables) {
        ui_.Tell(MessageOf(message::IsoBackupDiffers, set.Backup.Path));
      }
    }
  }

  // Of the VOB files against the last cells.
  void CheckSizes(std::size_t number, const TreeSet& set) {
    const auto menuSectors = SectorsOfCells(set.Tables, number == 0 ? vmgi::MenuCells : vtsi::MenuCells);
    if (menuSectors > 0 && !set.MenuVob) {
      Fault(message::IsoFileMissing, folder_ + "/" + IfoBaseName(number) + ".VOB");
    } else if (set.MenuVob && set.MenuVob->Sectors() < menuSectors) {
      Fault(message::IsoCellsOutside, set.MenuVob->Path, menuSectors, set.MenuVob->Sectors());
    }
    if (number == 0) {
      return;
    }
    const auto titleSectors = SectorsOfCells(set.Tables, vtsi::TitleCells);
    std::uint64_t present = 0;
    for (const TreeFile& vob : set.TitleVobs) {
      present += vob.Sectors();
    }
    if (present < titleSectors) {
      Fault(message::IsoCellsOutside, set.TitleVobs.back().Path, titleSectors, present);
    }
  }

  std::vector<std::string> LeftOut() const {
    std::vector<std::string> left;
    std::ranges::copy_if(names_, std::back_inserter(left), [this](const std::string& name) {
      return std::ranges::find(taken_, Upper(name)) == taken_.end();
    });
    return left;
  }

  std::string folder_;
  UserInterface& ui_;
  Random files_;
  std::vector<Message>& faults_;
  std::vector<std::string> names_;         // of all that the folder holds
  std::map<std::string, TreeFile> found_;  // its plain files, by names in capitals
  std::vector<std::string> taken_;         // names in capitals
};

}  // namespace

std::string VideoFolderOf(const std::string& folder) {
  namespace fs = std::filesystem;
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(folder, failed)) {
    if (EqualNoCase(entry.path().filename().string(), IfoBaseName(0) + ".IFO")) {
      return folder;
    }
  }
  for (const auto& entry : fs::directory_iterator(folder, failed)) {
    if (EqualNoCase(entry.path().filename().string(), FolderName) && entry.is_directory(failed)) {
      return entry.path().string();
    }
  }
  return folder;
}

DiscTree ReadDiscTree(const std::string& folder, UserInterface& ui, std::vector<Message>& faults) {
  return TreeReader(folder, ui, faults).Read();
}

}  // namespace quorvelant
