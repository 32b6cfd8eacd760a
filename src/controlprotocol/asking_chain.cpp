#include "controlprotocol/asking_chain.h"

#include "base/name_list.h"

namespace sontaro {

namespace {

constexpr std::uint16_t kFirstPart = 0;
constexpr std::uint16_t kSecondPart = 32767;

Bytes TakePayload(Ended& ended) {
    return std::move(std::get<ReplyRecord>(ended.reply->record).payload);
}

}  // namespace

void AskingChain::Start(AskCall ask, Conversation::EndedCall ended) {
    ask_ = std::move(ask);
    ended_ = std::move(ended);
    Ask(variant_ == ProtocolVariant::kOlder ? Step::kNames : Step::kData);
}

void AskingChain::Ask(Step step) {
    step_ = step;
    ask_(RequestOf(step), [this](Ended& ended) { Take(ended); });
}

Request AskingChain::RequestOf(Step step) const {
    switch (step) {
        case Step::kData: return AskPlayerData(kFirstPart);
        case Step::kSecondPart: return AskPlayerData(kSecondPart);
        case Step::kNames:
            return variant_ == ProtocolVariant::kOlder ? AskOlderNames() : AskLayoutState();
        case Step::kProtocol: break;
    }
    return ReadSettings(kBlockControlProtocol);
}

void AskingChain::Take(Ended& ended) {
    if (ended.how != End::kReply) return ended_(ended);
    switch (step_) {
        case Step::kData: playerData_[0] = TakePayload(ended); return Ask(Step::kSecondPart);
        case Step::kSecondPart: playerData_[1] = TakePayload(ended); return Ask(Step::kNames);
        case Step::kNames:
            names_ = ParseNameList(AsText(TakePayload(ended)));
            return Ask(Step::kProtocol);
        case Step::kProtocol: return ended_(ended);
    }
}

}  // namespace sontaro
