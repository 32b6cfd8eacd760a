// Players of a video wall, and what they hold.
#pragma once

#include <fmt/format.h>

#include "base/json.h"
#include "screensplit/split_document.h"

namespace sontaro::test {

/// The block of a player with so many outputs.
inline ParameterBlock BlockOf(int outputs, std::uint16_t width = 1920,
                              std::uint16_t height = 1080) {
    ParameterBlock block{};
    const auto put = [&](std::size_t offset, std::uint16_t number) {
        block[offset] = static_cast<std::uint8_t>(number & 0xFF);
        block[offset + 1] = static_cast<std::uint8_t>(number >> 8);
    };
    put(40, width);
    put(42, height);
    put(6491, static_cast<std::uint16_t>(outputs));
    return block;
}

inline DeviceRecord PlayerAt(int lastOctet) {
    DeviceRecord record;
    record.ip = fmt::format("192.168.1.{}", lastOctet);
    record.id = fmt::format("ID{}", lastOctet);
    record.tcpPort = 9000;
    return record;
}

inline SplitDevice DeviceAt(int lastOctet, int outputs, std::uint16_t width = 1920,
                            std::uint16_t height = 1080) {
    return {PlayerAt(lastOctet), SplitDeviceParams(BlockOf(outputs, width, height))};
}

/// Two players with three screens, the first one has two of them.
inline std::vector<SplitDevice> ThreeScreens() { return {DeviceAt(21, 2), DeviceAt(22, 1)}; }

/// A configuration with these entries as its advanced settings.
inline std::string Configuration(const std::string& varParam = "[]") {
    return R"({"ver":7,"other":[1.25],"configData":{"fixedParam":[{"keyVal":"f","select":0.1}],)"
           R"("varParam":)" +
           varParam + "}}";
}

inline void Fetch(SplitDocument& document, const std::string& text) {
    document.SetConfiguration(*SplitConfiguration::Read(text));
}

inline Json::Value DataOf(const SplitDocument& document) {
    return (*ParseJson(document.Write()))["configData"];
}

/// The corners of what is sent, screen by screen: "0:0,0-1919,1079 "; a disabled one's in brackets.
inline std::string AreasOf(const Json::Value& data) {
    std::string areas;
    for (const Json::Value& area : data["channelShowArea"]) {
        const std::string text = fmt::format(
            "{}:{},{}-{},{}", area["screenID"].asInt(), area["leftTopX"].asInt(),
            area["leftTopY"].asInt(), area["rightBottomX"].asInt(), area["rightBottomY"].asInt());
        areas += (area["enable"].asInt() == 1 ? text : '(' + text + ')') + ' ';
    }
    return areas;
}

}  // namespace sontaro::test
