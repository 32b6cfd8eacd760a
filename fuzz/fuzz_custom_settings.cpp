// Documents of anything through the settings that players describe, and edits of anything.
#include <algorithm>
#include <cstdlib>

#include "base/bytes.h"
#include "settings/custom_settings.h"

namespace sontaro {
namespace {

/// Takes `size` bytes off the input, or what is left.
std::string_view Take(std::string_view& input, std::size_t size) {
    const std::string_view taken = input.substr(0, size);
    input.remove_prefix(taken.size());
    return taken;
}

/// Takes an edit off the input: four bytes that say of what and how long the text is, and the text.
SettingsEdit TakeEdit(std::string_view& input) {
    const auto number = [&] { return static_cast<signed char>(Take(input, 1).front()); };
    SettingsEdit edit;
    edit.group = number();
    edit.item = number();
    edit.position = number();
    edit.text = Take(input, static_cast<std::size_t>(number() & 0x1F));
    return edit;
}

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// The first line is edits, what follows is the document.
void Run(std::string_view input) {
    std::string_view edits = Take(input, std::min(input.find('\n'), input.size()));
    CCustomSettingAnalysor settings;
    settings.Parse(input);
    while (edits.size() >= 4) {
        const SettingsRows before = settings.BuildGrid();
        const EditAnswer answer = settings.UpdateFromGrid(TakeEdit(edits));
        const bool accepted = answer.outcome == EditAnswer::Outcome::kAccepted;
        Expect(accepted || settings.BuildGrid() == before);
    }
    const std::string text = settings.Serialise();
    CCustomSettingAnalysor again;
    Expect(again.Parse(text));
    Expect(again.Serialise() == text);
    Expect(again.HasItems() == settings.HasItems());
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
