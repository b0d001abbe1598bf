#include "cash/comptageU.h"

#include <QtCore/QEvent>
#include <QtGui/QIcon>

#include "cash/CaiseU.h"
#include "data/value/Regional.h"
#include "toolkit/forms/Messages.h"

inline void takePicturesOfMoney() {
  Q_INIT_RESOURCE(money);
}

namespace tavoline {

TcomptageF* comptageF = nullptr;

TcomptageF::TcomptageF() : TForm("comptageF") {
  setupUi(this);
  setWindowFlags(kSystemButtonOnly);
  boxes_ = {Edit1, Edit2, Edit3, Edit4, Edit5, Edit6, Edit7, Edit8, Edit9, Edit10, Edit11};
  auto* before = boxes_.back();
  for (auto* box : boxes_) {
    box->OnChange = [this] { Edit1Change(); };
    before->OnEnter = [box] {
      box->SetFocus();
      box->selectAll();
    };
    box->installEventFilter(this);
    before = box;
  }
  AdvSmoothButton1->OnClick = [this] { AdvSmoothButton1Click(); };
  RzBitBtn7->OnClick = [this] { RzBitBtn7Click(); };
  showPictures();
  Ready();
}

// Drawn by the pixels of this display, so that their figures stay sharp.
void TcomptageF::showPictures() {
  takePicturesOfMoney();
  constexpr const char* pictures[] = {"note2000", "note1000", "note500", "note200", "note100", "coin200",
                                      "coin100",  "coin50",   "coin20",  "coin10",  "coin5"};
  QLabel* const places[] = {Image1, Image2, Image3, Image4,  Image5, Image6,
                            Image7, Image8, Image9, Image10, Image11};
  for (std::size_t i = 0; i < std::size(pictures); ++i) {
    const QIcon picture(QStringLiteral(":/money/%1.svg").arg(QLatin1String(pictures[i])));
    places[i]->setPixmap(picture.pixmap(places[i]->minimumSize(), devicePixelRatioF()));
  }
}

void TcomptageF::FormShow() {
  Edit1->SetFocus();
  // Once the boxes that were empty have got their noughts.
  QMetaObject::invokeMethod(Edit1, &QLineEdit::selectAll, Qt::QueuedConnection);
}

// A finger on a box takes its whole amount, to be typed over.
bool TcomptageF::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    if (auto* box = qobject_cast<Edit*>(watched); box && !box->hasSelectedText()) box->selectAll();
  }
  return TForm::eventFilter(watched, event);
}

// Each "0" that is written here comes round to this handler before the next box is looked at.
void TcomptageF::Edit1Change() {
  for (Edit* box : boxes_)
    if (box->Text().empty()) box->Text("0");
  long double total = 0;
  for (Edit* box : boxes_) total += readExtended(box->Text(), DecimalMark::RegionalOnly);
  Label13->Caption(formatFloat(static_cast<double>(total)));
}

void TcomptageF::AdvSmoothButton1Click() {
  if (!ConfirmDeletion()) return;
  for (Edit* box : boxes_) box->Text("0");
  Label13->Caption("");
}

void TcomptageF::RzBitBtn7Click() {
  caiseF->DBEdit1->Text(Label13->Caption());
  Close();
}

}  // namespace tavoline
