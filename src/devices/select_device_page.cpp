#include "devices/select_device_page.h"

#include <wx/sizer.h>

#include <utility>

#include "widgets/fonts.h"

namespace sontaro {

namespace {

constexpr ScanStyle kScanStyle = {
    {"更新设备列表", "Scan"}, {"停止", "Stop"}, {"停止(%d)", "Stop(%d)"}, true};
constexpr LocalText kSelectAll = {"全选", "Select all"};
constexpr LocalText kSelectNone = {"全不选", "Select none"};
constexpr LocalText kRemarks = {"备注...", "Remarks..."};

/// What these pages have in common.
ScanDesign WithTicks(ScanDesign design) {
    design.listStyle = {ChoiceMode::kMultiple, SortableWidths(ReadSystemVersion()), true};
    design.scanStyle = kScanStyle;
    design.socketOnlyInScans = design.ticksHiddenInScans = true;
    return design;
}

}  // namespace

SelectDevicePage::SelectDevicePage(WizardDialog& wizard, const ScanSetup& setup,
                                   SelectDeviceDesign design)
    : WizardPage(wizard, design.scan.window),
      prompts_(wizard.Services().Messages()),
      design_(std::move(design)) {
    panel_ = new ScanPanel(this, wizard.Services(), setup, WithTicks(design_.scan));
    AddButtons();
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(panel_, wxSizerFlags(1).Expand().Border(wxBOTTOM, FromDIP(10)));
    column->SetMinSize(150 * LetterWidth(*this), 24 * GetCharHeight());
    SetSizer(column);
}

void SelectDevicePage::AddButtons() {
    const auto tick = [this](void (ScanRun::*choose)()) {
        (panel_->Run().*choose)();
        panel_->DevicesChanged();
    };
    panel_->AddButton(design_.selectAll, kSelectAll, 'a', [=] { tick(&ScanRun::ChooseAll); });
    panel_->AddButton(design_.selectNone, kSelectNone, 'e', [=] { tick(&ScanRun::ChooseNone); });
    panel_->AddButton(design_.remarks, kRemarks, 'R',
                      [this] { panel_->List().EditHighlightedRemarks(); });
}

bool SelectDevicePage::GoOn() {
    std::vector<DeviceRecord> chosen = panel_->Run().Chosen();
    if (const auto refusal = design_.refusal(chosen)) {
        prompts_.Warn(Localized(*refusal));
        return false;
    }
    chosen_ = std::move(chosen);
    return true;
}

}  // namespace sontaro
