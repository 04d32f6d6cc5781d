// Operations on the source material.
#include <array>
#include <string>

#include "app/edit_words.h"
#include "desk/edit_button_fields.h"
#include "edit/live_sources.h"
#include "edit/segment_files.h"
#include "edit/segments.h"
#include "script/script_tracks.h"

namespace quorvelant {

namespace {

constexpr std::array<std::string_view, 3> TrackTypes{"Motion", "Still", "SlideShow"};

Outcome NewSceneFrom(EditDesk& desk, const EditLine& line) {
  const Project& project = desk.Session.Work();
  const std::string key = line.Text("key");
  if (const auto track = LiveSource(project, key, SourceKey::Node::Track)) {
    static_cast<void>(FrameOf(line.At("time"), TrackFramesPerSecond(project, project.Tracks[track->Track])));
  }
  return NewScene(desk.Session, key, line.Text("time"));
}

Outcome MoveSceneFrom(EditDesk& desk, const EditLine& line) {
  const Project& project = desk.Session.Work();
  const std::string key = line.Text("key");
  if (const auto scene = LiveSource(project, key, SourceKey::Node::Scene)) {
    static_cast<void>(FrameOf(line.At("time"), TrackFramesPerSecond(project, project.Tracks[scene->Track])));
  }
  return MoveScene(desk.Session, key, line.Text("time"));
}

constexpr std::array Words{
    EditWord{"new-track", "type name?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return NewTrack(desk.Session, TrackTypes.at(line.At("type").OneOf(TrackTypes)),
                               line.TextIf("name").value_or(""));
             }},
    EditWord{"import", "key file",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return ImportFile(desk.Session, line.Text("key"), line.Text("file"), desk.Ui, ConsentOf(line));
             }},
    EditWord{"add-play", "key",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return AddPlay(desk.Session, line.Text("key"));
             }},
    EditWord{"add-audio", "key",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return AddAudio(desk.Session, line.Text("key"));
             }},
    EditWord{"add-subtitles", "key",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return AddSubtitles(desk.Session, line.Text("key"));
             }},
    EditWord{"import-subtitles", "key file",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return ImportSubtitleList(desk.Session, line.Text("key"), line.Text("file"), desk.Ui);
             }},
    EditWord{"new-scene", "key time",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return NewSceneFrom(desk, line); }},
    EditWord{"move-scene", "key time",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer { return MoveSceneFrom(desk, line); }},
    EditWord{"import-chapters", "key file",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return ImportChapters(desk.Session, line.Text("key"), line.Text("file"), desk.Ui);
             }},
    EditWord{"analyse", "key",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return Analyse(desk.Session, line.Text("key"), desk.Ui, ConsentOf(line));
             }},
};

}  // namespace

std::span<const EditWord> SegmentWords() {
  return Words;
}

}  // namespace quorvelant
