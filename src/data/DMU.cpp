#include "data/DMU.h"

#include "data/value/Errors.h"
#include "data/value/Text.h"

namespace tavoline {

TDM* DM = nullptr;

const char TDM::ConnectionString[] =
    "Provider=Microsoft.Jet.OLEDB.4.0;"
    "User ID=Admin;Data Source=BDD.mdb;"
    "Mode=Share Deny None;"
    "Persist Security Info=False;"
    "Jet OLEDB:System database=\"\";"
    "Jet OLEDB:Registry Path=\"\";"
    "Jet OLEDB:Database Password=rainandshine20042011;"
    "Jet OLEDB:Engine Type=5;"
    "Jet OLEDB:Database Locking Mode=1;"
    "Jet OLEDB:Global Partial Bulk Ops=2;"
    "Jet OLEDB:Global Bulk Transactions=1;"
    "Jet OLEDB:New Database Password=\"\";"
    "Jet OLEDB:Create System Database=False;"
    "Jet OLEDB:Encrypt Database=False;"
    "Jet OLEDB:Don't Copy Locale on Compact=False;"
    "Jet OLEDB:Compact Without Replica Repair=False;"
    "Jet OLEDB:SFP=False";

TDM::Named::Named(TDM& dm, const char* name, const char* statement, std::vector<std::string> parameters)
    : Dataset(name, statement, std::move(parameters)) {
  dm.datasets_.push_back(this);
}

TDM::Partner::Partner(TDM& dm, const char* name, Dataset& dataset) : DataSource(name, dataset) {
  dm.partners_.push_back(this);
}

TDM::TDM() : TDM(Store::open(ConnectionString)) {}

TDM::TDM(std::shared_ptr<Store> store) : store_(std::move(store)) {
  reliever_ = std::make_shared<const Store::Reliever>([this](Store::Relief relief) {
    try {
      const auto newest = relief == Store::Relief::None ? nullptr : store_->snapshot();
      for (Dataset* dataset : datasets_) dataset->Settle(newest);
    } catch (const StoreError&) {
      // Some keep their versions; whoever reads the store next is told what ails it.
    }
  });
  store_->relieveBy(reliever_);
  const Store::OneVersion first(*store_);
  for (Dataset* dataset : datasets_) {
    dataset->Connect(store_);
    if (!dataset->IsAction()) dataset->Open();
  }
}

TDM::~TDM() {
  if (DM == this) DM = nullptr;
}

DataSource* TDM::Source(std::string_view name) const {
  for (DataSource* partner : partners_)
    if (sameName(partner->Name(), name)) return partner;
  return nullptr;
}

Dataset* TDM::Find(std::string_view name) const {
  for (Dataset* dataset : datasets_)
    if (dataset->Name() == name) return dataset;
  return nullptr;
}

void TDM::Reopen(std::initializer_list<Dataset*> all) {
  const Store::OneVersion same(*store_);
  for (Dataset* dataset : all) dataset->Reopen();
}

void TDM::Refresh(std::initializer_list<Dataset*> all) {
  const Store::OneVersion same(*store_);
  for (Dataset* dataset : all) dataset->Refresh();
}

std::string TDM::Advice() const {
  return store_->advice();
}

void TDM::Idle() {
  store_->idle();
}

void TDM::GestureDone() {
  store_->pause();
}

}  // namespace tavoline
