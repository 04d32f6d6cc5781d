#include "app/edit_run.h"

#include <fmt/format.h>

#include <optional>
#include <streambuf>
#include <string>
#include <utility>
#include <variant>

#include "app/author_report.h"
#include "app/messages.h"
#include "base/message_error.h"
#include "base/text.h"

namespace quorvelant {

namespace {

// Takes a line as soon as it is there, so that programs can talk to this one.
class LineSource {
 public:
  explicit LineSource(std::istream& in) : bytes_(in.rdbuf()) {}

  // The next line that is not blank; false at the end. Of a line that is too long the rest is passed over.
  bool Next() {
    do {
      if (!Read()) {
        return false;
      }
    } while (!IsTooLong() && Trim(line_).empty());
    return true;
  }

  [[nodiscard]] const std::string& Line() const { return line_; }
  [[nodiscard]] bool IsTooLong() const { return line_.size() > MostEditLineBytes; }
  [[nodiscard]] std::string Place() const { return fmt::format("line {}", number_); }

 private:
  using Traits = std::streambuf::traits_type;

  bool Read() {
    line_.clear();
    ++number_;
    auto byte = bytes_->sbumpc();
    if (Traits::eq_int_type(byte, Traits::eof())) {
      return false;
    }
    while (!Traits::eq_int_type(byte, Traits::eof()) && Traits::to_char_type(byte) != '\n') {
      if (!IsTooLong()) {
        line_.push_back(Traits::to_char_type(byte));
      }
      byte = bytes_->sbumpc();
    }
    if (line_.ends_with('\r')) {
      line_.pop_back();
    }
    return true;
  }

  std::streambuf* bytes_;
  std::string line_;
  std::size_t number_ = 0;
};

class EditRun {
 public:
  EditRun(std::istream& in, EditDesk& desk, std::ostream& out) : lines_(in), desk_(&desk), out_(&out) {}

  bool Run(bool keepGoing) {
    while ((isGood_ || keepGoing) && *out_ && !desk_->Ui.StopRequested() && lines_.Next()) {
      const Parsed line = Parse();
      if (asked_ && !IsConsent(line)) {
        NotAgreed();
        if (!keepGoing) {
          break;
        }
      }
      asked_.reset();
      Answer(line);
    }
    if (asked_) {
      NotAgreed();
    }
    return isGood_ && !desk_->Ui.StopRequested();
  }

 private:
  using Parsed = std::variant<EditLine, Message>;  // or why it is no operation

  [[nodiscard]] Parsed Parse() const {
    if (lines_.IsTooLong()) {
      return MessageOf(message::EditLineTooLong, {});
    }
    try {
      return EditLine(lines_.Line());
    } catch (const MessageError& fault) {
      return fault.What();
    }
  }

  [[nodiscard]] bool IsConsent(const Parsed& parsed) const {
    const auto* line = std::get_if<EditLine>(&parsed);
    return line != nullptr && line->Agrees() && line->IsLike(*asked_);
  }

  void Answer(const Parsed& parsed) {
    if (const auto* fault = std::get_if<Message>(&parsed)) {
      Print(Outcome::Refused(*fault));
      return;
    }
    const auto& line = std::get<EditLine>(parsed);
    const EditAnswer answer = RunEditLine(*desk_, line);
    Print(answer);
    if (answer.Result.Result == Outcome::Kind::Asks) {
      asked_ = line;
      askedAt_ = lines_.Place();
    }
  }

  void Print(EditAnswer answer) {
    Outcome& result = answer.Result;
    if (result.Result == Outcome::Kind::Refused) {
      isGood_ = false;
      if (result.Words.Place.empty()) {
        result.Words.Place = lines_.Place();
      }
    }
    *out_ << JsonLine(AnswerJson(answer)) << '\n' << std::flush;
  }

  void NotAgreed() {
    isGood_ = false;
    desk_->Ui.Tell(MessageOf(message::EditNotAgreed, askedAt_));
    asked_.reset();
  }

  LineSource lines_;
  EditDesk* desk_;
  std::ostream* out_;
  std::optional<EditLine> asked_;
  std::string askedAt_;
  bool isGood_ = true;
};

}  // namespace

bool RunEditLines(std::istream& in, EditDesk& desk, bool keepGoing, std::ostream& out) {
  return EditRun(in, desk, out).Run(keepGoing);
}

}  // namespace quorvelant
