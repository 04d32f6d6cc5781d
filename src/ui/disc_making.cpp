#include "ui/disc_making.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <filesystem>
#include <utility>

#include "base/message_error.h"
#include "desk/new_project.h"
#include "menu/wizard.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

std::string PagesOf(const std::string& project) {
  return std::filesystem::path(project).replace_extension(".menus").string();
}

QImage ImageOf(const Picture& picture) {
  const auto bytesPerLine = static_cast<qsizetype>(picture.Width) * 3;
  return QImage(picture.Pixels.data(), picture.Width, picture.Height, bytesPerLine, QImage::Format_RGB888)
      .copy();
}

QString PageName(const MadePage& page, const DiscOrder& order) {
  static constexpr std::array<std::string_view, PageKindCount> Kinds{"Root", "Audio", "Subtitles", "Chapters",
                                                                     "Titles"};
  const QString kind = Shown(Kinds.at(static_cast<std::size_t>(page.Kind)));
  return page.Kind == PageKind::TitleChoice ? QStringLiteral("%1 %2").arg(kind).arg(page.Number + 1)
                                            : QStringLiteral("%1: %2 %3")
                                                  .arg(Shown(order.Films.at(page.Film).Name), kind)
                                                  .arg(page.Number + 1);
}

}  // namespace

std::optional<OpenedProject> MakeProject(const DiscMaking& making, const std::string& path,
                                         UserInterface& ui) {
  EditSession session(Rules::Players, making.Options, IndexStore(false, making.CacheFolder));
  PageFolder pages(PagesOf(path), false);
  StartAt(session, path);
  DiscOrder order = making.Order;
  MadeDisc made;
  const Outcome outcome = MakeDisc(session, order, pages, {making.Pictures, ui}, made);
  if (!outcome.IsDone()) {
    if (!outcome.Words.Text.empty()) {
      ui.Tell(outcome.Words);
    }
    return std::nullopt;
  }
  if (!SaveProjectAs(session, path, ui)) {
    return std::nullopt;
  }
  pages.Keep();
  return OpenedProject{.Work = session.Work(), .File = session.File(), .Script = session.Script()};
}

PagePreviews PreviewPages(const DiscMaking& making, UserInterface& ui) {
  const QTemporaryDir aside;
  PagePreviews previews;
  const std::string path = aside.filePath(QStringLiteral("disc.qvp")).toStdString();
  EditSession session(Rules::Players, making.Options, IndexStore(false, making.CacheFolder));
  PageFolder pages(PagesOf(path), false);
  StartAt(session, path);
  DiscOrder order = making.Order;
  MadeDisc made;
  const Outcome outcome = MakeDisc(session, order, pages, {making.Pictures, ui}, made);
  if (!outcome.IsDone()) {
    previews.Refusal = Shown(outcome.Words.Text);
    return previews;
  }
  try {
    for (const MadePage& page : made.Pages) {
      const PaintedPage painted{.Normal = making.Pictures.Load(page.NormalFile),
                                .Sublayer = making.Pictures.Load(page.SublayerFile)};
      previews.Pages.push_back(
          {PageName(page, order), ImageOf(PreviewPage(painted, page.Layout, 0, order.Look))});
    }
  } catch (const MessageError& fault) {
    previews.Refusal = Shown(fault.What().Text);
  }
  return previews;
}

std::string ProposedProjectFile(const std::vector<OrderedFilm>& films) {
  QString folder = films.empty() ? QString() : QFileInfo(Shown(films.front().Video)).absolutePath();
  if (folder.isEmpty() || !QFileInfo(folder).isWritable()) {
    folder = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    QDir().mkpath(folder);
  }
  QString name = QStringLiteral("Disc");
  for (int number = 2; QFileInfo::exists(folder + QLatin1Char('/') + name + QStringLiteral(".qvp")) ||
                       QFileInfo::exists(folder + QLatin1Char('/') + name + QStringLiteral(".menus"));
       ++number) {
    name = QStringLiteral("Disc %1").arg(number);
  }
  return (folder + QLatin1Char('/') + name + QStringLiteral(".qvp")).toStdString();
}

}  // namespace quorvelant
