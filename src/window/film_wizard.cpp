#include "window/film_wizard.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLayout>
#include <QMimeData>
#include <QUrl>
#include <memory>
#include <utility>

#include "desk/edit_options.h"
#include "desk/made_disc.h"
#include "ui/shown_text.h"
#include "window/film_menus_page.h"
#include "window/film_page.h"
#include "window/film_pages_page.h"
#include "window/film_strip.h"
#include "window/messages.h"

namespace quorvelant {

namespace {

std::vector<std::string> LocalFiles(const QMimeData& data) {
  std::vector<std::string> files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) {
      files.push_back(url.toLocalFile().toStdString());
    }
  }
  return files;
}

bool Exists(const std::string& path) {
  return QFileInfo::exists(Shown(path));
}

}  // namespace

FilmWizard::FilmWizard(WindowParts& parts, ProjectFiles& files, QWidget* parent)
    : QWizard(parent),
      parts_(parts),
      files_(files),
      films_(new FilmListPage(parts, this)),
      menus_(new FilmMenusPage(parts, films_->List(), this)),
      pages_(new FilmPagesPage(this)),
      strip_(new FilmStrip(this)) {
  setWindowTitle(tr("New Disc from Films"));
  setWizardStyle(QWizard::ClassicStyle);
  setOption(QWizard::NoBackButtonOnStartPage);
  setButtonText(QWizard::BackButton, tr("&Back"));
  setButtonText(QWizard::NextButton, tr("&Next"));
  setButtonText(QWizard::FinishButton, tr("&Finish"));
  addPage(films_);
  addPage(menus_);
  addPage(pages_);
  setAcceptDrops(true);
  const int line = fontMetrics().height();
  resize(line * 52, line * 34);
  connect(this, &QWizard::currentIdChanged, this, &FilmWizard::EnterPage);
  connect(strip_, &FilmStrip::StopPressed, this, [this] {
    if (job_ != nullptr) {
      job_->Stop();
    }
  });
}

FilmWizard::~FilmWizard() {
  if (job_ != nullptr) {
    job_->Stop();
  }
}

// --- pages ---

void FilmWizard::dragEnterEvent(QDragEnterEvent* event) {
  if (!isMaking_ && !LocalFiles(*event->mimeData()).empty()) {
    event->acceptProposedAction();
  }
}

void FilmWizard::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  Take(LocalFiles(*event->mimeData()));
}

// On whatever page the user is: the films show then.
void FilmWizard::Take(const std::vector<std::string>& files) {
  while (currentPage() != films_ && currentId() > 0) {
    back();
  }
  films_->AddFiles(files);
}

void FilmWizard::EnterPage(int id) {
  QWizardPage* const here = page(id);
  if (here == nullptr) {
    return;
  }
  here->layout()->addWidget(strip_);
  strip_->Clear();
  if (here == pages_) {
    PaintPages();
  } else if (job_ != nullptr) {
    job_->Stop();
  }
}

void FilmWizard::PaintPages() {
  pages_->ShowBusy();
  const auto painted = std::make_shared<PaintedFilmPages>();
  const auto paint = [painted, order = Order(), &pictures = parts_.Pictures](UserInterface& ui) {
    *painted = PaintFilmPages(order, pictures, ui);
    return ui.StopRequested()        ? Job::Verdict{Job::State::Stopped, "Stopped"}
           : painted->Faults.empty() ? Job::Verdict{Job::State::Done, "Painted"}
                                     : Job::Verdict{Job::State::Failed, "No pages are painted"};
  };
  Run([this, paint] { parts_.Work.Start("Paint the menus", paint); },
      [this, painted] {
        strip_->Clear();
        pages_->Show(*painted);
        if (!painted->Faults.empty()) {
          strip_->ShowFaults(painted->Faults);
        }
      });
}

FilmDiscOrder FilmWizard::Order() const {
  return {.Order = menus_->Order(),
          .Project = menus_->Project(),
          .Options = EditOptionsOf(parts_.Options),
          .CacheFolder = parts_.CacheFolder};
}

// --- the disc ---

void FilmWizard::accept() {
  FilmDiscOrder order = Order();
  if (!isMaking_ && MayMake(order)) {
    Make(std::move(order));
  }
}

bool FilmWizard::MayMake(FilmDiscOrder& order) {
  if (order.Project.empty()) {
    menus_->AskForProject();
    order.Project = menus_->Project();
  }
  if (order.Project.empty()) {
    return false;
  }
  const std::string pages = PagesOf(order.Project);
  if (Exists(order.Project) || Exists(pages)) {
    const Message question =
        MessageOf(message::AskReplaceFilmDisc, {}, Exists(order.Project) ? order.Project : pages);
    order.Replaces = parts_.Answers.AskToDestroy(question.Title, question.Text, "Replace", "Cancel");
    if (!order.Replaces) {
      return false;
    }
  }
  return files_.MayLeave();
}

void FilmWizard::Make(FilmDiscOrder order) {
  SetMaking(true);
  const auto faults = std::make_shared<Findings>();
  const std::string title = "Make " + QFileInfo(Shown(order.Project)).fileName().toStdString();
  const auto make = [faults, order = std::move(order), &pictures = parts_.Pictures](UserInterface& ui) {
    MadeFilmDisc made = MakeFilmDisc(order, pictures, ui);
    *faults = std::move(made.Faults);
    return std::move(made.Opened);
  };
  const auto isMade = std::make_shared<bool>(false);
  const auto take = [&files = files_, isMade](OpenedProject made) {
    *isMade = true;
    files.Recent().Add(made.File);
    files.Take(std::move(made), false);
  };
  Run([this, title, make, take] { files_.Load(title, make, take); },
      [this, faults, isMade] {
        SetMaking(false);
        if (*isMade) {
          QWizard::accept();
        } else if (faults->empty()) {
          strip_->ShowWords(tr("Stopped: nothing was made"));
        } else {
          strip_->ShowFaults(*faults);
        }
      });
}

void FilmWizard::SetMaking(bool isMaking) {
  isMaking_ = isMaking;
  for (QWidget* const child : currentPage()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (child != strip_) {
      child->setEnabled(!isMaking);
    }
  }
  if (isMaking) {
    for (const WizardButton each : {BackButton, NextButton, FinishButton}) {
      button(each)->setEnabled(false);
    }
  } else {
    emit currentPage()->completeChanged();  // puts the buttons right
  }
}

void FilmWizard::reject() {
  if (job_ != nullptr && isMaking_) {
    isLeaving_ = true;
    job_->Stop();
  } else {
    QWizard::reject();
  }
}

// --- work ---

void FilmWizard::Run(std::function<void()> start, std::function<void()> ended) {
  next_ = {std::move(start), std::move(ended)};
  if (job_ != nullptr) {
    job_->Stop();
  } else {
    Begin();
  }
}

void FilmWizard::Begin() {
  const Errand errand = std::exchange(next_, {});
  errand.Start();
  job_ = parts_.Work.All().back().get();
  connect(job_, &Job::Moved, this, [this] {
    if (job_ != nullptr && !job_->IsOver()) {
      strip_->ShowJob(*job_);
    }
  });
  connect(job_, &Job::Ended, this, [this, ended = errand.Ended] {
    job_ = nullptr;
    if (next_.Start) {
      Begin();
      return;
    }
    ended();
    if (isLeaving_ && isVisible()) {
      QWizard::reject();
    }
  });
  strip_->ShowJob(*job_);
}

}  // namespace quorvelant
