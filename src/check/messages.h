// Every finding on a project and its sources. Files are named as the project names them.
#pragma once

#include "analysis/messages.h"
#include "base/message.h"

namespace quorvelant::message {

// --- the structure ---

inline constexpr MessageKind PgcLinkMissing{"pgc-link-missing", Severity::Warning, "Unknown Link",
                                            "The {} PGC does not exist, so there is no such link: \"{}\""};
inline constexpr MessageKind CellCommandMissing{"cell-command-missing", Severity::Warning,
                                                "Unknown Cell Command",
                                                "The cell names cell command {}; the PGC has {}"};
inline constexpr MessageKind StillTimeBeyond{"still-time", Severity::Error, "Still Time",
                                             "A still lasts 0 to {} seconds, or for ever with {}; not {}"};

// What no player gets through. The names are those of the elements.

inline constexpr std::string_view StructureTitle = "Structure";
inline constexpr MessageKind FirstPlayLeadsNowhere{"first-play-leads-nowhere", Severity::Error,
                                                   StructureTitle,
                                                   "First Play has no command that plays a title or a menu, "
                                                   "so a player stops as soon as the disc is in: give "
                                                   "it a JumpTT or a JumpSS"};
inline constexpr MessageKind SetWithoutTitles{
    "set-without-titles", Severity::Error, StructureTitle,
    R"(The title set "{}" has no titles, and players refuse such a set: add a title or remove the set)"};
inline constexpr MessageKind TitleWithoutCells{
    "title-without-cells", Severity::Error, StructureTitle,
    R"(The title "{}" has no cells, so there is nothing to play and its commands never run: place a scene in )"
    "it or remove it"};
inline constexpr MessageKind TitleStartsWithoutCells{
    "title-starts-without-cells", Severity::Error, StructureTitle,
    R"(The title "{}" starts with the PGC "{}", which has no cells: players start at the first part and never )"
    "come by it. Place a scene in that PGC or put its commands into the next one"};
inline constexpr MessageKind LanguageWithoutPgcs{
    "language-without-pgcs", Severity::Error, StructureTitle,
    R"(The language "{}" has no PGCs, and a player that takes it finds no menu: add one or remove the language)"};
inline constexpr MessageKind MenuRepeated{
    "menu-repeated", Severity::Warning, StructureTitle,
    R"(The language "{}" has a "{}" menu already, "{}": players show one of the two and never the other. Write )"
    R"(MenuType=None for "{}", and reach it by a link)"};
inline constexpr MessageKind MenuLeadsNowhere{
    "menu-leads-nowhere", Severity::Error, StructureTitle,
    R"(The menu "{}" neither holds by a still time nor leads on, so a player stops there: give it a still time )"
    "of 255, a command that jumps or links, or a next PGC"};

// Commands where they stand: the text first.

inline constexpr std::string_view NavigationTitle = "Navigation";
inline constexpr MessageKind TargetForbidden{
    "target-forbidden", Severity::Error, NavigationTitle,
    R"("{}" cannot stand in {}, where players stop at it or pass over it: {})"};
inline constexpr MessageKind TargetMissing{
    "target-missing", Severity::Error, NavigationTitle,
    R"("{}" leads to what the disc does not have, and a player stops there: {})"};

inline constexpr MessageKind ResumeEmpty{
    "resume-empty", Severity::Warning, NavigationTitle,
    R"("{}" finds nothing to come back to here, where players pass over it or stop. The way there: {})"};

// Ways through the disc: the text of the command, and the shortest way to it, from the insertion of the disc
// on.

inline constexpr MessageKind CommandLoop{
    "command-loop", Severity::Error, NavigationTitle,
    R"("{}" goes round, alone or with others, and nothing is ever played, so a player hangs. The way there: {})"};
inline constexpr MessageKind ButtonIdle{
    "button-idle", Severity::Error, NavigationTitle,
    R"("{}" does nothing here, so button {} of the page has no effect. The way there: {})"};
inline constexpr MessageKind PageTrap{"page-trap", Severity::Error, NavigationTitle,
                                      "No button, key or end leads out of here: give a button a command that "
                                      "jumps or links. The way there: {}"};
inline constexpr MessageKind ButtonsEnd{"buttons-end", Severity::Error, NavigationTitle,
                                        "The buttons end while the page stands for ever, and nothing can be "
                                        "chosen on it then: let them show, and be "
                                        "chosen, up to the page's end. The way there: {}"};
inline constexpr MessageKind ButtonsHidden{
    "buttons-hidden", Severity::Error, NavigationTitle,
    "None of the buttons shows when it is chosen, since all their contrasts are 0. The way there: {}"};
inline constexpr MessageKind DiscStops{"disc-stops", Severity::Warning, NavigationTitle,
                                       "The disc stops after this, and the screen goes black: end with a "
                                       "command that jumps, links or calls a menu, or "
                                       "with Exit where that is meant. The way there: {}"};
inline constexpr MessageKind Unreachable{
    "unreachable", Severity::Warning, NavigationTitle,
    "{} cannot be reached: no button, command or end of the disc leads there"};
inline constexpr MessageKind StreamMissing{
    "stream-missing", Severity::Warning, NavigationTitle,
    R"("{}" chooses {} stream {}, which title {} does not have. The way there: {})"};
inline constexpr MessageKind WalkCut{
    "walk-cut", Severity::Information, NavigationTitle,
    "There are more ways through the disc than are walked: {} states were looked at, and nothing is told of "
    "what lies beyond them"};
inline constexpr MessageKind KeyDead{"key-dead", Severity::Information, NavigationTitle,
                                     "The {} key of the remote does nothing: {}"};

// Tracks of one domain that differ: the domain's key stands in front, then what both are.

inline constexpr std::string_view MixedTitle = "Mixed Set";
inline constexpr MessageKind VideoMixed{
    "video-mixed", Severity::Error, MixedTitle,
    R"(The {} of {} hold the track "{}" of {} and the track "{}" of {}; players are told the first for both and )"
    "show the other wrong: put it into another title set, or encode both alike"};
inline constexpr MessageKind AudioMixed{
    "audio-mixed", Severity::Error, MixedTitle,
    R"(The {} of {} hold audio stream {} as {} in the track "{}" and as {} in the track "{}"; players are told )"
    "the first for both and play noise or nothing: give it another stream number, or encode both alike"};
inline constexpr MessageKind AspectUnlikeDomain{
    "aspect-unlike-domain", Severity::Warning, MixedTitle,
    R"(The track "{}" is 4:3, and its display mode "{}" makes players show the titles of {} as 16:9, which )"
    R"(stretches it: set the mode to "Not Specified")"};

// 16:9 tracks on 4:3 screens.
inline constexpr std::string_view DisplayTitle = "Display Mode";
inline constexpr MessageKind WideLetterboxed{
    "wide-letterboxed", Severity::Information, DisplayTitle,
    R"(The track "{}" is 16:9 and names no display mode: 4:3 screens show it letterboxed. To choose, write )"
    "DisplayMode=Only LetterBox, Only PanScan or Both PanScan and LetterBox"};
inline constexpr MessageKind WideWithoutDisplay{
    "wide-without-display", Severity::Warning, DisplayTitle,
    R"(The track "{}" is 16:9 and names no display mode: 4:3 screens show it squeezed. Write )"
    "DisplayMode=Only LetterBox, and give buttons an area for it (ButtonMode2=letter, Highlight Area #2)"};

// Palettes of chains: the chain's name and what it names.
inline constexpr std::string_view PaletteTitle = "Palette";
inline constexpr MessageKind PaletteOfChainMissing{
    "palette-missing", Severity::Warning, PaletteTitle,
    R"(The PGC "{}" shows subtitles or buttons, and the project has no palette "{}": they show in black, white )"
    "and grey. Name one of its palettes in PaletteUsed"};
inline constexpr MessageKind PaletteOfChainDark{
    "palette-dark", Severity::Warning, PaletteTitle,
    R"(The PGC "{}" shows subtitles or buttons, and the project has no palette "{}": all its colours show as )"
    "dark green. Add a palette and name it in PaletteUsed"};

// --- what a disc has room for: the count and the most ---

inline constexpr std::string_view LimitTitle = "Disc Limit";
inline constexpr MessageKind TooManySets{"too-many-title-sets", Severity::Error, LimitTitle,
                                         "The disc has {} title sets; there can be {}"};
inline constexpr MessageKind TooManyTitles{"too-many-titles", Severity::Error, LimitTitle,
                                           "The disc has {} titles; there can be {}"};
inline constexpr MessageKind TooManyPrograms{"too-many-programs", Severity::Error, LimitTitle,
                                             R"(PGC "{}" has {} programs; there can be {})"};
inline constexpr MessageKind TooManyCells{"too-many-cells", Severity::Error, LimitTitle,
                                          R"(PGC "{}" has {} cells; there can be {})"};
inline constexpr MessageKind TooManyCommands{"too-many-commands", Severity::Error, LimitTitle,
                                             R"(PGC "{}" has {} commands; there can be {})"};
inline constexpr MessageKind TooManyPgcs{"too-many-pgcs", Severity::Error, LimitTitle,
                                         R"("{}" has {} PGCs; there can be {})"};
inline constexpr MessageKind TooManyLanguages{"too-many-languages", Severity::Error, LimitTitle,
                                              R"(The menus of "{}" have {} languages; there can be {})"};
inline constexpr MessageKind TooManyParts{
    "too-many-parts", Severity::Error, LimitTitle,
    R"(The title "{}" has {} programs, which are its parts; there can be {})"};

// --- streams ---

inline constexpr std::string_view StreamNumberTitle = "Stream Number";
inline constexpr MessageKind StreamNumberBeyond{"stream-number-beyond", Severity::Warning, StreamNumberTitle,
                                                "{} streams have the numbers 0 to {}; not {}"};
inline constexpr MessageKind StreamNumberRepeated{
    "stream-number-repeated", Severity::Error, StreamNumberTitle,
    "{} stream number {} is an earlier stream's of the same track"};
inline constexpr MessageKind StreamNotMuxed{
    "stream-not-multiplexed", Severity::Warning, "Stream Not Multiplexed",
    "{} stream {} does not reach the disc in {}: it carries {} audio and {} subpicture streams. Leave "
    "other streams out"};
inline constexpr MessageKind SubStreamEmpty{
    "subpicture-stream-empty", Severity::Warning, "Empty Stream",
    "Subpicture stream {} of track \"{}\" has no entries: viewers can choose it, and it shows nothing. Add "
    "entries, or remove the stream"};
inline constexpr MessageKind DecodingMissing{
    "decoding-missing", Severity::Error, "Stream Decoding",
    R"(The PGC "{}" plays {} stream {} as stream {}, which track "{}" does not have: {}. Mend the line of its )"
    "stream decoding that says so"};
inline constexpr MessageKind AudioKindUnknown{
    "audio-kind-unknown", Severity::Error, "Unknown Source",
    "'{}': the name of a stream's first file ends in .ac3, .wav or .dts and tells its kind; this one is "
    "unknown. This makes a file that fits: {}"};
inline constexpr MessageKind AudioUnnamed{"audio-unnamed", Severity::Error, "Unknown Source",
                                          "The stream names no file: give it one, or remove the stream"};

// --- tracks: what they ask of a disc as a whole ---

inline constexpr MessageKind TrackWithoutVideo{"track-without-video", Severity::Error, "Source Error",
                                               R"(Track "{}" is used on the disc and has no video)"};
inline constexpr MessageKind TrackTooLong{
    "track-too-long", Severity::Error, "Track Length",
    R"(The pictures of track "{}" are held for {}:{:02} hours; a player's clock starts anew after 13 )"
    "hours and 15 minutes, and the disc stops there: hold them for less, or make several tracks"};

// The streams of a track.
inline constexpr MessageKind StreamsBeyondRate{
    "streams-beyond-rate", Severity::Error, "Bit Rate",
    "The sound of track \"{}\" ({}) takes {:.1f} of the {} Mbit/s that a disc carries, which leaves none for "
    "the picture: sound and picture would stop again and again. Leave streams out, or encode them at lower "
    "rates"};

// The same of sound and picture together.
inline constexpr MessageKind FilmBeyondRate{
    "film-beyond-rate", Severity::Error, StreamsBeyondRate.Title,
    "The picture of track \"{}\" takes {:.2f} Mbit/s all the time and its sound {:.2f}, and a disc carries "
    "{}: "
    "they would stop again and again. Leave audio streams out, or encode the picture at a lower rate"};

// --- sources: the file and what is wrong with it. Further reasons stand in analysis/messages.h. ---

inline constexpr MessageKind SourceMissing{"source-missing", Severity::Error, "Missing Source", "'{}': {}"};
// The file, and what the system said.
inline constexpr MessageKind SourceBroken{
    SourceReadFailed.Code, Severity::Error, SourceReadFailed.Title,
    "'{}': it cannot be read as far as it is needed ({}). Its disk fails, or is gone: copy the file anew"};
inline constexpr MessageKind SourceUnnamed{"source-unnamed", Severity::Warning, "Missing Source",
                                           "the play names no file"};

inline constexpr MessageKind VideoMissing{"video-missing", Severity::Error, RefusedTitle,
                                          "'{}': it holds no MPEG video and no bitmap that becomes a still"};
inline constexpr MessageKind BitmapSizeUnfit{
    "bitmap-size", Severity::Error, RefusedTitle,
    "'{}': a bitmap of {}x{}: sizes are 720x576, 360x288, 720x480 and 360x240"};
inline constexpr MessageKind BitmapOnMotion{
    "bitmap-on-motion", Severity::Error, RefusedTitle,
    "'{}': a bitmap on a motion track flashes by: put it into a list of "
    "its own, Item=Still Play or Item=SlideShow Play"};
inline constexpr MessageKind NotStill{
    "not-still", Severity::Error, RefusedTitle,
    "'{}': it holds more than one picture, and a still or a slide is a single "
    "one: name it as Item=Video Play, or make a picture of it"};
// What the file is, and a line for a shell.
inline constexpr MessageKind SourceForeign{
    "source-foreign", Severity::Error, RefusedTitle,
    "'{}': it is {}, and a disc is made of elementary streams. This makes one that fits: {}"};
inline constexpr MessageKind SequenceNotFirst{
    "video-sequence-not-first", Severity::Error, RefusedTitle,
    "'{}': it does not start with a sequence header, so that its first pictures cannot be decoded. This cuts "
    "it at the first one: {}"};
inline constexpr MessageKind OneSequence{
    "video-one-sequence", Severity::Error, RefusedTitle,
    "'{}': no second sequence header comes within its first {} frames, and players search and jump by them: "
    "it "
    "would be one unit that cannot be searched. This repeats the header, without encoding: {}"};
inline constexpr MessageKind NoGroups{
    "video-no-groups", Severity::Warning, RefusedTitle,
    "'{}': it has no group headers (GOP), so that some players search badly in it. Encode it with them: {}"};
inline constexpr MessageKind AudioNameUnknown{
    "audio-name-unknown", Severity::Error, RefusedTitle,
    "'{}': its name tells no kind of audio: a disc takes .ac3 and .wav. "
    "This makes a file that fits: {}"};
inline constexpr MessageKind AudioUnreadable{"audio-unreadable", Severity::Error, RefusedTitle,
                                             "'{}': its sound cannot be read"};

inline constexpr std::string_view SourceMismatchedTitle = "Mismatched Source";
inline constexpr MessageKind UnlikeTrack{"source-unlike-track", Severity::Error, SourceMismatchedTitle,
                                         "'{0}': {1} where the track is {2}: its times would be wrong, and "
                                         "players would show it wrongly or not at "
                                         "all. Write Resolution={1} for the track, or take a file of {2}"};
inline constexpr MessageKind StandardUnknown{
    "track-standard-unknown", Severity::Error, SourceMismatchedTitle,
    "Track \"{}\" says Resolution={}, which is no video standard: write PAL or NTSC, or leave the line out, "
    "and the file tells it"};
// The file and what it is, the first of its list and what it is, what comes of it, and a line for a shell.
inline constexpr MessageKind UnlikeFirst{"source-unlike-first", Severity::Error, SourceMismatchedTitle,
                                         "'{}': {} where '{}', the first of its list, is {}: {}. Make it "
                                         "alike: {}"};
inline constexpr MessageKind AudioOtherKind{"audio-other-kind", Severity::Error, SourceMismatchedTitle,
                                            "'{}': it holds {} where the stream is {}, by the name of its "
                                            "first file. Give it a stream of its own, or "
                                            "make it alike: {}"};
inline constexpr MessageKind SinglePicture{
    "video-single-picture", Severity::Error, SourceMismatchedTitle,
    "'{}': a single picture on a motion track flashes by: make the track a still or a slideshow"};

// --- subtitles ---

inline constexpr std::string_view SubtitleTitle = "Subtitle Check";
inline constexpr MessageKind SubtitleUnfit{"subtitle-unfit", Severity::Error, SubtitleTitle, "{}"};
inline constexpr MessageKind SubtitleNoPicture{"subtitle-no-picture", Severity::Error, SubtitleTitle,
                                               "'{}': it is no picture, and subtitles are BMP or PNG files: "
                                               "look whether the script names the right file"};
inline constexpr MessageKind SubtitleOutside{
    "subtitle-outside", Severity::Error, SubtitleTitle,
    "'{}': no line of its {}x{} pixels lies within the screen from its corner {},{} on: mend its Origin"};
inline constexpr MessageKind SubtitleOddPixels{
    "subtitle-odd-pixels", Severity::Warning, SubtitleTitle,
    "'{}': {} in {} of this stream, of which it is the first, have none of the four colours Conversion(Bg), "
    "(P), (E1), (E2), and show as {}. Draw without smoothing, or give each colour of the bitmap a "
    "Conversion"};
inline constexpr MessageKind SubtitleWithoutFile{"subtitle-without-bitmap", Severity::Warning, SubtitleTitle,
                                                 "the subtitle has no bitmap"};
inline constexpr MessageKind SubtitleIndexBeyond{"subtitle-index-beyond", Severity::Warning, SubtitleTitle,
                                                 "colours and contrasts of a subtitle are 0 to 15, not {}"};
inline constexpr MessageKind SubtitleEndsBeforeStart{"subtitle-ends-before-start", Severity::Error,
                                                     SubtitleTitle,
                                                     "the subtitle ends ({}) before it starts ({})"};
inline constexpr MessageKind SubtitleWithoutDuration{
    "subtitle-without-duration", Severity::Warning, SubtitleTitle,
    "the subtitle has no duration and stays until the next one"};
inline constexpr MessageKind SubtitlesOutOfOrder{"subtitles-out-of-order", Severity::Error, SubtitleTitle,
                                                 "the subtitle starts ({}) before the one ahead of it ({})"};
inline constexpr MessageKind SubtitlesStartTogether{
    "subtitles-start-together", Severity::Error, SubtitleTitle,
    "the subtitle starts with the one before it ({}), and players show one of the two, or none: let them "
    "start "
    "at different times, put one into a stream of its own, or paint both in one bitmap"};
inline constexpr MessageKind SubtitlesOverlap{
    "subtitles-overlap", Severity::Warning, SubtitleTitle,
    "the subtitle starts ({}) before the one ahead of it ends ({})"};
inline constexpr MessageKind SubtitleStartsPastEnd{"subtitle-starts-past-end", Severity::Warning,
                                                   SubtitleTitle,
                                                   "the subtitle starts ({}) past the end of the track ({})"};
inline constexpr MessageKind SubtitleEndsPastEnd{"subtitle-ends-past-end", Severity::Warning, SubtitleTitle,
                                                 "the subtitle ends ({}) past the end of the track ({})"};

// --- buttons ---

inline constexpr MessageKind ButtonLinkMissing{
    "button-link-missing", Severity::Warning, "Unknown Link",
    R"(Button "{}" links to a button that does not exist, so it stays on itself: "{}")"};

inline constexpr std::string_view ButtonTitle = "Button Check";
// Of a cell: the track, its buttons and the cell's commands.
inline constexpr MessageKind ButtonsWithoutCommand{
    "buttons-without-command", Severity::Error, ButtonTitle,
    R"(The track "{}" has {} in this cell's scene, and the cell has {}, which are dealt )"
    "in order: the last buttons do nothing. Give each button one Button Command line"};
inline constexpr MessageKind CommandsWithoutButton{
    "commands-without-button", Severity::Warning, ButtonTitle,
    R"(The track "{}" has {} in this cell's scene, and the cell has {}: a button has )"
    "one, so they are dealt in order and the last ones are left out"};
inline constexpr MessageKind ButtonCommandsUneven{
    "button-commands-uneven", Severity::Warning, ButtonTitle,
    R"(A Menu Play of this cell has more or fewer than one command, and the buttons of the track "{}" are dealt )"
    "all of them in order, one each, wherever a Menu Play ends"};
inline constexpr MessageKind ButtonCommandsDiffer{
    "button-commands-differ", Severity::Error, ButtonTitle,
    R"(This cell has other button commands than {1}, and both show one set of buttons of the track "{0}", )"
    "which these menus or titles hold once: they do what {1} says. Give this cell a track of its own"};
inline constexpr MessageKind TooManyButtons{"too-many-buttons", Severity::Error, ButtonTitle,
                                            "{} buttons, and with {} there is room for {}"};
inline constexpr MessageKind ButtonNameRepeated{"button-name-repeated", Severity::Warning, ButtonTitle,
                                                R"(two buttons are named "{}": links reach the first)"};
inline constexpr MessageKind ButtonSchemeUnknown{"button-scheme-unknown", Severity::Warning, ButtonTitle,
                                                 R"(button "{}" has colour scheme {}, and there are 1 to 3)"};
inline constexpr MessageKind ButtonSetEmpty{
    "button-set-empty", Severity::Warning, ButtonTitle,
    "the set has no buttons: it ends the one before it, and players may stumble. Add buttons, or remove it"};
inline constexpr MessageKind ButtonValueBeyond{"button-value-beyond", Severity::Warning, ButtonTitle,
                                               "{} is 0 to {}, not {}"};
inline constexpr MessageKind ButtonAreaUnfit{
    "button-area", Severity::Warning, ButtonTitle,
    R"(button "{}" has no area within the picture ({},{} to {},{}))"};
inline constexpr MessageKind ForcedButtonMissing{"forced-button-missing", Severity::Warning, ButtonTitle,
                                                 "the {} button is number {} of {}"};
inline constexpr MessageKind ButtonsOutsideTrack{"buttons-outside-track", Severity::Error, ButtonTitle,
                                                 "the buttons start ({}) past the end of the track ({})"};
inline constexpr MessageKind ButtonsEndPastEnd{
    "buttons-end-past-end", Severity::Warning, ButtonTitle,
    "the buttons last ({}) past the end of the track ({}) and are cut"};
inline constexpr MessageKind ButtonSelectionOver{"button-selection-over", Severity::Warning, ButtonTitle,
                                                 "the buttons start ({}) after their Selection End Time "
                                                 "({}), so players let nobody choose one: give a later "
                                                 "time, or leave the line out"};
inline constexpr MessageKind ButtonsOutOfOrder{"buttons-out-of-order", Severity::Error, ButtonTitle,
                                               "the buttons start ({}) before the set ahead of them ({})"};
inline constexpr MessageKind ButtonsOverlap{
    "buttons-overlap", Severity::Warning, ButtonTitle,
    "the buttons start ({}) before the set ahead of them ends ({}), which is cut"};
inline constexpr MessageKind ButtonsWithoutSubtitle{
    "buttons-without-subtitle", Severity::Warning, ButtonTitle,
    "no forced subtitle shows while the buttons can be pressed"};

}  // namespace quorvelant::message
