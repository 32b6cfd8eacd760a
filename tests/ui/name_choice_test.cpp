#include "widgets/name_choice.h"

#include <wx/dialog.h>

#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

struct NameBox : UiTest {
    NameBox() {
        dialog = new wxDialog(nullptr, wxID_ANY, "Names", wxDefaultPosition, wxSize(400, 200));
        box = new NameChoice(dialog, wxID_ANY, 20);
        box->SetSize(box->GetEffectiveMinSize());
        dialog->Show();
        dialog->Raise();
        box->SetFocus();
        PumpUntil([&] { return dialog->IsActive() && box->HasFocus(); });
    }
    ~NameBox() override {
        dialog->Destroy();
        EXPECT_TRUE(PumpUntil([] { return wxTopLevelWindows.empty(); }));
    }
    static std::vector<std::string> Names(int count) {
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i) names.push_back("Video " + std::to_string(i));
        return names;
    }
    void Type(const char* text) {
        wxUIActionSimulator().Text(text);
        Settle();
    }

    wxDialog* dialog = nullptr;
    NameChoice* box = nullptr;
};

TEST_F(NameBox, KeepsTheCaretAndTellsNothingWhenOtherNamesCome) {
    Type("ab");
    int told = 0;
    box->Bind(wxEVT_TEXT, [&](wxCommandEvent&) { ++told; });
    box->Offer(Names(3));
    EXPECT_EQ(told, 0);
    Type("c");
    EXPECT_EQ(box->GetValue(), "abc");
}

TEST_F(NameBox, ShowsOfManyNamesFewAndThoseThatContainWhatIsTypedFirst) {
    const wxStopWatch watch;
    box->Offer(Names(20000));
    EXPECT_LT(watch.Time(), 1000);
    EXPECT_EQ(box->GetString(0), "Video 0");
    Type("video 1999");
    EXPECT_EQ(box->GetValue(), "video 1999");
    EXPECT_EQ(box->GetString(0), "Video 1999");
    EXPECT_EQ(box->GetString(10), "Video 19999");
    EXPECT_EQ(box->GetString(11), "Video 0");
    box->ChangeValue("Video 7000");
    box->ChooseOffered();
    EXPECT_EQ(box->GetValue(), "Video 7000");
}

}  // namespace
}  // namespace sontaro::test
