#include "verify/named_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

#include "base/random.h"
#include "base/text.h"
#include "disc/cell_extent.h"
#include "disc/disc_files.h"
#include "disc/limits.h"
#include "disc/table_layout.h"
#include "disc/vmgi_layout.h"
#include "disc/vtsi_layout.h"
#include "verify/messages.h"

namespace quorvelant {
namespace {

class NamedFiles {
 public:
  NamedFiles(std::string folder, UserInterface& ui) : folder_(std::move(folder)), files_(ui) {
    files_.DimFiles(0);
    for (const DiscFile& file : ListFiles(folder_)) {
      sizes_[Upper(file.Name)] = file.Size;
    }
  }

  std::vector<Message> Faults() {
    const auto manager = ReadIfo(IfoBaseName(0));
    if (!manager) {
      return std::move(faults_);
    }
    CheckFile("VIDEO_TS.VOB", SectorsOfCells(*manager, vmgi::MenuCells));
    const std::size_t sets = std::min<std::size_t>(Get(*manager, vmgi::TitleSets).Value, MostTitleSets);
    for (std::size_t set = 1; set <= sets; ++set) {
      CheckSet(IfoBaseName(set));
    }
    return std::move(faults_);
  }

 private:
  template <class... Values>
  void Fault(const MessageKind& kind, const std::string& name, const Values&... values) {
    faults_.push_back(MessageOf(kind, folder_ + "/" + name, values...));
  }

  void CheckSet(const std::string& base) {
    const auto ifo = ReadIfo(base);
    if (!ifo) {
      return;
    }
    CheckFile(base + ".VOB", SectorsOfCells(*ifo, vtsi::MenuCells));
    std::uint64_t rest = SectorsOfCells(*ifo, vtsi::TitleCells);
    for (int number = 1; rest > 0; ++number) {
      const std::uint64_t wanted = std::min<std::uint64_t>(rest, MostVobSectors);
      CheckFile(fmt::format("{}{}.VOB", base.substr(0, base.size() - 1), number), wanted);
      rest -= wanted;
    }
  }

  void CheckFile(const std::string& name, std::uint64_t wanted) {
    const auto found = sizes_.find(name);
    if (wanted > 0 && found == sizes_.end()) {
      Fault(message::FileMissing, name);
    } else if (wanted > 0 && found->second != wanted * SectorBytes) {
      Fault(message::FileSizeWrong, name, found->second, wanted * SectorBytes);
    }
  }

  // Nothing for what is missing, unlike its backup in size, or too short to be one, which is a fault.
  std::optional<Bytes> ReadIfo(const std::string& base) {
    for (const char* extension : {".IFO", ".BUP"}) {
      if (!sizes_.contains(base + extension)) {
        Fault(message::FileMissing, base + extension);
        return std::nullopt;
      }
    }
    Bytes ifo = ReadWhole(folder_ + "/" + base + ".IFO", files_);
    if (sizes_[base + ".BUP"] != ifo.size()) {
      Fault(message::FileSizeWrong, base + ".BUP", sizes_[base + ".BUP"], ifo.size());
    }
    if (ifo.size() < SectorBytes) {
      Fault(message::NotAnIfo, base + ".IFO");
      return std::nullopt;
    }
    return ifo;
  }

  std::string folder_;
  Random files_;
  std::map<std::string, std::uint64_t> sizes_;  // bytes, by names in capitals
  std::vector<Message> faults_;
};

}  // namespace

std::vector<Message> NamedFileFaults(const std::string& folder, UserInterface& ui) {
  return NamedFiles(folder, ui).Faults();
}

}  // namespace quorvelant
