#include "app/edit_words.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <vector>

#include "app/messages.h"
#include "base/disk.h"
#include "base/message_error.h"

namespace quorvelant {

namespace {

constexpr std::array Themes{StructureWords, SegmentWords, OverlayWords, CommandWords, ProjectWords};

const EditWord& WordOf(const EditLine& line) {
  const std::string word = line.Word();
  std::vector<std::string_view> words;
  for (const auto theme : Themes) {
    for (const EditWord& row : theme()) {
      if (row.Word == word) {
        return row;
      }
      words.push_back(row.Word);
    }
  }
  throw MessageError(MessageOf(message::EditWordUnknown, {}, word, fmt::join(words, ", ")));
}

nlohmann::ordered_json BoxJson(const Message& words) {
  nlohmann::ordered_json box{{"title", words.Title}, {"text", words.Text}};
  if (!words.Code.empty()) {  // questions of lower rooms have none
    box["code"] = words.Code;
  }
  if (!words.Place.empty()) {
    box["place"] = words.Place;
  }
  return box;
}

}  // namespace

Outcome GaveUp(OperationUi& ui) {
  Outcome outcome = ui.GaveUp();
  const bool isStopped = outcome.Result == Outcome::Kind::Refused && outcome.Words.Code.empty();
  return isStopped ? Outcome::Refused(MessageOf(message::EditRunFailed, {})) : outcome;
}

EditAnswer RunEditLine(EditDesk& desk, const EditLine& line) {
  try {
    const EditWord& word = WordOf(line);
    line.Expect(word.Fields);
    return word.Run(desk, line);
  } catch (const MessageError& fault) {
    return Outcome::Refused(fault.What());
  } catch (const FileError& fault) {
    return Outcome::Refused(MessageOf(message::UnexpectedFault, {}, fault.what()));
  }
}

nlohmann::ordered_json AnswerJson(const EditAnswer& answer) {
  switch (answer.Result.Result) {
    case Outcome::Kind::Refused:
      return {{"refused", BoxJson(answer.Result.Words)}};
    case Outcome::Kind::Asks:
      return {{"asks", BoxJson(answer.Result.Words)}};
    case Outcome::Kind::Done:
      break;
  }
  nlohmann::ordered_json done{{"done", answer.Result.Key}};
  done.update(answer.More);
  return done;
}

}  // namespace quorvelant
