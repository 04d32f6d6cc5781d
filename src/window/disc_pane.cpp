#include "window/disc_pane.h"

#include <QCursor>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "edit/element_names.h"
#include "edit/live_elements.h"
#include "edit/live_sources.h"
#include "edit/removal.h"
#include "model/cls_dvd.h"
#include "model/keys.h"
#include "model/walk.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

std::vector<std::optional<ActionId>> MenuOfStructure() {
  using enum ActionId;
  return {NewTitleSet, NewTitle, NewLanguage, NewPgc, NewProgram, PlaceTrack, std::nullopt, Rename, Remove};
}

bool HoldsCells(const Project& project) {
  return std::ranges::any_of(Live(project.Disc), [](const VTS_P* entry) {
    return !LiveCells(*entry, Domain::Menu).empty() || !LiveCells(*entry, Domain::Title).empty();
  });
}

// Where a track or scene can be placed: a PGC or program, with the words for it.
struct Place {
  std::string Key;
  std::string Words;
};

// All PGCs that take it, and the programs of the one that is chosen; what is chosen comes first.
std::vector<Place> PlacesFor(const Project& project, const Dropped& what, const std::string& chosen) {
  std::vector<Place> places;
  const auto add = [&](const std::string& key, std::string words) {
    if (!RefuseDrop(project, what, key)) {
      places.push_back({key, std::move(words)});
    }
  };
  for (const auto& at : LivePgcs(project)) {
    const std::string unit = NameOfElement(project, at.UnitKey());
    const std::string& key = at.Chain->Key;
    add(key, fmt::format("{}, PGC {}", unit, at.Chain->PGCName));
    if (chosen == key || chosen.starts_with(key + ".")) {
      for (const auto& [index, program] : LiveWithIndex(at.Chain->PG)) {
        add(ProgramKey(key, static_cast<int>(index + 1)),
            fmt::format("{}, program {}", unit, program.PGName));
      }
    }
  }
  std::stable_partition(places.begin(), places.end(),
                        [&chosen](const Place& place) { return place.Key == chosen; });
  return places;
}

}  // namespace

DiscPane::DiscPane(WindowParts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      model_(parts.Doc),
      tree_(new ProjectTree(parts, model_, MenuOfStructure())),
      help_(
          new QLabel(tr("Drag a track or a scene from Media onto a PGC, or choose both and press Ctrl+L."))) {
  setAccessibleName(tr("Disc"));
  tree_->setAccessibleName(tr("Disc"));
  tree_->setDragDropMode(QAbstractItemView::DragDrop);
  tree_->setDragDropOverwriteMode(true);  // onto rows, never between
  tree_->setAutoExpandDelay(700);
  help_->setWordWrap(true);
  help_->setMargin(fontMetrics().height() / 4);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(tree_);
  column->addWidget(help_);
  setFocusProxy(tree_);
  connect(tree_, &ProjectTree::Renamed, this, &DiscPane::GiveName);
  connect(&model_, &DiscModel::DropRefused, this, [this](const QString& why) {
    parts_.Doc.Speaks().Status(why.toStdString());
    QToolTip::showText(QCursor::pos(), why, tree_);
  });
  connect(&model_, &DiscModel::Placed, this,
          [this](const QString& key) { parts_.Chosen.Choose(key.toStdString()); });
  connect(&model_, &TreeModel::Applied, this, [this] {
    ShowHelp();
    parts_.Commands.Refresh();
  });
  ShowHelp();
  HandleActions();
}

void DiscPane::HandleActions() {
  Actions& actions = parts_.Commands;
  const auto isStructure = [this] {
    const std::string& key = parts_.Chosen.Key();
    return !key.empty() && !ParseSourceKey(key);
  };
  actions.Handle(ActionId::NewTitleSet,
                 [this] { DoAndChoose([](EditSession& session, Consent) { return NewTitleSet(session); }); });
  actions.Handle(
      ActionId::NewTitle, [this] { MakeTitle(); }, [this] { return !EntryChosen().empty(); });
  actions.Handle(
      ActionId::NewLanguage, [this] { MakeLanguage(); }, [this] { return !EntryChosen().empty(); });
  actions.Handle(
      ActionId::NewPgc, [this] { MakePgc(); }, [this] { return !UnitChosen().empty(); });
  actions.Handle(
      ActionId::NewProgram, [this] { MakeProgram(); }, [this] { return !PgcChosen().empty(); });
  actions.Handle(
      ActionId::PlaceTrack, [this] { PlaceTrack(); },
      [this] { return DroppedOf(parts_.Chosen.Source()).has_value(); });
  actions.Handle(
      ActionId::Rename,
      [this] {
        parts_.Commands.Of(ActionId::ShowDisc)->trigger();
        tree_->setFocus();
        tree_->EditName(parts_.Chosen.Key());
      },
      [this, isStructure] {
        return isStructure() && model_.IndexOf(parts_.Chosen.Key()).flags().testFlag(Qt::ItemIsEditable);
      });
  actions.Handle(
      ActionId::Remove, [this] { RemoveChosen(); }, isStructure);
}

// --- what is chosen ---

std::string DiscPane::Above(const std::function<bool(const std::string& key)>& is) const {
  std::string key = parts_.Chosen.Structure();
  while (!key.empty() && !is(key)) {
    const std::size_t dot = key.rfind('.');
    key = dot == std::string::npos ? std::string() : key.substr(0, dot);
  }
  return key;
}

std::string DiscPane::EntryChosen() const {
  return Above([this](const std::string& key) { return LiveEntry(parts_.Doc.Work(), key) != nullptr; });
}

std::string DiscPane::UnitChosen() const {
  return Above([this](const std::string& key) {
    return LiveLanguage(parts_.Doc.Work(), key) != nullptr || LiveTitle(parts_.Doc.Work(), key) != nullptr;
  });
}

std::string DiscPane::PgcChosen() const {
  return Above([this](const std::string& key) {
    return key != FirstPgcKey && LivePgc(parts_.Doc.Work(), key) != nullptr;
  });
}

void DiscPane::DoAndChoose(const Document::Operation& operation) {
  const auto key = parts_.Doc.Do(operation);
  if (key && !key->empty()) {
    parts_.Chosen.Choose(*key);
  }
}

// --- new elements ---

void DiscPane::AskNameAndMake(NewLevel level, const std::string& parent,
                              Outcome (*make)(EditSession& session, std::string_view parent,
                                              std::string name)) {
  const Message question = NameQuestion(level);
  const auto name =
      parts_.Answers.AskText(question.Title, question.Text, ProposedName(parts_.Doc.Session(), parent));
  if (name) {
    DoAndChoose([&](EditSession& session, Consent) { return make(session, parent, *name); });
  }
}

void DiscPane::MakeTitle() {
  AskNameAndMake(NewLevel::Title, EntryChosen(), &NewTitle);
}

void DiscPane::MakePgc() {
  AskNameAndMake(NewLevel::Pgc, UnitChosen(), &NewPgc);
}

void DiscPane::MakeProgram() {
  AskNameAndMake(NewLevel::Program, PgcChosen(), &NewProgram);
}

void DiscPane::MakeLanguage() {
  const std::string key = EntryChosen();
  std::vector<std::string> names;
  const VTS_P& entry = *LiveEntry(parts_.Doc.Work(), key);
  for (const std::string_view name : CLsDVD::LanguageArray().subspan(1)) {  // the first is for none
    const std::string_view code = CLsDVD::LangNameToLangCode(name);
    const bool isThere =
        std::ranges::any_of(Live(entry.Lang), [code](const Lang_P* one) { return one->Language == code; });
    if (!isThere) {
      names.emplace_back(name);
    }
  }
  const auto chosen = parts_.Answers.Choose(
      "New Language",
      fmt::format("In which language are the new menus of {}?", NameOfElement(parts_.Doc.Work(), key)),
      names);
  if (chosen) {
    DoAndChoose([&](EditSession& session, Consent) { return NewLanguage(session, key, names[*chosen]); });
  }
}

void DiscPane::PlaceTrack() {
  const Project& project = parts_.Doc.Work();
  const auto what = DroppedOf(parts_.Chosen.Source());
  if (!what) {
    return;
  }
  const std::string chosen = DropTarget(project, parts_.Chosen.Structure());
  const std::vector<Place> places = PlacesFor(project, *what, chosen);
  if (places.empty()) {  // the reason is that of the place that is chosen, or of any
    const auto chains = LivePgcs(project);
    const std::string target =
        PgcChosen().empty() && !chains.empty() ? chains.back().Chain->Key : PgcChosen();
    parts_.Doc.Do([&](EditSession& session, Consent) { return Drop(session, *what, target); });
    return;
  }
  if (places.front().Key == chosen) {
    DoAndChoose([&](EditSession& session, Consent) { return Drop(session, *what, chosen); });
    return;
  }
  std::vector<std::string> words;
  std::ranges::transform(places, std::back_inserter(words), &Place::Words);
  const std::string& name = project.Tracks[what->Track].TrackName;
  const auto place = parts_.Answers.Choose(
      "Place Track", fmt::format("Where does {}{} go?", what->Scene ? "the scene of " : "", name), words);
  if (place) {
    DoAndChoose([&](EditSession& session, Consent) { return Drop(session, *what, places[*place].Key); });
  }
}

// --- names and removal ---

void DiscPane::GiveName(const QString& key, const QString& name) {
  parts_.Doc.Do(
      [&](EditSession& session, Consent) { return Rename(session, key.toStdString(), name.toStdString()); });
}

void DiscPane::RemoveChosen() {
  const std::string key = parts_.Chosen.Key();
  parts_.Doc.Do([&](EditSession& session, Consent consent) { return Remove(session, key, consent); });
}

void DiscPane::ShowHelp() {
  help_->setVisible(!HoldsCells(parts_.Doc.Work()));
}

}  // namespace quorvelant
