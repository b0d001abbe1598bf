// tavoline-screens FOLDER [WIDTH HEIGHT [sombre]]: takes the pictures of the documentation. The working
// directory holds a demo store, which is changed on the way: give it one of its own.

#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "Screens.h"
#include "shell/MenuU.h"
#include "toolkit/forms/Application.h"
#include "toolkit/forms/Messages.h"
#include "toolkit/theme/Appearance.h"
#include "toolkit/theme/Theme.h"
#include "tools/screens/Scenes.h"
#include "tools/screens/Stage.h"

int main(int argc, char** argv) {
  using namespace tavoline;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const bool dark = argc == 5 && std::string_view(argv[4]) == "sombre";
  if (argc != 2 && argc != 4 && !dark) {
    std::fputs("tavoline-screens FOLDER [WIDTH HEIGHT [sombre]]\n", stderr);
    return 2;
  }
  const QString folder = QString::fromLocal8Bit(argv[1]);
  const QSize display = argc >= 4 ? QSize(std::atoi(argv[2]), std::atoi(argv[3])) : QSize(1024, 768);
  const double scale = scaleFor(display);
  qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
  Application application(argc, argv);
  applyTheme(application, dark ? Shade::Dark : Shade::Light);
  std::string box;  // no scene is to show one
  Messages::current().show = [&](const std::string& text, const std::string&) { box = text; };
  try {
    if (!startUp(screensInOrder())) throw std::runtime_error(box);
    MenuF->Show();
    Stage stage((QSizeF(display) / scale).toSize(), folder);
    for (const Scene& scene : scenes()) {
      scene.play(stage);
      if (!box.empty()) throw std::runtime_error(scene.file + ": " + box);
      if (!scene.file.empty()) stage.keep(scene.file);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
  shutDown();
  return 0;
}
