// The plain fields of a project's elements, by names.
#pragma once

#include <string>
#include <vector>

#include "desk/element_field.h"
#include "desk/json_field.h"
#include "edit/outcome.h"
#include "edit/session.h"

namespace quorvelant {

// Sets fields of the element of a key, of the structure or of the source material, in one step. `fields` is
// an object; a field that the element does not have, or a value that does not fit, raises a MessageError
// with what is expected, and nothing changes.
Outcome SetFields(EditSession& session, const std::string& key, const JsonField& fields);

// The fields of the element with their present values; none where it has no fields or is not there.
[[nodiscard]] std::vector<ElementField> FieldsOf(const Project& project, const std::string& key);

}  // namespace quorvelant
