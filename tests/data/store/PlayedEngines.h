#pragma once

#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include "data/schema/Schema.h"
#include "data/store/postgres/Connection.h"
#include "data/store/postgres/Engine.h"
#include "data/store/sqlite/Connection.h"
#include "support/Cluster.h"
#include "support/Relay.h"
#include "support/StoreFile.h"

namespace tavoline::test {

extern long diskKind;  ///< What every disk says of its kind; 0: what it is.

/// One store of an engine; every engine plays contract.txt.
struct PlayedEngine {
  virtual ~PlayedEngine() = default;
  virtual void hold() = 0;
  virtual void release() = 0;
  /// A statement on the side, in the engine's own words; the first column of its rows.
  virtual std::string run(const std::string& sql) = 0;

  /// Puts a network before the server, with options for its address; later its cable is out, or in.
  void lay(const std::string& step) {
    if (network) return network->cableOut(step == "out");
    network.emplace(cluster->socket());
    std::ofstream(file->path()) << "postgresql://cafe_poste@127.0.0.1:" << network->port() << "/cafe?" << step
                                << '\n';
  }
  /// A sentence without what passes.
  std::string unnamed(std::string said) const {
    const auto unname = [&](const std::string& passing, const std::string& name) {
      for (auto at = said.find(passing); at != said.npos; at = said.find(passing))
        said.replace(at, passing.size(), name);
    };
    unname(file->folder().path(), "DOSSIER");
    if (network) unname(':' + std::to_string(network->port()), ":N");
    return said;
  }

  std::optional<Cluster> cluster;
  std::optional<Relay> network;
  std::optional<StoreFile> file;
};

struct PlayedSqlite : PlayedEngine {
  PlayedSqlite() { file.emplace(); }
  void hold() override {
    holder.emplace(file->path(), "BDD.mdb", sqlite::Connection::Role::Writer);
    holder->execute("BEGIN IMMEDIATE");
  }
  void release() override { holder.reset(); }
  std::string run(const std::string& sql) override { return file->run(sql); }

  std::optional<sqlite::Connection> holder;
};

struct PlayedPostgres : PlayedEngine {
  PlayedPostgres() {
    cluster.emplace();
    file.emplace(cluster->address("cafe"));
  }
  void hold() override {
    holder = session();
    std::string tables;
    for (const schema::Table& table : schema::tables())
      tables += (tables.empty() ? "" : ", ") + postgres::engine().quotedName(table.name);
    holder->execute("BEGIN; LOCK TABLE " + tables + " IN EXCLUSIVE MODE");
  }
  void release() override { holder.reset(); }
  std::string run(const std::string& sql) override {
    if (!side || !side->alive()) side = session();
    const postgres::Answer rows = side->ask(postgres::Question{sql});
    return rows.rows() ? rows.value(0, 0, FieldType::Text).text() : "";
  }
  std::unique_ptr<postgres::Connection> session() const {
    auto server = std::make_shared<postgres::Server>();
    server->address = postgres::parseAddress("BDD.mdb", cluster->address("cafe"));
    return std::make_unique<postgres::Connection>(server);
  }

  std::unique_ptr<postgres::Connection> holder, side;
};

}  // namespace tavoline::test
