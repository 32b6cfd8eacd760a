#include "widgets/message_prompts.h"

#include <gtest/gtest.h>
#include <wx/filedlg.h>
#include <wx/msgdlg.h>

#include "base/window_titles.h"
#include "support/recording_prompts.h"
#include "ui/ui_support.h"

namespace sontaro::test {
namespace {

/// The real boxes: a file's are left before they open, so that no system's own has to be answered.
class RealPrompts : public UiTest, private wxModalDialogHook {
   protected:
    RealPrompts() { Register(); }

    /// Style of the icon and the buttons of the box that `show` opens and that `answer` ends.
    long StyleOf(const std::function<void()>& show, int answer = wxID_OK) {
        long style = 0;
        const ModalScript script{[&](wxDialog* dialog) {
            auto* box = dynamic_cast<wxGenericMessageDialog*>(dialog);
            ASSERT_TRUE(box);
            EXPECT_EQ(FromWx(box->GetTitle() + "|" + box->GetMessage()), "Sontaro test|text");
            style = box->GetMessageDialogStyle();
            Press(box, answer);
        }};
        show();
        return style & (wxICON_MASK | wxYES_NO);
    }

    std::vector<std::string> files;  ///< that were asked for

   private:
    int Enter(wxDialog* dialog) override {
        const auto* box = dynamic_cast<wxFileDialog*>(dialog);
        if (!box) return wxID_NONE;
        files.push_back(FromWx(box->GetMessage() + "; " + box->GetWildcard() + "; " +
                               box->GetFilename() +
                               (box->HasFlag(wxFD_SAVE) ? " saved" : " opened")));
        return wxID_CANCEL;
    }

    MessagePrompts real_;

   protected:
    Prompts& real = real_;
};

TEST_F(RealPrompts, ShowTheIconsAndTheButtonsOfTheirKind) {
    EXPECT_EQ(StyleOf([&] { real.Inform("text"); }), wxICON_INFORMATION);
    EXPECT_EQ(StyleOf([&] { real.Warn("text"); }), wxICON_QUESTION);
    for (const bool yes : {true, false})
        EXPECT_EQ(StyleOf([&] { EXPECT_EQ(real.Confirm("text"), yes); }, yes ? wxID_YES : wxID_NO),
                  wxICON_QUESTION | wxYES_NO);
}

TEST_F(RealPrompts, CloseAQuestionThatIsSettledUnderOtherBoxesToo) {
    Withdrawal withdrawal;
    const auto settle = [&](wxDialog*) { withdrawal.Withdraw(); };
    {
        const ModalScript script{settle};
        EXPECT_FALSE(real.ConfirmUnlessSettled("text", withdrawal));
    }
    const ModalScript script{[&](wxDialog*) { real.Inform("over it"); },
                             [&](wxDialog* notice) {
                                 withdrawal.Withdraw();
                                 withdrawal.Withdraw();
                                 Settle();
                                 Press(notice, wxID_OK);
                             },
                             [](wxDialog* question) { Press(question, wxID_YES); }};
    EXPECT_FALSE(real.ConfirmUnlessSettled("text", withdrawal));
    EXPECT_TRUE(real.ConfirmUnlessSettled("text", withdrawal));
    withdrawal.Withdraw();
}

TEST_F(RealPrompts, AskForAFileWithItsCaptionFilterAndName) {
    EXPECT_FALSE(real.ChooseFile(ToOpen("打开", "Flie(*.JSON)|*.JSON", "JSON").file));
    EXPECT_FALSE(real.ChooseFile(ToSave("Save it", "*.JSON|*.JSON", "协议", "JSON").file));
    EXPECT_EQ(files, (std::vector<std::string>{"打开; Flie(*.JSON)|*.JSON;  opened",
                                               "Save it; *.JSON|*.JSON; 协议 saved"}));
}

using Prompting = UiTest;

/// Chooses a file in the system's box.
ModalScript::Step Choosing(const std::filesystem::path& path) {
    return [file = ToWx(TextOfPath(path))](wxDialog* dialog) {
        auto* box = dynamic_cast<wxFileDialog*>(dialog);
        EXPECT_TRUE(PumpUntil([&] {
            box->SetPath(file);
            return box->GetPath() == file;
        }));
        box->EndModal(wxID_OK);
    };
}

ModalScript::Step Pressing(int id) {
    return [id](wxDialog* box) { Press(box, id); };
}

TEST_F(Prompting, ReplacesAFileOnlyAfterAYes) {
#ifdef __WXMSW__
    GTEST_SKIP() << "nobody can press OK in the system's box";
#endif
    const FileQuestion question{FileQuestion::Purpose::kSave, "Keep", "All|*", "a.json", "json"};
    const auto file = folder.Write("a.json", "{}");
    const ModalScript script{Choosing(file), Pressing(wxID_NO), Choosing(folder / "a"),
                             Pressing(wxID_YES)};
    EXPECT_EQ(MessagePrompts().ChooseFile(question), file);
}

}  // namespace
}  // namespace sontaro::test
