#include "vm/pgc_links.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

#include "base/text.h"
#include "vm/disc_place.h"

namespace quorvelant {

namespace {

constexpr std::array Kinds{PgcLinkKind::Next, PgcLinkKind::Previous, PgcLinkKind::GoUp};

// Whether a link names no PGC: a menu's go-up may lead back to where the menu was called.
bool LeadsNowhere(const std::string& key, PgcLinkKind kind, bool inTitles) {
  return key.empty() || key == "none" || (kind == PgcLinkKind::GoUp && !inTitles && Contains(key, "resume"));
}

// The live PGCs of an entry by their names.
class PgcNames {
 public:
  void Add(const DiscPlace& place, const std::string& name) { byName_[NameKey(name)].push_back(place); }

  [[nodiscard]] std::optional<DiscPlace> Find(const std::string& key, const DiscPlace& stand) const {
    const auto found = byName_.find(key);
    if (found == byName_.end()) {
      return std::nullopt;
    }
    std::optional<DiscPlace> elsewhere;
    for (const DiscPlace& place : found->second) {
      if (place.InTitles == stand.InTitles) {
        if (stand.InTitles || place.Unit == stand.Unit) {
          return place;
        }
        elsewhere = elsewhere ? elsewhere : place;
      }
    }
    return elsewhere;
  }

 private:
  std::unordered_map<std::string, std::vector<DiscPlace>> byName_;
};

}  // namespace

std::string& LinkOf(PGC_P& pgc, PgcLinkKind kind) {
  return kind == PgcLinkKind::Next ? pgc.NextPGC : kind == PgcLinkKind::Previous ? pgc.PrevPGC : pgc.GoUpPGC;
}
const std::string& LinkOf(const PGC_P& pgc, PgcLinkKind kind) {
  return kind == PgcLinkKind::Next ? pgc.NextPGC : kind == PgcLinkKind::Previous ? pgc.PrevPGC : pgc.GoUpPGC;
}

std::vector<PgcLink> LinksTo(const Project& project, std::string_view key, bool outside) {
  std::vector<PgcLink> links;
  const auto element = PlaceOfKey(key);
  const VTS_P* entry = element ? project.Disc.Item(element->Entry) : nullptr;
  if (entry == nullptr) {
    return links;
  }
  PgcNames names;
  VisitLivePgcs(*entry, element->Entry,
                [&names](const DiscPlace& at, const PGC_P& pgc) { names.Add(at, pgc.PGCName); });
  VisitLivePgcs(*entry, element->Entry, [&](const DiscPlace& at, const PGC_P& pgc) {
    if (outside && element->Holds(at)) {
      return;
    }
    for (const PgcLinkKind kind : Kinds) {
      const std::string name = NameKey(LinkOf(pgc, kind));
      const auto target = LeadsNowhere(name, kind, at.InTitles) ? std::nullopt : names.Find(name, at);
      if (target && element->Holds(*target)) {
        links.push_back({KeyOf(at), kind, KeyOf(*target)});
      }
    }
  });
  return links;
}

}  // namespace quorvelant
