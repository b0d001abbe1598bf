#include "Screens.h"

#include "cash/Aff_caisseU.h"
#include "cash/C_caisseU.h"
#include "cash/C_depenceU.h"
#include "cash/CaiseU.h"
#include "cash/acc_caisseU.h"
#include "cash/comptageU.h"
#include "cash/liste_aff_caisseU.h"
#include "cash/liste_caiseU.h"
#include "cash/liste_caisseU.h"
#include "cash/liste_depenceU.h"
#include "catalogue/C_articleU.h"
#include "catalogue/C_tableU.h"
#include "catalogue/C_typeU.h"
#include "catalogue/Liste_TypeU.h"
#include "catalogue/Liste_produitU.h"
#include "catalogue/TVAU.h"
#include "catalogue/c_endroitU.h"
#include "catalogue/liste_endroitU.h"
#include "catalogue/liste_tableU.h"
#include "clients/C_clientU.h"
#include "clients/liste_ClientU.h"
#include "purchasing/C_fournisseurU.h"
#include "purchasing/Liste_fournisseurU.h"
#include "purchasing/c_facture_achatU.h"
#include "purchasing/liste_facture_achatU.h"
#include "purchasing/montantU.h"
#include "sales/Commande_avnU.h"
#include "sales/RenduU.h"
#include "sales/champsU.h"
#include "sales/commandeU.h"
#include "sales/fac_clU.h"
#include "sales/liste_commandeU.h"
#include "sales/qteU.h"
#include "shell/AproposU.h"
#include "shell/Configuration_utlisateurU.h"
#include "shell/LoginU.h"
#include "shell/MenuU.h"
#include "shell/clavierU.h"
#include "shell/utilisateurUU.h"
#include "statistics/BestU.h"
#include "statistics/statU.h"

namespace tavoline {

std::vector<Creator> screensInOrder() {
  return {
      makes(MenuF),
      makesDataModule(),
      makes(Liste_produitF),
      makes(Type_produitF),
      makes(Liste_TypeF),
      makes(Liste_fournisseurF),
      makes(C_fournisseurF),
      makes(liste_ClientF),
      makes(C_clientF),
      makes(TVAF),
      makes(AproposF),
      makes(utilisateurFF),
      makes(Configuration_utlisateurF),
      makes(LoginF),
      makes(C_articleF),
      makes(liste_endroitF),
      makes(c_endroitF),
      makes(liste_tableF),
      makes(C_tableF),
      makes(commandeF),
      makes(Commande_avnF),
      makes(champsF),
      makes(liste_commandeF),
      makes(qteF),
      makes(fac_clF),
      makes(liste_facture_achatF),
      makes(c_facture_achatF),
      makes(MontantF),
      makes(liste_caiseF),
      makes(caiseF),
      makes(liste_caisseF),
      makes(C_caisseF),
      makes(Aff_caisseF),
      makes(liste_aff_caisseF),
      makes(acc_caisseF),
      makes(RenduF),
      makes(liste_depenceF),
      makes(C_depenceF),
      makes(statF),
      makes(BestF),
      makes(clavierF),
      makes(comptageF),
  };
}

}  // namespace tavoline
