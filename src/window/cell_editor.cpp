#include "window/cell_editor.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPersistentModelIndex>
#include <QPointer>

#include "ui/shown_text.h"
#include "ui/subtitle_model.h"

namespace quorvelant {

namespace {

// Which cell an editor edits, and what stood there.
constexpr const char* IndexProperty = "quorvelant_index";
constexpr const char* FormerProperty = "quorvelant_former";
constexpr const char* RefusalName = "Refusal";

QString TextOf(const QWidget& editor) {
  const auto* const choice = qobject_cast<const QComboBox*>(&editor);
  const auto* const line = qobject_cast<const QLineEdit*>(&editor);
  return choice != nullptr ? choice->currentText() : line != nullptr ? line->text() : QString();
}

void HideRefusal(const QWidget& editor) {
  delete editor.parentWidget()->findChild<QLabel*>(QString::fromLatin1(RefusalName));
}

// The reason, under the place in the text.
void ShowRefusal(QWidget& editor, const CellRefusal& refusal) {
  HideRefusal(editor);
  QWidget* const table = editor.parentWidget();
  auto* const words = new QLabel(Shown(refusal.Words.Text), table);
  words->setTextFormat(Qt::PlainText);
  words->setObjectName(QString::fromLatin1(RefusalName));
  words->setAccessibleName(words->text());
  words->setBackgroundRole(QPalette::ToolTipBase);
  words->setForegroundRole(QPalette::ToolTipText);
  words->setAutoFillBackground(true);
  words->setFrameShape(QFrame::Box);
  words->setMargin(words->fontMetrics().averageCharWidth() / 2);
  const int most = table->width() * 9 / 10;
  words->setWordWrap(words->sizeHint().width() > most);
  words->resize(words->wordWrap() ? QSize(most, words->heightForWidth(most)) : words->sizeHint());
  int left = editor.x();
  if (auto* const line = qobject_cast<QLineEdit*>(&editor)) {
    left += line->fontMetrics().horizontalAdvance(line->text().left(refusal.From));
    if (refusal.Length > 0) {
      line->setSelection(refusal.From, refusal.Length);
    } else {
      line->selectAll();
    }
    QObject::connect(line, &QLineEdit::textEdited, words, &QObject::deleteLater);
  }
  const int below = editor.geometry().bottom() + 1;
  const bool fits = below + words->height() <= table->height();
  words->move(std::clamp(left, 0, std::max(table->width() - words->width(), 0)),
              fits ? below : editor.y() - words->height());
  QObject::connect(&editor, &QObject::destroyed, words, &QObject::deleteLater);
  words->show();
  words->raise();
  editor.setAccessibleDescription(words->text());
  QAccessibleEvent alert(words, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace

std::optional<CellRefusal> RefusalOf(const Outcome& outcome) {
  return outcome.IsDone() ? std::nullopt : std::optional(CellRefusal{outcome.Words});
}

CellEditor::CellEditor(CommitCell commit, std::function<void(const Message&)> tell, QObject* parent)
    : QStyledItemDelegate(parent), commit_(std::move(commit)), tell_(std::move(tell)) {}

QLineEdit* CellEditor::MakeLine(QWidget* parent, const QModelIndex& /*index*/) const {
  return new QLineEdit(parent);
}

QWidget* CellEditor::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                  const QModelIndex& index) const {
  QWidget* editor = nullptr;
  if (const QStringList choices = choices_ ? choices_(index) : QStringList(); !choices.isEmpty()) {
    auto* const choice = new QComboBox(parent);
    choice->addItems(choices);
    auto* const self = const_cast<CellEditor*>(this);  // NOLINT: signals of a delegate are not const
    connect(choice, &QComboBox::activated, self, [self, choice] {
      emit self->commitData(choice);
      emit self->closeEditor(choice);
    });
    editor = choice;
  } else {
    QLineEdit* const line = MakeLine(parent, index);
    line->setFrame(false);
    editor = line;
  }
  editor->setAutoFillBackground(true);
  editor->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
  editor->setProperty(IndexProperty, QVariant::fromValue(QPersistentModelIndex(index)));
  return editor;
}

void CellEditor::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QString text = index.data(Qt::EditRole).toString();
  if (editor->property(FormerProperty).isValid()) {
    return;  // what is being written stays, whatever comes to stand below it
  }
  editor->setProperty(FormerProperty, text);
  if (auto* const choice = qobject_cast<QComboBox*>(editor)) {
    choice->setCurrentIndex(std::max(choice->findText(text), 0));
  } else if (auto* const line = qobject_cast<QLineEdit*>(editor)) {
    line->setText(text);
  }
}

// Called where the editor is left without a key.
void CellEditor::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                              const QModelIndex& index) const {
  const QString text = TextOf(*editor);
  if (text == editor->property(FormerProperty).toString()) {
    return;
  }
  editor->setProperty(FormerProperty, text);
  if (const auto refusal = commit_(index, text)) {
    tell_(refusal->Words);
  }
}

bool CellEditor::Commit(QWidget& editor) {
  const QString text = TextOf(editor);
  const auto index = editor.property(IndexProperty).value<QPersistentModelIndex>();
  if (!index.isValid() || text == editor.property(FormerProperty).toString()) {
    return true;
  }
  // The table may leave the cell for what is done, which must not do it once more.
  const QVariant former = editor.property(FormerProperty);
  editor.setProperty(FormerProperty, text);
  const auto refusal = commit_(index, text);
  if (refusal) {
    editor.setProperty(FormerProperty, former);
    ShowRefusal(editor, *refusal);
  }
  return !refusal;
}

bool CellEditor::eventFilter(QObject* object, QEvent* event) {
  auto* const line = qobject_cast<QLineEdit*>(object);
  if (line == nullptr || event->type() != QEvent::KeyPress) {
    return QStyledItemDelegate::eventFilter(object, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();  // NOLINT: the event's type says so
  const bool isTab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
  if (!isTab && key != Qt::Key_Return && key != Qt::Key_Enter) {
    return QStyledItemDelegate::eventFilter(object, event);
  }
  Finish(*line, key == Qt::Key_Tab ? EditNextItem : isTab ? EditPreviousItem : NoHint);
  return true;
}

void CellEditor::Finish(QLineEdit& line, EndEditHint hint) {
  const QPointer<QLineEdit> open(&line);
  if (Commit(line) && open != nullptr && line.isVisible()) {
    emit closeEditor(&line, hint);
  }
}

void CellEditor::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
  const QVariantList swatches = index.data(SubtitleModel::SwatchRole).toList();
  if (swatches.isEmpty()) {
    QStyledItemDelegate::paint(painter, option, index);
    return;
  }
  QStyleOptionViewItem without = option;
  initStyleOption(&without, index);
  without.text.clear();
  const QWidget* const table = option.widget;
  (table != nullptr ? table->style() : QApplication::style())
      ->drawControl(QStyle::CE_ItemViewItem, &without, painter, table);
  const int side = option.fontMetrics.height();
  QRect box(option.rect.left() + side / 4, option.rect.center().y() - side / 2, side, side);
  for (const QVariant& swatch : swatches) {
    painter->fillRect(box, swatch.value<QColor>());
    painter->setPen(option.palette.color(QPalette::Mid));
    painter->drawRect(box.adjusted(0, 0, -1, -1));
    box.translate(side + side / 4, 0);
  }
}

}  // namespace quorvelant
