#include "devices/address_box.h"

#include <algorithm>

#include "widgets/fonts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr int kCharacters = 38;              // an address and a common name
constexpr int kReopeningMilliseconds = 250;  // the mouse button, too, has been let go of by then

wxString EntryOf(const LocalAdapter& adapter) {
    return ToWx(adapter.name.empty() ? adapter.ip : adapter.ip + " (" + adapter.name + ")");
}

}  // namespace

AddressBox::AddressBox(wxWindow* parent, int id, Source source)
    : wxComboBox(parent, id, "", wxDefaultPosition,
                 wxSize(kCharacters * LetterWidth(*parent), wxDefaultCoord)),
      source_(std::move(source)),
      reopening_(this) {
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        if (IsEnabled()) Popup();
    });
}

void AddressBox::Reread() {
    std::vector<LocalAdapter> now = source_();
    if (now == offered_) return;
    offered_ = std::move(now);
    const wxString shown = GetValue();
    wxArrayString entries;
    for (const LocalAdapter& adapter : offered_) entries.Add(EntryOf(adapter));
    Set(entries);
    ChangeValue(shown);
}

/// An open list keeps the size that it has opened with, whatever is put into it.
void AddressBox::RereadOpenList() {
    if (source_() == offered_) return;
    Dismiss();
    Reread();
    reopening_.StartOnce(kReopeningMilliseconds);
}

void AddressBox::ShowAddress(const std::string& ip) {
    const auto adapter = std::ranges::find(offered_, ip, &LocalAdapter::ip);
    ChangeValue(adapter == offered_.end() ? ToWx(ip) : EntryOf(*adapter));
}

std::string AddressBox::Address() const { return FromWx(GetValue().Trim(false).BeforeFirst(' ')); }

}  // namespace sontaro
