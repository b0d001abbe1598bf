#include "tools/store/demo/Cafeteria.h"

namespace tavoline::tool {
namespace {

constexpr DemoCategory kCategories[] = {
    {"Boissons chaudes", 1}, {"Boissons fraîches", 2},   {"Jus et cocktails", 3}, {"Viennoiseries", 4},
    {"Petit déjeuner", 5},   {"Sandwichs", 6},           {"Pizzas et pâtes", 7},  {"Plats du jour", 8},
    {"Salades", 9},          {"Desserts et glaces", 10},
};

// Three counted articles are at or under their threshold, one of them sold out: the marks and refusals of a
// real day.
constexpr DemoArticle kArticles[] = {
    {"CAFÉ EXPRESS", 1, 18, 80, 0, 0, "☕", ""},
    {"CAFÉ CRÈME", 1, 28, 100, 0, 0, "☕", "🥛"},
    {"CAPPUCCINO", 1, 45, 180, 0, 0, "☕", "🤎"},
    {"THÉ À LA MENTHE", 1, 12, 60, 0, 0, "🫖", "🌿"},
    {"THÉ AU CITRON", 1, 15, 70, 0, 0, "🍵", "🍋"},
    {"CHOCOLAT CHAUD", 1, 50, 180, 0, 0, "🍫", "☕"},
    {"LAIT AU MIEL", 1, 40, 120, 0, 0, "🥛", "🍯"},

    {"EAU MINÉRALE 50 CL", 2, 22, 40, 48, 264, "💧", ""},
    {"EAU MINÉRALE 1,5 L", 2, 35, 70, 24, 96, "💦", ""},
    {"EAU GAZEUSE", 2, 30, 60, 24, 72, "🫧", ""},
    {"LIMONADE BLANCHE", 2, 45, 90, 24, 88, "🥤", "🍋"},
    {"SODA ORANGE", 2, 45, 90, 24, 19, "🥤", "🍊"},
    {"SODA POMME", 2, 45, 90, 24, 61, "🥤", "🍏"},
    {"THÉ GLACÉ PÊCHE", 2, 60, 120, 12, 40, "🧃", "🍑"},
    {"LBEN", 2, 35, 60, 12, 30, "🥛", "🧊"},

    {"JUS ORANGE PRESSÉE", 3, 70, 200, 0, 0, "🍊", ""},
    {"CITRONNADE MAISON", 3, 40, 150, 0, 0, "🍋", ""},
    {"JUS DE FRAISE", 3, 80, 220, 0, 0, "🍓", ""},
    {"JUS DE MANGUE", 3, 95, 250, 0, 0, "🥭", ""},
    {"BANANE AU LAIT", 3, 75, 220, 0, 0, "🍌", "🥛"},
    {"COCKTAIL DE FRUITS", 3, 110, 300, 0, 0, "🍹", ""},

    {"CROISSANT", 4, 22, 40, 20, 54, "🥐", ""},
    {"PAIN AU CHOCOLAT", 4, 28, 50, 20, 47, "🥐", "🍫"},
    {"BRIOCHE", 4, 26, 50, 15, 33, "🍞", ""},
    {"BEIGNET SUCRÉ", 4, 20, 40, 15, 41, "🍩", ""},
    {"MADELEINE", 4, 16, 30, 20, 62, "🧁", ""},
    {"MAKROUT AU MIEL", 4, 30, 60, 20, 75, "🍪", "🍯"},

    {"OEUFS AU PLAT", 5, 70, 200, 0, 0, "🍳", ""},
    {"OMELETTE FROMAGE", 5, 100, 280, 0, 0, "🍳", "🧀"},
    {"MSEMEN AU MIEL", 5, 40, 120, 0, 0, "🫓", "🍯"},
    {"BAGHRIR AU BEURRE", 5, 40, 120, 0, 0, "🥞", "🧈"},
    {"TARTINE CONFITURE", 5, 30, 100, 0, 0, "🥖", "🍓"},
    {"GAUFRE CHOCOLAT", 5, 65, 200, 0, 0, "🧇", "🍫"},

    {"SANDWICH THON", 6, 110, 250, 0, 0, "🥪", "🐟"},
    {"SANDWICH MERGUEZ", 6, 140, 300, 0, 0, "🌭", ""},
    {"SANDWICH KEFTA", 6, 160, 350, 0, 0, "🥖", "🥩"},
    {"BURGER CLASSIQUE", 6, 200, 450, 0, 0, "🍔", ""},
    {"BURGER FROMAGE", 6, 230, 500, 0, 0, "🍔", "🧀"},
    {"CHAWARMA POULET", 6, 180, 400, 0, 0, "🌯", ""},
    {"PITA GRILLÉE", 6, 165, 380, 0, 0, "🥙", ""},
    {"FRITES", 6, 50, 150, 0, 0, "🍟", ""},

    {"PIZZA MARGHERITA", 7, 190, 500, 0, 0, "🍕", "🍅"},
    {"PIZZA CHAMPIGNONS", 7, 240, 650, 0, 0, "🍕", "🍄"},
    {"PIZZA THON", 7, 270, 700, 0, 0, "🍕", "🐟"},
    {"PIZZA 4 FROMAGES", 7, 320, 800, 0, 0, "🍕", "🧀"},
    {"PÂTES BOLOGNAISE", 7, 210, 550, 0, 0, "🍝", "🍅"},
    {"PÂTES AUX CREVETTES", 7, 330, 750, 0, 0, "🍝", "🦐"},

    {"COUSCOUS POULET", 8, 260, 600, 0, 0, "🍲", "🍗"},
    {"CHORBA FRIK", 8, 90, 250, 0, 0, "🥣", "🍅"},
    {"RIZ AU POULET", 8, 200, 500, 0, 0, "🍛", ""},
    {"STEAK FRITES", 8, 420, 900, 0, 0, "🥩", "🍟"},
    {"POULET RÔTI", 8, 240, 550, 0, 0, "🍗", ""},
    {"POISSON GRILLÉ", 8, 390, 850, 0, 0, "🐟", "🍋"},
    {"TAJINE AUX OLIVES", 8, 280, 650, 0, 0, "🥘", "🫒"},
    {"CÔTELETTES AGNEAU", 8, 330, 700, 0, 0, "🍖", ""},

    {"SALADE VARIÉE", 9, 110, 300, 0, 0, "🥗", ""},
    {"SALADE DE TOMATES", 9, 70, 200, 0, 0, "🥗", "🍅"},
    {"SALADE DE THON", 9, 150, 400, 0, 0, "🥗", "🐟"},
    {"SALADE POULET", 9, 170, 450, 0, 0, "🥗", "🍗"},
    {"HMISS", 9, 70, 200, 0, 0, "🫑", "🍅"},

    {"GLACE DEUX BOULES", 10, 70, 200, 0, 0, "🍨", ""},
    {"CORNET VANILLE", 10, 35, 100, 0, 0, "🍦", ""},
    {"SORBET CITRON", 10, 60, 180, 0, 0, "🍧", "🍋"},
    {"FLAN CARAMEL", 10, 55, 150, 8, 22, "🍮", ""},
    {"PART DE GÂTEAU", 10, 80, 200, 8, 8, "🍰", ""},
    {"TARTE AUX POMMES", 10, 75, 200, 6, 0, "🥧", "🍎"},
    {"SALADE DE FRUITS", 10, 75, 200, 0, 0, "🍇", "🥝"},
    {"BAKLAWA", 10, 45, 90, 20, 68, "🍯", "🌰"},
};

constexpr DemoPlace kPlaces[] = {
    {"Salle", "Salle", 10, "C001"}, {"Terrasse", "Terrasse", 8, "C002"}, {"Étage", "Étage", 6, "C001"}};

constexpr DemoUser kUsers[] = {
    {"10", "1010", "Benali", "Karima", "Admin", "👩‍💼"},
    {"20", "2020", "Haddad", "Sofiane", "KeyUser", "👨‍🍳"},
    {"31", "3131", "Mansouri", "Yacine", "User", "🤵"},
    {"32", "3232", "Cherif", "Lina", "User", "👩‍🍳"},
};

constexpr DemoDesk kDesks[] = {
    {"C001", "Caisse salle", false}, {"C002", "Caisse terrasse", false}, {"C003", "Caisse de maison", true}};

constexpr DemoAssignment kAssignments[] = {
    {"10", "C001", "Remplacements"}, {"10", "C003", "Coffre"},  {"20", "C001", "Salle et étage"},
    {"31", "C002", "Terrasse"},      {"32", "C001", "Le midi"}, {"32", "C002", "Le soir"},
};

constexpr DemoSupplier kSuppliers[] = {
    {"F001", "Boissons du Sahel", "12, zone des dépôts, Blida", "025 00 01 10", "commandes@sahel.example"},
    {"F002", "Minoterie El Baraka", "3, route du moulin, Médéa", "025 00 02 20", "minoterie@baraka.example"},
    {"F003", "Marché de gros Attatba", "Carreau 41, Attatba", "024 00 03 30", "carreau41@gros.example"},
    {"F004", "Boulangerie Les Palmiers", "8, rue des Palmiers, Alger", "021 00 04 40",
     "fournil@palmiers.example"},
    {"F005", "Glaces Djurdjura", "27, rue du stade, Tizi Ouzou", "026 00 05 50", "glaces@djurdjura.example"},
    {"F006", "Eaux des Sources", "Zone industrielle, Sidi Moussa", "023 00 06 60", "eaux@sources.example"},
    {"F007", "Laiterie du Plateau", "Route nationale 5, Sétif", "036 00 07 70", "lait@plateau.example"},
    {"F008", "Épices Ben Omar", "Souk El Fellah, Boufarik", "025 00 08 80", "epices@benomar.example"},
    {"F009", "Jus de la Mitidja", "4, chemin des vergers, Blida", "025 00 09 90", "jus@mitidja.example"},
    {"F010", "Cafés Torréfaction Nour", "18, rue Larbi, Alger", "021 00 11 00", "nour@cafes.example"},
    {"F011", "Pains et Délices", "2, place du marché, Kouba", "021 00 11 10", "pains@delices.example"},
    {"F012", "Emballages Rapides", "Lot 7, Rouiba", "023 00 12 20", "lot7@emballages.example"},
};

constexpr DemoClient kClients[] = {
    {"CL01", "Bureau Atlas", "Service achats", "021 00 10 01", "5, place des Martyrs, Alger",
     "achats@atlas.example"},
    {"CL02", "Meziane", "Nadia", "0550 00 10 02", "14, rue des Jardins, Alger", "nadia@meziane.example"},
    {"CL03", "Lycée Ibn Sina", "Intendance", "021 00 10 03", "1, rue du Lycée, Alger",
     "intendance@ibnsina.example"},
    {"CL04", "Boudiaf", "Rachid", "0661 00 10 04", "22, cité des Pins, Alger", "rachid@boudiaf.example"},
    {"CL05", "Clinique El Amel", "Accueil", "021 00 10 05", "9, chemin des Oliviers, Alger",
     "accueil@elamel.example"},
    {"CL06", "Saïdi", "Amina", "0770 00 10 06", "31, rue de la Gare, Alger", "amina@saidi.example"},
    {"CL07", "Hôtel Belvédère", "Réception", "021 00 10 07", "1, corniche Est, Alger",
     "reception@belvedere.example"},
    {"CL08", "Khelifi", "Omar", "0555 00 10 08", "8, cité El Bina, Alger", "omar@khelifi.example"},
    {"CL09", "Crèche Les Papillons", "Direction", "021 00 10 09", "17, rue des Acacias, Alger",
     "direction@papillons.example"},
    {"CL10", "Zerrouki", "Lamia", "0662 00 10 10", "3, boulevard du Front de Mer, Alger",
     "lamia@zerrouki.example"},
    {"CL11", "Garage du Centre", "Atelier", "021 00 10 11", "40, rue du Port, Alger",
     "atelier@garage.example"},
    {"CL12", "Benaïssa", "Tarek", "0771 00 10 12", "12, rue des Oliviers, Alger", "tarek@benaissa.example"},
};

}  // namespace

std::span<const DemoCategory> demoCategories() {
  return kCategories;
}
std::span<const DemoArticle> demoArticles() {
  return kArticles;
}
std::span<const DemoPlace> demoPlaces() {
  return kPlaces;
}

std::vector<DemoTable> demoTables() {
  std::vector<DemoTable> tables;
  int place = 0;
  for (const DemoPlace& area : kPlaces) {
    ++place;
    for (int number = 1; number <= area.tables; ++number)
      tables.push_back({static_cast<int>(tables.size()) + 1,
                        std::string(area.prefix) + ' ' + std::to_string(number), place, area.name,
                        area.desk});
  }
  return tables;
}

std::span<const DemoUser> demoUsers() {
  return kUsers;
}
std::span<const DemoDesk> demoDesks() {
  return kDesks;
}
std::span<const DemoAssignment> demoAssignments() {
  return kAssignments;
}
std::span<const DemoSupplier> demoSuppliers() {
  return kSuppliers;
}
std::span<const DemoClient> demoClients() {
  return kClients;
}

}  // namespace tavoline::tool
