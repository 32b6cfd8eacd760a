#include "app/reply_router.h"

#include <gmock/gmock.h>

#include "base/window_titles.h"
#include "link/crc16.h"
#include "support/fake_window.h"
#include "support/literals.h"
#include "support/manual_ui_thread.h"
#include "support/recording_prompts.h"

namespace sontaro::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The windows by the titles that players' replies are addressed to.
constexpr LocalText kVideo = {"Star 1.0视频控制", "Star 1.0Video Control"};
constexpr LocalText kSetParam = {"设置参数", "Set Param"};
constexpr LocalText kBatchSend = {"批量发送", "Batch Send"};
constexpr LocalText kUart = {"控制协议配置", "Setup UART"};
constexpr LocalText kPlayer = {"播放器控制协议", "PlayerControl"};
constexpr LocalText kTimeline = {"播放器时间轴控制", "PlayerTimeControl"};
constexpr LocalText kOsd = {"OSD", "OSD"};
constexpr LocalText kSerial = {"扩展串口配置", "ExtendedSerialPort"};
constexpr LocalText kSubtitles = {"字幕配置", "Subtitles setting"};
constexpr LocalText kTouch = {"触控配置", "TouchAction"};
constexpr LocalText kCave = {"Cave配置", "Cave"};
constexpr LocalText kMain = {"Star 1.0", "Star 1.0"};
const LocalText kWindows[] = {kVideo, kSetParam, kBatchSend, kUart,  kPlayer, kTimeline,
                              kOsd,   kSerial,   kSubtitles, kTouch, kCave,   kMain};

struct Routing : testing::Test, RouterActions {
    Routing() { SetApplicationTitle("Star 1.0"); }

    void CloseLinks() override { ++closings; }
    void SendPacket(const Target& target, const DevicePacket& packet) override {
        sent.push_back(target.ip + " " + std::to_string(packet.header.command));
    }

    void Open(const LocalText& window) {
        const std::string title = Localized(window);
        open[title] = std::make_unique<FakeWindow>(directory, title);
    }
    void OpenAll() {
        for (const LocalText& window : kWindows) Open(window);
    }
    void Route(PacketHeader header, const Bytes& payload = {}) {
        header.payloadLength = static_cast<std::uint32_t>(payload.size());
        router.Route({header, payload, {"127.0.0.2", 9000, 5}});
    }
    static PacketHeader Header(int command, int subCommand = 0, int argument = 0,
                               int qualifier = 0) {
        PacketHeader header;
        header.command = static_cast<std::uint8_t>(command);
        header.qualifier = static_cast<std::uint8_t>(qualifier);
        header.subCommand = static_cast<std::uint16_t>(subCommand);
        header.argument = static_cast<std::uint16_t>(argument);
        return header;
    }
    /// The titles of the windows that have been sent a message of that number.
    std::vector<std::string> ReceiversOf(int id) {
        std::vector<std::string> titles;
        for (const auto& [title, window] : open)
            for (const auto& entry : window->received)
                if (static_cast<int>(entry.message.id) == id) titles.push_back(title);
        return titles;
    }
    std::size_t MessageCount() {
        std::size_t count = 0;
        for (const auto& [title, window] : open) count += window->received.size();
        return count;
    }
    const WindowMessage& OnlyMessageOf(const LocalText& window) {
        auto& received = open.at(Localized(window))->received;
        EXPECT_EQ(received.size(), 1U);
        return received.back().message;
    }

    ManualUiThread ui;
    WindowDirectory directory{ui};
    RecordingPrompts prompts;
    ReplyRouter router{directory, prompts, *this};
    std::map<std::string, std::unique_ptr<FakeWindow>> open;
    int closings = 0;
    std::vector<std::string> sent;
};

struct Row : NamedCase {
    int command, subCommand, argument;
    std::size_t size;  // of the payload
    int id;
    std::uint32_t wParam;
    std::vector<LocalText> candidates;  // first choice first
};

class EveryRoute : public Routing, public testing::WithParamInterface<std::tuple<Row, Language>> {
 protected:
    const Row& row = std::get<Row>(GetParam());
    InLanguage language{std::get<Language>(GetParam())};
};

TEST_P(EveryRoute, LeadsToTheFirstOpenWindowInItsOwnMessage) {
    OpenAll();
    for (const LocalText& candidate : row.candidates) {
        Route(Header(row.command | 0x80, row.subCommand, row.argument), Pattern(row.size));
        ASSERT_THAT(ReceiversOf(row.id), ElementsAre(Localized(candidate)));
        const auto& message = open.at(Localized(candidate))->received.back().message;
        EXPECT_EQ(message.wParam, row.wParam);
        if (const auto* record = std::get_if<ReplyRecord>(&message.record)) {
            EXPECT_EQ(record->sender, (Target{"127.0.0.2", 9000, 5}));
            EXPECT_EQ(record->command, row.command);
            EXPECT_EQ(record->subCommand, row.subCommand);
            EXPECT_EQ(record->argument, row.argument);
            EXPECT_EQ(record->payload, Pattern(row.size));
        }
        open.erase(Localized(candidate));
    }
    Route(Header(row.command | 0x80, row.subCommand, row.argument), Pattern(row.size));
    EXPECT_THAT(ReceiversOf(row.id), IsEmpty());
    EXPECT_EQ(closings, 0);
}

// clang-format off
const Row kRows[] = {
    {"ControlProtocol", 3, 1, 0, 9, 0x617, 1, {kSetParam, kBatchSend, kUart}},
    {"Osd", 3, 4, 0, 9, 0x616, 0, {kOsd}},
    {"SplitRead", 3, 12, 0, 9, 0x61A, 12, {kSetParam}},
    {"SplitWritten", 3, 13, 0, 0, 0x61A, 13, {kSetParam}},
    {"SerialPortDocument", 3, 15, 0, 9, 0x61F, 0, {kSerial}},
    {"SerialPortSaved", 3, 15, 1, 0, 0x61F, 1, {kSerial}},
    {"SubtitlesDocument", 3, 16, 0, 9, 0x620, 0, {kSubtitles}},
    {"TouchSaved", 3, 18, 1, 0, 0x622, 1, {kTouch}},
    {"CaveDocument", 3, 19, 0, 9, 0x623, 0, {kCave}},
    {"PlayerControlDocument", 3, 21, 0, 9, 0x625, 0, {kPlayer}},
    {"TimelineSaved", 3, 23, 1, 0, 0x625, 1, {kTimeline}},
    {"PlayerState", 10, 1, 3, 9, 0x5FC, 3, {kPlayer, kTimeline, kUart}},
    {"PlayerData", 19, 0, 1, 207'496, 0x5FC, 1, {kVideo, kBatchSend, kUart, kSetParam}},
    {"PlayerDataStatus", 19, 0, 32767, 207'496, 0x606, 32767, {kVideo}},
    {"Upload", 20, 7, 9, 0, 0x5FD, 7, {kBatchSend}},
    {"DeviceModes", 36, 2, 0, 8, 0x604, 1, {kSetParam}},
    {"SerialData", 50, 0, 0, 1023, 0x608, 0, {kUart, kSetParam, kPlayer}},
    {"ParameterBlock", 54, 0, 0, 0, 0x60C, 0, {kSetParam}},
    {"Video", 59, 4, 3, 9, 0x615, 10, {kVideo}},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Every, EveryRoute,
                         testing::Combine(testing::ValuesIn(kRows),
                                          testing::Values(Language::kChinese, Language::kEnglish)),
                         [](const auto& row) {
                             return std::get<Row>(row.param).name +
                                    std::to_string(static_cast<int>(std::get<Language>(row.param)));
                         });

TEST_F(Routing, LayoutStateGoesToBothWindowsThatShowIt) {
    OpenAll();
    Route(Header(0xB4, 0, 2), ToBytes("a.lay?"));
    EXPECT_THAT(ReceiversOf(0x627), ElementsAre("Setup UART", "Star 1.0Video Control"));
    EXPECT_EQ(std::get<ReplyRecord>(OnlyMessageOf(kVideo).record).payload, ToBytes("a.lay?"));
    open.erase("Star 1.0Video Control");
    Route(Header(0xB4), ToBytes("a.lay?"));
    EXPECT_THAT(ReceiversOf(0x627), ElementsAre("Setup UART", "Setup UART"));
}

Bytes WithChecksum(std::size_t size) {
    Bytes bytes = Pattern(size);
    const std::uint16_t checksum = Crc16Modbus(bytes);
    bytes.push_back(static_cast<std::uint8_t>(checksum));
    bytes.push_back(static_cast<std::uint8_t>(checksum >> 8));
    return bytes;
}

Bytes Flipped(Bytes bytes, std::size_t at) {
    bytes[at] ^= 1;
    return bytes;
}

struct Drop : NamedCase {
    int command, subCommand, argument, qualifier;
    Bytes payload;
};

class DroppedReply : public Routing, public testing::WithParamInterface<Drop> {};

TEST_P(DroppedReply, ReachesNobodyAndEndsNothing) {
    OpenAll();
    const Drop& drop = GetParam();
    Route(Header(drop.command, drop.subCommand, drop.argument, drop.qualifier), drop.payload);
    EXPECT_EQ(MessageCount(), 0U);
    EXPECT_EQ(closings, 0);
    EXPECT_THAT(prompts.texts, IsEmpty());
    EXPECT_THAT(sent, IsEmpty());
}

const Drop kDrops[] = {
    {"SettingsTested", 0x83, 19, 2, 0, Pattern(9)},
    {"SettingsEmptyDocument", 0x83, 21, 0, 0, {}},
    {"BlockZero", 0x83, 0, 0, 0, Pattern(9)},
    {"BlockWithoutHandler", 0x83, 17, 0, 0, Pattern(9)},
    {"BlockAbove23", 0x83, 24, 1, 0, Pattern(9)},
    {"BlockThatIsOneModulo256", 0x83, 0x0104, 1, 0, Pattern(9)},
    {"PlayerDataShort", 0x93, 0, 1, 0, Pattern(207'495)},
    {"PlayerDataLong", 0x93, 0, 1, 0, Pattern(207'497)},
    {"ModesOfAnotherLength", 0xA4, 2, 0, 0, Pattern(9)},
    {"ModesWithoutTheirEntries", 0xA4, 2, 0, 0, {}},
    {"SerialEmpty", 0xB2, 0, 0, 0, {}},
    {"SerialTooLong", 0xB2, 0, 0, 0, Pattern(1024)},
    {"LayoutOfAnotherQualifier", 0xB4, 0, 0, 1, Pattern(9)},
    {"BlockOfAnotherLength", 0xB6, 0, 0, 0, WithChecksum(6516)},
    {"BlockFlippedInside", 0xB6, 0, 0, 0, Flipped(WithChecksum(6515), 77)},
    {"BlockFlippedChecksumLow", 0xB6, 0, 0, 0, Flipped(WithChecksum(6524), 6524)},
    {"BlockFlippedChecksumHigh", 0xB6, 0, 0, 0, Flipped(WithChecksum(6524), 6525)},
};
INSTANTIATE_TEST_SUITE_P(Every, DroppedReply, testing::ValuesIn(kDrops), CaseName());

TEST_F(Routing, ParameterBlockIsCheckedAndFilledUpWithZeros) {
    for (const std::size_t size : {0U, 6515U, 6524U}) {
        Open(kSetParam);
        Route(Header(0xB6), size == 0 ? Bytes() : WithChecksum(size));
        Bytes expected = Pattern(size);
        expected.resize(6524);
        const auto& block =
            std::get<std::unique_ptr<ParameterBlock>>(OnlyMessageOf(kSetParam).record);
        EXPECT_TRUE(std::equal(block->begin(), block->end(), expected.begin())) << size;
    }
}

TEST_F(Routing, DeviceModesHoldTwentyEntriesAtMost) {
    for (const int qualifier : {0, 1, 2, 3}) {
        Open(kSetParam);
        const std::size_t entries = qualifier == 0 ? 21 : 2;
        Route(Header(0xA4, static_cast<int>(entries), 0, qualifier), Pattern(4 * entries));
        const auto& modes =
            *std::get<std::unique_ptr<DeviceModes>>(OnlyMessageOf(kSetParam).record);
        EXPECT_EQ(modes.mode, qualifier % 3);
        EXPECT_THAT(modes.entries[1], ElementsAre(4, 5, 6, 7));
        EXPECT_EQ(modes.entries[19][3], entries == 21 ? 79 : 0);
        EXPECT_EQ(modes.padding[0], 0);
    }
}

TEST_F(Routing, SerialDataAndUploadCarryWhatThePlayerSent) {
    OpenAll();
    Route(Header(0xB2), Hex("AA00BB"));
    const auto& serial = *std::get<std::unique_ptr<SerialData>>(OnlyMessageOf(kUart).record);
    EXPECT_EQ(serial.count, 3);
    EXPECT_EQ(Bytes(serial.bytes.begin(), serial.bytes.begin() + 4), Hex("AA00BB00"));
    Route(Header(0x94, 7, 9));
    EXPECT_EQ(OnlyMessageOf(kBatchSend).lParam, 9U);
}

struct Acknowledgement : NamedCase {
    int qualifier;
    bool batchSendOpen;
    std::vector<std::string> sent, notices;
};

class SavedControlProtocol : public Routing, public testing::WithParamInterface<Acknowledgement> {};

TEST_P(SavedControlProtocol, IsForwardedThenRestartsAndIsAnnounced) {
    if (GetParam().batchSendOpen) Open(kBatchSend);
    Open(kUart);
    Route(Header(0x83, 1, 0, GetParam().qualifier));
    EXPECT_EQ(OnlyMessageOf(GetParam().batchSendOpen ? kBatchSend : kUart).wParam, 0U);
    EXPECT_EQ(sent, GetParam().sent);
    EXPECT_EQ(prompts.texts, GetParam().notices);
}

const Acknowledgement kAcknowledgements[] = {
    {"Plain", 0, false, {}, {"Changes have been saved!"}},
    {"WithRestart", 1, false, {"127.0.0.2 33"}, {"Changes have been saved!"}},
    {"InABatch", 1, true, {"127.0.0.2 33"}, {}},
};
INSTANTIATE_TEST_SUITE_P(Every, SavedControlProtocol, testing::ValuesIn(kAcknowledgements),
                         CaseName());

TEST_F(Routing, UnsupportedCommandIsShownAndClosesEveryLink) {
    OpenAll();
    for (const int command : {0xC3, 0x03, 0x43, 0x80, 0xFB}) Route(Header(command, 4), Pattern(9));
    EXPECT_EQ(prompts.texts, std::vector<std::string>(
                                 5, "This function is not supported in the current version!"));
    EXPECT_EQ(closings, 5);
    EXPECT_EQ(MessageCount(), 0U);
}

TEST_F(Routing, UnknownCommandsAndThirtyThreeCloseEveryLink) {
    OpenAll();
    const int commands[] = {1, 2, 9, 33, 51, 58, 60, 63};
    for (const int command : commands) Route(Header(0x80 | command), Pattern(9));
    EXPECT_EQ(closings, std::ssize(commands));
    EXPECT_THAT(prompts.texts, IsEmpty());
    EXPECT_EQ(MessageCount(), 0U);
}

TEST_F(Routing, LockedLayoutIsShownInsteadOfForwarded) {
    OpenAll();
    Route(Header(0xB4, 0, 1));
    const InLanguage chinese(Language::kChinese);
    Route(Header(0xB4, 0, 1));
    Route(Header(0xC3));
    Route(Header(0x83, 1));
    EXPECT_THAT(
        prompts.texts,
        ElementsAre("The layout is locked, please unlock it first!", "布局已锁定，请先解锁！",
                    "当前版本不支持此功能,请及时更新！", "控制协议配置完成！"));
    EXPECT_THAT(ReceiversOf(0x627), IsEmpty());
}

TEST_F(Routing, EndOfALinkIsToldToWhoUploadsAndWhoKeepsItAlive) {
    const std::vector<LocalText> openings[] = {{kSetParam, kBatchSend, kUart, kPlayer},
                                               {kBatchSend, kPlayer}};
    const std::vector<std::string> expected[] = {{"Set Param", "Setup UART"},
                                                 {"Batch Send", "PlayerControl"}};
    for (std::size_t i = 0; i < std::size(openings); ++i) {
        open.clear();
        for (const LocalText& window : openings[i]) Open(window);
        router.LinkEnded();
        EXPECT_THAT(ReceiversOf(0x597), ElementsAre(expected[i][0]));
        EXPECT_THAT(ReceiversOf(0x8001), ElementsAre(expected[i][1]));
        EXPECT_EQ(open.at(expected[i][1])->received.back().message.wParam, 7U);
    }
}

}  // namespace
}  // namespace sontaro::test
