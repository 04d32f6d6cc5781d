#include "subtitle/subtitle_script.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/text.h"
#include "base/timecode.h"

namespace quorvelant {

namespace {

constexpr std::int64_t RippedFramesEarly = 7;
constexpr std::int32_t LeastY1 = 2;
constexpr std::size_t MostPaletteColors = 16;
constexpr std::size_t MostLinesPassedOver = 100;

// The first four fields between tabs that are not empty.
std::vector<std::string_view> FilledFields(std::string_view line) {
  std::vector<std::string_view> fields;
  while (!line.empty() && fields.size() < 4) {
    const std::size_t end = std::min(line.find('\t'), line.size());
    if (const std::string_view field = Trim(line.substr(0, end)); !field.empty()) {
      fields.push_back(field);
    }
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  return fields;
}

// The first `Count` numbers after the first bracket, 0 where there are fewer; nothing without a bracket.
template <std::size_t Count>
std::optional<std::array<std::int32_t, Count>> ValuesOf(std::string_view line, char separator = ' ') {
  const std::size_t bracket = line.find('(');
  if (bracket == std::string_view::npos) {
    return std::nullopt;
  }
  std::array<std::int32_t, Count> values{};
  std::string_view rest = line.substr(bracket + 1);
  for (std::int32_t& value : values) {
    rest.remove_prefix(std::min(rest.find_first_not_of("( \t"), rest.size()));
    const std::size_t end = std::min(rest.find(separator), rest.size());
    value = LeadingNumber(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return values;
}

Color ColorOf(const std::array<std::int32_t, 3>& parts) {
  const auto byte = [](std::int32_t value) { return static_cast<Color>(std::clamp(value, 0, 255)); };
  return byte(parts[0]) | byte(parts[1]) << 8U | byte(parts[2]) << 16U;
}

bool LooksLikeTime(std::string_view field) {
  return !field.empty() && (field[0] == '-' || (field[0] >= '0' && field[0] <= '9'));
}

// Reads a script line by line; each line may change the values that the entries after it take.
class ScriptReader {
 public:
  explicit ScriptReader(const SubtitleScriptOptions& options)
      : options_(&options), ripped_(options.SubRipMode) {}

  void Line(std::string_view line, std::size_t number) {
    if (entriesStarted_ && ReadEntry(line)) {
      return;
    }
    const std::string lower = Lower(line);
    ripped_ = ripped_ || (Contains(lower, "generator") && Contains(lower, "subrip"));
    bool known = ReadFolder(line);
    known = ReadValues(lower) || known;
    known = ReadConversionColor(line) || known;
    known = ReadPalette(line, lower) || known;
    known = ReadDisplayStart(lower) || known;
    if (Contains(Upper(line), "SP_NUMBER")) {
      entriesStarted_ = true;
    } else if (entriesStarted_ && !known && !Trim(Replace(line, "\t", " ")).empty() &&
               script_.LinesPassedOver.size() < MostLinesPassedOver) {
      script_.LinesPassedOver.push_back(number);
    }
  }

  SubtitleScript Release() { return std::move(script_); }

 private:
  bool ReadFolder(std::string_view line) {
    const auto fields = FilledFields(line);
    if (!Contains(line, "Directory") || fields.size() < 2) {
      return false;
    }
    folder_ = fields[1];
    return true;
  }

  // The place, the palette indexes and the contrasts.
  bool ReadValues(const std::string& lower) {
    bool read = Contains(lower, "pixel_area");
    const auto values = ValuesOf<4>(lower);
    if (!values) {
      return read;
    }
    if (Contains(lower, "display_area")) {
      area_ = *values;
      read = true;
    }
    if (Contains(lower, "color")) {
      // Scripts count from 1, and 0 is the same as 1; ripped ones count from 0.
      std::ranges::transform(*values, colors_.begin(),
                             [this](std::int32_t value) { return ripped_ ? value : std::max(value, 1) - 1; });
      read = true;
    }
    if (Contains(lower, "contrast")) {
      contrasts_ = *values;
      read = true;
    }
    return read;
  }

  bool ReadConversionColor(std::string_view line) {
    const auto parts = ValuesOf<3>(line);
    const std::string word = Upper(line.substr(0, 2));
    if (!parts) {
      return false;
    }
    if (word == "PA" || word == "P ") {
      pattern_ = ColorOf(*parts);
    } else if (word == "BG") {
      background_ = ColorOf(*parts);
    } else if (word == "E2") {
      emphasis2_ = ColorOf(*parts);
    } else if (word == "E1") {
      emphasis1_ = ColorOf(*parts);
    } else {
      return false;
    }
    return true;
  }

  bool ReadPalette(std::string_view line, const std::string& lower) {
    const bool heads = Contains(lower, "palette entries");
    script_.HasPalette = script_.HasPalette || heads;
    const auto parts = Contains(line, "RGB") ? ValuesOf<3>(line, ',') : std::nullopt;
    if (!parts) {
      return heads;
    }
    if (script_.PaletteColors.size() < MostPaletteColors) {
      script_.PaletteColors.push_back(ColorOf(*parts));
    }
    return true;
  }

  bool ReadDisplayStart(const std::string& lower) {
    constexpr std::string_view Word = "display_start";
    const std::size_t at = lower.find(Word);
    if (at == std::string::npos) {
      return false;
    }
    const std::string rest = Replace(lower.substr(at + Word.size()), "\t", " ");
    forced_ = options_->UnitsMayBeForced && Trim(rest) == "forced";
    return true;
  }

  // A line of the list: number, start, end and file name.
  bool ReadEntry(std::string_view line) {
    const auto fields = FilledFields(line);
    if (fields.size() < 4 || !LooksLikeTime(fields[1]) || !LooksLikeTime(fields[2])) {
      return false;
    }
    area_[1] = std::max(area_[1], LeastY1);
    SubPicturePlay& entry = script_.Entries.emplace_back();
    entry.SPNumber = fields[0];
    const std::int64_t start = FrameOf(fields[1]);
    const std::int64_t end = FrameOf(fields[2]);
    entry.Start = FramesToTimecode(start, options_->FramesPerSecond);
    entry.End = FramesToTimecode(end, options_->FramesPerSecond);
    entry.Duration = FramesToTimecode(end - start, options_->FramesPerSecond);
    entry.File = folder_.empty() ? std::string() : folder_ + "\\";
    entry.File += fields[3];
    entry.ColorE2 = colors_[0];
    entry.ColorE1 = colors_[1];
    entry.ColorP = colors_[2];
    entry.ColorBg = colors_[3];
    entry.ContrastE2 = contrasts_[0];
    entry.ContrastE1 = contrasts_[1];
    entry.ContrastP = contrasts_[2];
    entry.ContrastBg = contrasts_[3];
    entry.ConversionBg = background_;
    entry.ConversionP = pattern_;
    entry.ConversionE2 = emphasis2_;
    entry.ConversionE1 = emphasis1_;
    entry.X1 = area_[0];
    entry.Y1 = area_[1];
    entry.X2 = area_[2];
    entry.Y2 = area_[3];
    entry.Forced = forced_;
    return true;
  }

  // Times below zero are zero.
  std::int64_t FrameOf(std::string_view field) const {
    if (field.starts_with('-')) {
      return 0;
    }
    const std::int64_t frame = TimecodeToFrames(field, options_->FramesPerSecond);
    return std::max<std::int64_t>(frame - (ripped_ ? RippedFramesEarly : 0), 0);
  }

  const SubtitleScriptOptions* options_;
  SubtitleScript script_;
  bool ripped_;
  bool entriesStarted_ = false;
  bool forced_ = false;
  std::string folder_;
  std::array<std::int32_t, 4> area_{};       // left, top, right, bottom
  std::array<std::int32_t, 4> colors_{};     // E2, E1, P, Bg, counted from 0
  std::array<std::int32_t, 4> contrasts_{};  // in the same order
  Color pattern_ = 0;
  Color background_ = 0;
  Color emphasis1_ = 0;
  Color emphasis2_ = 0;
};

}  // namespace

SubtitleScript ParseSubtitleScript(std::string_view text, const SubtitleScriptOptions& options) {
  constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(ByteOrderMark)) {
    text.remove_prefix(ByteOrderMark.size());
  }
  ScriptReader reader(options);
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    reader.Line(line, number);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return reader.Release();
}

}  // namespace quorvelant
