// The least that a program with a dialog does: the baseline for start-up time and memory.
#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace {

class MinimalApp : public wxApp {
   public:
    bool OnInit() override {
        auto* dialog = new wxDialog(nullptr, wxID_ANY, "Minimal");
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(new wxStaticText(dialog, wxID_ANY, "A dialog with a few buttons"),
                    wxSizerFlags().Border());
        for (const int id : {wxID_OK, wxID_APPLY, wxID_HELP, wxID_CANCEL})
            column->Add(new wxButton(dialog, id), wxSizerFlags().Expand().Border());
        dialog->SetSizerAndFit(column);
        dialog->Show();
        return true;
    }
};

}  // namespace

wxIMPLEMENT_APP(MinimalApp);
