#include "devices/screen_split_select_device.h"

#include <wx/sizer.h>

#include "link/discovery.h"
#include "widgets/fonts.h"

namespace sontaro {

namespace {

constexpr ScanStyle kScanStyle = {
    {"更新设备列表", "Scan"}, {"停止", "Stop"}, {"停止(%d)", "Stop(%d)"}, true};
constexpr LocalText kSelectAll = {"全选", "Select all"};
constexpr LocalText kSelectNone = {"全不选", "Select none"};
constexpr LocalText kRemarks = {"备注...", "Remarks..."};

ScanDesign Design() {
    const DeviceListStyle list{ChoiceMode::kMultiple, SortableWidths(ReadSystemVersion()), true};
    return {Window::kSelectDevices,
            kSplitAddress,
            kSplitAddressState,
            kSplitScan,
            kSplitList,
            kSplitListState,
            list,
            kScanStyle,
            ShortDiscoveryRequest(),
            true,
            true};
}

}  // namespace

CScreenSplitSelectDevice::CScreenSplitSelectDevice(WizardDialog& wizard, const ScanSetup& setup)
    : WizardPage(wizard, Window::kSelectDevices), prompts_(wizard.Services().Messages()) {
    panel_ = new ScanPanel(this, wizard.Services(), setup, Design());
    AddButtons();
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(panel_, wxSizerFlags(1).Expand().Border(wxBOTTOM, FromDIP(10)));
    column->SetMinSize(150 * LetterWidth(*this), 24 * GetCharHeight());
    SetSizer(column);
}

void CScreenSplitSelectDevice::AddButtons() {
    const auto tick = [this](void (ScanRun::*choose)()) {
        (panel_->Run().*choose)();
        panel_->DevicesChanged();
    };
    panel_->AddButton(kSplitSelectAll, kSelectAll, 'a', [=] { tick(&ScanRun::ChooseAll); });
    panel_->AddButton(kSplitSelectNone, kSelectNone, 'e', [=] { tick(&ScanRun::ChooseNone); });
    panel_->AddButton(kSplitRemarks, kRemarks, 'R',
                      [this] { panel_->List().EditHighlightedRemarks(); });
}

bool CScreenSplitSelectDevice::GoOn() {
    std::vector<DeviceRecord> chosen = panel_->Run().Chosen();
    if (const auto refusal = RefusalOfWall(chosen)) {
        prompts_.Warn(Localized(*refusal));
        return false;
    }
    chosen_ = std::move(chosen);
    return true;
}

}  // namespace sontaro
