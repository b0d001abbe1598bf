#include "tools/store/Check.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "data/schema/Schema.h"
#include "data/value/Errors.h"
#include "data/value/Text.h"
#include "tools/store/Sqlite.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;
using schema::Column;
using schema::Table;

std::string sqlName(std::string_view name) {
  return schema::sqliteEngine().quoted(name);
}

/// A row rule: a statement that finds the rows that break it, each as one text, and the sentence about them.
struct Rule {
  std::string_view sentence;
  std::string_view sql;
};

constexpr Rule kRules[] = {
    {"Lignes de commande sans commande, n° : ",
     "SELECT DISTINCT n_commande FROM relation_commande WHERE n_commande IS NULL OR "
     "NOT EXISTS (SELECT 1 FROM commande WHERE commande.n_commande = relation_commande.n_commande)"},
    {"Lignes d'achat sans facture, n° : ",
     "SELECT DISTINCT n_facture FROM Achat WHERE n_facture IS NULL OR "
     "NOT EXISTS (SELECT 1 FROM facture_achat WHERE facture_achat.N_facture = Achat.n_facture)"},
    {"Tables occupées sans commande en cours : ",
     "SELECT \"table\" FROM Table_ WHERE etat = 'ON' AND NOT EXISTS (SELECT 1 FROM commande "
     "WHERE commande.n_commande = Table_.n_commande AND etat_commande = 'Encours')"},
    {"Commandes terminées dont le total n'est pas HT + TVA - remise, n° : ",
     "SELECT n_commande FROM commande WHERE etat_commande = 'Terminer' AND "
     "NOT ifnull(abs(tcc - (HT + TVA - remi)) < 0.005, 0)"},
    {"Commandes sans numéro, lignes : ", "SELECT rid FROM commande WHERE n_commande IS NULL"},
};

class Checkup {
 public:
  explicit Checkup(const Database& database) : database_(database) {}

  std::vector<std::string> run() {
    checkPages();
    if (!findings_.empty()) return findings_;  // Nothing that such a file says can be relied on.
    checkRecord();
    checkTables();
    if (!complete_) return findings_;  // The rules about rows name these tables and columns.
    for (const Table& table : schema::tables()) checkValues(table);
    for (const Rule& rule : kRules) report(std::string(rule.sentence), rule.sql);
    checkFirstRows();
    return findings_;
  }

 private:
  void add(std::string finding) { findings_.push_back(std::move(finding)); }

  /// Adds `sentence` with the first texts that `sql` finds, if it finds any.
  void report(const std::string& sentence, std::string_view sql) {
    constexpr int kShown = 5;
    Statement rows = database_.prepare(sql);
    std::string shown;
    int found = 0;
    for (; rows.step(); ++found)
      if (found < kShown) shown += (found ? ", " : "") + (rows.isNull(0) ? "(vide)" : rows.text(0));
    if (found == 0) return;
    if (found > kShown) shown += " et " + std::to_string(found - kShown) + " autres";
    add(sentence + shown + '.');
  }

  void checkPages() {
    database_.execute(
        "PRAGMA ignore_check_constraints = ON");  // Broken widths are told later, with their place.
    report("Fichier abîmé : ", "SELECT * FROM pragma_integrity_check WHERE integrity_check <> 'ok'");
  }

  void checkRecord() {
    if (database_.integer("PRAGMA application_id") != schema::kApplicationId)
      add("L'en-tête ne dit pas que c'est une base Tavoline.");
    if (database_.text("PRAGMA journal_mode") != "wal") add("Le journal partagé (WAL) n'est pas en place.");
    if (!has("tavoline_store")) return add("La fiche de la base (tavoline_store) manque.");
    const std::string version = database_.text("SELECT valeur FROM tavoline_store WHERE cle = 'version'");
    if (version != schema::kVersion)
      add("La version de la base est « " + version + " » au lieu de « " + std::string(schema::kVersion) +
          " ».");
    if (database_.integer(
            "SELECT count(*) FROM tavoline_store WHERE cle = 'mot_de_passe' AND valeur <> ''") == 0)
      add("La fiche de la base ne porte pas de mot de passe.");
  }

  template <typename... Texts>
  bool exists(std::string_view sql, const Texts&... texts) {
    Statement statement = database_.prepare(sql);
    int place = 0;
    (statement.bind(++place, texts), ...);
    return statement.step();
  }

  bool has(std::string_view table) {
    return exists("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE", table);
  }

  void checkTables() {
    for (const Table& table : schema::tables()) {
      if (!has(table.name)) {
        complete_ = false;
        add("La table " + std::string(table.name) + " manque.");
        continue;
      }
      checkColumns(table);
      checkDefinition(table);
      checkIndexes(table);
      checkKey(table);
    }
  }

  void checkColumns(const Table& table) {
    struct Found {
      int place;
      std::string defaultValue;
    };
    std::map<std::string, Found> found;  // By folded name; the hidden rid stands at place 0.
    Statement columns = database_.prepare("SELECT name, cid, dflt_value FROM pragma_table_info(?1)");
    columns.bind(1, table.name);
    while (columns.step())
      found[foldName(columns.text(0))] = {static_cast<int>(columns.integer(1)), columns.text(2)};

    if (!found.contains("rid")) missing(table, "rid");
    int place = 0;
    for (const Column& column : table.columns) {
      ++place;
      const auto entry = found.find(foldName(column.name));
      if (entry == found.end()) {
        missing(table, column.name);
        continue;
      }
      if (entry->second.place != place) add(of(table, column) + " n'est pas à sa place.");
      if (entry->second.defaultValue != column.defaultValue)
        add(of(table, column) + " n'a pas sa valeur par défaut (" + std::string(column.defaultValue) + ").");
    }
  }

  static std::string of(const Table& table, const Column& column) {
    return "La colonne " + std::string(column.name) + " de " + std::string(table.name);
  }

  /// The constraints of widths, and the row numbers that are never given twice.
  void checkDefinition(const Table& table) {
    Statement row =
        database_.prepare("SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE");
    row.bind(1, table.name);
    if (!row.step()) return;
    const std::string definition = row.text(0);
    if (definition.find("AUTOINCREMENT") == std::string::npos)
      add("Les numéros de ligne de " + std::string(table.name) + " peuvent être redonnés.");
    for (const Column& column : table.columns)
      if (column.width && definition.find(schema::widthConstraint(table, column)) == std::string::npos)
        add(of(table, column) + " n'a pas de largeur.");
  }

  void checkIndexes(const Table& table) {
    for (const schema::Index& index : table.indexes)
      if (!exists("SELECT 1 FROM sqlite_schema WHERE type = 'index' AND name = ?1 AND tbl_name = ?2",
                  index.name, table.name))
        add("L'index " + std::string(index.name) + " manque : la base sera lente.");
  }

  void missing(const Table& table, std::string_view column) {
    complete_ = false;
    add("La colonne " + std::string(column) + " de " + std::string(table.name) + " manque.");
  }

  void checkKey(const Table& table) {
    if (table.key.empty() || !complete_) return;
    const std::string key = sqlName(table.key), name(table.name);
    report("Clés en double dans " + name + " : ", "SELECT " + key + " FROM " + sqlName(name) + " WHERE " +
                                                      key + " IS NOT NULL GROUP BY " + key +
                                                      " HAVING count(*) > 1");
    if (!exists("SELECT 1 FROM pragma_index_list(?1) list WHERE \"unique\" AND partial = 0 AND "
                "(SELECT count(*) FROM pragma_index_info(list.name)) = 1 AND "
                "(SELECT name FROM pragma_index_info(list.name)) = ?2 COLLATE NOCASE",
                table.name, table.key))
      add("Rien ne garde la clé " + std::string(table.key) + " de " + name + " des doubles.");
  }

  /// Everything is stored as its type says, and no text is wider than its column.
  void checkValues(const Table& table) {
    std::string all;
    for (const Column& column : table.columns) all += (all.empty() ? "" : " AND ") + rightValue(column);
    const std::string from = " FROM " + sqlName(table.name) + " WHERE NOT ";
    // One pass for a sound table; only a table with a wrong value is read again, for the place.
    if (database_.integer("SELECT EXISTS (SELECT 1" + from + '(' + all + "))") == 0) return;
    for (const Column& column : table.columns)
      report("Valeurs d'un autre genre ou trop longues dans " + std::string(table.name) + '.' +
                 std::string(column.name) + ", lignes : ",
             "SELECT rid" + from + rightValue(column));
  }

  static std::string rightValue(const Column& column) {
    const std::string name = sqlName(column.name), either = '(' + name + " IS NULL OR typeof(" + name + ") ";
    switch (column.type) {
      case FieldType::Text:
        return either + "= 'text' AND length(" + name + ") <= " + std::to_string(column.width) + ')';
      case FieldType::Integer:
        return either + "= 'integer')";
      case FieldType::Float:
        return either + "IN ('real', 'integer'))";
      case FieldType::Blob:
        return either + "= 'blob')";
      case FieldType::DateTime:
        return either + "= 'text' AND " + name + " LIKE '____-__-__%' AND julianday(" + name +
               ") IS NOT NULL)";
    }
    return {};
  }

  void checkFirstRows() {
    if (database_.integer("SELECT count(*) FROM TVA") != 1)
      add("La table TVA doit avoir une ligne, et une seule.");
    if (database_.integer("SELECT count(*) FROM utilisateur") == 0)
      add("Il n'y a aucun compte : personne ne peut ouvrir de session.");
  }

  const Database& database_;
  std::vector<std::string> findings_;
  bool complete_ = true;
};

std::string firstBytes(const std::string& path) {
  std::string bytes(32, '\0');
  std::ifstream file(path, std::ios::binary);
  if (!fs::is_regular_file(path) || !file)
    throw StoreError("« " + path +
                     " » n'existe pas ou ne peut pas être lu. Vérifiez le chemin et les droits.");
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

/// Why the file is no SQLite file; empty if it is one.
std::string foreignKind(std::string_view bytes) {
  if (bytes.empty()) return "Le fichier est vide.";
  if (bytes.starts_with("postgresql://"))
    return "Ce fichier renvoie à un serveur : contrôlez la base là où elle est.";
  if (bytes.size() > 19 && bytes.substr(4, 12) == "Standard Jet")
    return "C'est une base Jet, d'une autre époque.";
  if (!bytes.starts_with("SQLite format 3")) return "Ce n'est pas une base SQLite.";
  return {};
}

}  // namespace

std::vector<std::string> checkStore(const std::string& path) {
  const std::string foreign = foreignKind(firstBytes(path));
  if (!foreign.empty()) return {foreign};
  const Database database(path, Database::Mode::Observe);
  database.execute("BEGIN");  // All that is read is of one moment.
  return Checkup(database).run();
}

}  // namespace tavoline::tool
