#include "tour/tour.h"

#include <fmt/core.h>
#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/msgdlg.h>

#include <cstdio>
#include <cstdlib>

#include "widgets/front_dialog.h"
#include "widgets/toolkit_quirks.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

using namespace std::chrono_literals;

constexpr int kPaceMilliseconds = 50;
constexpr auto kPatience = 20s;
constexpr auto kSettleTime = 350ms;  // until everything is painted

/// What is seen of a window that nothing covers.
wxImage PictureOf(wxWindow& window) {
    const wxSize size = window.GetClientSize();
    wxBitmap bitmap(size, 24);  // without an opacity, which texts would not set everywhere
    wxClientDC screen(&window);
    wxMemoryDC memory(bitmap);
    memory.Blit(wxPoint(0, 0), size, &screen, wxPoint(0, 0));
    memory.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
}

/// Whether a window shows one colour alone: it has not been painted yet.
bool IsBlank(wxWindow& window) {
    const wxImage image = PictureOf(window);
    const unsigned char* data = image.GetData();
    const std::ptrdiff_t size = std::ptrdiff_t{3} * image.GetWidth() * image.GetHeight();
    return std::equal(data + 3, data + size, data);
}

std::string FrontTitle() {
    const wxDialog* front = FrontDialog();
    return front ? FromWx(front->GetTitle()) : "nothing";
}

/// Whether a picture is worth taking `waited` after the step's effect came.
bool IsPainted(Tour::Clock::duration waited) {
    if (waited < kSettleTime) return false;
    wxDialog* window = FrontDialog();
    return window == nullptr || !IsBlank(*window) || waited > kPatience;
}

}  // namespace

Tour::Tour(std::filesystem::path folder) : folder_(std::move(folder)) {
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Proceed(); });
    HearComplaints([](const std::string& text) { Fail("the toolkit complains: " + text); });
}

void Tour::Start() { timer_.Start(kPaceMilliseconds); }

void Tour::Proceed() {
    const Clock::time_point now = Clock::now();
    if (!acted_) {
        acted_ = true;
        actedAt_ = now;
        if (steps_.front().act) steps_.front().act();
        if (steps_.size() == 1) Finish();
    } else if (!settled_) {
        if (steps_.front().done()) {
            settled_ = true;
            doneAt_ = now;
        } else if (now - actedAt_ > kPatience) {
            Fail(steps_.front().say() + " has not come to be; in front: " + FrontTitle());
        }
    } else if (steps_.front().picture.empty() || IsPainted(now - doneAt_)) {
        Finish();
    }
}

void Tour::Finish() {
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    acted_ = settled_ = false;
    if (!step.picture.empty() && !TakePicture(step.picture)) Fail("no picture of " + step.picture);
    fmt::print("{}\n", step.say());
    std::fflush(stdout);
    if (steps_.empty()) timer_.Stop();
}

bool Tour::TakePicture(const std::string& name) {
    wxDialog* window = FrontDialog();
    if (!window) return false;
    const wxImage image = PictureOf(*window);
    const std::string file = fmt::format("{:02}-{}.png", ++pictures_, name);
    return image.SaveFile(ToWx(TextOfPath(folder_ / file)), wxBITMAP_TYPE_PNG);
}

void Tour::Fail(const std::string& what) {
    fmt::print("FAILED {}\n", what);
    std::fflush(stdout);
    std::_Exit(1);  // any number of modal loops may be running; there is nothing to save
}

wxDialog* Tour::FrontTitled(const std::string& title) {
    wxDialog* front = FrontDialog();
    const bool isMessage = dynamic_cast<wxGenericMessageDialog*>(front) != nullptr;  // titled alike
    return front && !isMessage && FromWx(front->GetTitle()) == title ? front : nullptr;
}

bool Tour::Press(int id) {
    wxDialog* front = FrontDialog();
    auto* button = front ? dynamic_cast<wxButton*>(front->FindWindow(id)) : nullptr;
    if (!button || !button->IsShownOnScreen() || !button->IsEnabled()) return false;
    wxCommandEvent press(wxEVT_BUTTON, id);
    press.SetEventObject(button);
    button->GetEventHandler()->AddPendingEvent(press);  // its handler may open a modal dialog
    return true;
}

void Tour::Command(int id) {
    const wxCommandEvent press(wxEVT_BUTTON, id);
    if (wxDialog* front = FrontDialog()) front->GetEventHandler()->AddPendingEvent(press);
}

}  // namespace sontaro
