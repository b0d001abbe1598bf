#include "support/StoreFile.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "tools/store/Creation.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::test {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

sqlite::Connection sideDoor(const std::string& path) {
  return {path, path, sqlite::Connection::Role::Maker};
}

TemporaryFolder::TemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "tavoline-XXXXXX").string();
  if (!::mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::map<std::string, std::string> TemporaryFolder::contents() const {
  std::map<std::string, std::string> found;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_))
    found[fs::relative(entry.path(), path_)] = entry.is_regular_file() ? bytesOf(entry.path()) : "";
  return found;
}

StoreFile::StoreFile() {
  tool::createStore(path().string());
}

StoreFile::StoreFile(const std::string& address) {
  tool::createStore(address);
  std::ofstream(path()) << tool::workstationLine(postgres::parseAddress(address, address)) << '\n';
}

std::string StoreFile::connectionString() const {
  return "Data Source=" + path().string() +
         ";Jet OLEDB:Database Password=" + std::string(schema::kStorePassword);
}

std::shared_ptr<Store> StoreFile::open() const {
  return Store::open(connectionString());
}

std::string StoreFile::run(const std::string& sql) const {
  return sideDoor(path()).text(sql);
}

std::unique_ptr<Rows> stream(const Store& store, const Snapshot& snapshot, std::string_view statement,
                             const sql::Parameters& parameters) {
  const auto select = std::get<sql::Select>(sql::parseStatement(statement));
  return snapshot.query(sql::resolve(select, *store.catalog()), parameters);
}

Table read(const Store& store, const Snapshot& snapshot, std::string_view statement,
           const sql::Parameters& parameters) {
  const auto select = std::get<sql::Select>(sql::parseStatement(statement));
  const sql::Select resolved = sql::resolve(select, *store.catalog());
  const auto rows = snapshot.query(resolved, parameters);
  Table table;
  while (rows->next()) {
    auto& row = table.emplace_back();
    for (std::size_t i = 0; i < resolved.items.size(); ++i) row.push_back(rows->value(i));
  }
  return table;
}

Table read(Store& store, std::string_view statement) {
  return read(store, *store.snapshot(), statement);
}

void execute(Store& store, std::string_view statement, const sql::Parameters& parameters) {
  const auto update = std::get<sql::Update>(sql::parseStatement(statement));
  store.execute(sql::resolve(update, *store.catalog()), parameters);
}

}  // namespace tavoline::test
