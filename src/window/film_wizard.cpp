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
  const DiscMaking making{menus_->Order(), EditOptionsOf(parts_.Options), parts_.CacheFolder,
                          parts_.Pictures};
  const std::uint64_t revision = parts_.Doc.Revision();
  files_.Load(
      "New disc from films",
      [making, path = menus_->ProjectFile()](UserInterface& ui) { return MakeProject(making, path, ui); },
      [revision, &parts = parts_, &files = files_](OpenedProject made) {
        files.Recent().Add(made.File);
        if (parts.Doc.Revision() == revision || files.MayLeave()) {
          files.Take(std::move(made), false);
        }
      });
  QWizard::accept();
}

}  // namespace quorvelant
