// Reads the tables of an IFO that hold no program chains, and its stream attributes.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "verify/ifo_tables.h"
#include "verify/ifo_view.h"

namespace quorvelant {

[[nodiscard]] std::vector<IfoTitle> ReadTitleSearch(const IfoView& table, const IfoTeller& teller);
[[nodiscard]] std::vector<std::vector<IfoPart>> ReadParts(const IfoView& table, const IfoTeller& teller);
[[nodiscard]] std::vector<IfoLanguage> ReadLanguages(const IfoView& table, const std::string& name,
                                                     bool ofManager, const IfoTeller& teller);
[[nodiscard]] std::vector<IfoTimeMap> ReadTimeMaps(const IfoView& table, const IfoTeller& teller);
[[nodiscard]] std::vector<IfoCellAddress> ReadCellAddresses(const IfoView& table, const std::string& name,
                                                            const IfoTeller& teller);
[[nodiscard]] std::vector<std::uint32_t> ReadVobuMap(const IfoView& table, const std::string& name,
                                                     const IfoTeller& teller);
[[nodiscard]] std::vector<std::pair<std::uint32_t, Bytes>> ReadSetAttributes(const IfoView& table,
                                                                             const IfoTeller& teller);

void CheckVideoAttributes(const IfoVideo& video, std::uint32_t at, const std::string& table,
                          const IfoTeller& teller);
void CheckAudioAttributes(const IfoAudio& audio, std::uint32_t at, const std::string& table,
                          const IfoTeller& teller);

}  // namespace quorvelant
