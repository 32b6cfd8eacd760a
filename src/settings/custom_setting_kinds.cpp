#include "settings/custom_setting_kinds.h"

#include <algorithm>
#include <iterator>

#include "settings/custom_setting_shapes.h"

namespace sontaro {

namespace {

using namespace custom_shapes;

constexpr const char* kInputType = "inputType";
constexpr const char* kSelect = "select";
constexpr const char* kValueRange = "valueRange";

struct CommonText {
    const char* key;
    std::string Document::BASE::*text;
};

constexpr CommonText kCommonTexts[] = {
    {"keyVal", &Document::BASE::key},
    {"lableName", &Document::BASE::label},
    {kInputType, &Document::BASE::inputType},
    {"remarks", &Document::BASE::remarks},
};

template <class Record, class Shape>
constexpr CustomSettingKind Kind(std::string_view keyword) {
    using Item = CustomSettingKind::Item;
    return {keyword,
            [](const Json::Value& select, const Json::Value& range) -> CustomSettingKind::Record {
                auto record = std::make_unique<Record>();
                if (!Shape::Read(select, range, *record)) return nullptr;
                return record;
            },
            [](const Document::BASE& record) -> CustomSettingKind::Record {
                return std::make_unique<Record>(dynamic_cast<const Record&>(record));
            },
            [](const Item& item, const SettingsRow& row, Rows& rows) {
                Shape::AddRows(dynamic_cast<const Record&>(*item.record), item.ticks, row, rows);
            },
            [](Item& item, const ItemEdit& edit) {
                return Shape::Edit(dynamic_cast<Record&>(*item.record), item.ticks, edit);
            }};
}

constexpr CustomSettingKind kKinds[] = {
    Kind<Document::GroupName, Single>("GroupName"),
    Kind<Document::Int, Single>("Int"),
    Kind<Document::Double, Single>("Double"),
    Kind<Document::String, Single>("String"),
    Kind<Document::IntArray, Choice>("IntArry"),
    Kind<Document::DoubleArray, Choice>("DoubleArry"),
    Kind<Document::StringArray, Choice>("StringArry"),
    Kind<Document::IntRange, Range<Plain>>("IntRange"),
    Kind<Document::DoubleRange, Range<Plain, true>>("DoubleRange"),
    Kind<Document::IntMultiple, Multiple>("IntMultiple"),
    Kind<Document::DoubleMultiple, Multiple>("DoubleMultiple"),
    Kind<Document::StringMultiple, Multiple>("StringMultiple"),
    Kind<Document::IntStringRange, Range<AsText>>("IntStringRange"),
    Kind<Document::DoubleStringRange, Range<AsText>>("DoubleStringRange"),
};

/// The members of an element that make an item, found in one pass over all that it has.
class Members {
   public:
    explicit Members(const Json::Value& element) {
        for (auto member = element.begin(); member != element.end(); ++member) {
            const char* end = nullptr;
            const char* begin = member.memberName(&end);
            const auto at = std::ranges::find(kKeys, std::string_view(begin, end));
            if (at != std::end(kKeys)) values_[at - std::begin(kKeys)] = &*member;
        }
    }
    /// Null when the element has no such member.
    const Json::Value& operator[](std::string_view key) const {
        const Json::Value* value = values_[std::ranges::find(kKeys, key) - std::begin(kKeys)];
        return value ? *value : Json::Value::nullSingleton();
    }

   private:
    static constexpr std::string_view kKeys[] = {
        kCommonTexts[0].key, kCommonTexts[1].key, kCommonTexts[2].key, kCommonTexts[3].key, kSelect,
        kValueRange};

    const Json::Value* values_[std::size(kKeys)] = {};
};

const CustomSettingKind* KindOf(const Json::Value& inputType) {
    const char* begin = nullptr;
    const char* end = nullptr;
    if (!inputType.isString() || !inputType.getString(&begin, &end)) return nullptr;
    const std::string_view keyword(begin, static_cast<std::size_t>(end - begin));
    const auto* kind = std::ranges::find(kKinds, keyword, &CustomSettingKind::keyword);
    return kind != std::end(kKinds) ? kind : nullptr;
}

template <class Shape, class Record>
Json::Value Written(const Record& record) {
    Json::Value json = record.BASE::ToJson();
    Json::Value& select = json[Json::StaticString(kSelect)];
    Json::Value& range = json[Json::StaticString(kValueRange)];
    Shape::Write(record, select, range);
    return json;
}

}  // namespace

Json::Value Document::BASE::ToJson() const {
    Json::Value json;
    for (const CommonText& common : kCommonTexts)
        json[Json::StaticString(common.key)] = this->*common.text;
    return json;
}

Json::Value Document::String::ToJson() const { return Written<Single>(*this); }
Json::Value Document::Int::ToJson() const { return Written<Single>(*this); }
Json::Value Document::Double::ToJson() const { return Written<Single>(*this); }
Json::Value Document::IntArray::ToJson() const { return Written<Choice>(*this); }
Json::Value Document::DoubleArray::ToJson() const { return Written<Choice>(*this); }
Json::Value Document::StringArray::ToJson() const { return Written<Choice>(*this); }
Json::Value Document::IntRange::ToJson() const { return Written<Range<Plain>>(*this); }
Json::Value Document::DoubleRange::ToJson() const { return Written<Range<Plain>>(*this); }
Json::Value Document::IntMultiple::ToJson() const { return Written<Multiple>(*this); }
Json::Value Document::DoubleMultiple::ToJson() const { return Written<Multiple>(*this); }
Json::Value Document::StringMultiple::ToJson() const { return Written<Multiple>(*this); }
Json::Value Document::IntStringRange::ToJson() const { return Written<Range<AsText>>(*this); }
Json::Value Document::DoubleStringRange::ToJson() const { return Written<Range<AsText>>(*this); }

const CustomSettingKind& TitleKind() { return kKinds[0]; }

std::string_view KeywordAt(int index) {
    const bool isKind = index >= 0 && static_cast<std::size_t>(index) < std::size(kKinds);
    return isKind ? kKinds[index].keyword : "";
}

Document::Item ReadCustomSetting(const Json::Value& element) {
    if (!element.isObject()) return {};
    const Members members(element);
    const CustomSettingKind* kind = KindOf(members[kInputType]);
    const Json::Value& select = members[kSelect];
    const Json::Value& range = members[kValueRange];
    if (!kind || select.isNull() || range.isNull()) return {};
    auto record = kind->read(select, range);
    if (!record) return {};
    for (const CommonText& common : kCommonTexts) {
        const Json::Value& text = members[common.key];
        if (text.isString()) record.get()->*common.text = TextOf(text);
    }
    return {kind, std::move(record)};
}

}  // namespace sontaro
