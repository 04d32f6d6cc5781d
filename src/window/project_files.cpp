#include "window/project_files.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <utility>

#include "base/random.h"
#include "edit/messages.h"
#include "edit/missing_sources.h"
#include "script/script_writer.h"
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
      [this, opened, done = std::move(done)](const Job& /*job*/) {
        --loading_;
        if (*opened) {
          done(*std::move(*opened));
        }
        for (const auto& then : std::exchange(waiting_, {})) {
          WhenSettled(then);
        }
      });
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
  const bool isSaved = SaveProjectAs(parts_.Doc.Session(), path, parts_.Doc.Speaks());
  if (isSaved) {
    recent_.Add(path);
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
  notices_.Offer(Shown(words.Text),
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
  notices_.Offer(Shown(words.Text), {{tr("Reload"), [this, file] { Open(file); }}, {tr("Keep Mine"), [] {}}});
}

// The project is read again with the mended names: what its files are is learnt anew.
void ProjectFiles::LocateFiles() {
  Project project = parts_.Doc.Work();
  const std::vector<std::string> missing = MissingSources(project);
  if (missing.empty()) {
    parts_.Doc.Speaks().Status("No file is missing");
    return;
  }
  const std::string& first = missing.front();
  const auto files =
      parts_.Answers.FilesToOpen("Where is " + NameOf(first) + "?", {{"All files", {}}}, false);
  if (files.empty()) {
    return;
  }
  const std::size_t mended = MendSources(project, first, files.front());
  parts_.Doc.Session().Commands();
  const std::string text = WriteScript(project);
  Load(
      "Look at the files",
      [text, name = project.ScriptFile, rules = parts_.Doc.Session().RulesInForce()](UserInterface& ui) {
        return ReadProjectText(text, name, rules, ui);
      },
      [this, mended, left = missing.size() - mended](OpenedProject opened) {
        opened.File = parts_.Doc.Session().File();
        opened.Script = parts_.Doc.Session().Script();
        Take(std::move(opened), true);
        parts_.Doc.Speaks().Status(MessageOf(message::FilesLocated, {}, mended, left).Text);
      });
}

}  // namespace quorvelant
