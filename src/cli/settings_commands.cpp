// get, set and apply.
#include <fmt/printf.h>

#include <algorithm>
#include <atomic>
#include <fstream>

#include "base/file.h"
#include "base/json.h"
#include "base/path_text.h"
#include "base/private_files.h"
#include "cli/block_writes.h"
#include "cli/cli_values.h"
#include "cli/commands.h"
#include "cli/exit_code.h"
#include "cli/plan_failures.h"
#include "cli/player_runs.h"
#include "venue/folder_name.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kSeveral = {"多台播放器需要 -o 文件夹或 --json。",
                                "several players need -o with a folder, or --json."};
constexpr LocalText kNotWritten = {"无法写入 %s：%s", "%s cannot be written: %s"};
constexpr LocalText kNoPlace = {"写入失败", "writing has failed"};
constexpr LocalText kNoEdit = {"“%s”不是 KEY=VALUE。", "\"%s\" is no KEY=VALUE."};
constexpr LocalText kRestarts = {"播放器随之重启。", "the player restarts with it."};
constexpr LocalText kKeyTwice = {"“%s”给出了两次。", "\"%s\" is given twice."};
constexpr LocalText kNotUsable = {"播放器的文档无法使用：%s",
                                  "the player's document is of no use: %s"};
constexpr LocalText kNotRead = {"无法读取 %s：%s", "%s cannot be read: %s"};
constexpr LocalText kApplyQuestion = {"要把 %s 写入播放器吗？", "Write %s to the players?"};
constexpr LocalText kNothingToSend = {"没有要发送的不同之处。",
                                      "nothing differs that is to be sent."};
constexpr LocalText kSetQuestion = {"播放器会随之重启。继续吗？",
                                    "The players restart with it. Go on?"};

const SettingsBlockKind& KindOf(const Invocation& call) {
    return *FindSettingsBlock(call.Argument(0));  // the table has it checked
}

/// There may be one already, or a link to one.
Status MakeFolder(const std::filesystem::path& folder) {
    std::error_code error;
    return std::filesystem::is_directory(folder, error) ? Status(Done{})
                                                        : MakePrivateFolder(folder);
}

bool IsFolder(const std::string& output) {
    std::error_code error;
    return output.ends_with('/') || output.ends_with('\\') ||
           std::filesystem::is_directory(PathOfText(output), error);
}

std::filesystem::path FileFor(const std::string& output, const DeviceRecord& player,
                              const SettingsBlockKind& kind) {
    if (!IsFolder(output)) return PathOfText(output);
    const std::string name = player.id.empty() ? player.ip : FolderNameOf({player.id, {}});
    return PathOfText(output) / PathOfText(name + "-" + kind.name + ".json");
}

Json::Value DocumentObject(const SettingsBlockKind& kind, const std::string& text) {
    Json::Value object(Json::objectValue);
    object["block"] = kind.name;
    if (auto document = ParseJson(text))
        object["document"] = std::move(*document);
    else
        object["text"] = text;
    return object;
}

/// What is no plain file, such as a pipe, is written into; a file is replaced as a whole.
Status WriteOutput(const std::filesystem::path& file, const std::string& text) {
    std::error_code error;
    const auto kind = std::filesystem::status(file, error).type();
    if (kind != std::filesystem::file_type::regular &&
        kind != std::filesystem::file_type::not_found) {
        std::ofstream stream(file, std::ios::binary);
        return stream << text << std::flush ? Status(Done{}) : Error{Localized(kNoPlace)};
    }
    if (file.has_parent_path())
        if (Status made = MakeFolder(file.parent_path()); !made) return made;
    std::filesystem::path unfinished = file;
    unfinished += ".new";
    if (Status written = WritePrivateFile(unfinished, text); !written) return written;
    std::filesystem::rename(unfinished, file, error);
    return error ? Status(Error{error.message()}) : Done{};
}

PlayerReport Store(const DeviceRecord& player, const BlockDocument& document,
                   const std::string& output) {
    PlayerReport report;
    const auto file = FileFor(output, player, document.Kind());
    const std::string name = TextOfPath(file);
    if (const Status written = WriteOutput(file, document.Text()); !written)
        return PlayerReport::Of(
            FailureOf("not-written", fmt::sprintf(Localized(kNotWritten), name, written.reason())));
    report.lines.push_back(name);
    Json::Value object(Json::objectValue);
    object["block"] = document.Kind().name;
    object["file"] = name;
    report.objects.push_back(std::move(object));
    return report;
}

/// Which row becomes what, as far as it does; and the failures.
PlayerReport SetRows(const Surroundings& surroundings, Session& session, const DeviceRecord& player,
                     const std::vector<KeyValue>& edits) {
    const SettingsBlockKind& kind = KindOf(surroundings.call);
    auto document = ReadBlock(session, kind);
    if (!document) return PlayerReport::Of(FailureOf(document.HowItEnded(), kind.name));
    if (!document->Usable())
        return PlayerReport::Of(
            FailureOf("unreadable",
                      fmt::sprintf(Localized(kNotUsable), document->Usable().reason()), kind.name));
    const std::string present = document->Text();
    const auto before = document->RowsByPath();
    for (const KeyValue& edit : edits)
        if (const Status set = document->SetValue(edit.key, edit.value); !set)
            return PlayerReport::Of(FailureOf("invalid", set.reason(), edit.key));
    if (const auto refusal = document->RefusalToSend())
        return PlayerReport::Of(FailureOf("invalid", *refusal, kind.name));
    const Restart restart = *RestartOf(surroundings.call, kind);
    PlayerReport report;
    const auto after = document->RowsByPath();
    if (document->Text() != present || restart == Restart::kYes) {
        const auto failure = WriteWithProof(surroundings, session, player,
                                            {kind, present, document->Text(), restart});
        if (failure) return PlayerReport::Of(*failure);
        if (restart == Restart::kYes) report.remarks.push_back(Localized(kRestarts));
    }
    for (const KeyValue& edit : edits) {
        const PathRow& row = after.at(edit.key);
        const std::string caption =
            row.group.empty() ? row.row.name : row.group + " / " + row.row.name;
        const RowDifference change{edit.key, caption, before.at(edit.key).row.value, row.row.value};
        report.objects.push_back(ObjectOf(kind, change));
        report.rows.push_back(CellsOf(kind, change));
    }
    return report;
}

PlayerReport Apply(const Surroundings& surroundings, Session& session, const DeviceRecord& player,
                   const std::string& wanted) {
    const Invocation& call = surroundings.call;
    const SettingsBlockKind& kind = KindOf(call);
    const auto present = ReadBlock(session, kind);
    if (!present) return PlayerReport::Of(FailureOf(present.HowItEnded(), kind.name));
    const BlockPlan plan =
        PlanBlock(kind, wanted, present->Text(), {.force = call.Has(OptionId::kForce), .key = {}});
    const bool isTrial = call.Has(OptionId::kDryRun);
    PlayerReport report;
    for (const RowDifference& row : plan.rows) {
        report.objects.push_back(ObjectOf(kind, row));
        if (isTrial) report.objects.back()["planned"] = true;
        report.rows.push_back(CellsOf(kind, row));
    }
    const auto refused = FailureOf(plan);
    if (refused && !isTrial) return PlayerReport::Of(*refused);
    if (refused) report.failures.push_back(*refused);
    const Restart restart = *RestartOf(call, kind);
    if (isTrial || (plan.text.empty() && restart == Restart::kNo)) return report;
    const std::string& text = plan.text.empty() ? present->Text() : plan.text;
    const auto failure =
        WriteWithProof(surroundings, session, player, {kind, present->Text(), text, restart});
    if (failure) return PlayerReport::Of(*failure);
    if (restart == Restart::kYes) report.remarks.push_back(Localized(kRestarts));
    return report;
}

}  // namespace

int RunGet(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    const SettingsBlockKind& kind = KindOf(call);
    const std::string output = call.Value(OptionId::kOutput);
    const bool mayBeSeveral = call.Has(OptionId::kAll) || call.Has(OptionId::kExpect) ||
                              call.Values(OptionId::kPlayer).size() != 1;
    const bool hasPlace = output.empty() ? surroundings.output.IsJson() : IsFolder(output);
    if (mayBeSeveral && !hasPlace) return TellWrongUse(surroundings, Localized(kSeveral));
    return RunForPlayers(
        surroundings, output.empty() ? Identity::kNotNeeded : Identity::kNeeded, {},
        [&](Session& session, const DeviceRecord& player) {
            const auto document = ReadBlock(session, kind);
            if (!document) return PlayerReport::Of(FailureOf(document.HowItEnded(), kind.name));
            if (!output.empty()) return Store(player, *document, output);
            if (surroundings.output.IsJson())
                return PlayerReport{{DocumentObject(kind, document->Text())}, {}, {}, {}, {}};
            surroundings.output.Document(document->Text());
            return PlayerReport();
        });
}

int RunSet(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    std::vector<KeyValue> edits;
    for (std::size_t i = 1; i < call.Arguments().size(); ++i) {
        const auto edit = ParseKeyValue(call.Argument(i));
        if (!edit)
            return TellWrongUse(surroundings, fmt::sprintf(Localized(kNoEdit), call.Argument(i)));
        if (std::ranges::find(edits, edit->key, &KeyValue::key) != edits.end())
            return TellWrongUse(surroundings, fmt::sprintf(Localized(kKeyTwice), edit->key));
        edits.push_back(*edit);
    }
    if (const auto restart = RestartOf(call, KindOf(call)); !restart)
        return TellWrongUse(surroundings, restart.reason());
    if (const auto end = EndUnlessConfirmed(surroundings, Localized(kSetQuestion))) return *end;
    return RunForPlayers(surroundings, Identity::kNeeded, ChangeHeadings(),
                         [&](Session& session, const DeviceRecord& player) {
                             return SetRows(surroundings, session, player, edits);
                         });
}

int RunApply(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    const std::string name = call.Value(OptionId::kFile);
    const auto wanted = ReadFile(PathOfText(name));
    if (!wanted)
        return TellWrongUse(surroundings, fmt::sprintf(Localized(kNotRead), name, wanted.reason()));
    if (const auto restart = RestartOf(call, KindOf(call)); !restart)
        return TellWrongUse(surroundings, restart.reason());
    const std::string question = fmt::sprintf(Localized(kApplyQuestion), name);
    if (const auto end = EndUnlessConfirmed(surroundings, question)) return *end;
    std::atomic<bool> isSame = !call.Has(OptionId::kRestart);
    const int end = RunForPlayers(surroundings, Identity::kNeeded, ChangeHeadings(),
                                  [&](Session& session, const DeviceRecord& player) {
                                      auto report = Apply(surroundings, session, player, *wanted);
                                      if (!report.rows.empty()) isSame = false;
                                      return report;
                                  });
    if (end == kAllWell && isSame) surroundings.output.Remark(Localized(kNothingToSend));
    return end;
}

}  // namespace sontaro::cli
