#include "devices/scan_panel.h"

#include <fmt/printf.h>
#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>

#include "base/json.h"
#include "link/discovery.h"
#include "widgets/fonts.h"
#include "widgets/icons.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kScanTimer = 4;
constexpr int kTickMilliseconds = 1000;

constexpr LocalText kLocalIp = {"本机IP：", "Local IP:"};
constexpr LocalText kHint = {"右键点击拷贝ID号到剪切板；双击修改备注",
                             "Right-click to copy ID number to clipboard;Double click to modify "
                             "remarks"};
constexpr LocalText kNoAddress = {
    "本机没有可用的网络地址。请连接网线或启用网卡，或者在“本机IP”中输入要使用的地址。",
    "This computer has no network address to scan from. Connect a network cable or enable an "
    "adapter, or type an address into \"Local IP\"."};
constexpr LocalText kUnusableAddress = {
    "无法使用此本机IP。它可能已不属于这台计算机，请选择其他地址。",
    "This local IP cannot be used. It may no longer belong to this computer; please choose "
    "another one."};
constexpr LocalText kAddressVanished = {"此地址当前不在本机上", "Not on this computer at present"};
constexpr LocalText kPressScan = {"请按“%s”查找播放器。", "Press \"%s\" to look for players."};
constexpr LocalText kNobodyAnswered = {"没有找到播放器。请按“%s”，并确认播放器已开机且在同一网络。",
                                       "No players found. Press \"%s\" and make sure that the "
                                       "players are switched on and in this network."};
constexpr LocalText kNotAsked = {"无法从此本机IP发出查找请求。请检查网络连接，或选择其他地址。",
                                 "The request cannot be sent from this local IP. Check the network "
                                 "connection, or choose another address."};
constexpr LocalText kOpening = {"正在寻找播放器…", "Looking for players…"};
constexpr LocalText kScanning = {"正在查找，已找到 %d 台播放器",
                                 "Scanning, %d player(s) found so far"};
constexpr LocalText kFound = {"找到 %d 台播放器", "%d player(s) found"};
constexpr LocalText kFullStop = {"。", "."};
constexpr LocalText kConflict = {"有多台播放器使用同一IP地址，请更改其中的地址。",
                                 " Several answer at one IP address: give each its own."};
constexpr LocalText kSilent = {"有打勾的播放器没有应答。", " A ticked one has not answered."};

}  // namespace

ScanPanel::ScanPanel(wxWindow* parent, const UiServices& services, const ScanSetup& setup,
                     ScanDesign design)
    : wxPanel(parent),
      services_(services),
      setup_(setup),
      design_(std::move(design)),
      run_(*this, setup_.remarks, design_.scanStyle),
      socket_(TitleOf(design_.window), services_.link),
      timer_(this, kScanTimer) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    const int gap = FromDIP(10);
    column->Add(MakeAddressRow(), wxSizerFlags().Expand().Border(wxALL, gap));
    list_ = new DeviceList(this, design_.list, design_.listStyle, run_, setup_.remarks,
                           services_.Messages());
    column->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, gap));
    column->Add(MakeStateRow(), wxSizerFlags().Expand().Border(wxALL, gap));
    auto* hint = new wxStaticText(this, wxID_ANY, ToWx(kHint));
    hint->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    column->Add(hint, wxSizerFlags().Border(wxLEFT | wxRIGHT, gap));
    SetSizer(column);
    setup_.remarks.Reload();
    address_->Reread();
    ShowFirstAddress();
    BindEvents();
    DevicesChanged();
}

wxSizer* ScanPanel::MakeAddressRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto centred = wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8));
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kLocalIp)), centred);
    address_ = new AddressBox(this, design_.addressBox, [this] { return AddressesOnOffer(); });
    row->Add(address_, centred);
    scanButton_ = new wxButton(this, design_.scanButton, ButtonLabel(run_.ButtonText(), 'S'));
    scanButton_->SetBitmap(LineIcon("scan", 18));
    scanButton_->SetMinSize(wxSize(24 * LetterWidth(*this), scanButton_->GetBestSize().y));
    row->Add(scanButton_, centred);
    addressState_ = new wxStaticText(this, design_.addressState, "");
    row->Add(addressState_, wxSizerFlags(1).CentreVertical());
    return row;
}

wxSizer* ScanPanel::MakeStateRow() {
    stateRow_ = new wxBoxSizer(wxHORIZONTAL);
    listState_ = new wxStaticText(this, design_.listState, "");
    stateRow_->Add(listState_, wxSizerFlags(1).CentreVertical());
    return stateRow_;
}

void ScanPanel::AddButton(int id, const LocalText& text, char key, std::function<void()> action) {
    auto* button = new wxButton(this, id, ButtonLabel(text, key));
    button->Bind(wxEVT_BUTTON, [act = std::move(action)](wxCommandEvent&) { act(); });
    stateRow_->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(8)));
    buttons_.push_back(button);
}

void ScanPanel::BindEvents() {
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { run_.Tick(); }, kScanTimer);
    scanButton_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { PressScan(); });
    address_->Bind(wxEVT_COMBOBOX_DROPDOWN, [this](wxCommandEvent&) {
        CallAfter([this] {
            address_->RereadOpenList();
            AddressesChanged();
        });
    });
    address_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
        addressByUser_ = true;
        AddressesChanged();
    });
    address_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) {
        addressByUser_ = true;
        RememberAddress();
        AddressesChanged();
    });
}

std::vector<LocalAdapter> ScanPanel::AddressesOnOffer() const {
    const std::string& forced = setup_.forcedAddress;
    std::vector<LocalAdapter> addresses = setup_.addresses();
    const bool offered = std::ranges::find(addresses, forced, &LocalAdapter::ip) != addresses.end();
    if (!forced.empty() && !offered) addresses.insert(addresses.begin(), {"", forced, 0});
    return addresses;
}

void ScanPanel::ShowFirstAddress() {
    const std::string& forced = setup_.forcedAddress;
    address_->ShowAddress(
        forced.empty() ? ChooseLocalAddress(address_->Offered(), RememberedAddress()) : forced);
    AddressesChanged();
}

void ScanPanel::AddressesChanged() {
    const std::string ip = address_->Address();
    const bool vanished = ParseIpv4(ip).has_value() && !IsLocalAddress(ip);
    addressState_->SetLabelText(vanished ? ToWx(kAddressVanished) : "");
    ShowState();
}

/// Has the socket open on the address that is shown.
bool ScanPanel::UseAddress() {
    const std::string ip = address_->Address();
    if (ip == openAddress_ && socket_.IsConnected()) return true;
    socket_.Close();
    openAddress_ = ip;
    return socket_.Open(ip);
}

/// Keeps the address that is shown for the next time, when the user has chosen it or it has served.
void ScanPanel::RememberAddress() {
    const std::string ip = address_->Address();
    if (ip == setup_.forcedAddress || ip == RememberedAddress()) return;
    const Status written =
        services_.preferences.Update([&](Json::Value& root) { root[kLocalAddressKey] = ip; });
    static_cast<void>(written);  // the next run asks again: nothing else is lost
}

std::string ScanPanel::RememberedAddress() const {
    const JsonFile& preferences = services_.preferences;
    const Json::Value& remembered = preferences.Root()[kLocalAddressKey];
    return remembered.isString() ? TextOf(remembered) : "";
}

void ScanPanel::PressScan() {
    if (!run_.IsScanning()) {
        address_->Reread();  // the cable may be back, and a list without entries does not open
        if (address_->Address().empty()) ShowFirstAddress();
        if (address_->Address().empty()) return services_.Messages().Warn(Localized(kNoAddress));
        if (!UseAddress()) return services_.Messages().Warn(Localized(kUnusableAddress));
        if (addressByUser_) RememberAddress();
    }
    run_.PressScan();
}

void ScanPanel::EndScan() {
    if (run_.IsScanning()) run_.PressScan();
    socket_.Close();
}

void ScanPanel::FocusScanButton() { scanButton_->SetFocus(); }

bool ScanPanel::SendRequest() {
    return UseAddress() && SendDiscovery(socket_, kBroadcastAddress, design_.request);
}

void ScanPanel::StartTimer() { timer_.Start(kTickMilliseconds); }

void ScanPanel::StopTimer() {
    timer_.Stop();
    if (design_.socketOnlyInScans) socket_.Close();
}

void ScanPanel::DevicesChanged() {
    const bool scans = run_.IsScanning();
    if (design_.ticksHiddenInScans) list_->ShowTicks(!scans);
    list_->ShowDevices();
    ShowState();
    scanButton_->SetLabel(ButtonLabel(run_.ButtonText(), 'S'));
    address_->Enable(!scans);
    for (wxButton* button : buttons_) button->Enable(!scans);
}

void ScanPanel::ShowState() { listState_->SetLabelText(ToWx(ListState())); }

std::string ScanPanel::ListState() const {
    const auto& devices = run_.Devices();
    const auto silent = std::ranges::count_if(devices, &DeviceRecord::silent);
    const auto count = static_cast<int>(devices.size()) - static_cast<int>(silent);
    const std::string scan = Localized(design_.scanStyle.scan);
    if (run_.IsScanning()) return fmt::sprintf(Localized(kScanning), count);
    if (!run_.HasAsked() && address_->Offered().empty()) return Localized(kNoAddress);
    if (run_.IsOpening()) return Localized(kOpening);
    if (!run_.HasTried()) return fmt::sprintf(Localized(kPressScan), scan);
    if (!run_.HasAsked()) return Localized(kNotAsked);
    if (devices.empty()) return fmt::sprintf(Localized(kNobodyAnswered), scan);
    const bool conflict = std::ranges::any_of(devices, &DeviceRecord::sharesAddress);
    return fmt::sprintf(Localized(kFound), count) +
           (conflict || silent > 0 ? Localized(kFullStop) : "") +
           (conflict ? Localized(kConflict) : "") + (silent > 0 ? Localized(kSilent) : "");
}

void ScanPanel::Take(const WindowMessage& message) {
    const auto* event = std::get_if<UdpEvent>(&message.record);
    if (!event) return;
    if (event->code == LinkCode::kShortSend) run_.RequestFailed();
    if (event->code == LinkCode::kReceived && run_.Receive(event->bytes) &&
        address_->Address() == openAddress_)
        RememberAddress();
}

}  // namespace sontaro
