// What the commands that write an image ask and tell alike.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "base/user_interface.h"
#include "iso/image_time.h"
#include "iso/make_image.h"

namespace quorvelant {

// The label that was asked for, or one made of `name` where none was. Nothing where it is no volume name,
// which is told; small letters count as capitals.
[[nodiscard]] std::optional<std::string> LabelFor(const std::string& asked, std::string_view name,
                                                  UserInterface& ui);

// The time that the environment's SOURCE_DATE_EPOCH says, else the start of 2000. Nothing where it says no
// time that an image can tell, which is told.
[[nodiscard]] std::optional<ImageTime> ImageTimeFrom(const std::string& sourceDate, UserInterface& ui);

// "0.1 % of a DVD-5": the smallest of both sizes of disc that holds so much. Above 100 % where none does.
[[nodiscard]] std::string FullnessText(std::uint64_t bytes);
// The same for programs: the name, or null where no disc holds so much, and for nothing.
[[nodiscard]] nlohmann::ordered_json MediumJson(std::uint64_t bytes);

// The line of an image that was written.
[[nodiscard]] std::string ImageText(const ImageResult& image, const std::string& path);
// Null where there is none.
[[nodiscard]] nlohmann::ordered_json ImageJson(const ImageResult& image, const std::string& path);

}  // namespace quorvelant
