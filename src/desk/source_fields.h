// The fields of tracks, plays, streams and scenes.
#pragma once

#include <string>
#include <vector>

#include "desk/element_field.h"
#include "desk/json_field.h"
#include "edit/outcome.h"
#include "edit/session.h"
#include "model/keys.h"

namespace quorvelant {

// As `SetFields` and `FieldsOf` (desk/edit_fields.h); `source` is the key taken apart.
Outcome SetSourceFields(EditSession& session, const std::string& key, const SourceKey& source,
                        const JsonField& fields);
[[nodiscard]] std::vector<ElementField> SourceFieldsOf(const Project& project, const std::string& key,
                                                       const SourceKey& source);

}  // namespace quorvelant
