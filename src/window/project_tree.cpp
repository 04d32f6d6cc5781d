#include "window/project_tree.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <utility>

#include "window/name_delegate.h"

namespace quorvelant {

ProjectTree::ProjectTree(WindowParts& parts, TreeModel& model, std::vector<std::optional<ActionId>> menu,
                         QWidget* parent)
    : QTreeView(parent), parts_(parts), model_(model), menu_(std::move(menu)) {
  filter_.setSourceModel(&model);
  filter_.setRecursiveFilteringEnabled(true);
  filter_.setAutoAcceptChildRows(true);
  filter_.setFilterCaseSensitivity(Qt::CaseInsensitive);
  filter_.setFilterKeyColumn(-1);
  setModel(&filter_);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);  // F2 is the action's
  setDragEnabled(true);
  setDefaultDropAction(Qt::CopyAction);
  header()->setStretchLastSection(true);
  connect(header(), &QHeaderView::sectionResized, this, [this] { isSetByHand_ |= !isFitting_; });
  auto* const names = new NameDelegate(this);
  setItemDelegateForColumn(0, names);
  connect(names, &NameDelegate::Entered, this, [this](const QModelIndex& index, const QString& name) {
    // The editor is about to go; the row may go with what happens now.
    const QString key = index.data(TreeModel::KeyRole).toString();
    QMetaObject::invokeMethod(
        this, [this, key, name] { emit Renamed(key, name); }, Qt::QueuedConnection);
  });
  connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &ProjectTree::ChooseCurrent);
  connect(this, &QTreeView::clicked, this, &ProjectTree::ChooseCurrent);
  connect(&parts.Chosen, &Selection::KeyChanged, this, &ProjectTree::ShowChosen);
  connect(&model, &TreeModel::Applied, this, &ProjectTree::TakeIn);
  connect(&model, &QAbstractItemModel::modelReset, this, [this] {
    OpenLevels({}, 2);
    FitColumns();
  });
  OpenLevels({}, 2);
  FitColumns();
}

void ProjectTree::Filter(const QString& words) {
  filter_.setFilterFixedString(words);
  if (!words.isEmpty()) {
    OpenLevels({}, 3);
  }
  ShowChosen();
}

void ProjectTree::SetHint(const QString& words) {
  hint_ = words;
  viewport()->update();
}

void ProjectTree::EditName(const std::string& key) {
  const QModelIndex index = IndexOf(key);
  if (index.isValid() && index.flags().testFlag(Qt::ItemIsEditable)) {
    setCurrentIndex(index);
    scrollTo(index);
    edit(index);
  }
}

std::string ProjectTree::CurrentKey() const {
  return model_.KeyOf(filter_.mapToSource(currentIndex()));
}

std::string ProjectTree::KeyAt(const QPoint& place) const {
  return model_.KeyOf(filter_.mapToSource(indexAt(place)));
}

QModelIndex ProjectTree::IndexOf(const std::string& key) const {
  return filter_.mapFromSource(model_.IndexOf(key));
}

void ProjectTree::FitColumns() {
  isFitting_ = true;
  for (int column = 0; column < filter_.columnCount() - 1; ++column) {
    resizeColumnToContents(column);
  }
  isFitting_ = false;
  isSetByHand_ = false;
  wholeNames_ = columnWidth(0);
  FitNames();
}

void ProjectTree::FitNames() {
  const int readable = fontMetrics().averageCharWidth() * 22;
  isFitting_ = true;
  setColumnWidth(0, std::max(readable, std::min(wholeNames_, viewport()->width() - columnWidth(1))));
  isFitting_ = false;
}

void ProjectTree::OpenLevels(const QModelIndex& parent, int levels) {
  constexpr int MostOpened = 200;  // of a level: more is no help
  const int rows = filter_.rowCount(parent);
  for (int row = 0; levels > 0 && row < std::min(rows, MostOpened); ++row) {
    const QModelIndex index = filter_.index(row, 0, parent);
    expand(index);
    OpenLevels(index, levels - 1);
  }
}

void ProjectTree::ChooseCurrent() {
  const std::string key = CurrentKey();
  if (!isFollowing_ && !model_.IsMoving() && !key.empty()) {
    parts_.Chosen.Choose(key);
  }
}

void ProjectTree::ShowChosen() {
  const QModelIndex index = IndexOf(parts_.Chosen.Key());
  if (holdsChosen_ != index.isValid()) {
    holdsChosen_ = index.isValid();
    viewport()->update();
  }
  if (!index.isValid()) {
    return;  // of the other tree, whose row stays
  }
  isFollowing_ = true;
  setCurrentIndex(index);
  scrollTo(index);
  isFollowing_ = false;
}

// Rows that the chosen one went with are passed over by the selection; the tree that it was in then chooses
// its neighbour.
void ProjectTree::TakeIn() {
  if (parts_.Chosen.Key().empty() && holdsChosen_) {
    ChooseCurrent();
  } else {
    ShowChosen();
  }
}

void ProjectTree::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (filter_.rowCount() == 0 && !hint_.isEmpty()) {
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, hint_);
  }
}

void ProjectTree::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  if (!isSetByHand_) {
    FitNames();
  }
}

// Of two trees with a chosen row each, only one is what the panes look at.
void ProjectTree::initViewItemOption(QStyleOptionViewItem* option) const {
  QTreeView::initViewItemOption(option);
  if (!holdsChosen_) {
    option->palette.setColor(QPalette::Highlight, palette().color(QPalette::Midlight));
    option->palette.setColor(QPalette::HighlightedText, palette().color(QPalette::Text));
  }
}

void ProjectTree::focusInEvent(QFocusEvent* event) {
  QTreeView::focusInEvent(event);
  if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
    ChooseCurrent();  // what is marked here is what actions are about
  }
}

void ProjectTree::contextMenuEvent(QContextMenuEvent* event) {
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const std::optional<ActionId>& id : menu_) {
    if (id) {
      menu->addAction(parts_.Commands.Of(*id));
    } else {
      menu->addSeparator();
    }
  }
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const QPoint place =
      isByKey ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()) : event->globalPos();
  menu->popup(place);
}

}  // namespace quorvelant
