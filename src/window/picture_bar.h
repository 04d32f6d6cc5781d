// The time of a track as a bar: pictures, chapters, subtitles and buttons.
#pragma once

#include <QAbstractSlider>
#include <cstdint>
#include <utility>
#include <vector>

#include "window/window_parts.h"

namespace quorvelant {

// A click or drag goes to the moment. Keys: left and right go to the picture before and after, page up and
// down to the chapter before and after, Home and End to the ends.
class PictureBar : public QAbstractSlider {
  Q_OBJECT
 public:
  explicit PictureBar(WindowParts& parts, QWidget* parent = nullptr);

  // Bits over time, against the most that a disc allows.
  void ShowBitRate(bool shown);
  [[nodiscard]] int XOf(std::int64_t frame) const;
  [[nodiscard]] std::int64_t FrameAt(int x) const;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  using Spans = std::vector<std::pair<std::int64_t, std::int64_t>>;
  void Read();    // what is to be drawn, anew
  void Follow();  // the moment
  void ToChapter(bool next);
  [[nodiscard]] std::int64_t Length() const;
  void PaintBitRate(QPainter& painter, const QRect& space) const;
  void PaintSpans(QPainter& painter, const QRect& row, const Spans& spans, const QColor& color) const;

  WindowParts& parts_;
  Spans subtitles_;
  Spans buttons_;
  std::vector<std::int64_t> chapters_;
  std::vector<std::pair<std::int64_t, double>> rates_;  // from a frame on, bit/s
  bool showsRate_ = false;
};

}  // namespace quorvelant
