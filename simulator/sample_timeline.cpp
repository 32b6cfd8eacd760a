#include "simulator/sample_timeline.h"

#include "timeline/timeline_document.h"

namespace sontaro::simulator {

std::string SampleTimeline() {
    constexpr const char* kProjector = "192.168.84.40";
    constexpr std::int32_t kProjectorPort = 4352;
    constexpr const char* kLights = "192.168.84.60";
    constexpr std::int32_t kLightsPort = 7000;
    constexpr const char* kOn = "2531504F575220310D";
    constexpr const char* kOff = "2531504F575220300D";
    TimelineDocument document;
    document.Apply(
        {{},
         {},
         {{0, "舞曲", "霓虹之夜.mp4", 0, kPortTcp, kProjector, kProjectorPort, kOn},
          {0, "舞曲", "霓虹之夜.mp4", 2'500, kPortSerial0, "", 0, "A501"},
          {0, "舞曲", "霓虹之夜.mp4", 12'500, kPortSerial0, "", 0, "A50102"},
          {0, "舞曲", "霓虹之夜.mp4", 12'520, kPortRs485, "", 0, "0106000100FFD9EA"},
          {0, "舞曲", "霓虹之夜.mp4", 30'000, kPortDmx512, "", 0, "00FF80FF"},
          {0, "舞曲", "霓虹之夜.mp4", 30'040, kPortDmx512, "", 0, "00FF40FF"},
          {0, "舞曲", "霓虹之夜.mp4", 61'250, kPortUdp, kLights, kLightsPort, "0B2A"},
          {0, "舞曲", "霓虹之夜.mp4", 205'000, kPortTcp, kProjector, kProjectorPort, kOff},
          {0, "舞曲", "城市的风.mp4", 5'000, kPortSerial0 + 1, "", 0, "5E12"},
          {0, "舞曲", "城市的风.mp4", 90'000, kPortSerial0 + 1, "", 0, "5E13"},
          {0, "Ambient", "雨后花园.mp4", 1'000, kPortDmx512, "", 0, "00204060"},
          {1, "Ambient", "雨后花园.mp4", 1'000, kPortSerial3, "", 0, "A502"}}});
    return document.Write();
}

}  // namespace sontaro::simulator
