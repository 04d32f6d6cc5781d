#include "picture/bmp.h"

#include <memory>

#include "base/disk.h"
#include "picture/messages.h"

namespace quorvelant {

namespace {

constexpr std::size_t HeaderBytes = 54;  // the file header and an information header of 40 bytes

void PutLittle(Bytes& bytes, std::size_t offset, unsigned width, std::uint64_t value) {
  for (unsigned i = 0; i < width; ++i) {
    bytes[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

}  // namespace

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
  Disk& disk = SystemDisk();
  const FileKind kind = disk.KindOf(path);
  if (kind == FileKind::Missing || kind == FileKind::Unreachable) {
    RefusePicture(message::PictureMissing, path);
  }
  if (kind != FileKind::Plain) {
    RefusePicture(message::PictureNoFile, path);
  }
  std::unique_ptr<File> file;
  std::uint64_t size = 0;
  try {
    file = disk.Open(path, FileAccess::Read);
    size = file->ByteCount();
  } catch (const FileError&) {
    RefusePicture(message::PictureNotOpened, path);
  }
  if (size > mostBytes) {
    RefusePicture(message::PictureFileTooLarge, path, size);
  }
  Bytes bytes(static_cast<std::size_t>(size));
  try {
    if (file->Read(bytes) == bytes.size()) {
      return bytes;
    }
  } catch (const FileError&) {  // told like a file that became shorter
  }
  RefusePicture(message::PictureNotWhole, path);
}

}  // namespace quorvelant
