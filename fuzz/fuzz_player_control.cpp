// A player control protocol of anything, edited by anything, added to and deleted from, written and
// read again.
#include <algorithm>
#include <cstdlib>

#include "base/bytes.h"
#include "base/encoding.h"
#include "playercontrol/player_control_changes.h"

namespace sontaro {
namespace {

constexpr std::size_t kMostEdits = 8;

void Expect(bool holds) {
    if (!holds) std::abort();
}

// NOLINTNEXTLINE(misc-no-recursion): groups stand within groups
void Collect(const SettingsRows& groups, std::vector<SettingsRow>& rows) {
    for (const SettingsGroup& group : groups) {
        rows.insert(rows.end(), group.rows.begin(), group.rows.end());
        Collect(group.groups, rows);
    }
}

std::vector<SettingsRow> RowsIn(const SettingsRows& groups) {
    std::vector<SettingsRow> rows;
    Collect(groups, rows);
    return rows;
}

/// The row shows what an accepted edit says; anything else leaves the document alone.
void EditRow(PlayerControlSettings& document, std::size_t number, const std::string& text) {
    const std::vector<SettingsRow> rows = RowsIn(document.Rows());
    const std::string key = rows.empty() ? "Players/none/Play" : rows[number % rows.size()].key;
    const EditAnswer answer = document.Edit({key, text});
    const std::vector<SettingsRow> after = RowsIn(document.Rows());
    if (answer.outcome != EditAnswer::Outcome::kAccepted) return Expect(after == rows);
    const auto row = std::ranges::find(after, key, &SettingsRow::key);
    Expect(row->value == answer.text && row->caution == answer.caution);
}

void Do(PlayerControlSettings& document, const PlayerControlChange& change) {
    if (change.refusal) return;
    Expect(document.Edit(change.edit).outcome == EditAnswer::Outcome::kAccepted);
    Expect(document.TakeDropped() == 0);
}

/// An addition that is done again, when there may be no room for it any more.
void AddAgain(PlayerControlSettings& document, const std::string& key) {
    constexpr ElementId kFirstOwn = Elements<ControlledPlayer>::kFirstInserted;
    const std::optional<ControlElement> element = ElementOf(key);
    if (!element || element->player >= kFirstOwn || element->type.value_or(0) >= kFirstOwn) return;
    static_cast<void>(document.Edit({key, "+"}));
    static_cast<void>(document.TakeDropped());
}

/// Every line is a change: its first byte says which, its second to what.
void Change(PlayerControlSettings& document, std::string_view line) {
    const std::size_t kind = static_cast<unsigned char>(line[0]);
    const std::size_t place = static_cast<unsigned char>(line[1]);
    const std::string text = DecodeUtf8(line.substr(2));
    const Elements<ControlledPlayer>& players = document.Model().players;
    std::optional<ElementId> player;
    if (place % 3 < players.size()) player = players.IdAt(place % 3);
    switch (kind % 8) {
        case 0: return Do(document, PlayerAddition(document));
        case 1: return Do(document, TypeAddition(document, player, text));
        case 2: return Do(document, PlayerDeletion(document, player));
        case 3: return Do(document, TypeDeletion(document, player, ChosenInGrid{text}));
        case 4: return AddAgain(document, text);
        default: EditRow(document, (kind << 8) + place, text);
    }
}

/// A document up to the first zero byte, then lines that change it.
void Run(std::string_view input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    PlayerControlSettings document;
    const bool isTaken = document.TakeReply(input.substr(0, end)).ok();
    Expect(isTaken || document.Model() == PlayerControlModel());
    std::string_view lines = input.substr(std::min(end + 1, input.size()));
    for (std::size_t changes = 0; !lines.empty() && changes < kMostEdits; ++changes) {
        const std::size_t next = std::min(lines.find('\n'), lines.size());
        if (next >= 2) Change(document, lines.substr(0, next));
        lines.remove_prefix(std::min(next + 1, lines.size()));
    }
    Expect(document.Model().players.size() <= kMostControlledPlayers);
    const std::string written = document.Write();
    const SettingsRows rows = document.Rows();
    PlayerControlSettings again;
    Expect(again.TakeReply(written).ok() && again.Write() == written);
    std::map<std::string, std::string> held;
    for (const SettingsRow& row : RowsIn(rows)) held[row.key] = row.value;
    document.ShowHeld(held);
    Expect(document.TakeReply(written).ok() && document.Write() == written);
    std::vector<std::string> keys, keysAgain;
    for (const SettingsRow& row : RowsIn(rows)) keys.push_back(row.key);
    for (const SettingsRow& row : RowsIn(document.Rows())) keysAgain.push_back(row.key);
    Expect(keys == keysAgain);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
