#include "bench/Scene.h"

#include <unistd.h>

#include <filesystem>

#include "bench/Raw.h"

namespace tavoline::bench {
namespace fs = std::filesystem;
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
  executeHere("update \"Table_\" set etat = 'OFF', control = 'open', n_commande = 0");
  executeHere("update article set qte_stock = 1000000");
  const std::string day = std::to_string(kBusyDay.day), month = std::to_string(kBusyDay.month),
                    year = std::to_string(kBusyDay.year);
  executeHere("update commande set \"J\" = " + day + ", \"M\" = " + month + ", \"A\" = " + year +
              " where rid > (select max(rid) from commande) - " + std::to_string(kBusyDay.orders) +
              " and not exists (select 1 from commande where \"A\" = " + year + ")");
}

}  // namespace tavoline::bench
