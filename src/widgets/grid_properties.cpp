#include "widgets/grid_properties.h"

#include <wx/dc.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/propgrid.h>
#include <wx/settings.h>

#include "base/row_text.h"
#include "widgets/common_texts.h"
#include "widgets/wx_text.h"

namespace sontaro {

namespace {

// Values of a colour row besides the colours themselves, which are 0x00BBGGRR.
constexpr int kDefaultColour = -1;
constexpr int kOtherColour = -2;

struct NamedColour {
    LocalText name;
    int value;
};

constexpr NamedColour kColours[] = {
    {{"默认", "default"}, kDefaultColour}, {{"黑色", "black"}, 0x000000},
    {{"白色", "white"}, 0xFFFFFF},         {{"灰色", "grey"}, 0x808080},
    {{"红色", "red"}, 0x0000FF},           {{"橙色", "orange"}, 0x00A5FF},
    {{"黄色", "yellow"}, 0x00FFFF},        {{"绿色", "green"}, 0x008000},
    {{"青色", "cyan"}, 0xFFFF00},          {{"蓝色", "blue"}, 0xFF0000},
    {{"紫色", "magenta"}, 0xFF00FF},       {{"其他...", "other..."}, kOtherColour},
};

std::string ColourText(long value) {
    return value < 0 ? "" : ColourRowText(static_cast<std::uint32_t>(value));
}

int ColourValue(const std::string& text) {
    return static_cast<int>(
        ColourOfRowText(text).value_or(static_cast<std::uint32_t>(kDefaultColour)));
}

/// Where the toolkit's own editor shows the row's value again as soon as the keyboard comes back,
/// this one keeps a text that is still to be mended.
class TextEditor : public wxPGTextCtrlEditor {
   public:
    [[nodiscard]] wxString GetName() const override { return "KeptText"; }
    void OnFocus(wxPGProperty* property, wxWindow* editor) const override {
        if (!property->GetGrid()->IsEditorsValueModified())
            wxPGTextCtrlEditor::OnFocus(property, editor);
    }
};

/// The toolkit owns it.
const wxPGEditor* KeptTextEditor() {
    static const wxPGEditor* const kEditor =
        wxPropertyGrid::RegisterEditorClass(std::make_unique<TextEditor>().release());
    return kEditor;
}

/// A drop-down of colours, each beside a sample.
class ColourProperty : public wxEnumProperty {
   public:
    ColourProperty(const wxString& label, const wxString& name) : wxEnumProperty(label, name) {
        for (const NamedColour& colour : kColours) m_choices.Add(ToWx(colour.name), colour.value);
    }

    /// Offers a colour that the list does not have.
    void Offer(int value) {
        if (m_choices.Index(value) == wxNOT_FOUND)
            m_choices.Insert(ToWx(ColourText(value)), static_cast<int>(m_choices.GetCount()) - 1,
                             value);
    }

    wxSize OnMeasureImage(int) const override { return wxPG_DEFAULT_IMAGE_SIZE; }

    void OnCustomPaint(wxDC& canvas, const wxRect& rectangle, wxPGPaintData& data) override {
        const int value = data.m_choiceItem >= 0
                              ? m_choices.GetValue(static_cast<unsigned>(data.m_choiceItem))
                              : static_cast<int>(GetValue().GetLong());
        const bool isColour = value >= 0;
        canvas.SetPen(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
        canvas.SetBrush(isColour
                            ? wxBrush(wxColour(static_cast<unsigned long>(value)))
                            : wxBrush(canvas.GetPen().GetColour(), wxBRUSHSTYLE_CROSSDIAG_HATCH));
        canvas.DrawRectangle(rectangle);
    }
};

/// A drop-down. A value that is not among the choices is offered besides them.
std::unique_ptr<wxPGProperty> MakeChoice(const SettingsRow& row) {
    wxPGChoices choices;
    int index = 0;
    int chosen = -1;
    for (const std::string& choice : row.choices) {
        if (choice == row.value) chosen = index;
        choices.Add(ToWx(choice), index++);
    }
    if (chosen < 0) choices.Add(ToWx(row.value), chosen = index);
    return std::make_unique<wxEnumProperty>(LabelOf(row, row.caution), ToWx(row.key), choices,
                                            chosen);
}

/// The index of a choice, which is offered from now on.
int ChoiceOf(wxPGProperty& property, const wxString& text) {
    const wxPGChoices& choices = property.GetChoices();
    const int index = choices.Index(text);
    return index != wxNOT_FOUND ? index
                                : property.AddChoice(text, static_cast<int>(choices.GetCount()));
}

std::unique_ptr<wxPGProperty> MakeYesNo(const SettingsRow& row) {
    auto property = std::make_unique<wxBoolProperty>(LabelOf(row, row.caution), ToWx(row.key),
                                                     row.value == kRowYes);
    property->SetAttribute(wxPG_BOOL_USE_CHECKBOX, true);
    return property;
}

std::unique_ptr<wxPGProperty> MakeColour(const SettingsRow& row) {
    auto property = std::make_unique<ColourProperty>(LabelOf(row, row.caution), ToWx(row.key));
    property->Offer(ColourValue(row.value));
    property->SetValue(static_cast<long>(ColourValue(row.value)));
    return property;
}

std::unique_ptr<wxPGProperty> MakeByKind(const SettingsRow& row) {
    switch (row.kind) {
        case RowKind::kChoice: return MakeChoice(row);
        case RowKind::kYesNo: return MakeYesNo(row);
        case RowKind::kColour: return MakeColour(row);
        default: break;  // texts
    }
    auto property = std::make_unique<wxStringProperty>(LabelOf(row, row.caution), ToWx(row.key),
                                                       ToWx(row.value));
    property->SetEditor(KeptTextEditor());
    return property;
}

}  // namespace

wxString LabelOf(const SettingsRow& row, const std::string& caution) {
    return caution.empty() ? ToWx(row.name) : ToWx(kCautionMark + row.name);
}

std::unique_ptr<wxPGProperty> MakeProperty(const SettingsRow& row) {
    std::unique_ptr<wxPGProperty> property = MakeByKind(row);
    if (!row.help.empty()) property->SetHelpString(ToWx(row.help));
    if (row.kind == RowKind::kReadOnly) property->ChangeFlag(wxPG_PROP_READONLY, true);
    return property;
}

std::string RowTextOf(const wxPGProperty& property, const SettingsRow& row,
                      const wxVariant& value) {
    switch (row.kind) {
        case RowKind::kYesNo: return value.GetBool() ? kRowYes : kRowNo;
        case RowKind::kColour: return ColourText(value.GetLong());
        case RowKind::kChoice: {
            wxVariant copy = value;
            return FromWx(property.ValueToString(copy));
        }
        default: break;  // texts
    }
    return FromWx(value.GetString());
}

wxVariant RowValueOf(wxPGProperty& property, const SettingsRow& row, const std::string& text) {
    switch (row.kind) {
        case RowKind::kYesNo: return {text == kRowYes};
        case RowKind::kChoice: return {ChoiceOf(property, ToWx(text))};
        case RowKind::kColour: {
            const int value = ColourValue(text);
            if (auto* colour = dynamic_cast<ColourProperty*>(&property)) colour->Offer(value);
            return {static_cast<long>(value)};
        }
        default: break;  // texts
    }
    return {ToWx(text)};
}

bool IsOtherColour(const SettingsRow& row, const wxVariant& value) {
    return row.kind == RowKind::kColour && value.GetLong() == kOtherColour;
}

}  // namespace sontaro
