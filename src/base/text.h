// Text is bytes: scripts pass through untouched, and keys match on ASCII lower-case copies.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

// ASCII letters to lower (upper) case; every other byte stays.
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);

// Whether two texts are equal but for the case of ASCII letters.
bool EqualNoCase(std::string_view a, std::string_view b);

// Without the blanks at both ends.
std::string_view Trim(std::string_view text);

// Without any blank, in lower case: the form in which names are compared.
std::string NameKey(std::string_view text);

bool Contains(std::string_view text, std::string_view part);

// The pieces between separators; one piece, possibly empty, where there is none.
std::vector<std::string_view> Split(std::string_view text, std::string_view separator);

// `text` with every `from` replaced by `to`.
std::string Replace(std::string_view text, std::string_view from, std::string_view to);

// The leading decimal number (blanks and a sign allowed before it), 0 where there is none. A number beyond
// 32 bits is held at the nearest value that fits.
std::int32_t LeadingNumber(std::string_view text);

// A text for a terminal: control bytes, which could steer it, are shown as "\\x1B"; the line feed stays.
std::string Printable(std::string_view text);

}  // namespace quorvelant
