#include "base/table_rows.h"

#include <gmock/gmock.h>

#include "base/filter_text.h"
#include "support/listed_table.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;

struct Rows : testing::Test {
    void Filter(const char* text) { rows.Filter(FilterForm(text)); }
    std::string Shown() {
        std::string names;
        for (std::size_t place = 0; place < rows.Count(); ++place)
            names += model.rows[rows.RowAt(place)].name + " ";
        return names;
    }

    ListedTable model{{{1, "Opening", "A50B"}, {2, "开场", "01"}, {3, "pause", "5E12"}}};
    TableRows rows{model};
};

TEST_F(Rows, FilterLooksInEveryColumnWhateverTheCase) {
    const std::pair<const char*, const char*> filters[] = {
        {"PA", "pause "},  {"e", "Opening pause "},
        {"5e1", "pause "}, {" 　开场\t", "开场 "},
        {"Test", ""},      {"開", ""},
        {"o", "Opening "}, {"　", "Opening 开场 pause "}};
    for (const auto& [text, names] : filters) {
        Filter(text);
        EXPECT_EQ(Shown(), names) << text;
    }
}

TEST_F(Rows, FilterHoldsForRowsThatCome) {
    Filter("p");
    model.rows.insert(model.rows.begin(), {4, "Parade", ""});
    model.rows.push_back({5, "end", ""});
    rows.Read();
    EXPECT_EQ(Shown(), "Parade Opening pause ");
    EXPECT_THAT(rows.PlacesOf({3, 2, 1, 9}), ElementsAre(1, 2));
    EXPECT_EQ(rows.PlaceOf(3), 2);
    EXPECT_FALSE(rows.PlaceOf(2) || rows.PlaceOf(4) || rows.PlaceOf(99));
}

}  // namespace
}  // namespace sontaro::test
