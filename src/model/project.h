// One project, whole. There are no globals: two projects can be loaded side by side.
#pragma once

#include <array>
#include <string>

#include "model/my_dvd.h"
#include "model/tracks.h"

namespace quorvelant {

struct Palette_P {
  std::string Key;  // the palette's name
  bool Removed = false;
  std::array<Color, 16> PaletteColors{};

  const std::string& Name() const { return Key; }
  bool operator==(const Palette_P&) const = default;
};

struct Project {
  quorvelant::Tracks Tracks;
  MyDVD Disc;
  PGC_P FirstPlay;  // key "FirstPGC"
  Collection<Palette_P> Palettes;
  std::string DestinationFolder;
  std::string ScriptFile;  // where it was read from; relative source paths count from its folder
  bool ScriptHadCommandErrors = false;

  // "PAL" or "NTSC": of the first entry of the disc that has one; "PAL" while none has.
  std::string Standard() const;
  // The folder from which relative source paths count.
  std::string SourceFolder() const;
  // What a script carries: everything but `ScriptFile` and the error mark.
  bool SameContent(const Project& other) const;
};

}  // namespace quorvelant
