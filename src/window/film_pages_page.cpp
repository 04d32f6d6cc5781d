#include "window/film_pages_page.h"

#include <QVBoxLayout>

#include "ui/plain_tool_tip.h"
#include "ui/shown_text.h"

namespace quorvelant {

FilmPagesPage::FilmPagesPage(QWidget* parent)
    : QWizardPage(parent), words_(new QLabel), pages_(new QListWidget) {
  setTitle(tr("Pages"));
  setSubTitle(tr("The pages of the menus as screens show them, each with its first button chosen"));
  const int line = fontMetrics().lineSpacing();
  pages_->setAccessibleName(tr("Pages"));
  pages_->setViewMode(QListView::IconMode);
  pages_->setIconSize({line * 20, line * 12});
  pages_->setGridSize({line * 21, line * 14});
  pages_->setMovement(QListView::Static);
  pages_->setResizeMode(QListView::Adjust);
  pages_->setWordWrap(true);
  words_->setTextFormat(Qt::PlainText);
  words_->setWordWrap(true);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(words_);
  column->addWidget(pages_, 1);
}

void FilmPagesPage::ShowBusy() {
  pages_->clear();
  words_->setText(tr("The pages are being painted…"));
}

void FilmPagesPage::Show(const PaintedFilmPages& painted) {
  pages_->clear();
  for (const PaintedFilmPage& page : painted.Pages) {
    auto* const item = new QListWidgetItem(QIcon(QPixmap::fromImage(page.Image)), Shown(page.Name), pages_);
    item->setToolTip(PlainToolTip(Shown(page.Name)));
    item->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
  }
  if (pages_->count() > 0) {
    pages_->setCurrentRow(0);
  }
  words_->setText(!painted.Faults.empty() ? tr("The pages cannot be painted.")
                  : painted.Pages.empty() ? tr("There are no pages: no menus are made, or there is nothing "
                                               "to choose from.")
                                          : tr("Finish makes them, and the project."));
}

}  // namespace quorvelant
