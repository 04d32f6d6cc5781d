// The border between the program and its module of picture services.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "picture/picture_service.h"

namespace quorvelant {

// Raises what it refuses; asked before memory is taken for the pixels.
using SizeJudge = std::function<void(int width, int height)>;

struct DecodedPicture {
  bool Known = true;   // false where the bytes are no picture
  std::string Reason;  // why there are no pixels
  std::optional<Picture> Pixels;
};

// What the module does: functions in a table, because a program and a module that is loaded later share
// neither type information nor virtual tables. They may be called from any thread, and report what fails as
// values.
struct PictureModule {
  int Revision;  // of this table
  // See-through parts are laid on white; with `background` as `PictureLoader::LoadOver` has it.
  DecodedPicture (*Decode)(ByteView file, const SizeJudge& judge, const std::uint32_t* background);
  Picture (*Scale)(const Picture& picture, int width, int height, bool smooth);
  Bytes (*EncodePng)(const Picture& picture);  // empty where that failed
  void (*DrawText)(Picture& picture, int x, int y, std::string_view text, const TextStyle& style);
  TextSize (*MeasureText)(std::string_view text, const TextStyle& style);
  std::string (*MissingLetters)(std::string_view text, const TextStyle& style);
  std::string (*FontTaken)(const std::string& family);
};

inline constexpr int PictureModuleRevision = 3;
inline constexpr const char* PictureModuleFile = "quorvelant_pictures.so";
// The one function that the module exports.
inline constexpr const char* PictureModuleEntry = "QuorvelantPictureModule";
using PictureModuleFactory = const PictureModule* (*)();

}  // namespace quorvelant
