#include "edit/error_list.h"

#include <fstream>

#include "base/random.h"
#include "edit/messages.h"

namespace quorvelant {

bool WriteErrorList(const std::vector<CommandError>& rows, const std::string& path, UserInterface& ui) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  for (const CommandError& row : rows) {
    file << ErrorLine(row) << "\r\n";
  }
  file.close();
  if (file.fail()) {
    ui.Tell(MessageOf(message::ErrorListUnwritten, path, path));
    return false;
  }
  return true;
}

bool SaveErrorList(const std::vector<CommandError>& rows, UserInterface& ui) {
  const auto path = ui.AskText(message::AskErrorListFile.Title, message::AskErrorListFile.Text, "");
  return path && !path->empty() && WriteErrorList(rows, SystemPath(*path), ui);
}

}  // namespace quorvelant
