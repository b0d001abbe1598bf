#include "tools/store/Commands.h"

#include <algorithm>
#include <array>
#include <exception>
#include <ostream>

#include "data/value/Text.h"
#include "tools/store/Arguments.h"
#include "tools/store/Backup.h"
#include "tools/store/Check.h"
#include "tools/store/Copy.h"
#include "tools/store/Creation.h"
#include "tools/store/Secrets.h"
#include "tools/store/Upgrade.h"
#include "tools/store/Versions.h"
#include "tools/store/demo/Cafeteria.h"
#include "tools/store/demo/Demo.h"
#include "tools/store/exchange/Export.h"
#include "tools/store/exchange/Import.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
namespace {

constexpr int kDone = 0, kFailed = 1, kWronglyCalled = 2, kWithRemarks = 3;
constexpr std::int64_t kMostOrders = 10'000'000;  // and purchase invoices, and suppliers
constexpr std::int64_t kUsualInvoices = 913;      // in the ten years of a generated store
constexpr std::size_t kLoginWidth = 4;  // Orders and expenses copy the login into columns of this width.

constexpr std::string_view kHelp = R"(NOM
    tavoline-store - crée, remplit, contrôle et sauvegarde la base d'un établissement Tavoline

SYNOPSIS
    tavoline-store create FICHIER [--login CODE] [--password-file FICHIER2 | --password MOT] [--nom NOM]
                          [--prenom PRENOM] [--role ROLE] [--group GROUPE]
    tavoline-store demo FICHIER
    tavoline-store generate FICHIER --orders N [--invoices N] [--suppliers N] [--seed S] [--pictures]
    tavoline-store check FICHIER
    tavoline-store versions FICHIER
    tavoline-store backup FICHIER COPIE
    tavoline-store restore COPIE FICHIER
    tavoline-store upgrade FICHIER
    tavoline-store import ANCIENNE CIBLE [--dry-run] [--strict] [--group GROUPE]
    tavoline-store export BASE DOSSIER
    tavoline-store copy DÉPART ARRIVÉE
    tavoline-store --help | --version

DESCRIPTION
    Le programme lit sa base dans le fichier BDD.mdb de son dossier de travail. Il ne la crée ni ne la modifie dans
    sa forme : c'est le rôle de cet outil. Aucune commande ne remplace un fichier qui existe, sauf restore, qui le
    met d'abord de côté ; un fichier n'apparaît sous son nom qu'une fois complet, et n'est ouvert qu'à son
    propriétaire. Un nom est refusé s'il est resté à côté le journal (-wal) d'une autre base.

    create     Crée une base neuve : les dix-sept tables, la TVA à 19 % (« Modifier TVA » la change) et un premier
               compte, par lequel on crée les autres. Son mot de passe est demandé ; sans terminal ni fichier, il
               est tiré au hasard et dit une fois.
    demo       Crée une cafétéria de démonstration : places et tables, articles avec leurs images, personnel, caisses,
               fournisseurs, clients et quelques semaines d'activité jusqu'à hier.
    generate   Crée la même cafétéria et ses comptes avec dix ans d'historique, pour mesurer les temps de réponse.
    check      Dit si une base est saine. Ne modifie rien ; les postes peuvent continuer.
    versions   Dit quels programmes de cet ordinateur tiennent des versions de la base, combien et depuis quand, et
               combien le journal occupe. Ne modifie rien.
    backup     Copie une base telle qu'elle est à cet instant, pendant que les postes continuent.
    restore    Remet une sauvegarde en service, programme arrêté : la contrôle, met de côté sous un nom daté la base
               d'avant avec son journal, copie, et contrôle le résultat.
    upgrade    Ajoute à une base plus ancienne ce que sa forme d'aujourd'hui a de plus (index), puis la contrôle. En
               fait d'abord une copie à côté. Ne fait rien si rien ne manque, ni si une table ou une colonne manque.
               Les postes peuvent continuer ; leurs enregistrements attendent un instant.
    import     Fait une base neuve de l'ancienne, ligne pour ligne : un fichier Jet 4 (.mdb, format 2000 à 2003) d'une
               installation antérieure, qu'il ne modifie jamais, ou un dossier fait par export. Relit tout ce qu'il a
               écrit, et en rend compte à l'écran et dans un fichier à côté de la base.
    export     Écrit toute une base dans un dossier neuf : un fichier CSV par table, les images, et leur description.
               Les postes peuvent continuer.
    copy       Fait de la base DÉPART la base neuve ARRIVÉE, ligne pour ligne, d'un fichier à un serveur, d'un serveur
               à un fichier, ou entre deux du même genre ; relit et compare tout avant que l'arrivée apparaisse. Les
               postes s'arrêtent d'abord : ce qu'ils écrivent pendant la copie n'en est pas.

    FICHIER peut aussi être l'adresse d'un serveur PostgreSQL (postgresql://utilisateur@serveur/base), ou un fichier
    qui la contient. La base est créée si elle manque, avec deux rôles : BASE_proprietaire, à qui tout appartient, et
    BASE_poste, qui lit et écrit les lignes et rien d'autre. Les mots de passe du serveur se mettent dans
    « ~/.pgpass », jamais dans l'adresse. La copie d'un serveur est faite par « pg_dump » ; restore ne la remet que
    dans une base vide ; upgrade en fait une dans le dossier courant ; versions dit quels postes tiennent des
    versions, où qu'ils soient.

OPTIONS
    --login CODE       Code du premier compte, quatre caractères au plus. Sinon 10.
    --password-file F  Fichier dont la première ligne est son mot de passe ; « - » est l'entrée standard.
    --password MOT     Son mot de passe, pour un script : d'autres utilisateurs peuvent voir une ligne de commande.
    --group GROUPE     Ouvre aussi la base aux utilisateurs de ce groupe. Sinon à son propriétaire seul.
    --nom NOM          Son nom. Sinon Administrateur.
    --prenom PRENOM    Son prénom. Sinon Principal.
    --role ROLE        Admin, KeyUser ou User. Sinon Admin.
    --orders N         Nombre de commandes terminées, environ quatre lignes chacune.
    --invoices N       Nombre de factures d'achat, environ cinq lignes chacune. Sinon une tous les quatre jours.
    --suppliers N      Nombre de fournisseurs en plus de ceux de la démonstration. Sinon aucun.
    --seed S           Graine du hasard ; la même graine donne le même historique le même jour. Sinon 1.
    --pictures         Dessine aussi les images des articles.
    --dry-run          Lit tout et en rend compte, mais n'écrit rien.
    --strict           S'arrête à la première ligne refusée, sans rien écrire.

ÉTAT DE SORTIE
    0   fait ; pour check, restore et upgrade, la base est saine
    1   échec, dit sur la sortie d'erreur ; pour check, restore et upgrade, la base n'est pas saine
    2   mauvais appel
    3   import fait, avec des remarques à lire

EXEMPLES
    tavoline-store create BDD.mdb --login 10 --nom Benali --prenom Karima
    tavoline-store backup BDD.mdb "sauvegardes/$(date +%F).mdb"
    tavoline-store import BDD-ancienne.mdb BDD.mdb
    tavoline-store restore sauvegardes/2026-11-22.mdb BDD.mdb
)";

// What the administrator does next, where a store was made on a server.
void tellServer(const std::string& word, std::ostream& out) {
  if (const auto address = serverAddress(word))
    out << "Ligne à mettre dans le fichier BDD.mdb de chaque poste :\n  " << workstationLine(*address)
        << "\nMot de passe des postes : « \\password " << workstationRole(*address)
        << " » dans psql, puis le fichier « .pgpass » de chaque poste.\n";
}

Access accessOf(const Arguments& arguments) {
  return arguments.has("--group") ? Access::ofGroup(arguments.text("--group", "")) : Access();
}

int create(const std::vector<std::string>& words, std::ostream& out, const AskSecret& ask) {
  const Arguments arguments(
      words, 1, {"--login", "--password", "--password-file", "--nom", "--prenom", "--role", "--group"}, {});
  const std::string login = arguments.text("--login", "10");
  const std::string surname = arguments.text("--nom", "Administrateur");
  const std::string firstName = arguments.text("--prenom", "Principal"),
                    role = arguments.text("--role", "Admin");
  if (login.empty() || characterCount(login) > kLoginWidth)
    throw UsageError("le code du compte doit avoir de un à quatre caractères");
  constexpr std::array<std::string_view, 3> kRoles = {"Admin", "KeyUser", "User"};
  if (std::find(kRoles.begin(), kRoles.end(), role) == kRoles.end())
    throw UsageError("le rôle est Admin, KeyUser ou User");
  const Access access = accessOf(arguments);
  if (!serverAddress(arguments.file(0))) requireFree(arguments.file(0));  // before anybody is asked
  const FirstPassword password = firstPassword(arguments, ask);

  const auto fill = [&](Filler& filler) {
    filler.inserter("TVA", {"tva", "utilisation"}).run(kVatRate, "OUI");
    filler.inserter("utilisateur", {"login", "mot_pase", "nom", "prenom", "role"})
        .run(login, password.text, surname, firstName, role);
  };
  createStore(arguments.file(0), schema::kStorePassword, fill, access);
  out << "« " << arguments.file(0) << " » est créée. Premier compte : login " << login << " (" << role
      << ").\n";
  if (password.made)
    out << "Son mot de passe, tiré au hasard et dit cette seule fois : " << password.text << '\n';
  tellServer(arguments.file(0), out);
  return kDone;
}

void tellPictures(const DemoReport& report, std::ostream& out) {
  if (!report.withoutPictures.empty())
    out << "Les articles n'ont pas d'image : " << report.withoutPictures << ".\n";
}

int demo(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 1, {}, {});
  const DemoReport report = createDemo(arguments.file(0));
  out << "« " << arguments.file(0) << " » est créée : " << demoArticles().size() << " articles, "
      << demoTables().size() << " tables, " << report.orders << " commandes terminées.\n";
  for (const DemoUser& user : demoUsers())
    out << "  " << user.firstName << ' ' << user.surname << " (" << user.role << ") : login " << user.login
        << ", mot de passe " << user.password << '\n';
  tellPictures(report, out);
  tellServer(arguments.file(0), out);
  return kDone;
}

int generate(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 1, {"--orders", "--invoices", "--suppliers", "--seed"}, {"--pictures"});
  if (!arguments.has("--orders")) throw UsageError("il manque --orders N, le nombre de commandes");
  Generation generation;
  generation.orders = arguments.number("--orders", 0, kMostOrders);
  generation.invoices = arguments.number("--invoices", kUsualInvoices, kMostOrders);
  generation.suppliers = arguments.number("--suppliers", 0, kMostOrders);
  generation.seed = static_cast<std::uint64_t>(arguments.number("--seed", 1, INT64_MAX));
  generation.pictures = arguments.has("--pictures");
  const DemoReport report = createGenerated(arguments.file(0), generation);
  out << "« " << arguments.file(0) << " » est créée : " << report.orders << " commandes, " << report.lines
      << " lignes.\n";
  tellPictures(report, out);
  return kDone;
}

int tellCheck(const std::string& path, std::ostream& out) {
  const Findings findings = checkStore(path);
  out << "« " << path << (findings.empty() ? " » est saine.\n" : " » n'est pas saine :\n");
  for (const std::string& finding : findings) out << "  - " << finding << '\n';
  return findings.empty() ? kDone : kFailed;
}

int check(const std::vector<std::string>& words, std::ostream& out) {
  return tellCheck(Arguments(words, 1, {}, {}).file(0), out);
}

int upgrade(const std::vector<std::string>& words, std::ostream& out) {
  const std::string path = Arguments(words, 1, {}, {}).file(0);
  const Upgrade done = upgradeStore(path);
  if (done.added.empty()) {
    out << "« " << path << " » a déjà la forme d'aujourd'hui : rien n'a été changé.\n";
  } else {
    out << "Copie de la base telle qu'elle était : « " << done.backup << " ».\n« " << path
        << " » est mise à jour. Ajouté ou refait :\n";
    for (const std::string& name : done.added) out << "  + " << name << '\n';
  }
  return tellCheck(path, out);
}

int versions(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 1, {}, {});
  for (const std::string& line : versionsOf(arguments.file(0))) out << line << '\n';
  return kDone;
}

int backup(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 2, {}, {});
  backupStore(arguments.file(0), arguments.file(1));
  out << "« " << arguments.file(0) << " » est copiée dans « " << arguments.file(1) << " ».\n";
  return kDone;
}

int restore(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 2, {}, {});
  const std::string aside = restoreStore(arguments.file(0), arguments.file(1));
  if (!aside.empty()) out << "La base d'avant est mise de côté, avec son journal : « " << aside << " ».\n";
  out << "« " << arguments.file(0) << " » est remise en service sous « " << arguments.file(1) << " ».\n";
  tellServer(arguments.file(1), out);
  return tellCheck(arguments.file(1), out);
}

int import(const std::vector<std::string>& words, std::ostream& out) {
  constexpr std::size_t kShown = 10;
  const Arguments arguments(words, 2, {"--group"}, {"--strict", "--dry-run"});
  const ImportReport report =
      importStore(arguments.file(0), arguments.file(1),
                  {arguments.has("--strict"), arguments.has("--dry-run"), accessOf(arguments)});
  out << told(report, kShown);
  if (!report.file.empty()) out << "Rapport complet : « " << report.file << " ».\n";
  if (!report.trial) tellServer(report.target, out);
  return report.withoutRemarks() ? kDone : kWithRemarks;
}

int exportTables(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 2, {}, {});
  const Description written = exportStore(arguments.file(0), arguments.file(1));
  std::int64_t rows = 0;
  for (const Description::Table& table : written.tables) rows += table.rows;
  out << "« " << arguments.file(0) << " » est exportée dans le dossier « " << arguments.file(1)
      << " » : " << written.tables.size() << " tables, " << rows << " lignes ; images : " << written.pictures
      << ".\n";
  return kDone;
}

int copy(const std::vector<std::string>& words, std::ostream& out) {
  const Arguments arguments(words, 2, {}, {});
  const CopyReport report = copyAcross(arguments.file(0), arguments.file(1));
  out << "« " << arguments.file(0) << " » est copiée dans « " << arguments.file(1) << " » : " << report.tables
      << " tables, " << report.rows << " lignes, relues et comparées.\n";
  tellServer(arguments.file(1), out);
  return kDone;
}

int run(const std::vector<std::string>& words, std::ostream& out, const AskSecret& ask) {
  using Command = int (*)(const std::vector<std::string>&, std::ostream&);
  constexpr std::pair<std::string_view, Command> kCommands[] = {
      {"demo", demo},           {"generate", generate}, {"check", check},     {"versions", versions},
      {"backup", backup},       {"restore", restore},   {"upgrade", upgrade}, {"import", import},
      {"export", exportTables}, {"copy", copy}};

  if (words.empty()) throw UsageError("il manque la commande");
  if (std::find(words.begin(), words.end(), "--help") != words.end()) {
    out << kHelp;
    return kDone;
  }
  if (words.front() == "--version") {
    out << "tavoline-store " TAVOLINE_VERSION "\n";
    return kDone;
  }
  if (words.front() == "create") return create({words.begin() + 1, words.end()}, out, ask);
  for (const auto& [name, command] : kCommands)
    if (words.front() == name) return command({words.begin() + 1, words.end()}, out);
  throw UsageError("commande inconnue « " + words.front() + " »");
}

}  // namespace

int runTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
            const AskSecret& ask) {
  try {
    const int status = run(arguments, out, ask);
    return out.flush() ? status : kFailed;
  } catch (const UsageError& error) {
    err << "tavoline-store : " << error.what() << ".\nVoyez « tavoline-store --help ».\n";
    return kWronglyCalled;
  } catch (const std::exception& error) {
    err << "tavoline-store : " << error.what() << '\n';
    return kFailed;
  }
}

}  // namespace tavoline::tool
