#include <fmt/core.h>

#include <stdexcept>

#include "base/json.h"
#include "bench/figures.h"
#include "bench/stopwatch.h"
#include "screensplit/wall_frame.h"

namespace sontaro::bench {

namespace {

constexpr int kRepetitions = 51;

/// A configuration as players have it, with some settings of their own.
constexpr const char* kConfiguration = R"({"ver":3,"configData":{"fixedParam":[
    {"keyVal":"model","inputType":3,"lableName":"Model","remarks":"","valueRange":[],"select":"X"}],
    "varParam":[
    {"keyVal":"blend","inputType":8,"lableName":"Blend","remarks":"","valueRange":[0,1],"select":0.5},
    {"keyVal":"gamma","inputType":8,"lableName":"Gamma","remarks":"","valueRange":[1,3],"select":2.2},
    {"keyVal":"mode","inputType":4,"lableName":"Mode","remarks":"","valueRange":[0,1,2],"select":1}
    ]}})";

SplitDevice DeviceWithTwoOutputs(int number) {
    ParameterBlock block{};
    const std::uint8_t size[] = {0x80, 0x07, 0x38, 0x04};  // 1920 x 1080
    std::copy(std::begin(size), std::end(size), block.begin() + 40);
    block[6491] = 2;
    SplitDevice device{{}, SplitDeviceParams(block)};
    device.record.ip = fmt::format("192.168.1.{}", number);
    device.record.id = fmt::format("0102030405{:02}", number);
    device.record.remarks = "左侧包厢";
    return device;
}

void Arrange(SplitDocument& document, int screens) {
    std::vector<SplitDevice> devices;
    for (int i = 0; i < screens / 2; ++i) devices.push_back(DeviceWithTwoOutputs(21 + i));
    document.SetDevices(std::move(devices));
    document.SetConfiguration(*SplitConfiguration::Read(kConfiguration));
    if (document.ApplyOrder()) throw std::runtime_error("the wall has no order");
    document.SetAllOverlaps(120);
}

/// Seconds that many calls of `action` take, each of which gives something.
template <class Action>
double TimeOfMany(int times, const Action& action) {
    std::size_t given = 0;
    const Stopwatch stopwatch;
    for (int i = 0; i < times; ++i) given += action(i);
    const double time = stopwatch.Seconds();
    if (given == 0) throw std::runtime_error("nothing has been done");
    return time;
}

Comparison WritingAgainstJsoncpp() {
    constexpr int kTimes = 20;
    SplitDocument document;
    Arrange(document, 16);
    const std::string text = document.Write();
    const Result<Json::Value> tree = ParseJson(text);
    if (!tree || WriteJson(*tree) != text) throw std::runtime_error("the document is not whole");
    const auto ours = [&](int) {
        const auto screens = document.Wall().Screens(*document.Size());
        return WriteJson(
                   document.Configuration().With(screens, *document.Size(), document.Advanced()))
            .size();
    };
    return CompareInTurn(
        kRepetitions, [&] { return TimeOfMany(kTimes, ours); },
        [&] { return TimeOfMany(kTimes, [&](int) { return WriteJson(*tree).size(); }); });
}

/// Many frames of a seam that is dragged: a new layout, its picture, and where all of it is.
double TimeOfDrag(int screens) {
    constexpr int kFrames = 300;
    SplitDocument document;
    Arrange(document, screens);
    const SeamDrag drag(document, 1, 0, 0, 0.25);
    return TimeOfMany(kFrames, [&](int i) {
        drag.MoveTo(i % 100, 0, document);
        const WallPicture picture(document);
        const WallFrame frame(picture, {1200, 400});
        double drawn = 0;
        for (const WallTile& tile : picture.Tiles())
            drawn += frame.Placed(tile.area).width + frame.Placed(tile.shown).width;
        for (std::size_t seam = 0; seam < picture.Overlaps().size(); ++seam)
            drawn += frame.Handle(seam).width;
        return static_cast<std::size_t>(drawn);
    });
}

}  // namespace

std::vector<Figure> ScreenSplits() {
    const Comparison writing = WritingAgainstJsoncpp();
    const Comparison dragging = CompareInTurn(
        kRepetitions, [] { return TimeOfDrag(16); }, [] { return TimeOfDrag(4); });
    return {{"screen split write", writing.ratio, Goal::kAtMost, 1.8,
             fmt::format("20 times: ours {:.2f} ms, jsoncpp {:.2f} ms", writing.ours * 1e3,
                         writing.baseline * 1e3)},
            {"screen split picture", dragging.ratio, Goal::kAtMost, 4.0,
             fmt::format("300 frames: 16 screens {:.2f} ms, 4 screens {:.2f} ms",
                         dragging.ours * 1e3, dragging.baseline * 1e3)}};
}

}  // namespace sontaro::bench
