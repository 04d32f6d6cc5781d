#include "ui/recovery.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <optional>
#include <utility>

#include "base/file_text.h"
#include "edit/source_paths.h"
#include "script/script_writer.h"
#include "ui/shown_text.h"

namespace quorvelant {

namespace {

constexpr std::string_view FirstLine = "Quorvelant recovery 1";
constexpr std::uint64_t MostBytes = std::uint64_t{1} << 28U;

QString LockOf(const QString& file) {
  return file + QStringLiteral(".lock");
}

// Where the project has no file, relative sources count from the kept one.
bool Write(const Project& project, const std::string& original, const QString& file) {
  const std::string base = project.ScriptFile.empty() ? file.toStdString() : project.ScriptFile;
  const std::string script = WriteScript(project.ScriptFile.empty() ? ForScriptAt(project, base) : project);
  std::string text(FirstLine);
  text.append("\n").append(original).append("\n").append(base).append("\n").append(script);
  QSaveFile out(file);
  return out.open(QIODevice::WriteOnly) &&
         out.write(text.data(), static_cast<qint64>(text.size())) == static_cast<qint64>(text.size()) &&
         out.commit();
}

std::string TakeLine(std::string& text) {
  const std::size_t end = text.find('\n');
  std::string line = text.substr(0, end);
  text.erase(0, end == std::string::npos ? end : end + 1);
  return line;
}

std::optional<LeftWork> Read(const QFileInfo& file) {
  auto text = ReadHead(file.filePath().toStdString(), MostBytes);
  if (!text || TakeLine(*text) != FirstLine) {
    return std::nullopt;
  }
  LeftWork left;
  left.File = file.filePath().toStdString();
  left.Original = TakeLine(*text);
  left.Base = TakeLine(*text);
  left.Script = *std::move(text);
  left.When = QLocale::c().toString(file.lastModified(), QStringLiteral("hh:mm, d MMMM")).toStdString();
  return left;
}

}  // namespace

Recovery::Recovery(Document& document, std::string folder, std::chrono::milliseconds delay, QObject* parent)
    : QObject(parent), document_(document), folder_(std::move(folder)) {
  timer_.setSingleShot(true);
  timer_.setInterval(delay);
  connect(&timer_, &QTimer::timeout, this, &Recovery::Keep);
  if (folder_.empty() || !QDir().mkpath(Shown(folder_))) {
    return;
  }
  // One program may open several windows.
  for (int number = 1; number < 1000; ++number) {
    const QString file = QStringLiteral("%1/recovery-%2-%3.qvp")
                             .arg(Shown(folder_))
                             .arg(QCoreApplication::applicationPid())
                             .arg(number);
    auto lock = std::make_unique<QLockFile>(LockOf(file));
    lock->setStaleLockTime(0);
    if (!QFileInfo::exists(file) && lock->tryLock(0)) {
      file_ = file;
      lock_ = std::move(lock);
      break;
    }
  }
  connect(&document_, qOverload<const ChangeEvent&>(&Document::Changed), this, &Recovery::Follow);
  connect(&document_, &Document::StateChanged, this, &Recovery::Follow);
}

Recovery::~Recovery() {
  // A program that ends well has asked about unsaved work.
  Drop();
}

void Recovery::Follow() {
  if (!document_.Session().IsUnsaved()) {
    Drop();
  } else if (!timer_.isActive() && document_.Revision() != keptRevision_) {
    timer_.start();
  }
}

void Recovery::Keep() {
  if (file_.isEmpty()) {
    return;
  }
  document_.Session().Commands();  // settles their digits
  keptRevision_ = document_.Revision();
  writing_.Start([project = document_.Work(), original = document_.Session().File(),
                  file = file_](UserInterface&) { return Write(project, original, file); },
                 [this](bool) {
                   if (keptRevision_ == 0) {
                     QFile::remove(file_);  // saved meanwhile
                   } else {
                     emit Kept();
                   }
                 });
}

void Recovery::Drop() {
  timer_.stop();
  keptRevision_ = 0;
  if (!file_.isEmpty()) {
    QFile::remove(file_);
  }
}

std::vector<LeftWork> Recovery::Left() const {
  std::vector<LeftWork> found;
  const QDir folder(Shown(folder_));
  const QFileInfoList files = folder_.empty()
                                  ? QFileInfoList()
                                  : folder.entryInfoList({QStringLiteral("recovery-*.qvp")}, QDir::Files,
                                                         QDir::Time | QDir::Reversed);
  for (const QFileInfo& file : files) {
    QLockFile lock(LockOf(file.filePath()));
    lock.setStaleLockTime(0);
    if (file.filePath() == file_ || !lock.tryLock(0)) {
      continue;
    }
    if (auto left = Read(file)) {
      found.push_back(*std::move(left));
    }
  }
  return found;
}

void Recovery::Forget(const LeftWork& left) {
  QFile::remove(Shown(left.File));
  QFile::remove(LockOf(Shown(left.File)));
}

}  // namespace quorvelant
