#include "data/store/sqlite/Lineage.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "data/schema/Identity.h"
#include "data/store/sqlite/FirstBytes.h"
#include "data/store/sqlite/Holders.h"
#include "data/store/sqlite/LogFile.h"
#include "data/value/Errors.h"

namespace tavoline::sqlite {

namespace {

using CountsPage = std::map<std::string, std::int64_t, std::less<>>;

constexpr char indexLeaf = 0x0A, tableLeaf = 0x0D;
constexpr std::size_t cookieAt = 40;  // in the first page: counts the changes of the definitions

/// Steps through the bytes of a page; what stands behind its end reads as zero.
class PageReader {
 public:
  PageReader(std::string_view page, std::size_t at) : page_(page), at_(at) {}

  std::uint64_t number(std::size_t bytes) {
    std::uint64_t value = 0;
    for (; bytes > 0; --bytes, ++at_) value = value << 8 | byte(at_);
    return value;
  }
  /// Seven bits a byte, the highest bit tells that more follow.
  std::uint64_t packed() {
    std::uint64_t value = 0;
    for (int i = 0; i < 8; ++i) {
      const unsigned char next = byte(at_++);
      value = value << 7 | (next & 0x7F);
      if (!(next & 0x80)) return value;
    }
    return value << 8 | byte(at_++);
  }
  std::string_view text(std::size_t size) {
    const std::string_view found = at_ > page_.size() ? std::string_view() : page_.substr(at_, size);
    at_ += size;
    return found;
  }

 private:
  unsigned char byte(std::size_t at) const {
    return at < page_.size() ? static_cast<unsigned char>(page_[at]) : 0;
  }

  std::string_view page_;
  std::size_t at_;
};

std::optional<std::int64_t> wholeNumber(PageReader& bytes, std::uint64_t kind) {
  if (kind == 8 || kind == 9) return kind - 8;
  if (kind == 0 || kind > 6) return std::nullopt;
  const std::uint64_t size = kind <= 4 ? kind : kind == 5 ? 6 : 8;
  const unsigned spare = static_cast<unsigned>(64 - 8 * size);
  return static_cast<std::int64_t>(bytes.number(size) << spare) >> spare;
}

/// The counts that stand in a page; nothing if it is a page of something else.
std::optional<CountsPage> countsIn(std::string_view page) {
  if (page.empty() || page[0] != indexLeaf) return std::nullopt;
  constexpr std::uint64_t longest = 200;  // bytes of a name and its count, much more than the longest has
  CountsPage counts;
  const std::uint64_t cells = PageReader(page, 3).number(2);
  for (std::uint64_t i = 0; i < cells; ++i) {
    PageReader cell(page, PageReader(page, 8 + 2 * i).number(2));
    if (cell.packed() > longest) return std::nullopt;
    const std::uint64_t head = cell.packed(), name = cell.packed(), count = cell.packed();
    if (head > 9 || name < 13 || name % 2 == 0 || name > longest) return std::nullopt;
    const std::string_view text = cell.text((name - 13) / 2);
    const auto number = wholeNumber(cell, count);
    if (!number) return std::nullopt;
    counts[std::string(text)] = *number;
  }
  return counts;
}

struct LogContent {
  std::uint32_t countsPage = 0;  // 0 where no frame shows it
  CountsPage first, last;
  std::set<std::uint32_t> leaves;  // with rows of tables, up to the first transaction that shows the counts
  std::optional<std::uint32_t> cookie;  // as the first of its transactions left it that tells
  std::set<std::uint32_t> pages;
  std::uint32_t pagesAfter = 0, pageSize = 0;
};

std::optional<CountsPage> storeCountsIn(const std::string& page) {
  auto counts = countsIn(page);
  if (counts && !counts->contains(schema::kIdentityRow)) counts.reset();
  return counts;
}

/// What the whole transactions of a log hold; nothing if there is none that would be played.
std::optional<LogContent> contentOf(const std::string& path) {
  LogFile log(path);
  LogContent content;
  std::vector<std::uint32_t> pages;  // of the transaction that is being read, like what follows
  std::optional<std::uint32_t> cookie;
  std::optional<CountsPage> counts;
  std::uint32_t countsPage = 0;
  std::size_t number = 0;
  for (; const auto frame = log.next(); ++number) {
    pages.push_back(frame->page);
    if (!content.countsPage && frame->kind == tableLeaf) content.leaves.insert(frame->page);
    if (frame->page == 1)
      cookie = static_cast<std::uint32_t>(PageReader(log.bytes(number), cookieAt).number(4));
    if (frame->kind == indexLeaf)
      if (auto found = storeCountsIn(log.bytes(number))) counts = std::move(found), countsPage = frame->page;
    if (frame->pagesAfter == 0) continue;
    content.pages.insert(pages.begin(), pages.end());
    pages.clear();
    if (!content.cookie) content.cookie = cookie;
    if (counts && !content.countsPage) content.first = *counts;
    if (counts) content.last = *std::exchange(counts, std::nullopt), content.countsPage = countsPage;
    content.pagesAfter = frame->pagesAfter;
    content.pageSize = log.pageSize();
  }
  if (content.pagesAfter == 0) return std::nullopt;
  return content;
}

/// The counts that the first and the last transactions of a log left, without a look at what lies between,
/// nor whether the last came whole to the disk; nothing if they do not tell.
std::optional<LogContent> endsOf(const std::string& path) {
  LogFile log(path);
  LogContent ends;
  ends.pageSize = log.pageSize();
  std::uint32_t countsPage = 0;
  for (std::size_t number = 0; !ends.countsPage; ++number) {
    const auto frame = log.frame(number);
    if (!frame) return std::nullopt;
    if (frame->kind == tableLeaf) ends.leaves.insert(frame->page);
    if (frame->kind == indexLeaf)
      if (auto found = storeCountsIn(log.bytes(number)))
        ends.first = std::move(*found), countsPage = frame->page;
    if (frame->pagesAfter != 0) ends.countsPage = countsPage;
  }
  bool whole = false;
  for (std::size_t number = log.frames(); number-- > 0;) {
    const auto frame = log.frame(number);
    if (!frame) return std::nullopt;
    whole = whole || frame->pagesAfter != 0;
    if (!whole || frame->page != ends.countsPage) continue;
    auto last = storeCountsIn(log.bytes(number));
    if (!last) return std::nullopt;
    ends.last = std::move(*last);
    return ends;
  }
  return std::nullopt;
}

std::int64_t countIn(const CountsPage& counts, std::string_view name) {
  const auto found = counts.find(name);
  return found == counts.end() ? 0 : found->second;
}

/// A file stands where the log begins, or, as far as it was folded, between there and its end. A transaction
/// of the program writes to one table; one of another program may write to several, and then shows a page of
/// each.
bool follows(const CountsPage& file, const LogContent& log) {
  std::size_t behind = 0;
  for (const auto& [name, last] : log.last) {
    if (name == schema::kIdentityRow) continue;
    if (countIn(file, name) > last) return false;
    if (countIn(file, name) < countIn(log.first, name)) ++behind;
  }
  return behind <= std::max<std::size_t>(1, log.leaves.size());
}

std::string pageOf(const Location& file, std::uint32_t page, std::uint32_t size) {
  return bytesAt(file.path, std::uint64_t{page - 1} * size, size).value_or("");
}

/// Whether each page behind the end of the file stands in the log. One that a transaction took and gave back
/// is in neither, so this is asked only of logs that tell no more.
bool holdsNewPages(const Location& file, const LogContent& log) {
  std::error_code error;
  const std::uint64_t pages = std::filesystem::file_size(file.path, error) / log.pageSize;
  for (std::uint64_t page = pages + 1; page <= log.pagesAfter; ++page)
    if (!log.pages.contains(static_cast<std::uint32_t>(page))) return false;
  return true;
}

bool belongs(const Location& file, const LogContent& log) {
  if (!log.countsPage) return holdsNewPages(file, log);
  const auto counts = countsIn(pageOf(file, log.countsPage, log.pageSize));
  // The counts may be younger than the file only where the log itself brings their definition.
  if (!counts)
    return log.cookie && *log.cookie != PageReader(pageOf(file, 1, log.pageSize), cookieAt).number(4);
  const auto identity = counts->find(schema::kIdentityRow);
  if (identity != counts->end() && identity->second != countIn(log.last, schema::kIdentityRow)) return false;
  return follows(*counts, log);
}

bool keepsIdentity(Connection& connection) {
  Statement table = connection.prepare("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1");
  table.bind({std::string(schema::kCountTable)});
  return table.step();
}

}  // namespace

void giveIdentity(Connection& connection) {
  if (!keepsIdentity(connection)) return;
  Statement row = connection.prepare("INSERT OR REPLACE INTO tavoline_ecritures VALUES (?1, random())");
  row.bind({std::string(schema::kIdentityRow)});
  row.step();
}

bool hasIdentity(Connection& connection) {
  if (!keepsIdentity(connection)) return false;
  Statement row = connection.prepare("SELECT 1 FROM tavoline_ecritures WHERE nom = ?1");
  row.bind({std::string(schema::kIdentityRow)});
  return row.step();
}

void requireOwnLog(const Location& file) {
  const std::string log = file.path + "-wal";
  // Whoever works on the store by now has its log.
  if (!std::filesystem::exists(log) || !holdersOf(file.path).empty()) return;
  // To read the whole log takes as long as half a start. Only what has to be refused is worth it: a torn end
  // must not be what refuses a good store.
  if (const auto ends = endsOf(log); ends && belongs(file, *ends)) return;
  const auto content = contentOf(log);
  if (!content || belongs(file, *content)) return;
  throw StoreError("« " + file.name + " » n'est pas le fichier auquel appartient le journal « " + file.name +
                   "-wal » qui est à côté : l'un des deux a été remplacé, et les ouvrir ensemble les "
                   "abîmerait. Rien n'a été "
                   "touché. Remettez sous ce nom le fichier qui s'y trouvait, ou remettez une sauvegarde par "
                   "« tavoline-store restore SAUVEGARDE " +
                   file.name + " », qui met tout de côté.");
}

}  // namespace tavoline::sqlite
