// The button by which a line of words is emptied.
#pragma once

class QLineEdit;

namespace quorvelant {

// Gives the line one, with a name for screen readers.
void AddClearButton(QLineEdit& line);

}  // namespace quorvelant
