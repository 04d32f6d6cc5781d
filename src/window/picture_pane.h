// Picture: the picture of the moment, with what lies over it, and the bar of time below.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QWidget>

#include "ui/button_board.h"
#include "window/picture_bar.h"
#include "window/picture_view.h"
#include "window/window_parts.h"

namespace quorvelant {

class PicturePane : public QWidget {
  Q_OBJECT
 public:
  explicit PicturePane(WindowParts& parts, QWidget* parent = nullptr);

  [[nodiscard]] PictureView& View() { return *view_; }
  [[nodiscard]] PictureBar& Bar() { return *bar_; }

 private:
  [[nodiscard]] QWidget* Transport();
  [[nodiscard]] QWidget* Choices();
  QToolButton* Toggle(const QString& text, const QString& tip);
  void HandleActions();
  void ShowState();
  void ShowWords();
  void ToTypedTime();
  void NextView();
  void NewButton();
  void Save(bool asTrack);
  void TakeColor(int column, int line);

  WindowParts& parts_;
  ButtonBoard board_;
  PictureView* view_;
  PictureBar* bar_;
  QLineEdit* time_;
  QLabel* length_;
  QLabel* words_;
  QComboBox* viewBox_;
  QComboBox* streamBox_;
  QComboBox* stateBox_;
  QToolButton* dropper_;
  bool viewChanged_ = false;  // by the user
};

}  // namespace quorvelant
