// The boxes and file dialogs of a window.
#pragma once

#include <QWidget>

#include "ui/answerer.h"

namespace quorvelant {

class Boxes : public Answerer {
 public:
  explicit Boxes(QWidget& window) : window_(window) {}

  bool Ask(std::string_view title, std::string_view text, std::string_view yes, std::string_view no) override;
  bool AskToDestroy(std::string_view title, std::string_view text, std::string_view yes,
                    std::string_view no) override;
  std::optional<bool> AskOrStay(std::string_view title, std::string_view text, std::string_view yes,
                                std::string_view no) override;
  std::optional<std::string> AskText(std::string_view title, std::string_view text,
                                     std::string_view proposal) override;
  std::optional<std::size_t> Choose(std::string_view title, std::string_view text,
                                    const std::vector<std::string>& choices) override;
  std::vector<std::string> FilesToOpen(std::string_view title, const std::vector<FileFilter>& kinds,
                                       bool several) override;
  std::optional<std::string> FileToSave(std::string_view title, std::string_view proposal,
                                        const std::vector<FileFilter>& kinds) override;
  std::optional<std::string> FolderToUse(std::string_view title, std::string_view proposal) override;

 private:
  struct Verbs {
    std::string_view Yes;
    std::string_view No;
  };
  // `byEnter`: whether Enter says yes.
  bool Answered(std::string_view title, std::string_view text, const Verbs& verbs, bool byEnter);

  QWidget& window_;
  QString folder_;  // of the last file that was chosen
};

}  // namespace quorvelant
