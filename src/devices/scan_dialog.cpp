#include "devices/scan_dialog.h"

#include <wx/gdicmn.h>

#include <algorithm>

#include "link/discovery.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"

namespace sontaro {

namespace {

constexpr const char* kWindowName = "scan";
constexpr ScanStyle kScanStyle = {
    {"查找设备", "Scan"}, {"停止查找", "Stop"}, {"停止查找(%d)", "Stop(%d)"}};

ScanDesign DesignFor(ChoiceMode mode) {
    return {Window::kScan, kScanAddress, kScanAddressState,
            kScanButton,   kScanList,    kScanState,
            {mode},        kScanStyle,   DiscoveryRequest(kBroadcastAddress)};
}

}  // namespace

CScanForDevices::CScanForDevices(wxWindow* parent, const UiServices& services,
                                 const ScanSetup& setup, ChoiceMode mode)
    : FeatureDialog(parent, Window::kScan, services), mode_(mode) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    panel_ = new ScanPanel(this, Services(), setup, DesignFor(mode));
    column->Add(panel_, wxSizerFlags(1).Expand());
    column->Add(MakeButtonRow(true, kCancelText),
                wxSizerFlags().Expand().Border(wxALL, FromDIP(10)));
    SetSizer(column);
    SetMinClientSize(wxSize(70 * LetterWidth(*this), 20 * GetCharHeight()));
    SetClientSize(160 * LetterWidth(*this), 24 * GetCharHeight());
    wxSize size = GetSize();
    size.DecTo(wxGetClientDisplayRect().GetSize());
    SetSize(size);
    CentreOnParent();
    RestorePlace(kWindowName, &panel_->List());
    panel_->List().FitColumns();
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); }, wxID_OK);
    panel_->AskAtOnce();
    panel_->DevicesChanged();
    panel_->FocusScanButton();
}

void CScanForDevices::Confirm() {
    // Players answer while a question is open: what the user has seen is what is handed on.
    const std::vector<DeviceRecord> chosen = panel_->Run().Chosen();
    if (const auto refusal = RefusalOfChoice(mode_, chosen.size())) {
        Services().Messages().Warn(Localized(*refusal));
        return;
    }
    const std::string local = panel_->Address();
    const bool reachable = std::ranges::all_of(
        chosen, [&](const DeviceRecord& device) { return IsSameNetwork(local, device.ip); });
    if (!reachable && !Services().Messages().Confirm(Localized(kOtherNetworkQuestion))) return;
    chosen_ = chosen;
    EndModal(wxID_OK);
}

}  // namespace sontaro
