#include "script/kept_text.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "base/text.h"

namespace quorvelant {

namespace {

// Two texts that went apart are one again within so many lines, or not at all.
constexpr std::size_t MostLinesAhead = 512;

std::string_view WithoutBlanks(std::string_view line) {
  const std::size_t first = std::min(line.find_first_not_of(" \t"), line.size());
  const std::size_t last = line.find_last_not_of(" \t\r");
  return last == std::string_view::npos || last < first ? std::string_view()
                                                        : line.substr(first, last + 1 - first);
}

// What two lines that say the same have in common.
std::size_t KeyOf(std::string_view line) {
  std::string key = Lower(line);
  std::erase_if(key, [](char c) { return c == ' ' || c == '\t'; });
  return std::hash<std::string>{}(key);
}

struct SaidLine {
  std::size_t Key = 0;
  std::size_t At = 0;  // where the line begins in its text
};

struct Comment {
  std::string_view Text;
  std::size_t Before = 0;  // index of the said line that it stands before; their count after the last
};

struct ScriptParts {
  std::vector<SaidLine> Said;  // neither comments nor braces nor empty lines
  std::vector<Comment> Comments;
};

ScriptParts PartsOf(std::string_view text) {
  ScriptParts parts;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    const std::string_view line = WithoutBlanks(text.substr(at, end - at));
    if (line.starts_with(CommentMark)) {
      parts.Comments.push_back({line, parts.Said.size()});
    } else if (!line.empty() && line != "{" && line != "}") {
      parts.Said.push_back({KeyOf(line), at});
    }
    at = end + 1;
  }
  return parts;
}

// How far `lines` go on from `from` until they say `key`; nothing where they do not soon.
std::optional<std::size_t> DistanceTo(const std::vector<SaidLine>& lines, std::size_t from, std::size_t key) {
  const std::size_t end = std::min(lines.size(), from + MostLinesAhead);
  for (std::size_t i = from; i < end; ++i) {
    if (lines[i].Key == key) {
      return i - from;
    }
  }
  return std::nullopt;
}

// For each line of the original the same line of the written text, where there is one.
std::vector<std::optional<std::size_t>> Paired(const std::vector<SaidLine>& original,
                                               const std::vector<SaidLine>& written) {
  std::vector<std::optional<std::size_t>> pairs(original.size());
  std::size_t from = 0;
  std::size_t to = 0;
  while (from < original.size() && to < written.size()) {
    if (original[from].Key == written[to].Key) {
      pairs[from++] = to++;
      continue;
    }
    // The side that must leave out fewer lines does so.
    const auto added = DistanceTo(written, to, original[from].Key);
    const auto dropped = DistanceTo(original, from, written[to].Key);
    if (added && (!dropped || *added <= *dropped)) {
      to += *added;
    } else if (dropped) {
      from += *dropped;
    } else {
      ++from;
      ++to;
    }
  }
  return pairs;
}

}  // namespace

std::string WithCommentsOf(std::string_view original, std::string written) {
  constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
  original.remove_prefix(original.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
  const ScriptParts before = PartsOf(original);
  if (before.Comments.empty()) {
    return written;
  }
  const ScriptParts after = PartsOf(written);
  const auto pairs = Paired(before.Said, after.Said);
  std::string text;
  std::size_t copied = 0;
  for (const Comment& comment : before.Comments) {
    std::size_t line = comment.Before;
    while (line < pairs.size() && !pairs[line]) {
      ++line;
    }
    const std::size_t at = line < pairs.size() ? after.Said[*pairs[line]].At : written.size();
    text.append(written, copied, at - copied);
    copied = at;
    const std::size_t indent = std::min(written.find_first_not_of('\t', at), written.size()) - at;
    text.append(indent, '\t').append(comment.Text).append("\r\n");
  }
  return text.append(written, copied);
}

std::string WithLineEndsOf(std::string_view original, std::string written) {
  const std::size_t end = original.find('\n');
  if (end != std::string_view::npos && (end == 0 || original[end - 1] != '\r')) {
    std::erase(written, '\r');
  }
  return written;
}

}  // namespace quorvelant
