// sontaro-cli in the process of a test, and players for it.
#pragma once

#include <gmock/gmock.h>

#include "base/json.h"
#include "cli/exit_code.h"
#include "cli/program.h"
#include "simulator/player_group.h"
#include "support/temporary_folder.h"
#include "support/test_network.h"

namespace sontaro::cli::test {

using sontaro::test::TemporaryFolder;
using sontaro::test::TestNetwork;

class TextCollector : public TextSink {
   public:
    void Write(std::string_view written) override { text += written; }

    std::string text;
};

/// What a call has told.
struct Told {
    int code = -1;
    std::string results, remarks;

    /// The results as the objects that they are.
    [[nodiscard]] std::vector<Json::Value> Objects() const {
        std::vector<Json::Value> objects;
        for (std::size_t begin = 0; begin < results.size();) {
            const std::size_t end = results.find('\n', begin);
            const auto object = ParseJson(std::string_view(results).substr(begin, end - begin));
            objects.push_back(object ? *object : Json::Value("no JSON"));
            begin = end + 1;
        }
        return objects;
    }
};

/// Calls the program in English, with folders of the test's own.
class Caller {
   public:
    Told Call(std::vector<std::string> arguments) {
        TextCollector results;
        TextCollector remarks;
        ProgramWays ways{results, remarks};
        ways.stop = stop.get_token();
        ways.config = folder / "config";
        ways.confirm = [this](const std::string& question) {
            questions.push_back(question);
            return answer;
        };
        if (find) ways.find = find;
        arguments.insert(arguments.end(),
                         {"--language", "en", "--data", TextOfPath(folder / "data")});
        const int code = RunProgram(arguments, ways);
        return {code, results.text, remarks.text};
    }

    TemporaryFolder folder;
    std::stop_source stop;
    std::optional<bool> answer;  ///< to questions; none: nobody is there
    std::vector<std::string> questions;
    std::function<Result<std::vector<DeviceRecord>>(const FindPlan&)> find;
};

/// Simulated players in the network of the test.
struct CliTest : testing::Test, Caller {
    explicit CliTest(std::size_t count = 2) : players(LineUp(network, count)) {
        EXPECT_TRUE(players.Start());
    }
    static std::vector<simulator::PlayerOptions> LineUp(const TestNetwork& network,
                                                        std::size_t count) {
        simulator::LineUpOptions options;
        options.count = count;
        options.baseAddress = network.Player(0);
        options.restartTime = std::chrono::milliseconds(200);
        return *simulator::LineUp(options);
    }

    /// Calls the program for players that are found from the test's own address.
    Told Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--local-address", FormatIpv4(network.Local())});
        return Call(std::move(arguments));
    }
    [[nodiscard]] std::string Address(std::size_t player) const {
        return FormatIpv4(network.Player(player));
    }
    [[nodiscard]] std::string Name(std::size_t player) {
        return Address(player) + ':' + std::to_string(players.Player(player).Address().port);
    }
    void SetFault(std::size_t player, const char* script) {
        players.Player(player).SetFaults(*simulator::ParseFaultScript(script));
    }
    /// Settings that were written to a player, so many.
    [[nodiscard]] auto Writes(std::size_t player) {
        return std::ranges::count_if(
            players.Player(player).ReceivedPackets(), [](const DevicePacket& packet) {
                return packet.header.command == kCommandSettings && !packet.payload.empty();
            });
    }

    TestNetwork network;
    simulator::PlayerGroup players;
};

}  // namespace sontaro::cli::test
