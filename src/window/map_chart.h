// The chart of a disc's navigation, drawn.
#pragma once

#include <QGraphicsView>
#include <vector>

#include "player/nav_chart.h"

namespace quorvelant {

// Boxes can be clicked; of the chosen one the arrows stand out. Ctrl and the wheel zoom, a drag scrolls.
class MapChart : public QGraphicsView {
  Q_OBJECT
 public:
  static constexpr double Least = 0.1;
  static constexpr double Most = 4;

  explicit MapChart(QWidget* parent = nullptr);

  void Draw(const NavChart& chart);
  void Choose(int box);  // -1 for none
  void Zoom(double times);
  void ShowWhole();
  void ShowLegibly();  // the whole where its words can be read, or else its top left as large as it is

 signals:
  void BoxClicked(int box);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  struct DrawnArrow {
    int From = 0;
    int To = 0;
    QGraphicsPathItem* Item = nullptr;
  };
  void DrawBox(const NavChartBox& box, int number);
  void PaintBox(int box, bool isChosen);

  std::vector<QGraphicsRectItem*> boxes_;
  std::vector<bool> reached_;
  std::vector<DrawnArrow> arrows_;
  int chosen_ = -1;
};

}  // namespace quorvelant
