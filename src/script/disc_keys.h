// The keys of the disc's structure, each table in the order in which its item is written.
#pragma once

#include <array>

#include "script/key.h"
#include "script/special_keys.h"

namespace quorvelant {

inline constexpr Switch LetterBoxWords{.On = "LetterBoxed", .Off = {}, .AlsoOn = {}};
inline constexpr Switch FilmWords{.On = "Film Mode", .Off = {}, .AlsoOn = "film"};
inline constexpr Switch PolicyWords{.On = "Custom", .Off = "Maximum", .AlsoOn = {}};
inline constexpr Switch StreamWords{.On = "Yes", .Off = "No", .AlsoOn = {}, .Otherwise = true};
inline constexpr Switch AccessWords{.On = "Prohibited", .Off = "Permitted", .AlsoOn = "yes|true|1"};
inline constexpr Switch SeamlessWords{.On = "Seamless", .Off = "NotSeamless", .AlsoOn = "1"};

inline constexpr std::array SettingKeys{
    Key{"DefaultFolder|DVD Root Directory", &Project::DestinationFolder}.ReadBy(ReadFolder),
};

// Written after the braces of an entry: they apply to the one just closed.
inline constexpr std::array EntryKeys{
    Key{"Name", &VTS_P::VTSName, Takes::Anything, Written::Never}.In(Segment::Entry),
    Key{"Menu Source Picture LetterBoxed", &VTS_P::MenuLetterBoxed, Takes::Anything, Written::IfOn}.Switched(
        LetterBoxWords),
    Key{"Title Source Picture LetterBoxed|Source Picture LetterBoxed", &VTS_P::TitleLetterBoxed,
        Takes::Anything, Written::IfOn}
        .Switched(LetterBoxWords),
    Key{"Film Camera Mode|Camera Mode", &VTS_P::TitleCameraMode, Takes::Anything, Written::IfOn}.Switched(
        FilmWords),
};

inline constexpr std::array LanguageKeys{
    Key{"LU|Language Name", &Lang_P::Language, Takes::LanguageCode},
};

inline constexpr std::array TitleKeys{
    Key{"Name", &Title_P::TitleName}.In(Segment::Title),
};
inline constexpr std::array AudioPolicyKeys{
    Key{"Audio Custom Policy|Audio Availability Flag Policy", &Title_P::Custom}.Switched(PolicyWords),
    Key{"Audio Stream *", &Title_P::AudioAssignments, Takes::YesNo}.Switched(StreamWords),
};
inline constexpr std::array SubPolicyKeys{
    Key{"SubPicture Custom Policy|SubPicture Availability Flag Policy", &Title_P::SubCustom}.Switched(
        PolicyWords),
    Key{"SubPicture Stream *", &Title_P::SubAssignments, Takes::YesNo}.Switched(StreamWords),
};

inline constexpr std::array PgcKeys{
    Key{"Name", &PGC_P::PGCName}.In(Segment::Pgc),
    Key{"PaletteUsed|Palette", &PGC_P::PaletteName},
    Key{"NextPGC|Next PGC", &PGC_P::NextPGC, Takes::PgcLink},
    Key{"PrevPGC|Prev PGC", &PGC_P::PrevPGC, Takes::PgcLink, Written::OfTitles},
    Key{"GoUpPGC|GoUp PGC", &PGC_P::GoUpPGC, Takes::PgcLink},
    Key{"MenuType", &PGC_P::MenuType, Takes::MenuType, Written::OfMenus},
    Key{"Playback Mode|PG Playback Mode", &PGC_P::PlayBackMode, Takes::PlayBack},
    Key{"Repeat|Repeat Times", &PGC_P::Repeat, Takes::Number},
    Key{"StillTime|PGC Still Time", &PGC_P::StillTime, Takes::Number},
};
// A menu writes the first entry of its maps alone.
inline constexpr std::array AudioMapKeys{
    Key{"Audio Stream * Decodes|Decoding Stream Number #", &PGC_P::AudioAssignments, Takes::Number},
};
inline constexpr std::array SubMapKeys{
    Key{"SubPicture Track for 4:3 Decodes #|Decoding Stream Number for 4:3 #", &PGC_P::NormalAssignments,
        Takes::Number},
    Key{"SubPicture Track for PanScan Decodes #|Decoding Stream Number for Pan-Scan #",
        &PGC_P::PanAssignments, Takes::Number},
    Key{"SubPicture Track for Wide Decodes #|Decoding Stream Number for Wide #", &PGC_P::WideAssignments,
        Takes::Number},
    Key{"SubPicture Track for Letter Decodes #|Decoding Stream Number for LetterBox #",
        &PGC_P::LetterAssignments, Takes::Number},
};

// The other dialect's word for a stream in all displays.
inline constexpr std::array WholeSubMapKeys{
    Key{"SubPicture Stream * Decodes", &PGC_P::NormalAssignments, Takes::Number, Written::Never}.ReadBy(
        ReadSubDecodes),
};

inline constexpr std::array ProgramKeys{
    Key{"Name", &PG_P::PGName}.In(Segment::Program),
};

inline constexpr std::array CellKeys{
    Key{"Name", &Cell_P::CellName}.In(Segment::Cell),
    Key{"UsingScene|Linked Scene", &Cell_P::SceneUsed},
    Key{"CellStillTime|Cell Still Time", &Cell_P::StillTime, Takes::Number},
    Key{"Cell Command", &Cell_P::CellCommand, Takes::Number},
    Key{"Restrict Cell Access|Access Restriction Flag", &Cell_P::RestrictedAccess}.Switched(AccessWords),
    Key{"Seamless Flag", &Cell_P::Seamless}.Switched(SeamlessWords),
};

inline constexpr std::array PaletteKeys{
    Key{"Name", &Palette_P::Key}.In(Segment::Palette),
    Key{"*|Color *", &Palette_P::PaletteColors, Takes::Rgb},
};

// Calls `visit` with each table.
template <class Visit>
void ForEachDiscTable(const Visit& visit) {
  visit(SettingKeys);
  visit(EntryKeys);
  visit(LanguageKeys);
  visit(TitleKeys);
  visit(AudioPolicyKeys);
  visit(SubPolicyKeys);
  visit(PgcKeys);
  visit(AudioMapKeys);
  visit(SubMapKeys);
  visit(WholeSubMapKeys);
  visit(ProgramKeys);
  visit(CellKeys);
  visit(PaletteKeys);
}

}  // namespace quorvelant
