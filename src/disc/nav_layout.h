// The navigation pack as the table it is: one sector with two packets of private stream 2, the
// presentation control information (PCI) and the data search information (DSI).
#pragma once

#include <array>
#include <cstdint>

#include "base/bytes.h"
#include "disc/record.h"

namespace quorvelant::nav {

using namespace disc;  // rows and units

// Offsets count from the start of the sector. Times are 90 kHz ticks; addresses of search tables,
// references and sync fields are distances in sectors from this pack.
inline constexpr Field<Number, 1, 14> PackHeader{"pack_header", 0};
inline constexpr Field<Number, 1, 24> SystemHeader{"system_header", 14};

inline constexpr Field<Number, 4> PciStartCode{"pci_start_code", 38};
inline constexpr Field<Number, 2> PciLength{"pci_packet_length", 42};
inline constexpr Field<Number, 1> PciSubstream{"pci_substream_id", 44};
// PCI_GI
inline constexpr Field<Sectors, 4> PciLbn{"NV_PCK_LBN", 45};
inline constexpr Field<Number, 2> VobuCat{"VOBU_CAT", 49};
inline constexpr Reserved<2> PciReserved{"reserved", 51};
inline constexpr Field<Number, 4> VobuUopCtl{"VOBU_UOP_CTL", 53};
inline constexpr Field<Ticks, 4> VobuSPtm{"VOBU_S_PTM", 57};
inline constexpr Field<Ticks, 4> VobuEPtm{"VOBU_E_PTM", 61};
inline constexpr Field<Ticks, 4> VobuSeEPtm{"VOBU_SE_E_PTM", 65};
inline constexpr Field<BcdTime, 4> PciElapsed{"C_ELTM", 69};
inline constexpr Field<Number, 1, 32> VobuIsrc{"VOBU_ISRC", 73};
// NSML_AGLI
inline constexpr Field<Number, 4, 9> NonSeamlessAngles{"NSML_AGL_DSTA", 105};
// HLI: HL_GI
inline constexpr Field<Number, 2> HliSs{"HLI_SS", 141};
inline constexpr Field<Ticks, 4> HliSPtm{"HLI_S_PTM", 143};
inline constexpr Field<Ticks, 4> HliEPtm{"HLI_E_PTM", 147};
inline constexpr Field<Ticks, 4> BtnSlEPtm{"BTN_SL_E_PTM", 151};
inline constexpr Field<Number, 2> BtnMd{"BTN_MD", 155};
inline constexpr Field<Number, 1> BtnOfn{"BTN_OFN", 157};
inline constexpr Field<Number, 1> BtnNs{"BTN_NS", 158};
inline constexpr Field<Number, 1> NslBtnNs{"NSL_BTN_NS", 159};
inline constexpr Reserved<1> HliReserved{"reserved", 160};
inline constexpr Field<Number, 1> FoslBtn{"FOSL_BTN", 161};
inline constexpr Field<Number, 1> FoacBtn{"FOAC_BTN", 162};
// HLI: BTN_COLIT (per scheme selection and action, each four colours and four contrasts), BTNIT
inline constexpr Field<Number, 2, 12> ButtonColours{"BTN_COLI", 163};
inline constexpr Field<Number, 1, 36 * 18> Buttons{"BTNI", 187};
inline constexpr Field<Number, 1, 189> RecordingInfo{"RECI", 835};

inline constexpr Field<Number, 4> DsiStartCode{"dsi_start_code", 1024};
inline constexpr Field<Number, 2> DsiLength{"dsi_packet_length", 1028};
inline constexpr Field<Number, 1> DsiSubstream{"dsi_substream_id", 1030};
// DSI_GI
inline constexpr Field<Ticks, 4> NvPckScr{"NV_PCK_SCR", 1031};
inline constexpr Field<Sectors, 4> DsiLbn{"NV_PCK_LBN", 1035};
inline constexpr Field<Sectors, 4> VobuEa{"VOBU_EA", 1039};
inline constexpr Field<Sectors, 4, 3> ReferenceEa{"VOBU_REF_EA", 1043};
inline constexpr Field<Number, 2> VobIdn{"VOBU_VOB_IDN", 1055};
inline constexpr Reserved<1> DsiReserved{"reserved", 1057};
inline constexpr Field<Number, 1> CellIdn{"VOBU_C_IDN", 1058};
inline constexpr Field<BcdTime, 4> DsiElapsed{"C_ELTM", 1059};
// SML_PBI
inline constexpr Field<Number, 2> VobuSmlCat{"VOBU_SML_CAT", 1063};
inline constexpr Field<Sectors, 4> IlvuEa{"ILVU_EA", 1065};
inline constexpr Field<Sectors, 4> NextIlvuSa{"NXT_ILVU_SA", 1069};
inline constexpr Field<Number, 2> NextIlvuSize{"NXT_ILVU_SZ", 1073};
inline constexpr Field<Ticks, 4> VobVSPtm{"VOB_V_S_S_PTM", 1075};
inline constexpr Field<Ticks, 4> VobVEPtm{"VOB_V_E_E_PTM", 1079};
inline constexpr Field<Number, 4, 32> AudioGaps{"VOB_A_STP_PTM_GAP_LEN", 1083};
// SML_AGLI
inline constexpr Field<Number, 6, 9> SeamlessAngles{"SML_AGL_DSTA", 1211};
// VOBU_SRI
inline constexpr Field<Number, 4> NextVideo{"NEXT_VIDEO", 1265};
inline constexpr Field<Number, 4, 19> ForwardJumps{"FWDA", 1269};  // 120 seconds first
inline constexpr Field<Number, 4> NextVobu{"NEXT_VOBU", 1345};
inline constexpr Field<Number, 4> PreviousVobu{"PREV_VOBU", 1349};
inline constexpr Field<Number, 4, 19> BackwardJumps{"BWDA", 1353};  // half a second first
inline constexpr Field<Number, 4> PreviousVideo{"PREV_VIDEO", 1429};
// SYNCI
inline constexpr Field<Number, 2, 8> AudioSync{"A_SYNCA", 1433};
inline constexpr Field<Number, 4, 32> SubpictureSync{"SP_SYNCA", 1449};
inline constexpr Reserved<471> DsiRest{"reserved", 1577};

inline constexpr auto Rows = Layout<SectorBytes>(
    PackHeader, SystemHeader, PciStartCode, PciLength, PciSubstream, PciLbn, VobuCat, PciReserved, VobuUopCtl,
    VobuSPtm, VobuEPtm, VobuSeEPtm, PciElapsed, VobuIsrc, NonSeamlessAngles, HliSs, HliSPtm, HliEPtm,
    BtnSlEPtm, BtnMd, BtnOfn, BtnNs, NslBtnNs, HliReserved, FoslBtn, FoacBtn, ButtonColours, Buttons,
    RecordingInfo, DsiStartCode, DsiLength, DsiSubstream, NvPckScr, DsiLbn, VobuEa, ReferenceEa, VobIdn,
    DsiReserved, CellIdn, DsiElapsed, VobuSmlCat, IlvuEa, NextIlvuSa, NextIlvuSize, VobVSPtm, VobVEPtm,
    AudioGaps, SeamlessAngles, NextVideo, ForwardJumps, NextVobu, PreviousVobu, BackwardJumps, PreviousVideo,
    AudioSync, SubpictureSync, DsiRest);

// The system header of every navigation pack (ISO/IEC 13818-1 2.5.3.5).
inline constexpr std::array<std::uint8_t, 24> SystemHeaderBytes{
    0x00, 0x00, 0x01, 0xBB,  // system_header_start_code
    0x00, 0x12,              // header_length: 18
    0x80, 0xC4, 0xE1,        // rate_bound 25200 with its markers
    0x00,                    // audio_bound 0, fixed_flag 0, CSPS_flag 0
    0xE1,                    // audio and video lock, marker, video_bound 1
    0x7F,                    // packet_rate_restriction 0, reserved
    0xB9, 0xE0, 0xE8,        // all video streams: buffer of 232 KB
    0xB8, 0xC0, 0x20,        // all audio streams: buffer of 32 times 128 bytes
    0xBD, 0xE0, 0x3A,        // private stream 1: buffer of 58 KB
    0xBF, 0xE0, 0x02,        // private stream 2: buffer of 2 KB
};

inline constexpr std::uint32_t PrivateStream2 = 0x000001BF;
inline constexpr std::uint16_t PciPacketBytes = 980;  // after the length field
inline constexpr std::uint16_t DsiPacketBytes = 1018;
inline constexpr std::uint8_t PciId = 0;
inline constexpr std::uint8_t DsiId = 1;

// Marks of the search tables.
inline constexpr std::uint32_t HasVideoBit = 0x80000000;  // the VOBU found has video
inline constexpr std::uint32_t VideoBetweenBit =
    0x40000000;  // one with video lies between this and the row before
inline constexpr std::uint32_t NoVobu = 0x3FFFFFFF;
inline constexpr std::uint32_t NoVideoVobu = 0xBFFFFFFF;
// Mark of the audio sync fields.
inline constexpr std::uint16_t NoAudioPack = 0x3FFF;

}  // namespace quorvelant::nav
