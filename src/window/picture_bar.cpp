#include "window/picture_bar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <limits>

#include "base/text.h"
#include "base/timecode.h"
#include "check/track_times.h"
#include "edit/live_elements.h"
#include "subpicture/spu_timing.h"
#include "subpicture/subtitle_times.h"

namespace quorvelant {

namespace {

// ISO/IEC 13818-2 streams on a disc, in bits a second.
constexpr double MostVideoRate = 9.8e6;

// Those that a new set of buttons lasts.
constexpr std::int64_t SecondsOfStill = 10;

// Without a length of its own a track is as long as what stands on it.
std::int64_t LengthOf(const Track& track, std::int64_t frames) {
  if (frames > 0) {
    return frames;
  }
  const int rate = TrackTimes(track).FramesPerSecond;
  std::int64_t end = 0;
  for (const HighlightPlay& set : track.HighlightPlays) {
    end = std::max(end, SpanOf(set, rate).End);
  }
  for (const SubtitleStream& stream : track.SubStreams) {
    for (const SubPicturePlay& play : stream.SubPlays) {
      end = std::max(end, EndOf(play, rate).value_or(TimecodeToFrames(play.Start, rate) + 1));
    }
  }
  return end > 0 ? end : SecondsOfStill * rate;
}

}  // namespace

PictureBar::PictureBar(WindowParts& parts, QWidget* parent) : QAbstractSlider(parent), parts_(parts) {
  setAccessibleName(tr("Moment"));
  setFocusPolicy(Qt::StrongFocus);
  setOrientation(Qt::Horizontal);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  const auto read = [this] {
    Read();
    Follow();
  };
  connect(&parts.View, &Viewer::PicturesChanged, this, read);
  connect(&parts.View, &Viewer::StateMoved, this, read);
  connect(&parts.Doc, qOverload<const ChangeEvent&>(&Document::Changed), this,
          [this, read](const ChangeEvent& event) {
            const auto track = parts_.View.TrackIndex();
            if (track && event.TouchesTrack(*track)) {
              read();
            }
          });
  connect(this, &QAbstractSlider::valueChanged, this, [this](int value) { parts_.View.ToFrame(value); });
  read();
}

QSize PictureBar::sizeHint() const {
  const int line = fontMetrics().height();
  return {line * 16, showsRate_ ? 4 * line : 2 * line};
}

void PictureBar::ShowBitRate(bool shown) {
  showsRate_ = shown;
  updateGeometry();
  update();
}

std::int64_t PictureBar::Length() const {
  return std::int64_t{maximum()} + 1;
}

int PictureBar::XOf(std::int64_t frame) const {
  return static_cast<int>(frame * std::max(width() - 1, 1) / Length());
}

std::int64_t PictureBar::FrameAt(int x) const {
  return std::clamp<std::int64_t>(x * Length() / std::max(width() - 1, 1), 0, Length() - 1);
}

void PictureBar::Read() {
  subtitles_.clear();
  buttons_.clear();
  chapters_.clear();
  rates_.clear();
  const Track* const track = parts_.View.Shown();
  setEnabled(track != nullptr);
  if (track == nullptr) {
    const QSignalBlocker quiet(this);
    setRange(0, 0);
    return;
  }
  const int rate = TrackTimes(*track).FramesPerSecond;
  const std::int64_t length = LengthOf(*track, parts_.View.FrameCount());
  const auto& state = parts_.View.State();
  if (state.Stream && *state.Stream < track->SubStreams.size()) {
    for (const SubPicturePlay& play : track->SubStreams[*state.Stream].SubPlays) {
      const std::int64_t start = TimecodeToFrames(play.Start, rate);
      subtitles_.emplace_back(start, EndOf(play, rate).value_or(length));
    }
  }
  for (const HighlightPlay& set : track->HighlightPlays) {
    const PlaySpan span = SpanOf(set, rate);
    buttons_.emplace_back(span.Start, span.End > span.Start ? span.End : length);
  }
  std::ranges::transform(track->Scenes, std::back_inserter(chapters_),
                         [](const Scene& scene) { return std::int64_t{scene.Frame}; });
  const auto& pictures = parts_.View.Pictures();
  for (std::size_t i = 0; i + 1 < pictures.size(); ++i) {
    const auto& [now, next] = std::pair(pictures[i], pictures[i + 1]);
    if (now.Play == next.Play && next.Frame > now.Frame && next.Offset > now.Offset) {
      const double seconds = static_cast<double>(next.Frame - now.Frame) / rate;
      rates_.emplace_back(now.Frame, static_cast<double>(next.Offset - now.Offset) * 8 / seconds);
    }
  }
  const QSignalBlocker quiet(this);
  setRange(0, static_cast<int>(std::min<std::int64_t>(length - 1, std::numeric_limits<int>::max())));
}

void PictureBar::Follow() {
  const QSignalBlocker quiet(this);
  setValue(static_cast<int>(parts_.View.State().Frame));
  update();
}

void PictureBar::PaintSpans(QPainter& painter, const QRect& row, const Spans& spans,
                            const QColor& color) const {
  int painted = -1;  // as many as there are columns at most
  for (const auto& [start, end] : spans) {
    const int left = XOf(start);
    const int right = std::max(XOf(end), left + 1);
    if (right > painted) {
      painter.fillRect(std::max(left, painted), row.top(), right - std::max(left, painted), row.height(),
                       color);
      painted = right;
    }
    if (left > 0) {
      painter.fillRect(left, row.top(), 1, row.height(), color.darker());
    }
  }
}

void PictureBar::PaintBitRate(QPainter& painter, const QRect& space) const {
  constexpr double Top = MostVideoRate * 1.1;
  const auto yOf = [&](double rate) {
    return space.bottom() - static_cast<int>(std::min(rate, Top) / Top * space.height());
  };
  for (std::size_t i = 0; i < rates_.size(); ++i) {
    const int left = XOf(rates_[i].first);
    const int right = i + 1 < rates_.size() ? XOf(rates_[i + 1].first) : width();
    const bool isBeyond = rates_[i].second > MostVideoRate;
    const QColor color = isBeyond ? QColor(Qt::red) : palette().color(QPalette::Highlight);
    const int top = yOf(rates_[i].second);
    painter.fillRect(left, top, std::max(right - left, 1), space.bottom() - top + 1, color);
  }
  painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
  painter.drawLine(space.left(), yOf(MostVideoRate), space.right(), yOf(MostVideoRate));
}

void PictureBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  if (parts_.View.Shown() == nullptr) {
    return;
  }
  const int line = fontMetrics().height();
  const QRect rows(0, height() - 2 * line, width(), 2 * line);
  if (showsRate_) {
    PaintBitRate(painter, QRect(0, 0, width(), height() - 2 * line));
  }
  const QRect marks(0, rows.top(), width(), line);
  const QRect subtitles(0, rows.top() + line, width(), line / 2);
  const QRect buttons(0, rows.top() + line + line / 2, width(), line / 2);
  painter.setPen(palette().color(QPalette::Mid));
  int last = -4;
  for (const ViewerPicture& picture : parts_.View.Pictures()) {
    if (const int x = XOf(picture.ShownAt()); x >= last + 3) {
      painter.drawLine(x, marks.bottom() - line / 4, x, marks.bottom());
      last = x;
    }
  }
  PaintSpans(painter, subtitles, subtitles_, palette().color(QPalette::Highlight).lighter(130));
  PaintSpans(painter, buttons, buttons_, palette().color(QPalette::Link));
  painter.setPen(palette().color(QPalette::Text));
  painter.setBrush(palette().color(QPalette::Text));
  for (const std::int64_t chapter : chapters_) {
    const int x = XOf(chapter);
    painter.drawLine(x, marks.top(), x, marks.bottom());
    painter.drawRect(QRect(x, marks.top() + 1, line / 3, line / 3));
  }
  const int now = XOf(value());
  painter.fillRect(now - 1, 0, 3, height(),
                   palette().color(hasFocus() ? QPalette::Highlight : QPalette::Text));
  if (hasFocus()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

void PictureBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    parts_.View.ToFrame(FrameAt(event->position().toPoint().x()));
  }
}

void PictureBar::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0) {
    parts_.View.ToFrame(FrameAt(event->position().toPoint().x()));
  }
}

void PictureBar::ToChapter(bool next) {
  const std::int64_t now = parts_.View.State().Frame;
  std::optional<std::int64_t> to;
  for (const std::int64_t chapter : chapters_) {
    if (next ? chapter > now && (!to || chapter < *to) : chapter < now && (!to || chapter > *to)) {
      to = chapter;
    }
  }
  if (to) {
    parts_.View.ToFrame(*to);
  }
}

void PictureBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      parts_.View.Move(ViewerMove::PrevGop);
      break;
    case Qt::Key_Right:
    case Qt::Key_Up:
      parts_.View.Move(ViewerMove::NextGop);
      break;
    case Qt::Key_PageUp:
      ToChapter(false);
      break;
    case Qt::Key_PageDown:
      ToChapter(true);
      break;
    default:
      QAbstractSlider::keyPressEvent(event);  // Home and End
  }
}

}  // namespace quorvelant
