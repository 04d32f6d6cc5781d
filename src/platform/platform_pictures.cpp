#include "platform/platform_pictures.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "base/file_text.h"
#include "base/text.h"
#include "picture/bmp.h"
#include "picture/messages.h"
#include "picture/png_check.h"
#include "platform/messages.h"
#include "platform/picture_module.h"

namespace quorvelant {

namespace {

namespace fs = std::filesystem;

struct LoadedModule {
  const PictureModule* Module = nullptr;
  std::string Reason = {};  // why there is none
};

// Where the module may lie: beside the program, as in a build, or where an installation puts it.
fs::path FindModule(const fs::path& programFolder) {
  const fs::path beside = programFolder / PictureModuleFile;
  std::error_code missing;
  return fs::exists(beside, missing) ? beside
                                     : programFolder.parent_path() / "lib" / "quorvelant" / PictureModuleFile;
}

LoadedModule LoadModule() {
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  if (failed) {
    return {.Reason = failed.message()};
  }
  const fs::path file = FindModule(program.parent_path());
  void* const handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = handle == nullptr ? nullptr : dlsym(handle, PictureModuleEntry);
  if (entry == nullptr) {
    const char* const reason = dlerror();  // NOLINT(concurrency-mt-unsafe): of this thread alone
    return {.Reason = reason == nullptr ? "" : reason};
  }
  const PictureModule* const module = reinterpret_cast<PictureModuleFactory>(entry)();
  if (module->Revision != PictureModuleRevision) {
    return {.Reason = fmt::format("{} belongs to another version of the program", file.string())};
  }
  return {.Module = module};
}

// Loaded once; `name` is the file for whose sake.
const PictureModule& ModuleFor(std::string_view name) {
  static const LoadedModule loaded = LoadModule();
  if (loaded.Module == nullptr) {
    RefusePicture(message::PictureModuleMissing, name, PictureModuleFile, loaded.Reason);
  }
  return *loaded.Module;
}

// What the decoder says of a PNG file that breaks off, which is found out before it is asked: it would print.
constexpr std::string_view UnreadableReason = "Unable to read image data";

// For whose sake the module is loaded where no file is.
constexpr std::string_view Text = "text";

class PlatformPictures : public PictureService {
 public:
  explicit PlatformPictures(const PictureLimits& limits) : limits_(limits) {}

  Picture Load(const std::string& path) override { return Read(path, nullptr); }
  Picture LoadOver(const std::string& path, std::uint32_t background) override {
    return Read(path, &background);
  }

  Picture Scale(const Picture& picture, int width, int height, bool smooth) override {
    constexpr std::string_view Name = "scaled picture";
    CheckPictureSize(width, height, limits_, Name);
    return ModuleFor(Name).Scale(picture, width, height, smooth);
  }

  void Save(const Picture& picture, const std::string& path) override {
    const Bytes file = Encode(picture, path);
    if (const int refusal = WriteAside(path, {reinterpret_cast<const char*>(file.data()), file.size()})) {
      RefusePicture(message::PictureNotWritten, path, std::generic_category().message(refusal));
    }
  }

  void DrawText(Picture& picture, int x, int y, std::string_view text, const TextStyle& style) override {
    ModuleFor(Text).DrawText(picture, x, y, text, style);
  }

  TextSize MeasureText(std::string_view text, const TextStyle& style) override {
    return ModuleFor(Text).MeasureText(text, style);
  }

  std::string MissingLetters(std::string_view text, const TextStyle& style) override {
    return ModuleFor(Text).MissingLetters(text, style);
  }

  std::string FontTaken(const std::string& family) override { return ModuleFor(Text).FontTaken(family); }

 private:
  [[nodiscard]] Picture Read(const std::string& path, const std::uint32_t* background) const {
    const Bytes file = ReadPictureFile(path);
    if (file.empty() || IsBmp(file)) {
      return ReadBmp(file, path, limits_);
    }
    const auto judge = [&](int width, int height) { CheckPictureSize(width, height, limits_, path); };
    if (IsPng(file) && !IsWholePng(file)) {
      RefusePicture(message::PictureUnreadable, path, UnreadableReason);
    }
    DecodedPicture decoded = ModuleFor(path).Decode(file, judge, background);
    if (!decoded.Known) {
      RefusePicture(message::PictureUnknown, path);
    }
    if (!decoded.Pixels) {
      RefusePicture(message::PictureUnreadable, path, decoded.Reason);
    }
    return *std::move(decoded.Pixels);
  }

  static Bytes Encode(const Picture& picture, const std::string& path) {
    if (Lower(path).ends_with(".bmp")) {
      return WriteBmp(picture);
    }
    if (!Lower(path).ends_with(".png")) {
      RefusePicture(message::PictureFormat, path);
    }
    Bytes file = ModuleFor(path).EncodePng(picture);
    if (file.empty()) {
      RefusePicture(message::PictureNotCoded, path);
    }
    return file;
  }

  PictureLimits limits_;
};

}  // namespace

std::unique_ptr<PictureService> MakePlatformPictures(const PictureLimits& limits) {
  return std::make_unique<PlatformPictures>(limits);
}

}  // namespace quorvelant
