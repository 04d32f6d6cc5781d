// Operations on the structure of the disc.
#include <array>
#include <limits>
#include <optional>

#include "app/edit_words.h"
#include "base/text.h"
#include "desk/edit_fields.h"
#include "edit/drop.h"
#include "edit/live_sources.h"
#include "edit/removal.h"
#include "edit/segments.h"
#include "edit/source_removal.h"
#include "edit/structure.h"
#include "model/keys.h"

namespace quorvelant {

namespace {

std::string NameOr(EditDesk& desk, const EditLine& line, const std::string& parent) {
  auto name = line.TextIf("name");
  return name ? std::string(Trim(*name)) : ProposedName(desk.Session, parent);
}

// A number as it stands in a key, or the key itself.
SourceKey SourceAt(const EditDesk& desk, const JsonField& field, SourceKey::Node kind) {
  const auto source = LiveSource(desk.Session.Work(), field.Text(), kind);
  if (!source) {
    field.Refuse(kind == SourceKey::Node::Track ? "the number or key of a track"
                                                : "the number or key of a scene");
  }
  return *source;
}

Dropped DroppedOf(const EditDesk& desk, const EditLine& line) {
  constexpr std::int64_t Most = std::numeric_limits<std::int32_t>::max();
  const JsonField track = line.At("track");
  Dropped what{.Track = track.IsText() ? SourceAt(desk, track, SourceKey::Node::Track).Track
                                       : static_cast<std::size_t>(track.Number(0, Most)),
               .Scene = std::nullopt};
  if (line.Has("scene")) {
    const JsonField scene = line.At("scene");
    what.Scene = scene.IsText() ? SourceAt(desk, scene, SourceKey::Node::Scene).Number - 1
                                : static_cast<std::size_t>(scene.Number(1, Most)) - 1;
  }
  return what;
}

constexpr std::array Words{
    EditWord{
        "new-title-set", "",
        [](EditDesk& desk, const EditLine& /*line*/) -> EditAnswer { return NewTitleSet(desk.Session); }},
    EditWord{"new-title", "parent name?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               const std::string parent = line.Text("parent");
               return NewTitle(desk.Session, parent, NameOr(desk, line, parent));
             }},
    EditWord{"new-language", "parent language",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return NewLanguage(desk.Session, line.Text("parent"), line.Text("language"));
             }},
    EditWord{"new-pgc", "parent name?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               const std::string parent = line.Text("parent");
               return NewPgc(desk.Session, parent, NameOr(desk, line, parent));
             }},
    EditWord{"new-program", "parent name?",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               const std::string parent = line.Text("parent");
               return NewProgram(desk.Session, parent, NameOr(desk, line, parent));
             }},
    EditWord{"drop", "track scene? target",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return Drop(desk.Session, DroppedOf(desk, line), line.Text("target"));
             }},
    EditWord{"rename", "key name",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               const std::string key = line.Text("key");
               return ParseSourceKey(key) ? RenameTrack(desk.Session, key, line.Text("name"))
                                          : Rename(desk.Session, key, std::string(Trim(line.Text("name"))));
             }},
    EditWord{"remove", "key",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               const std::string key = line.Text("key");
               return ParseSourceKey(key) ? RemoveSource(desk.Session, key, ConsentOf(line))
                                          : Remove(desk.Session, key, ConsentOf(line));
             }},
    EditWord{"set", "key fields",
             [](EditDesk& desk, const EditLine& line) -> EditAnswer {
               return SetFields(desk.Session, line.Text("key"), line.At("fields"));
             }},
};

}  // namespace

std::span<const EditWord> StructureWords() {
  return Words;
}

}  // namespace quorvelant
