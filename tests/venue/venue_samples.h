// Players and documents of a venue for tests.
#pragma once

#include "base/json.h"
#include "simulator/player_state.h"
#include "venue/venue_player.h"

namespace sontaro::test {

inline const SettingsBlockKind& Kind(const char* name) { return *FindSettingsBlock(name); }

inline VenuePlayer PlayerNamed(std::string id, std::string mac = "02:00:7F:00:00:02") {
    return {std::move(id), std::move(mac), "127.0.0.2", 5000, 0x1230, 7, 3, "Hall"};
}

inline BlockReading ReadOf(const char* block, std::string text) {
    return {&Kind(block), BlockReading::Outcome::kRead, std::move(text)};
}
inline BlockReading FailureOf(const char* block, std::string why = "timed-out") {
    return {&Kind(block), BlockReading::Outcome::kFailed, "", std::move(why)};
}
inline BlockReading LackOf(const char* block) {
    return {&Kind(block), BlockReading::Outcome::kNotSupported};
}

/// What a new player holds.
inline std::string FactoryText(std::string_view block) {
    const simulator::PlayerState state = simulator::FactoryState();
    const std::pair<const char*, const std::string*> texts[] = {
        {"osd", &state.osd},
        {"control-protocol", &state.controlProtocol},
        {"player-control", &state.playerControl},
        {"timeline", &state.timeline},
        {"serial-port", &state.serialPort},
        {"subtitles", &state.subtitles},
        {"touch", &state.touchAction},
        {"cave", &state.cave},
        {"screen-split", &state.wall}};
    for (const auto& [name, text] : texts)
        if (name == block) return *text;
    return "";
}

/// A document with another value at a path of members and places.
inline std::string With(const std::string& text, const std::string& path,
                        const Json::Value& value) {
    Json::Value json = *ParseJson(text);
    Json::Value* at = &json;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string part = path.substr(begin, end - begin);
        at = at->isArray() ? &(*at)[static_cast<Json::ArrayIndex>(std::stoi(part))] : &(*at)[part];
        begin = end + 1;
    }
    *at = value;
    return WriteJson(json);
}

}  // namespace sontaro::test
