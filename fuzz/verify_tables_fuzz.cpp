// IFO files of any bytes, and the walk of what they hold: the first byte tells the manager from a title set.
#include <cstddef>
#include <cstdint>
#include <utility>

#include "player/nav_findings.h"
#include "verify/ifo_reader.h"
#include "verify/ifo_view.h"
#include "verify/nav_of_disc.h"
#include "verify/set_check.h"
#include "verify/title_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t byteCount) {
  using namespace quorvelant;  // NOLINT(google-build-using-namespace): a program of its own
  if (byteCount == 0) {
    return 0;
  }
  VerifyResult disc;
  const int set = data[0] % 2;
  auto tables = ReadIfoTables("X.IFO", set, data[0] > 1, Bytes(data + 1, data + byteCount), disc.Findings);
  if (!tables) {
    return 0;
  }
  VobSetFacts facts;
  for (std::uint32_t i = 0; i < 8; ++i) {
    facts.Vobus.push_back({.Sector = 10 * i,
                           .Last = 10 * i + 9,
                           .StartPtm = 45000 * i,
                           .EndPtm = 45000 * i + 45000,
                           .VobId = 1,
                           .CellId = 1});
  }
  facts.Streams.push_back({1, 0x80, 0, {}});
  const IfoTeller teller("X.IFO", disc.Findings);
  CheckAgainstSectors(*tables, true, facts, teller);
  CheckAgainstSectors(*tables, false, facts, teller);
  disc.Sets.push_back({*tables, facts, {}});
  disc.Sets.push_back({std::move(*tables), facts, facts});
  CheckTitles(disc.Sets[0].Tables, {&disc.Sets[1].Tables, nullptr}, disc.Findings);
  const NavDisc nav = NavOfDisc(disc);
  const NavSurvey survey = SurveyOf(nav, {.Nodes = 200, .Steps = 2000});
  return nav.Sets.size() == 1 && (survey.IsWhole || survey.States > 0) ? 0 : 1;
}
