#include "cli/block_writes.h"

#include <fmt/printf.h>

#include "venue/earlier_documents.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNotKept = {
    "现有的文档无法保存，因此没有写入：%s",
    "the present document cannot be kept, so that nothing was written: %s"};
constexpr LocalText kDiffers = {"已写入，但读回的内容不同：%s",
                                "it was written, but what is read back differs: %s"};
constexpr LocalText kNotReadBack = {"已写入，但无法读回：%s",
                                    "it was written, but cannot be read back: %s"};
constexpr LocalText kNoRestart = {"%s 不能与 --restart 一起使用。",
                                  "--restart does not go with %s."};
constexpr LocalText kHeadings[] = {
    {"设置块", "block"}, {"键", "key"}, {"名称", "name"}, {"原值", "before"}, {"新值", "after"}};

/// The first of what differs.
std::string ListOf(const BlockComparison& comparison) {
    constexpr std::size_t kMost = 3;
    std::string list;
    for (std::size_t i = 0; i < comparison.differences.size() && i < kMost; ++i)
        list += (i > 0 ? ", " : "") + comparison.differences[i].path;
    return list + (comparison.differences.size() > kMost ? ", ..." : "");
}

}  // namespace

std::optional<Failure> WriteWithProof(const Surroundings& surroundings, Session& session,
                                      const DeviceRecord& player, const BlockWrite& write) {
    EarlierDocuments earlier(EarlierDocumentsFolder(surroundings.data));
    if (const Status kept = earlier.Keep(OwnerOfDocuments(player), write.kind, write.present);
        !kept)
        return FailureOf("not-kept", fmt::sprintf(Localized(kNotKept), kept.reason()),
                         write.kind.name);
    const SessionEnd written = WriteBlock(session, write.kind, write.text, write.restart);
    if (!written) return FailureOf(written, write.kind.name);
    if (write.restart == Restart::kYes) return std::nullopt;
    const auto now = ReadBlock(session, write.kind);
    if (!now) {
        Failure failure = FailureOf(now.HowItEnded(), write.kind.name);
        failure.text = fmt::sprintf(Localized(kNotReadBack), failure.text);
        return failure;
    }
    const BlockComparison comparison = CompareTexts(write.kind, write.text, now->Text());
    if (comparison.differences.empty()) return std::nullopt;
    return FailureOf("differs", fmt::sprintf(Localized(kDiffers), ListOf(comparison)),
                     write.kind.name);
}

Result<Restart> RestartOf(const Invocation& call, const SettingsBlockKind& kind) {
    if (!call.Has(OptionId::kRestart)) return Restart::kNo;
    if (!kind.mayRestart) return Error{fmt::sprintf(Localized(kNoRestart), kind.name)};
    return Restart::kYes;
}

Json::Value ObjectOf(const SettingsBlockKind& kind, const RowDifference& row) {
    Json::Value object(Json::objectValue);
    object["block"] = kind.name;
    object["key"] = row.path;
    if (!row.caption.empty()) object["name"] = row.caption;
    object["before"] = row.first ? Json::Value(*row.first) : Json::Value();
    object["after"] = row.second ? Json::Value(*row.second) : Json::Value();
    return object;
}

std::vector<std::string> CellsOf(const SettingsBlockKind& kind, const RowDifference& row) {
    return {kind.name, row.path, row.caption, row.first.value_or("-"), row.second.value_or("-")};
}

std::vector<std::string> ChangeHeadings() {
    std::vector<std::string> headings;
    for (const LocalText& heading : kHeadings) headings.push_back(Localized(heading));
    return headings;
}

}  // namespace sontaro::cli
