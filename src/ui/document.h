// The project that a window works on.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "edit/outcome.h"
#include "edit/session.h"
#include "edit/tree.h"
#include "ui/voice.h"

namespace quorvelant {

// What a step, an undo or a redo changed. `Replaced`: another project; every key is new and the lists are
// empty.
struct ChangeEvent {
  std::vector<TreeChange> Tree;
  std::vector<Part> Parts;
  bool Replaced = false;

  [[nodiscard]] bool TouchesTrack(std::size_t track) const;
  [[nodiscard]] bool TouchesDisc() const;  // First Play, an entry or the palettes
};

// One edit session with a signal. History, operations and tree changes are the session's. Everything here
// belongs to the window's thread; long work takes a copy of the project (ui/jobs.h).
class Document : public QObject, private EditListener {
  Q_OBJECT
 public:
  using Operation = std::function<Outcome(EditSession& session, Consent consent)>;

  Document(EditOptions options, std::string cacheFolder, Voice& voice, QObject* parent = nullptr);
  ~Document() override;

  [[nodiscard]] EditSession& Session() { return session_; }
  [[nodiscard]] const Project& Work() const { return session_.Work(); }
  [[nodiscard]] Voice& Speaks() { return voice_; }

  // Carries an operation out: a refusal is told, a question asked. The key of what was made or changed
  // (perhaps empty); nothing where it was not done.
  std::optional<std::string> Do(const Operation& operation);
  // The same for moves that follow each other ("a button of set 2 moves"): those of one gesture, each within
  // a second of the one before and with nothing else between, are one step of the history.
  std::optional<std::string> DoAgain(std::string_view gesture, const Operation& operation);
  // A refusal or question comes back as a value and nothing is told: for fields that show it in their place.
  Outcome Try(const std::function<Outcome(EditSession& session)>& operation);

  void Undo();
  void Redo();
  // Counts changes, undo and redo among them: what was worked out for another count is stale.
  [[nodiscard]] std::uint64_t Revision() const { return revision_; }
  // The folder that relative sources count from; the present one while the project has no file.
  [[nodiscard]] std::string SourceFolder() const;
  // A path of this system as the project's script holds it: a file below the script's folder moves with it.
  [[nodiscard]] std::string AsScriptHolds(const std::string& path) const;

 signals:
  void Changed(const quorvelant::ChangeEvent& event);
  // The file, or whether there is unsaved work.
  void StateChanged();

 private:
  void Changed(std::span<const TreeChange> tree, std::span<const Part> parts) override;
  void Replaced() override;

  Voice& voice_;
  EditSession session_;
  std::uint64_t revision_ = 0;
  std::string gesture_;
  std::uint64_t gestureRevision_ = 0;
  QElapsedTimer sinceGesture_;
};

}  // namespace quorvelant
