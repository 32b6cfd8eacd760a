// The procedure of finding players.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/bytes.h"
#include "devices/device_remarks.h"
#include "devices/device_rules.h"

namespace sontaro {

/// What the procedure asks of its dialog.
class ScanActions {
   public:
    virtual ~ScanActions() = default;
    /// Sends the discovery request to the broadcast address; false when it cannot be sent.
    virtual bool SendRequest() = 0;
    /// Calls `ScanRun::Tick` every 1000 ms from now on.
    virtual void StartTimer() = 0;
    virtual void StopTimer() = 0;
    /// The devices, or how far the scan is, have changed.
    virtual void DevicesChanged() = 0;
};

/// What scans differ in.
struct ScanStyle {
    LocalText scan{};    ///< the scan button while there is no scan
    LocalText stop{};    ///< before the first request of a scan
    LocalText stopIn{};  ///< with "%d" for the seconds that are left
    /// Every request begins with an empty list. A tick stays with its address then, whichever
    /// player answers there; at the end of the scan the ticked ones that have not are listed
    /// nevertheless.
    bool clearsEveryRound = false;
};

/// Asks once after opening, and in a scan four times, a second apart; the scan stops by itself a
/// second after the last request. Collects one record per address: a player that has taken the
/// place of another takes its row; two that answer the same request have a row each, and are
/// marked. User-interface thread.
class ScanRun {
   public:
    ScanRun(ScanActions& actions, const DeviceRemarks& remarks, const ScanStyle& style)
        : actions_(actions), remarks_(remarks), style_(style) {}

    /// Most players that are listed: more can only be forged replies.
    static constexpr std::size_t kLongestList = 1000;

    /// The dialog has opened: the first tick empties the list and asks once. Ticks the player that
    /// was `chosenBefore`, if any, when it answers.
    void Opened(const std::optional<DeviceRecord>& chosenBefore = std::nullopt);

    /// The scan button: starts a scan with an empty list, or stops the one that runs. Players that
    /// were ticked are ticked again when they answer again.
    void PressScan();

    /// A second has passed.
    void Tick();

    /// A datagram has arrived. False when it is no discovery reply, and ignored.
    bool Receive(ByteView datagram);

    /// Ticks or unticks a player.
    void SetTicked(std::size_t row, bool ticked) { devices_[row].ticked = ticked; }

    /// Ticks this player and no other, those included that have not answered again yet.
    void ChooseOnly(std::size_t row);

    /// Ticks every player that is listed.
    void ChooseAll();

    /// Unticks every player, those included that have not answered again yet.
    void ChooseNone();

    /// A request could not be sent after all.
    void RequestFailed();

    /// The user's notes about players have changed.
    void RemarksChanged();

    /// Sorts the list, and keeps it sorted as players answer.
    void SortBy(DeviceColumn column, bool ascending);

    [[nodiscard]] bool IsScanning() const { return scanning_; }
    /// Whether nobody has been asked yet since the dialog opened.
    [[nodiscard]] bool IsOpening() const { return opening_; }
    [[nodiscard]] const std::vector<DeviceRecord>& Devices() const { return devices_; }
    /// Whether the latest request has gone out.
    [[nodiscard]] bool HasAsked() const { return asked_.value_or(false); }
    /// Whether there has been a request at all, gone out or not.
    [[nodiscard]] bool HasTried() const { return asked_.has_value(); }
    /// The ticked players by numeric address; where a tick stays with its address, those included
    /// that have not answered again yet, as they were heard last.
    [[nodiscard]] std::vector<DeviceRecord> Chosen() const;
    /// The text of the scan button, in the language of the process.
    [[nodiscard]] std::string ButtonText() const;

   private:
    void Stop();
    void Clear();
    void ListSilentOnes();
    [[nodiscard]] bool TakeTick(const DeviceRecord& device);
    [[nodiscard]] bool Ask();
    void Enter(DeviceRecord device);
    [[nodiscard]] DeviceRecord* RowFor(const DeviceRecord& device);
    void MarkSharedAddress(const std::string& ip);
    [[nodiscard]] bool HasAnswered(const DeviceRecord& device) const {
        return answered_.contains({device.mac, device.ip});
    }

    ScanActions& actions_;
    const DeviceRemarks& remarks_;
    const ScanStyle style_;
    std::vector<DeviceRecord> devices_;
    std::vector<DeviceRecord> tickedBefore_;
    std::set<std::pair<std::string, std::string>> answered_;  // MAC and IP, since the last tick
    DeviceColumn sortColumn_ = DeviceColumn::kNumber;
    bool sortAscending_ = true;
    bool opening_ = false;
    std::optional<bool> asked_;
    bool scanning_ = false;
    int round_ = 0;
};

}  // namespace sontaro
