#include <fmt/core.h>
#include <json/value.h>

#include <array>
#include <stdexcept>

#include "base/json.h"
#include "bench/figures.h"
#include "bench/samples.h"
#include "bench/stopwatch.h"
#include "settings/custom_settings.h"
#include "simulator/sample_schema.h"

namespace sontaro::bench {

namespace {

constexpr std::size_t kItems = 10'000;
constexpr int kRepetitions = 15;
constexpr double kGoal = 2.0;

void Expect(bool holds) {
    if (!holds) throw std::runtime_error("a document is not whole");
}

/// What `action` returns goes after the time has been taken.
template <class Action>
double TimeOf(Action action) {
    const Stopwatch stopwatch;
    [[maybe_unused]] const auto result = action();
    return stopwatch.Seconds();
}

Figure Ratio(const char* name, const Comparison& time, std::size_t size) {
    return {name, time.ratio, Goal::kAtMost, kGoal,
            fmt::format("ours {:.2f} ms, jsoncpp {:.2f} ms, {} bytes", time.ours * 1e3,
                        time.baseline * 1e3, size)};
}

/// Against jsoncpp alone with the same reader and the same writer. `read` fills a new `Model` from
/// `text`, `write` gives the same text again.
template <class Model, class Read, class Write>
void Measure(std::array<const char*, 2> names, const std::string& text, Read read, Write write,
             std::vector<Figure>& figures) {
    const Result<Json::Value> value = ParseJson(text);
    Model model;
    Expect(value.ok() && read(model) && write(model) == text);
    const auto readOurs = [&] {
        Model another;
        return TimeOf([&] { return read(another); });
    };
    const Comparison reading = CompareInTurn(
        kRepetitions, readOurs, [&] { return TimeOf([&] { return ParseJson(text); }); });
    const Comparison writing = CompareInTurn(
        kRepetitions, [&] { return TimeOf([&] { return write(model); }); },
        [&] { return TimeOf([&] { return WriteJson(*value); }); });
    figures.push_back(Ratio(names[0], reading, text.size()));
    figures.push_back(Ratio(names[1], writing, text.size()));
}

}  // namespace

std::vector<Figure> Documents() {
    std::vector<Figure> figures;
    const std::string schema = simulator::LargeSchema(kItems);
    Measure<CCustomSettingAnalysor>(
        {"settings parse", "settings serialise"}, schema,
        [&](auto& settings) { return settings.Parse(schema); },
        [](const auto& settings) { return settings.Serialise(); }, figures);
    const std::string protocol = ControlProtocolText(FullControlProtocol());
    Measure<ControlProtocolModel>(
        {"protocol read", "protocol write"}, protocol,
        [&](auto& model) { return ReadControlProtocol(protocol, model).ok(); }, ControlProtocolText,
        figures);
    return figures;
}

}  // namespace sontaro::bench
