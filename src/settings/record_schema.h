// Documents that are told as tables: they are reset, read, written, shown and edited by walking
// the table. Tables are written with settings/record_table.h.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "base/settings_rows.h"
#include "settings/record_fields.h"

namespace sontaro {

/// Where a document comes from. What nobody here knows is taken from a player alone.
enum class Source { kPlayer, kFile };

/// The operations, whatever the record is; `record` is one of the table's.
namespace records {

void Reset(const RecordTable& table, void* record);
void Read(const RecordTable& table, Json::Value& json, Source source, void* record);
[[nodiscard]] int MembersIn(const RecordTable& table, const Json::Value& json);
[[nodiscard]] Json::Value ToJson(const RecordTable& table, const void* record);
void Clamp(const RecordTable& table, void* record);
void Show(const RecordTable& table, const void* record, std::span<SettingsRows> grids,
          const std::string& path);
[[nodiscard]] std::optional<SettingsRow> RowAt(const RecordTable& table, const void* record,
                                               std::string_view key);
[[nodiscard]] EditAnswer Edit(const RecordTable& table, const SettingsEdit& edit, void* record);
[[nodiscard]] std::optional<LocalText> RefusalToSend(const RecordTable& table, const void* record);

}  // namespace records

/// A kind of document. Rows have paths as keys: keys of objects, places in arrays of fixed length,
/// and the numbers of elements that come and go (`Projector/3/Cmd/0/ONCmd`).
template <class Record>
class RecordSchema {
   public:
    constexpr explicit RecordSchema(const RecordTable& table) : table_(&table) {}

    /// Gives every field its initial value.
    void Reset(Record& record) const { records::Reset(*table_, &record); }

    /// Takes over what an object holds. A key that is missing or of another type leaves its field
    /// as it is, and so does what is no element of an array; elements that come and go are replaced
    /// as a whole. A whole number beyond its field is kept to be written back. Booleans and
    /// fractions are no whole numbers. What has been read is given up, while it is still at hand.
    void Read(Json::Value&& json, Source source, Record& record) const {
        records::Read(*table_, json, source, &record);
    }

    /// How many of the record's keys an object has, whatever is under them.
    [[nodiscard]] int MembersIn(const Json::Value& json) const {
        return records::MembersIn(*table_, json);
    }

    /// The whole document, which borrows nothing of the record.
    [[nodiscard]] Json::Value ToJson(const Record& record) const {
        return records::ToJson(*table_, &record);
    }

    /// Makes numbers that stand for choices stand for ones that there are: beyond the list for the
    /// last one, below it for the first.
    void Clamp(Record& record) const { records::Clamp(*table_, &record); }

    /// Appends the rows to the grids that the table names. `path` is where the record stands in a
    /// larger document, whose schema knows its rows by their keys.
    void Show(const Record& record, std::span<SettingsRows> grids,
              const std::string& path = {}) const {
        records::Show(*table_, &record, grids, path);
    }

    /// The row with that key; none when there is none.
    [[nodiscard]] std::optional<SettingsRow> RowAt(const Record& record,
                                                   std::string_view key) const {
        return records::RowAt(*table_, &record, key);
    }

    /// Takes over an edit of a row, or says why not.
    [[nodiscard]] EditAnswer Edit(const SettingsEdit& edit, Record& record) const {
        return records::Edit(*table_, edit, &record);
    }

    /// Why the document must not be sent as it stands; none when it may.
    [[nodiscard]] std::optional<LocalText> RefusalToSend(const Record& record) const {
        return records::RefusalToSend(*table_, &record);
    }

   private:
    const RecordTable* table_;
};

}  // namespace sontaro
