#include "screensplit/split_rows.h"

#include <fmt/printf.h>

#include <charconv>
#include <iterator>

#include "base/row_text.h"
#include "screensplit/advanced_params.h"
#include "screensplit/number_checks.h"

namespace sontaro {

namespace {

constexpr LocalText kSlotName = {"%d幕", "%dScreen"};
constexpr LocalText kWidth = {"宽度", "Width"};
constexpr LocalText kHeight = {"高度", "Height"};
constexpr LocalText kEnable = {"使能", "Enable"};
constexpr LocalText kEnableHelp = {"1:使用;0:禁用", "1:Enable;0:Disable"};
constexpr LocalText kScreen = {"分幕", "Screen"};
constexpr LocalText kPixels = {"单位(像素)", "Unit (pixel)"};

constexpr LocalText kHiddenName = {"参数过多", "Too many settings"};
constexpr LocalText kHidden = {"另有 %d 项未显示，将原样发回", "%d more, not shown, unchanged"};

constexpr const char* kSort = "Sort";
constexpr const char* kSplit = "Split";
constexpr const char* kZoom = "Zoom";
constexpr const char* kOverlap = "Overlap";

struct ZoomEdge {
    const char* key;
    LocalText name;
    std::int32_t SplitZoom::*pixels;
    std::int32_t SplitSize::*limit;
};

constexpr ZoomEdge kEdges[] = {
    {"Left", {"左", "Left"}, &SplitZoom::left, &SplitSize::width},
    {"Top", {"上", "Top"}, &SplitZoom::top, &SplitSize::height},
    {"Right", {"右", "Right"}, &SplitZoom::right, &SplitSize::width},
    {"Bottom", {"下", "Bottom"}, &SplitZoom::bottom, &SplitSize::height},
};

SettingsRow NumberRow(const std::string& key, const std::string& name, std::int32_t value,
                      RowKind kind = RowKind::kReadOnly) {
    return {key, kind, name, std::to_string(value)};
}

/// A key of a row: the grid, the number of the thing, and what of it.
struct RowPath {
    std::string_view grid;
    std::size_t number = 0;
    std::string_view field;
};

RowPath PathOf(std::string_view key) {
    RowPath path;
    const std::size_t slash = std::min(key.find('/'), key.size());
    path.grid = key.substr(0, slash);
    key.remove_prefix(std::min(slash + 1, key.size()));
    const char* const end = key.data() + key.size();
    const auto read = std::from_chars(key.data(), end, path.number);
    path.field = {read.ptr, static_cast<std::size_t>(end - read.ptr)};
    if (path.field.starts_with('/')) path.field.remove_prefix(1);
    return path;
}

std::string KeyOf(const char* grid, std::size_t number) {
    return std::string(grid) + '/' + std::to_string(number);
}

EditAnswer EditSlot(SplitDocument& document, std::size_t number, const std::string& text) {
    const auto slot = SlotOf(text, document.Names());
    if (!slot || number == 0 || number > document.Names().size()) return {};
    document.SetSlot(number - 1, *slot);
    return {EditAnswer::Outcome::kAccepted, SlotText(*slot, document.Names())};
}

/// Has `take` set a number from 0 to `most`.
template <class Take>
EditAnswer EditPixels(const std::string& text, std::int32_t most, const Take& take) {
    if (const auto refusal = RefusalOfNumber(text, NumberForm::kWhole, 0, most, true))
        return {EditAnswer::Outcome::kRefused, Localized(*refusal)};
    const std::int32_t pixels = LeadingInteger(text);
    take(pixels);
    return {EditAnswer::Outcome::kAccepted, std::to_string(pixels)};
}

EditAnswer EditOverlap(SplitDocument& document, std::size_t number, const std::string& text) {
    if (number < 2 || number > document.WallLength() || !document.Size()) return {};
    return EditPixels(text, MostOverlap(document.Direction(), *document.Size()),
                      [&](std::int32_t pixels) { document.SetOverlap(number - 2, pixels); });
}

EditAnswer EditZoom(SplitDocument& document, const RowPath& path, const std::string& text) {
    const auto* edge = std::ranges::find(kEdges, path.field, &ZoomEdge::key);
    if (edge == std::end(kEdges) || path.number >= document.Wall().zooms.size() || !document.Size())
        return {};
    SplitZoom zoom = document.Wall().zooms[path.number];
    return EditPixels(text, MostZoom(*document.Size()).*edge->limit, [&](std::int32_t pixels) {
        zoom.*edge->pixels = pixels;
        document.SetZoom(path.number, zoom);
    });
}

SettingsRows Alone(SettingsGroup group) {
    SettingsRows rows;
    rows.push_back(std::move(group));
    return rows;
}

}  // namespace

SettingsRows SortRows(const SplitDocument& document) {
    SettingsGroup group{kSort, Localized(kSortTitle), {}};
    std::vector<std::string> choices = {Localized(kInvalidSlot)};
    for (const ScreenName& name : document.Names()) choices.push_back(name.text);
    const std::vector<SplitSlot>& slots = document.Shown().slots;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        SettingsRow row{KeyOf(kSort, i + 1), RowKind::kChoice,
                        fmt::sprintf(Localized(kSlotName), i + 1),
                        SlotText(slots[i], document.Names())};
        row.choices = choices;
        group.rows.push_back(std::move(row));
    }
    return Alone(std::move(group));
}

SettingsRows SplitRows(const SplitDocument& document) {
    SettingsRows groups;
    const std::optional<SplitSize> size = document.Size();
    if (!document.IsLaidOut() || !size) return groups;
    const bool isHorizontal = document.Direction() == SplitDirection::kHorizontal;
    std::size_t number = 0;
    for (const std::size_t screen : document.Wall().arrangement.Order()) {
        const std::string key = KeyOf(kSplit, ++number);
        const SplitSeam seam = number > 1 ? document.Wall().seams[number - 2] : SplitSeam();
        SettingsGroup& group = groups.emplace_back();
        group.key = key;
        group.name = document.Names()[screen].text;
        group.rows = {NumberRow(key + "/Width", Localized(kWidth), size->width),
                      NumberRow(key + "/Height", Localized(kHeight), size->height),
                      NumberRow(key + "/Enable", Localized(kEnable), 1),
                      NumberRow(key + '/' + kOverlap, fmt::sprintf("%d/%d", number - 1, number),
                                isHorizontal ? seam.x : seam.y,
                                number > 1 ? RowKind::kWholeNumber : RowKind::kReadOnly)};
        SettingsRow& enable = group.rows[2];
        enable.help = Localized(kEnableHelp);
        enable.choices = {"1", "0"};
    }
    return groups;
}

SettingsRows ZoomRows(const SplitDocument& document) {
    SettingsRows groups;
    if (!document.IsLaidOut()) return groups;
    for (const std::size_t screen : document.Wall().arrangement.Order()) {
        SettingsGroup& group = groups.emplace_back();
        group.key = KeyOf(kZoom, screen);
        group.name = Localized(kScreen);
        for (const ZoomEdge& edge : kEdges) {
            group.rows.push_back(NumberRow(group.key + '/' + edge.key, Localized(edge.name),
                                           document.Wall().zooms[screen].*edge.pixels,
                                           RowKind::kWholeNumber));
            group.rows.back().help = Localized(kPixels);
        }
    }
    return groups;
}

SettingsRows AdvancedRows(const SplitDocument& document) {
    SettingsGroup group{kAdvancedPath, Localized(kAdvancedTitle), {}};
    document.Advanced().AddRows(kAdvancedPath, group.rows);
    if (const std::size_t hidden = document.Advanced().HiddenCount(); hidden > 0)
        group.rows.push_back({std::string(kAdvancedPath) + "/#hidden", RowKind::kReadOnly,
                              Localized(kHiddenName), fmt::sprintf(Localized(kHidden), hidden)});
    return group.rows.empty() ? SettingsRows() : Alone(std::move(group));
}

EditAnswer EditSplitRow(SplitDocument& document, const SettingsEdit& edit) {
    const RowPath path = PathOf(edit.key);
    if (path.grid == kSort) return EditSlot(document, path.number, edit.text);
    if (path.grid == kSplit && path.field == kOverlap)
        return EditOverlap(document, path.number, edit.text);
    if (path.grid == kZoom) return EditZoom(document, path, edit.text);
    if (path.grid == kAdvancedPath) return document.EditAdvanced(edit);
    return {};
}

}  // namespace sontaro
