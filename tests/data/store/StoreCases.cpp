// Stores, told in text files; contract.txt is what every engine keeps. A step is one of these; `here` may
// also be `there`, another workstation at the same store, and #2 is the second row inserted.
//
//     here place NAME, here insert TABLE FIELD=VALUE...
//     here update TABLE #N FIELD=VALUE..., here erase TABLE #N, here execute UPDATE
//     here places, here select ...        the rows of the newest version; of one: SNAPSHOT places, SNAPSHOT
//     select ... here snapshot SNAPSHOT, forget SNAPSHOT here same SNAPSHOT, SNAPSHOT since TABLE...
//                                         whether it is the newest, and whether tables changed since
//     SNAPSHOT stream STREAM select ..., next STREAM
//     here hold, here release             keeps all others from writing
//     here idle, here close, here opens FOLDER    by a name in its folder, which it then leaves
//     keep TABLE COLUMN VALUE             what becomes of a value; wide TABLE COLUMN N, of N and of more
//     characters catalog, default TABLE COLUMN       what the store tells of its tables name NAME STEP; STEP
//     ...            makes NAME a step that does all these; times N STEP; STEP ... does them other STEP in
//     another process, which has to begin before one opens the store here killed before N STEP; STEP ... in
//     another process, which dies before (after) its N-th write disk full [N], read-only, broken, unsynced,
//     well
//                                         what the disk does from now on, or behind N more writes
//     disk forced                         whether anything was forced to it since that was asked
//     disk waits STEP                     does it when somebody here waits for another process
//     sql STATEMENTS, ask SELECT          on the side, by any SQLite tool; log SIZE, whether it is smaller
//     none, folder, pipe, file BYTES..., cut SIZE, mode MODE FILE
//                                         what stands in the place of the store
//     open, nobody                        whether it opens; gives up the rights to all files
//     string STRING, part KEY             a connection string, and a part of it; connect STRING opens what it
//     names

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <fstream>
#include <map>
#include <optional>

#include "data/schema/Schema.h"
#include "data/value/Errors.h"
#include "support/Literals.h"
#include "support/StoreFaults.h"
#include "support/StoreFile.h"
#include "support/StoreProcess.h"
#include "support/StoreVfs.h"
#include "support/Transcript.h"
#include "tools/store/Sqlite.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;

/// One store of an engine; another engine plays contract.txt as well.
struct SqliteEngine {
  std::shared_ptr<Store> open() const { return file.open(); }
  void hold() {
    holder.emplace(file.path().string(), tool::Database::Mode::Create);
    holder->execute("BEGIN IMMEDIATE");
  }
  void release() { holder.reset(); }

  const StoreFile file;
  std::optional<tool::Database> holder;
};

/// What this process and the other one tell each other.
char* sharedPage() {
  static void* const page = ::mmap(nullptr, 8192, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  return static_cast<char*>(page);
}

class Stores {
 public:
  void play(Transcript& script) {
    script_ = &script;
    while (script_->next()) script_->attempt([&] { performUnnamed(script_->step()); });
  }

 private:
  /// Its sentences name no passing folder.
  void performUnnamed(const std::string& step) try { perform(step); } catch (const std::exception& error) {
    const std::string folder = engine_.file.folder().path();
    std::string said = error.what();
    for (auto at = said.find(folder); at != said.npos; at = said.find(folder))
      said.replace(at, folder.size(), "DOSSIER");
    throw std::runtime_error(said);
  }

  void perform(std::string step) {
    static const std::map<std::string, void (Stores::*)(std::string&)> verbs = {
        {"forget", &Stores::forget}, {"next", &Stores::next},       {"keep", &Stores::keep},
        {"wide", &Stores::wide},     {"catalog", &Stores::catalog}, {"default", &Stores::defaultOf},
        {"name", &Stores::name},     {"times", &Stores::times},     {"other", &Stores::other},
        {"killed", &Stores::killed}, {"disk", &Stores::disk},       {"sql", &Stores::sql},
        {"ask", &Stores::ask},       {"log", &Stores::log},         {"none", &Stores::none},
        {"folder", &Stores::folder}, {"pipe", &Stores::pipe},       {"file", &Stores::file},
        {"cut", &Stores::cut},       {"mode", &Stores::mode},       {"open", &Stores::open},
        {"nobody", &Stores::nobody}, {"connect", &Stores::connect}, {"part", &Stores::part},
        {"string", &Stores::string}, {"kinds", &Stores::kinds}};
    const std::string first = takeWord(step);
    if (first == "here" || first == "there") return ofWorkstation(first, step);
    if (const auto known = snapshots_.find(first); known != snapshots_.end())
      return ofSnapshot(*known->second, step);
    if (const auto known = names_.find(first); known != names_.end()) return performAll(known->second);
    (this->*verbs.at(first))(step);
  }

  void performAll(const std::string& steps) {
    std::istringstream in(steps);
    for (std::string step; std::getline(in >> std::ws, step, ';');) perform(step);
  }
  void name(std::string& step) {
    const std::string name = takeWord(step);
    names_[name] = step;
  }
  void times(std::string& step) {
    for (int left = std::stoi(takeWord(step)); left > 0; --left) performAll(step);
  }
  void say(const std::string& text) { script_->say(text.empty() ? "(none)" : text); }

  // Workstations

  void ofWorkstation(const std::string& name, std::string step) {
    const std::string whole = step, verb = takeWord(step);
    if (verb == "close") return void(opened_.erase(name));
    if (verb == "hold") return engine_.hold();
    if (verb == "release") return engine_.release();
    if (verb == "opens") return opens(name, step);
    Store& store = at(name);
    if (verb == "idle") return store.idle();
    if (verb == "snapshot") return void(snapshots_[step] = store.snapshot());
    if (verb == "same") return say(store.snapshot() == snapshots_.at(step) ? "yes" : "no");
    if (verb == "execute") return execute(store, step);
    if (verb == "place") return insert(store, "Endroit", {{"ID_endroit", ++places_}, {"Endoit", step}});
    if (verb == "places" || verb == "select") return ofSnapshot(*store.snapshot(), whole);
    const std::string table = takeWord(step);
    if (verb == "insert") return insert(store, table, fieldsIn(step));
    const RowId row = rows_.at(static_cast<std::size_t>(std::stoi(takeWord(step).substr(1))) - 1);
    if (verb == "erase") return store.erase(table, row);
    if (verb != "update") throw std::runtime_error("no step begins so");
    store.update(table, row, fieldsIn(step));
  }
  Store& at(const std::string& name) {
    auto& store = opened_[name];
    if (!store) store = engine_.open();
    return *store;
  }
  void opens(const std::string& name, const std::string& folder) {
    fs::current_path(engine_.file.folder().path() / folder);
    opened_[name] =
        Store::open("Data Source=BDD.mdb;Jet OLEDB:Database Password=" + std::string(schema::kStorePassword));
    fs::current_path("/");
  }
  void insert(Store& store, const std::string& table, const FieldValues& fields) {
    rows_.push_back(store.insert(table, fields));
    if (std::exchange(highest_[table], rows_.back()) >= rows_.back()) say("its number is no higher");
  }

  // Versions

  void ofSnapshot(const Snapshot& snapshot, std::string step) {
    const std::string whole = step, verb = takeWord(step);
    if (verb == "places") return places(snapshot);
    if (verb == "since")
      return say(std::string(snapshot.latest() ? "latest" : "older") +
                 (snapshot.unchanged(words(step)) ? ", unchanged" : ", changed"));
    if (verb == "stream") {
      const std::string name = takeWord(step);
      return void(streams_[name] = stream(at("here"), snapshot, step));
    }
    const Table rows = read(at("here"), snapshot, whole);
    for (const auto& row : rows) say(joined(row));
    if (rows.empty()) say("");
  }
  void places(const Snapshot& snapshot) {
    std::string names;
    for (const auto& row : read(at("here"), snapshot, "select Endoit from Endroit"))
      names += (names.empty() ? "" : ", ") + row[0].text();
    say(names);
  }
  void forget(std::string& name) { snapshots_.erase(name); }
  void next(std::string& name) {
    Rows& rows = *streams_.at(name);
    say(rows.next() ? rows.value(0).text() : "the end");
  }

  // Values

  void keep(std::string& step) {
    const std::string table = takeWord(step), column = takeWord(step);
    at("here").insert(table, {{column, valueOf(step)}});
    say(told(read(at("here"), "select " + column + " from " + table).back()[0]));
  }
  void wide(std::string& step) {
    const std::string table = takeWord(step), column = takeWord(step);
    std::string text;
    for (int width = std::stoi(step); width > 0; --width) text += "é";
    at("here").insert(table, {{column, text}});
    say(step + " are taken");
    at("here").insert(table, {{column, text + "s"}});
  }
  void kinds(std::string& step) {
    for (const auto& row : read(at("here"), "select " + step)) {
      std::string line;
      for (const Value& value : row) line += (line.empty() ? "" : ", ") + told(value);
      say(line);
    }
  }
  void defaultOf(std::string& step) {
    const std::string table = takeWord(step);
    say(told(at("here").catalog()->find(table)->find(step)->defaultValue));
  }
  void catalog(std::string&) {
    const auto listed = [](const auto& tables) {
      std::string all;
      for (const auto& table : tables) {
        all.append("\n").append(table.name);
        for (const auto& column : table.columns)
          all.append(" ").append(column.name) +=
              ":" + std::to_string(static_cast<int>(column.type)) + ":" + std::to_string(column.width);
      }
      return all;
    };
    const std::string found = listed(at("here").catalog()->tables());
    say(found == listed(schema::tables()) ? "as declared" : found);
  }

  // Other processes

  void other(std::string& step) {
    std::strcpy(sharedPage(), step.c_str());
    if (!other_) {
      if (!opened_.empty()) throw std::runtime_error("an open store must not cross a fork");
      other_ = std::make_unique<StoreProcess>([this](StoreProcess::Turns& turns) {
        while (turns.next()) {
          const std::string steps = std::string("times 1 ") + sharedPage();
          std::strcpy(sharedPage(), answers(steps, [this](Transcript& script) { play(script); }).c_str());
        }
      });
    }
    other_->turn();
    script_->say(sharedPage());
  }

  void killed(std::string& step) {
    const auto fault =
        takeWord(step) == "before" ? StoreFaults::Fault::DieBefore : StoreFaults::Fault::DieAfter;
    const int write = std::stoi(takeWord(step));
    const int status = runElsewhere([&] {
      const auto faulty = std::make_shared<StoreFaults>(engine_.open());
      faulty->at(write, fault);
      opened_["here"] = faulty;
      performAll(step);
    });
    if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL) say("it lived");
  }

  // The disk, and what stands on it

  void disk(std::string& step) {
    static const std::map<std::string, int> codes = {{"full", SQLITE_FULL},
                                                     {"read-only", SQLITE_READONLY},
                                                     {"broken", SQLITE_IOERR_WRITE},
                                                     {"well", SQLITE_OK}};
    if (!disk_) disk_.emplace();
    const std::string what = takeWord(step);
    if (what == "forced") return say(std::exchange(forced_, disk_->syncs()) < disk_->syncs() ? "yes" : "no");
    if (what == "unsynced") return disk_->failSyncs(SQLITE_IOERR_FSYNC);
    if (what == "waits")
      return disk_->whenWaiting([this, step] {
        say("waits");
        perform(step);
      });
    disk_->failSyncs(SQLITE_OK);
    disk_->failWrites(codes.at(what), step.empty() ? 0 : std::stoi(step));
  }
  void sql(std::string& step) { tool::Database(path(), tool::Database::Mode::Create).execute(step); }
  void ask(std::string& step) { say(engine_.file.run("SELECT " + step)); }
  void log(std::string& step) {
    say(fs::file_size(path() + "-wal") < std::stoul(step) ? "smaller" : "larger");
  }
  void none(std::string&) { fs::remove(path()); }
  void folder(std::string&) { fs::create_directory(path()); }
  void pipe(std::string&) { ::mkfifo(path().c_str(), 0600); }
  void file(std::string& step) {
    std::ofstream out(path(), std::ios::binary | std::ios::app);
    for (const std::string& word : words(step)) {
      const Value part = valueOf(word);
      const Bytes bytes = part.isBytes() ? *part.toBytes() : Bytes();
      out << std::string(bytes.begin(), bytes.end()) << (part.isText() ? part.text() : "");
    }
  }
  void cut(std::string& step) { fs::resize_file(path(), std::stoul(step)); }
  void mode(std::string& step) {
    const auto mode = static_cast<mode_t>(std::stoi(takeWord(step), nullptr, 8));
    ::chmod((engine_.file.folder().path() / step).c_str(), mode);
  }
  void open(std::string&) { opened(engine_.file.connectionString()); }
  void connect(std::string& step) { opened(step); }
  void opened(const std::string& connection) {
    const auto before = engine_.file.folder().contents();
    try {
      Store::open(connection);
      say("opens");
    } catch (const StoreError&) {
      if (engine_.file.folder().contents() != before) say("the folder is not as it was");
      throw;
    }
  }
  void nobody(std::string&) {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) throw std::runtime_error("no other user");
  }
  void string(std::string& step) { string_ = step; }
  void part(std::string& step) { say(ConnectionString(string_).get(step)); }
  std::string path() const { return engine_.file.path().string(); }

  Transcript* script_ = nullptr;
  SqliteEngine engine_;
  std::optional<StoreVfs> disk_;
  std::map<std::string, std::shared_ptr<Store>> opened_;
  std::map<std::string, std::shared_ptr<const Snapshot>> snapshots_;
  std::map<std::string, std::unique_ptr<Rows>> streams_;
  std::map<std::string, std::string> names_;
  std::vector<RowId> rows_;
  std::map<std::string, RowId> highest_;
  std::string string_;
  int places_ = 0, forced_ = 0;
  std::unique_ptr<StoreProcess> other_;
};

[[maybe_unused]] const bool known =
    registerTranscripts(TAVOLINE_CASES, [](Transcript& script) { Stores().play(script); });

}  // namespace
}  // namespace tavoline::test
