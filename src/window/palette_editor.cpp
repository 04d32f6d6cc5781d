#include "window/palette_editor.h"

#include <QColorDialog>
#include <QComboBox>
#include <QGridLayout>
#include <QPixmap>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolButton>

#include "edit/messages.h"
#include "edit/overlays.h"
#include "model/chain_palette.h"
#include "model/walk.h"
#include "ui/color_text.h"
#include "ui/messages.h"
#include "ui/shown_text.h"
#include "window/color_line.h"

namespace quorvelant {

namespace {

constexpr int PaletteSize = 16;
constexpr int InRow = 8;

QIcon IconOf(Color color, int side) {
  QPixmap pixmap(side, side);
  pixmap.fill(QColorOf(color));
  return pixmap;
}

}  // namespace

PaletteEditor::PaletteEditor(WindowParts& parts, QWidget* parent)
    : QWidget(parent), parts_(parts), palettes_(new QComboBox), color_(new ColorLine) {
  setAccessibleName(tr("Palettes"));
  palettes_->setAccessibleName(tr("Palettes of the project"));
  color_->setAccessibleName(tr("Colour"));
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(palettes_, 0, 0);
  auto* const add = new QToolButton;
  add->setDefaultAction(parts_.Commands.Of(ActionId::NewPalette));
  add->setFocusPolicy(Qt::TabFocus);
  add->setToolButtonStyle(Qt::ToolButtonTextOnly);
  grid->addWidget(add, 0, 1);
  auto* const colors = new QGridLayout;
  for (int i = 0; i < PaletteSize; ++i) {
    auto* const swatch = new QToolButton;
    swatch->setCheckable(true);
    swatch->setFocusPolicy(Qt::StrongFocus);
    swatches_.addButton(swatch, i);
    colors->addWidget(swatch, i / InRow, i % InRow);
  }
  swatches_.button(0)->setChecked(true);
  colors->setColumnStretch(InRow, 1);
  grid->addLayout(colors, 1, 0, 1, 2);
  grid->addWidget(color_, 2, 0);
  auto* const choose = new QPushButton(tr("Choose…"));
  choose->setAccessibleName(tr("Choose the colour"));
  grid->addWidget(choose, 2, 1);
  grid->setColumnStretch(0, 1);

  connect(palettes_, &QComboBox::activated, this, [this] { Fill(); });
  connect(&swatches_, &QButtonGroup::idClicked, this, [this] { ShowColor(); });
  connect(color_, &QLineEdit::editingFinished, this, [this] {
    if (!color_->isModified()) {
      return;
    }
    color_->setModified(false);
    if (const auto color = ColorIn(color_->text())) {
      SetColor(*color);
    } else {
      parts_.Doc.Speaks().Tell(MessageOf(message::ColorUnfit, {}, color_->text().toStdString()));
      ShowColor();
    }
  });
  connect(choose, &QPushButton::clicked, this, [this] {
    auto* const dialog =
        new QColorDialog(QColorOf(Colors().at(static_cast<std::size_t>(swatches_.checkedId()))), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this](const QColor& color) { SetColor(ColorOf(color)); });
    dialog->open();
  });
  connect(&parts_.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            const Part palettes{PartKind::Palettes};
            if (event.Replaced || std::ranges::find(event.Parts, palettes) != event.Parts.end()) {
              Fill();
            }
          });
  parts_.Commands.Handle(ActionId::NewPalette, [this] { AddPalette(); });
  Fill();
}

void PaletteEditor::Show(const std::string& name) {
  const int at = palettes_->findText(Shown(name));
  if (at >= 0) {
    palettes_->setCurrentIndex(at);
    Fill();
  }
}

PaletteColors PaletteEditor::Colors() const {
  const auto live = Live(parts_.Doc.Work().Palettes);
  const auto found = std::ranges::find(live, palettes_->currentText().toStdString(), &Palette_P::Key);
  return found == live.end() ? LegiblePalette : (*found)->PaletteColors;
}

void PaletteEditor::Fill() {
  QStringList names;
  for (const Palette_P* palette : Live(parts_.Doc.Work().Palettes)) {
    names << Shown(palette->Name());
  }
  const QString former = palettes_->currentText();
  palettes_->clear();
  palettes_->addItems(names);
  palettes_->setCurrentIndex(std::max(palettes_->findText(former), names.isEmpty() ? -1 : 0));
  const PaletteColors colors = Colors();
  const int side = fontMetrics().height();
  for (int i = 0; i < PaletteSize; ++i) {
    const Color color = colors.at(static_cast<std::size_t>(i));
    swatches_.button(i)->setIcon(IconOf(color, side));
    swatches_.button(i)->setEnabled(!names.isEmpty());
    swatches_.button(i)->setAccessibleName(tr("Colour %1, %2").arg(i).arg(ColorText(color)));
    swatches_.button(i)->setToolTip(tr("%1: %2").arg(i).arg(ColorText(color)));
  }
  color_->setEnabled(!names.isEmpty());
  ShowColor();
}

void PaletteEditor::ShowColor() {
  color_->setText(ColorText(Colors().at(static_cast<std::size_t>(swatches_.checkedId()))));
}

void PaletteEditor::SetColor(Color color) {
  PaletteColors colors = Colors();
  colors.at(static_cast<std::size_t>(swatches_.checkedId())) = color;
  const std::string name = palettes_->currentText().toStdString();
  parts_.Doc.Do([&](EditSession& session, Consent) { return ChangePalette(session, name, colors); });
}

// The name is asked for until it is a new one; an empty one gives up.
void PaletteEditor::AddPalette() {
  for (;;) {
    const Message question = MessageOf(message::PaletteNew, {});
    const auto name =
        parts_.Answers.AskText(question.Title, question.Text, ProposedPaletteName(parts_.Doc.Work()));
    if (!name || name->empty()) {
      return;
    }
    const PaletteColors colors = Colors();
    if (parts_.Doc.Do([&](EditSession& session, Consent) { return NewPalette(session, *name, colors); })) {
      Show(*name);
      return;
    }
  }
}

}  // namespace quorvelant
