#include "venue/backup_manifest.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "base/json.h"
#include "venue/folder_name.h"
#include "venue/own_json.h"
#include "venue/sha256.h"
#include "venue/utc_time.h"

namespace sontaro {

namespace {

using Outcome = BlockReading::Outcome;
using Need = OwnJson::Need;

constexpr const char* kFormat = "format";
constexpr const char* kFormatName = "sontaro-backup";
constexpr const char* kVersion = "version";
constexpr int kThisVersion = 1;
constexpr const char* kProgram = "program";
constexpr const char* kBegun = "begun";
constexpr const char* kEnded = "ended";
constexpr const char* kPlayers = "players";
constexpr const char* kId = "id";
constexpr const char* kMac = "mac";
constexpr const char* kIp = "ip";
constexpr const char* kRemark = "remark";
constexpr const char* kFolder = "folder";
constexpr const char* kBlocks = "blocks";
constexpr const char* kBlock = "block";
constexpr const char* kOutcome = "outcome";
constexpr const char* kWhy = "why";
constexpr const char* kFile = "file";
constexpr const char* kBytes = "bytes";
constexpr const char* kSha256 = "sha256";

/// No packet of a player holds more.
constexpr std::uint64_t kLongestDocument = std::uint64_t{64} << 20;

struct NumberMember {
    const char* key;
    std::uint16_t VenuePlayer::*number;
};
constexpr NumberMember kNumbers[] = {{"port", &VenuePlayer::port},
                                     {"versionWord", &VenuePlayer::versionWord},
                                     {"fpgaVersion", &VenuePlayer::fpgaVersion},
                                     {"channelCode", &VenuePlayer::channelCode}};

struct OutcomeWord {
    Outcome outcome;
    const char* word;
};
constexpr OutcomeWord kOutcomes[] = {{Outcome::kRead, "read"},
                                     {Outcome::kNotSupported, "not-supported"},
                                     {Outcome::kFailed, "failed"}};

constexpr LocalText kIsOther = {"它不是备份清单。", "it is no manifest of a backup."};
constexpr LocalText kNoTime = {"此处应为 UTC 时间（如 2026-11-21T20:30:00Z）。",
                               "a time in UTC has to stand here (such as 2026-11-21T20:30:00Z)."};
constexpr LocalText kOtherFolder = {"文件夹名称与播放器 ID 不符。",
                                    "the folder is not called as the player's ID says."};
constexpr LocalText kSameFolder = {"此文件夹已属于另一台播放器。",
                                   "the folder is another player's already."};
constexpr LocalText kNoBlock = {"没有这样的设置块。", "there is no such block of settings."};
constexpr LocalText kSameBlock = {"此设置块已列出。", "the block is listed already."};
constexpr LocalText kNoOutcome = {"应为 read、not-supported 或 failed。",
                                  "it has to be read, not-supported or failed."};
constexpr LocalText kOtherFile = {"文件名称与设置块不符。", "the file is not called as its block."};
constexpr LocalText kNoFile = {"已读取的设置块必须有文件。", "what was read has to have a file."};
constexpr LocalText kNoSum = {"此处应为 SHA-256 校验和。", "a SHA-256 sum has to stand here."};

Json::Value ToJson(const ManifestBlock& block) {
    Json::Value json(Json::objectValue);
    json[kBlock] = block.kind->name;
    json[kOutcome] = std::ranges::find(kOutcomes, block.outcome, &OutcomeWord::outcome)->word;
    if (block.outcome == Outcome::kFailed) json[kWhy] = block.why;
    if (!block.hasFile) return json;
    json[kFile] = block.FileName();
    json[kBytes] = Json::UInt64(block.bytes);
    json[kSha256] = block.sha256;
    return json;
}

Json::Value ToJson(const ManifestPlayer& entry) {
    Json::Value json(Json::objectValue);
    json[kId] = entry.player.id;
    json[kMac] = entry.player.mac;
    json[kIp] = entry.player.ip;
    json[kRemark] = entry.player.remark;
    for (const auto& [key, number] : kNumbers) json[key] = entry.player.*number;
    json[kFolder] = entry.folder;
    Json::Value& blocks = json[kBlocks] = Json::Value(Json::arrayValue);
    for (const ManifestBlock& block : entry.blocks) blocks.append(ToJson(block));
    return json;
}

class ManifestReader {
   public:
    explicit ManifestReader(std::string_view text) : json_(text, kLongestManifest) {}

    Placed<BackupManifest> Read() {
        json_.ExpectFormat({kFormatName}, kIsOther);
        const Json::Value& root = json_.Root();
        BackupManifest manifest;
        if (json_.Trouble()) return *json_.Trouble();
        manifest.program = json_.Text(root, kProgram);
        manifest.begun = Time(root, kBegun);
        manifest.ended = Time(root, kEnded);
        for (const Json::Value& player : json_.List(root, kPlayers, kMostManifestPlayers)) {
            if (json_.Trouble()) break;
            manifest.players.push_back(Player(player));
        }
        if (json_.Trouble()) return *json_.Trouble();
        return manifest;
    }

   private:
    std::string Time(const Json::Value& root, const char* key) {
        std::string time = json_.Text(root, key, Need::kOptional);
        if (!time.empty() && !TimeOfText(time)) json_.Refuse(root[key], Localized(kNoTime));
        return time;
    }

    ManifestPlayer Player(const Json::Value& json) {
        ManifestPlayer entry;
        entry.player.id = json_.Text(json, kId);
        entry.player.mac = json_.Text(json, kMac);
        entry.player.ip = json_.Text(json, kIp);
        entry.player.remark = json_.Text(json, kRemark);
        for (const auto& [key, number] : kNumbers)
            entry.player.*number = static_cast<std::uint16_t>(json_.Number(json, key, UINT16_MAX));
        entry.folder = json_.Text(json, kFolder);
        if (json_.Trouble()) return entry;
        const bool isOwn = entry.folder == FolderNameOf({entry.player.id, ""}) ||
                           entry.folder == FolderNameOf({entry.player.id, entry.player.mac});
        if (!isOwn) json_.Refuse(json[kFolder], Localized(kOtherFolder));
        if (!folders_.insert(entry.folder).second)
            json_.Refuse(json[kFolder], Localized(kSameFolder));
        for (const Json::Value& block : json_.List(json, kBlocks, SettingsBlocks().size())) {
            if (json_.Trouble()) break;
            entry.blocks.push_back(Block(block, entry.blocks));
        }
        return entry;
    }

    ManifestBlock Block(const Json::Value& json, const std::vector<ManifestBlock>& others) {
        ManifestBlock block;
        block.kind = FindSettingsBlock(json_.Text(json, kBlock));
        const std::string word = json_.Text(json, kOutcome);
        if (json_.Trouble()) return block;
        if (!block.kind)
            json_.Refuse(json[kBlock], Localized(kNoBlock));
        else if (std::ranges::find(others, block.kind, &ManifestBlock::kind) != others.end())
            json_.Refuse(json[kBlock], Localized(kSameBlock));
        const auto* outcome = std::ranges::find(kOutcomes, word, &OutcomeWord::word);
        if (outcome == std::end(kOutcomes)) json_.Refuse(json[kOutcome], Localized(kNoOutcome));
        if (json_.Trouble()) return block;
        block.outcome = outcome->outcome;
        if (block.outcome == Outcome::kFailed) block.why = json_.Text(json, kWhy);
        block.hasFile = json.isMember(kFile) && block.outcome != Outcome::kNotSupported;
        if (block.hasFile)
            TakeFile(json, block);
        else if (block.outcome == Outcome::kRead)
            json_.Refuse(json, Localized(kNoFile));
        return block;
    }

    void TakeFile(const Json::Value& json, ManifestBlock& block) {
        if (json_.Text(json, kFile) != block.FileName())
            json_.Refuse(json[kFile], Localized(kOtherFile));
        block.bytes = json_.Number(json, kBytes, kLongestDocument);
        block.sha256 = json_.Text(json, kSha256);
        if (!IsSha256Text(block.sha256)) json_.Refuse(json[kSha256], Localized(kNoSum));
    }

    OwnJson json_;
    std::set<std::string> folders_;
};

/// What counts of a player, in an order of its own.
std::vector<std::tuple<std::string, std::string, const ManifestPlayer*>> Sorted(
    const BackupManifest& manifest) {
    std::vector<std::tuple<std::string, std::string, const ManifestPlayer*>> players;
    for (const ManifestPlayer& entry : manifest.players)
        players.emplace_back(entry.player.id, entry.player.mac, &entry);
    std::ranges::sort(players);
    return players;
}

/// All but what its file is.
ManifestBlock WithoutFile(ManifestBlock block) {
    block.bytes = 0;
    block.sha256.clear();
    return block;
}

}  // namespace

std::string WriteManifest(const BackupManifest& manifest) {
    Json::Value json(Json::objectValue);
    json[kFormat] = kFormatName;
    json[kVersion] = kThisVersion;
    json[kProgram] = manifest.program;
    if (!manifest.begun.empty()) json[kBegun] = manifest.begun;
    if (!manifest.ended.empty()) json[kEnded] = manifest.ended;
    Json::Value& players = json[kPlayers] = Json::Value(Json::arrayValue);
    for (const ManifestPlayer& player : manifest.players) players.append(ToJson(player));
    return WriteJson(json) + '\n';
}

Placed<BackupManifest> ReadManifest(std::string_view text) { return ManifestReader(text).Read(); }

bool HoldTheSame(const BackupManifest& first, const BackupManifest& second,
                 const AreAlike& areAlike) {
    return std::ranges::equal(
        Sorted(first), Sorted(second), [&](const auto& one, const auto& other) {
            const ManifestPlayer& entry = *std::get<2>(one);
            const ManifestPlayer& match = *std::get<2>(other);
            const auto isSame = [&](const ManifestBlock& block, const ManifestBlock& held) {
                return block == held || (block.hasFile && WithoutFile(block) == WithoutFile(held) &&
                                         areAlike({entry, block}, {match, held}));
            };
            return entry.player == match.player &&
                   std::ranges::equal(entry.blocks, match.blocks, isSame);
        });
}

}  // namespace sontaro
