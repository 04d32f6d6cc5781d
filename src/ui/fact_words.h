// Words for facts of rows.
#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "model/project.h"

namespace quorvelant {

// "1 title", "12 titles"; null for none.
[[nodiscard]] QString CountWords(std::size_t count, const char* one, const char* several);
// The parts that are not empty, with commas between.
[[nodiscard]] QString JoinWords(QStringList parts);

// How long a track, or what a cell shows of one, lasts, in frames of the track; nothing where that is not
// known.
[[nodiscard]] std::optional<std::int64_t> TrackLength(const Track& track);
[[nodiscard]] std::optional<std::int64_t> SceneLength(const Track& track, std::size_t scene);

}  // namespace quorvelant
