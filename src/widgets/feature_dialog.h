// What every dialog shares.
#pragma once

#include <wx/listctrl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <string>
#include <vector>

#include "base/local_text.h"
#include "base/window_titles.h"
#include "devices/device_record.h"
#include "exchange/conversation.h"
#include "link/packet.h"
#include "link/window_message.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/ui_services.h"

class wxButton;

namespace sontaro {

/// Control number of the button that asks the player anew.
inline constexpr int kReadAgainButton = 2820;

/// A dialog that is found by its title, swallows Enter and Escape, speaks to players through the
/// main window, and is left by Cancel or its close box after "Do you really want to exit?". It
/// finds its place again.
class FeatureDialog : public KeyedDialog {
   public:
    using Addressing = MainWindowChannel::Addressing;

    /// `addressing` is that of the dialog's requests.
    FeatureDialog(wxWindow* parent, Window window, const UiServices& services,
                  Addressing addressing = Addressing::kPlayer);
    ~FeatureDialog() override { RememberPlace(); }

   protected:
    [[nodiscard]] const UiServices& Services() const { return services_; }

    /// What the dialog's conversations stand on. While a packet is handed over, the pointer says
    /// that the program is busy.
    [[nodiscard]] ExchangeServices Exchange() {
        return {channel_, services_.hub, services_.timers};
    }

    /// A message from the main window or a link thread.
    virtual void HandleMessage(WindowMessage& message) = 0;

    /// Whether the user would lose something with the dialog; the exit question tells.
    [[nodiscard]] virtual bool HasUnsentChanges() const { return false; }

    /// Whether Cancel may close the dialog; asks the user unless a dialog has nothing to lose.
    [[nodiscard]] virtual bool MayClose();

    /// The user has agreed to close the dialog.
    virtual void Leave() { EndModal(wxID_CANCEL); }

    /// The user wants everything to be asked anew: the button of `MakeReadAgainButton`, or Ctrl+R.
    virtual void ReadAgain() {}
    /// A button that says "Read again", or "Connect again" where there is no link.
    [[nodiscard]] static wxButton* MakeReadAgainButton(wxWindow* parent);
    void ShowReadAgain(bool connected);

    /// Gives the dialog another title, by which it is found from now on.
    void Rename(Window window);

    /// Puts the dialog, and the columns of `list` (may be absent), where they were when it last
    /// closed or was ended. `name` is its key in the preferences.
    void RestorePlace(const char* name, wxListCtrl* list = nullptr);

    /// Has the main window close every link.
    void CloseLinks();

    /// The bottom row: OK (where wanted) and Cancel at the right, none of them a default button.
    [[nodiscard]] wxSizer* MakeButtonRow(bool withOk, const LocalText& cancelText);

    /// The bottom row of a dialog that keeps what it edits in files: Open and Save at the left.
    [[nodiscard]] wxSizer* MakeFileButtonRow(int openId, int saveId);

    /// A line for something that changes; its text may be longer than there is room for.
    [[nodiscard]] wxStaticText* MakeStateLine();

    /// A row of such a line, `state`, and of the button of `MakeReadAgainButton`.
    [[nodiscard]] wxSizer* MakeStateRow(wxStaticText*& state);

    /// Who the dialog speaks to, with the remarks, in bold; what there is no room for is in its
    /// tooltip.
    [[nodiscard]] wxStaticText* MakeHeading(const DeviceRecord& player, wxWindow* parent);

   private:
    class BusyChannel : public MainWindowChannel {
       public:
        using MainWindowChannel::MainWindowChannel;
        Sending Send(const Target& player, const SharedPacket& packet, Boxes boxes) override;
    };

    void RegisterAs(Window window);
    void OnKey(wxKeyEvent& event);
    void RememberPlace();

    UiServices services_;
    BusyChannel channel_;
    WindowDirectory::Registration registration_;
    const char* placeName_ = nullptr;
    wxListCtrl* placedList_ = nullptr;
};

}  // namespace sontaro
