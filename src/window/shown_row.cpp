#include "window/shown_row.h"

#include <QEvent>

namespace quorvelant {

namespace {

class RowKeeper : public QObject {
 public:
  explicit RowKeeper(QAbstractItemView& view) : QObject(&view), view_(view) {
    view.viewport()->installEventFilter(this);
    connect(view.selectionModel(), &QItemSelectionModel::currentRowChanged, this, &RowKeeper::Later);
    connect(view.model(), &QAbstractItemModel::rowsInserted, this, &RowKeeper::Later);
    connect(view.model(), &QAbstractItemModel::rowsRemoved, this, &RowKeeper::Later);
    connect(view.model(), &QAbstractItemModel::modelReset, this, &RowKeeper::Later);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
      Later();
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  // Once the view is laid out.
  void Later() {
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (view_.currentIndex().isValid()) {
            view_.scrollTo(view_.currentIndex());
          }
        },
        Qt::QueuedConnection);
  }

  QAbstractItemView& view_;
};

}  // namespace

void KeepChosenRowShown(QAbstractItemView& view) {
  new RowKeeper(view);  // NOLINT(cppcoreguidelines-owning-memory): the view's
}

}  // namespace quorvelant
