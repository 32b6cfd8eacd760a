#include "app/about_dialog.h"

#include <fmt/core.h>
#include <json/version.h>
#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/utils.h>
#include <wx/version.h>

#include "app/application_title.h"
#include "base/system_version.h"
#include "widgets/common_texts.h"
#include "widgets/fonts.h"
#include "widgets/icons.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

constexpr LocalText kTitle = {"关于 Sontaro", "About Sontaro"};
constexpr LocalText kVersion = {"版本 ", "Version "};
constexpr LocalText kPurpose = {"为演出与娱乐场所的网络视频播放器提供配置与遥控。",
                                "Configuration and remote control of networked video players in "
                                "entertainment venues."};
constexpr LocalText kLicence = {"MIT 许可证，© 2026 Sontaro 开发者",
                                "MIT licence, © 2026 the Sontaro developers"};
constexpr LocalText kSystem = {"操作系统：", "Operating system: "};
constexpr LocalText kLibraries = {"使用的程序库：", "Libraries used:"};

/// Its name, and the numbers that it hides from programs made for older versions.
wxString SystemName() {
    const SystemVersion version = ReadSystemVersion();
    const auto numbers = wxString::Format("%u.%u.%u", version.major, version.minor, version.build);
    const wxString name = wxGetOsDescription();
    return name.Contains(numbers) ? name : name + " (" + numbers + ")";
}

wxString LibraryNames() {
    return wxString::Format(
        "wxWidgets %d.%d.%d (wxWindows Library Licence)\n"
        "jsoncpp %s (MIT)\n"
        "fmt %d.%d.%d (MIT)",
        wxMAJOR_VERSION, wxMINOR_VERSION, wxRELEASE_NUMBER, JSONCPP_VERSION_STRING,
        FMT_VERSION / 10000, FMT_VERSION / 100 % 100, FMT_VERSION % 100);
}

}  // namespace

AboutDialog::AboutDialog(wxWindow* parent) : wxDialog(parent, wxID_ANY, ToWx(kTitle)) {
    UseLanguageFont(*this);
    const int gap = FromDIP(16);
    auto* texts = new wxBoxSizer(wxVERTICAL);
    const auto add = [&](const wxString& text) {
        auto* label = new wxStaticText(this, wxID_ANY, text);
        texts->Add(label, wxSizerFlags().Border(wxBOTTOM, FromDIP(8)));
        return label;
    };
    auto* name = add("Sontaro");
    name->SetFont(name->GetFont().Bold().Scaled(1.5F));
    add(ToWx(kVersion) + ToWx(ProgramVersion()));
    add(ToWx(kPurpose))->Wrap(52 * LetterWidth(*this));
    add(ToWx(kLicence));
    add(ToWx(kSystem) + SystemName());
    add(ToWx(kLibraries) + "\n" + LibraryNames());
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticBitmap(this, wxID_ANY, ApplicationPicture(64)),
             wxSizerFlags().Border(wxRIGHT, gap));
    row->Add(texts, wxSizerFlags(1));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(row, wxSizerFlags(1).Expand().Border(wxALL, gap));
    auto* close = new wxButton(this, wxID_OK, ButtonLabel(kOkText, 'O'));
    close->SetDefault();
    column->Add(close, wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
    SetSizerAndFit(column);
    SetEscapeId(wxID_OK);
    CentreOnParent();
}

}  // namespace sontaro
