#include "batchsend/name_questions.h"

#include <fmt/printf.h>

#include <utility>

#include "base/local_text.h"
#include "batchsend/set_page_text.h"
#include "batchsend/video_types.h"

namespace sontaro {

namespace {

constexpr LocalText kNamesNotKept = {"无法保存类别名称：%s",
                                     "The names of the categories cannot be kept: %s"};
constexpr LocalText kNamesUnknown = {
    "还不知道播放器现有的类别名称，因此不会发送类别名称，视频按类别编号存放。仍要继续吗？",
    "The names that players have for their categories are not known, so yours are not sent: the "
    "videos go by the numbers of their categories. Go on all the same?"};
constexpr LocalText kReplaced = {
    "类别名称将写入所有播放器。未另外命名的类别都采用 %s 的名称，它会替换其他播放器中的名称：",
    "The names of the categories are written to all players. Where you have given none, those of "
    "%s replace those of the others:"};
constexpr LocalText kUnknownReplaced = {
    "类别名称（%s 的名称）也将写入以下播放器，它们目前的类别名称未知：%s。",
    "The names, those of %s, are also written to players whose own ones are not known: %s."};
constexpr LocalText kGoOn = {"仍要继续吗？", "Go on all the same?"};
constexpr LocalText kOneSlot = {"%d（%s）", "%d (%s)"};
constexpr LocalText kSettled = {
    "已得知播放器的类别名称。以下文件夹的视频改用对应的类别编号：",
    "The names that players have for their categories are known now. The videos of these folders "
    "have gone to another number:"};
constexpr LocalText kOneSettled = {"%s：%d → %d", "%s: %d → %d"};
constexpr LocalText kDropped = {
    "其他类别都已有名称或视频，以下名称已取消，视频仍在原编号的类别中：",
    "All other categories have a name or videos, so that these names are dropped. The videos stay "
    "where they are:"};
constexpr LocalText kOneDropped = {"%s：%d", "%s: %d"};

/// The document has all 64 names: those of one player where the user has given none.
bool MayReplaceNames(const VideoSet& set, const HeardNames& heard, std::optional<std::size_t> shown,
                     Prompts& prompts) {
    std::vector<std::string> replaced;
    for (std::size_t slot = 0; slot < kVideoCategories; ++slot)
        if (set.aliases.at(slot).name.empty() && heard.Differ(slot))
            replaced.push_back(fmt::sprintf(Localized(kOneSlot), slot + 1, heard.Told(slot)));
    const std::string silent = heard.Silent();
    if (replaced.empty() && silent.empty()) return true;
    const std::string source = heard.SourceOf(shown);
    std::string question;
    if (!replaced.empty())
        question = ListText(fmt::sprintf(Localized(kReplaced), source), replaced) + '\n';
    if (!silent.empty())
        question += fmt::sprintf(Localized(kUnknownReplaced), source, silent) + '\n';
    return prompts.Confirm(question + Localized(kGoOn));
}

}  // namespace

void TellSettled(std::span<const SettledName> settled, Prompts& prompts) {
    std::vector<std::string> moved;
    std::vector<std::string> dropped;
    for (const SettledName& one : settled) {
        if (!one.to)
            dropped.push_back(fmt::sprintf(Localized(kOneDropped), one.name, one.from + 1));
        else if (*one.to != one.from)
            moved.push_back(
                fmt::sprintf(Localized(kOneSettled), one.name, one.from + 1, *one.to + 1));
    }
    if (!moved.empty()) prompts.Inform(ListText(Localized(kSettled), moved));
    if (!dropped.empty()) prompts.Warn(ListText(Localized(kDropped), dropped));
}

/// Behind a question, players tell names, and provisional ones settle: what has been answered is
/// about others then.
bool KeepNames(const VideoSet& set, const HeardNames& heard, std::optional<std::size_t> shown,
               const std::filesystem::path& file, Prompts& prompts) {
    for (;;) {
        const auto asked = std::pair(heard, set.aliases);
        const auto isOutdated = [&] { return asked != std::pair(heard, set.aliases); };
        const CategoryNames* const told = heard.Of(shown);
        const auto names = told ? std::optional(*told) : std::nullopt;
        const bool isWanted = set.writesNames || heard.HaveOthersThan(set.aliases);
        if (isWanted && names && !MayReplaceNames(set, heard, shown, prompts)) return false;
        if (isOutdated()) continue;
        const auto kept = KeepVideoTypes(file, set, names, isWanted);
        if (!kept) {
            prompts.Warn(fmt::sprintf(Localized(kNamesNotKept), kept.reason()));
            return false;
        }
        const bool areUnknown = *kept == VideoTypeFile::kNamesUnknown;
        if (areUnknown && !prompts.Confirm(Localized(kNamesUnknown))) return false;
        if (!isOutdated()) return true;
    }
}

}  // namespace sontaro
