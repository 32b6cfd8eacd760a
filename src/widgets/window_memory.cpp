#include "widgets/window_memory.h"

#include <wx/display.h>

#include <algorithm>

namespace sontaro {

namespace {

constexpr const char* kWindows = "windows";
constexpr const char* kTables = "tables";
constexpr const char* kPlace = "place";
constexpr const char* kColumns = "columns";
constexpr const char* kUnit = "characterWidth";  // what was measured with another font is of no use
constexpr Json::ArrayIndex kPlaceNumbers = 4;

bool IsNumbers(const Json::Value& list, Json::ArrayIndex count) {
    return list.isArray() && list.size() == count &&
           std::all_of(list.begin(), list.end(),
                       [](const Json::Value& number) { return number.isInt(); });
}

/// Writes `entry` under `name` among those of `group`.
void Keep(JsonFile& preferences, const char* group, const std::string& name,
          const Json::Value& entry) {
    const Status written = preferences.Update([&](Json::Value& root) {
        Json::Value& entries = root[group];
        if (!entries.isObject()) entries = Json::Value(Json::objectValue);
        entries[name] = entry;
    });
    static_cast<void>(written);
}

void RestoreColumns(wxListCtrl& list, const Json::Value& widths) {
    const auto count = static_cast<Json::ArrayIndex>(list.GetColumnCount());
    if (!IsNumbers(widths, count)) return;
    for (Json::ArrayIndex i = 0; i < count; ++i)
        if (widths[i].asInt() > 0) list.SetColumnWidth(static_cast<int>(i), widths[i].asInt());
}

}  // namespace

void RestoreWindow(wxTopLevelWindow& window, wxListCtrl* list, const std::string& name,
                   const JsonFile& preferences) {
    const Json::Value& windows = preferences.Root()[kWindows];
    if (!windows.isObject() || !windows[name].isObject()) return;
    const Json::Value& entry = windows[name];
    if (entry[kUnit] != window.GetCharWidth()) return;
    if (const Json::Value& place = entry[kPlace]; IsNumbers(place, kPlaceNumbers)) {
        const wxRect rectangle(place[0].asInt(), place[1].asInt(), place[2].asInt(),
                               place[3].asInt());
        wxSize size = rectangle.GetSize();
        size.DecTo(wxGetClientDisplayRect().GetSize());
        size.IncTo(window.GetMinSize());
        window.SetSize(size);
        if (wxDisplay::GetFromPoint(rectangle.GetPosition()) != wxNOT_FOUND)
            window.Move(rectangle.GetPosition());
    }
    if (list) RestoreColumns(*list, entry[kColumns]);
}

void RememberWindow(const wxTopLevelWindow& window, const wxListCtrl* list, const std::string& name,
                    JsonFile& preferences) {
    if (window.IsMaximized() || window.IsIconized()) return;
    Json::Value entry;
    entry[kUnit] = window.GetCharWidth();
    const wxRect rectangle = window.GetRect();
    for (int number : {rectangle.x, rectangle.y, rectangle.width, rectangle.height})
        entry[kPlace].append(number);
    for (int column = 0; list && column < list->GetColumnCount(); ++column)
        entry[kColumns].append(list->GetColumnWidth(column));
    Keep(preferences, kWindows, name, entry);
}

std::vector<int> RememberedWidths(const wxWindow& window, std::size_t count,
                                  const std::string& name, const JsonFile& preferences) {
    const Json::Value& tables = preferences.Root()[kTables];
    if (!tables.isObject() || !tables[name].isObject()) return {};
    const Json::Value& entry = tables[name];
    const Json::Value& columns = entry[kColumns];
    if (entry[kUnit] != window.GetCharWidth() ||
        !IsNumbers(columns, static_cast<Json::ArrayIndex>(count)))
        return {};
    std::vector<int> widths;
    for (const Json::Value& width : columns) widths.push_back(width.asInt());
    const bool isSound = std::ranges::all_of(widths, [](int width) { return width > 0; });
    return isSound ? widths : std::vector<int>();
}

void RememberWidths(const wxWindow& window, const std::vector<int>& widths, const std::string& name,
                    JsonFile& preferences) {
    Json::Value entry;
    entry[kUnit] = window.GetCharWidth();
    for (const int width : widths) entry[kColumns].append(width);
    Keep(preferences, kTables, name, entry);
}

}  // namespace sontaro
