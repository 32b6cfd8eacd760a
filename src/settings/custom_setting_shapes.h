// The shapes that kinds of settings have: how each reads, writes and shows its record, and edits
// it.
#pragma once

#include <fmt/printf.h>

#include <algorithm>
#include <limits>
#include <tuple>
#include <unordered_set>

#include "base/json.h"
#include "base/row_text.h"
#include "settings/custom_setting_kinds.h"
#include "settings/row_keys.h"

namespace sontaro::custom_shapes {

using Document = CCustomSettingAnalysor;
using Rows = std::vector<SettingsRow>;
using Shown = std::optional<std::string>;
using Ticks = std::vector<bool>;
using ItemEdit = CustomSettingKind::Edit;

/// How values of one type are carried by JSON, shown and typed.
template <class T>
struct Plain;

template <>
struct Plain<std::int32_t> {
    static constexpr RowKind kRow = RowKind::kWholeNumber;
    static bool Is(const Json::Value& json) { return json.isInt(); }
    static std::int32_t Get(const Json::Value& json) { return json.asInt(); }
    static Json::Value Put(std::int32_t value) { return value; }
    static std::int32_t Typed(const std::string& text) { return LeadingInteger(text); }
    static std::string Text(std::int32_t value) { return std::to_string(value); }
};

template <>
struct Plain<double> {
    static constexpr RowKind kRow = RowKind::kDecimal;
    static constexpr double kLargest = std::numeric_limits<double>::max();
    static bool Is(const Json::Value& json) { return json.isNumeric(); }
    /// Later versions of jsoncpp read what is beyond a double's range as infinite.
    static double Get(const Json::Value& json) {
        return std::clamp(json.asDouble(), -kLargest, kLargest);
    }
    static Json::Value Put(double value) { return value; }
    static double Typed(const std::string& text) { return LeadingDouble(text); }
    static std::string Text(double value) { return fmt::sprintf("%.04f", value); }
};

template <>
struct Plain<std::string> {
    static constexpr RowKind kRow = RowKind::kText;
    static bool Is(const Json::Value& json) { return json.isString(); }
    static std::string Get(const Json::Value& json) { return TextOf(json); }
    static Json::Value Put(const std::string& value) { return value; }
    static const std::string& Typed(const std::string& text) { return text; }
    static const std::string& Text(const std::string& value) { return value; }
};

/// Numbers that JSON carries as texts.
template <class T>
struct AsText {
    static bool Is(const Json::Value& json) { return json.isString(); }
    static T Get(const Json::Value& json) { return Plain<T>::Typed(json.asString()); }
    static Json::Value Put(T value) { return Plain<T>::Text(value); }
};

template <class T>
std::vector<T> ReadList(const Json::Value& json) {
    std::vector<T> values;
    if (!json.isArray()) return values;
    values.reserve(json.size());
    for (const Json::Value& element : json)
        if (Plain<T>::Is(element)) values.push_back(Plain<T>::Get(element));
    return values;
}

template <class T>
void WriteList(const std::vector<T>& values, Json::Value& json) {
    json = Json::Value(Json::arrayValue);
    for (const T& value : values) json.append(Plain<T>::Put(value));
}

template <class T>
SettingsRow RowOf(SettingsRow row, const T& value) {
    row.kind = Plain<T>::kRow;
    row.value = Plain<T>::Text(value);
    return row;
}

/// Gives `value` what was typed, or exactly the allowed value that is shown as what was typed.
template <class T>
Shown TakeOver(const Document::BASE& record, const ItemEdit& edit, T& value,
               const std::vector<T>& allowed = {}) {
    const bool isItsRow = edit.rowName == record.label && edit.occurrence == 0;
    const bool hasSign = edit.mayBeNegative && edit.text.starts_with('-');
    if (!isItsRow || !FittingRowText(Plain<T>::kRow, edit.text.substr(hasSign ? 1 : 0), {}))
        return std::nullopt;
    const auto meant = std::ranges::find(allowed, edit.text, Plain<T>::Text);
    value = meant != allowed.end() ? *meant : Plain<T>::Typed(edit.text);
    return Plain<T>::Text(value);
}

/// One value. The allowed values are of no use to anyone.
struct Single {
    template <class Record>
    static bool Read(const Json::Value& select, const Json::Value&, Record& record) {
        using Value = Plain<decltype(record.value)>;
        if (!Value::Is(select)) return false;
        record.value = Value::Get(select);
        return true;
    }
    template <class Record>
    static void Write(const Record& record, Json::Value& select, Json::Value& range) {
        select = Plain<decltype(record.value)>::Put(record.value);
        range.append(select);
    }
    template <class Record>
    static void AddRows(const Record& record, const Ticks&, const SettingsRow& row, Rows& rows) {
        rows.push_back(RowOf(row, record.value));
    }
    template <class Record>
    static Shown Edit(Record& record, Ticks&, const ItemEdit& edit) {
        return TakeOver(record, edit, record.value);
    }
};

/// One of the allowed values, though a player may have chosen another.
struct Choice {
    template <class Record>
    static bool Read(const Json::Value& select, const Json::Value& range, Record& record) {
        using T = decltype(record.chosen);
        if (!Plain<T>::Is(select)) return false;
        record.chosen = Plain<T>::Get(select);
        record.allowed = ReadList<T>(range);
        return true;
    }
    template <class Record>
    static void Write(const Record& record, Json::Value& select, Json::Value& range) {
        select = Plain<decltype(record.chosen)>::Put(record.chosen);
        WriteList(record.allowed, range);
    }
    template <class Record>
    static void AddRows(const Record& record, const Ticks&, const SettingsRow& row, Rows& rows) {
        SettingsRow& added = rows.emplace_back(RowOf(row, record.chosen));
        added.kind = RowKind::kChoice;
        std::unordered_set<std::string> seen;
        for (const auto& value : record.allowed) {
            const std::string text = Plain<decltype(record.chosen)>::Text(value);
            if (seen.insert(text).second) added.choices.push_back(text);
        }
    }
    template <class Record>
    static Shown Edit(Record& record, Ticks&, const ItemEdit& edit) {
        return TakeOver(record, edit, record.chosen, record.allowed);
    }
};

/// A number between two bounds, whose order in a document does not matter. The player, not the
/// grid, holds the number within them.
template <template <class> class Carrier, bool kMayHaveMoreThanTwo = false>
struct Range : Single {
    template <class Record>
    static bool Read(const Json::Value& select, const Json::Value& range, Record& record) {
        using Number = Carrier<decltype(record.value)>;
        if (!Number::Is(select)) return false;
        record.value = Number::Get(select);
        const unsigned size = range.isArray() ? range.size() : 0;
        if (size < 2 || (size > 2 && !kMayHaveMoreThanTwo)) return true;
        if (Number::Is(range[0U]) && Number::Is(range[1U]))
            std::tie(record.minimum, record.maximum) =
                std::minmax({Number::Get(range[0U]), Number::Get(range[1U])});
        return true;
    }
    template <class Record>
    static void AddRows(const Record& record, const Ticks&, const SettingsRow& row, Rows& rows) {
        using Number = Plain<decltype(record.value)>;
        rows.push_back(RowOf(row, record.value));
        const auto within = std::clamp(record.value, record.minimum, record.maximum);
        if (record.value != within && record.minimum < record.maximum)
            rows.back().caution =
                OutsideRangeText(Number::Text(record.minimum), Number::Text(record.maximum));
    }
    template <class Record>
    static void Write(const Record& record, Json::Value& select, Json::Value& range) {
        using Number = Carrier<decltype(record.value)>;
        select = Number::Put(record.value);
        range.append(Number::Put(record.minimum));
        range.append(Number::Put(record.maximum));
    }
};

/// Some of the offered values, each with a yes/no row of its own.
struct Multiple {
    template <class Record>
    static bool Read(const Json::Value& select, const Json::Value& range, Record& record) {
        using T = typename decltype(record.offered)::value_type;
        if (!select.isArray()) return false;
        record.chosen = ReadList<T>(select);
        record.offered = ReadList<T>(range);
        return true;
    }
    template <class Record>
    static void Write(const Record& record, Json::Value& select, Json::Value& range) {
        WriteList(record.chosen, select);
        WriteList(record.offered, range);
    }
    /// Which of the offered values are chosen. Kept by position once there was an edit, since a
    /// value may be offered twice.
    template <class Record>
    static Ticks TicksOf(const Record& record, const Ticks& edited) {
        if (!edited.empty()) return edited;
        auto chosen = record.chosen;
        std::ranges::sort(chosen);
        Ticks ticks;
        for (const auto& value : record.offered)
            ticks.push_back(std::ranges::binary_search(chosen, value));
        return ticks;
    }
    template <class Record>
    static void AddRows(const Record& record, const Ticks& edited, SettingsRow row, Rows& rows) {
        using T = typename decltype(record.offered)::value_type;
        const Ticks ticks = TicksOf(record, edited);
        const std::string key = row.key + '/';
        RowKeys keys;
        row.kind = RowKind::kYesNo;
        for (std::size_t i = 0; i < ticks.size(); ++i) {
            row.key = key + keys.Next(Plain<T>::Text(record.offered[i]));
            row.name = RowName(record, record.offered[i]);
            row.value = ticks[i] ? kRowYes : kRowNo;
            rows.push_back(row);
        }
    }
    template <class Record, class T>
    static std::string RowName(const Record& record, const T& offered) {
        return record.label + "[" + Plain<T>::Text(offered) + "]";
    }
    /// Which of the offered values has that row.
    template <class Record>
    static std::optional<std::size_t> PlaceOf(const Record& record, const ItemEdit& edit) {
        int before = 0;
        for (std::size_t i = 0; i < record.offered.size(); ++i)
            if (RowName(record, record.offered[i]) == edit.rowName && before++ == edit.occurrence)
                return i;
        return std::nullopt;
    }
    template <class Record>
    static Shown Edit(Record& record, Ticks& edited, const ItemEdit& edit) {
        const std::optional<std::size_t> place = PlaceOf(record, edit);
        if (!place || !FittingRowText(RowKind::kYesNo, edit.text, {})) return std::nullopt;
        edited = TicksOf(record, edited);
        edited[*place] = edit.text == kRowYes;
        record.chosen.clear();
        for (std::size_t i = 0; i < edited.size(); ++i)
            if (edited[i]) record.chosen.push_back(record.offered[i]);
        return edit.text;
    }
};

}  // namespace sontaro::custom_shapes
