#include "model/my_dvd.h"

#include <numeric>

namespace quorvelant {

PGC_P::PGC_P() {
  std::iota(AudioAssignments.begin(), AudioAssignments.end(), 0);
  for (auto* map : {&NormalAssignments, &PanAssignments, &WideAssignments, &LetterAssignments}) {
    std::iota(map->begin(), map->end(), 0);
  }
}

VTS_P::VTS_P() {
  AudioExtension.fill("Unspecified");
  SubExtension.fill("Unspecified");
}

const std::string& VTS_P::Standard() const {
  return VTSTitleInfo.Standard.empty() ? VTSMenuInfo.Standard : VTSTitleInfo.Standard;
}

}  // namespace quorvelant
