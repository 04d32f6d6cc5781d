// The two sets of rules by which a disc is made.
#pragma once

namespace quorvelant {

// Some traditional numbers, which old scripts and their discs rely on, make discs that do not play as
// their author meant. Each such difference is named once here, with its reason, and each is consulted
// in exactly one place. `Classic` keeps every traditional number; `Players` does what players expect.
struct Rules {
  // vm. LinkPGCN and SetNVTMR: a PGC counts through the title set's whole table (a menu's within its
  // language unit), as players count; traditionally it starts again with each title.
  bool PgcCountsThroughTable = false;
  // vm. JumpSS and CallSS to a Video Manager PGC: counted within the language unit, as players do;
  // traditionally through all units.
  bool VmgPgcCountsWithinUnit = false;
  // vm. The resume cell of CallSS: counted within the PGC; traditionally within the program.
  bool ResumeCellCountsThroughPgc = false;
  // vm. A program without a live cell, which does not reach the disc, has no number; traditionally it is
  // counted, and commands lead a program too far.
  bool EmptyProgramsUncounted = false;

  // script. A stream that a title's custom policy does not name is available; traditionally it is not.
  bool UnnamedStreamsAvailable = false;
  // script. Blanks around a value of the vocabulary do not count; traditionally they make it another word.
  bool BlanksAroundWords = false;
  // script. A 16:9 track without a display mode is letterboxed on 4:3 screens; traditionally neither display
  // is permitted, and it shows squeezed.
  bool WideTakesLetterbox = false;
  // script. The origin of a subtitle places its bitmap; traditionally a display area after it does.
  bool OriginPlacesBitmaps = false;
  // script. All colours of a button scheme of the other dialect are its own, and its audio files are of the
  // kind that it says; traditionally the first quad of a scheme ends it, and names tell kinds.
  bool OtherDialectInFull = false;
  // script. Times of a drop-frame stream of NTSC are counted as a clock shows them, whatever says that it is
  // NTSC; traditionally only where the script of the other dialect does before the stream.
  bool DropFramesCounted = false;

  // analysis. The samples of a WAV file start after its "data" chunk header; traditionally at byte 44.
  bool WavWalksToData = false;

  // mux. One rounding of clock fractions for every pack; traditionally audio packs round up and come
  // up to 22 ticks of 27 MHz late.
  bool OneScrRounding = false;
  // mux. PCM of 20 and 24 bits grouped as the format demands; traditionally byte pairs are swapped,
  // which is noise.
  bool PcmGroupsSamples = false;
  // mux. A VOBU that waits for a chapter mark or takes in the end of the track stays as short as players
  // take it; traditionally it may grow longer.
  bool LimitVobuLength = false;
  // mux. The audio sync field of a VOBU too short for a pack of its own sound leads to one after it;
  // traditionally nowhere.
  bool AudioSyncLeavesVobu = false;
  // mux. Audio that is due goes out between the packs of a subpicture unit; traditionally it waits.
  bool AudioBetweenUnitPacks = false;
  // mux. A button set starts in the VOBU in which its time begins; traditionally in the first VOBU
  // that starts within it.
  bool ButtonsStartInTheirVobu = false;
  // mux. The first VOBU of a cell names its buttons as new, since a jump may lead there and a player would
  // have none; traditionally only the first of the set does.
  bool ButtonsAnewInEachCell = false;
  // mux. Buttons in a cell that holds by a still time never expire; traditionally only in still tracks.
  bool ButtonsOutlastStillTime = false;
  // mux. A navigation pack alone at a cell's end is followed by one sector of padding, since players
  // wait the cell's length once more otherwise.
  bool PadLoneNavPack = false;
  // mux. A rest of a slide's hold that is shorter than the least VOBU joins the step before it;
  // traditionally by the thresholds 18 and 22.
  bool JoinShortHoldRest = false;

  // mux. Sound that is overdue goes out before the next video pack; traditionally one pack does, and PCM
  // above 4.9 Mbit/s falls behind in every VOBU.
  bool OverdueAudioGoesFirst = false;
  // mux. The first sound of a stream goes out in time for its stamp, whatever its delay and its place among
  // the streams; traditionally at a fixed time, which is too late for the second stream with -60 ms.
  bool FirstAudioMeetsItsStamp = false;
  // mux. AC3 frames that were lost are counted, and bytes of no frame leave the player's buffer;
  // traditionally every loss moves the sound after it.
  bool CountLostFrames = false;
  // mux. A slide of one frame ends its VOBU like any other; traditionally the next slide follows in the same
  // one, and its picture ends early.
  bool ShortSlidesEndTheirVobu = false;

  // subpicture. Bitmaps show as painted (line parity by place in the window, padded rows, right
  // clipping); traditionally rows shear and lines change places for odd sizes.
  bool BitmapsAsPainted = false;
  // subpicture. The frames that a subtitle lasts count on the clock; traditionally 30 of NTSC are a second,
  // and one of over 33 seconds ends a frame early.
  bool StopDelayOnClock = false;
  // subpicture. A subtitle script may force a unit.
  bool ScriptForcesUnits = false;

  // subpicture. What is see-through in a bitmap is background; traditionally it is laid on white.
  bool SeeThroughIsBackground = false;
  // subpicture. A pixel of none of the four colours is what the nearest of them is; traditionally it is
  // background, and smoothed letters lose their fill.
  bool OddPixelsTakeNearest = false;

  // codec. Colours to planes round to the nearest step; traditionally they are cut.
  bool RoundColours = false;

  // ifo. Next, previous and go-up PGC numbers count through the set's table (menus: the unit);
  // traditionally within the title.
  bool PgcLinksThroughTable = false;
  // ifo. The pan-scan subpicture numbers of 16:9 domains are those of the PGC; traditionally 0.
  bool PanScanSubNumbers = false;
  // ifo. The tables count all eight channels of PCM; traditionally eight are written as one.
  bool EightChannelsCounted = false;
  // ifo. A cell that does not go on where the one before it ended (the first of each VOB, and after a
  // jump within one) is marked as a discontinuity and never seamless; traditionally the project's flag
  // stands alone.
  bool MarkClockRestart = false;
  // ifo. A PGC with subtitles or buttons and without a palette of the project has a legible one;
  // traditionally sixteen zeros, which show as dark green.
  bool LegiblePalette = false;
  // ifo. A source that no disc can carry (MPEG-1, 50 pictures a second, 480x576) is an error; traditionally
  // whatever can be multiplexed is taken.
  bool RefusesUnfitSources = false;

  // model. A domain carries every stream that has a number; traditionally two of sound and four subpicture
  // streams, by their order.
  bool AllStreamsMuxed = false;
  // author. The still time of a PGC holds the buttons and forced subtitles of its last cell, as a cell's
  // own does; traditionally they end.
  bool ChainStillHolds = false;

  // check. A disc that players refuse, or that plays something else than its project says, is an error;
  // traditionally it is made, with a warning.
  bool RefusesDeadDiscs = false;

  // script. Languages go by their names and by two or three letters; traditionally a stream's goes by its
  // name and a menu's by its name or its code as written.
  bool NamesLanguagesAnyWay = false;

  // edit. A PGC takes 128 commands in its three lists together, as the format does, and a set of buttons one
  // for each of 36; traditionally each list takes 24.
  bool CommandsToFormatLimit = false;
  // edit. A button set takes what a navigation pack has room for: 36, 18 or 12 by its display modes;
  // traditionally a third of it.
  bool FullButtonSets = false;
  // edit. Auto-route may link buttons by where they lie on the picture; traditionally in a ring.
  bool RoutesByGeometry = false;

  // app. A run goes by the settings; traditionally, by built-in ones that allow no region and keep
  // sequence end codes.
  bool GoesBySettings = false;

  // menu. A page waits for the viewer; traditionally it lasts ten seconds, and the disc ends by itself.
  bool MenusHold = false;
  // menu. On a disc of one film the title menu leads to its root menu, and so does the film's end;
  // traditionally the manager plays the film again.
  bool OneFilmHasTitleMenu = false;
  // menu. Next and previous page of the title choice turn the page; traditionally they lead to films by
  // their running number.
  bool TitlePagesTurn = false;
  // menu. "Subtitles Off" hides them; traditionally it chooses stream 63, for which players show the first.
  bool SubtitlesSwitchOff = false;
  // menu. What shows at the start is chosen when the disc is inserted; traditionally at each jump to the
  // title, which undoes what the viewer chose.
  bool StartChosenOnce = false;
  // menu. Menus have a palette of their own, in which marks show; traditionally that of the project's
  // "Default".
  bool MenusBringPalette = false;
  // menu. Every chapter has a thumbnail, from the first on; traditionally each shows the chapter after the
  // one it plays, and the first has none.
  bool ChaptersFromFirst = false;
  // menu. A page stands where there is something to choose: audio from two streams; traditionally from one.
  bool PagesForChoiceOnly = false;
  // menu. The files of pages are named by track; traditionally by the film's file, and equal names paint
  // over each other.
  bool PagesNamedByTrack = false;
  // menu. Without menus each film is a title that leads to the next; traditionally all chapters stand in
  // one.
  bool TitleForEachFilm = false;
  // menu. The end of a film resumes in its own title set; traditionally in the first.
  bool EndsInOwnSet = false;
  // menu. Marks have soft edges, by three steps of coverage; traditionally they are hard.
  bool SmoothMarks = false;
  // menu. Text shrinks until it fits inside the safe area, and areas of buttons are measured from it;
  // traditionally both stand at fixed places.
  bool PagesFitTheScreen = false;
  // menu. Menus of 16:9 films are 16:9, with buttons for letterbox; traditionally 4:3.
  bool WideMenus = false;
  // menu. Arrows go to the nearest button, numbers count through all pages, and the return, title and menu
  // keys lead somewhere; traditionally arrows go round in a ring, and the keys are dead.
  bool RemoteKeysLead = false;
  // menu. The wizard takes 8 streams of sound and 32 of subtitles a film; traditionally two of each.
  bool WizardTakesAllStreams = false;

  static const Rules Classic;
  static const Rules Players;
};

inline constexpr Rules Rules::Classic{};
inline constexpr Rules Rules::Players{.PgcCountsThroughTable = true,
                                      .VmgPgcCountsWithinUnit = true,
                                      .ResumeCellCountsThroughPgc = true,
                                      .EmptyProgramsUncounted = true,
                                      .UnnamedStreamsAvailable = true,
                                      .BlanksAroundWords = true,
                                      .WideTakesLetterbox = true,
                                      .OriginPlacesBitmaps = true,
                                      .OtherDialectInFull = true,
                                      .DropFramesCounted = true,
                                      .WavWalksToData = true,
                                      .OneScrRounding = true,
                                      .PcmGroupsSamples = true,
                                      .LimitVobuLength = true,
                                      .AudioSyncLeavesVobu = true,
                                      .AudioBetweenUnitPacks = true,
                                      .ButtonsStartInTheirVobu = true,
                                      .ButtonsAnewInEachCell = true,
                                      .ButtonsOutlastStillTime = true,
                                      .PadLoneNavPack = true,
                                      .JoinShortHoldRest = true,
                                      .OverdueAudioGoesFirst = true,
                                      .FirstAudioMeetsItsStamp = true,
                                      .CountLostFrames = true,
                                      .ShortSlidesEndTheirVobu = true,
                                      .BitmapsAsPainted = true,
                                      .StopDelayOnClock = true,
                                      .ScriptForcesUnits = true,
                                      .SeeThroughIsBackground = true,
                                      .OddPixelsTakeNearest = true,
                                      .RoundColours = true,
                                      .PgcLinksThroughTable = true,
                                      .PanScanSubNumbers = true,
                                      .EightChannelsCounted = true,
                                      .MarkClockRestart = true,
                                      .LegiblePalette = true,
                                      .RefusesUnfitSources = true,
                                      .AllStreamsMuxed = true,
                                      .ChainStillHolds = true,
                                      .RefusesDeadDiscs = true,
                                      .NamesLanguagesAnyWay = true,
                                      .CommandsToFormatLimit = true,
                                      .FullButtonSets = true,
                                      .RoutesByGeometry = true,
                                      .GoesBySettings = true,
                                      .MenusHold = true,
                                      .OneFilmHasTitleMenu = true,
                                      .TitlePagesTurn = true,
                                      .SubtitlesSwitchOff = true,
                                      .StartChosenOnce = true,
                                      .MenusBringPalette = true,
                                      .ChaptersFromFirst = true,
                                      .PagesForChoiceOnly = true,
                                      .PagesNamedByTrack = true,
                                      .TitleForEachFilm = true,
                                      .EndsInOwnSet = true,
                                      .SmoothMarks = true,
                                      .PagesFitTheScreen = true,
                                      .WideMenus = true,
                                      .RemoteKeysLead = true,
                                      .WizardTakesAllStreams = true};

}  // namespace quorvelant
