// Where players are found and chosen.
#pragma once

#include <wx/panel.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <functional>
#include <string>
#include <vector>

#include "base/window_titles.h"
#include "devices/address_box.h"
#include "devices/device_list.h"
#include "link/udp_server.h"
#include "widgets/ui_services.h"

class wxButton;
class wxSizer;

namespace sontaro {

/// What a window in which players are chosen is given beside the services.
struct ScanSetup {
    DeviceRemarks& remarks;
    std::string forcedAddress;  ///< offered first and selected; empty: the remembered one
    std::optional<DeviceRecord> current = std::nullopt;  ///< chosen by itself when it is found
    AddressBox::Source addresses = ScanAddresses;        ///< what is on offer at the moment
};

/// What the windows in which players are chosen differ in.
struct ScanDesign {
    Window window{};  ///< that the socket's events go to
    int addressBox = 0;
    int addressState = 0;
    int scanButton = 0;
    int list = 0;
    int listState = 0;
    DeviceListStyle listStyle;
    ScanStyle scanStyle;
    Bytes request;                   ///< that is broadcast
    bool socketOnlyInScans = false;  ///< otherwise it stays open for what answers late
    bool ticksHiddenInScans = false;
};

/// The local address, the scan button, and the list of the players that have answered. Owns the
/// socket. User-interface thread.
class ScanPanel : public wxPanel, private ScanActions {
   public:
    ScanPanel(wxWindow* parent, const UiServices& services, const ScanSetup& setup,
              ScanDesign design);

    /// Adds a button beside the line below the list, which cannot be pressed during a scan.
    void AddButton(int id, const LocalText& text, char key, std::function<void()> action);

    /// Asks once without being told to; ticks the setup's current player when it answers.
    void AskAtOnce() { run_.Opened(setup_.current); }

    /// A message to the window: an event of the socket, or none of this panel's.
    void Take(const WindowMessage& message);

    /// Ends a scan, if there is one, and closes the socket.
    void EndScan();

    /// The local address that is shown; empty when there is none.
    [[nodiscard]] std::string Address() const { return address_->Address(); }
    [[nodiscard]] ScanRun& Run() { return run_; }
    [[nodiscard]] DeviceList& List() { return *list_; }
    void FocusScanButton();

    /// Shows the devices as they are now.
    void DevicesChanged() override;

   private:
    bool SendRequest() override;
    void StartTimer() override;
    void StopTimer() override;

    [[nodiscard]] wxSizer* MakeAddressRow();
    [[nodiscard]] wxSizer* MakeStateRow();
    void BindEvents();
    [[nodiscard]] std::vector<LocalAdapter> AddressesOnOffer() const;
    void ShowFirstAddress();
    void AddressesChanged();
    [[nodiscard]] bool UseAddress();
    void RememberAddress();
    [[nodiscard]] std::string RememberedAddress() const;
    void PressScan();
    void ShowState();
    [[nodiscard]] std::string ListState() const;

    UiServices services_;
    ScanSetup setup_;
    const ScanDesign design_;
    ScanRun run_;
    CUDPServer socket_;
    std::string openAddress_;
    bool addressByUser_ = false;
    wxTimer timer_;
    AddressBox* address_ = nullptr;
    wxStaticText* addressState_ = nullptr;
    wxButton* scanButton_ = nullptr;
    wxSizer* stateRow_ = nullptr;
    wxStaticText* listState_ = nullptr;
    DeviceList* list_ = nullptr;
    std::vector<wxButton*> buttons_;  // of the owner
};

}  // namespace sontaro
