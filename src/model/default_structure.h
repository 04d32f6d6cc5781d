// What a new project starts with.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "model/project.h"

namespace quorvelant {

// Gives the 16 hexadecimal digits of a command that stands in `place`. The model stores command texts and
// knows nothing of their encoding, so who makes a structure hands the encoder in. An empty function leaves
// `CommandHex` empty until the project's commands are next resolved.
using CommandEncoder =
    std::function<std::string(const Project& project, const PGC_P& place, const std::string& text)>;

// A program chain with its defaults and its place: `entry` is the number in `MyDVD`; `language` or `title`
// is 0.
PGC_P MakePgc(std::string name, std::int32_t entry, std::int32_t language, std::int32_t title,
              std::string key);
// A command whose key is `word` and its number in the list, e.g. "Pre1". It has no digits yet.
VMICommand_P& AddCommand(CommandList& list, std::string_view word, std::string text);

// Appends the Video Manager with First Play (`isVTS` false; `number` is not looked at) or title set
// `number` with one language, one menu PGC, one title and one title PGC, named and keyed by their places.
// The commands of the first title set and of the Video Manager play title 1.
void AddNewVTSSet(Project& project, bool isVTS, std::int32_t number, const CommandEncoder& encode = {});

// Replaces everything by the Video Manager and title set 1.
void MakeDefaultStructure(Project& project, const CommandEncoder& encode = {});

}  // namespace quorvelant
