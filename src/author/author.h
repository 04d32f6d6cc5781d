// The driver: a plan becomes the files of a VIDEO_TS folder.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "author/disc_plan.h"
#include "base/log.h"
#include "base/user_interface.h"
#include "ifo/vmg_ifo.h"
#include "picture/picture_loader.h"

namespace quorvelant {

struct AuthorOptions {
  std::string Folder;                 // takes the files; a path of this system
  AllowedRegions Regions{};           // none allowed, as in a run without settings
  bool RemoveSeqEnd = false;          // overwrite sequence end codes in the middle of a track
  bool TellSuccess = true;            // the box at the end
  bool DryRun = false;                // everything but writing
  PictureLoader* Pictures = nullptr;  // for bitmaps of other formats than ".bmp"
};

enum class AuthorOutcome {
  Done,
  Failed,    // told
  Stopped,   // by the user's request
  NoTitles,  // no title track was there to write; told
};

// One title of the finished disc.
struct TitleFigures {
  int TitleSet = 0;
  int Title = 0;  // within the set
  std::string Name;
  std::size_t Chapters = 0;
  std::int64_t Frames = 0;
};

struct AuthorResult {
  AuthorOutcome Outcome = AuthorOutcome::Failed;
  std::vector<TitleFigures> Titles;
  std::uint64_t Bytes = 0;  // of all files, BUP included
  int Underflows = 0;       // of the video buffer
  int BufferFaults = 0;
};

inline constexpr std::string_view SuccessTitle = "Author Success";
inline constexpr std::string_view SuccessText = "DVD Authoring Complete";
inline constexpr std::string_view NoTitleTitle = "No Title Error";
inline constexpr std::string_view NoTitleText =
    "There are NO titles in your DVD - please drag and drop track scenes onto a title PGC";
inline constexpr std::string_view AuthorErrorTitle = "Author Error";
inline constexpr std::string_view CompletedStatus = "DVD Completed";

// Title sets first, the Video Manager last, then the fix-up pass. Files of a former run that have no
// successor stay. A run that fails or is stopped leaves what it had written. Errors among the plan's
// findings end the run before its first sector.
AuthorResult AuthorDisc(const DiscPlan& plan, const AuthorOptions& options, UserInterface& ui, Log& log);

}  // namespace quorvelant
