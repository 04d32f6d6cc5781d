#include "ui/tree_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <functional>
#include <map>
#include <memory>
#include <random>

#include "edit/button_sets.h"
#include "edit/removal.h"
#include "edit/segments.h"
#include "edit/structure.h"
#include "model/walk.h"
#include "script/script_reader.h"
#include "support/folders.h"
#include "support/scripted_answers.h"
#include "ui/disc_model.h"
#include "ui/media_model.h"

namespace quorvelant {
namespace {

void AddLines(const QAbstractItemModel& model, const QModelIndex& parent, const std::string& indent,
              std::string& text) {
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex first = model.index(row, 0, parent);
    text += indent + first.data(Qt::AccessibleTextRole).toString().toStdString();
    for (int column = 0; column < model.columnCount(parent); ++column) {
      text += "|" + model.index(row, column, parent).data().toString().toStdString();
    }
    text += '\n';
    AddLines(model, first, indent + ' ', text);
  }
}

std::string Dump(const QAbstractItemModel& model) {
  std::string text;
  AddLines(model, {}, {}, text);
  return text;
}

Project Example() {
  RecordingUi ui;
  return LoadProject(SourceFile("examples/demo.qvp"), ui);
}

struct Window {
  Window() {
    Answers.IsAway = true;
    new QAbstractItemModelTester(&Media, QAbstractItemModelTester::FailureReportingMode::Fatal, &Media);
    new QAbstractItemModelTester(&Disc, QAbstractItemModelTester::FailureReportingMode::Fatal, &Disc);
  }

  ScriptedAnswers Answers;
  Voice Speaks{Answers};
  Document Doc{{}, {}, Speaks};
  MediaModel Media{Doc};
  DiscModel Disc{Doc};
};

}  // namespace
}  // namespace quorvelant
