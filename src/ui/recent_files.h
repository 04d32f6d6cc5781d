// Projects that were open last.
#pragma once

#include <QObject>
#include <QStringList>
#include <string>

namespace quorvelant {

// Kept in a file of the state folder, which other windows write to as well. Those that are gone are not told.
class RecentFiles : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype Most = 10;

  explicit RecentFiles(const std::string& folder, QObject* parent = nullptr);

  [[nodiscard]] QStringList Files() const;  // the last one first
  void Add(const std::string& file);
  void Clear();

 signals:
  void Changed();

 private:
  [[nodiscard]] QStringList Read() const;
  void Write(const QStringList& files);

  QString folder_;
};

}  // namespace quorvelant
