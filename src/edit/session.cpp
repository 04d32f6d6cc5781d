#include "edit/session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "edit/change.h"
#include "edit/session_state.h"
#include "model/chain_palette.h"
#include "model/default_structure.h"
#include "script/script_reader.h"

namespace quorvelant {

namespace {

Project BlankProject(const EditOptions& options) {
  Project project;
  MakeDefaultStructure(project);
  Palette_P palette;
  palette.Key = "Default";
  palette.PaletteColors = LegiblePalette;
  project.Palettes.Add(std::move(palette));
  project.DestinationFolder = options.DestinationFolder;
  return project;
}

}  // namespace

void EditSession::State::Record(std::string words, PartImages images) {
  for (const HistoryStep& step : Undone) {
    Bytes -= step.Bytes;
  }
  Undone.clear();
  if (std::exchange(JoinsNext, false) && !Done.empty() && Done.back().Words == words) {
    Join(std::move(images));
    return;
  }
  HistoryStep step{.Words = std::move(words), .Images = std::move(images), .Bytes = 0, .Former = Content};
  for (const auto& [part, content] : step.Images) {
    step.Bytes += BytesOf(content);
  }
  Content = ++LastContent;
  Bytes += step.Bytes;
  Done.push_back(std::move(step));
  while (Bytes > MostHistoryBytes && Done.size() > 1) {
    Bytes -= Done.front().Bytes;
    Done.pop_front();
  }
  CommandsStale = true;
  TellChanged(Done.back().Images);
}

void EditSession::State::Join(PartImages images) {
  const PartImages before = images;
  HistoryStep& step = Done.back();
  step.Images.merge(images);
  std::erase_if(step.Images, [this](const auto& image) { return Holds(Work, image.first, image.second); });
  Bytes -= step.Bytes;
  step.Bytes = 0;
  for (const auto& [part, content] : step.Images) {
    step.Bytes += BytesOf(content);
  }
  Bytes += step.Bytes;
  Content = ++LastContent;
  if (step.Images.empty()) {  // back where the gesture began
    Content = step.Former;
    Done.pop_back();
  }
  CommandsStale = true;
  TellChanged(before);
}

void EditSession::State::Reread(std::span<const std::size_t> entries) {
  Aims.Update(Work, entries);
  Uses.Update(Work, entries);
}

void EditSession::State::ForgetHistory() {
  Done.clear();
  Undone.clear();
  Bytes = 0;
}

void EditSession::State::Take(std::deque<HistoryStep>& from, std::deque<HistoryStep>& to) {
  HistoryStep step = std::move(from.back());
  from.pop_back();
  Bytes -= step.Bytes;
  // Additions are taken back from the last one and made again from the first; a step holds either.
  const auto exchange = [this](auto& image) {
    image.second = Exchange(Work, image.first, std::move(image.second));
  };
  if (&from == &Done) {
    std::for_each(step.Images.rbegin(), step.Images.rend(), exchange);
  } else {
    std::ranges::for_each(step.Images, exchange);
  }
  step.Bytes = 0;
  for (const auto& [part, content] : step.Images) {
    step.Bytes += BytesOf(content);
  }
  Bytes += step.Bytes;
  Reread(EntriesOf(step.Images));
  std::swap(step.Former, Content);
  to.push_back(std::move(step));
  CommandsStale = true;
  TellChanged(to.back().Images);
}

void EditSession::State::TellChanged(const PartImages& before) const {
  if (Listeners.empty()) {
    return;
  }
  const std::vector<TreeChange> tree = ChangesOf(before, Work);
  const std::vector<Part> parts = PartsOf(before);
  const std::vector<EditListener*> listeners = Listeners;  // one may leave while it is told
  for (EditListener* listener : listeners) {
    listener->Changed(tree, parts);
  }
}

EditSession::EditSession(const Rules& rules, EditOptions options, IndexStore indexes)
    : state_(std::make_unique<State>(rules, std::move(options), std::move(indexes))) {
  StartAnew();
}

EditSession::~EditSession() = default;

const Project& EditSession::Work() const {
  return state_->Work;
}

const Rules& EditSession::RulesInForce() const {
  return state_->InForce;
}

const EditOptions& EditSession::Options() const {
  return state_->Chosen;
}

void EditSession::SetOptions(EditOptions options) {
  state_->Chosen = std::move(options);
}

IndexStore& EditSession::Indexes() {
  return state_->Indexes;
}

bool EditSession::IsUnsaved() const {
  return state_->Content != state_->SavedContent;
}

bool EditSession::CanUndo() const {
  return !state_->Done.empty();
}

bool EditSession::CanRedo() const {
  return !state_->Undone.empty();
}

std::string EditSession::UndoWords() const {
  return CanUndo() ? state_->Done.back().Words : std::string();
}

std::string EditSession::RedoWords() const {
  return CanRedo() ? state_->Undone.back().Words : std::string();
}

void EditSession::Undo() {
  state_->JoinsNext = false;
  if (CanUndo()) {
    state_->Take(state_->Done, state_->Undone);
  }
}

void EditSession::Redo() {
  state_->JoinsNext = false;
  if (CanRedo()) {
    state_->Take(state_->Undone, state_->Done);
  }
}

void EditSession::JoinNextStep() {
  state_->JoinsNext = true;
}

std::size_t EditSession::HistoryBytes() const {
  return state_->Bytes;
}

std::size_t EditSession::LastStepBytes() const {
  return CanUndo() ? state_->Done.back().Bytes : 0;
}

const CommandCheck& EditSession::Commands() {
  if (state_->CommandsStale) {
    state_->Commands = CheckCommands(state_->Work, state_->InForce, {.Numbers = NumbersOf(false)},
                                     MissingTargets::AreErrors);
    state_->CommandsStale = false;
  }
  return state_->Commands;
}

bool EditSession::TakeNewCommandErrors() {
  const std::vector<CommandError>& rows = Commands().Errors;
  const auto isKnown = [this](const CommandError& row) {
    return std::ranges::find(state_->AskedErrors, row) != state_->AskedErrors.end();
  };
  const bool isNew = !std::ranges::all_of(rows, isKnown);
  state_->AskedErrors = rows;
  return isNew;
}

const CommandAims& EditSession::Aims() const {
  return state_->Aims;
}

const std::string& EditSession::File() const {
  return state_->File;
}

const std::string& EditSession::Script() const {
  return state_->Script;
}

void EditSession::StartAnew() {
  Replace(BlankProject(state_->Chosen), {});
}

void EditSession::Replace(Project project, std::string file, std::string script) {
  state_->File = std::move(file);
  state_->Script = std::move(script);
  state_->Work = std::move(project);
  state_->Aims = CommandAims(state_->Work, state_->InForce);
  state_->Uses = {};
  state_->AskedErrors.clear();
  std::vector<EditListener*> listeners = std::exchange(state_->Listeners, {});
  {
    Change settled(*this, {});
    for (std::size_t number = 1; number <= state_->Work.Disc.Count(); ++number) {
      settled.Touch({Part::OfEntry(number)});
    }
    static_cast<void>(settled.Commit());
  }
  state_->ForgetHistory();
  state_->SavedContent = state_->Content;
  state_->CommandsStale = true;
  Commands();
  state_->Listeners = listeners;
  for (EditListener* listener : listeners) {
    listener->Replaced();
  }
}

void EditSession::MarkSaved(std::string file, std::string script) {
  state_->File = std::move(file);
  state_->Script = std::move(script);
  state_->SavedContent = state_->Content;
}

void EditSession::MarkUnsaved() {
  state_->SavedContent = ++state_->LastContent;
}

void EditSession::Listen(EditListener& listener) {
  state_->Listeners.push_back(&listener);
}

void EditSession::Leave(EditListener& listener) {
  std::erase(state_->Listeners, &listener);
}

}  // namespace quorvelant
