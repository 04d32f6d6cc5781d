#include "ui/film_disc.h"

#include <fmt/format.h>

#include <QTemporaryDir>
#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "base/passing_ui.h"
#include "desk/made_disc.h"
#include "desk/new_project.h"
#include "desk/place_names.h"
#include "edit/source_paths.h"
#include "menu/page_folder.h"
#include "menu/page_painter.h"
#include "menu/wizard.h"

namespace quorvelant {

namespace {

// Keeps the errors for the wizard. Whoever asked for chapters every so often agreed to the indexing.
class FaultsKept : public PassingUi {
 public:
  using PassingUi::PassingUi;
  void Tell(const Message& message) override {
    if (message.Level == Severity::Error) {
      Faults.push_back(message);
    }
    PassingUi::Tell(message);
  }
  bool Ask(std::string_view title, std::string_view text, bool unattended) override {
    return unattended || PassingUi::Ask(title, text, unattended);
  }

  Findings Faults;
};

// Nothing is told: the disc itself will be.
class FaultsAlone : public FaultsKept {
 public:
  using FaultsKept::FaultsKept;
  void Tell(const Message& message) override {
    if (message.Level == Severity::Error) {
      Faults.push_back(message);
    }
  }
};

bool IsMade(const Outcome& outcome, UserInterface& ui) {
  if (!outcome.IsDone() && !outcome.Words.Text.empty()) {
    ui.Tell(outcome.Words);
  }
  return outcome.IsDone();
}

QImage ImageOf(const Picture& picture) {
  return QImage(picture.Pixels.data(), picture.Width, picture.Height,
                static_cast<qsizetype>(picture.RowBytes()), QImage::Format_RGB888)
      .copy();
}

// Screens stretch all 720 columns to their own shape.
QImage AsShown(const QImage& page, bool isWide) {
  const int width = isWide ? page.height() * 16 / 9 : page.height() * 4 / 3;
  return page.scaled(width, page.height(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::string NameOf(const MadePage& page, const std::string& film, bool isOneOfSeveral) {
  const std::string number = isOneOfSeveral || page.Number > 0 ? fmt::format(" {}", page.Number + 1) : "";
  switch (page.Kind) {
    case PageKind::TitleChoice:
      return "Titles" + number;
    case PageKind::Audio:
      return fmt::format("Sound{} of {}", number, film);
    case PageKind::Subtitle:
      return fmt::format("Subtitles{} of {}", number, film);
    case PageKind::Chapter:
      return fmt::format("Chapters{} of {}", number, film);
    default:
      return fmt::format("Menu{} of {}", number, film);
  }
}

// Pages of the same menu.
bool HasMoreOf(const MadeDisc& made, const MadePage& page) {
  return std::ranges::any_of(made.Pages, [&page](const MadePage& other) {
    return other.Kind == page.Kind && other.Film == page.Film && other.Number > page.Number;
  });
}

// As its film is; the choice among films where all of them are.
bool IsWide(const MadePage& page, const MadeDisc& made, const Project& project) {
  return std::ranges::all_of(made.Pages, [&](const MadePage& other) {
    const bool counts = page.Kind == PageKind::TitleChoice || other.Film == page.Film;
    return !counts || project.Tracks[other.Track].Aspect == "16:9";
  });
}

PaintedFilmPage PaintedAs(const MadePage& page, const MadeDisc& made, const DiscOrder& order,
                          const Project& project, PictureService& pictures) {
  const PaintedPage painted{.Normal = pictures.Load(page.NormalFile),
                            .Sublayer = pictures.Load(page.SublayerFile)};
  const Picture shown = PreviewPage(painted, page.Layout, 0, order.Look);
  const std::string& film = order.Films.at(page.Film).Name;
  return {NameOf(page, film, HasMoreOf(made, page)), AsShown(ImageOf(shown), IsWide(page, made, project))};
}

}  // namespace

MadeFilmDisc MakeFilmDisc(FilmDiscOrder order, PictureService& pictures, UserInterface& ui) {
  FaultsKept told(ui);
  EditSession session(Rules::Players, std::move(order.Options), IndexStore::InCache(order.CacheFolder));
  PageFolder pages(PagesOf(order.Project), order.Replaces);
  StartAt(session, order.Project);
  MadeDisc made;
  if (!IsMade(MakeDisc(session, order.Order, pages, {pictures, told}, made), told)) {
    return {std::nullopt, std::move(told.Faults)};
  }
  Findings errors = FindingsOfScript(session, order.Project, told);
  std::erase_if(errors, [](const Message& finding) { return finding.Level != Severity::Error; });
  PlaceNames named(told, session.Work());
  std::ranges::for_each(errors, [&named](const Message& error) { named.Tell(error); });
  session.Replace(WithNearSources(session.Work()), session.File(), session.Script());
  if (!errors.empty() || ui.StopRequested() || !SaveProjectAs(session, order.Project, told)) {
    return {std::nullopt, std::move(told.Faults)};
  }
  pages.Keep();
  return {OpenedProject{session.Work(), session.File(), session.Script()}, {}};
}

PaintedFilmPages PaintFilmPages(FilmDiscOrder order, PictureService& pictures, UserInterface& ui) {
  const QTemporaryDir aside;
  const std::string project = aside.filePath(QStringLiteral("disc.qvp")).toStdString();
  FaultsAlone told(ui);
  EditSession session(Rules::Players, std::move(order.Options), IndexStore::InCache(order.CacheFolder));
  PageFolder pages(PagesOf(project), false);
  StartAt(session, project);
  MadeDisc made;
  if (!IsMade(MakeDisc(session, order.Order, pages, {pictures, told}, made), told)) {
    return {{}, std::move(told.Faults)};
  }
  PaintedFilmPages painted;
  std::ranges::transform(made.Pages, std::back_inserter(painted.Pages), [&](const MadePage& page) {
    return PaintedAs(page, made, order.Order, session.Work(), pictures);
  });
  return painted;
}

}  // namespace quorvelant
