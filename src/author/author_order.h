// What a run of authoring is asked for.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "author/disc_plan.h"
#include "base/rules.h"
#include "ifo/vmg_ifo.h"
#include "iso/make_image.h"
#include "picture/picture_loader.h"

namespace quorvelant {

struct AuthorOrder {
  // Becomes the disc; a path of this system. Empty where an image alone is wanted: then the folder is made
  // beside that and goes once the image stands.
  std::string Folder = {};
  std::optional<ImageOrder> Image = {};  // of the finished folder, whatever folder it names; not `InPlace`
  quorvelant::Rules Rules = {};
  AllowedRegions Regions{};           // none allowed, as in a run without settings
  bool RemoveSeqEnd = false;          // overwrite sequence end codes in the middle of a track
  PictureLoader* Pictures = nullptr;  // for bitmaps of other formats than ".bmp"

  bool Force = false;         // replace the disc that stands in the folder
  bool Strict = false;        // make no disc when there are warnings
  bool WarnedBefore = false;  // there were warnings before the run already, which count for `Strict`
  bool DryRun = false;        // everything but writing

  // Straight into the folder, whatever it holds and however much room there is: what existing schedulers
  // count on. Otherwise the disc is made aside and takes its place when it is complete.
  bool InPlace = false;
  bool ReadBack = true;          // look at the finished files once more
  bool ForceNavigation = false;  // a disc that leads nowhere is made all the same
  bool Verify = false;           // ... and prove them whole, sector by sector
  bool Sync = true;  // place the disc only when it is on the disk, so that no power cut leaves half of it

  std::string LogFile = {};  // begun anew with the first file of the disc; empty for none
  bool MustLog = false;      // warn when that file could not be written

  // Told the plan, with its findings told before, and the bytes free where the folder is to be.
  std::function<void(const DiscPlan& plan, std::optional<std::uint64_t> freeBytes)> Announce = {};
};

}  // namespace quorvelant
