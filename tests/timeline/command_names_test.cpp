#include "timeline/command_names.h"

#include <gmock/gmock.h>

#include "support/fake_player_channel.h"
#include "support/recording_prompts.h"
#include "support/temporary_folder.h"

namespace sontaro::test {
namespace {

using State = CommandNamesState;
using testing::ElementsAre;
using testing::SizeIs;

struct NamedCommands : testing::Test, ExchangeBench {
    void Answer(std::string_view text) {
        WindowMessage message =
            Message(MessageId::kControlProtocol, kCommandSettings, kBlockControlProtocol, text);
        EXPECT_TRUE(names.Handle(message));
    }
    RecordingPrompts prompts;
    TemporaryFolder folder;
    CommandNames names{exchange, player};
};

TEST_F(NamedCommands, AreThoseOfADocumentThatCanBeSent) {
    const auto read = ReadNamedCommands(R"({"Serial": {"Play": "a5 01", "Pause": "A5 0", "Hand": 7},
        "VideoType": [5, {"TypeName": "Disco", "SendCmd": "A502", "RecvCmd": "5A02"}],
        "Projector": [{"IP": "10.0.0.9", "Port": 4352, "ProtocolType": 1,
                       "Cmd": [{"ONCmd": "01"}, "no", {"OFFCmd": "02"}]},
                      {"IP": "10.0.0", "Port": 4352, "Cmd": [{"ONCmd": "03"}]},
                      {"IP": "10.0.0.9", "Port": 65536, "Cmd": [{"ONCmd": "04"}]}]})");
    const CommandPeer peer = {kPortTcp, "10.0.0.9", 4352};
    EXPECT_THAT(*read,
                ElementsAre(NamedCommand{"Serial Control", "Video Play", "A501"},
                            NamedCommand{"Video Type2 Disco", "Send Cmd", "A502"},
                            NamedCommand{"Projector Control 1", "Projector ON Cmd1", "01", peer},
                            NamedCommand{"Projector Control 1", "Projector OFF Cmd3", "02", peer},
                            NamedCommand{"Projector Control 2", "Projector ON Cmd1", "03"},
                            NamedCommand{"Projector Control 3", "Projector ON Cmd1", "04"}));
    for (const char* useless : {"", "[]", "{", R"({"cmdInfos": []})"})
        EXPECT_FALSE(ReadNamedCommands(useless)) << useless;
}

TEST_F(NamedCommands, OfASilentPlayerAreAskedForAgainAndStayOnceTheyAreThere) {
    names.AskPlayer();
    Answer("");
    EXPECT_TRUE(names.State() == State::kOfPlayer);
    names.AskPlayer();
    timers.Advance(kAnswerLimit);
    EXPECT_TRUE(names.State() == State::kNoAnswer);
    EXPECT_EQ(channel.lastBoxes, Boxes::kMuted);
    EXPECT_EQ(Report(ExchangeNews::Kind::kNotSupported, kCommandPlayerState), Boxes::kShown);
    names.AskPlayer();
    EXPECT_TRUE(names.State() == State::kAsking);
    EXPECT_EQ(channel.Log(), "3.1.0; 3.1.0; 3.1.0; ");
    Answer(R"({"Serial": {"Play": "A501"}})");
    EXPECT_TRUE(names.State() == State::kOfPlayer);
    names.TakeFile(folder.Write("a.JSON", "[]"), prompts);
    EXPECT_THAT(prompts.boxes, SizeIs(1));
    EXPECT_THAT(names.Commands(), SizeIs(1));
}

}  // namespace
}  // namespace sontaro::test
