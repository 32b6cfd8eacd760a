#include "tour/tour_video_set.h"

#include <fmt/format.h>
#include <wx/grid.h>

#include <fstream>
#include <utility>

#include "app/features.h"
#include "base/path_text.h"
#include "batchsend/send_page_ids.h"
#include "batchsend/set_page_ids.h"
#include "batchsend/upload_status.h"
#include "devices/video_select_device.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr std::size_t kFilms = 12;
constexpr std::size_t kUsedPlayers = 3;
constexpr std::uintmax_t kLongFilm = 20'000'000;  // bytes: three chunks
constexpr std::uintmax_t kShortFilm = 300'000;
constexpr int kStatusColumn = 3;

void WriteFilms(const std::filesystem::path& folder) {
    const char* categories[] = {"迪斯科", "摇滚", "Openers"};
    for (std::size_t i = 0; i < kFilms; ++i) {
        const auto path = folder / PathOfText(categories[i % std::size(categories)]) /
                          PathOfText(fmt::format("{:02} 夜场 {}.mp4", i + 1, i + 1));
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path).put('v');
        std::filesystem::resize_file(path, i == kFilms / 2 ? kLongFilm : kShortFilm);
    }
}

template <class Control = wxWindow>
Control* On(Window page, int id) {
    wxWindow* wizard = Tour::FrontTitled(TitleOf(page));
    return wizard ? dynamic_cast<Control*>(wizard->FindWindow(id)) : nullptr;
}

std::function<bool()> Rows(Window page, int grid, std::size_t count) {
    return [=] {
        const auto* table = On<wxGrid>(page, grid);
        return table != nullptr && table->GetNumberRows() == static_cast<int>(count);
    };
}

std::function<bool()> Enabled(int id) {
    return [=] {
        const wxWindow* control = On(Window::kBatchSend, id);
        return control != nullptr && control->IsEnabled();
    };
}

/// Whether the player in that row has come to the end of its turn.
std::function<bool()> HasStatus(int row, UploadStatus status) {
    UploadRow wanted;
    wanted.status = status;
    return [row, text = ToWx(StatusText(wanted))] {
        const auto* table = On<wxGrid>(Window::kBatchSend, kSendPlayers);
        return table != nullptr && table->GetNumberRows() > row &&
               table->GetCellValue(row, kStatusColumn) == text;
    };
}

DeviceList* Found() { return On<DeviceList>(Window::kSelectDevices, kVideoSetList); }

}  // namespace

TourVideoSet::TourVideoSet(Tour& tour, simulator::PlayerGroup& players, std::filesystem::path films)
    : TourSteps(tour, players), films_(std::move(films)) {}

void TourVideoSet::Write() {
    ChoosePlayers();
    ChooseVideos();
    Plan();
    Send();
    SendAgain();
    Step(Pressing(wxID_FORWARD), InFront(Window::kMain), "pressed Finish");
}

void TourVideoSet::ChoosePlayers() {
    Step([] { Tour::Command(FeatureButton(Window::kSetParam)); }, InFront(Window::kSelectDevices),
         "opened the wizard of the video set", "video-set-devices");
    const auto all = [this] {
        return Found() != nullptr && Found()->GetItemCount() == static_cast<int>(Players().Size());
    };
    Step(Pressing(kVideoSetScan), all, "pressed Scan: all players are found");
    Step(
        Pressing(kVideoSetScan), [] { return Found()->HasCheckBoxes(); }, "pressed Stop");
    Step([] { TickFirst(*Found(), kUsedPlayers); },
         [] { return Found()->IsItemChecked(kUsedPlayers - 1); }, "ticked three players",
         "video-set-ticked");
}

void TourVideoSet::ChooseVideos() {
    Step([this] { WriteFilms(films_); }, [] { return true; }, "made a dozen videos");
    Step(Pressing(wxID_FORWARD), Rows(Window::kSetParam, kSetPlayers, kUsedPlayers + 1),
         "pressed Next: it asks what the players are");
    Step(Pressing(kSetAddFolder), Rows(Window::kSetParam, kSetVideos, kFilms),
         "added a folder, with a category for each folder in it", "video-set-videos");
}

void TourVideoSet::Plan() {
    const auto fill = [this] {
        Players().Player(1).ChangeState([](auto& state) { state.diskMebibytes = 2; });
    };
    Step(
        fill, [] { return true; }, "the second player is nearly full");
    Step(Pressing(wxID_FORWARD), Enabled(kSendPlan), "pressed Next: the plan is made",
         "video-set-plan");
}

void TourVideoSet::Send() {
    Fault(0, "lose-chunk=2", "the first player is going to be lost in a video");
    Step(Pressing(kSendStart), Enabled(kSendStop), "pressed Start: it sends", "video-set-sending");
    Step({}, HasStatus(0, UploadStatus::kNetworkFailure), "the first player is lost");
    Step({}, HasStatus(1, UploadStatus::kDiskTooSmall), "the second one is too full");
    Step({}, HasStatus(2, UploadStatus::kDone), "the third one has them all");
    Step({}, Enabled(kSendProve), "looked at what has arrived", "video-set-failed");
}

void TourVideoSet::SendAgain() {
    Fault(0, "", "the first player is found again");
    const auto again = [this] {
        Players().Player(1).ChangeState([](auto& state) { state.diskMebibytes = 2000; });
        Tour::Press(kSendFailedAgain);
    };
    Step(
        again, [this] { return Holds(0, kFilms) && Holds(1, kFilms) && Holds(2, kFilms); },
        "there is room on the second one: pressed Send again what failed");
    Step({}, Enabled(kSendProve), "all players have all videos", "video-set-sent");
    Step(Pressing(kSendExport), NoticeInFront, "kept the journal as a table");
    Step(Pressing(wxID_OK), InFront(Window::kBatchSend), "dismissed the message");
}

bool TourVideoSet::Holds(std::size_t player, std::size_t videos) {
    return Players().Player(player).State().stored.size() == videos;
}

}  // namespace sontaro
