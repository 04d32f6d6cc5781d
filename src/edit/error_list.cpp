#include "edit/error_list.h"

#include <fstream>

#include "base/random.h"
#include "edit/messages.h"

namespace quorvelant {

bool SaveErrorList(const std::vector<CommandError>& rows, UserInterface& ui) {
  const auto path = ui.AskText(message::AskErrorListFile.Title, message::AskErrorListFile.Text, "");
  if (!path || path->empty()) {
    return false;
  }
  std::ofstream file(SystemPath(*path), std::ios::binary | std::ios::trunc);
  for (const CommandError& row : rows) {
    file << ErrorLine(row) << "\r\n";
  }
  file.close();
  if (file.fail()) {
    ui.Tell(MessageOf(message::ErrorListUnwritten, *path, *path));
    return false;
  }
  return true;
}

}  // namespace quorvelant
