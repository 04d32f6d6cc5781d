#include <QHBoxLayout>

#include "desk/edit_options.h"
#include "window/films_page.h"

namespace quorvelant {

PreviewsPage::PreviewsPage(WindowParts& parts, const MenusPage& menus)
    : parts_(parts), menus_(menus), words_(new QLabel), list_(new QListWidget), picture_(new QLabel) {
  setTitle(tr("Pages"));
  setSubTitle(tr("The menus as they will be, the first button of each chosen."));
  words_->setWordWrap(true);
  list_->setAccessibleName(tr("Pages"));
  list_->setMaximumWidth(fontMetrics().horizontalAdvance(QLatin1Char('m')) * 18);
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setMinimumSize(fontMetrics().height() * 20, fontMetrics().height() * 15);
  auto* const row = new QHBoxLayout;
  row->addWidget(list_);
  row->addWidget(picture_, 1);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(words_);
  column->addLayout(row, 1);
  connect(list_, &QListWidget::currentRowChanged, this, &PreviewsPage::ShowChosen);
}

void PreviewsPage::initializePage() {
  Show({{}, tr("The pages are being painted…")});
  const DiscMaking making{menus_.Order(), EditOptionsOf(parts_.Options), parts_.CacheFolder, parts_.Pictures};
  painting_.Start([making](UserInterface& ui) { return PreviewPages(making, ui); },
                  [this](const PagePreviews& previews) { Show(previews); });
}

void PreviewsPage::Show(const PagePreviews& previews) {
  list_->clear();
  pictures_.clear();
  for (const PreviewedPage& page : previews.Pages) {
    pictures_.push_back(page.Picture);
    list_->addItem(page.Name);
  }
  const QString nothing = tr("There is nothing to choose, so the disc plays without menus.");
  words_->setText(previews.Refusal.isEmpty() && previews.Pages.empty() ? nothing : previews.Refusal);
  words_->setVisible(!words_->text().isEmpty());
  list_->setVisible(!previews.Pages.empty());
  list_->setCurrentRow(previews.Pages.empty() ? -1 : 0);
  ShowChosen();
}

// At the shape that a screen of 4:3 gives it.
void PreviewsPage::ShowChosen() {
  const int row = list_->currentRow();
  if (row < 0 || static_cast<std::size_t>(row) >= pictures_.size()) {
    picture_->clear();
    return;
  }
  const int height = picture_->minimumHeight();
  const QImage& page = pictures_[static_cast<std::size_t>(row)];
  picture_->setPixmap(QPixmap::fromImage(
      page.scaled(height * 4 / 3, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
  picture_->setAccessibleName(list_->item(row)->text());
}

}  // namespace quorvelant
