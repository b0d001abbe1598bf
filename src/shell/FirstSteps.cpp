#include "shell/FirstSteps.h"

#include <QtCore/QEvent>
#include <QtCore/QTimer>
#include <QtGui/QIcon>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include "data/DMU.h"
#include "data/dataset/ReadRows.h"
#include "toolkit/forms/Guard.h"

namespace tavoline {

namespace {

struct Step {
  const char *entry, *caption, *found;  // the menu's entry, what is to be done, what is there once it is
};

// The last one is done when the store is in use.
constexpr Step kSteps[] = {
    {"Endroit1", "Les endroits : salle, terrasse, comptoir…",
     "SELECT First(Endroit.ID_endroit) AS x FROM Endroit"},
    {"ListedesTable1", "Les tables de chaque endroit", "SELECT First(Table_.ID_table) AS x FROM Table_"},
    {"ypedeProduit1", "Les catégories d'articles : boissons, sandwichs…",
     "SELECT First(type.code) AS x FROM type"},
    {"Produit1", "Les articles, leurs prix et leurs images",
     "SELECT First(article.code_barre) AS x FROM article"},
    {"CreationnouveauCaisse1", "Une caisse pour chaque poste",
     "SELECT First(caisse.ID_caise) AS x FROM caisse WHERE caisse.general='NON'"},
    {"CreationnouveauCaisse1", "Une caisse de maison, cochée « caisse général »",
     "SELECT First(caisse.ID_caise) AS x FROM caisse WHERE caisse.general='OUI'"},
    {"AffctaiondeCaisse1", "Qui travaille à quelle caisse",
     "SELECT First(acce_caisse.login) AS x FROM acce_caisse"},
    {"AdvSmoothButton6", "La première commande", "SELECT First(commande.n_commande) AS x FROM commande"},
};

bool isThere(const char* found) {
  const ValueRows rows = readRows(DM->store(), found);
  return !rows.empty() && !rows.front().front().isNull();
}

}  // namespace

FirstSteps::FirstSteps(QWidget* parent) : QFrame(parent) {
  setProperty("kind", QStringLiteral("card"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(20, 16, 20, 16);
  column->setSpacing(2);
  auto* title = new QLabel(QStringLiteral("Pour commencer"), this);
  title->setProperty("kind", QStringLiteral("heading"));
  column->addWidget(title);
  for (const Step& step : kSteps) {
    const QString entry = QString::fromLatin1(step.entry);
    auto* door = new Button(this);
    door->setObjectName(QStringLiteral("Step%1").arg(doors_.size() + 1));
    door->setProperty("kind", QStringLiteral("menu"));
    door->setText(QString::fromUtf8(step.caption));
    door->setIconSize({24, 24});
    door->OnClick = [this, entry] {
      if (OnChoose) OnChoose(entry);
    };
    column->addWidget(door);
    doors_.push_back(door);
  }
  hide();
}

void FirstSteps::Look() {
  if (!begun_) QTimer::singleShot(0, this, [this] { guarded([this] { look(); }); });
}

void FirstSteps::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::EnabledChange && isEnabled()) Look();
}

void FirstSteps::look() {
  if (!isEnabled()) return;
  begun_ = begun_ || isThere(kSteps[doors_.size() - 1].found);
  const bool wanted = !begun_ && OnAllowed && OnAllowed(QString::fromLatin1(kSteps[0].entry));
  setVisible(wanted);
  if (!wanted) return;
  bool next = true;  // the first one that is not done
  for (std::size_t step = 0; step < doors_.size(); ++step) {
    const bool done = isThere(kSteps[step].found);
    doors_[step]->setVisible(OnAllowed(QString::fromLatin1(kSteps[step].entry)));
    doors_[step]->setIcon(
        QIcon::fromTheme(done ? QStringLiteral("dialog-ok-apply") : QStringLiteral("arrow-right")));
    doors_[step]->setAccessibleDescription(done ? QStringLiteral("fait") : QStringLiteral("à faire"));
    QFont letters = doors_[step]->font();
    letters.setBold(!done && next);
    doors_[step]->setFont(letters);
    next = next && done;
  }
}

}  // namespace tavoline
