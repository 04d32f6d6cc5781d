// What the operations on a project tell.
#pragma once

#include "base/message.h"

namespace quorvelant::message {

// --- the import of video ---

inline constexpr MessageKind ImportUnusable{"import-unusable", Severity::Error, "Import Error",
                                            "'{}' can't be imported: {}"};
// The coding ("MPEG2"), the standard and the attribute.
inline constexpr MessageKind ImportIncompatible{"import-incompatible", Severity::Error, "Import Error",
                                                "The video file has incompatible {} attributes -> {}; {}"};
inline constexpr MessageKind ImportMpeg1{
    "import-mpeg1", Severity::Error, "MPEG1 Import Error",
    "MPEG1 video is not supported in the Ondra version: '{}'. This makes "
    "MPEG2 of it: {}"};
inline constexpr MessageKind ImageSize{"image-size", Severity::Error, "Image size error",
                                       "Image sizes must be 720*576 or 360*288 or 720*480 or 360*240"};
inline constexpr MessageKind ImportNotStill{
    "import-not-still", Severity::Error, "Still Import Error",
    "Video Stream is NOT a still - please reselect a video file with only 1 frame or a BMP Image"};
inline constexpr MessageKind ImportNeedsPulldown{"import-needs-pulldown", Severity::Warning, "Import Warning",
                                                 "Video source is 23.976fps and is not pulldowned"};
inline constexpr MessageKind ImportVideoUnlike{"import-video-unlike", Severity::Error, "Video File Error",
                                               "This Video File has different Attributes to Source File"};

// --- the import of audio; those of severity Information are questions ---

inline constexpr MessageKind ImportSampleRate{
    "import-sample-rate", Severity::Error, "Import Error",
    "Unsupported file format - Sample Rate MUST be 48kHz: '{}'. This "
    "makes one that fits: {}"};
inline constexpr MessageKind ImportAudioUnlike{
    "import-audio-unlike", Severity::Error, "Audio Play Error",
    "This Audio Play has different parameters to the Audio Play #1"};
inline constexpr MessageKind AskAc3BitRate{
    "ask-ac3-bit-rate", Severity::Information, "Audio Bitrate Error",
    "Maximum Audio Bitrate for DVD is 448Kpbs. This source exceeds that ({}). Continuing will make a "
    "non-standard DVD. Do you want to continue?"};
inline constexpr MessageKind AskDtsBitRate{
    "ask-dts-bit-rate", Severity::Information, "Audio Bitrate Error",
    "Incorrect bitrate of DTS audio. This source is ({}). Continuing will make a non-standard DVD. Do you "
    "want to continue?"};
inline constexpr MessageKind AskPcmRate{
    "ask-pcm-rate", Severity::Information, "PCM Data Rate Error",
    "PCM Data Rate is non-dvd standard. Continuing will result in non-standard DVD and will probably fail. "
    "Do you want to continue?"};

// --- scenes, chapters and subtitle streams ---

inline constexpr MessageKind TooManyScenes{"too-many-scenes", Severity::Error, "New Scene Error",
                                           "Max Number of Scenes reached (99)"};
inline constexpr MessageKind SceneTimeMissing{"scene-time-missing", Severity::Error, "New Scene Error",
                                              "Please set a valid Timestamp"};
inline constexpr MessageKind SceneTimeTooLate{"scene-time-too-late", Severity::Error, "New Scene Error",
                                              "Timestamp exceeds Video Length"};
inline constexpr MessageKind SceneTimeNearEnd{"scene-time-near-end", Severity::Error, "New Scene Error",
                                              "Timestamp is too close to end of Video Stream"};
inline constexpr MessageKind SceneTimeTaken{"scene-time-taken", Severity::Error, "New Scene Error",
                                            "This Timestamp already exists, please select another"};
inline constexpr MessageKind CorrectedSceneTimeTaken{
    "corrected-scene-time-taken", Severity::Error, "New Scene Error",
    "This Corrected Timestamp already exists, please select another"};
inline constexpr MessageKind AnalysisWithoutFile{
    "analysis-without-file", Severity::Error, "Analysis Error",
    "You must specify a Video/Still file before analysis can be completed"};
inline constexpr MessageKind ScenesRemoved{
    "scenes-removed", Severity::Error, "Scene Error",
    "One or more Scene times were greater than the Video length, and have been removed"};
inline constexpr MessageKind ChapterListUnreadable{
    "chapter-list-unreadable", Severity::Error, "Chapter List Error",
    "The chapter list '{}' cannot be read or is larger than 1 MB"};
inline constexpr MessageKind ChapterListEmpty{"chapter-list-empty", Severity::Error, "Chapter List Error",
                                              "The chapter list '{}' holds no line with \"chapter=\""};
inline constexpr MessageKind SubtitlesNeedVideo{
    "subtitles-need-video", Severity::Error, "Sub Import Error",
    "Please select a video/still file first, so that the correct subtitle display modes can be set"};
inline constexpr MessageKind StreamIDsLocked{
    "stream-ids-locked", Severity::Information, "Stream ID Error",
    "This track is part of a PGC, so existing Audio / Subpicture IDs have been locked"};
// The title reads as it always did.
inline constexpr MessageKind BitmapDeselected{"bitmap-deselected", Severity::Error, "Bitamp View Error",
                                              "Requested Bitmap does not exist - deselecting this SPU"};
inline constexpr MessageKind ForcedNeeded{
    "forced-needed", Severity::Error, "Sub Forced Error",
    "Subtitles must always be set to Forced when highlight buttons exist"};

// --- the structure ---

inline constexpr MessageKind AskPgcName{"ask-pgc-name", Severity::Information, "New PGC",
                                        "What is the name of the new PGC?"};
inline constexpr MessageKind AskProgramName{"ask-program-name", Severity::Information, "New Program",
                                            "What is the name of the new Program?"};
inline constexpr MessageKind AskTitleName{"ask-title-name", Severity::Information, "New Title",
                                          "What is the name of the new Title Play?"};
inline constexpr MessageKind NoSuchElement{
    "no-such-element", Severity::Error, "Alteration Error",
    "The project has no {} \"{}\". `quorvelant check --tree` lists the keys of its elements"};
inline constexpr MessageKind MostPgcsReached{"most-pgcs-reached", Severity::Error, "New PGC Error",
                                             "Max Number of PGC's reached (999)"};
inline constexpr MessageKind MostProgramsReached{"most-programs-reached", Severity::Error,
                                                 "New Program Error",
                                                 "Max Number of Programs Reached (99) for this PGC"};
inline constexpr MessageKind MostTitlesReached{"most-titles-reached", Severity::Error, "New Title Error",
                                               "Max Number of Titles Reached (99) for this DVD"};
inline constexpr MessageKind ManagerHasNoTitles{"manager-has-no-titles", Severity::Error, "New Title Error",
                                                "Titles stand in title sets, not in the Video Manager"};
inline constexpr MessageKind MostSetsReached{"most-sets-reached", Severity::Error, "New VTS Error",
                                             "Max Number of Title Sets Reached (99) for this DVD"};
inline constexpr MessageKind LanguageTaken{"language-taken", Severity::Error, "New Language Error",
                                           "This Language already exists in this VTS"};
inline constexpr MessageKind LanguageUnknown{"new-language-unknown", Severity::Error, "New Language Error",
                                             "\"{}\" is no language of the list: its name or its code of two "
                                             "or three letters is expected (docs/lists.md)"};
inline constexpr MessageKind MostLanguagesReached{"most-languages-reached", Severity::Error,
                                                  "New Language Error",
                                                  "Max Number of Languages Reached (99) for these menus"};

// --- removal and names ---

inline constexpr MessageKind NotRemovable{"not-removable", Severity::Error, "Alteration Error",
                                          "FirstPGC and Video Manager cannot be removed"};
inline constexpr MessageKind LastSetStays{"last-set-stays", Severity::Error, "VTS Removal Error",
                                          "At least 1 VTS must be present - unable to remove this VTS"};
inline constexpr MessageKind AskRemovalOfTarget{"ask-removal-of-target", Severity::Information,
                                                "VM Reference Error",
                                                "At least one VM Command references this {}. If you remove "
                                                "it referenced VM commands will be reset to NOP"};
inline constexpr MessageKind AskRemoval{"ask-removal", Severity::Information, "Confirm Removal",
                                        "Remove {}?"};
inline constexpr MessageKind AskSourceRemoval{
    "ask-source-removal", Severity::Information, "Confirm Removal",
    "Remove {}? {} cells show it and go with it; commands that lead to them will be reset to NOP"};
inline constexpr MessageKind FirstSceneStays{"first-scene-stays", Severity::Error, "Scene Error",
                                             "The first scene starts the track and stays"};
inline constexpr MessageKind LastFileStays{
    "last-file-stays", Severity::Error, "Alteration Error",
    "Cells show track \"{}\", whose only file this is: give the play another file, or remove the track"};
inline constexpr MessageKind RemovalFault{
    "removal-fault", Severity::Error, "Alteration Error",
    "An error has been trapped removing this item - please replicate and advise me"};
inline constexpr MessageKind CommandCannotName{
    "command-cannot-name", Severity::Error, "Rename Error",
    "A command that leads here cannot be written with the name \"{}\": choose one without words of commands"};

// --- tracks, plays and streams ---

inline constexpr MessageKind TrackNameTaken{"track-name-taken", Severity::Error, "New Track Error",
                                            "There is a track named \"{}\" already"};
inline constexpr MessageKind TrackNameUnfit{
    "track-name-unfit", Severity::Error, "New Track Error",
    R"("{}" cannot be the name of a track: it must not be empty nor hold a tab, a line end, ";" or braces)"};
inline constexpr MessageKind PlayBeforeIsEmpty{
    "play-before-empty", Severity::Error, "New Play Error",
    "The last play of this list has no file yet: give it one first"};
inline constexpr MessageKind StillHasOnePlay{"still-has-one-play", Severity::Error, "New Play Error",
                                             "A still track has one picture: a slideshow takes several"};
inline constexpr MessageKind MostAudioStreams{"most-audio-streams", Severity::Error, "New Audio Stream Error",
                                              "Max Number of Audio Streams Reached (8) for this track"};
inline constexpr MessageKind MostSubStreams{"most-subtitle-streams", Severity::Error,
                                            "New Subtitle Stream Error",
                                            "Max Number of Subtitle Streams Reached (32) for this track"};
inline constexpr MessageKind StreamNumberUnfit{
    "stream-number-unfit", Severity::Error, "Stream ID Error",
    "A stream of this track cannot have the ID {}: it must be free in the track and from 0 to {}"};
inline constexpr MessageKind DisplayModeUnfit{"display-mode-unfit", Severity::Error, "Display Mode Error",
                                              "\"{}\" is no display mode here; one of these is: {}"};
inline constexpr MessageKind SlideTimeMissing{"slide-time-missing", Severity::Error, "Slide Duration Error",
                                              "\"{}\" is no time for a slide: HH:MM:SS:FF of at least one "
                                              "frame is expected, or nothing for the default"};

inline constexpr MessageKind PathOfLines{
    "path-of-lines", Severity::Error, "Path Error",
    "\"{}\" holds a tab or a line end, which a project file cannot carry: give it another name"};

// --- drops of tracks and scenes ---

inline constexpr MessageKind DropHasNoFile{"drop-without-file", Severity::Error, "New Cell Error",
                                           "Track \"{}\" has no video or still yet: give it a file first"};
inline constexpr MessageKind VideoUnlike{
    "video-attributes-unlike", Severity::Error, "Attribute Match Error",
    "Video Attributes (Standard or Aspect Ratio) do not match existing Cells"};
inline constexpr MessageKind DtsInMenu{
    "dts-in-menu", Severity::Error, "Menu Audio Error",
    "DTS audio detected in this track. DTS in Menu domains violates the DVD spec"};
inline constexpr MessageKind AudioKindUnlike{
    "audio-kind-unlike", Severity::Error, "Audio ID Error",
    "Stream ID {} is {} in track \"{}\" and {} in this one; a stream has one kind of sound in all {} of a "
    "title set: give this track's stream another ID"};
inline constexpr MessageKind TooManyCellsForAll{
    "cells-exceeded-by-all", Severity::Error, "New Cell Error",
    "The max number of Cells (255) will be exceeded for this PGC if all scenes are added"};
inline constexpr MessageKind TooManyCellsForOne{
    "cells-exceeded-by-one", Severity::Error, "New Cell Error",
    "The max number of Cells (255) will be exceeded for this PGC if this scene is added"};

// --- before an interactive run makes a disc ---

inline constexpr MessageKind AskCommandErrors{
    "ask-command-errors", Severity::Information, "Contine Authoring",
    "Command errors were present in the script file. Continue with authoring anyway?\n"
    "(This message will not appear again)"};
inline constexpr MessageKind NoTitleMenu{
    "no-title-menu", Severity::Error, "Pre-Check failure",
    "No Title Menu PGC has been specified in Video Manager, Language {}"};
inline constexpr MessageKind NoRootMenu{"no-root-menu", Severity::Error, "Pre-Check failure",
                                        "No Root Menu PGC has been specified in VTS {}, Language {}"};
inline constexpr MessageKind DtsInMenus{"dts-in-menus", Severity::Error, "Pre-Check failure",
                                        "DTS audio present in Menu domains - violates DVD specs"};
inline constexpr MessageKind TitleHasNoCells{
    "preflight-title-without-cells", Severity::Error, "Pre-Check failure",
    "The Title ({}) does not have any cells. This violates the DVD spec"};
inline constexpr MessageKind AskOnlyDts{
    "ask-only-dts", Severity::Information, "Pre-Check failure",
    "Audio streams are present in the title domain of VTS {}, of which none are AC3 or PCM\n"
    "This violates the DVD spec - would you like to continue anyway?"};
inline constexpr MessageKind AskDtsLeftOut{
    "ask-dts-left-out", Severity::Information, "Ondra Limitation Error",
    "DTS audio has been found - this will not be muxed - limitation of Ondra version\n"
    "Do you wish to continue?"};
inline constexpr MessageKind DestinationMissing{"destination-missing", Severity::Error, "Destination Error",
                                                "Please select a destination folder for your DVD"};

// --- projects as files ---

inline constexpr MessageKind AskNewProject{"ask-new-project", Severity::Information, "New Project",
                                           "Create New Blank Project?"};
inline constexpr MessageKind OpenedInPart{"opened-in-part", Severity::Warning, "Open Project",
                                          "'{}' was not read or understood as a whole, and saved over it the "
                                          "rest would be lost: Save asks for another "
                                          "file"};
inline constexpr MessageKind AskSaveFirst{
    "ask-save-first", Severity::Information, "Save Project",
    "Would you like to save the current project before loading a new one?"};

inline constexpr MessageKind AskScriptChanged{
    "ask-script-changed", Severity::Information, "Save Project",
    "'{}' was changed since it was read here, and saving replaces what it holds now. Save all the same?"};
// What a script does not hold.
inline constexpr MessageKind TracksLeftOut{
    "tracks-left-out", Severity::Warning, "Save Project",
    "A project file holds no tracks whose first file is missing, and these are left out: \"{}\""};
inline constexpr MessageKind SubtitlesLeftOut{
    "subtitles-left-out", Severity::Warning, "Save Project",
    "A project file holds no subtitles that are not used: {} left out"};

// --- files as films ---

inline constexpr MessageKind FileOfNoFilm{
    "file-of-no-film", Severity::Error, "Import Error",
    "'{}' belongs to no video: its name must begin as that of one does (film.m2v, film.de.ac3)"};
inline constexpr MessageKind FileBeforeFilm{
    "file-before-film", Severity::Error, "Import Error",
    "'{}' stands before any video: sound, subtitles and chapters follow the video that they belong to"};
inline constexpr MessageKind PictureIsNoFilm{
    "picture-is-no-film", Severity::Error, "Import Error",
    "'{}' is a picture, and films become titles: stills and slides come in with `quorvelant edit`"};
inline constexpr MessageKind TextIsNoSubtitles{"text-is-no-subtitles", Severity::Error, "Import Error",
                                               "'{}' holds subtitles as text, and a disc shows pictures of "
                                               "them: docs/first_disc.md shows how they become "
                                               "a list of bitmaps (.sst)"};
// The file, its standard and that of the films before it, and a line for a shell.
inline constexpr MessageKind FilmOfOtherStandard{
    "film-of-other-standard", Severity::Error, "Import Error",
    "'{}' is {}, and the film before it {}; everything on a disc has one standard. This makes one that fits: "
    "{}"};
// The file and a question.
inline constexpr MessageKind NobodyAsked{
    "nobody-asked", Severity::Error, "Import Error",
    "'{}' must be agreed to, and nobody is asked here: \"{}\" Take another file, or make the project without "
    "this one and bring it in by `quorvelant edit` with \"agree\":true"};
inline constexpr MessageKind SecondChapterList{"second-chapter-list", Severity::Error, "Import Error",
                                               "'{}': '{}' has the chapter list '{}' already"};

// --- the list of command errors ---

inline constexpr MessageKind AskErrorListFile{"ask-error-list-file", Severity::Information,
                                              "File name for error dump?", "Text Files|*.txt"};
inline constexpr MessageKind ErrorListUnwritten{"error-list-unwritten", Severity::Error, "Command Error",
                                                "Unable to write the error list: {}"};

// --- the import of subtitle scripts; those of severity Information with a "?" are questions ---

inline constexpr MessageKind SubtitlesNotOpened{
    "subtitles-not-opened", Severity::Error, "Sub Import Error",
    "The subtitle script cannot be opened. Is there a file of that name, and may you read it?"};
inline constexpr MessageKind SubtitlesTooLarge{"subtitles-too-large", Severity::Error, "Sub Import Error",
                                               "The subtitle script is larger than 16 MB"};
inline constexpr MessageKind SubtitlesEmpty{
    "subtitles-empty", Severity::Error, "Sub Import Error",
    "The subtitle script has no entries: no line after SP_NUMBER has a number, a start, an end and a bitmap. "
    "Subtitles as text (.srt) become such a list as docs/first_disc.md shows"};
inline constexpr MessageKind BitmapsMissing{"bitmaps-missing", Severity::Warning, "Subtitles",
                                            "There is no file for {} of the bitmaps, the first of them here"};
inline constexpr MessageKind SubtitleLinePassedOver{
    "subtitle-line-passed-over", Severity::Warning, "Sub Import Error",
    "This line of the list is passed over: a number, a start, an end and a file name with tabs between are "
    "expected"};

inline constexpr MessageKind PaletteNameTaken{"palette-name-taken", Severity::Error, "New Palette Error",
                                              "This palette name already exists - reselect"};

inline constexpr MessageKind PaletteImport{
    "palette-import", Severity::Information, "Import Palette",
    "This sst file has a palette included - would you like to import it?"};
inline constexpr MessageKind PaletteNew{"palette-new", Severity::Information, "New Palette",
                                        "What is the name of your new Palette?"};
inline constexpr MessageKind PaletteUsedByChains{
    "palette-used-by-pgcs", Severity::Information, "New Palette",
    "The palette \"{1}\" is taken by {0} of the PGCs that show the track"};
inline constexpr MessageKind PaletteKeptByChains{"palette-kept-by-pgcs", Severity::Warning, "New Palette",
                                                 "These PGCs show the track and keep the palette that they "
                                                 "have: {}. The subtitles show in its colours; for "
                                                 "their own, name \"{}\" in PaletteUsed"};

inline constexpr MessageKind CommandListFull{"command-list-full", Severity::Error, "New Command Error",
                                             "Maximum number of commands reached for this PGC ({})"};
inline constexpr MessageKind CommandListMissing{"command-list-missing", Severity::Error, "Command Error",
                                                "There is no such list of commands: \"{}\""};
inline constexpr MessageKind CommandMissing{"command-missing", Severity::Error, "Command Error",
                                            "There is no command {}: the list has {}"};
inline constexpr MessageKind CommandTextUnknown{"command-text-unknown", Severity::Error, "Command Error",
                                                "\"{}\" is no command"};

// --- subtitles, buttons and saved frames; questions are of severity Information ---

inline constexpr MessageKind SubtitleStreamMissing{
    "subtitle-stream-missing", Severity::Error, "Sub Import Error",
    "No subtitle stream exists for this display mode - please add a new blank stream from the main console"};
inline constexpr MessageKind SubtitleMissing{"subtitle-missing", Severity::Error, "Sub Replace Error",
                                             "There is no Subpicture at this timestamp"};
inline constexpr MessageKind ButtonsAtLimit{"buttons-at-limit", Severity::Error, "New Button Error",
                                            "Max Number of Buttons Reached ({})"};
inline constexpr MessageKind ButtonsUnplaced{"buttons-unplaced", Severity::Error, "New Button Error",
                                             "Commands of buttons are kept by the cells that play their "
                                             "track, and no cell plays \"{}\" here: place it "
                                             "on the disc first"};
// What is to be led to, and the cell.
inline constexpr MessageKind ButtonCannotLead{
    "button-cannot-lead", Severity::Error, "New Button Error",
    "No command of players leads to \"{}\" from {}: from the menus of the Video Manager titles and menus are "
    "reached, from those of a title set its own titles and chapters"};
inline constexpr MessageKind RouteNotOffered{
    "route-not-offered", Severity::Error, "Auto-Route Error",
    "The classic rules link buttons in a ring; by where they lie only those of players do"};
inline constexpr MessageKind AskDeleteButton{
    "ask-delete-button", Severity::Information, "Delete Button",
    "Would you like to remove this button? (Any button links will need to be repaired manually!)"};
inline constexpr MessageKind ButtonNameTaken{
    "button-name-taken", Severity::Error, "Button Error",
    "\"{}\" cannot be the name: buttons are linked by names of one line, and no two of a set have the same"};
inline constexpr MessageKind ButtonAreaBeyond{
    "button-area-beyond", Severity::Error, "Button Error",
    "The area of \"{}\" is left, top, right and bottom within {} by {} pixels"};
inline constexpr MessageKind ButtonLinkUnfit{"button-link-unfit", Severity::Error, "Button Error",
                                             "The set has no button \"{}\""};
inline constexpr MessageKind ButtonTimesUnfit{
    "button-times-unfit", Severity::Error, "Button Error",
    "Buttons show from frame 0 or later, before the track ends, for a frame at least"};
inline constexpr MessageKind ButtonPlayedNowhere{
    "button-played-nowhere", Severity::Error, "Button Error",
    "No cell plays the scene of these buttons, and the commands stand with the cells: place the track on a "
    "PGC first"};
inline constexpr MessageKind PaletteNameless{"palette-nameless", Severity::Error, "New Palette Error",
                                             "A palette needs a name of one line"};
inline constexpr MessageKind PaletteIndexBeyond{"palette-index-beyond", Severity::Error, "Colour Error",
                                                "Colours and contrasts are 0 to 15, not {}"};
inline constexpr MessageKind AskReplaceImage{"ask-replace-image", Severity::Information, "Replace Image",
                                             "Image file already exists - replace?"};
inline constexpr MessageKind FrameEmpty{"frame-empty", Severity::Error, "Save Frame Error",
                                        "There is no picture to save: give the track a file first"};
inline constexpr MessageKind FramePastEnd{"frame-past-end", Severity::Error, "Save Frame Error",
                                          "The track ends at {}: take a time before that"};
inline constexpr MessageKind FrameFileUnfit{
    "frame-file-unfit", Severity::Error, "Save Frame Error",
    "A saved picture is a bitmap, and the name of its file ends in .bmp: not '{}'"};
inline constexpr MessageKind ImageUnwritten{"image-unwritten", Severity::Error, "Save Frame Error",
                                            "The picture cannot be written to '{}': {}"};

}  // namespace quorvelant::message
