// The dialog in which the user finds and chooses players.
#pragma once

#include <wx/stattext.h>
#include <wx/timer.h>

#include <optional>
#include <string>
#include <vector>

#include "devices/address_box.h"
#include "devices/device_list.h"
#include "link/udp_server.h"
#include "widgets/feature_dialog.h"

namespace sontaro {

/// Control numbers of the scan dialog.
inline constexpr int kScanButton = 2301;
inline constexpr int kScanAddress = 2302;
inline constexpr int kScanList = 2303;
inline constexpr int kScanState = 2304;
inline constexpr int kScanAddressState = 2305;

/// What the scan dialog is given beside the services.
struct ScanSetup {
    DeviceRemarks& remarks;
    std::string forcedAddress;  ///< offered first and selected; empty: the remembered one
    std::optional<DeviceRecord> current = std::nullopt;  ///< chosen by itself when it is found
    AddressBox::Source addresses = ScanAddresses;        ///< what is on offer at the moment
};

/// Broadcasts the discovery request from one of this machine's addresses, lists the players that
/// answer and hands on those that the user has chosen.
class CScanForDevices : public FeatureDialog, private ScanActions {
   public:
    CScanForDevices(wxWindow* parent, const UiServices& services, const ScanSetup& setup,
                    ChoiceMode mode);

    /// The chosen players by numeric address, once the dialog has closed with wxID_OK.
    [[nodiscard]] const std::vector<DeviceRecord>& Chosen() const { return chosen_; }

   private:
    void HandleMessage(WindowMessage& message) override;
    [[nodiscard]] bool MayClose() override { return true; }

    bool SendRequest() override;
    void StartTimer() override;
    void StopTimer() override { timer_.Stop(); }
    void DevicesChanged() override;

    void BindEvents();
    [[nodiscard]] wxSizer* MakeAddressRow();
    [[nodiscard]] std::vector<LocalAdapter> AddressesOnOffer() const;
    void ShowFirstAddress();
    void AddressesChanged();
    [[nodiscard]] bool UseAddress();
    void RememberAddress();
    [[nodiscard]] std::string RememberedAddress() const;
    void PressScan();
    void Confirm();
    [[nodiscard]] std::vector<DeviceRecord> Ticked() const;
    void EditRemarks(long row);
    void CopyId(long row);
    void ShowState();
    [[nodiscard]] std::string ListState() const;

    ScanSetup setup_;
    ChoiceMode mode_;
    ScanRun run_;
    CUDPServer socket_;
    std::string openAddress_;
    bool addressByUser_ = false;
    wxTimer timer_;
    std::vector<DeviceRecord> chosen_;
    AddressBox* address_ = nullptr;
    wxStaticText* addressState_ = nullptr;
    wxButton* scanButton_ = nullptr;
    wxStaticText* listState_ = nullptr;
    DeviceList* list_ = nullptr;
};

}  // namespace sontaro
