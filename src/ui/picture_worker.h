// The pictures of a track, listed and decoded beside the window.
#pragma once

#include <QImage>
#include <QObject>
#include <compare>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "analysis/picture_index.h"
#include "base/rules.h"
#include "edit/track_viewer.h"
#include "model/project.h"
#include "picture/picture_loader.h"
#include "subpicture/spu_record.h"
#include "subpicture/unit_reader.h"
#include "ui/picture_leads.h"

namespace quorvelant {

// A file as it was when it was looked at, so that what was made of it is not taken for another one's.
struct FileStamp {
  std::int64_t Written = 0;
  std::uint64_t Bytes = 0;
  auto operator<=>(const FileStamp&) const = default;  // NOLINT(modernize-use-nullptr): no pointer
};
[[nodiscard]] FileStamp StampOf(const std::string& path);

// Indexes that were made since the program's start, by the path of the film.
using FreshIndexes = std::map<std::string, std::pair<FileStamp, PictureIndex>>;

// Which pictures a track has: asked with a project that holds that track alone.
struct ListOrder {
  Project Material;
  FreshIndexes Fresh;
  IndexStore Store;
};
struct PictureList {
  std::vector<ViewerPicture> Pictures;
  std::int64_t Frames = 0;             // of the track; 0 where that is not known
  std::vector<std::string> Unindexed;  // films to be indexed first
  std::string Why;                     // a film cannot be read
};
// Without leads, which stand in the films.
[[nodiscard]] PictureList ListPictures(const ListOrder& order);

struct PictureOrder {
  std::string Path;
  FileStamp Stamp;
  std::uint64_t Offset = 0;
  std::uint64_t Bytes = 0;  // 0 for the whole file
  bool IsMpeg2 = true;
  // NOLINTNEXTLINE(modernize-use-nullptr,readability-implicit-bool-conversion): nothing is written here
  auto operator<=>(const PictureOrder&) const = default;
};
struct FoundPicture {
  QImage Image;     // null where there is none
  std::string Why;  // there is none
};
[[nodiscard]] FoundPicture FindPicture(const PictureOrder& order, PictureLoader& pictures);
[[nodiscard]] QImage ImageOf(const Picture& picture);

// A subtitle to be coded as the disc will have it.
struct UnitOrder {
  SPURecord Record;
  FileStamp Stamp;
  bool Ntsc = false;
  Rules InForce;
  std::string Unfit = {};  // why it does not go on the disc

  [[nodiscard]] std::string Key() const;  // the same for all that look the same
};
[[nodiscard]] UnitOrder UnitOrderFor(const SubPicturePlay& entry, bool ntsc, const std::string& sourceFolder,
                                     const Rules& rules);
struct FoundUnit {
  std::optional<ShownUnit> Unit;
  std::string Why;  // there is none
};
[[nodiscard]] FoundUnit CodeUnit(const UnitOrder& order, PictureLoader& pictures);

// One thread. An order takes the place of one of its kind that waits: the newest wins. What came of it is
// told in the thread that this object lives in, with the number of the order. The list of a long film on a
// slow disk is told at once, and again when the leads of all its pictures are known.
class PictureWorker : public QObject {
  Q_OBJECT
 public:
  explicit PictureWorker(PictureLoader& pictures);
  ~PictureWorker() override;  // waits for what is in work

  void List(std::uint64_t number, ListOrder order);
  void Find(std::uint64_t number, PictureOrder order);
  void Code(std::uint64_t number, UnitOrder order);

 signals:
  void Listed(std::uint64_t number, const PictureList& list);
  void Found(std::uint64_t number, const PictureOrder& order, const FoundPicture& found);
  void Coded(std::uint64_t number, const std::string& key, const FoundUnit& found);

 private:
  void Run();
  void WorkOff(const std::pair<std::uint64_t, ListOrder>& order);
  void GoOnWithLeads();
  void Tell(std::uint64_t number, PictureList list);
  void WorkOff(const std::pair<std::uint64_t, PictureOrder>& order);
  void WorkOff(const std::pair<std::uint64_t, UnitOrder>& order);

  PictureLoader& pictures_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::optional<std::pair<std::uint64_t, ListOrder>> list_;
  std::optional<std::pair<std::uint64_t, PictureOrder>> find_;
  std::optional<std::pair<std::uint64_t, UnitOrder>> code_;
  bool ends_ = false;
  // Of the thread: a list whose leads are being read.
  struct LeadWork {
    std::uint64_t Number = 0;
    PictureList List;
    LeadReader Reader;
  };
  std::optional<LeadWork> leads_;
  std::thread thread_;
};

}  // namespace quorvelant
