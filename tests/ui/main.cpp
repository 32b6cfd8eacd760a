// Runs the window tests inside the toolkit's own event loop.
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/image.h>
#include <wx/log.h>

#include <exception>

#include "widgets/toolkit_quirks.h"

namespace {

class TestApp : public wxApp {
   public:
    bool OnInit() override {
        delete wxLog::SetActiveTarget(new wxLogStderr);
        SetExitOnFrameDelete(false);
        wxImage::AddHandler(new wxPNGHandler);
        sontaro::HearComplaints(
            [](const std::string& text) { ADD_FAILURE() << "complaint of the toolkit: " << text; });
        CallAfter([this] {
            result_ = RUN_ALL_TESTS();
            ExitMainLoop();
        });
        return true;
    }
    int OnRun() override {
        wxApp::OnRun();
        return result_;
    }
    bool OnExceptionInMainLoop() override {
        OnUnhandledException();
        return true;
    }
    /// In place of the toolkit's box, which would wait for an answer.
    void OnUnhandledException() override {
        try {
            throw;
        } catch (const std::exception& error) {
            ADD_FAILURE() << "exception: " << error.what();
        }
    }
    void OnAssertFailure(const wxChar* file, int line, const wxChar*, const wxChar* condition,
                         const wxChar*) override {
        ADD_FAILURE_AT(wxString(file).utf8_string().c_str(), line)
            << "assertion of the toolkit: " << wxString(condition).utf8_string();
    }

   private:
    int result_ = 1;
};

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();  // without a display
    wxApp::SetInstance(new TestApp);
    return wxEntry(argc, argv);
}
