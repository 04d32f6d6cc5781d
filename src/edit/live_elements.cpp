#include "edit/live_elements.h"

namespace quorvelant {

namespace {

// The element that was found, if it bears the key and is live.
template <class Element>
const Element* IfLive(const Element* element, std::string_view key, bool above) {
  return above && element != nullptr && element->Key == key && !element->Removed ? element : nullptr;
}

std::string_view Above(std::string_view key) {
  return key.substr(0, key.rfind('.'));
}

}  // namespace

const VTS_P* LiveEntry(const Project& project, std::string_view key) {
  return IfLive(FindEntry(project.Disc, key), key, true);
}

const Lang_P* LiveLanguage(const Project& project, std::string_view key) {
  return IfLive(FindLanguage(project.Disc, key), key, LiveEntry(project, Above(key)) != nullptr);
}

const Title_P* LiveTitle(const Project& project, std::string_view key) {
  return IfLive(FindTitle(project.Disc, key), key, LiveEntry(project, Above(key)) != nullptr);
}

const PGC_P* LivePgc(const Project& project, std::string_view key) {
  if (key == FirstPgcKey) {
    return &project.FirstPlay;
  }
  const std::string_view unit = Above(key);
  const bool above = LiveLanguage(project, unit) != nullptr || LiveTitle(project, unit) != nullptr;
  return IfLive(FindPgc(project.Disc, key), key, above);
}

const PG_P* LiveProgram(const Project& project, std::string_view key) {
  return IfLive(FindProgram(project.Disc, key), key, LivePgc(project, Above(key)) != nullptr);
}

const Cell_P* LiveCell(const Project& project, std::string_view key) {
  return IfLive(FindCell(project.Disc, key), key, LiveProgram(project, Above(key)) != nullptr);
}

}  // namespace quorvelant
