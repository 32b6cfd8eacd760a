#include <fmt/printf.h>

#include <map>

#include "base/json.h"
#include "timeline/show_checks.h"
#include "venue/block_check.h"

namespace sontaro {

namespace {

using Weight = CheckFinding::Weight;

constexpr const char* kGroups = "cmdInfos";
constexpr const char* kNodes = "cmdList";
constexpr const char* kPlayer = "playerID";
constexpr const char* kType = "typeName";
constexpr const char* kVideo = "videoName";

constexpr LocalText kNoTimeline = {"它不是时间轴：%s", "it is no timeline: %s"};
constexpr LocalText kNoObject = {"此处应为 JSON 对象，会被忽略。",
                                 "a JSON object has to stand here: it is passed over."};
constexpr LocalText kNoList = {"此处应为命令列表。", "a list of commands has to stand here."};
constexpr LocalText kNoNumber = {"应为整数，读作 0。", "it has to be a whole number: read as 0."};
constexpr LocalText kNoText = {"应为文本，读作空。", "it has to be a text: read as empty."};
constexpr LocalText kMissing = {"缺少“%s”。", "\"%s\" is missing."};

struct Member {
    const char* key;
    bool isNumber;
};
constexpr Member kOfGroup[] = {{kPlayer, true}, {kType, false}, {kVideo, false}};
constexpr Member kOfNode[] = {{"milliseconds", true},
                              {"expendCmdIndex", true},
                              {"ip", false},
                              {"port", true},
                              {"cmd", false}};

class TimelineCheck {
   public:
    TimelineCheck(std::string_view text, std::vector<FindingAt>& findings)
        : text_(text), findings_(findings) {}

    void Run(const Json::Value& json) {
        TimelineDocument document;
        if (const Status taken = document.Take(text_, TimelineSource::kFile); !taken)
            return Add(json, "", fmt::sprintf(Localized(kNoTimeline), taken.reason()));
        for (Json::ArrayIndex i = 0; i < json[kGroups].size(); ++i)
            CheckGroup(json[kGroups][i], std::string(kGroups) + '/' + std::to_string(i));
        for (const ShowFinding& finding : CheckShow(document.Order(), kUsualBaudRate)) {
            if (findings_.size() >= 2 * kMostFindings)
                break;  // to tell each looks at every command
            AddShown(document, finding);
        }
    }

   private:
    /// A command with its path.
    struct Node {
        const Json::Value* json;
        std::string path;
    };

    void CheckGroup(const Json::Value& group, const std::string& path) {
        if (!group.isObject()) return Add(group, path, Localized(kNoObject));
        CheckMembers(group, path, kOfGroup);
        const Json::Value& nodes = group[kNodes];
        if (!nodes.isArray())
            return Add(nodes.isNull() ? group : nodes, path + '/' + kNodes, Localized(kNoList));
        // What is read has the commands of one video together.
        std::vector<Node>& ofVideo = nodes_[NameOf(group)];
        for (Json::ArrayIndex i = 0; i < nodes.size(); ++i) {
            const std::string place = path + '/' + kNodes + '/' + std::to_string(i);
            if (!nodes[i].isObject()) {
                Add(nodes[i], place, Localized(kNoObject));
                continue;
            }
            CheckMembers(nodes[i], place, kOfNode);
            ofVideo.push_back({&nodes[i], place});
        }
    }

    void CheckMembers(const Json::Value& object, const std::string& path,
                      std::span<const Member> members) {
        for (const auto& [key, isNumber] : members) {
            const Json::Value& value = object[key];
            const std::string own = path + '/' + key;
            if (value.isNull())
                Add(object, own, fmt::sprintf(Localized(kMissing), key), Weight::kRemark);
            else if (isNumber && !value.isIntegral())
                Add(value, own, Localized(kNoNumber));
            else if (!isNumber && !value.isString())
                Add(value, own, Localized(kNoText));
        }
    }

    using Name = std::tuple<std::int64_t, std::string, std::string>;
    static Name NameOf(const Json::Value& group) {
        const Json::Value& player = group[kPlayer];
        return {player.isInt64() ? player.asInt64() : 0, TextOf(group[kType]),
                TextOf(group[kVideo])};
    }

    void AddShown(const TimelineDocument& document, const ShowFinding& finding) {
        const auto row = document.RowOf(finding.node);
        const std::string told = Told(finding, document);
        if (!row || told.empty()) return;
        const NodeGroups::Place place = document.PlaceOf(*row);
        const NodeGroup& group = *document.Order()[place.group];
        const auto nodes = nodes_.find({group.player, group.type->text, group.video->text});
        const bool isKnown = nodes != nodes_.end() && place.node < nodes->second.size();
        const Node node = isKnown ? nodes->second[place.node] : Node{nullptr, ""};
        const auto offset = node.json ? std::optional(OffsetOf(*node.json, text_)) : std::nullopt;
        findings_.push_back({Weight::kFault, offset, node.path, told});
    }

    void Add(const Json::Value& value, const std::string& path, std::string what,
             Weight weight = Weight::kFault) {
        findings_.push_back({weight, OffsetOf(value, text_), path, std::move(what)});
    }

    const std::string_view text_;
    std::vector<FindingAt>& findings_;
    std::map<Name, std::vector<Node>> nodes_;  // by their videos
};

}  // namespace

void CheckTimeline(std::string_view text, const Json::Value& json,
                   std::vector<FindingAt>& findings) {
    TimelineCheck(text, findings).Run(json);
}

}  // namespace sontaro
