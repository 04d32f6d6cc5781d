#include "window/project_files.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "base/passing_ui.h"
#include "base/random.h"
#include "edit/messages.h"
#include "edit/missing_sources.h"
#include "ui/shown_text.h"
#include "window/example_folder.h"
#include "window/messages.h"

namespace quorvelant {

namespace {

const std::vector<FileFilter>& ProjectKinds() {
  static const std::vector<FileFilter> kinds{{"Projects", {"qvp", "scp"}}, {"All files", {}}};
  return kinds;
}

const std::vector<FileFilter>& SaveKinds() {
  static const std::vector<FileFilter> kinds{{"Projects", {"qvp"}}};
  return kinds;
}

std::string NameOf(const std::string& file) {
  return QFileInfo(Shown(file)).fileName().toStdString();
}

// Of saving: asks with verbs, and not about what was decided.
class SavingUi : public PassingUi {
 public:
  SavingUi(Voice& voice, std::string path, const std::string& kept)
      : PassingUi(voice), answers_(voice.Answers()), path_(std::move(path)), kept_(kept) {}

  bool Ask(std::string_view /*title*/, std::string_view /*text*/, bool /*unattended*/) override {
    if (!kept_.empty() && ScriptTextOf(path_) == kept_) {
      return true;
    }
    const Message question = MessageOf(message::AskOverwriteProject, path_, path_);
    return answers_.Ask(question.Title, question.Text, "Overwrite", "Cancel");
  }

 private:
  Answerer& answers_;
  std::string path_;
  const std::string& kept_;
};

const Message* ToldOf(const Job& job, const MessageKind& kind) {
  const auto told = std::ranges::find_if(job.Told(), [&](const Message& one) { return one.Is(kind); });
  return told == job.Told().end() ? nullptr : &*told;
}

}  // namespace

ProjectFiles::ProjectFiles(WindowParts& parts, NoticeBar& notices, QWidget& window)
    : QObject(&window),
      parts_(parts),
      notices_(notices),
      window_(window),
      recent_(parts.StateFolder),
      recovery_(parts.Doc, parts.StateFolder, Recovery::Delay, this),
      watch_(parts.Doc) {
  HandleActions();
  connect(&watch_, &FileWatch::ChangedOnDisk, this, &ProjectFiles::OfferReload);
  connect(&parts.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this](const ChangeEvent& event) {
            if (event.Replaced) {
              kept_.clear();
              notices_.Withdraw(NoticeBar::Subject::FileChanged);
            }
          });
}

void ProjectFiles::HandleActions() {
  Actions& commands = parts_.Commands;
  commands.Handle(ActionId::NewProject, [this] {
    if (MayLeave()) {
      parts_.Doc.Session().StartAnew();
      emit Opened();
    }
  });
  commands.Handle(ActionId::Open, [this] { AskOpen(); });
  commands.Handle(
      ActionId::OpenExample, [this] { OpenExample(); }, [] { return !ExampleProject().isEmpty(); });
  commands.Handle(ActionId::Save, [this] { Save(); });
  commands.Handle(ActionId::SaveAs, [this] { SaveAs(); });
  commands.Handle(ActionId::Quit, [this] { window_.close(); });
  commands.Handle(ActionId::LocateFiles, [this] { LocateFiles(); });
}

bool ProjectFiles::IsProject(const QString& file) {
  const QString suffix = QFileInfo(file).suffix().toLower();
  return suffix == QStringLiteral("qvp") || suffix == QStringLiteral("scp");
}

QString ProjectFiles::Caption() const {
  const std::string& file = parts_.Doc.Session().File();
  return file.empty() ? tr("New project") : QFileInfo(Shown(file)).fileName();
}

bool ProjectFiles::MayLeave() {
  if (!parts_.Doc.Session().IsUnsaved()) {
    return true;
  }
  const Message question = MessageOf(message::AskLeaveUnsaved, {}, Caption().toStdString());
  const auto saves = parts_.Answers.AskOrStay(question.Title, question.Text, "Save", "Discard");
  return saves && (!*saves || Save());
}

void ProjectFiles::Load(const std::string& title, Reading read,
                        std::function<void(OpenedProject opened)> done) {
  const auto opened = std::make_shared<std::optional<OpenedProject>>();
  ++loading_;
  parts_.Work.Start(
      title,
      [opened, read = std::move(read)](UserInterface& ui) {
        *opened = read(ui);
        return opened->has_value() ? Job::Verdict{Job::State::Done, "Done"}
                                   : Job::Verdict{Job::State::Failed, "Failed"};
      },
      [this, opened, done = std::move(done)](const Job& job) {
        --loading_;
        if (*opened) {
          done(*std::move(*opened));
          if (const Message* const told = ToldOf(job, message::OpenedInPart)) {
            notices_.Hear(*told);
          }
        }
        Settle();
      });
}

void ProjectFiles::Settle() {
  for (const auto& then : std::exchange(waiting_, {})) {
    WhenSettled(then);
  }
}

void ProjectFiles::WhenSettled(std::function<void()> then) {
  if (loading_ == 0) {
    then();
  } else {
    waiting_.push_back(std::move(then));
  }
}

void ProjectFiles::Open(const std::string& file) {
  if (!MayLeave()) {
    return;
  }
  const std::string path = QFileInfo(Shown(file)).absoluteFilePath().toStdString();
  const std::uint64_t revision = parts_.Doc.Revision();
  Load(
      "Open " + NameOf(path),
      [path, rules = parts_.Doc.Session().RulesInForce()](UserInterface& ui) {
        return ReadProjectFile(path, rules, ui);
      },
      [this, path, revision](OpenedProject opened) {
        if (parts_.Doc.Revision() != revision && !MayLeave()) {
          return;
        }
        recent_.Add(path);
        Take(std::move(opened), false);
      });
}

bool ProjectFiles::Take(OpenedProject opened, bool isUnsaved) {
  TakeProject(parts_.Doc.Session(), std::move(opened));
  if (isUnsaved) {
    parts_.Doc.Session().MarkUnsaved();
    emit parts_.Doc.StateChanged();
  }
  emit Opened();
  return true;
}

void ProjectFiles::AskOpen() {
  const auto files = parts_.Answers.FilesToOpen("Open", ProjectKinds(), false);
  if (!files.empty()) {
    Open(files.front());
  }
}

// A copy beside nothing of the user's: the installed one cannot be written to, so saving asks for a file.
void ProjectFiles::OpenExample() {
  const QString example = ExampleProject();
  if (!example.isEmpty()) {
    Open(example.toStdString());
  }
}

bool ProjectFiles::SaveTo(const std::string& path) {
  SavingUi ui(parts_.Doc.Speaks(), path, kept_);
  const bool isSaved = SaveProjectAs(parts_.Doc.Session(), path, ui);
  if (isSaved) {
    recent_.Add(path);
    kept_.clear();
    notices_.Withdraw(NoticeBar::Subject::FileChanged);
    notices_.Fade();
    parts_.Doc.Speaks().Status("Saved " + path);
  }
  emit parts_.Doc.StateChanged();
  return isSaved;
}

bool ProjectFiles::Save() {
  const std::string file = parts_.Doc.Session().File();
  return file.empty() ? SaveAs() : SaveTo(file);
}

bool ProjectFiles::SaveAs() {
  std::string proposal = parts_.Doc.Session().File();
  if (proposal.empty()) {
    proposal = (QStandardPaths::writableLocation(QStandardPaths::HomeLocation) + QStringLiteral("/disc.qvp"))
                   .toStdString();
  }
  auto path = parts_.Answers.FileToSave("Save As", proposal, SaveKinds());
  if (!path || path->empty()) {
    return false;
  }
  if (QFileInfo(Shown(*path)).suffix().isEmpty()) {
    path->append(".qvp");
  }
  return SaveTo(*path);
}

void ProjectFiles::FillRecentMenu(QMenu& menu) {
  connect(&menu, &QMenu::aboutToShow, this, [this, &menu] {
    menu.clear();
    for (const QString& file : recent_.Files()) {
      QString name = QFileInfo(file).fileName();
      QAction* const action = menu.addAction(name.replace(QLatin1Char('&'), QStringLiteral("&&")));
      action->setStatusTip(file);
      connect(action, &QAction::triggered, this, [this, file] { Open(file.toStdString()); });
    }
    if (menu.isEmpty()) {
      menu.addAction(tr("No projects yet"))->setEnabled(false);
    }
  });
}

bool ProjectFiles::OfferLeftWork() {
  const std::vector<LeftWork> left = recovery_.Left();
  if (left.empty()) {
    return false;
  }
  const LeftWork& last = left.back();
  const std::string name = last.Original.empty() ? std::string("a new project") : NameOf(last.Original);
  const Message words = MessageOf(message::LeftWorkFound, {}, name, last.When);
  notices_.Offer(NoticeBar::Subject::LeftWork, Shown(words.Text),
                 {{tr("Recover"), [this, last] { Recover(last); }}, {tr("Discard"), [this, last] {
                                                                       Recovery::Forget(last);
                                                                       OfferLeftWork();
                                                                     }}});
  return true;
}

void ProjectFiles::Recover(const LeftWork& left) {
  if (!MayLeave()) {
    return;
  }
  Load(
      "Recover " + NameOf(left.Original),
      [left, rules = parts_.Doc.Session().RulesInForce()](UserInterface& ui) {
        auto opened = ReadProjectText(left.Script, left.Base, rules, ui);
        if (opened) {
          opened->File = left.Original;
          opened->Script = left.Original.empty() ? std::string() : ScriptTextOf(left.Original);
        }
        return opened;
      },
      [this, left](OpenedProject opened) {
        Take(std::move(opened), true);
        recovery_.KeepNow();
        Recovery::Forget(left);
        OfferLeftWork();
      });
}

void ProjectFiles::OfferReload() {
  const std::string file = parts_.Doc.Session().File();
  const Message words = MessageOf(message::ProjectChangedOnDisk, file, NameOf(file));
  notices_.Offer(NoticeBar::Subject::FileChanged, Shown(words.Text),
                 {{tr("Reload"), [this, file] { Open(file); }},
                  {tr("Keep Mine"), [this, text = ScriptTextOf(file)] { kept_ = text; }}});
}

void ProjectFiles::LocateFiles() {
  const std::vector<std::string> missing = MissingSources(parts_.Doc.Work());
  if (missing.empty()) {
    parts_.Doc.Speaks().Status("No file is missing");
    return;
  }
  const std::string& first = missing.front();
  const auto files =
      parts_.Answers.FilesToOpen("Where is " + NameOf(first) + "?", {{"All files", {}}}, false);
  if (!files.empty()) {
    Mend(first, files.front());
  }
}

// What the files are is learnt beside the window; once more where the project was changed meanwhile.
void ProjectFiles::Mend(const std::string& missing, const std::string& found) {
  const auto former = std::make_shared<const Project>(parts_.Doc.Work());
  const auto mended = std::make_shared<Project>(*former);
  const auto count = std::make_shared<std::size_t>(0);
  const std::uint64_t revision = parts_.Doc.Revision();
  ++loading_;
  parts_.Work.Start(
      "Look at the files",
      [former, mended, count, missing, found,
       rules = parts_.Doc.Session().RulesInForce()](UserInterface& ui) {
        *count = MendSources(*mended, missing, found);
        LearnSources(*mended, *former, rules, ui);
        return Job::Verdict{Job::State::Done, "Done"};
      },
      [this, mended, count, missing, found, revision](const Job& /*job*/) {
        --loading_;
        if (parts_.Doc.Revision() != revision) {
          Mend(missing, found);
          return;
        }
        parts_.Doc.Do([&mended](EditSession& session, Consent) { return TakeSources(session, *mended); });
        const std::size_t left = MissingSources(parts_.Doc.Work()).size();
        parts_.Doc.Speaks().Status(MessageOf(message::FilesLocated, {}, *count, left).Text);
        Settle();
      });
}

}  // namespace quorvelant
