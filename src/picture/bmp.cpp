#include "picture/bmp.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <system_error>

namespace quorvelant {

namespace {

constexpr std::size_t HeaderBytes = 54;  // the file header and an information header of 40 bytes

void PutLittle(Bytes& bytes, std::size_t offset, unsigned width, std::uint64_t value) {
  for (unsigned i = 0; i < width; ++i) {
    bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

[[noreturn]] void Refuse(std::string_view name, std::string_view reason) {
  throw PictureError(fmt::format("{}: {}", name, reason));
}

}  // namespace

void CheckPictureSize(std::int64_t width, std::int64_t height, const PictureLimits& limits,
                      std::string_view name) {
  if (width < 1 || height < 1) {
    Refuse(name, fmt::format("a picture of {}x{} has no pixels", width, height));
  }
  if (width > limits.MostSide || height > limits.MostSide || width * height > limits.MostPixels) {
    Refuse(name, fmt::format("a picture of {}x{} is too large (at most {} pixels a side and {} in all)",
                             width, height, limits.MostSide, limits.MostPixels));
  }
}

BmpImage::BmpImage(int width, int height)
    : rowBytes_((std::size_t{3} * static_cast<std::size_t>(width) + 3) / 4 * 4),
      height_(height),
      file_(HeaderBytes + rowBytes_ * static_cast<std::size_t>(height)) {
  file_[0] = 'B';
  file_[1] = 'M';
  PutLittle(file_, 2, 4, file_.size());
  PutLittle(file_, 10, 4, HeaderBytes);  // where the pixels begin
  PutLittle(file_, 14, 4, 40);           // length of the information header
  PutLittle(file_, 18, 4, static_cast<std::uint64_t>(width));
  PutLittle(file_, 22, 4, static_cast<std::uint64_t>(height));
  PutLittle(file_, 26, 2, 1);   // planes
  PutLittle(file_, 28, 2, 24);  // bits a pixel
  PutLittle(file_, 34, 4, file_.size() - HeaderBytes);
}

std::uint8_t* BmpImage::Row(int row) {
  return file_.data() + HeaderBytes + rowBytes_ * static_cast<std::size_t>(height_ - 1 - row);
}

Bytes WriteBmp(const Picture& picture) {
  BmpImage bitmap(picture.Width, picture.Height);
  for (int row = 0; row < picture.Height; ++row) {
    const std::uint8_t* source = picture.Row(row);
    std::uint8_t* target = bitmap.Row(row);
    for (int x = 0; x < picture.Width; ++x, source += 3, target += 3) {
      target[0] = source[2];
      target[1] = source[1];
      target[2] = source[0];
    }
  }
  return bitmap.Take();
}

Bytes ReadPictureFile(const std::string& path, std::uint64_t mostBytes) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) {
    Refuse(path, "the file does not exist");
  }
  if (!std::filesystem::is_regular_file(status)) {
    Refuse(path, "this is not a file");
  }
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  std::ifstream file(path, std::ios::binary);
  if (error || !file) {
    Refuse(path, "the file cannot be opened");
  }
  if (size > mostBytes) {
    Refuse(path, fmt::format("a picture file of {} bytes is too large", size));
  }
  Bytes bytes(static_cast<std::size_t>(size));
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (static_cast<std::size_t>(file.gcount()) != bytes.size()) {
    Refuse(path, "the file cannot be read to its end");
  }
  return bytes;
}

Picture BmpLoader::Load(const std::string& path) {
  return ReadBmp(ReadPictureFile(path), path);
}

}  // namespace quorvelant
