// How lists of messages look.
#pragma once

#include <QTableView>

#include "ui/message_list.h"

namespace quorvelant {

// A table of whole rows: the level as narrow as it is, the text as wide as there is room. Ctrl+C takes the
// chosen rows.
[[nodiscard]] QTableView* MakeMessageTable(MessageList* list, const QString& name);

}  // namespace quorvelant
