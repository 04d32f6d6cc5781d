// VTSI_MAT: the head of VTS_nn_0.IFO.
#pragma once

#include "disc/record.h"

namespace quorvelant::vtsi {

using namespace disc;  // rows and units

inline constexpr std::size_t Size = 2048;

inline constexpr Field<Number, 1, 12> Id{"VTS_ID", 0x00};  // "DVDVIDEO-VTS"
inline constexpr Field<Sectors, 4> SetLast{"VTS_EA", 0x0C};
inline constexpr Reserved<12> Reserved10{"reserved", 0x10};
inline constexpr Field<Sectors, 4> IfoLast{"VTSI_EA", 0x1C};
inline constexpr Field<Number, 2> Version{"VERN", 0x20};
inline constexpr Field<Number, 4> Category{"VTS_CAT", 0x22};
inline constexpr Reserved<90> Reserved26{"reserved", 0x26};
inline constexpr Field<ByteOffset, 4> MatLast{"VTSI_MAT_EA", 0x80};
inline constexpr Reserved<60> Reserved84{"reserved", 0x84};
inline constexpr Field<Sectors, 4> MenuVobs{"VTSM_VOBS_SA", 0xC0};
inline constexpr Field<Sectors, 4> TitleVobs{"VTSTT_VOBS_SA", 0xC4};
inline constexpr Field<Sectors, 4> Chapters{"VTS_PTT_SRPT_SA", 0xC8};
inline constexpr Field<Sectors, 4> TitlePgcs{"VTS_PGCIT_SA", 0xCC};
inline constexpr Field<Sectors, 4> MenuUnits{"VTSM_PGCI_UT_SA", 0xD0};
inline constexpr Field<Sectors, 4> TimeMaps{"VTS_TMAPT_SA", 0xD4};
inline constexpr Field<Sectors, 4> MenuCells{"VTSM_C_ADT_SA", 0xD8};
inline constexpr Field<Sectors, 4> MenuVobus{"VTSM_VOBU_ADMAP_SA", 0xDC};
inline constexpr Field<Sectors, 4> TitleCells{"VTS_C_ADT_SA", 0xE0};
inline constexpr Field<Sectors, 4> TitleVobus{"VTS_VOBU_ADMAP_SA", 0xE4};
inline constexpr Reserved<24> ReservedE8{"reserved", 0xE8};
inline constexpr Field<Number, 2> MenuVideo{"VTSM_V_ATR", 0x100};
inline constexpr Reserved<1> Reserved102{"reserved", 0x102};
inline constexpr Field<Number, 1> MenuAudioCount{"VTSM_AST_Ns", 0x103};
inline constexpr Field<Number, 8> MenuAudio{"VTSM_AST_ATR", 0x104};
inline constexpr Reserved<73> Reserved10C{"reserved", 0x10C};
inline constexpr Field<Number, 1> MenuSubCount{"VTSM_SPST_Ns", 0x155};
inline constexpr Field<Number, 6> MenuSub{"VTSM_SPST_ATR", 0x156};
inline constexpr Reserved<164> Reserved15C{"reserved", 0x15C};
inline constexpr Field<Number, 2> TitleVideo{"VTS_V_ATR", 0x200};
inline constexpr Reserved<1> Reserved202{"reserved", 0x202};
inline constexpr Field<Number, 1> TitleAudioCount{"VTS_AST_Ns", 0x203};
inline constexpr Field<Number, 8, 8> TitleAudio{"VTS_AST_ATRT", 0x204};
inline constexpr Reserved<17> Reserved244{"reserved", 0x244};
inline constexpr Field<Number, 1> TitleSubCount{"VTS_SPST_Ns", 0x255};
inline constexpr Field<Number, 6, 32> TitleSub{"VTS_SPST_ATRT", 0x256};
inline constexpr Reserved<2> Reserved316{"reserved", 0x316};
inline constexpr Field<Number, 8, 24> MultiChannel{"VTS_MU_AST_ATRT", 0x318};
inline constexpr Reserved<1064> Reserved3D8{"reserved", 0x3D8};

inline constexpr auto Rows =
    Layout<Size>(Id, SetLast, Reserved10, IfoLast, Version, Category, Reserved26, MatLast, Reserved84,
                 MenuVobs, TitleVobs, Chapters, TitlePgcs, MenuUnits, TimeMaps, MenuCells, MenuVobus,
                 TitleCells, TitleVobus, ReservedE8, MenuVideo, Reserved102, MenuAudioCount, MenuAudio,
                 Reserved10C, MenuSubCount, MenuSub, Reserved15C, TitleVideo, Reserved202, TitleAudioCount,
                 TitleAudio, Reserved244, TitleSubCount, TitleSub, Reserved316, MultiChannel, Reserved3D8);

}  // namespace quorvelant::vtsi
