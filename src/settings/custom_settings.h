// Settings that a player describes itself: typed items in groups.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/settings_rows.h"

namespace sontaro {
struct CustomSettingKind;

/// The document. Texts are UTF-8, doubles finite, a minimum is never above its maximum.
class CCustomSettingAnalysor {
   public:
    /// What all items have. Items that cannot be used are left out of a document without a word.
    struct BASE {
        std::string key;  ///< as the player knows the setting
        std::string label;
        std::string inputType;  ///< keyword of its kind, see settings/custom_setting_kinds.h
        std::string remarks;

        /// The item as it stands in the document.
        [[nodiscard]] virtual Json::Value ToJson() const;
        virtual ~BASE() = default;
    };
    struct String : BASE {
        std::string value;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct GroupName : String {};  ///< the value is the group's title
    struct Int : BASE {
        std::int32_t value = 0;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct Double : BASE {
        double value = 0;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct IntArray : BASE {
        std::int32_t chosen = 0;
        std::vector<std::int32_t> allowed;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct DoubleArray : BASE {
        double chosen = 0;
        std::vector<double> allowed;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct StringArray : BASE {
        std::vector<std::string> allowed;
        std::string chosen;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct IntRange : BASE {
        std::int32_t value = 0, minimum = 0, maximum = 0;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct DoubleRange : BASE {
        double value = 0, minimum = 0, maximum = 0;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct IntMultiple : BASE {
        std::vector<std::int32_t> offered, chosen;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct DoubleMultiple : BASE {
        std::vector<double> offered, chosen;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct StringMultiple : BASE {
        std::vector<std::string> offered, chosen;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct IntStringRange : BASE {
        std::int32_t maximum = 0, minimum = 0, value = 0;
        [[nodiscard]] Json::Value ToJson() const override;
    };
    struct DoubleStringRange : BASE {
        double value = 0, minimum = 0, maximum = 0;
        [[nodiscard]] Json::Value ToJson() const override;
    };

    struct Item {
        const CustomSettingKind* kind = nullptr;  ///< of its record
        std::unique_ptr<BASE> record;
        std::vector<bool> ticks = {};  ///< of an edited multiple, one for each offered value
    };
    struct Group {
        std::unique_ptr<GroupName> title;  ///< always there, and no item
        std::vector<Item> items;
    };

    /// Reads a document in place of the one held. False, and nothing is held, when `text` is no
    /// JSON; JSON of another shape is a document without groups. Never throws.
    bool Parse(std::string_view text);
    /// The document as it stands; the title comes first in every group.
    [[nodiscard]] std::string Serialise() const;
    [[nodiscard]] SettingsRows BuildGrid() const;
    /// Gives the item with these indices a value. Ignored where it has no such row (`occurrence` is
    /// for rows that are named alike), and where the text does not fit: no sign is ever taken.
    EditAnswer UpdateFromGrid(int group, int item, const std::string& groupName,
                              const std::string& rowName, const std::string& value,
                              int occurrence = 0);
    void Clear();
    [[nodiscard]] CCustomSettingAnalysor Copy() const;
    [[nodiscard]] bool HasItems() const;
    [[nodiscard]] const std::vector<Group>& Groups() const { return groups_; }

   private:
    std::optional<Json::Value> version_;
    std::vector<Group> groups_;
};

}  // namespace sontaro
