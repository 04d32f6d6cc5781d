// A program chain: its head, its command table, and the two tables of its cells.
#pragma once

#include "disc/record.h"

namespace quorvelant {

// PGC_GI. Offsets of the tables after it count from the start of the program chain.
namespace pgc {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 236;

inline constexpr Reserved<2> Reserved00{"reserved", 0x00};
inline constexpr Field<Number, 1> Programs{"PGC_CNT.PG_Ns", 0x02};
inline constexpr Field<Number, 1> Cells{"PGC_CNT.C_Ns", 0x03};
inline constexpr Field<BcdTime, 4> PlaybackTime{"PGC_PB_TM", 0x04};
inline constexpr Field<Number, 4> UserOperations{"PGC_UOP_CTL", 0x08};
inline constexpr Field<Number, 2, 8> AudioControl{"PGC_AST_CTLT", 0x0C};
inline constexpr Field<Number, 4, 32> SubControl{"PGC_SPST_CTLT", 0x1C};
inline constexpr Field<Number, 2> Next{"NEXT_PGCN", 0x9C};
inline constexpr Field<Number, 2> Previous{"PREV_PGCN", 0x9E};
inline constexpr Field<Number, 2> GoUp{"GOUP_PGCN", 0xA0};
inline constexpr Field<Number, 1> PlaybackMode{"PGC_PB_MODE", 0xA2};
inline constexpr Field<Number, 1> StillTime{"PGC_STILL_TIME", 0xA3};  // seconds, 255 for ever
inline constexpr Field<Number, 4, 16> Palette{"PGC_SP_PLT", 0xA4};    // 0, Y, Cr, Cb
inline constexpr Field<ByteOffset, 2> Commands{"PGC_CMDT_SA", 0xE4};
inline constexpr Field<ByteOffset, 2> ProgramMap{"PGC_PGMAP_SA", 0xE6};
inline constexpr Field<ByteOffset, 2> CellPlayback{"C_PBIT_SA", 0xE8};
inline constexpr Field<ByteOffset, 2> CellPosition{"C_POSIT_SA", 0xEA};

inline constexpr auto Rows = Layout<Size>(
    Reserved00, Programs, Cells, PlaybackTime, UserOperations, AudioControl, SubControl, Next, Previous, GoUp,
    PlaybackMode, StillTime, Palette, Commands, ProgramMap, CellPlayback, CellPosition);

inline constexpr std::uint8_t StreamAvailable = 0x80;
inline constexpr std::uint16_t GoUpResumes = 0xFFFF;
}  // namespace pgc

// PGC_CMDTI: the head of the command table. Eight bytes a command follow.
namespace pgc_commands {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 8;

inline constexpr Field<Number, 2> PreCount{"PRE_CMD_Ns", 0};
inline constexpr Field<Number, 2> PostCount{"POST_CMD_Ns", 2};
inline constexpr Field<Number, 2> CellCount{"C_CMD_Ns", 4};
inline constexpr Field<ByteOffset, 2> Last{"PGC_CMDT_EA", 6};

inline constexpr auto Rows = Layout<Size>(PreCount, PostCount, CellCount, Last);
}  // namespace pgc_commands

// C_PBI: how a cell plays. Sectors count through the VOB set.
namespace cell_playback {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 24;

inline constexpr Field<Number, 1> Category{"C_CAT", 0};
inline constexpr Field<Number, 1> Restriction{"C_CAT", 1};
inline constexpr Field<Number, 1> StillTime{"C_CAT.STILL_TIME", 2};
inline constexpr Field<Number, 1> Command{"C_CAT.CMD_N", 3};
inline constexpr Field<BcdTime, 4> PlaybackTime{"C_PBTM", 4};
inline constexpr Field<Sectors, 4> FirstVobu{"C_FVOBU_SA", 8};
inline constexpr Field<Sectors, 4> FirstIlvuEnd{"C_FILVU_EA", 12};
inline constexpr Field<Sectors, 4> LastVobu{"C_LVOBU_SA", 16};
inline constexpr Field<Sectors, 4> LastSector{"C_LVOBU_EA", 20};

inline constexpr auto Rows = Layout<Size>(Category, Restriction, StillTime, Command, PlaybackTime, FirstVobu,
                                          FirstIlvuEnd, LastVobu, LastSector);

// Category: plays on without a break; the clock starts again at its head.
inline constexpr std::uint8_t Seamless = 0x08;
inline constexpr std::uint8_t ClockRestarts = 0x02;
}  // namespace cell_playback

// C_POSI: which cell of which VOB it is.
namespace cell_position {
using namespace disc;  // rows and units
inline constexpr std::size_t Size = 4;

inline constexpr Field<Number, 2> VobId{"C_VOB_IDN", 0};
inline constexpr Reserved<1> Reserved2{"reserved", 2};
inline constexpr Field<Number, 1> CellId{"C_IDN", 3};

inline constexpr auto Rows = Layout<Size>(VobId, Reserved2, CellId);
}  // namespace cell_position

}  // namespace quorvelant
