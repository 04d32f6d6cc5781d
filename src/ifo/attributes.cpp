#include "ifo/attributes.h"

#include <algorithm>
#include <array>

#include "model/cls_dvd.h"

namespace quorvelant {
namespace {

// Codes of the subpicture extensions, by their row in the vocabulary.
constexpr std::array<std::uint8_t, CLsDVD::SubExtensionCount> SubExtensionCodes{0, 1, 2,  3,  5, 6,
                                                                                7, 9, 13, 14, 15};

// The two letters of a language of the vocabulary, 0 where it has none.
std::uint64_t LanguageLetters(std::string_view language) {
  return disc::LanguageCodeOf(CLsDVD::LangNameToLangCode(language)).Value;
}

std::uint64_t PictureSizeBits(std::string_view resolution) {
  constexpr std::array<std::array<std::string_view, 2>, 4> Sizes{
      {{"720x480", "720x576"}, {"704x480", "704x576"}, {"352x480", "352x576"}, {"352x240", "352x288"}}};
  for (std::size_t i = 0; i < Sizes.size(); ++i) {
    if (std::ranges::find(Sizes[i], resolution) != Sizes[i].end()) {
      return i;
    }
  }
  return 0;
}

std::uint64_t CodecBits(std::string_view format) {
  return format == "DTS" ? 0b110 : format == "PCM" ? 0b100 : 0b000;
}

std::uint64_t QuantisationBits(std::int32_t bits) {
  return bits == 16 ? 0b00 : bits == 20 ? 0b01 : bits == 24 ? 0b10 : 0b11;  // "11" stands for none, as in AC3
}

// To the nearest whole, ties to even: black is then 16, 128, 128.
std::int32_t RoundThousandths(std::int32_t value) {
  const std::int32_t whole = value / 1000;
  const std::int32_t rest = value % 1000;
  return rest > 500 || (rest == 500 && whole % 2 != 0) ? whole + 1 : whole;
}

}  // namespace

disc::Number VideoAttributes(const VTS_P& entry, Domain domain, std::string_view projectStandard) {
  const bool title = domain == Domain::Title;
  const VideoInfo_P& info = title ? entry.VTSTitleInfo : entry.VTSMenuInfo;
  if (!info.Set) {
    return {projectStandard == "NTSC" ? 0x4300U : 0x5300U};
  }
  const bool pal = info.Standard == "PAL";
  const bool wide = info.Aspect == "16:9" || (title && info.Pan);
  const bool letterboxed = title ? entry.TitleLetterBoxed : entry.MenuLetterBoxed;
  const auto bit = [](bool value, unsigned at) { return value ? std::uint64_t{1} << at : 0; };
  return {bit(info.Coding != "MPEG1", 14) | bit(pal, 12) |  // coding, standard
          (wide ? 0b11U : 0b00U) << 10 |                    // aspect
          bit(!info.Pan, 9) | bit(!info.Letter, 8) |        // displays that are not permitted
          PictureSizeBits(info.Resolution) << 3 |           // picture size
          bit(letterboxed, 2) | bit(title && pal && entry.TitleCameraMode, 0)};  // source, film mode
}

disc::Number AudioAttributes(const AudioMapRow& row, Domain domain, const Rules& rules) {
  const bool title = domain == Domain::Title;
  const bool language = title && !row.Language.empty();
  const std::int32_t channels = row.ChannelCount - 1;
  const std::int32_t mostBits = rules.EightChannelsCounted ? 7 : 6;
  const std::uint64_t channelBits =
      channels >= 1 && channels <= mostBits ? static_cast<std::uint64_t>(channels) : 0;
  const std::uint64_t extension = title ? CLsDVD::ExtensionIndex(row.Extension) : 0;  // the row is the code
  return {CodecBits(row.Format) << 61 | (language ? 0b00100ULL : 0) << 56 |  // codec, language follows
          QuantisationBits(row.Quantisation) << 54 | (row.SampleRate == 48 ? 0ULL : 0b010ULL) << 51 |
          channelBits << 48 | (language ? LanguageLetters(row.Language) : 0) << 32 | extension << 16};
}

disc::Number SubpictureAttributes(const SubMapRow& row) {
  return {std::uint64_t{1} << 40 | LanguageLetters(row.Language) << 16 |
          SubExtensionCodes.at(CLsDVD::SubExtensionIndex(row.Extension))};
}

disc::Number PaletteEntry(Color color) {
  const auto red = static_cast<std::int32_t>(color & 0xFF);
  const auto green = static_cast<std::int32_t>(color >> 8 & 0xFF);
  const auto blue = static_cast<std::int32_t>(color >> 16 & 0xFF);
  const std::int32_t y = std::min(RoundThousandths(257 * red + 504 * green + 98 * blue + 16500), 235);
  const std::int32_t cr = RoundThousandths(439 * red - 368 * green - 71 * blue + 128500);
  const std::int32_t cb = RoundThousandths(439 * blue - 291 * green - 148 * red + 128500);
  return {static_cast<std::uint64_t>(y << 16 | cr << 8 | cb)};
}

}  // namespace quorvelant
