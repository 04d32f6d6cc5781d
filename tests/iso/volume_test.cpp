// Names and times of volumes.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "iso/image_time.h"
#include "iso/volume_name.h"

namespace quorvelant {
namespace {

TEST(VolumeName, IsMadeOfAnyText) {
  for (const auto& [text, name] :
       {std::pair{"holiday", "HOLIDAY"},
        {"Our film, part 2", "OUR_FILM_PART_2"},
        {"-- a  b --", "A_B"},
        {"Größe", "GR_E"},
        {"映画", "DVD_VIDEO"},
        {"", "DVD_VIDEO"},
        {"\xFF\n", "DVD_VIDEO"},
        {"a234567890123456789012345678901 tail", "A234567890123456789012345678901"},
        {"A_23456789012345678901234567890123", "A_234567890123456789012345678901"}}) {
    EXPECT_EQ(VolumeNameFrom(text), name);
    EXPECT_TRUE(IsVolumeName(name));
  }
  for (const char* text : {"", "a", "A B", "A-B", "Ä", "A2345678901234567890123456789012X"}) {
    EXPECT_FALSE(IsVolumeName(text)) << text;
  }
}

TEST(ImageTime, IsThatOfAWholeNumberOfSeconds) {
  const auto text = [](std::string_view number) -> std::string {
    const auto time = ImageTimeOf(number);
    return time ? fmt::format("{}-{}-{} {}:{}:{}", time->Year, time->Month, time->Day, time->Hour,
                              time->Minute, time->Second)
                : "none";
  };
  for (const auto& [number, told] : {std::pair{"0", "1970-1-1 0:0:0"},
                                     {"951782399", "2000-2-28 23:59:59"},
                                     {"951782400", "2000-2-29 0:0:0"},
                                     {"5869583999", "2155-12-31 23:59:59"},
                                     {"5869584000", "none"},
                                     {"99999999999999999999", "none"},
                                     {"9223372036854775807", "none"},
                                     {"-1", "none"},
                                     {"1 ", "none"},
                                     {"1e3", "none"},
                                     {"", "none"}}) {
    EXPECT_EQ(text(number), told) << number;
  }
}

}  // namespace
}  // namespace quorvelant
