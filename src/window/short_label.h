// Words that take little room, however many they are.
#pragma once

#include <QLabel>

namespace quorvelant {

// As wide as it may be, one line high, or two where one does not hold the words; what does not fit there
// either shows in the tip. Readers of the screen get the whole.
class ShortLabel : public QLabel {
  Q_OBJECT
 public:
  explicit ShortLabel(QWidget* parent = nullptr);

  void SetWords(const QString& words);
  [[nodiscard]] const QString& Words() const { return words_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Lay();

  QString words_;
  int lines_ = 1;
};

}  // namespace quorvelant
