
#include "Screens.h"
#include "data/DMU.h"
#include "help/BookKey.h"
#include "shell/IdleWatch.h"
#include "shell/MenuU.h"
#include "toolkit/controls/Board.h"
#include "toolkit/forms/Application.h"
#include "toolkit/forms/Guard.h"
#include "toolkit/theme/Appearance.h"
#include "toolkit/theme/Theme.h"

int main(int argc, char** argv) {
  using namespace tavoline;
  keepFilesPrivate();
  scaleToDisplay(argc, argv);
  Application application(argc, argv);
  application.setQuitOnLastWindowClosed(false);  // the menu alone decides when it ends
  applyTheme(application, shadeForDesktop());
  const BoardRaiser board(BoardRaiser::told(displaySetting("clavier")));
  if (!startUp(screensInOrder())) return 1;
  guarded([] { MenuF->Show(); });
  const BookKey book;
  const IdleWatch idle([] { DM->Idle(); }, [] { DM->GestureDone(); });
  const int status = application.exec();
  shutDown();
  return status;
}
