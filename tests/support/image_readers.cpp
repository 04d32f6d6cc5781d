#include "support/image_readers.h"

#include <dvdread/dvd_reader.h>
#include <dvdread/dvd_udf.h>
#include <fmt/format.h>

#include <cstdlib>
#include <memory>
#include <regex>

#include "support/disc_judges.h"
#include "support/temp_folder.h"

namespace quorvelant {

bool HasImageReaders() {
  return LinesOf("command -v isoinfo").size() == 1 && LinesOf("command -v udfinfo").size() == 1;
}

ImageFiles FilesByIso9660(const std::string& image) {
  const TempFolder folder;
  ImageFiles files;
  for (const std::string& line : LinesOf(fmt::format("isoinfo -f -i '{}'", image))) {
    static const std::regex File("/VIDEO_TS/(.*);1\n");
    std::smatch name;
    if (std::regex_match(line, name, File)) {
      LinesOf(
          fmt::format("isoinfo -x '/VIDEO_TS/{};1' -i '{}' > '{}'", name[1].str(), image, folder / "file"));
      files[name[1]] = TempFolder::Read(folder / "file");
    }
  }
  return files;
}

ImageFiles FilesByUdf(const std::string& image, const std::vector<std::string>& names) {
  constexpr std::size_t Sector = 2048;
  ImageFiles files;
  const std::unique_ptr<dvd_reader_t, void (*)(dvd_reader_t*)> disc(DVDOpen(image.c_str()), &DVDClose);
  if (!disc) {
    return files;
  }
  std::ifstream bytes(image, std::ios::binary);
  for (const std::string& name : names) {
    std::uint32_t size = 0;
    const std::uint32_t sector = UDFFindFile(disc.get(), ("/VIDEO_TS/" + name).c_str(), &size);
    if (sector != 0) {
      std::string content(size, '\0');
      bytes.seekg(static_cast<std::streamoff>(sector * Sector));
      bytes.read(content.data(), static_cast<std::streamsize>(size));
      files[name] = content;
    }
  }
  return files;
}

std::map<std::string, std::string> UdfFigures(const std::string& image) {
  std::map<std::string, std::string> figures;
  for (const std::string& line : LinesOf(fmt::format("udfinfo '{}'", image))) {
    const std::size_t at = line.find('=');
    if (at != std::string::npos && !line.starts_with("start=")) {
      figures[line.substr(0, at)] = line.substr(at + 1, line.size() - at - 2);
    } else if (!line.starts_with("start=")) {
      figures["complaints"] += line;
    }
  }
  return figures;
}

}  // namespace quorvelant
