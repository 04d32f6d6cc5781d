// VMGI_MAT: the head of VIDEO_TS.IFO. The first-play PGC follows at once.
#pragma once

#include "disc/record.h"

namespace quorvelant::vmgi {

using namespace disc;  // rows and units

inline constexpr std::size_t Size = 1024;

inline constexpr Field<Number, 1, 12> Id{"VMG_ID", 0x00};  // "DVDVIDEO-VMG"
inline constexpr Field<Sectors, 4> SetLast{"VMG_EA", 0x0C};
inline constexpr Reserved<12> Reserved10{"reserved", 0x10};
inline constexpr Field<Sectors, 4> IfoLast{"VMGI_EA", 0x1C};
inline constexpr Field<Number, 2> Version{"VERN", 0x20};
inline constexpr Reserved<1> Reserved22{"reserved", 0x22};
inline constexpr Field<Number, 1> RegionMask{"VMG_CAT", 0x23};  // a set bit forbids the region
inline constexpr Reserved<2> Reserved24{"reserved", 0x24};
inline constexpr Field<Number, 2> Volumes{"VLMS_ID", 0x26};
inline constexpr Field<Number, 2> VolumeNumber{"VLMS_ID", 0x28};
inline constexpr Field<Number, 1> Side{"VLMS_ID", 0x2A};
inline constexpr Reserved<19> Reserved2B{"reserved", 0x2B};
inline constexpr Field<Number, 2> TitleSets{"VTS_Ns", 0x3E};
inline constexpr Field<Number, 1, 32> Provider{"PVR_ID", 0x40};
inline constexpr Field<Number, 8> PosCode{"VMG_POS_CD", 0x60};
inline constexpr Reserved<24> Reserved68{"reserved", 0x68};
inline constexpr Field<ByteOffset, 4> MatLast{"VMGI_MAT_EA", 0x80};
inline constexpr Field<ByteOffset, 4> FirstPlayPgc{"FP_PGCI_SA", 0x84};
inline constexpr Reserved<56> Reserved88{"reserved", 0x88};
inline constexpr Field<Sectors, 4> MenuVobs{"VMGM_VOBS_SA", 0xC0};
inline constexpr Field<Sectors, 4> TitleSearch{"TT_SRPT_SA", 0xC4};
inline constexpr Field<Sectors, 4> MenuUnits{"VMGM_PGCI_UT_SA", 0xC8};
inline constexpr Field<Sectors, 4> Parental{"PTL_MAIT_SA", 0xCC};
inline constexpr Field<Sectors, 4> SetAttributes{"VTS_ATRT_SA", 0xD0};
inline constexpr Field<Sectors, 4> TextData{"TXTDT_MG_SA", 0xD4};
inline constexpr Field<Sectors, 4> MenuCells{"VMGM_C_ADT_SA", 0xD8};
inline constexpr Field<Sectors, 4> MenuVobus{"VMGM_VOBU_ADMAP_SA", 0xDC};
inline constexpr Reserved<32> ReservedE0{"reserved", 0xE0};
inline constexpr Field<Number, 2> MenuVideo{"VMGM_V_ATR", 0x100};
inline constexpr Reserved<1> Reserved102{"reserved", 0x102};
inline constexpr Field<Number, 1> MenuAudioCount{"VMGM_AST_Ns", 0x103};
inline constexpr Field<Number, 8> MenuAudio{"VMGM_AST_ATR", 0x104};
inline constexpr Reserved<73> Reserved10C{"reserved", 0x10C};
inline constexpr Field<Number, 1> MenuSubCount{"VMGM_SPST_Ns", 0x155};
inline constexpr Field<Number, 6> MenuSub{"VMGM_SPST_ATR", 0x156};
inline constexpr Reserved<676> Reserved15C{"reserved", 0x15C};

inline constexpr auto Rows = Layout<Size>(
    Id, SetLast, Reserved10, IfoLast, Version, Reserved22, RegionMask, Reserved24, Volumes, VolumeNumber,
    Side, Reserved2B, TitleSets, Provider, PosCode, Reserved68, MatLast, FirstPlayPgc, Reserved88, MenuVobs,
    TitleSearch, MenuUnits, Parental, SetAttributes, TextData, MenuCells, MenuVobus, ReservedE0, MenuVideo,
    Reserved102, MenuAudioCount, MenuAudio, Reserved10C, MenuSubCount, MenuSub, Reserved15C);

}  // namespace quorvelant::vmgi
