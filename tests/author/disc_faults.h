// Single faults of a finished disc: bits that mean something, and are derived from the rest of the disc.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "disc/record.h"

namespace quorvelant {

using DiscBytes = std::map<std::string, std::string>;  // files by name

// One bit to be turned over.
struct DiscFault {
  std::string File;
  std::size_t Offset = 0;
  unsigned Bit = 0;  // of the byte
  std::string Name;  // for people
};

class FaultSource {
 public:
  FaultSource(const DiscBytes& files, unsigned seed) : files_(&files), random_(seed) {}

  DiscFault InTables();
  DiscFault InNavPack();
  DiscFault InPackHeader();

 private:
  struct Piece {
    std::string File;
    std::size_t Offset;
    std::size_t Bytes;
    std::string Name;
  };

  std::size_t Draw(std::size_t below) {
    return std::uniform_int_distribution<std::size_t>(0, below - 1)(random_);
  }
  ByteView View(const std::string& name) const;
  // The fields of a record that the disc itself tells.
  template <std::size_t Count>
  void AddRecord(const std::string& file, std::size_t at, const std::array<disc::RowView, Count>& rows,
                 const std::string& table);
  void AddChains(const std::string& file, std::size_t table, const std::string& name);
  void AddChain(const std::string& file, std::size_t at, const std::string& name);
  void AddManager();
  void AddSet(const std::string& file);
  void AddVobMaps(const std::string& file, std::size_t cells, std::size_t vobus);
  // Sectors of all VOBs that are, or are not, navigation packs.
  std::vector<std::pair<std::string, std::size_t>> Sectors(bool nav) const;
  bool IsLegalScr(const DiscFault& fault) const;
  DiscFault BitOf(const Piece& piece);

  const DiscBytes* files_;
  std::mt19937 random_;
  std::vector<Piece> tables_;
};

}  // namespace quorvelant
