// Discs that do not play, or play something else than their project says: a project a row.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace quorvelant::dead {

struct Row {
  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.Name; }

  std::string Name;
  std::string From;  // of the disc that plays, in which "|" ends a line; empty for its end
  std::string To;
  std::string Found;         // by players' rules: severity, code and place of each finding
  std::string Classic = {};  // where a classic run tells other than the same as warnings
  std::string Late = {};     // what is told only when the sources are read
  std::string Says = {};     // part of the texts
};

// A disc that plays; scripts are built of its parts.
extern const std::string Disc;
extern const std::string SceneLine;

std::vector<Row> StructureRows();
std::vector<Row> OverlayRows();
std::vector<Row> SourceRows();

// Writes the project of a row, and its sources.
void Write(const Row& row, const TempFolder& folder);

}  // namespace quorvelant::dead
