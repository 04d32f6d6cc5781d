// One page of the manual as it is read.
#pragma once

#include <QTextBrowser>

namespace quorvelant {

// Pictures are made as wide as there is room and never wider than they are; a link may name a heading of a
// page ("subtitles.md#times").
class ManualBrowser : public QTextBrowser {
  Q_OBJECT
 public:
  explicit ManualBrowser(QWidget* parent = nullptr);

  QVariant loadResource(int type, const QUrl& name) override;
  // The name that a link gives a heading: lower case, hyphens for spaces, other signs left out.
  [[nodiscard]] static QString HeadingName(const QString& heading);
  // False where the page has no such heading, and nothing moves.
  bool GoToHeading(const QString& name);

 protected:
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitPictures();
  void SetMargins();
};

}  // namespace quorvelant
