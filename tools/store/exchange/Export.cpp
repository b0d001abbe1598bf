#include "tools/store/exchange/Export.h"

#include <filesystem>
#include <fstream>

#include "data/schema/Schema.h"
#include "data/sql/Parser.h"
#include "data/sql/Resolver.h"
#include "data/value/Clock.h"
#include "data/value/Errors.h"
#include "tools/store/Creation.h"
#include "tools/store/exchange/Cells.h"
#include "tools/store/exchange/Csv.h"
#include "tools/store/exchange/Fitting.h"
#include "tools/store/exchange/Origin.h"
#include "tools/store/exchange/Pictures.h"
#include "tools/store/exchange/Progress.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

std::string typeName(FieldType type) {
  switch (type) {
    case FieldType::Text:
      return "text";
    case FieldType::Integer:
      return "integer";
    case FieldType::Float:
      return "float";
    case FieldType::DateTime:
      return "datetime";
    case FieldType::Blob:
      return "blob";
  }
  return {};
}

sql::Select rowsOf(const schema::Table& table, const Catalog& catalog) {
  std::string names;
  for (const schema::Column& column : table.columns)
    names += (names.empty() ? "[" : ", [") + std::string(column.name) + ']';
  return sql::resolve(std::get<sql::Select>(
                          sql::parseStatement("select " + names + " from [" + std::string(table.name) + ']')),
                      catalog);
}

/// A file of the folder, on the disk when it is closed.
class File {
 public:
  explicit File(fs::path path) : path_(std::move(path)), stream_(path_, std::ios::binary) {}

  void write(std::string_view text) { stream_.write(text.data(), static_cast<std::streamsize>(text.size())); }
  void close() {
    stream_.close();
    if (!stream_)
      throw StoreError("« " + path_.filename().string() +
                       " » n'a pas pu être écrit : le disque est plein ou protégé. Libérez de la place, puis "
                       "recommencez.");
    forceToDisk(path_);
  }

 private:
  fs::path path_;
  std::ofstream stream_;
};

class Folder {
 public:
  explicit Folder(fs::path path) : path_(std::move(path)) {
    std::error_code error;
    fs::create_directories(path_ / kPictureFolder, error);
    if (error)
      throw StoreError(
          "Le dossier de l'export ne peut pas être créé. Vérifiez que vous avez le droit d'y écrire, et "
          "qu'il reste de la place.",
          error.message());
  }

  Description write(const Snapshot& moment, const Catalog& catalog) {
    described_.written = Clock::now();
    for (const schema::Table& table : schema::tables()) {
      progress_.at(std::string(table.name));
      writeTable(table, *moment.query(rowsOf(table, catalog)));
    }
    File description(path_ / kDescriptionFile);
    description.write(described_.json());
    description.close();
    forceToDisk(path_ / kPictureFolder);
    return described_;
  }

 private:
  void writeTable(const schema::Table& table, Rows& rows) {
    Description::Table& described = described_.tables.emplace_back();
    described.name = table.name;
    described.file = std::string(table.name) + ".csv";
    std::string line;
    for (const schema::Column& column : table.columns) {
      described.columns.push_back({std::string(column.name), typeName(column.type)});
      line += (line.empty() ? "" : ",") + std::string(column.name);
    }
    File file(path_ / described.file);
    file.write(line + "\r\n");
    RowDigest digest;
    std::vector<Value> row(table.columns.size());
    for (; rows.next(); ++described.rows) {
      progress_.step();
      line.clear();
      for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = rows.value(i);
        line += (i ? "," : "") + cell(row[i]);
      }
      digest.add(row);
      file.write(line += "\r\n");
    }
    file.close();
    described.digest = digest.text();
  }

  std::string cell(const Value& value) {
    if (value.isNull()) return {};
    if (value.isInteger()) return std::to_string(value.toInteger());
    if (value.isFloat()) return exactText(value.toFloat());
    if (value.isBytes()) return picture(*value.toBytes());
    if (!value.isDateTime()) return csvField({guarded(value.text()), true});
    std::string moment = value.toDateTime().stored();
    moment[moment.find(' ')] = 'T';
    return moment;
  }

  std::string picture(const Bytes& bytes) {
    const std::string_view view(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::string_view ending = pictureEnding(view);
    std::string name = std::string(kPictureFolder) + '/' + sha256(bytes) + '.' +
                       (ending.empty() ? "bin" : std::string(ending));
    if (fs::exists(path_ / name)) return name;
    File file(path_ / name);
    file.write(view);
    file.close();
    ++described_.pictures;
    return name;
  }

  fs::path path_;
  Description described_;
  Progress progress_;
};

}  // namespace

Description exportStore(const std::string& path, const std::string& folder) {
  Description written;
  requireFree(folder);
  const Origin origin = openOrigin(path);
  publishFolder(folder, [&](const std::string& passing) {
    written = Folder(passing).write(*origin.store->snapshot(), *origin.store->catalog());
  });
  return written;
}

}  // namespace tavoline::tool
