// The keys of source material, each table in the order in which its item is written.
#pragma once

#include <array>

#include "script/key.h"
#include "script/special_keys.h"

namespace quorvelant {

// A mute stream is marked by a digit.
inline constexpr Switch MuteWords{.On = "1", .Off = {}, .AlsoOn = "yes|true"};

// Files of the data folder of the other dialect.
inline constexpr std::array DataFileKeys{
    Key{"Resolution", &DataFile_P::Resolution, Takes::Standard}.After(StandardOfSize),
    Key{"Emphasis", &DataFile_P::Emphasis, Takes::YesNo}.Switched(YesNo),
    Key{"Mute", &DataFile_P::Mute, Takes::YesNo}.Switched(MuteWords),
};

inline constexpr std::array VideoPlayKeys{
    Key{"VideoFile", &VideoPlay::File},
    Key{"SlideDuration", &VideoPlay::SlideDuration, Takes::Timecode, Written::OfSlides}.After(FixDuration),
};

inline constexpr std::array AudioPlayKeys{
    Key{"AudioFile", &AudioPlay::File},
};

inline constexpr std::array AudioKeys{
    Key{"Name", &AudioStream::StreamName}.In(Segment::Audio),
    Key{"AudioLanguage|SubLanguage|Language", &AudioStream::Language, Takes::Language},
    Key{"AudioExtension", &AudioStream::Extension, Takes::AudioExtension},
    Key{"Delay", &AudioStream::Delay, Takes::Number},
    Key{"StreamNumber|Stream Number", &AudioStream::StreamNumber, Takes::Number}.After(FixNumber),
    Key{"Emphasis", &AudioStream::Emphasis, Takes::YesNo, Written::OfPcm | Written::IfOn}.Switched(YesNo),
    Key{"Mute", &AudioStream::Mute, Takes::YesNo, Written::OfPcm | Written::IfOn}.Switched(MuteWords),
};

inline constexpr std::array SubtitleKeys{
    Key{"Name", &SubtitleStream::StreamName}.In(Segment::SubPicture),
    Key{"DisplayMode|Display Mode", &SubtitleStream::DisplayMode, Takes::DisplayMode},
    Key{"DropFrame", &SubtitleStream::DropFrame, Takes::YesOrNumber},
    Key{"SubLanguage|AudioLanguage|Language", &SubtitleStream::Language, Takes::Language},
    Key{"SubExtension", &SubtitleStream::Extension, Takes::SubExtension},
    Key{"StreamNumber|Stream Number", &SubtitleStream::StreamNumber, Takes::Number}.After(FixNumber),
};

inline constexpr std::array SubPlayKeys{
    Key{"File", &SubPicturePlay::File}.ReadBy(ReadFile),
    Key{"Origin", Numbers<SubPicturePlay>{{&SubPicturePlay::X1, &SubPicturePlay::Y1}, 2}, Takes::Pair}.After(
        TakeOrigin),
    Key{"DisplayArea",
        Numbers<SubPicturePlay>{
            {&SubPicturePlay::X1, &SubPicturePlay::Y1, &SubPicturePlay::X2, &SubPicturePlay::Y2}},
        Takes::Quad}
        .After(TakeArea),
    Key{"Forced|Forced Start", &SubPicturePlay::Forced, Takes::YesNo},
    Key{"Start", &SubPicturePlay::Start, Takes::Timecode}.After(CountFrames<&SubPicturePlay::Start>),
    Key{"Duration|Data End Time", &SubPicturePlay::Duration, Takes::Timecode}
        .After(CountFrames<&SubPicturePlay::Duration>)
        .ShownBy(ShowDuration),
    Key{"Conversion(Bg)", &SubPicturePlay::ConversionBg, Takes::Rgb},
    Key{"Conversion(P)", &SubPicturePlay::ConversionP, Takes::Rgb},
    Key{"Conversion(E2)", &SubPicturePlay::ConversionE2, Takes::Rgb},
    Key{"Conversion(E1)", &SubPicturePlay::ConversionE1, Takes::Rgb},
    Key{"Color",
        Numbers<SubPicturePlay>{{&SubPicturePlay::ColorBg, &SubPicturePlay::ColorP, &SubPicturePlay::ColorE2,
                                 &SubPicturePlay::ColorE1}},
        Takes::Quad},
    Key{"Contrast",
        Numbers<SubPicturePlay>{{&SubPicturePlay::ContrastBg, &SubPicturePlay::ContrastP,
                                 &SubPicturePlay::ContrastE2, &SubPicturePlay::ContrastE1}},
        Takes::Quad},
};

inline constexpr std::array HighlightKeys{
    Key{"Start Time To Video", &HighlightPlay::StartTimeToVideo, Takes::Timecode},
    Key{"Duration|Data End Time", &HighlightPlay::Duration, Takes::Timecode},
    Key{"Forced Action", &HighlightPlay::ForcedAction, Takes::Number},
    Key{"Forced Select", &HighlightPlay::ForcedSelect, Takes::Number},
    Key{"Selection End Time", &HighlightPlay::SelectionEndTime, Takes::Timecode},
    Key{"Offset", &HighlightPlay::Offset, Takes::Number},
    Key{"Numerical Button #", &HighlightPlay::NumericalButtons, Takes::Number},
    Key{"ButtonMode*|Button Mode *", &HighlightPlay::ButtonModes, Takes::ButtonMode}.From(1),
};

inline constexpr std::array SchemeKeys{
    Key{"Selection Color", &ColorScheme::SelectionColor, Takes::Quad},
    Key{"Selection Contrast", &ColorScheme::SelectionContrast, Takes::Quad},
    Key{"Action Color", &ColorScheme::ActionColor, Takes::Quad},
    Key{"Action Contrast", &ColorScheme::ActionContrast, Takes::Quad},
};

inline constexpr std::array ButtonKeys{
    Key{"AutoAction", &HighlightButton::AutoAction, Takes::YesNo, Written::IfOn},
    Key{"Button #", &HighlightButton::Number, Takes::Number},
    Key{"Name", &HighlightButton::Name}.In(Segment::Button),
    Key{"Color Scheme", &HighlightButton::ColorScheme, Takes::Number},
    Key{"Up", &HighlightButton::Up},
    Key{"Down", &HighlightButton::Down},
    Key{"Left", &HighlightButton::Left},
    Key{"Right", &HighlightButton::Right},
    Key{"Highlight Area #", &HighlightButton::Areas, Takes::Quad}.From(1),
};

// The other dialect's lines of an area.
inline constexpr std::array AreaKeys{
    Key{"X1", &HighlightArea::X1, Takes::Number, Written::Never},
    Key{"Y1", &HighlightArea::Y1, Takes::Number, Written::Never},
    Key{"X2", &HighlightArea::X2, Takes::Number, Written::Never},
    Key{"Y2", &HighlightArea::Y2, Takes::Number, Written::Never},
};

inline constexpr std::array SceneKeys{
    Key{"Name", &Scene::Name}.In(Segment::Scene).After(EnterScene),
    Key{"SceneTime|Scene Time", &Scene::Frame, Takes::Timecode}.ReadBy(ReadSceneTime).ShownBy(ShowSceneTime),
};

// Stream keys of the same word come before these: a track takes whatever no stream takes.
inline constexpr std::array TrackKeys{
    Key{"Name", &Track::TrackName}.In(Segment::Track),
    Key{"DisplayMode|Display Mode", &Track::DisplayMode, Takes::DisplayMode},
    Key{"Resolution", &Track::Standard, Takes::Standard},
    Key{"Aspect", &Track::Aspect, Takes::Aspect, Written::OfWideBitmaps},
};
inline constexpr std::array PlayListKeys{
    Key{"FrameCount", &Track::FrameCount, Takes::Number},
    Key{"ExtendSlideForAudio", &Track::ExtendSlideForAudio, Takes::YesNo},
    Key{"ExtendFinalSubtitle", &Track::ExtendFinalSubtitle, Takes::YesNo},
};

// Calls `visit` with each table.
template <class Visit>
void ForEachSourceTable(const Visit& visit) {
  visit(DataFileKeys);
  visit(VideoPlayKeys);
  visit(AudioPlayKeys);
  visit(AudioKeys);
  visit(SubtitleKeys);
  visit(SubPlayKeys);
  visit(HighlightKeys);
  visit(SchemeKeys);
  visit(ButtonKeys);
  visit(AreaKeys);
  visit(SceneKeys);
  visit(TrackKeys);
  visit(PlayListKeys);
}

}  // namespace quorvelant
