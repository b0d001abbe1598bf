#include "tools/store/jet/JetSource.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <optional>

#include "data/value/Errors.h"
#include "tools/store/exchange/Cells.h"
#include "tools/store/jet/ReadingProcess.h"
#include "tools/store/jet/TableRows.h"

namespace tavoline::tool::jet {
namespace {

// What a message is, its first letter.
constexpr char kExpect = 'x', kTable = 't', kRow = 'r', kRemark = 'm', kFailure = 'f', kEnd = 'e';

/// What shows that somebody wrote to a file.
struct Trace {
  dev_t device;
  ino_t number;
  off_t size;
  timespec written;

  static std::optional<Trace> of(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return Trace{status.st_dev, status.st_ino, status.st_size, status.st_mtim};
  }
  bool operator==(const Trace& other) const {
    return device == other.device && number == other.number && size == other.size &&
           written.tv_sec == other.written.tv_sec && written.tv_nsec == other.written.tv_nsec;
  }
};

ReadingProcess::Limits limitsFor(const std::string& path) {
  constexpr std::uint64_t kMegabyte = 1 << 20, kSecondEach = 2 * kMegabyte;
  constexpr std::uint64_t kLargestPicture = 1024 * kMegabyte;
  const std::uint64_t size = std::filesystem::file_size(path);
  return {64 * kMegabyte + 3 * std::min(size, kLargestPicture), 1 + size / kSecondEach};
}

// The reader's side.

std::string missingColumn(const schema::Table& table, const schema::Column& column) {
  return "La colonne « " + std::string(column.name) + " » manque dans la table « " + std::string(table.name) +
         " » de l'ancienne base : elle reste vide.";
}

void tellColumns(const schema::Table& table, const TableRows& rows, const ReadingProcess::Sending& send) {
  const auto remark = [&](const std::string& sentence) { send(kRemark + sentence); };
  for (const schema::Column& column : table.columns)
    if (std::find(rows.columns().begin(), rows.columns().end(), &column) == rows.columns().end())
      remark(missingColumn(table, column));
  for (const std::string& name : rows.unknown())
    remark("La colonne « " + name + " » de la table « " + std::string(table.name) +
           " » n'a pas de place dans la base : elle est laissée de côté.");
}

std::vector<TableRows> tablesOf(JetFile& file, const std::string& path) {
  std::vector<TableRows> all;
  std::string missing;
  for (const schema::Table& table : schema::tables()) {
    if (S_MdbTableDef* const found = file.table(table.name))
      all.emplace_back(file, table, found);
    else
      missing += (missing.empty() ? "" : ", ") + std::string(table.name);
  }
  if (all.empty())
    throw StoreError("« " + path +
                     " » n'a aucune des tables attendues : c'est la base d'un autre programme, ou son "
                     "catalogue est abîmé. Rien n'a été importé.");
  if (!missing.empty())
    throw StoreError(
        "« " + path + " » n'est pas entière : il y manque " + missing +
        ". Rien n'a été importé. Vérifiez que c'est la bonne base, ou prenez une autre sauvegarde.");
  return all;
}

void requireKey(const schema::Table& table, const Columns& columns, const std::string& path) {
  if (!table.key.empty() && std::find(columns.begin(), columns.end(), table.find(table.key)) == columns.end())
    throw StoreError("« " + path + " » n'est pas entière : la clé « " + std::string(table.key) +
                     " » manque dans la table « " + std::string(table.name) + " ». Rien n'a été importé.");
}

void sendTable(const schema::Table& table, TableRows& rows, const ReadingProcess::Sending& send) {
  std::string head(1, kTable);
  head += static_cast<char>(&table - schema::tables().data());
  for (const schema::Column* column : rows.columns())
    head += static_cast<char>(column - table.columns.data());
  send(head);
  tellColumns(table, rows, send);
  std::int64_t count = 0;
  std::string message;
  rows.read([&](const std::vector<Value>& values) {
    message = kRow;
    for (const Value& value : values) putCell(message, value);
    send(message);
    ++count;
  });
  if (rows.declared() == 0 && count > 0)
    send(kRemark + std::string("La table « ") + std::string(table.name) +
         " » dit n'avoir aucune ligne et en a " + std::to_string(count) +
         " : l'ancien programme a été arrêté brutalement. Toutes ont été lues.");
  if (rows.mended() > 0)
    send(kRemark + std::string("Table « ") + std::string(table.name) +
         " » : textes dont un caractère n'est pas entier (« \xEF\xBF\xBD » en tient la place) : " +
         std::to_string(rows.mended()) + ".");
}

void sendAll(const std::string& path, const ReadingProcess::Sending& send) {
  try {
    JetFile file(path);
    std::vector<TableRows> tables = tablesOf(file, path);
    std::int64_t expected = 0;
    for (const TableRows& rows : tables) expected += rows.declared();
    send(kExpect + std::to_string(expected));
    for (std::size_t i = 0; i < tables.size(); ++i) {
      requireKey(schema::tables()[i], tables[i].columns(), path);
      sendTable(schema::tables()[i], tables[i], send);
    }
    send(std::string(1, kEnd));
  } catch (const StoreError& error) {
    send(kFailure + std::string(error.what()));
  } catch (const std::exception&) {
    send(std::string(1, kFailure));  // out of its memory, most likely
  }
}

// The side of the store.

class Delivery {
 public:
  Delivery(RowReceiver& receiver, const std::string& path) : receiver_(receiver), path_(path) {}

  /// False at the end.
  bool take(std::string_view message) {
    const std::string_view rest = message.substr(1);
    switch (message.front()) {
      case kExpect:
        receiver_.expect(std::stoll(std::string(rest)));
        break;
      case kTable:
        beginTable(rest);
        break;
      case kRow:
        row(rest);
        break;
      case kRemark:
        receiver_.remark(std::string(rest));
        break;
      case kEnd:
        return false;
      default:
        if (!rest.empty()) throw StoreError(std::string(rest));
        refuseDamaged(path_, "sa lecture demande plus de mémoire qu'elle ne peut en valoir");
    }
    return true;
  }

 private:
  void beginTable(std::string_view numbers) {
    const schema::Table& table = schema::tables().at(static_cast<unsigned char>(numbers.front()));
    Columns columns;
    for (const char number : numbers.substr(1))
      columns.push_back(&table.columns.at(static_cast<unsigned char>(number)));
    values_.resize(columns.size());
    receiver_.table(table, columns);
  }
  void row(std::string_view cells) {
    for (Value& value : values_) value = takeCell(cells);
    receiver_.row(values_);
  }

  RowReceiver& receiver_;
  const std::string& path_;
  std::vector<Value> values_;
};

}  // namespace

JetSource::JetSource(std::string path) : path_(std::move(path)) {
  requireJet4(path_);
}

void JetSource::read(RowReceiver& receiver) {
  const std::filesystem::path lock = std::filesystem::path(path_).replace_extension(".ldb");
  if (std::filesystem::exists(lock))
    receiver.remark(
        "« " + lock.string() +
        " » est là : l'ancien programme est peut-être encore ouvert sur un poste. Ce qu'il n'a pas encore "
        "écrit manque alors.");
  const auto before = Trace::of(path_);
  ReadingProcess process([&](const ReadingProcess::Sending& send) { sendAll(path_, send); },
                         limitsFor(path_));
  Delivery delivery(receiver, path_);
  std::string_view message;
  bool more = true;
  while (more && process.next(message)) more = delivery.take(message);
  if (more) refuseDamaged(path_, "sa lecture s'est arrêtée au milieu");
  if (!before || Trace::of(path_) != before)
    throw StoreError(
        "« " + path_ +
        " » a changé pendant sa lecture : rien n'a été importé. Fermez l'ancien programme sur tous les "
        "postes, puis recommencez.");
}

}  // namespace tavoline::tool::jet
