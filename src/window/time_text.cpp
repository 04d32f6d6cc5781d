#include "window/time_text.h"

#include <QStringList>
#include <nlohmann/json.hpp>

#include "desk/edit_button_fields.h"

namespace quorvelant {

std::int64_t FramesIn(const QString& text, std::int64_t former, int framesPerSecond) {
  const QString trimmed = text.trimmed();
  if (trimmed.startsWith(u'+') || trimmed.startsWith(u'-')) {
    bool isNumber = false;
    const int by = trimmed.toInt(&isNumber);
    if (isNumber) {
      return former + by;
    }
  }
  QStringList fields = trimmed.split(u':');
  while (fields.size() < 4 && !trimmed.isEmpty()) {
    fields.prepend(QStringLiteral("00"));
  }
  for (QString& field : fields) {
    field = field.isEmpty() ? field : field.rightJustified(2, u'0');
  }
  const nlohmann::json value = fields.join(u':').toStdString();
  return FrameOf(JsonField("time", value), framesPerSecond);
}

}  // namespace quorvelant
