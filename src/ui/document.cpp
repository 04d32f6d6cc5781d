#include "ui/document.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "edit/source_paths.h"

namespace quorvelant {

bool ChangeEvent::TouchesTrack(std::size_t track) const {
  return Replaced || std::ranges::find(Parts, Part::OfTrack(track)) != Parts.end();
}

bool ChangeEvent::TouchesDisc() const {
  return Replaced || std::ranges::any_of(Parts, [](const Part& part) {
           return part.Kind != PartKind::Track && part.Kind != PartKind::Destination;
         });
}

Document::Document(EditOptions options, std::string cacheFolder, Voice& voice, QObject* parent)
    : QObject(parent),
      voice_(voice),
      session_(Rules::Players, std::move(options), IndexStore::InCache(std::move(cacheFolder))) {
  session_.Listen(*this);
}

Document::~Document() {
  session_.Leave(*this);
}

std::optional<std::string> Document::Do(const Operation& operation) {
  const Outcome outcome = Carry(voice_, [&](Consent consent) { return operation(session_, consent); });
  emit StateChanged();
  return outcome.IsDone() ? std::optional(outcome.Key) : std::nullopt;
}

std::optional<std::string> Document::DoAgain(std::string_view gesture, const Operation& operation) {
  constexpr qint64 MostMsBetween = 1000;
  const bool goesOn = gesture == gesture_ && revision_ == gestureRevision_ && sinceGesture_.isValid() &&
                      sinceGesture_.elapsed() < MostMsBetween;
  if (goesOn) {
    session_.JoinNextStep();
  }
  auto key = Do(operation);
  gesture_ = gesture;
  gestureRevision_ = revision_;
  sinceGesture_.restart();
  return key;
}

Outcome Document::Try(const std::function<Outcome(EditSession& session)>& operation) {
  Outcome outcome = operation(session_);
  emit StateChanged();
  return outcome;
}

void Document::Undo() {
  session_.Undo();
  emit StateChanged();
}

void Document::Redo() {
  session_.Redo();
  emit StateChanged();
}

std::string Document::SourceFolder() const {
  return session_.Work().SourceFolder();
}

std::string Document::AsScriptHolds(const std::string& path) const {
  const std::string source = SourceFolder();  // empty while the project has no file
  if (!source.empty()) {
    const std::filesystem::path folder = std::filesystem::absolute(source).lexically_normal();
    const std::filesystem::path relative = std::filesystem::path(path).lexically_relative(folder);
    if (!session_.File().empty() && !relative.empty() && *relative.begin() != "..") {
      return relative.generic_string();
    }
  }
  return PathFrom(session_.Work().ScriptFile, path);
}

void Document::Changed(std::span<const TreeChange> tree, std::span<const Part> parts) {
  ++revision_;
  emit Changed(ChangeEvent{{tree.begin(), tree.end()}, {parts.begin(), parts.end()}, false});
}

void Document::Replaced() {
  ++revision_;
  emit Changed(ChangeEvent{{}, {}, true});
  emit StateChanged();
}

}  // namespace quorvelant
