#include "bench/Scene.h"

#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "bench/Raw.h"

namespace tavoline::bench {
namespace fs = std::filesystem;
namespace {

std::vector<std::string> column(sqlite3* database, const std::string& sql) {
  std::vector<std::string> values;
  const Statement statement = prepare(database, sql);
  while (sqlite3_step(statement.get()) == SQLITE_ROW)
    values.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
  if (values.empty()) throw std::runtime_error("the store has nothing for: " + sql);
  return values;
}

}  // namespace

Scene::Scene(const std::string& data, int orders)
    : folder_(
          fs::absolute(fs::path(data) / (std::to_string(orders) + "-in-use-" + std::to_string(getpid())))),
      orders_(orders) {
  fs::create_directories(folder_);
  fs::copy_file(fs::path(data) / std::to_string(orders) / "BDD.mdb", fs::path(folder_) / "BDD.mdb",
                fs::copy_options::overwrite_existing);
}

Scene::~Scene() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void Scene::enter() const {
  fs::current_path(folder_);
  const Database database = openRaw();
  execute(database.get(), "update Table_ set etat = 'OFF', control = 'open', n_commande = 0");
  execute(database.get(), "update article set qte_stock = 1000000");
}

Menu Menu::read() {
  const Database database = openRaw();
  Menu menu;
  menu.tables = column(database.get(), "select \"table\" from Table_ order by rid");
  menu.articles = column(database.get(),
                         "select designation_article from article where desto = 'OUI' "
                         "and instr(designation_article, '''') = 0 order by code_barre");
  menu.desk =
      column(database.get(), "select ID_caise from caisse where general = 'NON' order by rid").front();
  menu.login = column(database.get(), "select login from utilisateur order by rid").front();
  return menu;
}

}  // namespace tavoline::bench
