#include "toolkit/report/preview/PageSetupU.h"

#include <algorithm>
#include <array>

#include "ui_PageSetupU.h"

namespace tavoline {

namespace {

report::PageSetup paper(int size, double width, double height, double margin) {
  report::PageSetup setup;
  setup.paperSize = size;
  setup.width = width;
  setup.height = height;
  setup.landscape = width > height && size == 9;
  setup.marginLeft = setup.marginRight = setup.marginTop = setup.marginBottom = margin;
  return setup;
}

// In the order of the list; whatever is none of them is the last entry.
const std::array<report::PageSetup, 4>& papers() {
  static const std::array<report::PageSetup, 4> list = {paper(256, 85, 130, 0), paper(256, 85, 70, 0),
                                                        paper(9, 210, 297, 10), paper(9, 297, 210, 10)};
  return list;
}

constexpr double kLargestPaper = 1000;  // millimetres

}  // namespace

PageSetupDialog::PageSetupDialog(const report::PageSetup& setup, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::PageSetupDialog>()) {
  ui_->setupUi(this);
  for (QDoubleSpinBox* box : findChildren<QDoubleSpinBox*>()) {
    box->setMinimumHeight(48);
    box->setSuffix(" mm");
    box->setDecimals(1);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setRange(0, kLargestPaper);
    box->setAlignment(Qt::AlignRight);
    connect(box, &QDoubleSpinBox::valueChanged, this, [this] { measured(); });
  }
  for (QLabel* label : findChildren<QLabel*>()) label->setMinimumHeight(48);
  ui_->PaperWidth->setMinimum(10);
  ui_->PaperHeight->setMinimum(10);
  connect(ui_->Paper, &QComboBox::currentIndexChanged, this, [this](int index) { paperChosen(index); });
  connect(ui_->Accept, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->Reject, &QPushButton::clicked, this, &QDialog::reject);
  setSetup(setup);
}

PageSetupDialog::~PageSetupDialog() = default;

void PageSetupDialog::setSetup(const report::PageSetup& setup) {
  setting_ = true;
  ui_->PaperWidth->setValue(setup.width);
  ui_->PaperHeight->setValue(setup.height);
  ui_->LeftMargin->setValue(setup.marginLeft);
  ui_->RightMargin->setValue(setup.marginRight);
  ui_->TopMargin->setValue(setup.marginTop);
  ui_->BottomMargin->setValue(setup.marginBottom);
  setting_ = false;
  measured();
}

report::PageSetup PageSetupDialog::setup() const {
  report::PageSetup setup;
  setup.width = ui_->PaperWidth->value();
  setup.height = ui_->PaperHeight->value();
  setup.marginLeft = ui_->LeftMargin->value();
  setup.marginRight = ui_->RightMargin->value();
  setup.marginTop = ui_->TopMargin->value();
  setup.marginBottom = ui_->BottomMargin->value();
  const bool a4 = std::min(setup.width, setup.height) == 210 && std::max(setup.width, setup.height) == 297;
  setup.paperSize = a4 ? 9 : 256;
  setup.landscape = a4 && setup.width > setup.height;
  return setup;
}

void PageSetupDialog::paperChosen(int index) {
  if (setting_ || index < 0 || static_cast<std::size_t>(index) >= papers().size()) return;
  setSetup(papers()[static_cast<std::size_t>(index)]);
}

void PageSetupDialog::measured() {
  if (setting_) return;
  setting_ = true;
  const report::PageSetup now = setup();
  std::size_t index = 0;
  while (index < papers().size() &&
         (papers()[index].width != now.width || papers()[index].height != now.height))
    ++index;
  ui_->Paper->setCurrentIndex(static_cast<int>(index));
  ui_->Accept->setEnabled(leavesRoom());
  setting_ = false;
}

bool PageSetupDialog::leavesRoom() const {
  const report::PageSetup now = setup();
  return now.marginLeft + now.marginRight < now.width && now.marginTop + now.marginBottom < now.height;
}

}  // namespace tavoline
