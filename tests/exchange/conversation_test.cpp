#include "exchange/conversation.h"

#include <gmock/gmock.h>

#include "exchange/player_requests.h"
#include "support/fake_player_channel.h"

namespace sontaro::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// Asks for a Cave document (read), gives it one (write), and writes the ends down.
struct Talk : testing::Test, ExchangeBench {
    void Ask(const std::string& name, Request request) {
        talk->Ask(std::move(request), [this, name](Ended& ended) {
            const auto how = static_cast<std::size_t>(ended.how);
            ends.push_back(name + kHow[how]);
            if (ended.how == End::kReply) ends.back() += AsText(PayloadOf(*ended.reply));
            if (ended.how == End::kRefused) ends.back() += std::to_string(ended.code);
            whenEnded();
        });
    }
    void Read(const std::string& name = "read ") { Ask(name, ReadSettings(kBlockCave)); }
    void Write(const std::string& name = "write ") { Ask(name, WriteSettings(kBlockCave, "{}")); }
    bool Document(std::string_view text) { return Take(0, text); }
    bool Saved() { return Take(0x10000, ""); }
    bool Take(std::uint32_t argument, std::string_view text) {
        WindowMessage message = Message(MessageId::kCave, 3, kBlockCave | argument, text);
        return talk->Take(message);
    }
    Conversation::Listener Listener() {
        return {[this](WindowMessage& message) {
                    ends.push_back("unasked " + std::string(AsText(PayloadOf(message))));
                },
                [this] { ends.emplace_back("link"); }};
    }
    std::vector<std::string> Ends() { return std::exchange(ends, {}); }

    static constexpr const char* kHow[] = {"reply ",     "refused ",  "not supported", "not sent",
                                           "link ended", "timed out", "cancelled"};
    std::vector<std::string> ends;
    std::function<void()> whenEnded = [] {};
    std::unique_ptr<Conversation> talk =
        std::make_unique<Conversation>(exchange, player, Listener());
};

TEST_F(Talk, AsksOneThingAfterAnotherAndTellsEachOfItsOwnAnswer) {
    Read(), Write();
    EXPECT_EQ(channel.Log(), "3.19.0; ");
    EXPECT_TRUE(Saved());  // nobody has asked for it yet
    EXPECT_TRUE(Document("a"));
    EXPECT_EQ(channel.Log(), "3.19.1; ");
    Document("b");
    Saved();
    EXPECT_THAT(Ends(), ElementsAre("unasked ", "read reply a", "unasked b", "write reply "));
    EXPECT_EQ(timers.Waiting() + talk->Owed(), 0U);
}

TEST_F(Talk, HearsItsOwnPlayerAloneAndNothingOfAnEarlierConnection) {
    Read();
    WindowMessage foreign = Message(MessageId::kCave, 3, kBlockCave, "x");
    foreign.origin.sender.ip = "127.0.0.3";
    EXPECT_FALSE(talk->Take(foreign));
    foreign.origin = Message(MessageId::kCave, 3, kBlockCave).origin;
    LoseLink();
    Read();
    EXPECT_FALSE(talk->Take(foreign));
    hub.Report({ExchangeNews::Kind::kLinkEnded, {{"127.0.0.3", 9000, 0}, {}, 2}});
    hub.Report({ExchangeNews::Kind::kLinkEnded, {player, {}, 1}});
    EXPECT_THAT(Ends(), ElementsAre("read link ended", "link"));
    Document("a");
    EXPECT_THAT(Ends(), ElementsAre("read reply a"));
}

TEST_F(Talk, EndsInEveryOtherWayExactlyOnce) {
    channel.refusal = NotSent::kConnectFailed;
    Read();
    channel.refusal.reset();
    Read();
    Report(ExchangeNews::Kind::kNotSupported, 59);     // another command's
    Report(ExchangeNews::Kind::kNotSupported, 3, 99);  // another block's
    Report(ExchangeNews::Kind::kNotSupported, 3);
    Ask("layouts ", AskLayoutState());
    Report(ExchangeNews::Kind::kLayoutLocked, 52);
    Read(), Read("waiting ");
    LoseLink();
    Read();
    timers.Advance(9999ms);
    EXPECT_EQ(ends.back(), "link");
    timers.Advance(1ms);
    Read(), Write();
    talk->Cancel();
    EXPECT_THAT(Ends(), ElementsAre("read not sent", "read not supported", "layouts refused 0",
                                    "read link ended", "waiting not sent", "link", "read timed out",
                                    "read cancelled", "write cancelled"));
}

TEST_F(Talk, CountsWhatIsRefusedPerRequest) {
    const auto take = [this](WindowMessage message) { talk->Take(message); };
    Ask("captions ", AskVideoCommand(3, "{}"));
    take(Message(MessageId::kVideoReply, 59, 4, R"({"code":7,"cmdId":4})"));
    take(Message(MessageId::kVideoReply, 59, 3, R"({"code":65543,"cmdId":3})"));
    Ask("upload ", WriteSettings(kBlockControlProtocol, "{}", 1));
    take(Message(MessageId::kControlProtocol, 3, 0x20001));
    Ask("upload ", WriteSettings(kBlockControlProtocol, "{}"));
    take(Message(MessageId::kControlProtocol, 3, 1, "a document"));
    take(Message(MessageId::kControlProtocol, 3, 0x10001));
    EXPECT_EQ(channel.Log(), "59.3.0; 3.1.1q1; 3.1.1; ");
    EXPECT_THAT(Ends(), ElementsAre("unasked {\"code\":7,\"cmdId\":4}", "captions refused 7",
                                    "upload refused 2", "unasked a document", "upload reply "));
}

TEST_F(Talk, RepliesToWhatWasGivenUpStayOwed) {
    Read("first ");
    talk->Cancel();
    Read("second ");
    EXPECT_EQ(talk->Owed(), 2U);
    Document("late");
    Document("fresh");
    EXPECT_THAT(Ends(), ElementsAre("first cancelled", "second reply fresh"));
    Read("third ");
    timers.Advance(10s);
    LoseLink();  // and with the connection the debt is gone
    Read("fourth ");
    Document("new");
    EXPECT_THAT(Ends(), ElementsAre("third timed out", "link", "fourth reply new"));
    Read("lost "), talk->Cancel();
    Read("skips "), Document("its own"), talk->Cancel();
    Read("heals "), Document("last");
    EXPECT_THAT(Ends(), ElementsAre("lost cancelled", "skips cancelled", "heals reply last"));
}

TEST_F(Talk, AnyReplyEndsARequestThatWasRepeatedAndTheOthersAreNobodys) {
    Request request = ReadSettings(kBlockCave);
    std::vector<int> waited;
    request.atLimit = [&](auto time) {
        waited.push_back(static_cast<int>(time.count()));
        return waited.size() < 3 ? AtLimit::kWaitOn : AtLimit::kRepeat;
    };
    Ask("read ", request);
    timers.Advance(12s);
    EXPECT_THAT(waited, ElementsAre(10'000, 11'000, 12'000));
    talk->Repeat();
    EXPECT_EQ(channel.Log(), "3.19.0; 3.19.0; 3.19.0; ");
    Document("a");
    Write();
    Document("b"), Document("c"), Document("d");
    EXPECT_THAT(Ends(), ElementsAre("read reply a", "unasked d"));
}

TEST_F(Talk, TellsTheEndOfALinkThatANewOneHasReplacedUnheard) {
    Read();
    ++channel.connection;
    talk->Post(ReadyPacket(kCommandSerialData, 0));
    EXPECT_THAT(Ends(), ElementsAre("read link ended", "link"));
    EXPECT_EQ(talk->Connection(), 2U);
    hub.Report({ExchangeNews::Kind::kLinkEnded, {player, {}, 1}});  // heard only now
    Read(), Write();
    whenEnded = [this] { talk.reset(); };
    ++channel.connection;
    talk->Repeat();
    EXPECT_THAT(Ends(), ElementsAre("read link ended"));
}

TEST_F(Talk, MayBeDestroyedAskedAndCancelledFromWithinItsCalls) {
    whenEnded = [this] { talk.reset(); };
    Read(), Write();
    Document("a");
    EXPECT_FALSE(talk);
    for (const bool destroys : {true, false}) {
        talk = std::make_unique<Conversation>(exchange, player, Listener());
        whenEnded = [] {};
        channel.whileSending = [&] { destroys ? talk.reset() : talk->Cancel(); };
        Read();
        channel.whileSending = [] {};
    }
    EXPECT_EQ(talk->Owed(), 1U);  // it was cancelled while it was on its way
    whenEnded = [this] { ends.size() < 5 ? Read("again ") : void(); };
    channel.refusal = NotSent::kNoSlot;
    Read();
    EXPECT_THAT(Ends(), ElementsAre("read reply a", "read cancelled", "read not sent",
                                    "again not sent", "again not sent"));
    Request request = ReadSettings(kBlockCave);
    request.atLimit = [this](auto) { return talk.reset(), AtLimit::kRepeat; };
    channel.refusal.reset();
    Ask("last ", request);
    timers.Advance(1h);
    LoseLink();
    EXPECT_TRUE(ends.empty() && timers.Waiting() == 0);
}

TEST_F(Talk, MayBeDestroyedByWhoeverHearsSomethingUnaskedOrTheEndOfTheLink) {
    const std::string large(100, 'x');  // has to outlive the listener as well
    const auto listen = [this, large] {
        talk.reset();
        ends.push_back(large);
    };
    const Conversation::Listener listener{[listen](WindowMessage&) { listen(); }, listen};
    talk = std::make_unique<Conversation>(exchange, player, listener);
    Document("a");
    talk = std::make_unique<Conversation>(exchange, player, listener);
    Read();
    Document("a");
    LoseLink();
    EXPECT_EQ(ends.size(), 3U);
    EXPECT_FALSE(talk);
}

}  // namespace
}  // namespace sontaro::test
