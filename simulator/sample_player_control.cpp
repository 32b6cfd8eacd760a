#include "simulator/sample_player_control.h"

namespace sontaro::simulator {

std::string SamplePlayerControl() {
    return R"({
    "Players": [{
        "PlayerID": 0, "PlayerEnable": 1, "MovTypeSwitchEnable": 1, "AspectRatio": 0,
        "VideoPlayMode": 1, "Play": "a50101", "Stop": "a50102", "Pause": "a50103",
        "PlayStop": "", "BackType": "a50105", "NextType": "a50106", "BackVideo": "a50107",
        "NextVideo": "a50108", "MovSinglePlay": "", "MovSingleRepeat": "a5010a",
        "MovTypeRepeat": "a5010b", "MovTypeRandom": "", "MovAllRandom": "a5010d",
        "VideoType": [
            {"TypeName": "舞曲", "SendCmd": "a50201", "RecvCmd": "5a0201",
             "ElectroacousticMode": 1, "ScreenEffectID": 12},
            {"TypeName": "Ambient", "SendCmd": "a50202", "RecvCmd": "5a0202",
             "ElectroacousticMode": 0, "ScreenEffectID": 0}
        ],
        "lamp": {"colour": "amber"}
    }]
})";
}

}  // namespace sontaro::simulator
