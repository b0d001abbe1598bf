// Datasets, played by their operations, over three places (1 a, 2 b, 3 c). A step is one of these, by the
// first dataset or, where one's name goes before it, by another:
//
//     open STATEMENT             another dataset instead of that of the places
//     also NAME STATEMENT        one more; also NAME there STATEMENT at another workstation. "Open" opens it.
//     Edit, Insert, Post ...     an operation without arguments, by its name; active on, active off
//     FIELD = VALUE              sets a field by a text; put FIELD VALUE by any value (support/Literals.h)
//     param NAME VALUE           sets a parameter; all datasets declare a "z"
//     command STATEMENT          gives it a new text
//     filter TEXT, or by its parts: filtered off, text TEXT, filtered on
//     typed FIELD TEXT           a bound control holds a text that waits for the field
//     elsewhere SQL              another workstation writes
//     row FIELD...               state and current row; eof and bof where they hold
//     walk FIELD                 what a walk from First to the end shows
//     count, counted, count on N how many records there are, or are known so far; counts on
//     to N                       goes to a record by its number
//     locate FIELD VALUE         whether it goes to the first row that has this
//     record N FIELD             a field of a record by its number
//     stored                     the places in the store
//     written, heard             whether anything was written, or told to controls, since that was asked

#include <map>
#include <optional>

#include "data/dataset/DatasetFixture.h"
#include "support/Literals.h"
#include "support/Transcript.h"
#include "tools/store/Sqlite.h"

namespace tavoline {
namespace {

/// A bound control with what was typed in it.
class TypedText final : public DataListener {
 public:
  TypedText(DataSource& source, std::string field, std::string text, test::Transcript& script)
      : source_(source), field_(std::move(field)), typed_(std::move(text)), script_(script) {
    source_.add(this);
  }
  ~TypedText() { source_.remove(this); }
  void dataEvent(DataEvent) override {}
  void giveUpPending() override {
    if (!typed_) return;
    const std::string text = *typed_;
    source_.dataset()[field_] = text;
    typed_.reset();
    script_.say("gives up " + text);
  }
  void dropPending() override {
    if (typed_) script_.say("drops " + *typed_);
    typed_.reset();
  }

 private:
  DataSource& source_;
  const std::string field_;
  std::optional<std::string> typed_;
  test::Transcript& script_;
};

/// A control that counts what it is told.
struct Ear final : DataListener {
  void dataEvent(DataEvent) override { ++events; }
  int events = 0;
};

class Played : public DatasetTest {
 public:
  explicit Played(test::Transcript& script) : script_(script) {
    SetUp();
    for (const auto& [number, name] : {std::pair{1, "a"}, {2, "b"}, {3, "c"}}) addPlace(*here, number, name);
    open("select * from Endroit");
    written_ = here->snapshot();
  }
  ~Played() override { typed_.reset(), source_.reset(), written_.reset(), all_.clear(), TearDown(); }
  void TestBody() override {}

  void perform(std::string step) {
    static const std::map<std::string, void (Dataset::*)()> operations = {
        {"Edit", &Dataset::Edit},     {"Insert", &Dataset::Insert},
        {"Post", &Dataset::Post},     {"Cancel", &Dataset::Cancel},
        {"Delete", &Dataset::Delete}, {"Refresh", &Dataset::Refresh},
        {"Open", &Dataset::Open},     {"Close", &Dataset::Close},
        {"Reopen", &Dataset::Reopen}, {"First", &Dataset::First},
        {"Last", &Dataset::Last},     {"Next", &Dataset::Next},
        {"Prior", &Dataset::Prior},   {"ExecSQL", &Dataset::ExecSQL},
        {"Renew", &Dataset::Renew},   {"DisableControls", &Dataset::DisableControls}};
    std::string verb = test::takeWord(step);
    const auto another = all_.find(verb);
    rows_ = another == all_.end() ? all_.at("").get() : another->second.get();
    if (another != all_.end()) verb = test::takeWord(step);
    if (const auto found = operations.find(verb); found != operations.end()) return (*rows_.*found->second)();
    if (step.starts_with("=")) return (*rows_).SetFieldValue(verb, step.size() > 1 ? step.substr(2) : "");
    if (verb == "open") return open(step);
    if (verb == "filter") return rows_->FilterBy(step);
    if (verb == "text") return rows_->Filter(step);
    if (verb == "filtered") return rows_->Filtered(step == "on");
    if (verb == "typed") return typed(test::takeWord(step), step);
    if (verb == "elsewhere")
      return tool::Database(file->path().string(), tool::Database::Mode::Create).execute(step);
    if (verb == "also") return also(test::takeWord(step), step);
    if (verb == "active") return rows_->Active(step == "on");
    if (verb == "command") return rows_->CommandText(step);
    if (verb == "put") return put((*rows_)[test::takeWord(step)], step);
    if (verb == "param") return put(rows_->ParamByName(test::takeWord(step)), step);
    if (verb == "count" && !step.empty()) return void(rows_->CountOn(std::stoul(step.substr(3))));
    if (verb == "count") return tell(std::to_string(rows_->RecordCount()));
    if (verb == "locate") return locate(test::takeWord(step), step);
    if (verb == "to") return void(rows_->MoveTo(std::stoul(step)));
    if (verb == "counted") return tell(std::to_string(rows_->RecordsCounted()));
    if (verb == "record") return record(std::stoul(test::takeWord(step)), step);
    if (verb == "heard") return tell(std::exchange(ear_.events, 0) ? "yes" : "no");
    if (verb == "written") return tell(std::exchange(written_, here->snapshot())->latest() ? "no" : "yes");
    if (verb == "row") return row(step);
    if (verb == "walk") return tell(walk(*rows_, step.c_str()));
    if (verb != "stored") throw std::runtime_error("no step begins so");
    Connected fresh(here, "select * from Endroit");
    fresh.Open();
    tell(walk(fresh, "Endoit"));
  }

 private:
  void tell(const std::string& seen) { script_.say(seen.empty() ? "(none)" : seen); }
  void open(const std::string& statement) {
    also("", statement);
    rows_ = all_.at("").get();
    source_ = std::make_unique<DataSource>("source", *rows_);
    source_->add(&ear_);
    rows_->Open();
  }
  void also(const std::string& name, const std::string& statement) {
    std::string rest = statement;
    const bool elsewhere = test::takeWord(rest) == "there";
    all_[name] = std::make_unique<Connected>(elsewhere ? there : here, (elsewhere ? rest : statement).c_str(),
                                             std::vector<std::string>{"z"});
  }
  template <class Place>
  void put(Place&& place, const std::string& value) {
    place = test::valueOf(value);
  }
  void locate(const std::string& field, const std::string& value) {
    tell(rows_->Locate(field, test::valueOf(value)) ? "yes" : "no");
  }
  void record(std::size_t number, const std::string& field) {
    tell(rows_->ValueAt(number, static_cast<std::size_t>(rows_->ColumnIndex(field))).text());
  }
  void typed(const std::string& field, const std::string& text) {
    typed_.reset();
    typed_.emplace(*source_, field, text, script_);
  }
  void row(const std::string& fields) {
    const char* const states[] = {"inactive", "browse", "edit", "insert"};
    std::string told = states[static_cast<int>(rows_->State())];
    if (rows_->Active()) told += std::string(rows_->Eof() ? " eof" : "") + (rows_->Bof() ? " bof" : "");
    for (const std::string& field : test::words(fields)) {
      const Value value = rows_->FieldValue(field);
      told += " " + field + "=" + (value.isNull() || value.isBytes() ? test::told(value) : value.text());
    }
    script_.say(told);
  }

  test::Transcript& script_;
  std::map<std::string, std::unique_ptr<Dataset>> all_;
  Dataset* rows_ = nullptr;  // of the step
  std::shared_ptr<const Snapshot> written_;
  Ear ear_;
  std::unique_ptr<DataSource> source_;
  std::optional<TypedText> typed_;
};

[[maybe_unused]] const bool known = test::registerTranscripts(TAVOLINE_CASES, [](test::Transcript& script) {
  Played played(script);
  while (script.next()) script.attempt([&] { played.perform(script.step()); });
});

}  // namespace
}  // namespace tavoline
