#include "window/field_control.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QSpinBox>

#include "ui/shown_text.h"

namespace quorvelant {

namespace {

using Json = nlohmann::json;
using Want = std::function<void(const Json& value)>;

QString TextOf(const Json& value) {
  return value.is_string() ? Shown(value.get_ref<const std::string&>()) : QString();
}

// A line in which words can be read; its label goes above it where both do not fit side by side.
QLineEdit* MakeLine() {
  auto* const line = new QLineEdit;
  line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 16);
  return line;
}

// Long names are told by how they begin, once nobody writes.
void ShowStart(QLineEdit& line) {
  if (!line.hasFocus()) {
    line.setCursorPosition(0);
  }
}

FieldControl MakeText(const Want& want) {
  auto* const line = MakeLine();
  QObject::connect(line, &QLineEdit::editingFinished, line, [line, want] {
    if (line->isModified()) {
      line->setModified(false);
      want(line->text().toStdString());
    }
    ShowStart(*line);
  });
  return {line, [line](const ElementField& field) {
            if (!line->isModified()) {  // or else somebody is writing
              line->setText(TextOf(field.Value));
              ShowStart(*line);
            }
          }};
}

FieldControl MakeNumber(const Want& want) {
  auto* const box = new QSpinBox;
  box->setKeyboardTracking(false);
  QObject::connect(box, &QSpinBox::valueChanged, box, [want](int value) { want(value); });
  return {box, [box](const ElementField& field) {
            const QSignalBlocker quiet(box);
            const auto value = field.Value.is_array() ? field.Value.front().get<std::int64_t>()
                                                      : field.Value.get<std::int64_t>();
            // What a project holds beyond the range must be shown too.
            box->setRange(static_cast<int>(std::min(field.Least, value)),
                          static_cast<int>(std::max(field.Most, value)));
            box->setValue(static_cast<int>(value));
          }};
}

FieldControl MakeFlag(const Want& want) {
  auto* const box = new QCheckBox;
  QObject::connect(box, &QCheckBox::clicked, box, [want](bool on) { want(on); });
  return {box, [box](const ElementField& field) { box->setChecked(field.Value.get<bool>()); }};
}

FieldControl MakeChoice(const Want& want) {
  auto* const box = new QComboBox;
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setMinimumContentsLength(12);
  QObject::connect(box, &QComboBox::activated, box,
                   [box, want](int at) { want(box->itemText(at).toStdString()); });
  return {box, [box](const ElementField& field) {
            QStringList choices;
            for (const std::string& choice : field.Choices) {
              choices << Shown(choice);
            }
            QStringList present;
            for (int i = 0; i < box->count(); ++i) {
              present << box->itemText(i);
            }
            if (choices != present) {
              box->clear();
              box->addItems(choices);
            }
            box->setCurrentIndex(box->findText(TextOf(field.Value)));
          }};
}

// Names as they are, or the numbers of streams.
QStringList LabelsOf(const ElementField& field) {
  QStringList labels;
  if (field.Kind == FieldKind::Names) {
    for (const std::string& choice : field.Choices) {
      labels << Shown(choice);
    }
  } else {
    for (std::size_t i = 0; i < field.Value.size(); ++i) {
      labels << QObject::tr("Stream %1").arg(i);
    }
  }
  return labels;
}

bool IsOn(const ElementField& field, int row) {
  if (field.Kind == FieldKind::Flags) {
    return field.Value.at(static_cast<std::size_t>(row)).get<bool>();
  }
  const std::string& name = field.Choices.at(static_cast<std::size_t>(row));
  return std::ranges::find(field.Value, Json(name)) != field.Value.end();
}

FieldControl MakeTicks(FieldKind kind, const Want& want) {
  auto* const list = new QListWidget;
  list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the form scrolls
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QObject::connect(list, &QListWidget::itemChanged, list, [list, kind, want] {
    Json value = Json::array();
    for (int row = 0; row < list->count(); ++row) {
      const bool on = list->item(row)->checkState() == Qt::Checked;
      if (kind == FieldKind::Flags) {
        value.push_back(on);
      } else if (on) {
        value.push_back(list->item(row)->text().toStdString());
      }
    }
    want(value);
  });
  return {
      list, [list](const ElementField& field) {
        const QSignalBlocker quiet(list);
        const QStringList labels = LabelsOf(field);
        while (list->count() > labels.size()) {
          delete list->takeItem(list->count() - 1);
        }
        for (int row = 0; row < labels.size(); ++row) {
          if (row >= list->count()) {
            list->addItem(QString());
          }
          list->item(row)->setText(labels[row]);
          list->item(row)->setCheckState(IsOn(field, row) ? Qt::Checked : Qt::Unchecked);
        }
        list->setFixedHeight(std::max(list->sizeHintForRow(0), 0) * list->count() + 2 * list->frameWidth());
        list->viewport()->update();
      }};
}

// "0 1 2 3"; one number has a box of its own.
FieldControl MakeNumbers(const Want& want) {
  auto* const line = MakeLine();
  line->setToolTip(QObject::tr("The streams by their numbers, with blanks between"));
  QObject::connect(line, &QLineEdit::editingFinished, line, [line, want] {
    if (!line->isModified()) {
      return;
    }
    line->setModified(false);
    Json value = Json::array();
    for (const QString& one : line->text().simplified().split(u' ', Qt::SkipEmptyParts)) {
      bool isNumber = false;
      const int number = one.toInt(&isNumber);
      isNumber ? value.push_back(number) : value.push_back(one.toStdString());
    }
    want(value);
    ShowStart(*line);
  });
  return {line, [line](const ElementField& field) {
            if (line->isModified()) {
              return;
            }
            QStringList numbers;
            for (const Json& one : field.Value) {
              numbers << QString::number(one.get<int>());
            }
            line->setText(numbers.join(u' '));
            ShowStart(*line);
          }};
}

FieldControl MakeControl(const ElementField& field, const Want& want) {
  switch (field.Kind) {
    case FieldKind::Number:
      return MakeNumber(want);
    case FieldKind::Flag:
      return MakeFlag(want);
    case FieldKind::Choice:
      return MakeChoice(want);
    case FieldKind::Names:
    case FieldKind::Flags:
      return MakeTicks(field.Kind, want);
    case FieldKind::Numbers:
      return field.Value.size() == 1 ? MakeNumber([want](const Json& value) { want(Json::array({value})); })
                                     : MakeNumbers(want);
    default:
      return MakeText(want);
  }
}

}  // namespace

FieldControl MakeFieldControl(const ElementField& field, const Want& want) {
  FieldControl control = MakeControl(field, want);
  control.Widget->setAccessibleName(Shown(field.Label));
  control.Widget->setObjectName(Shown(field.Name));
  control.Show(field);
  return control;
}

}  // namespace quorvelant
