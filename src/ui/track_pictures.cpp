#include "ui/track_pictures.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>
#include <utility>

namespace quorvelant {

namespace {

PictureSources SourcesOf(const Project& project, std::size_t track) {
  const Track& shown = project.Tracks[track];
  return {shown.VideoPlays, shown.TrackType, shown.Standard, shown.Coding, project.SourceFolder()};
}

ListOrder OrderFor(const Project& project, std::size_t track, FreshIndexes fresh, IndexStore store) {
  const Track& shown = project.Tracks[track];
  Track alone;
  alone.VideoPlays = shown.VideoPlays;
  alone.TrackType = shown.TrackType;
  alone.Standard = shown.Standard.empty() ? project.Standard() : shown.Standard;
  alone.Coding = shown.Coding;
  ListOrder order{.Material = {}, .Fresh = std::move(fresh), .Store = std::move(store)};
  order.Material.Tracks.Add(std::move(alone));
  order.Material.ScriptFile = project.ScriptFile;
  return order;
}

// Work of a job, on copies alone.
Job::Verdict IndexFilms(const std::vector<std::string>& films, IndexStore& store, UserInterface& ui,
                        IndexRun& run) {
  std::vector<IndexSource> sources;
  sources.reserve(films.size());
  for (const std::string& film : films) {
    sources.push_back({.Name = film, .IsImage = false});
  }
  run = BuildPictureIndex(sources, {}, store, ui, true);
  if (run.Complete) {
    return {Job::State::Done, "Ready"};
  }
  return ui.StopRequested() ? Job::Verdict{Job::State::Stopped, "Stopped"}
                            : Job::Verdict{Job::State::Failed, "Not indexed"};
}

}  // namespace

TrackPictures::TrackPictures(Document& document, Jobs& jobs, PictureWorker& worker)
    : document_(document), jobs_(jobs), worker_(worker) {
  connect(&worker, &PictureWorker::Listed, this, &TrackPictures::TakeList);
  connect(&worker, &PictureWorker::Found, this, &TrackPictures::TakePicture);
}

std::optional<std::size_t> TrackPictures::TrackIndex() const {
  // A listener that hears of a change before the viewer does must not get what is gone.
  const Tracks& tracks = document_.Work().Tracks;
  return track_ && *track_ < tracks.Count() && !tracks[*track_].Removed ? track_ : std::nullopt;
}

void TrackPictures::Show(std::optional<std::size_t> track) {
  track_ = track;
  ++listNumber_;
  ++findNumber_;
  attempted_.clear();
  frames_ = 0;
  why_.clear();
  isListed_ = false;
  isFound_ = false;
  pictures_.clear();
  now_ = {};
  if (const auto shown = TrackIndex()) {
    sources_ = SourcesOf(document_.Work(), *shown);
    List();
  }
}

void TrackPictures::Follow() {
  const auto shown = TrackIndex();
  if (!shown) {
    return;
  }
  if (PictureSources sources = SourcesOf(document_.Work(), *shown); sources != sources_) {
    sources_ = std::move(sources);
    attempted_.clear();
    List();
  }
}

void TrackPictures::LookAgain() {
  if (isListed_ && !why_.empty() && TrackIndex()) {
    List();
  }
}

QString TrackPictures::Hindrance() const {
  if (!why_.empty()) {
    return QString::fromStdString(why_);
  }
  if (!pictures_.empty()) {
    return {};
  }
  if (isListed_) {
    return tr("This track has no pictures yet");
  }
  return indexing_.empty() ? tr("Looking for pictures…") : tr("Indexing…");
}

void TrackPictures::List() {
  isListed_ = false;
  why_.clear();
  worker_.List(++listNumber_, OrderFor(document_.Work(), *track_, fresh_, document_.Session().Indexes()));
}

void TrackPictures::Find(std::size_t picture) {
  ++findNumber_;
  const auto shown = TrackIndex();
  const Project& project = document_.Work();
  const Track* const track = shown ? &project.Tracks[*shown] : nullptr;
  if (track == nullptr || picture >= pictures_.size() ||
      pictures_[picture].Play >= track->VideoPlays.size()) {
    now_ = {};
    isFound_ = true;
    emit Found();
    return;
  }
  const ViewerPicture& at = pictures_[picture];
  const std::string path = SystemPath(track->VideoPlays[at.Play].File, project.SourceFolder());
  const PictureOrder order{.Path = path,
                           .Stamp = StampOf(path),
                           .Offset = at.Offset,
                           .Bytes = at.Bytes,
                           .IsMpeg2 = track->Coding != "MPEG1"};
  if (const QImage* const kept = cache_.Find(order)) {
    now_ = *kept;
    why_.clear();
    isFound_ = true;
    emit Found();
    return;
  }
  isFound_ = false;
  worker_.Find(findNumber_, order);
}

void TrackPictures::TakePicture(std::uint64_t number, const PictureOrder& order, const FoundPicture& found) {
  if (!found.Image.isNull()) {
    cache_.Keep(order, found.Image, static_cast<std::size_t>(found.Image.sizeInBytes()));
  }
  if (number == findNumber_) {
    isFound_ = true;
    now_ = found.Image;
    why_ = found.Why;
    emit Found();
  }
}

void TrackPictures::TakeList(std::uint64_t number, const PictureList& list) {
  if (number != listNumber_) {
    return;
  }
  isListed_ = true;
  frames_ = list.Frames;
  pictures_ = list.Pictures;
  emit ListTaken();
  why_ = why_.empty() ? list.Why : why_;
  Index(list.Unindexed);
  emit ListChanged();
}

// Indexes those films that nobody is at, in a job, once.
void TrackPictures::Index(const std::vector<std::string>& films) {
  std::vector<std::string> wanted;
  for (const std::string& film : films) {
    if (indexing_.contains(film)) {
      isListed_ = false;  // its list comes when the index is there
    } else if (attempted_.contains(film)) {
      why_ = why_.empty() ? film + ": its pictures are not indexed" : why_;
    } else if (std::ranges::find(wanted, film) == wanted.end()) {
      wanted.push_back(film);
    }
  }
  if (wanted.empty()) {
    return;
  }
  isListed_ = false;
  indexing_.insert(wanted.begin(), wanted.end());
  const auto run = std::make_shared<IndexRun>();
  jobs_.Start(
      "Indexing " + QFileInfo(QString::fromStdString(wanted.front())).fileName().toStdString(),
      [run, wanted, store = document_.Session().Indexes()](UserInterface& ui) mutable {
        return IndexFilms(wanted, store, ui, *run);
      },
      [run, wanted, alive = QPointer<TrackPictures>(this)](const Job&) {
        if (alive != nullptr) {
          alive->TakeIndexes(wanted, *run);
        }
      });
}

void TrackPictures::TakeIndexes(const std::vector<std::string>& films, const IndexRun& run) {
  for (const FileIndex& file : run.Files) {
    if (file.State == IndexState::Built || file.State == IndexState::KeptInMemory) {
      fresh_[file.Name] = {StampOf(file.Name), file.Index};
    }
    if (file.State == IndexState::KeptInMemory) {
      document_.Session().Indexes().Keep(file.Name, file.Index);
    }
  }
  for (const std::string& film : films) {
    indexing_.erase(film);
    attempted_.insert(film);
  }
  if (TrackIndex()) {
    List();
  }
}

}  // namespace quorvelant
