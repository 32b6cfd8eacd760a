// Documents of anything through the settings that players describe, and edits of anything.
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <unordered_set>

#include "base/bytes.h"
#include "settings/custom_settings_document.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// Takes `size` bytes off the input, or what is left.
std::string_view Take(std::string_view& input, std::size_t size) {
    const std::string_view taken = input.substr(0, size);
    input.remove_prefix(taken.size());
    return taken;
}

/// Takes an edit off the input: four bytes that say of which row and how long the text is, and the
/// text. The row is one of `groups` unless they have none there.
SettingsEdit TakeEdit(std::string_view& input, const SettingsRows& groups) {
    const auto number = [&] {
        return std::size_t{static_cast<unsigned char>(Take(input, 1).front())};
    };
    const std::size_t group = number();
    std::size_t row = number();
    row += 256 * number();
    const std::size_t length = number() & 0x1F;
    SettingsEdit edit{fmt::format("{}/{}", group, row), std::string(Take(input, length))};
    if (group < groups.size() && row < groups[group].rows.size())
        edit.key = groups[group].rows[row].key;
    return edit;
}

/// No two rows or groups have the same key.
void ExpectOwnKeys(const SettingsRows& groups) {
    std::unordered_set<std::string_view> keys;
    for (const SettingsGroup& group : groups) {
        Expect(keys.insert(group.key).second);
        for (const SettingsRow& row : group.rows) Expect(keys.insert(row.key).second);
    }
}

bool Shows(const SettingsRows& groups, const SettingsEdit& edit) {
    for (const SettingsGroup& group : groups)
        for (const SettingsRow& row : group.rows)
            if (row.key == edit.key) return row.value == edit.text;
    return false;
}

/// The first line is edits, what follows is the document.
void Run(std::string_view input) {
    std::string_view edits = Take(input, std::min(input.find('\n'), input.size()));
    CustomSettings document;
    static_cast<void>(document.TakeReply(input));
    ExpectOwnKeys(document.Rows());
    while (edits.size() >= 4) {
        const SettingsRows before = document.Rows();
        const SettingsEdit edit = TakeEdit(edits, before);
        const EditAnswer answer = document.Edit(edit);
        const bool accepted = answer.outcome == EditAnswer::Outcome::kAccepted;
        const SettingsRows after = document.Rows();
        Expect(accepted ? Shows(after, {edit.key, answer.text}) : after == before);
    }
    CCustomSettingAnalysor settings;
    settings.Parse(document.Write());
    const std::string text = settings.Serialise();
    Expect(text == document.Write());
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
