#include "window/media_pane.h"

#include <QDragMoveEvent>
#include <QDropEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "base/timecode.h"
#include "edit/change.h"
#include "edit/film_tracks.h"
#include "edit/live_sources.h"
#include "edit/new_track.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/steps.h"
#include "edit/track_names.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_tracks.h"
#include "ui/messages.h"
#include "window/clear_button.h"
#include "window/dropped_files.h"

namespace quorvelant {

namespace {

const FileFilter AnyFile{.Name = "All files", .Extensions = {}};
const FileFilter Videos{.Name = "Video", .Extensions = {"m2v", "mpv", "m1v", "mpg", "mpeg"}};
const FileFilter Pictures{.Name = "Pictures", .Extensions = {"png", "bmp", "jpg", "jpeg"}};
const FileFilter Sounds{.Name = "Sound", .Extensions = {"ac3", "wav", "dts"}};
const FileFilter SubtitleLists{.Name = "Subtitle lists", .Extensions = {"sst"}};
const FileFilter ChapterLists{.Name = "Chapter lists", .Extensions = {"txt", "doc"}};

std::vector<FileFilter> AllKinds() {
  FileFilter all{.Name = "Video, sound, subtitles, pictures, chapters", .Extensions = {}};
  for (const FileFilter* kind : {&Videos, &Sounds, &SubtitleLists, &Pictures, &ChapterLists}) {
    all.Extensions.insert(all.Extensions.end(), kind->Extensions.begin(), kind->Extensions.end());
  }
  return {all, Videos, Sounds, SubtitleLists, Pictures, ChapterLists, AnyFile};
}

std::vector<std::optional<ActionId>> MenuOfTracks() {
  using enum ActionId;
  return {NewTrack,       ImportFile,   AddVideo,   AddAudio,     AddSubtitles, std::nullopt, NewChapter,
          ImportChapters, MoveChapters, PlaceTrack, std::nullopt, Rename,       Remove};
}

}  // namespace

MediaPane::MediaPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      model_(parts.Doc),
      import_(parts.Doc, parts.Work, parts.Chosen),
      words_(new QLineEdit),
      tree_(new ProjectTree(parts, model_, MenuOfTracks())) {
  setAccessibleName(tr("Media"));
  words_->setPlaceholderText(tr("Filter"));
  words_->setAccessibleName(tr("Filter tracks"));
  AddClearButton(*words_);
  tree_->setAccessibleName(tr("Media"));
  setMinimumWidth(fontMetrics().averageCharWidth() * 24);
  tree_->setDragDropMode(QAbstractItemView::DragOnly);
  tree_->SetHint(
      tr("Drop files here: video (.m2v), sound (.ac3, .wav), subtitle lists (.sst), chapter lists "
         "(.txt) and pictures. Files whose names begin alike become one track.\n\n"
         "Or take them in with Track, Import File…"));
  tree_->viewport()->setAcceptDrops(true);
  tree_->viewport()->installEventFilter(this);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(words_);
  column->addWidget(tree_);
  setFocusProxy(tree_);
  connect(words_, &QLineEdit::textChanged, this, [this](const QString& words) {
    tree_->SetHint(tr("No track has these words: %1").arg(words));
    tree_->Filter(words);
  });
  connect(tree_, &ProjectTree::Renamed, this, &MediaPane::GiveName);
  connect(&parts.Chosen, &Selection::KeyChanged, this, [this] { parts_.Commands.Refresh(); });
  connect(&model_, &TreeModel::Applied, this, [this] { parts_.Commands.Refresh(); });
  HandleActions();
}

void MediaPane::HandleActions() {
  Actions& actions = parts_.Commands;
  const auto hasTrack = [this] { return TrackChosen().has_value(); };
  const auto isSource = [this] { return HasSourceChosen(); };
  actions.Handle(ActionId::NewTrack, [this] { MakeTrack(); });
  actions.Handle(ActionId::ImportFile, [this] { AskFiles(); });
  actions.Handle(
      ActionId::AddVideo, [this] { AddVideo(); },
      [this] {
        const auto track = TrackChosen();
        return track && parts_.Doc.Work().Tracks[*track].TrackType != "Still";
      });
  actions.Handle(
      ActionId::AddAudio, [this] { AddSound(); }, hasTrack);
  actions.Handle(
      ActionId::AddSubtitles, [this] { AddSubtitleStream(); }, hasTrack);
  actions.Handle(
      ActionId::NewChapter, [this] { MakeChapter(); }, hasTrack);
  actions.Handle(
      ActionId::ImportChapters, [this] { TakeChapterList(); }, hasTrack);
  actions.Handle(
      ActionId::MoveChapters, [this] { MoveChapters(); }, hasTrack);
  actions.Handle(
      ActionId::Rename,
      [this] {
        parts_.Commands.Of(ActionId::ShowMedia)->trigger();
        tree_->setFocus();
        tree_->EditName(parts_.Chosen.Key());
      },
      [this, isSource] {
        return isSource() && LiveSource(parts_.Doc.Work(), parts_.Chosen.Key(), SourceKey::Node::Track);
      });
  actions.Handle(
      ActionId::Remove, [this] { RemoveChosen(); }, isSource);
}

bool MediaPane::HasSourceChosen() const {
  return ParseSourceKey(parts_.Chosen.Key()).has_value();
}

std::optional<std::size_t> MediaPane::TrackChosen() const {
  const auto source = ParseSourceKey(parts_.Chosen.Source());
  const Project& project = parts_.Doc.Work();
  const bool isLive =
      source && source->Track < project.Tracks.Count() && IsLive(project.Tracks[source->Track]);
  return isLive ? std::optional(source->Track) : std::nullopt;
}

void MediaPane::DoAndChoose(const Document::Operation& operation) {
  const auto key = parts_.Doc.Do(operation);
  if (key && !key->empty()) {
    parts_.Chosen.Choose(*key);
  }
}

// --- tracks and files ---

void MediaPane::MakeTrack() {
  constexpr std::array<std::string_view, 3> Types{"Motion", "Still", "SlideShow"};
  const auto type = parts_.Answers.Choose("New Track", "What is the track to show?",
                                          {"A film", "A still picture", "A slideshow"});
  if (!type) {
    return;
  }
  const auto name = parts_.Answers.AskText("New Track", "What is the name of the new track?",
                                           ProposedTrackName(parts_.Doc.Work()));
  if (name) {
    DoAndChoose([&](EditSession& session, Consent) { return NewTrack(session, Types.at(*type), *name); });
  }
}

void MediaPane::AskFiles() {
  const auto files = parts_.Answers.FilesToOpen("Import File", AllKinds(), true);
  if (!files.empty()) {
    TellOfProjects(import_.Bring(files, {.Key = parts_.Chosen.Source(), .IsMeant = false}));
  }
}

void MediaPane::TellOfProjects(const std::vector<std::string>& projects) {
  for (const std::string& project : projects) {
    parts_.Doc.Speaks().Tell(MessageOf(message::FileIsProject, project, project));
  }
}

// A further play of the track, with the file that goes onto it.
void MediaPane::AddVideo() {
  const auto track = TrackChosen();
  if (!track) {
    return;
  }
  const bool isSlides = parts_.Doc.Work().Tracks[*track].TrackType == "SlideShow";
  const auto files = parts_.Answers.FilesToOpen(
      "Add Video", isSlides ? std::vector{Pictures, Videos, AnyFile} : std::vector{Videos, AnyFile}, true);
  std::vector<std::string> videos = VideosOf(parts_.Doc.Work(), *track);
  videos.insert(videos.end(), files.begin(), files.end());
  if (!files.empty()) {
    import_.WithIndexes(std::move(videos), [this, index = *track, files] {
      for (const std::string& file : files) {
        const std::string held = parts_.Doc.AsScriptHolds(file);
        DoAndChoose([&](EditSession& session, Consent consent) {
          return AddFilmPlay(session, index, held, parts_.Doc.Speaks(), consent);
        });
      }
    });
  }
}

void MediaPane::AddSound() {
  const auto track = TrackChosen();
  if (!track) {
    return;
  }
  const auto files = parts_.Answers.FilesToOpen("Add Audio Stream", {Sounds, AnyFile}, true);
  const auto videos = VideosOf(parts_.Doc.Work(), *track);
  for (const std::string& file : files) {
    const FilmFiles::Stream stream{
        .File = parts_.Doc.AsScriptHolds(file),
        .Language = LanguageOfFile(file, videos.empty() ? std::string() : videos.front())};
    DoAndChoose([&](EditSession& session, Consent consent) {
      return AddFilmAudio(session, TrackKey(*track), stream, parts_.Doc.Speaks(), consent);
    });
  }
}

void MediaPane::AddSubtitleStream() {
  const auto track = TrackChosen();
  if (!track) {
    return;
  }
  const auto blank = [&](EditSession& session, Consent) { return AddSubtitles(session, TrackKey(*track)); };
  if (!parts_.Answers.Ask("Add Subtitle Stream", AskImportScript, "Import", "Blank Stream")) {
    DoAndChoose(blank);
    return;
  }
  const auto files = parts_.Answers.FilesToOpen("Add Subtitle Stream", {SubtitleLists, AnyFile}, true);
  const auto videos = VideosOf(parts_.Doc.Work(), *track);
  for (const std::string& file : files) {
    const FilmFiles::Stream stream{
        .File = parts_.Doc.AsScriptHolds(file),
        .Language = LanguageOfFile(file, videos.empty() ? std::string() : videos.front())};
    DoAndChoose([&](EditSession& session, Consent) {
      return AddFilmSubtitles(session, TrackKey(*track), stream, parts_.Doc.Speaks());
    });
  }
}

// --- chapters ---

void MediaPane::MakeChapter() {
  const auto track = TrackChosen();
  if (!track) {
    return;
  }
  const Project& project = parts_.Doc.Work();
  const bool isShown = parts_.View.TrackIndex() == track;
  const std::string now = FramesToTimecode(isShown ? parts_.View.State().Frame : 0,
                                           TrackFramesPerSecond(project, project.Tracks[*track]));
  const auto time = parts_.Answers.AskText(
      "New Chapter", "When does the chapter begin (hours:minutes:seconds:frames)?", now);
  if (time) {
    import_.WithIndexes(VideosOf(project, *track), [this, key = TrackKey(*track), time = *time] {
      DoAndChoose([&](EditSession& session, Consent) { return NewScene(session, key, time); });
    });
  }
}

void MediaPane::TakeChapterList() {
  const auto track = TrackChosen();
  const auto files = track ? parts_.Answers.FilesToOpen("Import Chapters", {ChapterLists, AnyFile}, false)
                           : std::vector<std::string>();
  if (!files.empty()) {
    const std::string list = parts_.Doc.AsScriptHolds(files.front());
    import_.WithIndexes(VideosOf(parts_.Doc.Work(), *track), [this, key = TrackKey(*track), list] {
      parts_.Doc.Do([&](EditSession& session, Consent) {
        return ImportChapters(session, key, list, parts_.Doc.Speaks());
      });
    });
  }
}

void MediaPane::MoveChapters() {
  const auto track = TrackChosen();
  if (track) {
    import_.WithIndexes(VideosOf(parts_.Doc.Work(), *track), [this, key = TrackKey(*track)] {
      parts_.Doc.Do([&](EditSession& session, Consent consent) {
        return Analyse(session, key, parts_.Doc.Speaks(), consent);
      });
    });
  }
}

// --- names, removal, drops ---

void MediaPane::GiveName(const QString& key, const QString& name) {
  parts_.Doc.Do([&](EditSession& session, Consent) {
    return RenameTrack(session, key.toStdString(), name.toStdString());
  });
}

void MediaPane::RemoveChosen() {
  const std::string key = parts_.Chosen.Key();
  parts_.Doc.Do([&](EditSession& session, Consent consent) { return RemoveSource(session, key, consent); });
}

bool MediaPane::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop) {
    auto& drop = static_cast<QDropEvent&>(*event);
    if (!HoldsFiles(*drop.mimeData())) {
      event->ignore();
      return true;
    }
    const std::string row = tree_->KeyAt(drop.position().toPoint());
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (type == QEvent::Drop) {
      std::vector<Message> told;
      const auto paths = PathsIn(*drop.mimeData(), told);
      for (const Message& message : told) {
        parts_.Doc.Speaks().Tell(message);
      }
      const auto projects = import_.Bring(paths, {.Key = row, .IsMeant = true});
      TellOfProjects(projects);
    }
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace quorvelant
