#include "app/image_words.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "author/size_text.h"
#include "base/text.h"
#include "disc/disc_media.h"
#include "iso/messages.h"
#include "iso/volume_name.h"

namespace quorvelant {

std::optional<std::string> LabelFor(const std::string& asked, std::string_view name, UserInterface& ui) {
  if (asked.empty()) {
    return VolumeNameFrom(name);
  }
  std::string label = Upper(asked);
  if (!IsVolumeName(label)) {
    ui.Tell(MessageOf(message::IsoLabelUnfit, {}, asked, VolumeNameFrom(asked)));
    return std::nullopt;
  }
  return label;
}

std::optional<ImageTime> ImageTimeFrom(const std::string& sourceDate, UserInterface& ui) {
  if (sourceDate.empty()) {
    return ImageTime{};
  }
  const auto time = ImageTimeOf(sourceDate);
  if (!time) {
    ui.Tell(MessageOf(message::IsoDateUnfit, {}, sourceDate));
  }
  return time;
}

std::string FullnessText(std::uint64_t bytes) {
  const DiscMedium& medium = MediumFor(bytes);
  const double percent = 100 * static_cast<double>(bytes) / static_cast<double>(medium.Bytes);
  return fmt::format("{:.1f} % of a {}", percent, medium.Name);
}

nlohmann::ordered_json MediumJson(std::uint64_t bytes) {
  const DiscMedium& medium = MediumFor(bytes);
  return bytes > 0 && bytes <= medium.Bytes ? nlohmann::ordered_json(medium.Name)
                                            : nlohmann::ordered_json(nullptr);
}

std::string ImageText(const ImageResult& image, const std::string& path) {
  return fmt::format("Wrote {} ({}, {})\n", path, SizeText(image.Size), FullnessText(image.Size));
}

nlohmann::ordered_json ImageJson(const ImageResult& image, const std::string& path) {
  if (image.Outcome != ImageOutcome::Done) {
    return nullptr;
  }
  nlohmann::ordered_json json{{"file", path}, {"bytes", image.Size}, {"medium", MediumJson(image.Size)}};
  json["layerBreak"] = nullptr;
  if (const auto& at = image.Break) {
    json["layerBreak"] = {
        {"sector", at->Sector}, {"titleSet", at->Set}, {"pgc", at->Pgc}, {"cell", at->Cell}};
  }
  return json;
}

}  // namespace quorvelant
