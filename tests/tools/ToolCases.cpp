// The tool played from its command line, in a folder of its own; "now" is a Sunday evening.

#include <optional>

#include "data/store/Store.h"
#include "data/value/Errors.h"
#include "support/Cluster.h"
#include "support/Literals.h"
#include "support/StoreProcess.h"
#include "support/Verbs.h"
#include "tests/tools/ToolFixture.h"
#include "tools/store/Check.h"
#include "tools/store/demo/Demo.h"
#include "tools/store/server/ServerCreation.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

class Tool : public ToolTest {
 public:
  explicit Tool(test::Transcript& script) : script_(script) { fs::current_path(folder.path()); }
  ~Tool() override { fs::current_path("/"); }
  void TestBody() override {}

  std::string subject;  // no step has one

  void run(std::string& arguments) {
    const int status = call(arguments);
    script_.say(said);
    if (status != 0) script_.say("exit " + std::to_string(status));
  }
  void refused(std::string& arguments) {
    constexpr std::string_view kSender = "tavoline-store : ";
    const bool told = call(arguments) == 1 && said.starts_with(kSender);
    script_.say(told ? said.substr(kSender.size()) : "it is not refused");
  }

  void server(std::string& role) {
    const std::string name = test::takeWord(role);
    if (!cluster_) cluster_.emplace();
    std::string address = cluster_->address(fs::path(name).stem());
    if (!role.empty()) address.replace(address.find("maitre"), 6, role);
    std::ofstream(name) << address << '\n';
  }
  void side(std::string& statement) {
    const std::string name = test::takeWord(statement);
    reachServer(*serverAddress(name))->execute(statement);
  }

  void whole(std::string&) {
    static const std::string bytesOfIt = [] {
      Generation generation;
      generation.orders = 300;
      generation.invoices = 10;
      createGenerated("whole.mdb", generation);
      return test::bytesOf("whole.mdb");
    }();
    fs::remove("whole.mdb");
    std::ofstream("BDD.mdb", std::ios::binary) << bytesOfIt;
  }

  void rules(std::string& name) {
    std::ifstream in(TAVOLINE_FOLDER + name);
    sqlite::Connection store = observed(store_);
    int kept = 0;
    for (std::string rule; std::getline(in >> std::ws, rule, ';');) {
      const std::string broken = store.text(rule);
      if (broken.empty())
        ++kept;
      else
        script_.say(rule.append("\nis broken by ").append(broken));
    }
    script_.say(std::to_string(kept) + " rules are kept");
  }

  void workstation(std::string& statements) {
    if (!workstation_) workstation_.emplace("BDD.mdb", "BDD.mdb", sqlite::Connection::Role::Writer);
    workstation_->execute(statements);
  }

  void killed(std::string& statements) {
    test::runElsewhere([&] {
      auto* const lost = new sqlite::Connection("BDD.mdb", "BDD.mdb", sqlite::Connection::Role::Writer);
      lost->execute("PRAGMA wal_autocheckpoint = 0");
      lost->execute(statements);
    });
  }

  void opens(std::string& password) {
    try {
      Store::open("Data Source=BDD.mdb;Jet OLEDB:Database Password=" + password);
      script_.say("opened");
    } catch (const StoreError& error) {
      script_.say(error.what());
    }
  }

  void copy(std::string& names) {
    const std::string from = test::takeWord(names);
    fs::copy_file(from, names, fs::copy_options::overwrite_existing);
  }
  void move(std::string& names) {
    const std::string from = test::takeWord(names);
    fs::rename(from, names);
  }
  void rights(std::string& name) {
    std::ostringstream mode;
    mode << std::oct << static_cast<unsigned>(fs::status(name).permissions());
    script_.say(mode.str());
  }

  void bytes(std::string& word) {
    const std::string name = test::takeWord(word);
    const SharedBytes bytes = test::valueOf(word).toBytes();
    std::ofstream(name, std::ios::binary) << std::string(bytes->begin(), bytes->end());
  }

  void spoil(std::string& name) {
    std::fstream store(name, std::ios::binary | std::ios::in | std::ios::out);
    store.seekp(static_cast<std::streamoff>(fs::file_size(name) / 2 / 4096 * 4096));
    store << std::string(4096, '\xff');
  }

  void changed(std::string&) {
    auto now = folder.contents();
    bool any = false;
    for (const auto& [name, text] : now)
      if (!before_.contains(name) || before_[name] != text) script_.say(name), any = true;
    for (const auto& [name, text] : before_)
      if (!now.contains(name)) script_.say("without " + name), any = true;
    if (!any) script_.say("(nothing)");
    before_ = std::move(now);
  }

  void broken(std::string& statements) {
    whole(statements);
    plant("BDD.mdb", statements);
    std::string store = "BDD.mdb";
    found(store);
  }
  void found(std::string& name) {
    const std::vector<std::string> findings = checkStore(name);
    for (const std::string& finding : findings) script_.say(finding);
    if (findings.empty()) script_.say("(none)");
  }
  void wrong(std::string& arguments) {
    const int status = tool(test::words(arguments));
    const auto end = said.find("\nVoyez « tavoline-store --help ».\n");
    script_.say(status == 2 && end != said.npos ? said.substr(0, end) : "it is taken");
  }
  void quietly(std::string& arguments) {
    if (tool(test::words(arguments)) != 0) throw std::runtime_error(said);
  }
  void on(std::string& name) { store_ = name; }
  void sql(std::string& statements) { plant(store_, statements); }
  void folderNamed(std::string& name) { fs::create_directory(name); }
  void write(std::string& text) { std::ofstream(test::takeWord(text), std::ios::binary) << text; }
  void ask(std::string& select) { tell(select, 0); }

 private:
  int call(const std::string& arguments) {
    const int status = tool(test::words(arguments));
    forget(folder.path(), "DOSSIER");
    if (cluster_) forget(cluster_->folder(), "SERVEUR");
    if (cluster_) forget("port=" + std::to_string(cluster_->port()), "port=N");
    return status;
  }
  void forget(const std::string& passing, const std::string& name) {
    for (auto at = said.find(passing); at != said.npos; at = said.find(passing))
      said.replace(at, passing.size(), name);
  }
  void tell(const std::string& select, int column) {
    sqlite::Connection store = observed(store_);
    bool any = false;
    for (sqlite::Statement row = store.prepare(select); row.step(); any = true)
      script_.say(row.isNull(column) ? "null" : row.text(column));
    if (!any) script_.say("(none)");
  }

  test::Transcript& script_;
  std::string store_ = "BDD.mdb";
  std::optional<test::Cluster> cluster_;
  std::optional<sqlite::Connection> workstation_;
  std::map<std::string, std::string> before_;
};

const test::Verbs<Tool> kVerbs(
    "tool",
    {{"tavoline-store ARGUMENTS", "says what it says, and its exit status unless that is 0", &Tool::run},
     {"succeeds ARGUMENTS", "the same, where only its success counts", &Tool::quietly},
     {"wrong ARGUMENTS", "what it says of a wrong call, before it refers to --help", &Tool::wrong},
     {"refuses ARGUMENTS", "the sentence with which it ends without success", &Tool::refused},
     {"findings FILE", "what a check finds in a store", &Tool::found},
     {"broken STATEMENT", "what a check finds in a whole store after this", &Tool::broken},
     {"on FILE", "the store of the next steps, as any SQLite tool opens it", &Tool::on},
     {"sql STATEMENT", "a statement on the side, as any SQLite tool runs it", &Tool::sql},
     {"ask SELECT", "the first column of its rows", &Tool::ask},
     {"workstation STATEMENT", "on BDD.mdb, by one connection that stays open", &Tool::workstation},
     {"server FILE [ROLE]",
      "a file with the address of a database, named like it, on a server of the test's own, as its "
      "administrator or under a role",
      &Tool::server},
     {"side FILE STATEMENTS", "on the database that a file leads to, as its administrator", &Tool::side},
     {"whole", "BDD.mdb is a whole store with a history of 300 orders", &Tool::whole},
     {"rules FILE", "how many queries of a file find nothing, as they should", &Tool::rules},
     {"write FILE TEXT", "a file of this text", &Tool::write},
     {"killed STATEMENTS", "on BDD.mdb, by a workstation that is killed then", &Tool::killed},
     {"opens PASSWORD", "BDD.mdb, as the program does", &Tool::opens},
     {"copy FILE NAME", "as the system copies it, also over another", &Tool::copy},
     {"move FILE NAME", "gives it another name", &Tool::move},
     {"rights NAME", "who may read and write it", &Tool::rights},
     {"bytes FILE BYTES", "a file of these bytes", &Tool::bytes},
     {"folder NAME", "makes one", &Tool::folderNamed},
     {"spoil FILE", "overwrites the page in its middle", &Tool::spoil},
     {"changed", "the files that came, went or changed since it was asked before", &Tool::changed}});
[[maybe_unused]] const bool known = kVerbs.registerTranscripts(TAVOLINE_CASES);

}  // namespace
}  // namespace tavoline::tool
