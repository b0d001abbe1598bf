#pragma once

#include <map>
#include <memory>
#include <string>

#include "data/store/postgres/Connection.h"
#include "tools/store/Filler.h"

namespace tavoline::tool {

/// Fills tables of a server in large pieces, in the order in which the rows of each come.
class ServerFiller : public Filler {
 public:
  explicit ServerFiller(postgres::Connection& connection) : connection_(connection) {}

  Inserter inserter(std::string_view table, const std::vector<std::string_view>& columns) override;
  void numberBehind(std::string_view table, std::int64_t last) override;
  void readBack(std::string_view table, const std::vector<std::string_view>& columns,
                const Reading& read) override;
  /// Sends what is still here, and lets the numbers of the rows go on behind those that were given. Throws
  /// StoreError.
  void finish();

 private:
  struct Piece {
    std::string into;  ///< The table with its columns.
    std::string rows;
  };
  void sendAll();
  void add(Piece& piece, std::span<const Value> row);
  void send(Piece& piece);

  postgres::Connection& connection_;
  std::map<std::string, Piece, std::less<>> pieces_;  // by table
  std::map<std::string, std::int64_t, std::less<>> behind_;
};

}  // namespace tavoline::tool
