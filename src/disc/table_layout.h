// The small records of which the search and address tables consist.
#pragma once

#include "disc/record.h"

namespace quorvelant {

// What most tables begin with: the number of items, then the offset of the table's last byte.
namespace table_head {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 8;

inline constexpr Field<Number, 2> Count{"count", 0};
inline constexpr Reserved<2> Reserved2{"reserved", 2};
inline constexpr Field<ByteOffset, 4> Last{"end_address", 4};

inline constexpr auto Rows = Layout<Size>(Count, Reserved2, Last);
}  // namespace table_head

// TT_SRP: one title of the disc.
namespace title_entry {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 12;

inline constexpr Field<Number, 1> PlaybackType{"TT_PB_TY", 0};
inline constexpr Field<Number, 1> Angles{"AGL_Ns", 1};
inline constexpr Field<Number, 2> Chapters{"PTT_Ns", 2};
inline constexpr Field<Number, 2> ParentalMask{"TT_PTL_ID_FLD", 4};
inline constexpr Field<Number, 1> TitleSet{"VTSN", 6};
inline constexpr Field<Number, 1> TitleInSet{"VTS_TTN", 7};
inline constexpr Field<Sectors, 4> SetStart{"VTS_SA", 8};

inline constexpr auto Rows =
    Layout<Size>(PlaybackType, Angles, Chapters, ParentalMask, TitleSet, TitleInSet, SetStart);

// Playback type. The first is set for a title that is not one sequential PGC; the next four where
// commands lead away: in cell commands, pre or post commands, buttons, anywhere.
inline constexpr std::uint8_t NotSequential = 0x40;
inline constexpr std::uint8_t JumpsInCells = 0x20;
inline constexpr std::uint8_t JumpsInPrePost = 0x10;
inline constexpr std::uint8_t JumpsInButtons = 0x08;
inline constexpr std::uint8_t JumpsAnywhere = 0x04;
inline constexpr std::uint8_t NoPartPlay = 0x02;
inline constexpr std::uint8_t NoTimePlay = 0x01;
}  // namespace title_entry

// PGCI_SRP: one program chain of a PGC table.
namespace pgc_entry {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 8;

inline constexpr Field<Number, 1> Category{"PGC_CAT", 0};
inline constexpr Reserved<1> Reserved1{"reserved", 1};
inline constexpr Field<Number, 2> ParentalMask{"PTL_ID_FLD", 2};
inline constexpr Field<ByteOffset, 4> Start{"PGCI_SA", 4};

inline constexpr auto Rows = Layout<Size>(Category, Reserved1, ParentalMask, Start);

inline constexpr std::uint8_t EntryPgc = 0x80;
}  // namespace pgc_entry

// LU: one language unit of a menu table.
namespace language_unit {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 8;

inline constexpr Field<LanguageCode, 2> Language{"PGCI_LU_LCD", 0};
inline constexpr Reserved<1> Reserved2{"reserved", 2};
inline constexpr Field<Number, 1> Existence{"PGCI_LU_EXIST", 3};
inline constexpr Field<ByteOffset, 4> Start{"PGCI_LU_SA", 4};

inline constexpr auto Rows = Layout<Size>(Language, Reserved2, Existence, Start);
}  // namespace language_unit

// VTS_ATR: the attributes of one title set as the Video Manager repeats them.
namespace set_attributes {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 776;

inline constexpr Field<ByteOffset, 4> Last{"VTS_ATR_EA", 0};
inline constexpr Field<Number, 4> Category{"VTS_CAT", 4};
inline constexpr Field<Number, 2> MenuVideo{"VTSM_V_ATR", 8};
inline constexpr Reserved<1> Reserved10{"reserved", 10};
inline constexpr Field<Number, 1> MenuAudioCount{"VTSM_AST_Ns", 11};
inline constexpr Field<Number, 8> MenuAudio{"VTSM_AST_ATR", 12};
inline constexpr Reserved<73> Reserved20{"reserved", 20};
inline constexpr Field<Number, 1> MenuSubCount{"VTSM_SPST_Ns", 93};
inline constexpr Field<Number, 6> MenuSub{"VTSM_SPST_ATR", 94};
inline constexpr Reserved<164> Reserved100{"reserved", 100};
inline constexpr Field<Number, 2> TitleVideo{"VTSTT_V_ATR", 264};
inline constexpr Reserved<1> Reserved266{"reserved", 266};
inline constexpr Field<Number, 1> TitleAudioCount{"VTSTT_AST_Ns", 267};
inline constexpr Field<Number, 8, 8> TitleAudio{"VTSTT_AST_ATRT", 268};
inline constexpr Reserved<17> Reserved332{"reserved", 332};
inline constexpr Field<Number, 1> TitleSubCount{"VTSTT_SPST_Ns", 349};
inline constexpr Field<Number, 6, 32> TitleSub{"VTSTT_SPST_ATRT", 350};
inline constexpr Reserved<234> Reserved542{"reserved", 542};

inline constexpr auto Rows =
    Layout<Size>(Last, Category, MenuVideo, Reserved10, MenuAudioCount, MenuAudio, Reserved20, MenuSubCount,
                 MenuSub, Reserved100, TitleVideo, Reserved266, TitleAudioCount, TitleAudio, Reserved332,
                 TitleSubCount, TitleSub, Reserved542);
}  // namespace set_attributes

// C_ADT entry: where one cell of one VOB lies. Sectors count through the VOB set.
namespace cell_address {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 12;

inline constexpr Field<Number, 2> VobId{"VOB_IDN", 0};
inline constexpr Field<Number, 1> CellId{"C_IDN", 2};
inline constexpr Reserved<1> Reserved3{"reserved", 3};
inline constexpr Field<Sectors, 4> Start{"CP_SA", 4};
inline constexpr Field<Sectors, 4> Last{"CP_EA", 8};

inline constexpr auto Rows = Layout<Size>(VobId, CellId, Reserved3, Start, Last);
}  // namespace cell_address

// VTS_TMAP: the head of one time map; its entries follow.
namespace time_map {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 4;

inline constexpr Field<Number, 1> UnitSeconds{"TMU", 0};
inline constexpr Reserved<1> Reserved1{"reserved", 1};
inline constexpr Field<Number, 2> Entries{"MAP_EN_Ns", 2};

inline constexpr auto Rows = Layout<Size>(UnitSeconds, Reserved1, Entries);

// Of an entry: the next one, if any, lies in another VOB.
inline constexpr std::uint32_t LastOfVob = 0x80000000;
}  // namespace time_map

}  // namespace quorvelant
