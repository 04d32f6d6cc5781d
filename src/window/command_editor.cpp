#include "window/command_editor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>

#include "ui/offer_model.h"
#include "ui/shown_text.h"
#include "vm/command_completion.h"

namespace quorvelant {

namespace {

// The list of offers below a line.
class OfferPopup : public QObject {
 public:
  OfferPopup(QLineEdit& line, CommandCompletion completion)
      : QObject(&line), line_(line), completion_(std::move(completion)) {
    completer_.setModel(&offers_);
    completer_.setCompletionRole(Qt::EditRole);
    completer_.setCaseSensitivity(Qt::CaseInsensitive);
    completer_.setFilterMode(Qt::MatchContains);  // a name alone finds its command
    completer_.setMaxVisibleItems(12);
    completer_.setWidget(&line);
    completer_.popup()->setAccessibleName(CommandEditor::tr("Commands"));
    line.installEventFilter(this);
    connect(&line, &QLineEdit::textEdited, this, [this] { Offer(); });
    connect(&completer_, qOverload<const QString&>(&QCompleter::activated), this,
            [this](const QString& text) { Take(text); });
  }

  [[nodiscard]] bool IsChoosing() const {
    return completer_.popup()->isVisible() && completer_.popup()->currentIndex().isValid();
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) {
      const auto* const key = static_cast<QKeyEvent*>(event);  // NOLINT: the event's type says so
      const bool isSpace = key->key() == Qt::Key_Space && key->modifiers() == Qt::ControlModifier;
      if (key->key() == Qt::Key_Down || isSpace) {
        if (line_.hasSelectedText()) {
          line_.setCursorPosition(0);  // the whole is about to be replaced
          line_.selectAll();
        }
        Offer();
        return true;
      }
    }
    return QObject::eventFilter(object, event);
  }

 private:
  // What stands before the cursor; nothing of it while all is selected.
  [[nodiscard]] QString Before() const {
    return line_.selectedText() == line_.text() ? QString() : line_.text().left(line_.cursorPosition());
  }

  void Offer() {
    const std::string before = Before().toStdString();
    CommandOffers found = completion_.At(before);
    begin_ = QString::fromStdString(before.substr(0, found.Begin)).size();
    offers_.Show(std::move(found.Offers));
    const QString prefix = Before().mid(begin_);
    completer_.setCompletionPrefix(prefix);
    const bool isWritten = completer_.completionCount() == 1 &&
                           completer_.currentCompletion().compare(prefix, Qt::CaseInsensitive) == 0;
    if (completer_.completionCount() == 0 || isWritten) {
      completer_.popup()->hide();
    } else {
      completer_.complete();
    }
  }

  void Take(const QString& text) {
    const bool isWhole = line_.selectedText() == line_.text();
    const QString after = isWhole ? QString() : line_.text().mid(line_.cursorPosition());
    const QString before = isWhole ? QString() : line_.text().left(begin_);
    line_.setText(before + text + after);
    line_.setCursorPosition(static_cast<int>((before + text).size()));
  }

  QLineEdit& line_;
  CommandCompletion completion_;
  OfferModel offers_;
  QCompleter completer_;
  qsizetype begin_ = 0;  // of what is being completed
};

}  // namespace

CommandEditor::CommandEditor(Document& document, std::function<std::string(const QModelIndex&)> keyOf,
                             CommitCell commit, QObject* parent)
    : CellEditor(
          std::move(commit), [&document](const Message& words) { document.Speaks().Tell(words); }, parent),
      document_(document),
      keyOf_(std::move(keyOf)) {}

QLineEdit* CommandEditor::MakeLine(QWidget* parent, const QModelIndex& index) const {
  auto* const line = new QLineEdit(parent);
  const Project& project = document_.Work();
  const auto stand = StandOf(project, keyOf_(index));
  if (!stand) {
    return line;
  }
  auto* const popup =
      new OfferPopup(*line, CommandCompletion(project, document_.Session().RulesInForce(), *stand));
  // Enter that the list of offers has seen first.
  auto* const self = const_cast<CommandEditor*>(this);  // NOLINT: signals of a delegate are not const
  connect(line, &QLineEdit::returnPressed, self, [self, line, popup] {
    if (!popup->IsChoosing()) {
      self->Finish(*line);
    }
  });
  return line;
}

std::optional<CellRefusal> CommandRefusal(const EditSession& session, const QString& text) {
  const std::string bytes = text.trimmed().toStdString();
  NameIndex names(session.Work(), session.RulesInForce());
  const auto trouble = bytes.empty() ? std::nullopt : TroubleIn(bytes, names);
  if (!trouble) {
    return std::nullopt;
  }
  const auto from = QString::fromStdString(bytes.substr(0, trouble->Begin)).size();
  const auto length =
      QString::fromStdString(bytes.substr(trouble->Begin, trouble->End - trouble->Begin)).size();
  const bool isWhole = length == text.trimmed().size();
  return CellRefusal{trouble->Words, static_cast<int>(from), isWhole ? 0 : static_cast<int>(length)};
}

}  // namespace quorvelant
