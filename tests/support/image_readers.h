// Programs and libraries that read an image, none of which was written here.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace quorvelant {

using ImageFiles = std::map<std::string, std::string>;  // content by name

// What genisoimage's isoinfo finds in VIDEO_TS by ISO 9660, as it extracts it.
ImageFiles FilesByIso9660(const std::string& image);
// What libdvdread finds there by UDF: these files, those that it does not find left out.
ImageFiles FilesByUdf(const std::string& image, const std::vector<std::string>& names);
// What udftools' udfinfo says of the volume, by its keys.
std::map<std::string, std::string> UdfFigures(const std::string& image);
// Whether both programs are at hand.
bool HasImageReaders();
inline constexpr const char* ImageReadersMissing = "isoinfo or udfinfo is not at hand";

}  // namespace quorvelant
