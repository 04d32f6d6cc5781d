#include "ui/viewer.h"

#include <QFileInfo>
#include <QMetaObject>
#include <QPointer>
#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/button_sets.h"
#include "edit/live_elements.h"
#include "model/keys.h"
#include "ui/picture_worker.h"
#include "ui/recent_cache.h"

namespace quorvelant {

namespace {

// What the list of pictures hangs on.
struct PictureSources {
  std::vector<VideoPlay> Plays;
  std::string Type;
  std::string Standard;
  std::string Coding;
  std::string Folder;
  bool operator==(const PictureSources&) const = default;
};

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

bool LeadsTo(const Track& track, ViewMode view, std::size_t stream) {
  const auto streams = StreamsIn(view, track);
  return std::ranges::find(streams, stream) != streams.end();
}

}  // namespace

class Viewer::Private {
 public:
  Private(Viewer& viewer, Document& document, Selection& selection, Jobs& jobs, PictureLoader& pictures)
      : Doc(document),
        Chosen(selection),
        Work(jobs),
        Worker(
            pictures,
            [this, &viewer](std::uint64_t number, PictureList list) {
              QMetaObject::invokeMethod(
                  &viewer,
                  [this, number, list = std::move(list), &viewer]() mutable {
                    TakeList(viewer, number, std::move(list));
                  },
                  Qt::QueuedConnection);
            },
            [this, &viewer](std::uint64_t number, const PictureOrder& order, FoundPicture found) {
              QMetaObject::invokeMethod(
                  &viewer,
                  [this, number, order, found = std::move(found), &viewer] {
                    TakePicture(viewer, number, order, found);
                  },
                  Qt::QueuedConnection);
            },
            [this, &viewer](std::uint64_t number, const std::string& key, FoundUnit found) {
              QMetaObject::invokeMethod(
                  &viewer,
                  [this, number, key, found = std::move(found), &viewer] {
                    TakeUnit(viewer, number, key, found);
                  },
                  Qt::QueuedConnection);
            }) {}

  void TakeList(Viewer& viewer, std::uint64_t number, PictureList list);
  void TakePicture(Viewer& viewer, std::uint64_t number, const PictureOrder& order,
                   const FoundPicture& found);
  void TakeUnit(Viewer& viewer, std::uint64_t number, const std::string& key, const FoundUnit& found);
  void TakeIndexes(Viewer& viewer, const std::vector<std::string>& films, const IndexRun& run);
  [[nodiscard]] ViewerMaterial Material(const Viewer& viewer) const {
    return {Doc.Work().Tracks[*Index], viewer.pictures_};
  }

  Document& Doc;
  Selection& Chosen;
  Jobs& Work;
  std::optional<std::size_t> Index;  // of the track that is shown
  PictureSources Sources;
  std::int64_t Frames = 0;  // as the list says
  bool IsListed = false;
  bool IsFound = false;  // the picture of the state is there, or that there is none
  std::string Why;       // there are no pictures, or not this one
  std::uint64_t ListNumber = 0;
  std::uint64_t FindNumber = 0;
  std::optional<std::size_t> ButtonsOf;  // the set that the chosen button is of
  std::optional<std::size_t> Button;
  std::uint64_t UnitNumber = 0;
  std::string UnitKey;  // of what is shown or looked for
  FoundUnit Unit;
  FreshIndexes Fresh;
  std::set<std::string> Indexing;   // films in work
  std::set<std::string> Attempted;  // films of the track whose indexing has ended, however
  RecentCache<PictureOrder, QImage> Cache{std::size_t{64} << 20U};
  RecentCache<std::string, FoundUnit> Units{std::size_t{16} << 20U};
  // Last, so that it ends first: its functions reach into all of the above.
  PictureWorker Worker;
};

Viewer::Viewer(Document& document, Selection& selection, Jobs& jobs, PictureLoader& pictures, QObject* parent)
    : QObject(parent), private_(std::make_unique<Private>(*this, document, selection, jobs, pictures)) {
  connect(&document, qOverload<const ChangeEvent&>(&Document::Changed), this, &Viewer::Follow);
  connect(&selection, &Selection::TrackChanged, this, [this] { Show(private_->Chosen.Track()); });
  connect(&selection, &Selection::KeyChanged, this, &Viewer::FollowKey);
  connect(&selection, &Selection::WentTo, this, &Viewer::GoTo);
  Show(selection.Track());
}

Viewer::~Viewer() = default;

const Track* Viewer::Shown() const {
  const auto track = TrackIndex();
  return track ? &private_->Doc.Work().Tracks[*track] : nullptr;
}

std::optional<std::size_t> Viewer::TrackIndex() const {
  // A listener that hears of a change before this does must not get what is gone.
  const Tracks& tracks = private_->Doc.Work().Tracks;
  const auto index = private_->Index;
  return index && *index < tracks.Count() && !tracks[*index].Removed ? index : std::nullopt;
}

std::int64_t Viewer::FrameCount() const {
  const Track* const track = Shown();
  if (track == nullptr) {
    return 0;
  }
  const std::int64_t told = TrackTimes(*track).Frames;
  return told > 0 ? told : private_->Frames;
}

void Viewer::Show(std::optional<std::size_t> track) {
  Private& own = *private_;
  own.Index = track;
  ++own.ListNumber;
  ++own.FindNumber;
  own.Attempted.clear();
  own.Frames = 0;
  own.Why.clear();
  own.IsListed = false;
  own.IsFound = false;
  own.Button.reset();
  pictures_.clear();
  picture_ = {};
  state_ = {};
  if (TrackIndex()) {
    own.Sources = SourcesOf(own.Doc.Work(), *track);
    state_ = OpenViewer(own.Material(*this));
    List();
  }
  FindUnit();
  emit PicturesChanged();
  emit PictureReady();
  emit StateMoved();
  FollowKey();
}

void Viewer::Follow(const ChangeEvent& event) {
  Private& own = *private_;
  if (event.Replaced) {
    Show(own.Chosen.Track());
    return;
  }
  if (!own.Index || !event.TouchesTrack(*own.Index)) {
    return;
  }
  if (!TrackIndex()) {
    Show({});
    return;
  }
  if (PictureSources sources = SourcesOf(own.Doc.Work(), *own.Index); sources != own.Sources) {
    own.Sources = std::move(sources);
    own.Attempted.clear();
    List();
  }
  Put(Refreshed(state_, own.Material(*this)));
  FindUnit();  // the entry may show something else now
}

// What is chosen says where to look, where it is of this track.
void Viewer::FollowKey() {
  const Project& project = private_->Doc.Work();
  const auto shown = TrackIndex();
  if (!shown) {
    return;
  }
  const std::string& key = private_->Chosen.Key();
  if (const Cell_P* const cell = LiveCell(project, key)) {
    const auto scene = static_cast<std::size_t>(cell->pScene);
    if (cell->SegmentUsed == static_cast<std::int32_t>(*shown) && cell->pScene >= 0 &&
        scene < Shown()->Scenes.size()) {
      ToFrame(Shown()->Scenes[scene].Frame);
    }
    return;
  }
  const auto source = ParseSourceKey(key);
  if (!source || source->Track != *shown || source->Number == 0) {
    return;
  }
  if (source->Kind == SourceKey::Node::Scene && source->Number <= Shown()->Scenes.size()) {
    ToFrame(Shown()->Scenes[source->Number - 1].Frame);
  } else if (source->Kind == SourceKey::Node::SubStream) {
    ToStream(source->Number - 1);
  } else if (source->Kind == SourceKey::Node::HighStream &&
             source->Number <= Shown()->HighlightPlays.size()) {
    ToFrame(TimecodeToFrames(Shown()->HighlightPlays[source->Number - 1].StartTimeToVideo,
                             TrackTimes(*Shown()).FramesPerSecond));
  }
}

void Viewer::GoTo(const GoToPlace& place) {
  const Track* const track = Shown();
  if (track != nullptr && place.ButtonSet && *place.ButtonSet < track->HighlightPlays.size()) {
    ToFrame(TimecodeToFrames(track->HighlightPlays[*place.ButtonSet].StartTimeToVideo,
                             TrackTimes(*track).FramesPerSecond));
  }
  if (track == nullptr || !place.SubStream || *place.SubStream >= track->SubStreams.size()) {
    return;
  }
  ToStream(*place.SubStream);
  const auto& entries = track->SubStreams[*place.SubStream].SubPlays;
  if (place.SubEntry && *place.SubEntry < entries.size()) {
    ToFrame(TimecodeToFrames(entries[*place.SubEntry].Start, TrackTimes(*track).FramesPerSecond));
  }
}

void Viewer::Move(ViewerMove move) {
  if (TrackIndex()) {
    Put(Moved(state_, move, private_->Material(*this)));
  }
}

void Viewer::ToFrame(std::int64_t frame) {
  if (TrackIndex()) {
    const std::int64_t frames = FrameCount();
    Put(AtFrame(state_, frames > 0 ? std::min(frame, frames - 1) : frame, private_->Material(*this)));
  }
}

void Viewer::ToView(ViewMode view) {
  if (TrackIndex()) {
    Put(InView(state_, view, private_->Material(*this)));
  }
}

void Viewer::ToStream(std::size_t stream) {
  if (!TrackIndex()) {
    return;
  }
  const Track& track = *Shown();
  ViewerState state = state_;
  if (!LeadsTo(track, state.View, stream)) {
    const auto views = OfferedViews(track);
    const auto view = std::ranges::find_if(views, [&](ViewMode one) { return LeadsTo(track, one, stream); });
    if (view == views.end()) {
      return;
    }
    state = InView(state, *view, private_->Material(*this));
  }
  Put(OnStream(state, stream, private_->Material(*this)));
}

bool Viewer::IsPictureReady() const {
  return private_->IsFound && !picture_.isNull();
}

QString Viewer::PictureWords() const {
  const Private& own = *private_;
  if (Shown() == nullptr) {
    return tr("No track is shown");
  }
  if (!own.Why.empty()) {
    return QString::fromStdString(own.Why);
  }
  if (pictures_.empty()) {
    return own.IsListed ? tr("This track has no pictures yet")
                        : (own.Indexing.empty() ? tr("Looking for pictures…") : tr("Indexing…"));
  }
  if (!EqualNoCase(Shown()->TrackType, "Motion")) {
    return {};
  }
  const std::int64_t away = state_.Frame - pictures_[state_.Picture].Frame;
  if (away == 0) {
    return {};
  }
  return (away > 0 ? tr("picture %1 %2 before") : tr("picture %1 %2 after"))
      .arg(std::abs(away))
      .arg(std::abs(away) == 1 ? tr("frame") : tr("frames"));
}

void Viewer::Put(const ViewerState& state) {
  if (state == state_) {
    return;
  }
  state_ = state;
  FindNow();
  FindUnit();
  emit StateMoved();
}

void Viewer::List() {
  Private& own = *private_;
  own.IsListed = false;
  own.Why.clear();
  own.Worker.List(++own.ListNumber,
                  OrderFor(own.Doc.Work(), *own.Index, own.Fresh, own.Doc.Session().Indexes()));
}

// The picture of the state: at once where it is kept, or else later.
void Viewer::FindNow() {
  Private& own = *private_;
  ++own.FindNumber;
  const Track* const track = Shown();
  if (track == nullptr || state_.Picture >= pictures_.size() ||
      pictures_[state_.Picture].Play >= track->VideoPlays.size()) {
    picture_ = {};
    own.IsFound = true;
    emit PictureReady();
    return;
  }
  const ViewerPicture& at = pictures_[state_.Picture];
  const Project& project = own.Doc.Work();
  const std::string path = SystemPath(track->VideoPlays[at.Play].File, project.SourceFolder());
  const PictureOrder order{.Path = path,
                           .Stamp = StampOf(path),
                           .Offset = at.Offset,
                           .Bytes = at.Bytes,
                           .IsMpeg2 = track->Coding != "MPEG1"};
  if (const QImage* const kept = own.Cache.Find(order)) {
    picture_ = *kept;
    own.Why.clear();
    own.IsFound = true;
    emit PictureReady();
    return;
  }
  own.IsFound = false;
  own.Worker.Find(own.FindNumber, order);
}

void Viewer::Private::TakePicture(Viewer& viewer, std::uint64_t number, const PictureOrder& order,
                                  const FoundPicture& found) {
  if (!found.Image.isNull()) {
    Cache.Keep(order, found.Image, static_cast<std::size_t>(found.Image.sizeInBytes()));
  }
  if (number == FindNumber) {
    IsFound = true;
    viewer.picture_ = found.Image;
    Why = found.Why;
    emit viewer.PictureReady();
  }
}

void Viewer::Private::TakeList(Viewer& viewer, std::uint64_t number, PictureList list) {
  if (number != ListNumber) {
    return;
  }
  IsListed = true;
  Frames = list.Frames;
  viewer.pictures_ = std::move(list.Pictures);
  const ViewerState before = viewer.state_;
  viewer.state_ = Refreshed(before, Material(viewer));
  viewer.FindNow();
  viewer.FindUnit();
  Why = Why.empty() ? std::move(list.Why) : Why;
  emit viewer.PicturesChanged();
  if (viewer.state_ != before) {
    emit viewer.StateMoved();
  }
  viewer.Index(list.Unindexed);
}

const std::optional<ShownUnit>& Viewer::UnitNow() const {
  return private_->Unit.Unit;
}

QString Viewer::UnitWords() const {
  return QString::fromStdString(private_->Unit.Why);
}

std::optional<std::size_t> Viewer::ButtonSet() const {
  const Track* const track = Shown();
  return track != nullptr ? SetAt(*track, state_.Frame) : std::nullopt;
}

std::optional<std::size_t> Viewer::Button() const {
  const auto set = ButtonSet();
  const auto& button = private_->Button;
  return set && button && set == private_->ButtonsOf && *button < Shown()->HighlightPlays[*set].Buttons.size()
             ? button
             : std::nullopt;
}

void Viewer::ChooseButton(std::optional<std::size_t> button) {
  const auto before = Button();
  private_->ButtonsOf = ButtonSet();
  private_->Button = button;
  if (Button() != before) {
    emit ButtonChosen();
  }
}

// The unit of the entry that the state tells.
void Viewer::FindUnit() {
  Private& own = *private_;
  const Track* const track = Shown();
  std::optional<UnitOrder> order;
  if (track != nullptr && state_.Stream && state_.Entry && *state_.Stream < track->SubStreams.size() &&
      *state_.Entry < track->SubStreams[*state_.Stream].SubPlays.size()) {
    order =
        UnitOrderFor(track->SubStreams[*state_.Stream].SubPlays[*state_.Entry], TrackTimes(*track).IsNtsc(),
                     own.Doc.Work().SourceFolder(), own.Doc.Session().RulesInForce());
  }
  std::string key = order ? order->Key() : std::string();
  if (key == own.UnitKey) {
    return;
  }
  own.UnitKey = std::move(key);
  ++own.UnitNumber;
  const FoundUnit* const kept = order ? own.Units.Find(own.UnitKey) : nullptr;
  if (order && kept == nullptr) {
    own.Worker.Code(own.UnitNumber, *std::move(order));
    return;
  }
  own.Unit = kept != nullptr ? *kept : FoundUnit();
  emit UnitReady();
}

void Viewer::Private::TakeUnit(Viewer& viewer, std::uint64_t number, const std::string& key,
                               const FoundUnit& found) {
  if (found.Unit) {
    Units.Keep(key, found, found.Unit->Pixels.size());
  }
  if (number == UnitNumber) {
    Unit = found;
    emit viewer.UnitReady();
  }
}

// Indexes those films that nobody is at, in a job, once.
void Viewer::Index(const std::vector<std::string>& films) {
  Private& own = *private_;
  std::vector<std::string> wanted;
  for (const std::string& film : films) {
    if (own.Indexing.contains(film)) {
      own.IsListed = false;  // its list comes when the index is there
    } else if (own.Attempted.contains(film)) {
      own.Why = own.Why.empty() ? film + ": its pictures are not indexed" : own.Why;
    } else if (std::ranges::find(wanted, film) == wanted.end()) {
      wanted.push_back(film);
    }
  }
  if (wanted.empty()) {
    return;
  }
  own.IsListed = false;
  own.Indexing.insert(wanted.begin(), wanted.end());
  const auto run = std::make_shared<IndexRun>();
  own.Work.Start(
      "Indexing " + QFileInfo(QString::fromStdString(wanted.front())).fileName().toStdString(),
      [run, wanted, store = own.Doc.Session().Indexes()](UserInterface& ui) mutable {
        std::vector<IndexSource> sources;
        sources.reserve(wanted.size());
        for (const std::string& film : wanted) {
          sources.push_back({.Name = film, .IsImage = false});
        }
        *run = BuildPictureIndex(sources, {}, store, ui, true);
        if (run->Complete) {
          return Job::Verdict{Job::State::Done, "Ready"};
        }
        return ui.StopRequested() ? Job::Verdict{Job::State::Stopped, "Stopped"}
                                  : Job::Verdict{Job::State::Failed, "Not indexed"};
      },
      [run, wanted, alive = QPointer<Viewer>(this)](const Job&) {
        if (alive) {
          alive->private_->TakeIndexes(*alive, wanted, *run);
        }
      });
}

void Viewer::Private::TakeIndexes(Viewer& viewer, const std::vector<std::string>& films,
                                  const IndexRun& run) {
  for (const FileIndex& file : run.Files) {
    if (file.State == IndexState::Built || file.State == IndexState::KeptInMemory) {
      Fresh[file.Name] = {StampOf(file.Name), file.Index};
    }
    if (file.State == IndexState::KeptInMemory) {
      Doc.Session().Indexes().Keep(file.Name, file.Index);
    }
  }
  for (const std::string& film : films) {
    Indexing.erase(film);
    Attempted.insert(film);
  }
  if (viewer.TrackIndex()) {
    viewer.List();
  }
}

}  // namespace quorvelant
