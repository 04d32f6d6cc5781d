// What the analysis of sources tells, and why no disc can carry a source: reasons, which whoever tells them
// puts after the file's name.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

inline constexpr MessageKind SourceReadFailed{"source-read-failed", Severity::Error, "Read Error", "{}"};
inline constexpr MessageKind IndexReadFailed{"index-read-failed", Severity::Error, "Index Error", "{}"};
inline constexpr MessageKind IndexKeptInMemory{
    "index-kept-in-memory", Severity::Warning, "Index Warning",
    "The index of '{}' can't be written ({}). Indexes are kept in memory for this run"};

inline constexpr std::string_view RefusedTitle = "Refused Source";

inline constexpr MessageKind NoPictures{"video-no-pictures", Severity::Error, RefusedTitle,
                                        "it holds no MPEG video"};
inline constexpr MessageKind Mpeg1Video{"video-mpeg1", Severity::Error, RefusedTitle,
                                        "it is MPEG1 video, which is not supported"};
inline constexpr MessageKind FilmRate{"video-film-rate", Severity::Error, RefusedTitle,
                                      "it runs at 23.976 frames a second and has no pulldown flags"};
inline constexpr MessageKind FrameRate{
    "video-frame-rate", Severity::Error, RefusedTitle,
    "it runs at {} frames a second, and a disc's video at 25 (PAL) or 29.97 (NTSC)"};
inline constexpr MessageKind FrameSize{"video-frame-size", Severity::Error, RefusedTitle,
                                       "{} has no frame size {}x{}"};
inline constexpr MessageKind DeclaredRate{
    "video-declared-rate", Severity::Warning, RefusedTitle,
    "its header claims {:.1f} Mbit/s, and a disc's picture has 9.8 at most; most players don't mind"};
inline constexpr MessageKind ColourSampling{"video-colour-sampling", Severity::Error, RefusedTitle,
                                            "its colours are not sampled 4:2:0"};
inline constexpr MessageKind VideoAspect{"video-aspect", Severity::Error, RefusedTitle,
                                         "its aspect is {}, and a disc's video is 4:3 or 16:9"};

// The file is not what its name says, or damaged; the value is why.
inline constexpr MessageKind AudioUnfit{"audio-head", Severity::Error, RefusedTitle, "{}"};
inline constexpr MessageKind DtsAudio{"audio-dts", Severity::Error, RefusedTitle,
                                      "it is DTS, which is left off the disc"};
inline constexpr MessageKind SampleRate{"audio-sample-rate", Severity::Error, RefusedTitle,
                                        "its sample rate is not 48 kHz"};
inline constexpr MessageKind PcmFormat{"audio-pcm-format", Severity::Error, RefusedTitle,
                                       "a disc carries no PCM of {} kHz, {} bits and {}"};
inline constexpr MessageKind Ac3BitRate{"audio-ac3-bit-rate", Severity::Error, RefusedTitle,
                                        "it has {} kbit/s; a disc carries 448 at most"};

inline constexpr MessageKind IndexNotCurrent{"index-not-current", Severity::Warning, "Picture Index",
                                             "The index \"{}\" is not that of the file as it is now: {}. "
                                             "Chapters may come to stand at the wrong pictures. "
                                             "author --reindex or index --force builds it anew."};

}  // namespace quorvelant::message
