#include "exchange/reply_router.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <map>

#include "base/window_titles.h"
#include "link/crc16.h"
#include "support/fake_window.h"
#include "support/literals.h"
#include "support/manual_ui_thread.h"
#include "support/recording_prompts.h"

namespace sontaro::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The windows by the titles that players' replies are addressed to.
// clang-format off
constexpr LocalText kVideo = {"Star 1.0视频控制", "Star 1.0Video Control"}, kSetParam = {"设置参数", "Set Param"},
    kBatchSend = {"批量发送", "Batch Send"}, kUart = {"控制协议配置", "Setup UART"}, kOsd = {"OSD", "OSD"},
    kPlayer = {"播放器控制协议", "PlayerControl"}, kTimeline = {"播放器时间轴控制", "PlayerTimeControl"},
    kSerial = {"扩展串口配置", "ExtendedSerialPort"}, kSubtitles = {"字幕配置", "Subtitles setting"},
    kTouch = {"触控配置", "TouchAction"}, kCave = {"Cave配置", "Cave"};
const std::vector<LocalText> kAllWindows = {kVideo, kSetParam, kBatchSend, kUart, kPlayer, kTimeline, kOsd, kSerial, kSubtitles, kTouch, kCave};
// clang-format on

/// Writes down, in order, what becomes of replies.
struct Routing : testing::Test, RouterActions {
    Routing() {
        SetApplicationTitle("Star 1.0");
        prompts.whileShown = [this] { log += testing::PrintToString(prompts.boxes.back()) + "; "; };
    }
    void CloseLinks() override { log += "close; "; }
    void SendPacket(const Target& target, const DevicePacket& packet) override {
        log += fmt::format("send {} {}; ", target.ip, packet.header.command);
    }
    void Open(const std::vector<LocalText>& windows) {
        open.clear();
        for (const LocalText& window : windows)
            open.try_emplace(Localized(window), directory, Localized(window),
                             [this, window](const WindowMessage& message) {
                                 log += fmt::format("{} {:X} {}; ", window.english,
                                                    static_cast<int>(message.id), message.wParam);
                             });
    }
    /// A reply with the two words of a header: command and qualifier, sub-command and argument.
    std::string Route(std::uint32_t command, std::uint32_t selector = 0,
                      const Bytes& payload = {}) {
        const DevicePacket packet = DevicePacket::Request(command, selector, AsText(payload));
        router.Route({packet.header, packet.payload, sender, 7});
        return std::exchange(log, "");
    }
    const WindowMessage& LastOf(const LocalText& window) {
        return open.at(Localized(window)).messages.back();
    }
    template <class Record>
    const Record& RecordOf(const LocalText& window) {
        return *std::get<std::unique_ptr<Record>>(LastOf(window).record);
    }

    ManualUiThread ui;
    WindowDirectory directory{ui};
    RecordingPrompts prompts;
    ExchangeHub hub;
    std::string log;
    Boxes boxes = Boxes::kShown;
    const ExchangeHub::Subscription subscription = hub.Subscribe([this](const auto& news) {
        log += fmt::format("news {} {} {}; ", static_cast<int>(news.kind),
                           news.origin.header.command, news.origin.connection);
        return boxes;
    });
    ReplyRouter router{directory, prompts, hub, *this};
    std::map<std::string, FakeWindow> open;
    const Target sender{"127.0.0.2", 9000, 5};
};

struct Row : NamedCase {
    std::uint32_t command, selector;
    std::size_t size;  // of the payload
    int id;
    std::uint32_t wParam;
    std::vector<LocalText> candidates;  // first choice first
};

struct EveryRow : Routing, testing::WithParamInterface<Row> {};

TEST_P(EveryRow, LeadsToTheFirstOpenWindowInItsOwnMessage) {
    const Row& row = GetParam();
    const std::string message = fmt::format(" {:X} {}; ", row.id, row.wParam);
    const auto route = [&] { return Route(row.command, row.selector, Pattern(row.size)); };
    for (const Language language : {Language::kChinese, Language::kEnglish}) {
        const InLanguage spoken(language);
        Open(kAllWindows);
        for (const LocalText& candidate : row.candidates) {
            const std::string told = route();
            ASSERT_THAT(told,
                        AllOf(HasSubstr(candidate.english + message), Not(HasSubstr("close"))));
            EXPECT_EQ(told.find(message), told.rfind(message));
            const WindowMessage& last = LastOf(candidate);
            if (const auto* record = std::get_if<ReplyRecord>(&last.record)) {
                EXPECT_EQ(record->payload, Pattern(row.size));
            }
            EXPECT_EQ(last.origin.sender, sender);
            EXPECT_EQ(last.origin.connection, 7U);
            EXPECT_EQ(last.origin.header.command | 0x80U, row.command);
            EXPECT_EQ(last.origin.header.subCommand | unsigned{last.origin.header.argument} << 16,
                      row.selector);
            open.erase(Localized(candidate));
        }
        EXPECT_THAT(route(), Not(HasSubstr(message)));
    }
}

// clang-format off
const Row kRows[] = {
    {"ControlProtocol", 0x83, 1, 9, 0x617, 1, {kSetParam, kBatchSend, kUart, kTimeline}},
    {"Osd", 0x83, 4, 9, 0x616, 0, {kOsd}}, {"SplitRead", 0x83, 12, 9, 0x61A, 12, {kSetParam}},
    {"SplitWritten", 0x83, 13, 0, 0x61A, 13, {kSetParam}}, {"SerialPortDocument", 0x83, 15, 9, 0x61F, 0, {kSerial}},
    {"SerialPortSaved", 0x83, 0x1000F, 0, 0x61F, 1, {kSerial}}, {"Subtitles", 0x83, 16, 9, 0x620, 0, {kSubtitles}},
    {"TouchSaved", 0x83, 0x10012, 0, 0x622, 1, {kTouch}}, {"Cave", 0x83, 19, 9, 0x623, 0, {kCave}},
    {"PlayerControl", 0x83, 21, 9, 0x625, 0, {kPlayer}}, {"TimelineSaved", 0x83, 0x10017, 0, 0x625, 1, {kTimeline}},
    {"TimelineEmpty", 0x83, 23, 0, 0x625, 0, {kTimeline}},
    {"PlayerState", 0x8A, 0x30001, 9, 0x5FC, 3, {kPlayer, kTimeline, kUart, kVideo, kBatchSend, kSetParam}},
    {"PlayerData", 0x93, 0x10000, 207'496, 0x5FC, 1, {kVideo, kBatchSend, kUart, kSetParam}},
    {"PlayerDataStatus", 0x93, 0x7FFF0000, 207'496, 0x606, 32767, {kVideo}},
    {"Upload", 0x94, 0x90007, 0, 0x5FD, 7, {kBatchSend}}, {"DeviceModes", 0xA4, 2, 8, 0x604, 1, {kSetParam}},
    {"SerialData", 0xB2, 0, 1023, 0x608, 0, {kUart, kSetParam, kPlayer}}, {"ParameterBlock", 0xB6, 0, 0, 0x60C, 0, {kSetParam}},
    {"Video", 0xBB, 0x30004, 9, 0x615, 10, {kVideo}},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Table, EveryRow, testing::ValuesIn(kRows), kCaseName);

TEST_F(Routing, LayoutStateGoesToBothWindowsThatShowIt) {
    Open({kVideo, kUart});
    EXPECT_EQ(Route(0xB4, 0x20000, ToBytes("a.lay?")),
              "Star 1.0Video Control 627 2; Setup UART 627 2; ");
    EXPECT_EQ(std::get<ReplyRecord>(LastOf(kUart).record).payload, ToBytes("a.lay?"));
}

/// A pattern with its checksum, of which one bit may be flipped.
Bytes Block(std::size_t size, std::size_t flippedAt = SIZE_MAX) {
    Bytes bytes = Pattern(size);
    const std::uint16_t checksum = Crc16Modbus(bytes);
    bytes.push_back(static_cast<std::uint8_t>(checksum));
    bytes.push_back(static_cast<std::uint8_t>(checksum >> 8));
    if (flippedAt < bytes.size()) bytes[flippedAt] ^= 1;
    return bytes;
}

TEST_F(Routing, RepliesOfAnotherLengthOrMeaningReachNobodyAndEndNothing) {
    // clang-format off
    const std::tuple<const char*, unsigned, unsigned, Bytes> drops[] = {
        {"SettingsTested", 0x83, 0x20013, Pattern(9)}, {"SettingsEmptyDocument", 0x83, 21, {}},
        {"BlockZero", 0x83, 0, Pattern(9)}, {"BlockWithoutHandler", 0x83, 17, Pattern(9)},
        {"BlockAbove23", 0x83, 0x10018, Pattern(9)}, {"BlockFourModulo256", 0x83, 0x104, Pattern(9)},
        {"PlayerDataShort", 0x93, 0x10000, Pattern(207'495)}, {"PlayerDataLong", 0x93, 0x10000, Pattern(207'497)},
        {"ModesOfAnotherLength", 0xA4, 2, Pattern(9)}, {"ModesMissing", 0xA4, 2, {}},
        {"SerialEmpty", 0xB2, 0, {}}, {"SerialTooLong", 0xB2, 0, Pattern(1024)},
        {"LayoutOfAnotherQualifier", 0x1B4, 0, Pattern(9)},
        {"BlockOfAnotherLength", 0xB6, 0, Block(6516)}, {"BlockFlippedInside", 0xB6, 0, Block(6515, 77)},
        {"BlockFlippedLow", 0xB6, 0, Block(6524, 6524)}, {"BlockFlippedHigh", 0xB6, 0, Block(6524, 6525)},
    };
    // clang-format on
    Open(kAllWindows);
    for (const auto& [name, command, selector, payload] : drops)
        EXPECT_EQ(Route(command, selector, payload), "") << name;
}

TEST_F(Routing, ParameterBlockIsFilledUpWithZerosBehindItsChecksum) {
    Open({kSetParam});
    for (const std::size_t size : {0U, 6515U, 6524U}) {
        Route(0xB6, 0, size == 0 ? Bytes() : Block(size));
        Bytes expected = Pattern(size);
        expected.resize(6524);
        EXPECT_TRUE(std::ranges::equal(RecordOf<ParameterBlock>(kSetParam), expected)) << size;
    }
}

TEST_F(Routing, RecordsHoldWhatThePlayerSentAsFarAsItFits) {
    Open({kSetParam, kUart, kBatchSend});
    for (const unsigned qualifier : {0U, 1U, 2U, 3U}) {
        Route(0xA4 | qualifier << 8, 21, Pattern(84));
        EXPECT_EQ(RecordOf<DeviceModes>(kSetParam).mode, qualifier % 3);
    }
    EXPECT_THAT(RecordOf<DeviceModes>(kSetParam).entries[19], ElementsAre(76, 77, 78, 79));
    Route(0xB2, 0, Hex("AA00BB"));
    const SerialData& serial = RecordOf<SerialData>(kUart);
    EXPECT_EQ(serial.count, 3);
    EXPECT_THAT(std::span(serial.bytes).first(4), ElementsAre(0xAA, 0, 0xBB, 0));
    Route(0x94, 0x90007);
    EXPECT_EQ(LastOf(kBatchSend).lParam, 9U);
}

TEST_F(Routing, RefusalsAndAcknowledgementsAreToldToWhoAskedThenInABox) {
    const std::string saved = R"(notice "Changes have been saved!"; )";
    const std::tuple<unsigned, unsigned, std::string> outcomes[] = {
        {0xB4, 0x10000, "news 1 52 7; notice \"The layout is locked, please unlock it first!\"; "},
        {0x83, 1, "Setup UART 617 0; " + saved},
        {0x183, 1, "Setup UART 617 0; send 127.0.0.2 33; " + saved},
        {0x183, 0x10001, "Setup UART 617 0; send 127.0.0.2 33; " + saved},
        {0x183, 0x20001, "Setup UART 617 0; "}};
    Open({kUart, kVideo});
    for (const auto& [command, selector, outcome] : outcomes)
        EXPECT_EQ(Route(command, selector), outcome);
    for (const LocalText& reader : {kTimeline, kSetParam}) {
        Open({reader});
        EXPECT_EQ(Route(0x83, 1), reader.english + std::string(" 617 0; ")) << "it has been read";
    }
    Open(kAllWindows);
    for (const unsigned unsupported : {0xC3U, 0x03U, 0x43U, 0x80U, 0xFBU})
        EXPECT_EQ(
            Route(unsupported, 4, Pattern(9)),
            fmt::format("news 2 {} 7; warning \"This function is not supported in the current "
                        "version!\"; close; ",
                        unsupported & 0x3F));
    EXPECT_EQ(Route(0x183, 1), "Set Param 617 0; send 127.0.0.2 33; ") << "during a batch";
    for (const unsigned unknown : {0x81U, 0x82U, 0x89U, 0xA1U, 0xB3U, 0xBAU, 0xBCU, 0xBFU})
        EXPECT_EQ(Route(unknown, 0, Pattern(9)), "close; ") << unknown;
    boxes = Boxes::kMuted;
    EXPECT_EQ(Route(0xC3, 1), "news 2 3 7; close; ");
}

TEST_F(Routing, EndOfALinkIsToldToWhoUploadsAndWhoKeepsItAlive) {
    Open({kSetParam, kBatchSend, kUart, kPlayer});
    router.LinkEnded(sender, 3);
    EXPECT_EQ(std::exchange(log, ""), "Set Param 597 0; Setup UART 8001 7; news 0 0 3; ");
    Open({kBatchSend, kPlayer});
    router.LinkEnded(sender, 4);
    EXPECT_EQ(log, "Batch Send 597 0; PlayerControl 8001 7; news 0 0 4; ");
    EXPECT_EQ(LastOf(kPlayer).origin.sender, sender);
}

}  // namespace
}  // namespace sontaro::test
