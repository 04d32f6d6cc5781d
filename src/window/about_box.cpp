#include "window/about_box.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <string>

#include "desk/version.h"
#include "window/icons.h"

namespace quorvelant {

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("About Quorvelant"));
  auto* picture = new QLabel;
  const int side = fontMetrics().height() * 5;
  picture->setPixmap(ApplicationIcon().pixmap(QSize(side, side), devicePixelRatioF()));
  picture->setAlignment(Qt::AlignTop);
  picture->setAccessibleName(tr("Icon of Quorvelant"));

  auto* name = new QLabel(tr("Quorvelant %1").arg(QString::fromStdString(std::string(ProgramVersion()))));
  QFont large = name->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  name->setFont(large);
  auto* words = new QLabel(
      tr("Makes DVD-Video discs of films, pictures and subtitles, with menus, and checks what it made.\n\n"
         "Free software under the MIT licence: you may use it, change it and pass it on. It comes without "
         "any "
         "warranty. Built with Qt %1.")
          .arg(QString::fromLatin1(qVersion())));
  words->setWordWrap(true);
  words->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
  for (QLabel* label : {name, words}) {
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QPushButton* changes = buttons->addButton(tr("Change Log"), QDialogButtonBox::ActionRole);
  connect(changes, &QPushButton::clicked, this, [this] {
    accept();
    emit ChangeLogWanted();
  });
  buttons->button(QDialogButtonBox::Close)->setDefault(true);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* texts = new QVBoxLayout;
  texts->addWidget(name);
  texts->addWidget(words);
  texts->addStretch();
  auto* top = new QHBoxLayout;
  top->addWidget(picture);
  top->addSpacing(fontMetrics().height());
  top->addLayout(texts, 1);
  auto* all = new QVBoxLayout(this);
  all->addLayout(top);
  all->addWidget(buttons);
}

}  // namespace quorvelant
