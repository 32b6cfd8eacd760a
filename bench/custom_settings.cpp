#include "settings/custom_settings.h"

#include <fmt/core.h>
#include <json/value.h>

#include <stdexcept>

#include "base/json.h"
#include "bench/figures.h"
#include "bench/stopwatch.h"
#include "simulator/sample_schema.h"

namespace sontaro::bench {

namespace {

constexpr std::size_t kItems = 10'000;
constexpr int kRepetitions = 15;
constexpr double kGoal = 2.0;

void Expect(bool holds) {
    if (!holds) throw std::runtime_error("settings are missing");
}

double TimeToParse(const std::string& text) {
    CCustomSettingAnalysor settings;
    const Stopwatch stopwatch;
    const bool parsed = settings.Parse(text);
    const double seconds = stopwatch.Seconds();
    Expect(parsed && settings.HasItems());
    return seconds;
}

/// The settings are parsed with the same reader, and written with the same writer.
double TimeOfReader(const std::string& text) {
    const Stopwatch stopwatch;
    const Result<Json::Value> value = ParseJson(text);
    const double seconds = stopwatch.Seconds();
    Expect(value.ok());
    return seconds;
}

template <class Write>
double TimeToWrite(const std::string& text, Write write) {
    const Stopwatch stopwatch;
    const std::string written = write();
    const double seconds = stopwatch.Seconds();
    Expect(written == text);
    return seconds;
}

Figure Ratio(const char* name, const Comparison& time) {
    return {name, time.ratio, Goal::kAtMost, kGoal,
            fmt::format("ours {:.1f} ms, jsoncpp {:.1f} ms, {} settings", time.ours * 1e3,
                        time.baseline * 1e3, kItems)};
}

}  // namespace

std::vector<Figure> CustomSettingsDocument() {
    const std::string text = simulator::LargeSchema(kItems);
    const Result<Json::Value> value = ParseJson(text);
    CCustomSettingAnalysor settings;
    Expect(value.ok() && settings.Parse(text));
    const Comparison parse = CompareInTurn(
        kRepetitions, [&] { return TimeToParse(text); }, [&] { return TimeOfReader(text); });
    const Comparison write = CompareInTurn(
        kRepetitions, [&] { return TimeToWrite(text, [&] { return settings.Serialise(); }); },
        [&] { return TimeToWrite(text, [&] { return WriteJson(*value); }); });
    return {Ratio("settings parse", parse), Ratio("settings serialise", write)};
}

}  // namespace sontaro::bench
