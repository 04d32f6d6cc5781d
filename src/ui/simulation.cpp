#include "ui/simulation.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "check/nav_of.h"
#include "player/nav_lookup.h"
#include "player/nav_words.h"
#include "ui/messages.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr double TicksASecond = 90000;
constexpr std::uint16_t SubpictureShows = 0x40;

// The streams that a chain has, by its table of them.
template <typename Table>
std::vector<std::uint16_t> StreamsOf(const Table& table) {
  std::vector<std::uint16_t> streams;
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (table.at(i) != 0) {
      streams.push_back(static_cast<std::uint16_t>(i));
    }
  }
  return streams;
}

bool HasCells(const std::vector<NavChain>& chains) {
  return std::ranges::any_of(chains, [](const NavChain& chain) { return !chain.Cells.empty(); });
}

bool HasCells(const std::vector<NavMenus>& units) {
  return std::ranges::any_of(units, [](const NavMenus& menus) { return HasCells(menus.Chains); });
}

bool HasCells(const NavDisc& disc) {
  return HasCells(disc.Menus) || std::ranges::any_of(disc.Sets, [](const NavSet& set) {
           return HasCells(set.Menus) || HasCells(set.Titles);
         });
}

void AddLanguages(const std::vector<NavMenus>& units, std::vector<std::uint16_t>& languages) {
  for (const NavMenus& menus : units) {
    if (std::ranges::find(languages, menus.Language) == languages.end()) {
      languages.push_back(menus.Language);
    }
  }
}

// The register of the picture's shape: 16:9 wished and shown, or 4:3 by letterbox or pan-scan.
std::uint16_t ScreenValue(PlayerScreenKind screen) {
  switch (screen) {
    case PlayerScreenKind::LetterBox:
      return 0x0200;
    case PlayerScreenKind::PanScan:
      return 0x0100;
    case PlayerScreenKind::Wide:
      break;
  }
  return 0x0C00;
}

// The first stream after this one.
std::optional<std::uint16_t> StreamAfter(const std::vector<std::uint16_t>& streams, std::uint16_t now) {
  const auto next = std::ranges::upper_bound(streams, now);
  return next == streams.end() ? std::nullopt : std::optional(*next);
}

}  // namespace

Simulation::Simulation(Document& document, Jobs& jobs, PictureLoader& pictures, QObject* parent)
    : QObject(parent), document_(document), jobs_(jobs), pictures_(pictures) {
  connect(&document, qOverload<const ChangeEvent&>(&Document::Changed), this, &Simulation::EndByChange);
}

void Simulation::Insert() {
  EditSession& session = document_.Session();
  const std::size_t wrong = session.Commands().Errors.size();
  NavDisc disc = NavOf(session.Work(), session.RulesInForce());
  if (!HasCells(disc)) {
    Eject();
    document_.Speaks().Tell(MessageOf(message::NothingToPlay, {}));
    return;
  }
  disc_ = std::move(disc);
  log_.Clear();
  if (wrong > 0) {
    log_.Add({.Place = {},
              .Words = tr("Commands with errors, which do nothing here: %1").arg(wrong),
              .IsFault = true});
  }
  if (!look_) {
    look_ = std::make_unique<SimulatedLook>(document_, jobs_, pictures_);
    connect(look_.get(), &SimulatedLook::Changed, this, &Simulation::LookChanged);
  }
  NavRegisters fresh = FreshRegisters(player_.Language);
  fresh.Put(Sprm::VideoPreference, ScreenValue(player_.Screen));
  log_.Add({.Place = {}, .Words = tr("The disc is put in"), .IsPress = true});
  Take(InsertDisc(*disc_, fresh, Draw()));
  emit Inserted();
}

void Simulation::Eject() {
  if (disc_) {
    disc_.reset();
    look_.reset();
    state_ = {};
    emit StateChanged();
  }
}

// Whoever opens another project knows that its disc is another.
void Simulation::EndByChange(const ChangeEvent& event) {
  if (disc_) {
    Eject();
    if (!event.Replaced) {
      document_.Speaks().Tell(MessageOf(message::SimulationEnded, {}));
    }
  }
}

// As the remote calls its keys.
QString Simulation::PressedWords(const NavEvent& event) const {
  switch (event.Key) {
    case NavKey::NextPart:
      return tr("Next Chapter");
    case NavKey::PreviousPart:
      return tr("Previous Chapter");
    case NavKey::Audio:
    case NavKey::Subpicture: {
      const bool isAudio = event.Key == NavKey::Audio;
      const NavChain* const chain = Chain();
      return chain == nullptr                                    ? QString()
             : !isAudio && (event.Number & SubpictureShows) == 0 ? tr("no subtitles")
             : isAudio ? AudioWords(document_.Work(), chain->Name, event.Number)
                       : SubtitleWords(document_.Work(), chain->Name, event.Number & (SubpictureShows - 1U));
    }
    default:
      return Shown(PressWords(event));
  }
}

void Simulation::Press(const NavEvent& event) {
  Carry(event, PressedWords(event));
}

void Simulation::Carry(const NavEvent& event, const QString& words) {
  if (disc_ && state_.Phase == NavPhase::Stopped) {
    Refuse(words);
  } else if (disc_) {
    log_.Add({.Place = {}, .Words = words, .IsPress = true});
    Take(NavStep(*disc_, state_, event, Draw()));
  }
}

void Simulation::Refuse(const QString& words) {
  log_.Add({.Place = {}, .Words = words, .IsPress = true});
  log_.Add({.Place = {},
            .Words = state_.Phase == NavPhase::Stopped ? tr("This key does nothing, the disc has stopped")
                                                       : tr("This key does nothing here")});
  emit StateChanged();
}

NavRandom Simulation::Draw() {
  return [this](std::uint16_t bound) {
    const unsigned most = std::max<unsigned>(bound, 1);
    return static_cast<std::uint16_t>(std::uniform_int_distribution<unsigned>(1, most)(dice_));
  };
}

// What a menu chose for its title is not undone by a key that nobody hears anything of.
void Simulation::PressNext(NavKey key) {
  if (!disc_) {
    return;
  }
  const bool isAudio = key == NavKey::Audio;
  const NavChain* const chain = Chain();
  const bool isTitle = state_.Phase != NavPhase::Stopped && state_.At.Domain == NavDomain::Title;
  const auto streams = chain == nullptr || !isTitle ? std::vector<std::uint16_t>()
                       : isAudio                    ? StreamsOf(chain->Audio)
                                                    : StreamsOf(chain->Subpictures);
  if (streams.empty()) {
    Refuse(isAudio ? tr("Audio") : tr("Subtitles"));
    return;
  }
  const std::uint16_t now = state_.Registers.Of(isAudio ? Sprm::Audio : Sprm::Subpicture);
  if (isAudio) {
    Press({key, StreamAfter(streams, now).value_or(streams.front())});
    return;
  }
  const auto number = static_cast<std::uint16_t>(now & (SubpictureShows - 1U));
  const auto next =
      (now & SubpictureShows) != 0 ? StreamAfter(streams, number) : std::optional(streams.front());
  // After the last one they are hidden, and the number stays.
  Press({key, next ? static_cast<std::uint16_t>(*next | SubpictureShows) : number});
}

// --- time ---

void Simulation::LetPass(double seconds) {
  const auto whole = static_cast<std::uint16_t>(std::clamp(std::floor(seconds), 0.0, 65535.0));
  NavRegisters& registers = state_.Registers;
  for (std::size_t i = 0; i < registers.General.size(); ++i) {
    if (registers.Counts.at(i)) {
      registers.General.at(i) = static_cast<std::uint16_t>(registers.General.at(i) + whole);
    }
  }
  const std::uint16_t timer = registers.Of(Sprm::Timer);
  registers.Put(Sprm::Timer, timer > whole ? static_cast<std::uint16_t>(timer - whole) : std::uint16_t{0});
}

void Simulation::GoOn() {
  Advance(tr("Go On"));
}

void Simulation::PassTime() {
  Advance(tr("time"));
}

void Simulation::Advance(const QString& words) {
  if (!disc_) {
    return;
  }
  const auto cell = CellSeconds();
  const std::uint16_t timer = TimerSeconds();
  const bool isStopped = state_.Phase == NavPhase::Stopped;
  if (timer != 0 && (!cell || timer <= *cell)) {
    LetPass(timer - 1);  // the machine wants a timer that runs
    Carry({NavKey::TimeOver, 0}, words);
    return;
  }
  LetPass(isStopped ? 0 : cell.value_or(0));
  const NavPage* const page = Page();
  const bool waits = page != nullptr;
  Carry({cell || waits || state_.Phase == NavPhase::Playing ? NavKey::Wait : NavKey::StopStill, 0}, words);
}

std::optional<double> Simulation::CellSeconds() const {
  const NavCell* const cell = disc_ && state_.Phase != NavPhase::Stopped ? CellAt(*disc_, state_) : nullptr;
  const NavChain* const chain = Chain();
  if (cell == nullptr || chain == nullptr) {
    return std::nullopt;
  }
  const auto still = [](std::uint8_t seconds) {
    return seconds == StillForEver ? std::nullopt : std::optional(static_cast<double>(seconds));
  };
  if (state_.Phase == NavPhase::CellStill) {
    return still(cell->StillTime);
  }
  if (state_.Phase == NavPhase::ChainStill) {
    return still(chain->StillTime);
  }
  const std::uint32_t begin = state_.Page == 0 ? 0 : cell->Pages.at(state_.Page - 1U).Start;
  const std::uint32_t end = state_.Page < cell->Pages.size() ? cell->Pages[state_.Page].Start : cell->Ticks;
  if (end == 0 && look_) {
    const auto whole = look_->CellSeconds();
    return whole ? std::optional(std::max(*whole - begin / TicksASecond, 0.0)) : std::nullopt;
  }
  return end == 0 ? std::nullopt : std::optional((end > begin ? end - begin : 0) / TicksASecond);
}

std::optional<double> Simulation::Seconds() const {
  const auto cell = CellSeconds();
  const std::uint16_t timer = TimerSeconds();
  return timer != 0 ? std::optional(std::min<double>(timer, cell.value_or(timer))) : cell;
}

std::uint16_t Simulation::TimerSeconds() const {
  const bool runs = disc_ && state_.Phase != NavPhase::Stopped && state_.At.Set != 0;
  return runs ? state_.Registers.Of(Sprm::Timer) : std::uint16_t{0};
}

bool Simulation::EndsInStill() const {
  const NavCell* const cell = disc_ && state_.Phase == NavPhase::Playing ? CellAt(*disc_, state_) : nullptr;
  const NavChain* const chain = Chain();
  const NavPage* const page = Page();
  const bool goesOn = cell == nullptr || chain == nullptr || state_.Page < cell->Pages.size() ||
                      (page != nullptr && page->ForcedAction != 0) || TimerSeconds() != 0;
  if (goesOn) {
    return false;
  }
  const bool isLast = cell->StillTime == 0 && cell->Command == 0 && chain->Playback == 0 &&
                      state_.At.Cell == chain->Cells.size();
  return cell->StillTime == StillForEver || (isLast && chain->StillTime == StillForEver);
}

// --- the player ---

void Simulation::SetPlayer(const SimulatedPlayer& player) {
  const SimulatedPlayer before = std::exchange(player_, player);
  if (before == player_ || !disc_) {
    return;
  }
  if (before.Language != player_.Language) {
    Insert();
    return;
  }
  state_.Registers.Put(Sprm::VideoPreference, ScreenValue(player_.Screen));
  look_->Show(*disc_, state_, player_.Screen);
  emit StateChanged();
}

std::vector<std::uint16_t> Simulation::Languages() const {
  std::vector<std::uint16_t> languages;
  if (disc_) {
    AddLanguages(disc_->Menus, languages);
    for (const NavSet& set : disc_->Sets) {
      AddLanguages(set.Menus, languages);
    }
  }
  if (std::ranges::find(languages, player_.Language) == languages.end()) {
    languages.push_back(player_.Language);
  }
  return languages;
}

void Simulation::Take(const NavOutcome& outcome) {
  log_.Add(document_.Work(), *disc_, outcome);
  state_ = outcome.State;
  look_->Show(*disc_, state_, player_.Screen);
  emit StateChanged();
}

const NavChain* Simulation::Chain() const {
  return disc_ ? ChainAt(*disc_, state_.At, state_.Registers.Of(Sprm::MenuLanguage)) : nullptr;
}

const NavPage* Simulation::Page() const {
  return disc_ && state_.Phase != NavPhase::Stopped ? PageAt(*disc_, state_) : nullptr;
}

std::size_t Simulation::Parts() const {
  const NavSet* const set =
      disc_ && state_.At.Domain == NavDomain::Title ? SetOf(*disc_, state_.At.Set) : nullptr;
  const std::size_t title = state_.Registers.Of(Sprm::TitleOfSet);
  return set != nullptr && title >= 1 && title <= set->Parts.size() ? set->Parts[title - 1].size() : 0;
}

QString Simulation::Words() const {
  if (!disc_) {
    return {};
  }
  QString words = Shown(PlaceWords(*disc_, state_));
  const bool isStill = state_.Phase == NavPhase::CellStill || state_.Phase == NavPhase::ChainStill;
  if (isStill) {
    words += tr(", still picture");
  }
  const NavPage* const page = Page();
  const bool waits = page != nullptr;
  const auto seconds = Seconds();
  if (waits && EndsInStill()) {
    words += tr(", waits for a button");
  } else if (seconds) {
    words += (EndsInStill() ? tr(", stands still after %1 s") : tr(", goes on after %1 s"))
                 .arg(std::ceil(*seconds));
  } else if (isStill) {
    words += waits ? tr(", waits for a button") : tr(", waits for Go On");
  } else if (state_.Phase == NavPhase::Playing && look_->IsReady()) {
    words += tr(", of unknown length");
  }
  return words;
}

std::string Simulation::Place() const {
  const NavCell* const cell = disc_ && state_.Phase != NavPhase::Stopped ? CellAt(*disc_, state_) : nullptr;
  const NavChain* const chain = Chain();
  return cell != nullptr ? cell->Name : chain != nullptr ? chain->Name : std::string();
}

}  // namespace quorvelant
