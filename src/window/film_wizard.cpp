#include "window/film_wizard.h"

#include <memory>
#include <utility>

#include "desk/edit_options.h"

namespace quorvelant {

FilmWizard::FilmWizard(WindowParts& parts, ProjectFiles& files, QWidget* parent)
    : QWizard(parent),
      parts_(parts),
      files_(files),
      films_(new FilmsPage(parts, order_)),
      menus_(new MenusPage(parts, order_)) {
  setWindowTitle(tr("New Disc from Films"));
  setWizardStyle(QWizard::ModernStyle);
  setOption(QWizard::NoBackButtonOnStartPage);
  addPage(films_);
  addPage(menus_);
  addPage(new PreviewsPage(parts, *menus_));
  resize(fontMetrics().height() * 46, fontMetrics().height() * 32);
}

void FilmWizard::accept() {
  if (!files_.MayLeave()) {
    return;
  }
  const auto made = std::make_shared<std::optional<OpenedProject>>();
  const DiscMaking making{menus_->Order(), EditOptionsOf(parts_.Options), parts_.CacheFolder,
                          parts_.Pictures};
  const std::uint64_t revision = parts_.Doc.Revision();
  parts_.Work.Start(
      "New disc from films",
      [made, making, path = menus_->ProjectFile()](UserInterface& ui) {
        *made = MakeProject(making, path, ui);
        return made->has_value() ? Job::Verdict{Job::State::Done, "Made " + path}
                                 : Job::Verdict{Job::State::Failed, "Not made"};
      },
      [made, revision, &parts = parts_, &files = files_](const Job& /*job*/) {
        if (*made && (parts.Doc.Revision() == revision || files.MayLeave())) {
          files.Recent().Add((*made)->File);
          files.Take(*std::move(*made), false);
        }
      });
  QWizard::accept();
}

}  // namespace quorvelant
