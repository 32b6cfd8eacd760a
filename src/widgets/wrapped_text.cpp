#include "widgets/wrapped_text.h"

#include <wx/tokenzr.h>

namespace sontaro {

namespace {

/// Whether a line may end behind it. From here on all scripts of East Asia follow; a full stop
/// stays with its sentence.
bool EndsLine(wxUniChar letter, wxUniChar next) {
    constexpr wxUint32 kFirstIdeogram = 0x2E80;
    const wxString marks = wxString::FromUTF8("，。；：！？、）”》…");
    if (next == ' ') return true;
    return (letter.GetValue() >= kFirstIdeogram || next.GetValue() >= kFirstIdeogram) &&
           marks.Find(next) == wxNOT_FOUND;
}

/// Letters of the text that go into its first line, one at least.
std::size_t FirstLine(const wxWindow& window, const wxString& text, int width) {
    std::size_t fits = 1;
    std::size_t tooLong = text.length() + 1;
    while (fits + 1 < tooLong) {
        const std::size_t middle = (fits + tooLong) / 2;
        if (window.GetTextExtent(text.substr(0, middle)).x <= width)
            fits = middle;
        else
            tooLong = middle;
    }
    if (fits == text.length()) return fits;
    for (std::size_t end = fits; end > 0; --end)
        if (EndsLine(text[end - 1], text[end])) return end;
    return fits;
}

}  // namespace

wxString WrappedText(const wxWindow& window, const wxString& text, int width) {
    wxString wrapped;
    for (wxStringTokenizer lines(text, "\n", wxTOKEN_RET_EMPTY_ALL); lines.HasMoreTokens();) {
        wxString rest = lines.GetNextToken();
        while (!rest.empty()) {
            const std::size_t length = FirstLine(window, rest, width);
            wrapped += rest.substr(0, length);
            rest = rest.substr(length).Trim(false);
            if (!rest.empty()) wrapped += '\n';
        }
        if (lines.HasMoreTokens()) wrapped += '\n';
    }
    return wrapped;
}

wxString FirstLines(const wxWindow& window, const wxString& wrapped, int width, std::size_t most) {
    const wxString ellipsis = wxString::FromUTF8("…");
    wxString cut;
    for (wxStringTokenizer lines(wrapped, "\n", wxTOKEN_RET_EMPTY_ALL); lines.HasMoreTokens();) {
        wxString line = lines.GetNextToken();
        if (--most > 0 || !lines.HasMoreTokens()) {
            cut += line + (lines.HasMoreTokens() ? "\n" : "");
            continue;
        }
        while (!line.empty() && window.GetTextExtent(line + ellipsis).x > width) line.RemoveLast();
        return cut + line + ellipsis;
    }
    return cut;
}

}  // namespace sontaro
