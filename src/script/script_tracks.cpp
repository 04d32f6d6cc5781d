#include "script/script_tracks.h"

#include "base/timecode.h"
#include "model/cls_dvd.h"

namespace quorvelant {

namespace {

// Scenes may prohibit the operations from Stop on, but for resuming a call: the entry has no bit in a VOBU.
constexpr std::size_t FirstSceneUop = 3;
constexpr std::size_t SceneUopLeftOut = 17;

std::string_view YesNo(bool value) {
  return value ? "Yes" : "No";
}

// The items of a track's video list, by its type.
struct PlayItems {
  std::string_view List;
  std::string_view Play;
};
PlayItems ItemsOf(const Track& track) {
  if (track.TrackType == "Motion") {
    return {"Item=Video Play List", "Item=Video Play"};
  }
  return track.TrackType == "Still" ? PlayItems{"Item=Still Play List", "Item=Still Play"}
                                    : PlayItems{"Item=SlideShow Play List", "Item=SlideShow Play"};
}

void WriteVideoPlays(ScriptText& text, const Track& track) {
  const PlayItems items = ItemsOf(track);
  text.Open(items.List);
  for (const VideoPlay& video : track.VideoPlays) {
    if (video.File.empty() || video.Removed) {
      continue;
    }
    text.Open(items.Play);
    text.Value("VideoFile=", video.File);
    if (track.TrackType == "SlideShow" || video.DurationSet) {
      text.Value("SlideDuration=", video.SlideDuration);
    }
    text.Close();
  }
  text.Value("FrameCount=", track.FrameCount);
  text.Value("ExtendSlideForAudio=", YesNo(track.ExtendSlideForAudio));
  text.Value("ExtendFinalSubtitle=", YesNo(track.ExtendFinalSubtitle));
  text.Close();
}

void WriteAudio(ScriptText& text, const AudioStream& stream) {
  text.Open("Item=Audio Play List");
  text.Value("Name=", stream.StreamName);
  text.Value("AudioLanguage=", stream.Language);
  text.Value("AudioExtension=", stream.Extension);
  text.Value("Delay=", stream.Delay);
  text.Value("StreamNumber=", stream.StreamNumber);
  if (stream.Format == "PCM" && stream.Emphasis == 1) {
    text.Line("Emphasis=Yes");
  }
  if (stream.Format == "PCM" && stream.Mute == 1) {
    text.Line("Mute=1");
  }
  for (const AudioPlay& play : stream.AudioPlays) {
    if (!play.File.empty() && !play.Removed) {
      text.Open("Item=Audio Play");
      text.Value("AudioFile=", play.File);
      text.Close();
    }
  }
  text.Close();
}

std::string DurationText(const SubPicturePlay& play, int rate) {
  return play.End.empty()
             ? play.Duration
             : FramesToTimecode(TimecodeToFrames(play.End, rate) - TimecodeToFrames(play.Start, rate), rate);
}

void WriteSubPlay(ScriptText& text, const SubPicturePlay& play, int rate) {
  text.Open("Item=SubPicture Play");
  text.Value("File=", play.File);
  text.Numbers("Origin=", {play.X1, play.Y1});
  text.Numbers("DisplayArea=", {play.X1, play.Y1, play.X2, play.Y2});
  text.Value("Forced=", YesNo(play.Forced));
  text.Value("Start=", play.Start);
  text.Value("Duration=", DurationText(play, rate));
  text.Bytes("Conversion(Bg)=", play.ConversionBg);
  text.Bytes("Conversion(P)=", play.ConversionP);
  text.Bytes("Conversion(E2)=", play.ConversionE2);
  text.Bytes("Conversion(E1)=", play.ConversionE1);
  text.Numbers("Color=", {play.ColorBg, play.ColorP, play.ColorE2, play.ColorE1});
  text.Numbers("Contrast=", {play.ContrastBg, play.ContrastP, play.ContrastE2, play.ContrastE1});
  text.Close();
}

void WriteSubtitles(ScriptText& text, const SubtitleStream& stream, int rate) {
  text.Open("Item=SubPicture");
  text.Value("Name=", stream.StreamName);
  text.Value("DisplayMode=", stream.DisplayMode);
  text.Value("DropFrame=", stream.DropFrame);
  text.Value("SubLanguage=", stream.Language);
  text.Value("SubExtension=", stream.Extension);
  text.Value("StreamNumber=", stream.StreamNumber);
  for (const SubPicturePlay& play : stream.SubPlays) {
    if (play.Used) {
      WriteSubPlay(text, play, rate);
    }
  }
  text.Close();
}

// Held as E2, E1, P, Bg; written from the background on.
void WriteQuad(ScriptText& text, std::string_view key, const ColorQuad& quad) {
  text.Numbers(key, {quad[3], quad[2], quad[0], quad[1]}, ", ");
}

void WriteButton(ScriptText& text, const HighlightButton& button) {
  text.Open("Item=Button");
  if (button.AutoAction) {
    text.Line("AutoAction=Yes");
  }
  text.Value("Button #=", button.Number);
  text.Value("Name=", button.Name);
  text.Value("Color Scheme=", button.ColorScheme);
  text.Value("Up=", button.Up);
  text.Value("Down=", button.Down);
  text.Value("Left=", button.Left);
  text.Value("Right=", button.Right);
  constexpr std::array<std::string_view, 3> Keys{
      "Highlight Area #1=", "Highlight Area #2=", "Highlight Area #3="};
  for (std::size_t i = 0; i < Keys.size(); ++i) {
    const HighlightArea& area = button.Areas[i];
    text.Numbers(Keys[i], {area.X1, area.Y1, area.X2, area.Y2}, ", ");
  }
  text.Close();
}

void WriteHighlight(ScriptText& text, const HighlightPlay& play) {
  text.Open("Item=Highlight Play");
  text.Value("Start Time To Video=", play.StartTimeToVideo);
  text.Value("Duration=", play.Duration);
  text.Value("Forced Action=", play.ForcedAction);
  text.Value("Forced Select=", play.ForcedSelect);
  text.Value("Selection End Time=", play.SelectionEndTime);
  text.Value("Offset=", play.Offset);
  text.Value("Numerical Button #=", play.NumericalButtons);
  for (std::size_t i = 0; i < play.ButtonModes.size(); ++i) {
    text.Numbered("ButtonMode", i + 1, "=", play.ButtonModes[i]);
  }
  for (std::size_t i = 0; i < play.Schemes.size(); ++i) {
    const ColorScheme& scheme = play.Schemes[i];
    text.Numbered("Color Scheme ", i + 1, "");
    text.Open();
    WriteQuad(text, "Selection Color=", scheme.SelectionColor);
    WriteQuad(text, "Selection Contrast=", scheme.SelectionContrast);
    WriteQuad(text, "Action Color=", scheme.ActionColor);
    WriteQuad(text, "Action Contrast=", scheme.ActionContrast);
    text.Close();
  }
  for (const HighlightButton& button : play.Buttons) {
    WriteButton(text, button);
  }
  text.Close();
}

void WriteScene(ScriptText& text, const Scene& scene, int rate) {
  text.Open("Item=Scene");
  text.Value("Name=", scene.Name);
  text.Value("SceneTime=", FramesToTimecode(scene.Frame, rate));
  text.Open("UOPS");
  for (std::size_t i = FirstSceneUop; i < UserOperationCount; ++i) {
    if (scene.Uops[i] && i != SceneUopLeftOut) {
      text.Value(CLsDVD::UserOP(i), "=Prohibited");
    }
  }
  text.Close();
  text.Close();
}

void WriteTrack(ScriptText& text, const Track& track, int rate) {
  text.Open("Item=Track");
  text.Value("Name=", track.TrackName);
  text.Value("DisplayMode=", track.DisplayMode);
  text.Value("Resolution=", track.Standard);
  WriteVideoPlays(text, track);
  if (track.HasAudio) {
    for (const AudioStream& stream : track.AudioStreams) {
      if (!stream.Removed) {
        WriteAudio(text, stream);
      }
    }
  }
  if (track.HasSubs) {
    for (const SubtitleStream& stream : track.SubStreams) {
      if (!stream.Removed) {
        WriteSubtitles(text, stream, rate);
      }
    }
  }
  if (track.HasHighlights) {
    text.Open("Item=Highlight List");
    for (const HighlightPlay& play : track.HighlightPlays) {
      WriteHighlight(text, play);
    }
    text.Close();
  }
  text.Open("Item=Scene List");
  for (const Scene& scene : track.Scenes) {
    WriteScene(text, scene, rate);
  }
  text.Close();
  text.Close();
}

}  // namespace

int TrackFramesPerSecond(const Project& project, const Track& track) {
  return FramesPerSecond(track.Standard.empty() ? project.Standard() : track.Standard);
}

void WriteTracks(ScriptText& text, const Project& project) {
  if (project.Tracks.Count() > 0) {
    text.Open("Data=Tracks");
  }
  for (const Track& track : project.Tracks) {
    if (track.Filled && !track.Removed && !track.VideoPlays.empty() &&
        !track.VideoPlays.front().File.empty()) {
      WriteTrack(text, track, TrackFramesPerSecond(project, track));
    }
  }
  text.Close();
}

}  // namespace quorvelant
