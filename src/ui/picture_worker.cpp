#include "ui/picture_worker.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "base/file_text.h"
#include "base/silent_ui.h"
#include "base/text.h"
#include "base/timecode.h"
#include "codec/colors.h"
#include "disc/video_standard.h"
#include "menu/film_picture.h"
#include "model/picture_file.h"
#include "model/walk.h"
#include "subpicture/spu_encoder.h"
#include "subpicture/spu_timing.h"

namespace quorvelant {

namespace {

constexpr int Slot = 0;

// For how long leads are read before a list is told, and at a time between other orders.
constexpr std::chrono::milliseconds FirstLeads{300};
constexpr std::chrono::milliseconds MoreLeads{20};

std::vector<std::string> PathsOf(const Project& material) {
  std::vector<std::string> paths;
  for (const VideoPlay& play : material.Tracks[0].VideoPlays) {
    paths.push_back(SystemPath(play.File, material.SourceFolder()));
  }
  return paths;
}

// Keeps the first thing that is told.
class FirstWords : public SilentUi {
 public:
  void Tell(const Message& message) override { words_ = words_.empty() ? message.Text : words_; }
  [[nodiscard]] const std::string& Words() const { return words_; }

 private:
  std::string words_;
};

// The indexes of a track's files, as far as they need no walk through a film.
class KnownIndexes {
 public:
  KnownIndexes(const ListOrder& order, PictureList& list)
      : order_(order), list_(list), isFilm_(EqualNoCase(order.Material.Tracks[0].TrackType, "Motion")) {}

  std::optional<PictureIndex> Of(const std::string& path) {
    if (IsPicture(path)) {
      return std::nullopt;
    }
    auto index = Known(path);
    if (index) {
      list_.Frames += index->TotalFrames;
    } else if (isFilm_) {
      Miss(path);
    }
    return index;
  }

 private:
  [[nodiscard]] std::optional<PictureIndex> Known(const std::string& path) const {
    const auto fresh = order_.Fresh.find(path);
    if (fresh != order_.Fresh.end()) {  // one that the store keeps is of the same file
      return fresh->second.first == StampOf(path) ? std::optional(fresh->second.second) : std::nullopt;
    }
    return IndexIsOlder(path) ? std::nullopt : FindPictureIndex(path, order_.Store);
  }

  void Miss(const std::string& path) {
    const std::string_view why = WhyNotPlainFile(path);
    if (why.empty()) {
      list_.Unindexed.push_back(path);
    } else if (list_.Why.empty()) {
      list_.Why = path + ": " + std::string(why);
    }
  }

  const ListOrder& order_;
  PictureList& list_;
  bool isFilm_;
};

// Of slides together; a still has no end.
std::int64_t SlidesLength(const Track& track, const std::vector<ViewerPicture>& pictures) {
  if (!EqualNoCase(track.TrackType, "SlideShow") || pictures.empty()) {
    return 0;
  }
  const ViewerPicture& last = pictures.back();
  const std::int64_t own =
      TimecodeToFrames(track.VideoPlays[last.Play].SlideDuration, FramesPerSecond(track.Standard));
  return last.Frame + (own > 0 ? own : TimingOf(EqualNoCase(track.Standard, "NTSC")).SlideGopFrames);
}

}  // namespace

FileStamp StampOf(const std::string& path) {
  std::error_code fault;
  const std::uint64_t bytes = std::filesystem::file_size(path, fault);
  if (fault) {
    return {};
  }
  const auto written = std::filesystem::last_write_time(path, fault);
  return fault ? FileStamp{} : FileStamp{written.time_since_epoch().count(), bytes};
}

PictureList ListPictures(const ListOrder& order) {
  PictureList list;
  KnownIndexes indexes(order, list);
  list.Pictures =
      PicturesOf(order.Material, 0, [&indexes](const std::string& path) { return indexes.Of(path); });
  const Track& track = order.Material.Tracks[0];
  if (!EqualNoCase(track.TrackType, "Motion")) {
    list.Frames = SlidesLength(track, list.Pictures);
  } else if (!list.Unindexed.empty() || !list.Why.empty()) {
    list.Frames = 0;
  }
  return list;
}

QImage ImageOf(const Picture& picture) {
  // A copy: the pixels of the picture go.
  return QImage(picture.Pixels.data(), picture.Width, picture.Height,
                static_cast<qsizetype>(picture.RowBytes()), QImage::Format_RGB888)
      .convertToFormat(QImage::Format_RGB32);
}

FoundPicture FindPicture(const PictureOrder& order, PictureLoader& pictures) {
  FirstWords words;
  try {
    if (const std::string_view why = WhyNotPlainFile(order.Path); !why.empty()) {
      return {{}, order.Path + ": " + std::string(why)};
    }
    if (IsPicture(order.Path)) {
      return {ImageOf(pictures.Load(order.Path)), {}};
    }
    Random files(words);
    files.DimFiles(Slot);
    if (!files.OpenSource(order.Path, Slot)) {
      return {{}, words.Words()};
    }
    const auto planes = DecodeFilmPicture({order.Offset, order.Bytes}, order.IsMpeg2, files, Slot);
    return planes ? FoundPicture{ImageOf(PictureFromPlanes(*planes)), {}}
                  : FoundPicture{{}, order.Path + ": no picture stands there"};
  } catch (const std::exception& fault) {
    return {{}, fault.what()};
  }
}

std::string UnitOrder::Key() const {
  return fmt::format("{}|{}|{}|{:x}|{:x}|{:x}|{:x}|{}|{}|{},{},{}|{}|{}", Record.File, Stamp.Written,
                     Stamp.Bytes, Record.Conversion.Background, Record.Conversion.Pattern,
                     Record.Conversion.Emphasis1, Record.Conversion.Emphasis2,
                     fmt::join(Record.ColorIndexes, ","), fmt::join(Record.Contrasts, ","), Record.X1,
                     Record.Y1, Record.Forced, Ntsc, Unfit);
}

UnitOrder UnitOrderFor(const SubPicturePlay& entry, bool ntsc, const std::string& sourceFolder,
                       const Rules& rules) {
  UnitOrder order{.Record = {}, .Stamp = {}, .Ntsc = ntsc, .InForce = rules};
  SubtitleStream alone;
  alone.SubPlays = {entry};
  const std::vector<SPURecord> records = PrepareSPURecords(alone, {}, {}, {.SourceFolder = sourceFolder});
  if (records.empty()) {
    order.Unfit = entry.File.empty() ? "This subtitle has no bitmap" : "This subtitle is not used";
    return order;
  }
  order.Record = records.front();
  order.Record.StopDelay = 0;  // looks the same however long it shows
  order.Stamp = StampOf(order.Record.File);
  return order;
}

FoundUnit CodeUnit(const UnitOrder& order, PictureLoader& pictures) {
  if (!order.Unfit.empty()) {
    return {{}, order.Unfit};
  }
  try {
    const EncodedBitmap bitmap = LoadSPUBitmap(pictures, order.Record, order.Ntsc, order.InForce);
    auto unit = ReadUnit(MakeUnit(order.Record, bitmap));
    return unit ? FoundUnit{std::move(unit), {}} : FoundUnit{{}, order.Record.File + ": nothing of it shows"};
  } catch (const std::exception& fault) {
    return {{}, fault.what()};
  }
}

PictureWorker::PictureWorker(PictureLoader& pictures) : pictures_(pictures) {
  thread_ = std::thread([this] { Run(); });
}

PictureWorker::~PictureWorker() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

void PictureWorker::List(std::uint64_t number, ListOrder order) {
  {
    const std::lock_guard lock(mutex_);
    list_.emplace(number, std::move(order));
  }
  wake_.notify_one();
}

void PictureWorker::Find(std::uint64_t number, PictureOrder order) {
  {
    const std::lock_guard lock(mutex_);
    find_.emplace(number, std::move(order));
  }
  wake_.notify_one();
}

void PictureWorker::Code(std::uint64_t number, UnitOrder order) {
  {
    const std::lock_guard lock(mutex_);
    code_.emplace(number, std::move(order));
  }
  wake_.notify_one();
}

void PictureWorker::WorkOff(const std::pair<std::uint64_t, ListOrder>& order) {
  PictureList list;
  try {
    list = ListPictures(order.second);
  } catch (const std::exception& fault) {
    list.Why = fault.what();
  }
  leads_.reset();
  if (EqualNoCase(order.second.Material.Tracks[0].TrackType, "Motion")) {
    leads_ = LeadWork{order.first, std::move(list), LeadReader(PathsOf(order.second.Material))};
    if (!leads_->Reader.ReadFor(FirstLeads, leads_->List.Pictures, leads_->List.Frames)) {
      Tell(order.first, leads_->List);
      return;
    }
    list = std::move(leads_->List);
    leads_.reset();
  }
  Tell(order.first, std::move(list));
}

void PictureWorker::Tell(std::uint64_t number, PictureList list) {
  QMetaObject::invokeMethod(
      this, [this, number, list = std::move(list)] { emit Listed(number, list); }, Qt::QueuedConnection);
}

void PictureWorker::GoOnWithLeads() {
  if (leads_->Reader.ReadFor(MoreLeads, leads_->List.Pictures, leads_->List.Frames)) {
    Tell(leads_->Number, std::move(leads_->List));
    leads_.reset();
  }
}

void PictureWorker::WorkOff(const std::pair<std::uint64_t, PictureOrder>& order) {
  QMetaObject::invokeMethod(
      this,
      [this, order, found = FindPicture(order.second, pictures_)] {
        emit Found(order.first, order.second, found);
      },
      Qt::QueuedConnection);
}

void PictureWorker::WorkOff(const std::pair<std::uint64_t, UnitOrder>& order) {
  QMetaObject::invokeMethod(
      this,
      [this, number = order.first, key = order.second.Key(), found = CodeUnit(order.second, pictures_)] {
        emit Coded(number, key, found);
      },
      Qt::QueuedConnection);
}

void PictureWorker::Run() {
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return ends_ || list_ || find_ || code_ || leads_; });
    if (ends_) {
      return;
    }
    auto list = std::exchange(list_, std::nullopt);
    auto find = list ? std::nullopt : std::exchange(find_, std::nullopt);
    auto code = list || find ? std::nullopt : std::exchange(code_, std::nullopt);
    lock.unlock();
    if (list) {
      WorkOff(*list);
    } else if (code) {
      WorkOff(*code);
    } else if (find) {
      WorkOff(*find);
    } else {
      GoOnWithLeads();
    }
    lock.lock();
  }
}

}  // namespace quorvelant
