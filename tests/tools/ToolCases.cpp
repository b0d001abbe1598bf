// The tool played from its command line, in a folder of its own; "now" is a Sunday evening. A step is one of
// these:
//
//     tavoline-store ARGUMENTS   says what it says, and its exit status unless that is 0
//     quietly ARGUMENTS          the same, where only its success counts
//     on FILE                    the store of the next steps, as any SQLite tool opens it
//     sql STATEMENTS             runs them; workstation STATEMENTS on BDD.mdb, by one connection that stays
//     open ask SELECT, way SELECT     says its rows; the tables and indexes of its plan whole BDD.mdb is a
//     whole store with a history of 300 orders rules FILE                 how many queries of a file find
//     nothing, as they should write FILE TEXT, bytes FILE BYTES, folder NAME spoil FILE overwrites the page
//     in its middle changed                    the files that came, went or changed since it was asked before

#include <optional>

#include "support/Literals.h"
#include "support/Transcript.h"
#include "tests/tools/ToolFixture.h"
#include "tools/store/demo/Demo.h"

namespace tavoline::tool {
namespace {

namespace fs = std::filesystem;

class Tool : public ToolTest {
 public:
  explicit Tool(test::Transcript& script) : script_(script) { fs::current_path(folder.path()); }
  ~Tool() override { fs::current_path("/"); }
  void TestBody() override {}

  void perform(std::string step) {
    const std::string verb = test::takeWord(step);
    if (verb == "tavoline-store") return run(step);
    if (verb == "quietly" && tool(test::words(step)) == 0) return;
    if (verb == "whole") return whole();
    if (verb == "rules") return rules(step);
    if (verb == "changed") return changed();
    if (verb == "workstation") return workstation(step);
    if (verb == "bytes") return bytes(test::takeWord(step), step);
    if (verb == "spoil") return spoil(step);
    if (verb == "folder") return void(fs::create_directory(step));
    if (verb == "on") return void(store_ = step);
    if (verb == "sql") return plant(store_, step);
    if (verb == "ask" || verb == "way") return ask(step, verb == "way");
    if (verb != "write") throw std::runtime_error("no step begins so");
    std::ofstream(test::takeWord(step), std::ios::binary) << step;
  }

 private:
  void run(const std::string& arguments) {
    const int status = tool(test::words(arguments));
    script_.say(said);
    if (status != 0) script_.say("exit " + std::to_string(status));
  }

  void whole() const {
    static const std::string bytesOfIt = [] {
      Generation generation;
      generation.orders = 300;
      createGenerated("whole.mdb", generation);
      return test::bytesOf("whole.mdb");
    }();
    fs::remove("whole.mdb");
    std::ofstream("BDD.mdb", std::ios::binary) << bytesOfIt;
  }

  void rules(const std::string& name) const {
    std::ifstream in(TAVOLINE_FOLDER + name);
    const Database store(store_, Database::Mode::Observe);
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

  void workstation(const std::string& statements) {
    if (!workstation_) workstation_.emplace("BDD.mdb", Database::Mode::Create);
    workstation_->execute(statements);
  }

  static void bytes(const std::string& name, const std::string& word) {
    const SharedBytes bytes = test::valueOf(word).toBytes();
    std::ofstream(name, std::ios::binary) << std::string(bytes->begin(), bytes->end());
  }

  static void spoil(const std::string& name) {
    std::fstream store(name, std::ios::binary | std::ios::in | std::ios::out);
    store.seekp(static_cast<std::streamoff>(fs::file_size(name) / 2 / 4096 * 4096));
    store << std::string(4096, '\xff');
  }

  void changed() {
    auto now = folder.contents();
    bool any = false;
    for (const auto& [name, text] : now)
      if (!before_.contains(name) || before_[name] != text) script_.say(name), any = true;
    for (const auto& [name, text] : before_)
      if (!now.contains(name)) script_.say("without " + name), any = true;
    if (!any) script_.say("(nothing)");
    before_ = std::move(now);
  }

  void ask(const std::string& select, bool plan) {
    const Database store(store_, Database::Mode::Observe);
    bool any = false;
    for (Statement row = store.prepare((plan ? "explain query plan " : "") + select); row.step(); any = true)
      script_.say(row.isNull(plan ? 3 : 0) ? "null" : row.text(plan ? 3 : 0));
    if (!any) script_.say("(none)");
  }

  test::Transcript& script_;
  std::string store_ = "BDD.mdb";
  std::optional<Database> workstation_;
  std::map<std::string, std::string> before_;
};

[[maybe_unused]] const bool known = test::registerTranscripts(TAVOLINE_CASES, [](test::Transcript& script) {
  Tool tool(script);
  while (script.next()) script.attempt([&] { tool.perform(script.step()); });
});

}  // namespace
}  // namespace tavoline::tool
