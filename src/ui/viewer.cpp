#include "ui/viewer.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/button_sets.h"
#include "edit/live_elements.h"
#include "model/keys.h"
#include "ui/coded_subtitle.h"
#include "ui/picture_worker.h"
#include "ui/track_pictures.h"

namespace quorvelant {

namespace {

bool LeadsTo(const Track& track, ViewMode view, std::size_t stream) {
  const auto streams = StreamsIn(view, track);
  return std::ranges::find(streams, stream) != streams.end();
}

}  // namespace

class Viewer::Private {
 public:
  Private(Document& document, Selection& selection, Jobs& jobs, PictureLoader& pictures)
      : Doc(document), Chosen(selection), Worker(pictures), Pictures(document, jobs, Worker), Unit(Worker) {}

  Document& Doc;
  Selection& Chosen;
  std::optional<std::size_t> Index;      // of the track that is shown
  std::optional<std::size_t> ButtonsOf;  // the set that the chosen button is of
  std::optional<std::size_t> Button;
  bool IsMoved = false;  // the state is another since the list of pictures came
  PictureWorker Worker;
  TrackPictures Pictures;
  CodedSubtitle Unit;
};

Viewer::Viewer(Document& document, Selection& selection, Jobs& jobs, PictureLoader& pictures, QObject* parent)
    : QObject(parent), private_(std::make_unique<Private>(document, selection, jobs, pictures)) {
  connect(&document, qOverload<const ChangeEvent&>(&Document::Changed), this, &Viewer::Follow);
  connect(&selection, &Selection::TrackChanged, this, [this] { Show(private_->Chosen.Track()); });
  connect(&selection, &Selection::KeyChanged, this, &Viewer::FollowKey);
  connect(&selection, &Selection::WentTo, this, &Viewer::GoTo);
  connect(&private_->Pictures, &TrackPictures::ListTaken, this, &Viewer::TakeList);
  connect(&private_->Pictures, &TrackPictures::ListChanged, this, &Viewer::TellList);
  connect(&private_->Pictures, &TrackPictures::Found, this, &Viewer::PictureReady);
  connect(&private_->Unit, &CodedSubtitle::Found, this, &Viewer::UnitReady);
  Show(selection.Track());
}

Viewer::~Viewer() = default;

const Track* Viewer::Shown() const {
  const auto track = TrackIndex();
  return track ? &private_->Doc.Work().Tracks[*track] : nullptr;
}

std::optional<std::size_t> Viewer::TrackIndex() const {
  return private_->Pictures.TrackIndex();
}

const std::vector<ViewerPicture>& Viewer::Pictures() const {
  return private_->Pictures.All();
}

const QImage& Viewer::PictureNow() const {
  return private_->Pictures.Now();
}

ViewerMaterial Viewer::Material() const {
  return {private_->Doc.Work().Tracks[*private_->Index], Pictures()};
}

std::int64_t Viewer::FrameCount() const {
  const Track* const track = Shown();
  if (track == nullptr) {
    return 0;
  }
  const std::int64_t told = TrackTimes(*track).Frames;
  return told > 0 ? told : private_->Pictures.Frames();
}

void Viewer::Show(std::optional<std::size_t> track) {
  Private& own = *private_;
  own.Index = track;
  own.Button.reset();
  own.Pictures.Show(track);
  state_ = TrackIndex() ? OpenViewer(Material()) : ViewerState();
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
  own.Pictures.Follow();
  Put(Refreshed(state_, Material()));
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
    Put(Moved(state_, move, Material()));
  }
}

void Viewer::ToFrame(std::int64_t frame) {
  if (TrackIndex()) {
    const std::int64_t frames = FrameCount();
    Put(AtFrame(state_, frames > 0 ? std::min(frame, frames - 1) : frame, Material()));
  }
}

void Viewer::LookAgain() {
  private_->Pictures.LookAgain();
}

void Viewer::ToView(ViewMode view) {
  if (TrackIndex()) {
    Put(InView(state_, view, Material()));
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
    state = InView(state, *view, Material());
  }
  Put(OnStream(state, stream, Material()));
}

bool Viewer::IsPictureReady() const {
  return private_->Pictures.IsFound() && !PictureNow().isNull();
}

QString Viewer::PictureWords() const {
  if (Shown() == nullptr) {
    return tr("No track is shown");
  }
  if (QString words = private_->Pictures.Hindrance(); !words.isEmpty()) {
    return words;
  }
  if (!EqualNoCase(Shown()->TrackType, "Motion")) {
    return {};
  }
  const std::int64_t away = state_.Frame - Pictures()[state_.Picture].ShownAt();
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
  private_->Pictures.Find(state_.Picture);
  FindUnit();
  emit StateMoved();
}

// The place of the state in the list is another, or there is one at last.
void Viewer::TakeList() {
  const ViewerState before = state_;
  state_ = Refreshed(before, Material());
  private_->IsMoved = state_ != before;
  private_->Pictures.Find(state_.Picture);
  FindUnit();
}

void Viewer::TellList() {
  emit PicturesChanged();
  if (private_->IsMoved) {
    emit StateMoved();
  }
}

const std::optional<ShownUnit>& Viewer::UnitNow() const {
  return private_->Unit.Now();
}

QString Viewer::UnitWords() const {
  return QString::fromStdString(private_->Unit.Hindrance());
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
  own.Unit.Find(std::move(order));
}

}  // namespace quorvelant
