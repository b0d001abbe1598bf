// Datasets, played by their operations, over three places (1 a, 2 b, 3 c). The subject of a step is another
// dataset than the first one.

#include <map>
#include <optional>

#include "data/dataset/DatasetFixture.h"
#include "support/Literals.h"
#include "support/StoreFile.h"
#include "support/Verbs.h"

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
    openFirst("select * from Endroit");
    written_ = here->snapshot();
  }
  ~Played() override { typed_.reset(), source_.reset(), written_.reset(), all_.clear(), TearDown(); }
  void TestBody() override {}

  using Operation = std::function<void(Played&, std::string&)>;
  static Operation operation(void (Dataset::*does)()) {
    return [does](Played& played, std::string&) { (played.rows().*does)(); };
  }
  void open(std::string& statement) { openFirst(statement); }
  void also(std::string& statement) {
    const std::string name = test::takeWord(statement);
    add(name, statement);
  }
  void settle(std::string& on) { rows().Settle(on == "none" ? nullptr : here->snapshot()); }
  void active(std::string& step) { rows().Active(step == "on"); }
  void filtered(std::string& step) { rows().Filtered(step == "on"); }
  void text(std::string& filter) { rows().Filter(filter); }
  void filter(std::string& text) { rows().FilterBy(text); }
  void command(std::string& statement) { rows().CommandText(statement); }
  void set(std::string& text) { all_.at("")->SetFieldValue(subject, text); }
  void put(std::string& value) {
    const std::string field = test::takeWord(value);
    rows()[field] = test::valueOf(value);
  }
  void param(std::string& value) {
    const std::string name = test::takeWord(value);
    rows().ParamByName(name) = test::valueOf(value);
  }
  void typed(std::string& text) {
    const std::string field = test::takeWord(text);
    typed_.reset();
    typed_.emplace(*source_, field, text, script_);
  }
  void elsewhere(std::string& statement) { test::sideDoor(file->path()).execute(statement); }
  void row(std::string& fields) {
    const char* const states[] = {"inactive", "browse", "edit", "insert"};
    Dataset& shown = rows();
    std::string told = states[static_cast<int>(shown.State())];
    if (shown.Active()) told += std::string(shown.Eof() ? " eof" : "") + (shown.Bof() ? " bof" : "");
    for (const std::string& field : test::words(fields)) {
      const Value value = rows().FieldValue(field);
      told += " " + field + "=" + (value.isNull() || value.isBytes() ? test::told(value) : value.text());
    }
    script_.say(told);
  }
  void walkOf(std::string& field) { tell(walk(rows(), field.c_str())); }
  void count(std::string& on) {
    if (on.empty()) return tell(std::to_string(rows().RecordCount()));
    rows().CountOn(std::stoul(on.substr(3)));
  }
  void counted(std::string&) { tell(std::to_string(rows().RecordsCounted())); }
  void to(std::string& record) { rows().MoveTo(std::stoul(record)); }
  void locate(std::string& value) {
    const std::string field = test::takeWord(value);
    tell(rows().Locate(field, test::valueOf(value)) ? "yes" : "no");
  }
  void record(std::string& field) {
    const std::size_t number = std::stoul(test::takeWord(field));
    tell(rows().ValueAt(number, static_cast<std::size_t>(rows().ColumnIndex(field))).text());
  }
  void stored(std::string&) {
    Connected fresh(here, "select * from Endroit");
    fresh.Open();
    tell(walk(fresh, "Endoit"));
  }
  void written(std::string&) { tell(std::exchange(written_, here->snapshot())->latest() ? "no" : "yes"); }
  void heard(std::string&) { tell(std::exchange(ear_.events, 0) ? "yes" : "no"); }

  std::string subject;

 private:
  Dataset& rows() { return *all_.at(subject); }
  void tell(const std::string& seen) { script_.say(seen.empty() ? "(none)" : seen); }
  void openFirst(const std::string& statement) {
    source_.reset();  // before the dataset that it was bound to
    add("", statement);
    Dataset& first = *all_.at("");
    source_ = std::make_unique<DataSource>("source", first);
    source_->add(&ear_);
    first.Open();
  }
  void add(const std::string& name, const std::string& statement) {
    std::string rest = statement;
    const bool elsewhere = test::takeWord(rest) == "there";
    all_[name] = std::make_unique<Connected>(elsewhere ? there : here, (elsewhere ? rest : statement).c_str(),
                                             std::vector<std::string>{"z"});
  }

  test::Transcript& script_;
  std::map<std::string, std::unique_ptr<Dataset>> all_;
  std::shared_ptr<const Snapshot> written_;
  Ear ear_;
  std::unique_ptr<DataSource> source_;
  std::optional<TypedText> typed_;
};

const test::Verbs<Played> kVerbs(
    "datasets",
    {{"open STATEMENT", "another dataset instead of that of the places", &Played::open},
     {"also NAME STATEMENT", "one more, to be opened; NAME there STATEMENT at another workstation",
      &Played::also},
     {"[DATASET] Open", "its rows as they stand", Played::operation(&Dataset::Open)},
     {"[DATASET] Close", "it has none", Played::operation(&Dataset::Close)},
     {"[DATASET] Reopen", "both", Played::operation(&Dataset::Reopen)},
     {"[DATASET] Edit", "begins to change the current row", Played::operation(&Dataset::Edit)},
     {"[DATASET] Insert", "begins a row", Played::operation(&Dataset::Insert)},
     {"[DATASET] Post", "keeps what was changed", Played::operation(&Dataset::Post)},
     {"[DATASET] Cancel", "gives it up", Played::operation(&Dataset::Cancel)},
     {"[DATASET] Delete", "deletes the current row", Played::operation(&Dataset::Delete)},
     {"[DATASET] Refresh", "the values of its rows as they stand", Played::operation(&Dataset::Refresh)},
     {"[DATASET] Settle [none]", "moves to the newest version, or with none holds none", &Played::settle},
     {"[DATASET] First", "goes to the first row", Played::operation(&Dataset::First)},
     {"[DATASET] Last", "goes to the last row", Played::operation(&Dataset::Last)},
     {"[DATASET] Next", "goes on by a row", Played::operation(&Dataset::Next)},
     {"[DATASET] Prior", "goes back by a row", Played::operation(&Dataset::Prior)},
     {"[DATASET] ExecSQL", "runs a statement that writes", Played::operation(&Dataset::ExecSQL)},
     {"[DATASET] DisableControls", "keeps controls from being told",
      Played::operation(&Dataset::DisableControls)},
     {"[DATASET] active STATE", "on or off", &Played::active},
     {"[DATASET] filter TEXT", "shows only these rows", &Played::filter},
     {"[DATASET] text TEXT", "the text of its filter", &Played::text},
     {"[DATASET] filtered STATE", "on or off", &Played::filtered},
     {"[DATASET] command STATEMENT", "gives it a new text", &Played::command},
     {"[DATASET] param NAME VALUE", "sets a parameter; all datasets declare a z", &Played::param},
     {"[DATASET] put FIELD VALUE", "sets a field", &Played::put},
     {"FIELD = TEXT", "sets a field of the first dataset by a text", &Played::set},
     {"typed FIELD TEXT", "a bound control holds a text that waits for the field", &Played::typed},
     {"elsewhere SQL", "another workstation writes", &Played::elsewhere},
     {"[DATASET] row FIELD...", "state and current row; eof and bof where they hold", &Played::row},
     {"[DATASET] walk FIELD", "what a walk from First to the end shows", &Played::walkOf},
     {"[DATASET] count [on] [N]", "how many records there are; counts on by so many", &Played::count},
     {"[DATASET] counted", "how many records are known so far", &Played::counted},
     {"[DATASET] to N", "goes to a record by its number", &Played::to},
     {"[DATASET] locate FIELD VALUE", "whether it goes to the first row that has this", &Played::locate},
     {"[DATASET] record N FIELD", "a field of a record by its number", &Played::record},
     {"stored", "the places in the store", &Played::stored},
     {"written", "whether anything was written since that was asked", &Played::written},
     {"heard", "whether controls were told anything since that was asked", &Played::heard}});
[[maybe_unused]] const bool known = kVerbs.registerTranscripts(TAVOLINE_CASES);

}  // namespace
}  // namespace tavoline
