#include "window/example_folder.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <array>

namespace quorvelant {

// Where an installation puts it, or a build beside its checkout.
QString ExampleProject() {
  constexpr std::array<const char*, 3> Places{"/../share/quorvelant/examples/demo.qvp",
                                              "/../share/doc/quorvelant/examples/demo.qvp",
                                              "/../../examples/demo.qvp"};
  for (const char* const place : Places) {
    const QFileInfo file(QCoreApplication::applicationDirPath() + QLatin1String(place));
    if (file.exists()) {
      return file.canonicalFilePath();
    }
  }
  return {};
}

}  // namespace quorvelant
