#include "widgets/text_progress.h"

#include <gmock/gmock.h>
#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>
#include <wx/image.h>

#include <cmath>

#include "ui/ui_support.h"
#include "widgets/colours.h"

namespace sontaro::test {
namespace {

/// A bar in a window.
struct ProgressWindow : testing::Test {
    ProgressWindow() {
        frame->SetClientSize(400, 60);
        frame->Show();
        frame->Raise();
        Settle();
        bar->Bind(wxEVT_PAINT, [this](wxPaintEvent& event) {
            event.Skip();
            ++paintings;
        });
    }
    ~ProgressWindow() override { frame->Destroy(); }

    /// What the bar says.
    std::string Show(double percent) {
        bar->SetPercent(percent);
        Settle();
        return FromWx(bar->GetLabel());
    }
    /// Whether there is something of a colour between two places, as shares of the width.
    [[nodiscard]] bool Has(wxSystemColour colour, double from, double to) const {
        const wxSize size = bar->GetClientSize();
        wxBitmap bitmap(size);
        wxClientDC screen(bar);
        wxMemoryDC(bitmap).Blit({}, size, &screen, {});
        const wxImage image = bitmap.ConvertToImage();
        const wxColour wanted = SystemColour(colour);
        for (int x = static_cast<int>(from * size.x) + 2; x < to * size.x - 2; ++x)
            for (int y = 2; y < size.y - 2; ++y)
                if (IsNear(image.GetRed(x, y), wanted.Red()) &&
                    IsNear(image.GetGreen(x, y), wanted.Green()) &&
                    IsNear(image.GetBlue(x, y), wanted.Blue()))
                    return true;
        return false;
    }
    static bool IsNear(int one, int other) { return std::abs(one - other) < 40; }

    wxFrame* frame = new wxFrame(nullptr, wxID_ANY, "");
    TextProgress* bar = new TextProgress(frame, wxID_ANY);
    int paintings = 0;
};

TEST_F(ProgressWindow, CanBeReadOnBothSidesOfTheBarsEdge) {
    EXPECT_EQ(Show(50), "50.0%");
    EXPECT_TRUE(Has(wxSYS_COLOUR_HIGHLIGHT, 0, 0.1) && Has(wxSYS_COLOUR_WINDOW, 0.9, 1));
    EXPECT_FALSE(Has(wxSYS_COLOUR_WINDOW, 0, 0.4) || Has(wxSYS_COLOUR_HIGHLIGHT, 0.6, 1));
    EXPECT_TRUE(Has(wxSYS_COLOUR_HIGHLIGHTTEXT, 0.4, 0.5));
    EXPECT_TRUE(Has(wxSYS_COLOUR_WINDOWTEXT, 0.5, 0.6));
    EXPECT_FALSE(Has(wxSYS_COLOUR_WINDOWTEXT, 0, 0.5));
}

TEST_F(ProgressWindow, KeepsWithinItsLimitsAndDrawsOnlyWhatIsNew) {
    EXPECT_EQ(Show(1000), "100.0%");
    EXPECT_EQ(Show(std::nan("")), "0.0%");
    EXPECT_EQ(Show(-3), "0.0%");
    paintings = 0;
    EXPECT_EQ(Show(0.001), "0.0%");
    EXPECT_EQ(paintings, 0);
    EXPECT_EQ(Show(0.4), "0.4%");  // one pixel and the text
    EXPECT_EQ(paintings, 1);
    EXPECT_FALSE(bar->AcceptsFocus());
}

}  // namespace
}  // namespace sontaro::test
