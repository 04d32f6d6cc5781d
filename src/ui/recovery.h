// Unsaved work, kept in case the program does not end well.
#pragma once

#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "ui/document.h"
#include "ui/latest_work.h"

namespace quorvelant {

// What a program that broke off has left.
struct LeftWork {
  std::string File;      // in which it is kept
  std::string Original;  // of which project; empty for one without a file
  std::string Base;      // where the script text would lie: relative sources count from there
  std::string Script;
  std::string When;  // "14:02, 22 November"
};

// Keeps the document's unsaved work in a file of the state folder, ten seconds after it changed; the file
// goes when the work is saved or given up. It is locked as long as the program runs.
class Recovery : public QObject {
  Q_OBJECT
 public:
  static constexpr std::chrono::milliseconds Delay{10000};

  // Nothing is kept where the folder is empty or cannot be made.
  Recovery(Document& document, std::string folder, std::chrono::milliseconds delay = Delay,
           QObject* parent = nullptr);
  ~Recovery() override;

  // What others left, which no running program owns, the oldest first.
  [[nodiscard]] std::vector<LeftWork> Left() const;
  static void Forget(const LeftWork& left);
  // Without waiting for the delay.
  void KeepNow() { Keep(); }
  // Unsaved work is given up on purpose.
  void Drop();

 signals:
  void Kept();

 private:
  void Follow();
  void Keep();

  Document& document_;
  std::string folder_;
  QString file_;  // empty where nothing can be kept
  std::unique_ptr<QLockFile> lock_;
  QTimer timer_;
  std::uint64_t keptRevision_ = 0;
  LatestWork<bool> writing_;
};

}  // namespace quorvelant
