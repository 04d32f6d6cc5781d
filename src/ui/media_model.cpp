#include "ui/media_model.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/timecode.h"
#include "model/keys.h"
#include "model/walk.h"
#include "script/script_tracks.h"
#include "ui/fact_words.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

// The last part of a path, whatever system wrote it.
QString FileName(const std::string& path) {
  const std::size_t slash = path.find_last_of("/\\");
  return Shown(slash == std::string::npos ? path : path.substr(slash + 1));
}

QString LanguageWords(const std::string& language, const std::string& extension) {
  const bool isUsual = extension.empty() || extension == "Normal" || extension == "Unspecified";
  return JoinWords({Shown(language), isUsual ? QString() : Shown(extension)});
}

RowFacts FileFacts(const std::string& file, const std::string& emptyText, const QString& time) {
  const QString name = file.empty() ? Shown(emptyText) : Shown(file);
  return {.Kind = QStringLiteral("file"),
          .Name = name,
          .Shown = file.empty() ? name : FileName(file),
          .Former = {},
          .Columns = {time, {}, {}, {}, {}}};
}

QString SoundWords(const AudioStream& stream) {
  const AudioTraits& traits = stream.Traits;
  const auto number = [](std::int32_t value, const char* unit) {
    return value > 0 ? QStringLiteral(" %1 %2").arg(value).arg(QString::fromUtf8(unit)) : QString();
  };
  return Shown(stream.Format) + number(traits.ChannelCount, "ch") + number(traits.Quantisation, "bit") +
         number(traits.BitRate, "kbit/s");
}

// Tells the facts of one track's rows.
class TrackFacts {
 public:
  using Taker = std::function<void(const std::string& key, RowFacts facts)>;

  TrackFacts(const Project& project, std::size_t index, const Taker& take)
      : track_(project.Tracks[index]),
        index_(index),
        rate_(TrackFramesPerSecond(project, track_)),
        take_(take) {}

  void Tell() const {
    take_(TrackKey(index_), OfTrack());
    for (const auto& [place, play] : LiveWithIndex(track_.VideoPlays)) {
      const QString time = track_.TrackType == "SlideShow" ? Shown(play.SlideDuration) : QString();
      take_(VideoPlayKey(index_, place + 1), FileFacts(play.File, VideoPlayText(play, place + 1), time));
    }
    for (const auto& [place, stream] : LiveWithIndex(track_.AudioStreams)) {
      TellSound(place + 1, stream);
    }
    for (const auto& [place, stream] : LiveWithIndex(track_.SubStreams)) {
      take_(SubStreamKey(index_, place + 1), OfSubtitles(stream));
    }
    if (track_.HasHighlights) {
      take_(HighStreamKey(index_), OfButtons());
    }
    for (std::size_t i = 0; i < track_.Scenes.size(); ++i) {
      const QString name = Shown(track_.Scenes[i].Name);
      take_(SceneKey(index_, i + 1), {.Kind = QStringLiteral("scene"),
                                      .Name = name,
                                      .Shown = name,
                                      .Former = {},
                                      .Columns = {Timecode(track_.Scenes[i].Frame), {}, {}, {}, {}}});
    }
  }

 private:
  [[nodiscard]] QString Timecode(std::int64_t frames) const { return Shown(FramesToTimecode(frames, rate_)); }

  [[nodiscard]] RowFacts OfTrack() const {
    const bool hasFile = std::ranges::any_of(
        track_.VideoPlays, [](const VideoPlay& play) { return IsLive(play) && !play.File.empty(); });
    const auto length = TrackLength(track_);
    QString time = length ? Timecode(*length) : QString();
    if (track_.TrackType == "Still") {
      time = hasFile ? MediaModel::tr("still") : QString();
    } else if (hasFile && !length) {
      time = MediaModel::tr("Unknown!");
    }
    const QString name = Shown(track_.TrackName);
    return {.Kind = QStringLiteral("track"),
            .Name = name,
            .Shown = name,
            .Former = name,
            .Columns = {time,
                        QStringLiteral("%1 %2 %3")
                            .arg(Shown(track_.Standard), Shown(track_.Aspect), Shown(track_.Resolution))
                            .simplified(),
                        {},
                        {},
                        track_.UsedInStructure ? MediaModel::tr("used") : QString()}};
  }

  void TellSound(std::size_t number, const AudioStream& stream) const {
    const QString name = Shown(stream.StreamName);
    take_(AudioStreamKey(index_, number),
          {.Kind = QStringLiteral("audio"),
           .Name = name,
           .Shown = name,
           .Former = {},
           .Columns = {stream.Delay == 0 ? QString() : MediaModel::tr("delay %1 ms").arg(stream.Delay),
                       SoundWords(stream),
                       LanguageWords(stream.Language, stream.Extension),
                       QString::number(stream.StreamNumber),
                       {}}});
    for (const auto& [place, play] : LiveWithIndex(stream.AudioPlays)) {
      take_(AudioPlayKey(index_, number, place + 1),
            FileFacts(play.File, AudioPlayText(play, place + 1), {}));
    }
  }

  [[nodiscard]] static RowFacts OfSubtitles(const SubtitleStream& stream) {
    const QString name = Shown(stream.StreamName);
    const QString mode = stream.DisplayMode == "Not Specified" ? QString() : Shown(stream.DisplayMode);
    const QString count = stream.SubPlays.empty() ? MediaModel::tr("empty")
                                                  : CountWords(stream.SubPlays.size(), "entry", "entries");
    return {.Kind = QStringLiteral("subtitles"),
            .Name = name,
            .Shown = name,
            .Former = {},
            .Columns = {{},
                        JoinWords({count, mode}),
                        LanguageWords(stream.Language, stream.Extension),
                        QString::number(stream.StreamNumber),
                        {}}};
  }

  [[nodiscard]] RowFacts OfButtons() const {
    std::size_t buttons = 0;
    for (const HighlightPlay& play : track_.HighlightPlays) {
      buttons += play.Buttons.size();
    }
    const QString name = Shown(HighStreamText);
    return {.Kind = QStringLiteral("highlight"),
            .Name = name,
            .Shown = name,
            .Former = {},
            .Columns = {{}, CountWords(buttons, "button", "buttons"), {}, {}, {}}};
  }

  const Track& track_;
  std::size_t index_;
  int rate_;
  const Taker& take_;
};

}  // namespace

MediaModel::MediaModel(Document& document)
    : TreeModel(document,
                {tr("Name"), tr("Time"), tr("Format"), tr("Language"), tr("Stream"), tr("On the disc")},
                {"segments", "folder", "videolist", "audiolist", "sublist"}) {
  Begin();
}

TreeNode MediaModel::TreeOf(const Project& project) const {
  return SegmentTree(project);
}

void MediaModel::TellFacts(const ChangeEvent& event, const FactTaker& take) const {
  const Project& project = Doc().Work();
  const auto tell = [&](std::size_t index) {
    if (index < project.Tracks.Count() && IsLive(project.Tracks[index])) {
      TrackFacts(project, index, take).Tell();
    }
  };
  if (event.Replaced) {
    for (std::size_t index = 0; index < project.Tracks.Count(); ++index) {
      tell(index);
    }
    return;
  }
  for (const Part& part : event.Parts) {
    if (part.Kind == PartKind::Track) {
      tell(part.Number);
    }
  }
}

bool MediaModel::CanDrag(const std::string& /*key*/, std::string_view kind) const {
  return kind == "track" || kind == "scene";
}

bool MediaModel::CanDropOn(std::string_view /*kind*/) const {
  return false;  // files are the pane's
}

}  // namespace quorvelant
