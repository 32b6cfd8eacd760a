#include "timeline/timeline_json.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <tuple>
#include <variant>

#include "base/hex_command.h"
#include "base/json.h"
#include "base/local_text.h"

namespace sontaro {

namespace {

const Json::StaticString kGroups("cmdInfos");
const Json::StaticString kPlayer("playerID");
const Json::StaticString kType("typeName");
const Json::StaticString kVideo("videoName");
const Json::StaticString kNodes("cmdList");
const Json::StaticString kTestPlayer("playerNum");

/// What the parser says follows; it has the place.
constexpr LocalText kNoJson = {"不是有效的JSON文本。", "not a valid JSON text."};
constexpr LocalText kNoObject = {"不是JSON对象", "not a JSON object"};
constexpr LocalText kNoGroups = {"缺少“cmdInfos”列表", "no \"cmdInfos\""};

// A table of its own: nodes share the names of their group, have numbers, and there are so many
// that the general machine of the settings would be too slow for them, and keep too much.

/// A value of a node's object.
struct NodeField {
    using Member = std::variant<std::int64_t GroupNode::*, std::int32_t GroupNode::*,
                                std::string GroupNode::*>;
    std::string_view name;
    Member member;

    [[nodiscard]] Json::StaticString Key() const { return Json::StaticString(name.data()); }
};

/// In the order in which objects have their members: by key.
constexpr std::array<NodeField, 5> kFields = {{
    {"cmd", &GroupNode::command},
    {"expendCmdIndex", &GroupNode::port},
    {"ip", &GroupNode::ip},
    {"milliseconds", &GroupNode::time},
    {"port", &GroupNode::peerPort},
}};

void Assign(const Json::Value& json, std::string& text) {
    const char* begin = nullptr;
    const char* end = nullptr;
    json.getString(&begin, &end);
    const std::string_view bytes(begin, static_cast<std::size_t>(end - begin));
    const bool isPlain = std::ranges::all_of(bytes, [](char byte) { return byte >= 0; });
    if (isPlain)
        text.assign(bytes);
    else
        text = TextOf(json);
}

/// Takes over a value; false when it does not fit and is to be kept.
bool Take(const Json::Value& json, std::string& text) {
    if (json.isString()) Assign(json, text);
    return true;
}
bool Take(const Json::Value& json, std::int64_t& number) {
    if (json.isInt64()) number = json.asInt64();
    return json.isInt64() || !json.isIntegral();
}
bool Take(const Json::Value& json, std::int32_t& number) {
    if (json.isInt()) number = json.asInt();
    return json.isInt() || !json.isIntegral();
}

/// Takes the members of one object in their order.
class NodeMembers {
   public:
    explicit NodeMembers(GroupNode& node) : node_(node) {}

    bool operator()(std::string_view key, const Json::Value& json) {
        while (next_ != kFields.end() && next_->name < key) ++next_;
        if (next_ == kFields.end() || next_->name != key) return false;
        return std::visit([&](auto member) { return Take(json, node_.*member); }, next_->member);
    }

   private:
    GroupNode& node_;
    decltype(kFields)::const_iterator next_ = kFields.begin();
};

bool TakeField(std::string_view key, const Json::Value& json, TimeNode& group) {
    if (key == kPlayer.c_str()) return Take(json, group.player);
    if (key == kType.c_str()) return Take(json, group.typeName);
    if (key == kVideo.c_str()) return Take(json, group.videoName);
    return key == kNodes.c_str();
}

/// Gives `take(key, value)` every member of an object, and `others` those that it has no use for.
template <class TakeMember>
void TakeMembers(const Json::Value& object, OtherKeys& others, TakeMember take) {
    std::optional<Json::Value> kept;
    const auto last = object.end();
    for (auto member = object.begin(); member != last; ++member) {
        const char* end = nullptr;
        const char* begin = member.memberName(&end);
        const std::string_view key(begin, static_cast<std::size_t>(end - begin));
        if (take(key, *member)) continue;
        if (!kept) kept.emplace(Json::objectValue);
        (*kept)[std::string(key)] = *member;
    }
    if (kept) others.Keep(WithValidTexts(*kept));
}

/// Most commands are written as they are kept.
void NormalizeCommand(std::string& command) {
    const auto isKept = [](char byte) {
        return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F');
    };
    if (std::ranges::all_of(command, isKept)) return;
    if (auto normalized = NormalizedHexCommand(command)) command = *std::move(normalized);
}

void ReadNode(const Json::Value& json, GroupNode& node) {
    TakeMembers(json, node.others, NodeMembers(node));
    NormalizeCommand(node.command);
    node.bytes = static_cast<std::uint32_t>(JsonBytes(node));
}

void ReadNodes(const Json::Value& list, NodeGroup& group) {
    group.nodes.reserve(group.nodes.size() + list.size());
    for (const Json::Value& json : list) {
        if (!json.isObject()) continue;
        ReadNode(json, group.nodes.emplace_back());
        group.nodeBytes += group.nodes.back().bytes;
    }
}

/// Puts the groups of one document together.
class GroupReader {
   public:
    explicit GroupReader(NameTable& names) : names_(names) {}

    void Read(const Json::Value& json) {
        TimeNode header;
        OtherKeys others;
        TakeMembers(json, others, [&](std::string_view key, const Json::Value& value) {
            return TakeField(key, value, header);
        });
        const Json::Value& nodes = json[kNodes];
        if (!nodes.isArray() || nodes.empty()) return;
        NodeGroup& group = GroupOf(header);
        if (group.nodes.empty()) group.others = others;
        ReadNodes(nodes, group);
    }

    [[nodiscard]] GroupOrder Take() {
        std::erase_if(order_, [](const SharedGroup& group) { return group->nodes.empty(); });
        for (const SharedGroup& group : order_) group->frameBytes = JsonFrameBytes(*group);
        return std::move(order_);
    }

   private:
    [[nodiscard]] NodeGroup& GroupOf(const TimeNode& header) {
        SharedName type = names_.Find(header.typeName);
        SharedName video = names_.Find(header.videoName);
        SharedGroup& group = groups_[{header.player, type.get(), video.get()}];
        if (!group) {
            group = std::make_shared<NodeGroup>(
                NodeGroup{header.player, std::move(type), std::move(video)});
            order_.push_back(group);
        }
        return *group;
    }

    NameTable& names_;
    GroupOrder order_;
    std::map<std::tuple<std::int64_t, const GroupName*, const GroupName*>, SharedGroup> groups_;
};

Json::Value ToJson(const GroupNode& node) {
    Json::Value json(Json::objectValue);
    for (const NodeField& field : kFields)
        std::visit([&](auto member) { json[field.Key()] = node.*member; }, field.member);
    node.others.Write(json);
    return json;
}

Json::Value ToJson(const NodeGroup& group) {
    Json::Value json(Json::objectValue);
    json[kPlayer] = group.player;
    json[kType] = group.type->text;
    json[kVideo] = group.video->text;
    group.others.Write(json);
    Json::Value& nodes = json[kNodes] = Json::Value(Json::arrayValue);
    if (!group.nodes.empty()) nodes.resize(static_cast<Json::ArrayIndex>(group.nodes.size()));
    for (Json::ArrayIndex place = 0; const GroupNode& node : group.nodes)
        nodes[place++] = ToJson(node);
    return json;
}

// The text is what jsoncpp makes of it; how much that is, it is asked once for each kind of part.

Json::Value Document(std::initializer_list<Json::Value> groups) {
    Json::Value root(Json::objectValue);
    root[kGroups] = Json::Value(Json::arrayValue);
    for (const Json::Value& group : groups) root[kGroups].append(group);
    return root;
}

const NodeGroup& PlainGroup() {
    static const auto empty = std::make_shared<const GroupName>();
    static const NodeGroup group{0, empty, empty};
    return group;
}

Json::Value GroupWith(std::initializer_list<GroupNode> nodes) {
    NodeGroup group = PlainGroup();
    group.nodes = nodes;
    return ToJson(group);
}

std::size_t TextBytes(const Json::Value& json) { return WriteJson(json).size(); }

/// A node beside another one, with whatever it has.
std::size_t MeasuredBytes(const GroupNode& node) {
    return TextBytes(Document({GroupWith({GroupNode(), node})})) -
           TextBytes(Document({GroupWith({GroupNode()})}));
}

std::size_t PlainNodeBytes() {
    static const std::size_t bytes = MeasuredBytes(GroupNode());
    return bytes;
}

/// A group beside another one, with whatever it has, and a plain node.
std::size_t MeasuredFrameBytes(NodeGroup group) {
    group.nodes.assign(1, GroupNode());
    const Json::Value plain = GroupWith({GroupNode()});
    return TextBytes(Document({plain, ToJson(group)})) - TextBytes(Document({plain})) -
           PlainNodeBytes();
}

std::size_t PlainFrameBytes() {
    static const std::size_t bytes = MeasuredFrameBytes(PlainGroup());
    return bytes;
}

std::size_t Digits(std::int64_t number) {
    std::array<char, std::numeric_limits<std::int64_t>::digits10 + 2> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return static_cast<std::size_t>(end - digits.data());
}

constexpr std::size_t kPlainDigits = 1;
constexpr std::size_t kQuotes = 2;

}  // namespace

Result<TimelineContent> ReadTimeline(std::string_view text, TimelineSource source,
                                     NameTable& names) {
    const Result<Json::Value> root = ParseJson(text);
    if (!root) return Error{Localized(kNoJson) + '\n' + root.reason()};
    if (!root->isObject()) return Error{Localized(kNoObject)};
    const Json::Value& groups = (*root)[kGroups];
    if (source == TimelineSource::kFile && !groups.isArray()) return Error{Localized(kNoGroups)};
    TimelineContent content;
    TakeMembers(*root, content.others,
                [](std::string_view key, const auto&) { return key == kGroups.c_str(); });
    GroupReader reader(names);
    if (groups.isArray())
        for (const Json::Value& group : groups)
            if (group.isObject()) reader.Read(group);
    content.order = reader.Take();
    return content;
}

std::string TimelineText(const GroupOrder& order, const OtherKeys& others) {
    Json::Value root(Json::objectValue);
    others.Write(root);
    Json::Value& groups = root[kGroups] = Json::Value(Json::arrayValue);
    for (const SharedGroup& group : order) groups.append(ToJson(*group));
    return WriteJson(root);
}

std::string TestText(const TimeNode& node) {
    GroupNode stored;
    StoreNode(node, stored);
    Json::Value json = ToJson(stored);
    json.removeMember("milliseconds");
    json[kTestPlayer] = node.player;
    return WriteJson(json);
}

std::size_t JsonBytes(std::string_view text) {
    const auto isPlain = [](char byte) {
        return byte >= ' ' && byte < '\x7F' && byte != '"' && byte != '\\';
    };
    if (std::ranges::all_of(text, isPlain)) return text.size() + kQuotes;
    return TextBytes(Json::Value(std::string(text)));
}

std::size_t JsonBytes(const GroupNode& node) {
    if (node.others != OtherKeys()) return MeasuredBytes(node);
    return PlainNodeBytes() - 3 * kPlainDigits - 2 * kQuotes + Digits(node.time) +
           Digits(node.port) + Digits(node.peerPort) + JsonBytes(node.ip) + JsonBytes(node.command);
}

std::size_t JsonFrameBytes(const NodeGroup& group) {
    if (group.others != OtherKeys())
        return MeasuredFrameBytes({group.player, group.type, group.video, group.others});
    return PlainFrameBytes() - kPlainDigits - 2 * kQuotes + Digits(group.player) +
           group.type->jsonBytes + group.video->jsonBytes;
}

std::size_t JsonBytes(std::size_t groupBytes, const OtherKeys& others) {
    const bool isEmpty = groupBytes == 0;
    Json::Value root = isEmpty ? Document({}) : Document({GroupWith({GroupNode()})});
    others.Write(root);
    return TextBytes(root) + groupBytes - (isEmpty ? 0 : PlainFrameBytes() + PlainNodeBytes());
}

TimeNode NodeOf(const NodeGroup& group, const GroupNode& node) {
    return {group.player, group.type->text, group.video->text, node.time,
            node.port,    node.ip,          node.peerPort,     node.command};
}

void StoreNode(const TimeNode& node, GroupNode& stored) {
    GroupNode values;
    std::tie(values.time, values.port, values.ip, values.peerPort, values.command) =
        std::tie(node.time, node.port, node.ip, node.peerPort, node.command);
    for (const NodeField& field : kFields)
        std::visit(
            [&](auto member) {
                if (stored.*member == values.*member) return;
                stored.*member = std::move(values.*member);
                stored.others.Drop(field.name);
            },
            field.member);
    stored.bytes = static_cast<std::uint32_t>(JsonBytes(stored));
}

}  // namespace sontaro
