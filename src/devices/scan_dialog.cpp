#include "devices/scan_dialog.h"

#include <fmt/printf.h>
#include <wx/button.h>
#include <wx/gdicmn.h>
#include <wx/settings.h>

#include <algorithm>

#include "base/json.h"
#include "devices/remarks_dialog.h"
#include "link/discovery.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/icons.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kScanTimer = 4;
constexpr int kTickMilliseconds = 1000;
constexpr const char* kWindowName = "scan";
constexpr const char* kLocalAddressKey = "localAddress";

constexpr LocalText kLocalIp = {"本机IP：", "Local IP:"};
constexpr LocalText kHint = {"右键点击拷贝ID号到剪切板；双击修改备注",
                             "Right-click to copy ID number to clipboard;Double click to modify "
                             "remarks"};
constexpr LocalText kIdCopied = {"ID号已经拷贝到剪切板",
                                 "ID number has been copied to the Clipboard"};
constexpr LocalText kNoAddress = {
    "本机没有可用的网络地址。请连接网线或启用网卡，或者在“本机IP”中输入要使用的地址。",
    "This computer has no network address to scan from. Connect a network cable or enable an "
    "adapter, or type an address into \"Local IP\"."};
constexpr LocalText kUnusableAddress = {
    "无法使用此本机IP。它可能已不属于这台计算机，请选择其他地址。",
    "This local IP cannot be used. It may no longer belong to this computer; please choose "
    "another one."};
constexpr LocalText kAddressVanished = {"此地址当前不在本机上", "Not on this computer at present"};
constexpr LocalText kNobodyAnswered = {
    "没有找到播放器。请按“查找设备”，并确认播放器已开机且在同一网络。",
    "No players found. Press \"Scan\" and make sure that the "
    "players are switched on and in this network."};
constexpr LocalText kNotAsked = {"无法从此本机IP发出查找请求。请检查网络连接，或选择其他地址。",
                                 "The request cannot be sent from this local IP. Check the network "
                                 "connection, or choose another address."};
constexpr LocalText kOpening = {"正在寻找播放器…", "Looking for players…"};
constexpr LocalText kScanning = {"正在查找，已找到 %d 台播放器",
                                 "Scanning, %d player(s) found so far"};
constexpr LocalText kFound = {"找到 %d 台播放器", "%d player(s) found"};
constexpr LocalText kConflict = {"。有多台播放器使用同一IP地址，请更改其中的地址。",
                                 ". Several answer at one IP address: give each its own."};
constexpr LocalText kRemarksNotSaved = {"备注没有保存！", "The remarks could not be saved!"};

}  // namespace

CScanForDevices::CScanForDevices(wxWindow* parent, const UiServices& services,
                                 const ScanSetup& setup, ChoiceMode mode)
    : FeatureDialog(parent, Window::kScan, services),
      setup_(setup),
      mode_(mode),
      run_(*this, setup.remarks),
      socket_(TitleOf(Window::kScan), services.link),
      timer_(this, kScanTimer) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    const int gap = FromDIP(10);
    column->Add(MakeAddressRow(), wxSizerFlags().Expand().Border(wxALL, gap));
    list_ = new DeviceList(this, kScanList, mode_, run_, Services().Messages());
    column->Add(list_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, gap));
    listState_ = new wxStaticText(this, kScanState, "");
    column->Add(listState_, wxSizerFlags().Expand().Border(wxALL, gap));
    auto* hint = new wxStaticText(this, wxID_ANY, ToWx(kHint));
    hint->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    column->Add(hint, wxSizerFlags().Border(wxLEFT | wxRIGHT, gap));
    column->Add(MakeButtonRow(true, kCancelText), wxSizerFlags().Expand().Border(wxALL, gap));
    SetSizer(column);
    SetMinClientSize(wxSize(70 * LetterWidth(*this), 20 * GetCharHeight()));
    SetClientSize(160 * LetterWidth(*this), 24 * GetCharHeight());
    wxSize size = GetSize();
    size.DecTo(wxGetClientDisplayRect().GetSize());
    SetSize(size);
    CentreOnParent();
    RestorePlace(kWindowName, list_);
    list_->FitColumns();
    setup_.remarks.Reload();
    address_->Reread();
    ShowFirstAddress();
    BindEvents();
    run_.Opened(setup_.current);
    DevicesChanged();
    scanButton_->SetFocus();
}

wxSizer* CScanForDevices::MakeAddressRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto centred = wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(8));
    row->Add(new wxStaticText(this, wxID_ANY, ToWx(kLocalIp)), centred);
    address_ = new AddressBox(this, kScanAddress, [this] { return AddressesOnOffer(); });
    row->Add(address_, centred);
    scanButton_ = new wxButton(this, kScanButton, ButtonLabel(run_.ButtonText(), 'S'));
    scanButton_->SetBitmap(LineIcon("scan", 18));
    scanButton_->SetMinSize(wxSize(24 * LetterWidth(*this), scanButton_->GetBestSize().y));
    row->Add(scanButton_, centred);
    addressState_ = new wxStaticText(this, kScanAddressState, "");
    row->Add(addressState_, wxSizerFlags(1).CentreVertical());
    return row;
}

void CScanForDevices::BindEvents() {
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { run_.Tick(); }, kScanTimer);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); }, wxID_OK);
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
    list_->Bind(wxEVT_LIST_ITEM_ACTIVATED,
                [this](wxListEvent& event) { EditRemarks(event.GetIndex()); });
    list_->Bind(wxEVT_LIST_ITEM_RIGHT_CLICK,
                [this](wxListEvent& event) { CopyId(event.GetIndex()); });
}

std::vector<LocalAdapter> CScanForDevices::AddressesOnOffer() const {
    const std::string& forced = setup_.forcedAddress;
    std::vector<LocalAdapter> addresses = setup_.addresses();
    const bool offered = std::ranges::find(addresses, forced, &LocalAdapter::ip) != addresses.end();
    if (!forced.empty() && !offered) addresses.insert(addresses.begin(), {"", forced, 0});
    return addresses;
}

void CScanForDevices::ShowFirstAddress() {
    const std::string& forced = setup_.forcedAddress;
    address_->ShowAddress(
        forced.empty() ? ChooseLocalAddress(address_->Offered(), RememberedAddress()) : forced);
    AddressesChanged();
}

void CScanForDevices::AddressesChanged() {
    const std::string ip = address_->Address();
    const bool vanished = ParseIpv4(ip).has_value() && !IsLocalAddress(ip);
    addressState_->SetLabelText(vanished ? ToWx(kAddressVanished) : "");
    ShowState();
}

/// Has the socket open on the address that is shown.
bool CScanForDevices::UseAddress() {
    const std::string ip = address_->Address();
    if (ip == openAddress_ && socket_.IsConnected()) return true;
    socket_.Close();
    openAddress_ = ip;
    return socket_.Open(ip);
}

/// Keeps the address that is shown for the next time, when the user has chosen it or it has served.
void CScanForDevices::RememberAddress() {
    const std::string ip = address_->Address();
    if (ip == setup_.forcedAddress || ip == RememberedAddress()) return;
    const Status written =
        Services().preferences.Update([&](Json::Value& root) { root[kLocalAddressKey] = ip; });
    static_cast<void>(written);  // the next run asks again: nothing else is lost
}

std::string CScanForDevices::RememberedAddress() const {
    const JsonFile& preferences = Services().preferences;
    const Json::Value& remembered = preferences.Root()[kLocalAddressKey];
    return remembered.isString() ? TextOf(remembered) : "";
}

void CScanForDevices::PressScan() {
    if (!run_.IsScanning()) {
        address_->Reread();  // the cable may be back, and a list without entries does not open
        if (address_->Address().empty()) ShowFirstAddress();
        if (address_->Address().empty()) return Services().Messages().Warn(Localized(kNoAddress));
        if (!UseAddress()) return Services().Messages().Warn(Localized(kUnusableAddress));
        if (addressByUser_) RememberAddress();
    }
    run_.PressScan();
}

bool CScanForDevices::SendRequest() {
    return UseAddress() && SendDiscovery(socket_, kBroadcastAddress);
}

void CScanForDevices::StartTimer() { timer_.Start(kTickMilliseconds); }

void CScanForDevices::DevicesChanged() {
    list_->ShowDevices();
    ShowState();
    scanButton_->SetLabel(ButtonLabel(run_.ButtonText(), 'S'));
    address_->Enable(!run_.IsScanning());
}

void CScanForDevices::ShowState() { listState_->SetLabelText(ToWx(ListState())); }

std::string CScanForDevices::ListState() const {
    const auto& devices = run_.Devices();
    const auto count = static_cast<int>(devices.size());
    if (run_.IsScanning()) return fmt::sprintf(Localized(kScanning), count);
    if (!run_.HasAsked() && address_->Offered().empty()) return Localized(kNoAddress);
    if (run_.IsOpening()) return Localized(kOpening);
    if (!run_.HasAsked()) return Localized(kNotAsked);
    if (devices.empty()) return Localized(kNobodyAnswered);
    const bool conflict = std::ranges::any_of(devices, &DeviceRecord::sharesAddress);
    return fmt::sprintf(Localized(kFound), count) + (conflict ? Localized(kConflict) : "");
}

void CScanForDevices::HandleMessage(WindowMessage& message) {
    const auto* event = std::get_if<UdpEvent>(&message.record);
    if (!event) return;
    if (event->code == LinkCode::kShortSend) run_.RequestFailed();
    if (event->code == LinkCode::kReceived && run_.Receive(event->bytes) &&
        address_->Address() == openAddress_)
        RememberAddress();
}

std::vector<DeviceRecord> CScanForDevices::Ticked() const {
    std::vector<DeviceRecord> chosen;
    std::ranges::copy_if(run_.Devices(), std::back_inserter(chosen), &DeviceRecord::ticked);
    SortDevices(chosen, DeviceColumn::kIp, true);
    return chosen;
}

void CScanForDevices::Confirm() {
    // Players answer while a question is open: what the user has seen is what is handed on.
    const std::vector<DeviceRecord> chosen = Ticked();
    if (const auto refusal = RefusalOfChoice(mode_, chosen.size())) {
        Services().Messages().Warn(Localized(*refusal));
        return;
    }
    const std::string local = address_->Address();
    const bool reachable = std::ranges::all_of(
        chosen, [&](const DeviceRecord& device) { return IsSameNetwork(local, device.ip); });
    if (!reachable && !Services().Messages().Confirm(Localized(kOtherNetworkQuestion))) return;
    chosen_ = chosen;
    EndModal(wxID_OK);
}

void CScanForDevices::EditRemarks(long row) {
    const DeviceRecord* player = list_->PlayerAt(row);
    if (!player) return;
    DeviceRecord device = *player;
    setup_.remarks.Reload();
    setup_.remarks.ApplyTo(device);  // another program may have changed them meanwhile
    const auto keep = [&](const std::string& remarks) {
        const Status kept = setup_.remarks.SetRemarks(device.mac, remarks);
        static_cast<void>(kept);  // there is no one left to tell
    };
    while (const auto remarks = AskForRemarks(this, device, keep)) {
        if (setup_.remarks.SetRemarks(device.mac, *remarks)) {
            run_.RemarksChanged();
            return;
        }
        Services().Messages().Warn(Localized(kRemarksNotSaved));
        device.remarks = *remarks;  // what was typed is not lost with the attempt
    }
}

void CScanForDevices::CopyId(long row) {
    const DeviceRecord* player = list_->PlayerAt(row);
    if (player != nullptr && list_->Copy(ToWx(player->id)))
        Services().Messages().Inform(Localized(kIdCopied));
}

}  // namespace sontaro
