#include "widgets/message_prompts.h"

#include <wx/colordlg.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filefn.h>
#include <wx/msgdlg.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <algorithm>

#include "base/window_titles.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/front_dialog.h"
#include "widgets/wrapped_text.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kReplaceQuestion = {"文件已存在，要替换吗？",
                                        "The file exists already. Replace it?"};
constexpr int kMostCharacters = 110;  // in a line of a box
constexpr LocalText kNoSuchFile = {"没有这个文件！", "There is no such file!"};

/// A program that is busy asks with its usual pointer. The toolkit's own way is not there on every
/// system.
class AnswerablePointer {
   public:
    AnswerablePointer() {
        for (; wxIsBusy(); ++busy_) wxEndBusyCursor();
    }
    ~AnswerablePointer() {
        for (; busy_ > 0; --busy_) wxBeginBusyCursor();
    }
    AnswerablePointer(const AnswerablePointer&) = delete;
    AnswerablePointer& operator=(const AnswerablePointer&) = delete;

   private:
    int busy_ = 0;
};

/// Closes a question that is withdrawn. The toolkit can end the innermost box alone.
class QuestionCloser {
   public:
    QuestionCloser(wxDialog& box, Withdrawal& withdrawal) : withdrawal_(withdrawal) {
        constexpr int kStepMilliseconds = 10;
        timer_.Bind(wxEVT_TIMER, [&box](wxTimerEvent&) {
            if (box.IsModal() && FrontDialog() == &box) box.EndModal(wxID_NO);
        });
        withdrawal_.Offer([this] { timer_.Start(kStepMilliseconds); });
    }
    ~QuestionCloser() { withdrawal_.Offer({}); }
    QuestionCloser(const QuestionCloser&) = delete;
    QuestionCloser& operator=(const QuestionCloser&) = delete;

    [[nodiscard]] bool IsWithdrawn() const { return timer_.IsRunning(); }

   private:
    Withdrawal& withdrawal_;
    wxTimer timer_;
};

/// The box itself cannot be measured before it is shown; it has its parent's font.
wxString InLines(const wxWindow* parent, const wxString& text) {
    if (!parent) return text;
    const int widest = wxGetClientDisplayRect().width * 2 / 3;
    return WrappedText(*parent, text, std::min(widest, kMostCharacters * LetterWidth(*parent)));
}

int Show(const std::string& text, long style, Withdrawal* withdrawal = nullptr) {
    const AnswerablePointer answerable;
    wxDialog* const parent = FrontDialog();
    wxGenericMessageDialog box(parent, InLines(parent, ToWx(text)), ToWx(ApplicationTitle()),
                               style);
    UseLanguageFont(box);
    if ((style & wxYES_NO) != 0) {
        box.SetYesNoLabels(ButtonLabel(kYesText, 'Y'), ButtonLabel(kNoText, 'N'));
    } else {
        box.SetOKLabel(ButtonLabel(kOkText, 'O'));
    }
    if (!withdrawal) return box.ShowModal();
    const QuestionCloser closer(box, *withdrawal);
    const int answer = box.ShowModal();
    return closer.IsWithdrawn() ? int{wxID_NO} : answer;
}

constexpr long kQuestion = wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION;

}  // namespace

void MessagePrompts::Inform(const std::string& text) { Show(text, wxOK | wxICON_INFORMATION); }

void MessagePrompts::Warn(const std::string& text) { Show(text, wxOK | wxICON_QUESTION); }

void MessagePrompts::WarnOfLimit(const std::string& text) { Show(text, wxOK | wxICON_WARNING); }

bool MessagePrompts::Confirm(const std::string& text) { return Show(text, kQuestion) == wxID_YES; }

bool MessagePrompts::ConfirmUnlessSettled(const std::string& text, Withdrawal& withdrawal) {
    return Show(text, kQuestion, &withdrawal) == wxID_YES;
}

std::optional<std::filesystem::path> MessagePrompts::ChooseFile(const FileQuestion& question) {
    const bool saves = question.purpose == FileQuestion::Purpose::kSave;
    // Without the box's own tests of the file: they are told in boxes over it that only the user
    // can close, in the system's language.
    wxFileDialog box(FrontDialog(), ToWx(question.caption), "", ToWx(question.name),
                     ToWx(question.filter), saves ? wxFD_SAVE : wxFD_OPEN);
    while (box.ShowModal() == wxID_OK) {
        wxString path = box.GetPath();
        const wxString ending = "." + ToWx(question.extension);
        if (saves && !path.Lower().EndsWith(ending.Lower())) path += ending;
        const bool exists = wxFileExists(path);
        if (saves ? !exists || Confirm(Localized(kReplaceQuestion)) : exists)
            return PathFromWx(path);
        if (!saves) Warn(Localized(kNoSuchFile));
    }
    return std::nullopt;
}

std::vector<std::filesystem::path> MessagePrompts::ChooseFiles(const FileQuestion& question) {
    wxFileDialog box(FrontDialog(), ToWx(question.caption), "", ToWx(question.name),
                     ToWx(question.filter), wxFD_OPEN | wxFD_MULTIPLE);
    if (box.ShowModal() != wxID_OK) return {};
    wxArrayString chosen;
    box.GetPaths(chosen);
    std::vector<std::filesystem::path> paths;
    for (const wxString& path : chosen) paths.push_back(PathFromWx(path));
    return paths;
}

std::optional<std::filesystem::path> MessagePrompts::ChooseFolder(const std::string& caption) {
    wxDirDialog box(FrontDialog(), ToWx(caption), "", wxDD_DEFAULT_STYLE | wxDD_DIR_MUST_EXIST);
    if (box.ShowModal() != wxID_OK) return std::nullopt;
    return PathFromWx(box.GetPath());
}

std::optional<std::uint32_t> MessagePrompts::ChooseColour(std::uint32_t colour) {
    wxColourData data;
    data.SetChooseFull(true);
    data.SetColour(wxColour(static_cast<unsigned long>(colour)));
    wxColourDialog box(FrontDialog(), &data);
    if (box.ShowModal() != wxID_OK) return std::nullopt;
    return box.GetColourData().GetColour().GetRGB();
}

}  // namespace sontaro
