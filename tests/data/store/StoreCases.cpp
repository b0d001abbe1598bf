// Stores, told in text files; contract.txt is what every engine keeps. The subject of a step is a
// workstation, `here` or `there`, or a snapshot; without one it is the newest version here. #2 is the second
// row inserted.

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>
#include <optional>

#include "data/schema/Identity.h"
#include "data/schema/Schema.h"
#include "data/store/ConnectionString.h"
#include "data/store/PlayedEngines.h"
#include "data/store/postgres/PostgresStore.h"
#include "data/value/Errors.h"
#include "support/Literals.h"
#include "support/StoreProcess.h"
#include "support/StoreVfs.h"
#include "support/Verbs.h"

namespace tavoline::test {
namespace {

namespace fs = std::filesystem;

/// What this process and the other one tell each other.
char* sharedPage() {
  static void* const page = ::mmap(nullptr, 8192, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  return static_cast<char*>(page);
}

class Stores {
 public:
  Stores(Transcript& script, std::unique_ptr<PlayedEngine> engine)
      : script_(&script), engine_(std::move(engine)) {
    diskKind = 0;
  }
  static bool played(const std::string& files);
  /// Its sentences name no passing folder.
  void performUnnamed(const std::string& step) try { perform(step); } catch (const std::exception& error) {
    throw std::runtime_error(engine_->unnamed(error.what()));
  }

  std::string subject;

 private:
  static const Verbs<Stores> kVerbs;

  void play(Transcript& script) {
    script_ = &script;
    while (script_->next()) script_->attempt([&] { performUnnamed(script_->step()); });
  }
  void perform(const std::string& step) {
    const auto known = names_.find(step);
    known == names_.end() ? kVerbs.perform(*this, step) : performAll(known->second);
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

  void announce(std::string& what) { say(std::to_string(store().announce(what)) + " others"); }
  // A server hears of an end a moment later.
  void alone(std::string& what) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (store().announce(what) != 0)
      if (std::chrono::steady_clock::now() > until) return say("never");
    say("yes");
  }
  void die(std::string&) { ::kill(::getpid(), SIGKILL); }
  void close(std::string&) { opened_.erase(subject); }
  void hold(std::string&) { engine_->hold(); }
  void release(std::string&) { engine_->release(); }
  void idle(std::string&) { store().idle(); }
  void snapshot(std::string& name) { snapshots_[name] = store().snapshot(); }
  void same(std::string& name) { say(store().snapshot() == snapshots_.at(name) ? "yes" : "no"); }
  void place(std::string& name) { insert("Endroit", {{"ID_endroit", ++places_}, {"Endoit", name}}); }
  void add(std::string& fields) {
    const std::string table = takeWord(fields);
    insert(table, fieldsIn(fields));
  }
  void update(std::string& fields) {
    const std::string table = takeWord(fields);
    const RowId row = takeRow(fields);
    store().update(table, row, fieldsIn(fields));
  }
  void erase(std::string& rest) {
    const std::string table = takeWord(rest);
    store().erase(table, takeRow(rest));
  }
  void executeOn(std::string& statement) { execute(store(), statement); }
  RowId takeRow(std::string& rest) {
    return rows_.at(static_cast<std::size_t>(std::stoi(takeWord(rest).substr(1))) - 1);
  }
  Store& store() { return at(subject.empty() ? "here" : subject); }
  Store& at(const std::string& name) {
    auto& store = opened_[name];
    if (!store) store = engine_->file->open();
    return *store;
  }
  void opens(std::string& folder) {
    fs::current_path(engine_->file->folder().path() / folder);
    opened_[subject] =
        Store::open("Data Source=BDD.mdb;Jet OLEDB:Database Password=" + std::string(schema::kStorePassword));
    fs::current_path("/");
  }
  void insert(const std::string& table, const FieldValues& fields) {
    rows_.push_back(store().insert(table, fields));
    if (std::exchange(highest_[table], rows_.back()) >= rows_.back()) say("its number is no higher");
  }

  // Versions

  std::shared_ptr<const Snapshot> version() {
    const auto known = snapshots_.find(subject);
    return known == snapshots_.end() ? store().snapshot() : known->second;
  }
  Table rowsOf(const std::string& select) {
    const auto shown = version();
    return read(at("here"), *shown, select);
  }
  void since(std::string& tables) {
    const auto shown = version();
    const auto newest = at("here").snapshot();
    bool changed = false;
    for (const std::string& table : words(tables)) changed |= shown->changes(table) != newest->changes(table);
    say(std::string(shown->latest() ? "latest" : "older") + (changed ? ", changed" : ", unchanged"));
  }
  void stream(std::string& select) {
    const std::string name = takeWord(select);
    streams_[name] = test::stream(at("here"), *version(), select);
  }
  void select(std::string& rest) {
    const Table rows = rowsOf("select " + rest);
    for (const auto& row : rows) say(joined(row));
    if (rows.empty()) say("");
  }
  void places(std::string&) {
    std::string names;
    for (const auto& row : rowsOf("select Endoit from Endroit"))
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
  void server(std::string& step) {
    if (step == "stops") engine_->cluster->stop();
    if (step == "crashes") engine_->cluster->crash();
    if (step == "starts") engine_->cluster->start();
  }
  void network(std::string& step) { engine_->lay(step); }
  void trips(std::string&) {
    const auto made = postgres::Connection::roundTrips();
    say(std::to_string(made - std::exchange(trips_, made)));
  }
  void connections(std::string&) {
    say(std::to_string(dynamic_cast<const postgres::PostgresStore&>(store()).connections()));
  }
  void sql(std::string& step) { engine_->run(step); }
  void ask(std::string& step) { say(engine_->run(step)); }
  void log(std::string& step) {
    say(fs::file_size(path() + "-wal") < std::stoul(step) ? "smaller" : "larger");
  }
  void none(std::string& name) {
    fs::remove(name.empty() ? path() : (engine_->file->folder().path() / name).string());
  }
  void folder(std::string& name) { fs::create_directory(engine_->file->folder().path() / name); }
  void link(std::string& target) {
    const fs::path name = engine_->file->folder().path() / takeWord(target);
    fs::create_directories(name.parent_path());
    fs::create_symlink(target, name);
  }
  void kind(std::string& step) { diskKind = std::stol(step, nullptr, 16), tryOut(step); }
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
    ::chmod((engine_->file->folder().path() / step).c_str(), mode);
  }
  void tryOut(std::string&) { opened(engine_->file->connectionString()); }
  void connect(std::string& step) { opened(step); }
  void opened(const std::string& connection) {
    const auto before = engine_->file->folder().contents();
    try {
      Store::open(connection);
      say("opens");
    } catch (const StoreError&) {
      if (engine_->file->folder().contents() != before) say("the folder is not as it was");
      throw;
    }
  }
  void nobody(std::string&) {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) throw std::runtime_error("no other user");
  }
  void string(std::string& step) { string_ = step; }
  void part(std::string& step) { say(ConnectionString(string_).get(step)); }
  std::string path() const { return engine_->file->path().string(); }

  Transcript* script_ = nullptr;
  std::unique_ptr<PlayedEngine> engine_;
  std::optional<StoreVfs> disk_;
  std::map<std::string, std::shared_ptr<Store>> opened_;
  std::map<std::string, std::shared_ptr<const Snapshot>> snapshots_;
  std::map<std::string, std::unique_ptr<Rows>> streams_;
  std::map<std::string, std::string> names_;
  std::vector<RowId> rows_;
  std::map<std::string, RowId> highest_;
  std::string string_;
  int places_ = 0, forced_ = 0;
  std::uint64_t trips_ = postgres::Connection::roundTrips();
  std::unique_ptr<StoreProcess> other_;
};

const Verbs<Stores> Stores::kVerbs(
    "store",
    {{"[STORE] place NAME", "adds a place", &Stores::place},
     {"[STORE] add TABLE FIELD=VALUE...", "adds a row", &Stores::add},
     {"[STORE] update TABLE #N FIELD=VALUE...", "changes a row", &Stores::update},
     {"[STORE] erase TABLE #N", "deletes a row", &Stores::erase},
     {"[STORE] execute UPDATE", "a statement that writes", &Stores::executeOn},
     {"[STORE] places", "the names of the places, also in a snapshot", &Stores::places},
     {"[STORE] select ...", "the rows of a select, also in a snapshot", &Stores::select},
     {"[STORE] snapshot SNAPSHOT", "takes one of the newest version", &Stores::snapshot},
     {"[STORE] same SNAPSHOT", "whether that is of the newest version", &Stores::same},
     {"[SNAPSHOT] since TABLE...", "whether it is the newest, and whether tables changed since",
      &Stores::since},
     {"[SNAPSHOT] stream STREAM SELECT", "begins to read rows", &Stores::stream},
     {"next STREAM", "the first field of its next row", &Stores::next},
     {"forget SNAPSHOT", "lets go of it", &Stores::forget},
     {"STORE hold", "keeps all others from writing", &Stores::hold},
     {"STORE release", "lets them", &Stores::release},
     {"STORE idle", "is told of a quiet moment", &Stores::idle},
     {"STORE announce WHAT", "says what its workstation is at; how many others are at it", &Stores::announce},
     {"STORE alone WHAT", "the same, and waits until nobody else is at it", &Stores::alone},
     {"die", "the process is killed", &Stores::die},
     {"STORE close", "is closed", &Stores::close},
     {"STORE opens FOLDER", "is opened by a name in its folder, which it then leaves", &Stores::opens},
     {"keep TABLE COLUMN VALUE", "what becomes of a value", &Stores::keep},
     {"wide TABLE COLUMN N", "what becomes of a text of N characters, and of more", &Stores::wide},
     {"kinds ...", "the values of a select, with their kinds", &Stores::kinds},
     {"catalog", "whether the store tells of its tables what is declared", &Stores::catalog},
     {"default TABLE COLUMN", "what the store tells of a column", &Stores::defaultOf},
     {"name NAME STEP[; STEP]...", "makes NAME a step that does all these", &Stores::name},
     {"times N STEP[; STEP]...", "does them so many times", &Stores::times},
     {"other STEP", "in another process, which has to begin before one opens the store here", &Stores::other},
     {"disk STATE [N]",
      "is full, read-only, broken, unsynced or well from now on, or behind N more writes; forced: whether "
      "anything was forced to it since that was asked; waits STEP: does it when somebody here waits for "
      "another process",
      &Stores::disk},
     {"server STATE", "the server of the store stops, crashes or starts", &Stores::server},
     {"network OPTIONS", "puts one before the server; later: out, or in", &Stores::network},
     {"trips", "how often somebody here waited for a server since that was asked", &Stores::trips},
     {"STORE connections", "how many it has to its server", &Stores::connections},
     {"sql STATEMENT", "a statement on the side, as any tool of the engine runs it", &Stores::sql},
     {"ask SELECT", "the first column of its rows", &Stores::ask},
     {"log SIZE", "whether the log is smaller", &Stores::log},
     {"none [FILE]", "nothing stands in the place of the store, or of another file", &Stores::none},
     {"folder NAME", "makes one", &Stores::folder},
     {"link NAME TARGET", "a symbolic link, in a folder that is made for it", &Stores::link},
     {"kind N", "whether the store opens on a disk of this kind, by the system's hexadecimal number",
      &Stores::kind},
     {"pipe", "a pipe stands in the place of the store", &Stores::pipe},
     {"file BYTES...", "these bytes stand there, behind what does", &Stores::file},
     {"cut SIZE", "cuts it to so many bytes", &Stores::cut},
     {"mode MODE FILE", "sets the rights to a file", &Stores::mode},
     {"nobody", "gives up the rights to all files", &Stores::nobody},
     {"try", "whether the store opens", &Stores::tryOut},
     {"connect STRING", "whether what a connection string names opens", &Stores::connect},
     {"string STRING", "a connection string", &Stores::string},
     {"part KEY", "a part of it", &Stores::part}});

bool Stores::played(const std::string& files) {
  for (const std::string& file : words(files)) {
    const std::string name = fs::path(file).stem();
    if (name != "postgres")
      registerTranscripts(
          file, [](Transcript& script) { Stores(script, std::make_unique<PlayedSqlite>()).play(script); });
    if (name == "contract" || name == "postgres")
      registerTranscripts(
          file, [](Transcript& script) { Stores(script, std::make_unique<PlayedPostgres>()).play(script); },
          "Postgres");
  }
  return true;
}

[[maybe_unused]] const bool known = Stores::played(TAVOLINE_CASES);

}  // namespace
}  // namespace tavoline::test
