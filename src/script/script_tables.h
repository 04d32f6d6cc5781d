// The tables behind the vocabulary of a script, each in the order of the format's own tables.
#pragma once

#include <span>

#include "script/script_words.h"

namespace quorvelant {

// Whole lines: headers, stages, items.
std::span<const Word> SourceItems();
std::span<const Word> DiscItems();
// Keys: the text ahead of "=". One table a subject.
std::span<const Word> SourceKeys();
std::span<const Word> OverlayKeys();
std::span<const Word> DiscKeys();
// Keys and items that are compared by the text ahead of "#"; the number is what stands behind it.
std::span<const Word> NumberSignWords();

// Opens an item. Lists may grow now, so nothing that points into one stays open.
void Enter(ReaderState& state, Segment segment);

// Handlers that more than one file names.
bool PassOver(ReaderState& state, std::string_view value, std::size_t number);
bool SetName(ReaderState& state, std::string_view value, std::size_t number);
bool SetFile(ReaderState& state, std::string_view value, std::size_t number);
bool SetNumericalButtons(ReaderState& state, std::string_view value, std::size_t number);
bool SetButtonNumber(ReaderState& state, std::string_view value, std::size_t number);
bool SetArea(ReaderState& state, std::string_view value, std::size_t number);

// The open file of the data folder is called `name`; or the open play takes the data file of that name.
bool NameDataFile(ReaderState& state, std::string_view name);

}  // namespace quorvelant
