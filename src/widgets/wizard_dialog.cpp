#include "widgets/wizard_dialog.h"

#include <wx/button.h>
#include <wx/gdicmn.h>
#include <wx/platinfo.h>
#include <wx/statline.h>

#include <algorithm>

#include "widgets/common_texts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kBack = {"上一步", "Back"};
constexpr LocalText kNext = {"下一步", "Next"};
constexpr LocalText kFinish = {"完成", "Finish"};

/// Whether the button that leads on stands last, as it does on every system but Windows.
bool LeadsOnLast() { return wxPlatformInfo::Get().GetPortId() != wxPORT_MSW; }

}  // namespace

WizardPage::WizardPage(WizardDialog& wizard, Window window)
    : wxPanel(wizard.Book()), window_(window) {}

WizardDialog::WizardDialog(wxWindow* parent, Window first, const UiServices& services,
                           std::span<const PageRoute> routes)
    : FeatureDialog(parent, first, services), routes_(routes) {
    auto* column = new wxBoxSizer(wxVERTICAL);
    book_ = new wxSimplebook(this);
    column->Add(book_, wxSizerFlags(1).Expand());
    column->Add(new wxStaticLine(this), wxSizerFlags().Expand());
    column->Add(MakeButtons(), wxSizerFlags().Expand().Border(wxALL, FromDIP(10)));
    SetSizer(column);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { GoOn(); }, wxID_FORWARD);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { GoBack(); }, wxID_BACKWARD);
}

/// The tab order follows the order in which they are made.
wxSizer* WizardDialog::MakeButtons() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    const auto make = [&](int id, const LocalText& text, char key, int space) {
        auto* button = new wxButton(this, id, ButtonLabel(text, key));
        row->Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(space)));
        return button;
    };
    constexpr int kWithin = 8;
    constexpr int kBetween = 20;
    if (LeadsOnLast()) make(wxID_CANCEL, kCancelText, 'C', 0);
    back_ = make(wxID_BACKWARD, kBack, 'B', kBetween);
    next_ = make(wxID_FORWARD, kFinish, 'i', kWithin);
    if (!LeadsOnLast()) make(wxID_CANCEL, kCancelText, 'C', kBetween);
    wxSize size = next_->GetBestSize();
    next_->SetLabel(ButtonLabel(kNext, 'N'));
    size.IncTo(next_->GetBestSize());
    next_->SetMinSize(size);
    return row;
}

void WizardDialog::AddPage(WizardPage* page) {
    pages_.push_back(page);
    book_->AddPage(page, "");
}

void WizardDialog::Begin(const char* name) {
    GetSizer()->SetSizeHints(this);
    wxSize size = GetSize();
    size.DecTo(wxGetClientDisplayRect().GetSize());
    SetMinSize(wxDefaultSize);
    SetSize(size);
    CentreOnParent();
    RestorePlace(name);
    Enter();
}

void WizardDialog::ButtonsChanged() {
    back_->Enable(active_ > 0 && Active().MayGoBack());
    next_->Enable(Active().MayGoOn());
    const wxString label = IsLast() ? ButtonLabel(kFinish, 'i') : ButtonLabel(kNext, 'N');
    if (next_->GetLabel() != label) next_->SetLabel(label);
}

void WizardDialog::GoOn() {
    if (!Active().GoOn()) return;
    if (IsLast())
        EndModal(wxID_OK);
    else
        TurnTo(active_ + 1);
}

void WizardDialog::GoBack() {
    if (active_ > 0 && Active().GoBack()) TurnTo(active_ - 1);
}

void WizardDialog::TurnTo(std::size_t page) {
    Active().Left();
    active_ = page;
    Rename(Active().Caption());
    book_->ChangeSelection(active_);
    Enter();
}

void WizardDialog::Enter() {
    ButtonsChanged();
    Active().Entered();
}

/// However it ends: by its buttons, or from outside.
void WizardDialog::EndModal(int result) {
    Active().Left();
    FeatureDialog::EndModal(result);
}

void WizardDialog::HandleMessage(WindowMessage& message) {
    for (const PageRoute& route : routes_) {
        if (route.message != message.id || route.page >= pages_.size()) continue;
        if (route.page == active_ || !route.onlyWhileActive)
            pages_[route.page]->HandleMessage(message);
    }
}

bool WizardDialog::HasUnsentChanges() const {
    return std::ranges::any_of(pages_, &WizardPage::HasUnsentChanges);
}

}  // namespace sontaro
