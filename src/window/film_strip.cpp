#include "window/film_strip.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/shown_text.h"

namespace quorvelant {

FilmStrip::FilmStrip(QWidget* parent)
    : QWidget(parent),
      words_(new QLabel),
      bar_(new QProgressBar),
      stop_(new QPushButton(tr("&Stop"))),
      faults_(new QPlainTextEdit) {
  words_->setTextFormat(Qt::PlainText);
  bar_->setAccessibleName(tr("Progress"));
  faults_->setAccessibleName(tr("Why the disc is not made"));
  faults_->setReadOnly(true);
  faults_->setTabChangesFocus(true);
  faults_->setMaximumHeight(fontMetrics().lineSpacing() * 6);
  stop_->setAutoDefault(false);
  auto* const row = new QHBoxLayout;
  row->addWidget(words_, 1);
  row->addWidget(bar_, 1);
  row->addWidget(stop_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(row);
  column->addWidget(faults_);
  connect(stop_, &QPushButton::clicked, this, &FilmStrip::StopPressed);
  Clear();
}

void FilmStrip::Clear() {
  hide();
  faults_->clear();
}

void FilmStrip::ShowJob(const Job& job) {
  constexpr int Whole = 1000;
  const int share = static_cast<int>(job.Share() * Whole);
  words_->setText(Shown(job.Stage()));
  bar_->setRange(0, share > 0 ? Whole : 0);  // busy while nothing is known
  bar_->setValue(share);
  bar_->show();
  stop_->setEnabled(job.Now() == Job::State::Running);
  stop_->show();
  faults_->hide();
  show();
}

void FilmStrip::ShowFaults(const Findings& faults) {
  QStringList lines;
  for (const Message& fault : faults) {
    lines << Shown(fault.Text);
  }
  ShowWords(tr("The disc is not made:"));
  faults_->setPlainText(lines.join(QStringLiteral("\n\n")));
  faults_->show();
  faults_->setFocus();
}

void FilmStrip::ShowWords(const QString& words) {
  words_->setText(words);
  bar_->hide();
  stop_->hide();
  faults_->hide();
  show();
}

}  // namespace quorvelant
