#include "venue/document_check.h"

#include <fmt/printf.h>

#include <algorithm>
#include <functional>
#include <tuple>

#include "base/json.h"
#include "base/local_text.h"
#include "batchsend/run_journal.h"
#include "batchsend/video_set_files.h"
#include "screensplit/split_memory.h"
#include "venue/backup_manifest.h"
#include "venue/block_check.h"
#include "venue/own_json.h"
#include "venue/venue_file.h"

namespace sontaro {

namespace {

using Weight = CheckFinding::Weight;
using Findings = std::vector<FindingAt>;

struct KindRow {
    FileKind kind;
    const char* word;
    LocalText name;
};
// clang-format off
constexpr KindRow kKinds[] = {
    {FileKind::kUnknown,        "unknown",         {"未知文档", "an unknown document"}},
    {FileKind::kSettings,       "settings",        {"设置文档", "settings"}},
    {FileKind::kOwnDescription, "own-description", {"播放器自述的设置", "settings that a player describes itself"}},
    {FileKind::kTimeline,       "timeline",        {"时间轴", "a timeline"}},
    {FileKind::kManifest,       "manifest",        {"备份清单", "the manifest of a backup"}},
    {FileKind::kVenue,          "venue",           {"场所文件", "the file of a venue"}},
    {FileKind::kPlayers,        "players",         {"播放器列表", "a list of players"}},
    {FileKind::kRemarks,        "remarks",         {"播放器备注", "remarks on players"}},
    {FileKind::kVideoSet,       "video-set",       {"视频配置文件", "a video set"}},
    {FileKind::kVideoWall,      "video-wall",      {"屏幕分割文件", "a video wall"}},
    {FileKind::kJournal,        "journal",         {"上传日志", "the journal of an upload"}},
};
// clang-format on

constexpr LocalText kNoText = {"“%s”应为文本。", "\"%s\" has to be a text."};
constexpr LocalText kNoObject = {"此处应为 JSON 对象。", "a JSON object has to stand here."};
constexpr LocalText kNoVideoSet = {"它不是视频配置文件。", "it is no file of a video set."};
constexpr LocalText kNoWall = {"它不是屏幕分割文件。", "it is no screen split file."};
constexpr LocalText kNoJournal = {"第一行没有说明本次上传。",
                                  "the first line does not tell the run."};
constexpr LocalText kBrokenLine = {"此行不是 JSON，会被忽略。",
                                   "the line is no JSON: it is passed over."};

const KindRow& RowOf(FileKind kind) { return *std::ranges::find(kKinds, kind, &KindRow::kind); }

/// What is wrong with a file of Sontaro's own; none when nothing is.
using Trouble = std::optional<TextTrouble>;

template <class T>
Trouble TroubleOf(const Placed<T>& read) {
    const auto* trouble = std::get_if<TextTrouble>(&read);
    return trouble ? Trouble(*trouble) : std::nullopt;
}

Trouble TroubleOfVideoSet(const std::string& text) {
    OwnJson json(text, text.size());
    json.ExpectFormat({kVideoSetFormat}, kNoVideoSet);
    const Json::Value& set = json.Root()[kVideoSetMember];
    if (!json.Trouble() && !VideoSetFromJson(set)) json.Refuse(set, Localized(kNoVideoSet));
    return json.Trouble();
}

Trouble TroubleOfWall(const std::string& text) {
    constexpr std::size_t kMostScreens = 64;
    OwnJson json(text, text.size());
    json.ExpectFormat({kWallFormat}, kNoWall);
    if (!json.Trouble())
        for (const char* list : {"screens", "slots", "overlaps"})
            static_cast<void>(json.List(json.Root()[kWallMember], list, kMostScreens));
    return json.Trouble();
}

void CheckRemarks(const std::string& text, const Json::Value& json, Findings& findings) {
    for (auto member = json.begin(); member != json.end(); ++member) {
        const Json::Value& remark = member->isObject() ? (*member)["Remarks"] : *member;
        if (!member->isObject())
            findings.push_back(
                {Weight::kFault, OffsetOf(*member, text), member.name(), Localized(kNoObject)});
        else if (!remark.isString() && !remark.isNull())
            findings.push_back({Weight::kFault, OffsetOf(remark, text), member.name() + "/Remarks",
                                fmt::sprintf(Localized(kNoText), "Remarks")});
    }
}

void CheckJournal(std::string_view text, Findings& findings) {
    if (!ReadJournal(text)) findings.push_back({Weight::kFault, 0, "", Localized(kNoJournal)});
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        // The last line may be cut: the program has ended while it was written.
        const Weight weight = end == text.size() ? Weight::kRemark : Weight::kFault;
        if (end > begin && !ParseJson(text.substr(begin, end - begin)))
            findings.push_back({weight, begin, "", Localized(kBrokenLine)});
        begin = end + 1;
    }
}

bool IsMac(std::string_view name) {
    constexpr std::size_t kMacLength = 17;
    return name.size() == kMacLength && std::ranges::count(name, ':') == 5;
}

/// Files that keep what they are in "format".
FileKind KindOfFormat(const Json::Value& format) {
    const std::pair<const char*, FileKind> formats[] = {
        {"sontaro-backup", FileKind::kManifest}, {"sontaro-venue", FileKind::kVenue},
        {"sontaro-players", FileKind::kPlayers}, {journal_key::kFormatName, FileKind::kJournal},
        {kVideoSetFormat, FileKind::kVideoSet},  {kWallFormat, FileKind::kVideoWall}};
    for (const auto& [name, kind] : formats)
        if (format == name) return kind;
    return FileKind::kUnknown;
}

/// The block that a document without a format is of; absent when that cannot be seen.
const SettingsBlockKind* BlockOf(const std::string& text, const Json::Value& json) {
    const std::pair<const char*, const char*> members[] = {{"cmdInfos", "timeline"},
                                                           {"Players", "player-control"},
                                                           {"data", "osd"},
                                                           {"CustomSettings", "serial-port"},
                                                           {"configData", "screen-split"}};
    for (const auto& [member, name] : members)
        if (json.isMember(member)) return FindSettingsBlock(name);
    const SettingsBlockKind* protocol = FindSettingsBlock("control-protocol");
    return protocol->makeDocument()->TakeFile(text) ? protocol : nullptr;
}

class Check {
   public:
    Check(std::string_view text, const SettingsBlockKind* block) : text_(text), block_(block) {}

    DocumentCheck Run() {
        auto read = ReadJsonText(text_);
        const Trouble trouble = TroubleOf(read);
        if (trouble && block_ == nullptr && ReadJournal(text_)) {
            check_.kind = FileKind::kJournal;
            CheckJournal(text_, findings_);
            return Finished({});
        }
        // What it is can often be told all the same, such as when a key is there twice.
        if (trouble)
            if (Result<Json::Value> lenient = ParseJson(text_)) read = std::move(*lenient);
        check_.block = block_;
        if (const auto* json = std::get_if<Json::Value>(&read)) Look(*json);
        return Finished(trouble && IsMeantAsJson() ? trouble : trouble_);
    }

   private:
    /// A text that does not even begin as JSON may be anything.
    [[nodiscard]] bool IsMeantAsJson() const {
        const std::size_t first = text_.find_first_not_of("\xEF\xBB\xBF \t\r\n");
        const bool isJson =
            first != std::string::npos && (text_[first] == '{' || text_[first] == '[');
        return isJson || block_ != nullptr;
    }

    void Look(const Json::Value& json) {
        const bool isObject = json.isObject();
        const FileKind own = isObject ? KindOfFormat(json["format"]) : FileKind::kUnknown;
        const SettingsBlockKind* block = block_ != nullptr || !isObject || own != FileKind::kUnknown
                                             ? block_
                                             : BlockOf(text_, json);
        if (block != nullptr) return LookAtBlock(*block, json);
        check_.kind = own;
        if (own == FileKind::kUnknown) return LookAtRemarks(json);
        if (own == FileKind::kManifest) trouble_ = TroubleOf(ReadManifest(text_));
        if (own == FileKind::kVenue) trouble_ = TroubleOf(ReadVenue(text_));
        if (own == FileKind::kPlayers) trouble_ = TroubleOf(ReadExpectedPlayers(text_));
        if (own == FileKind::kVideoSet) trouble_ = TroubleOfVideoSet(text_);
        if (own == FileKind::kVideoWall) trouble_ = TroubleOfWall(text_);
        if (own == FileKind::kJournal) CheckJournal(text_, findings_);
    }

    void LookAtRemarks(const Json::Value& json) {
        const bool isRemarks =
            json.isObject() && !json.empty() && std::ranges::all_of(json.getMemberNames(), IsMac);
        if (!isRemarks) return;
        check_.kind = FileKind::kRemarks;
        CheckRemarks(text_, json, findings_);
    }

    void LookAtBlock(const SettingsBlockKind& block, const Json::Value& json) {
        const bool isTimeline = block.readBlock == kBlockPlayerTimeline;
        const bool isAnyOfFour = block.describesItself && block_ == nullptr;
        check_.kind = FileKind::kSettings;
        if (isTimeline) check_.kind = FileKind::kTimeline;
        if (isAnyOfFour) check_.kind = FileKind::kOwnDescription;
        check_.block = isAnyOfFour ? nullptr : &block;
        CheckBlock(block, text_, json, findings_);
    }

    /// The faults first, each in the order of the text.
    DocumentCheck Finished(const Trouble& trouble) {
        std::ranges::stable_sort(findings_, {}, [](const FindingAt& finding) {
            return std::tuple(finding.weight, finding.offset);
        });
        if (trouble) check_.findings.push_back({Weight::kFault, trouble->place, "", trouble->why});
        PlaceFinder places(text_);
        for (const auto& [weight, offset, path, what] : findings_) {
            if (check_.findings.size() == kMostFindings) break;
            check_.findings.push_back(
                {weight, offset ? places.At(*offset) : TextPlace(), path, what});
        }
        check_.notListed = findings_.size() + (trouble ? 1 : 0) - check_.findings.size();
        return std::move(check_);
    }

    const std::string text_;
    const SettingsBlockKind* block_;
    Findings findings_;
    Trouble trouble_;  // with a file of Sontaro's own
    DocumentCheck check_;
};

}  // namespace

const char* WordFor(FileKind kind) { return RowOf(kind).word; }

std::string Told(FileKind kind) { return Localized(RowOf(kind).name); }

bool DocumentCheck::IsSound() const {
    return std::ranges::none_of(
        findings, [](const CheckFinding& finding) { return finding.weight == Weight::kFault; });
}

DocumentCheck CheckDocument(std::string_view text, const SettingsBlockKind* block) {
    return Check(text, block).Run();
}

}  // namespace sontaro
