// Lines of a text of any size and any bytes.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace quorvelant {

// Reads through one window and hands out views into it. A line ends with LF, CR LF, or the end of the text.
class LineReader {
 public:
  explicit LineReader(std::istream& stream) : stream_(stream), window_(FirstWindowBytes) {}

  // The longest line that is handed out whole.
  static constexpr std::size_t MostLineBytes = std::size_t{1} << 20U;

  // The next line without its end, valid until the next call; false after the last.
  bool Next();
  std::string_view Line() const { return line_; }
  // Of the present line, from 1.
  std::size_t Number() const { return number_; }
  // The line was longer than `MostLineBytes`; `Line` is its start.
  bool TooLong() const { return tooLong_; }
  // The text ended early, because the stream could not be read on.
  bool Broken() const { return stream_.bad(); }
  // Bytes read from the stream so far.
  std::size_t BytesRead() const { return bytesRead_; }

 private:
  static constexpr std::size_t FirstWindowBytes = std::size_t{1} << 18U;

  // Reads on after what is in the window; false at the end of the text.
  bool Fill();
  void PassOverRest();

  std::istream& stream_;
  std::vector<char> window_;
  std::size_t start_ = 0;  // the unread part of the window
  std::size_t end_ = 0;
  std::size_t bytesRead_ = 0;
  std::size_t number_ = 0;
  std::string_view line_;
  bool tooLong_ = false;
  bool restUnread_ = false;  // the end of a line that is too long
};

}  // namespace quorvelant
