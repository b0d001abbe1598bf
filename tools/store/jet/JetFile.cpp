#include "tools/store/jet/JetFile.h"

// First, for itself: the next header takes it in as C, which its newer versions are not.
#include <glib.h>

#include <mdbtools.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <unordered_set>

#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline::tool::jet {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;

constexpr std::uint8_t kDataPage = 1;
constexpr std::size_t kOwner = 4, kRowCount = 12, kRowStarts = 14;  // on a data page
constexpr std::uint16_t kDeleted = 0x8000, kPointer = 0x4000, kStart = 0x1FFF;
constexpr std::uint32_t kInline = 0x80000000, kOnePart = 0x40000000, kLength = 0x3FFFFFFF;
constexpr std::size_t kLongHead = 12, kNextPart = 4;
constexpr std::size_t kVersion = 0x14, kHead = 0x20;

[[noreturn]] void refuse(const std::string& path, const std::string& sentence) {
  throw StoreError("« " + path + " » " + sentence);
}

std::string firstBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(kHead, '\0');
  if (!file) refuse(path, "ne peut pas être lu. Vérifiez que cet utilisateur a le droit de le lire.");
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

void requireVersion4(const std::string& path, std::string_view head) {
  const char version = head.size() > kVersion ? head[kVersion] : '\0';
  const bool later = head.substr(4).starts_with("Standard ACE DB"sv) || version > 1;
  if (later)
    refuse(path,
           "est d'un format plus récent (.accdb, version 2007 ou suivante) que le Jet 4 que cet outil lit. "
           "Enregistrez-la au format 2002-2003 (.mdb) avec le programme qui l'a faite, puis recommencez.");
  if (version < 1)
    refuse(path,
           "est au format 97 (Jet 3), plus ancien que le Jet 4 que cet outil lit. Convertissez-la au format "
           "2002-2003 (.mdb) avec le programme qui l'a faite, puis recommencez.");
}

}  // namespace

std::uint16_t wordAt(Part bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
}

std::uint32_t longAt(Part bytes, std::size_t at) {
  return wordAt(bytes, at) | static_cast<std::uint32_t>(wordAt(bytes, at + 2)) << 16;
}

void refuseDamaged(const std::string& path, const std::string& place) {
  refuse(path,
         "est abîmée (" + place +
             ") : rien n'a été importé. Prenez une autre sauvegarde, ou faites-la d'abord réparer par le "
             "programme qui l'a faite.");
}

void requireJet4(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) refuse(path, "est introuvable. Vérifiez le chemin.");
  if (status.type() != fs::file_type::regular)
    refuse(path, "n'est pas un fichier ordinaire. Vérifiez le chemin.");
  const std::string head = firstBytes(path);
  if (head.empty()) refuse(path, "est vide : ce n'est pas une base d'une installation antérieure.");
  if (head.starts_with("SQLite format 3\0"sv))
    refuse(path, "n'est pas une base Jet, mais une base d'aujourd'hui : « tavoline-store backup » la copie.");
  const std::string_view name = std::string_view(head).substr(std::min<std::size_t>(4, head.size()));
  if (!name.starts_with("Standard Jet DB"sv) && !name.starts_with("Standard ACE DB"sv))
    refuse(path, "n'est pas une base Jet d'une installation antérieure. Vérifiez le chemin.");
  requireVersion4(path, head);
  const auto size = fs::file_size(path, error);
  constexpr std::size_t kFewestPages = 3;
  if (error || size % kPageSize != 0 || size < kFewestPages * kPageSize)
    refuseDamaged(path, "il lui manque une partie : " + std::to_string(size) +
                            " octets ne font pas un nombre entier de pages");
}

struct JetFile::Handle {
  MdbHandle* mdb = nullptr;
  std::vector<MdbTableDef*> tables;

  ~Handle() {
    for (MdbTableDef* table : tables) mdb_free_tabledef(table);
    if (mdb) mdb_close(mdb);
  }
};

JetFile::JetFile(const std::string& path) : path_(path), handle_(std::make_unique<Handle>()) {
  requireJet4(path);
  pages_ = static_cast<std::uint32_t>(fs::file_size(path) / kPageSize);
  for (const char* name : {"MDBICONV", "MDBPATH", "MDBOPTS"}) ::unsetenv(name);
  handle_->mdb = mdb_open(path.c_str(), MDB_NOFLAGS);
  if (!handle_->mdb) damaged("sa tête");
  if (!mdb_read_catalog(handle_->mdb, MDB_TABLE)) damaged("son catalogue");
}

JetFile::~JetFile() = default;

S_MdbTableDef* JetFile::table(std::string_view name) {
  MdbCatalogEntry* found = nullptr;
  for (unsigned i = 0; i < handle_->mdb->num_catalog; ++i) {
    auto* const entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(handle_->mdb->catalog, i));
    if (entry->object_type != MDB_TABLE || !mdb_is_user_table(entry) || !sameName(entry->object_name, name))
      continue;
    if (found) damaged("deux tables « " + std::string(name) + " »");
    found = entry;
  }
  if (!found) return nullptr;
  if (found->table_pg == 0 || found->table_pg >= pages_) damaged("table « " + std::string(name) + " »");
  MdbTableDef* const table = mdb_read_table(found);
  if (!table) damaged("table « " + std::string(name) + " »");
  handle_->tables.push_back(table);
  if (!mdb_read_columns(table)) damaged("colonnes de « " + std::string(name) + " »");
  return table;
}

void JetFile::read(std::uint32_t number, Page& page) {
  if (number >= pages_) damaged("la page " + std::to_string(number) + " manque");
  if (mdb_read_alt_pg(handle_->mdb, number) != static_cast<ssize_t>(kPageSize))
    damaged("page " + std::to_string(number));
  std::memcpy(page.data(), handle_->mdb->alt_pg_buf, kPageSize);
}

void JetFile::standOn(std::uint32_t number) {
  if (mdb_read_pg(handle_->mdb, number) != static_cast<ssize_t>(kPageSize))
    damaged("page " + std::to_string(number));
}

JetFile::Row JetFile::row(const Page& page, RowPlace place) const {
  const std::size_t rows = wordAt(page, kRowCount);
  const std::size_t behindStarts = kRowStarts + 2 * rows, entryAt = kRowStarts + 2 * std::size_t{place.row};
  if (page[0] != kDataPage || behindStarts > kPageSize || place.row >= rows)
    damaged("page " + std::to_string(place.page));
  const std::uint16_t entry = wordAt(page, entryAt);
  const std::size_t start = entry & kStart;
  const std::size_t end = place.row == 0 ? kPageSize : wordAt(page, entryAt - 2) & kStart;
  if (start < behindStarts || start > end || end > kPageSize)
    damaged("page " + std::to_string(place.page) + ", ligne " + std::to_string(place.row));
  return {Part(page).subspan(start, end - start), start, (entry & kDeleted) != 0, (entry & kPointer) != 0};
}

JetFile::Row JetFile::longPart(Page& page, RowPlace place) {
  read(place.page, page);
  if (std::memcmp(page.data() + kOwner, "LVAL", 4) != 0)
    damaged("la page " + std::to_string(place.page) + " n'est pas celle d'un texte long ou d'une image");
  return row(page, place);
}

Bytes JetFile::longValue(Part field) {
  if (field.size() < kLongHead) damaged("un texte long ou une image sans tête");
  const std::uint32_t head = longAt(field, 0);
  const std::size_t length = head & kLength;
  if (length > static_cast<std::size_t>(pages_) * kPageSize)
    damaged("un texte long ou une image trop longue");
  if (head & kInline) {
    const Part held = field.subspan(kLongHead);
    if (held.size() < length) damaged("un texte long ou une image trop courte");
    return {held.begin(), held.begin() + static_cast<std::ptrdiff_t>(length)};
  }
  if (length == 0) return {};
  const RowPlace first = RowPlace::of(longAt(field, 4));
  if (!(head & kOnePart)) return chain(first, length);
  Page page;
  const Part held = longPart(page, first).bytes;
  if (held.size() < length) damaged("un texte long ou une image trop courte");
  return {held.begin(), held.begin() + static_cast<std::ptrdiff_t>(length)};
}

Bytes JetFile::chain(RowPlace first, std::size_t length) {
  Bytes bytes;
  bytes.reserve(length);
  std::unordered_set<std::uint64_t> visited;
  Page page;
  for (RowPlace place = first; bytes.size() < length;) {
    if (!visited.insert(std::uint64_t{place.page} << 8 | place.row).second)
      damaged("un texte long ou une image tourne en rond, page " + std::to_string(place.page));
    const Part part = longPart(page, place).bytes;
    if (part.size() <= kNextPart) damaged("un texte long ou une image, page " + std::to_string(place.page));
    const Part held = part.subspan(kNextPart, std::min(part.size() - kNextPart, length - bytes.size()));
    bytes.insert(bytes.end(), held.begin(), held.end());
    place = RowPlace::of(longAt(part, 0));
  }
  return bytes;
}

}  // namespace tavoline::tool::jet
