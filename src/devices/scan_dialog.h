// The dialog in which the user finds and chooses players.
#pragma once

#include <wx/combobox.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include <string>
#include <vector>

#include "devices/device_list.h"
#include "link/local_adapters.h"
#include "link/udp_server.h"
#include "widgets/feature_dialog.h"

namespace sontaro {

/// Control numbers of the scan dialog.
inline constexpr int kScanButton = 2301;
inline constexpr int kScanAddress = 2302;
inline constexpr int kScanList = 2303;

/// What the scan dialog is given beside the services.
struct ScanSetup {
    DeviceRemarks& remarks;
    std::string forcedAddress;  ///< offered first and selected; empty: the remembered one
};

/// Broadcasts the discovery request from one of this machine's addresses, lists the players that
/// answer and hands on those that the user has chosen.
class CScanForDevices : public FeatureDialog, private ScanActions {
   public:
    CScanForDevices(wxWindow* parent, const UiServices& services, const ScanSetup& setup,
                    ChoiceMode mode);
    ~CScanForDevices() override;

    /// The chosen players by numeric address, once the dialog has closed with wxID_OK.
    [[nodiscard]] std::vector<DeviceRecord> Chosen() const;

   private:
    void HandleMessage(WindowMessage& message) override;
    [[nodiscard]] bool MayClose() override { return true; }

    bool SendRequest() override;
    void StartTimer() override;
    void StopTimer() override { timer_.Stop(); }
    void DevicesChanged() override;

    void BindEvents();
    void OfferAddresses();
    [[nodiscard]] wxSizer* MakeAddressRow();
    void PressScan();
    void Confirm();
    void EditRemarks(long row);
    void CopyId(long row);
    [[nodiscard]] bool UseAddress();
    [[nodiscard]] std::string RememberedAddress() const;
    void ShowAddressState();
    [[nodiscard]] wxString ListState() const;

    ScanSetup setup_;
    ChoiceMode mode_;
    std::vector<LocalAdapter> offered_;
    ScanRun run_;
    CUDPServer socket_;
    std::string openAddress_;
    wxTimer timer_;
    wxComboBox* address_ = nullptr;
    wxStaticText* addressState_ = nullptr;
    wxButton* scanButton_ = nullptr;
    wxStaticText* listState_ = nullptr;
    DeviceList* list_ = nullptr;
};

}  // namespace sontaro
