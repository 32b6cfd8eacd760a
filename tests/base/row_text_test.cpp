#include "base/row_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace sontaro::test {
namespace {

// clang-format off
TEST(RowText, IntegersAreReadFromTheStartAndHeldWithin32Bits) {
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    const std::pair<const char*, std::int32_t> cases[] = {
        {"", 0}, {"x1", 0}, {"-", 0}, {" \t-12x", -12}, {"+7", 7}, {"+-7", 0}, {"- 7", 0}, {"1.9", 1}, {"007", 7},
        {"2147483648", 2'147'483'647}, {"-99999999999999999999", kLeast}, {"-2147483648", kLeast}};
    for (const auto& [text, number] : cases) EXPECT_EQ(LeadingInteger(text), number) << text;
}

TEST(RowText, DoublesAreReadFromTheStartAndFinite) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    const std::pair<const char*, double> cases[] = {
        {"", 0}, {".", 0}, {"-.5x", -0.5}, {" +1e2", 100}, {"1.2.3", 1.2}, {"1.5e999x", kLargest},
        {"-2.5e999", -kLargest}, {"1.5e-999", 0}, {"-inf", -kLargest}, {"nan", 0}, {"+-1", 0}, {"1,5", 1}};
    for (const auto& [text, number] : cases) EXPECT_EQ(LeadingDouble(text), number) << text;
}

TEST(RowText, FitsItsKindOrIsNotTaken) {
    using enum RowKind;
    const std::tuple<RowKind, const char*, const char*> cases[] = {  // none: "-"
        {kWholeNumber, "012", "012"}, {kWholeNumber, "", "-"}, {kWholeNumber, "1.0", "-"}, {kDecimal, "1.2.", "1.2."},
        {kDecimal, "+1", "-"}, {kHexCommand, " a5 5\tA", "A55A"}, {kHexCommand, "A5 5", "-"}, {kHexCommand, "0x12", "-"},
        {kHexCommand, " ", ""}, {kChoice, "b", "b"}, {kChoice, "c", "-"}, {kYesNo, "1", "1"},
        {kYesNo, "yes", "-"}, {kReadOnly, "x", "-"}, {kText, "", ""}};
    for (const auto& [kind, text, taken] : cases)
        EXPECT_EQ(FittingRowText(kind, text, {"a", "b"}).value_or("-"), taken) << text;
}
// clang-format on

}  // namespace
}  // namespace sontaro::test
