#pragma once

#include <memory>
#include <string>

#include "data/store/Location.h"
#include "data/store/Record.h"
#include "data/store/Store.h"
#include "data/store/sqlite/Connection.h"

namespace tavoline::sqlite {

/// Throws StoreError if an SQLite file is of another program.
void requireOwn(const Location& file);

/// Throws StoreError unless this user may write the file and its folder, where the log stands.
void requireWritable(const Location& file);
/// The store's record of itself. Must not outlive the connection.
StoreRecord recordOf(Connection& connection);

/// Opens an SQLite file. Throws StoreError for a file of another program, a newer version, another password,
/// no right to write.
std::shared_ptr<Store> openFile(const Location& file, const std::string& password);

}  // namespace tavoline::sqlite
