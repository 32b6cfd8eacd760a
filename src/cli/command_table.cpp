#include "cli/command_table.h"

#include <algorithm>
#include <iterator>

#include "cli/invocation.h"
#include "session/settings_blocks.h"

namespace sontaro::cli {

namespace {

using enum OptionId;
using enum ValueKind;
using enum OptionScope;

constexpr LocalText kNothing = {"", ""};

// clang-format off
constexpr OptionRow kOptions[] = {
    {kPlayer, "-p", "--player", "P", kAnyText, true, kPlayers,
     {"播放器：IP、IP:端口、ID 或备注；可重复", "a player: IP, IP:port, ID or remark; may be repeated"}},
    {kAll, nullptr, "--all", nullptr, kAnyText, false, kPlayers,
     {"所有应答的播放器", "all players that answer"}},
    {kExpect, nullptr, "--expect", "FILE", kFilePath, false, kPlayers,
     {"文件中列出的播放器（每行一台）", "the players that a file lists, one on a line"}},
    {kVenue, nullptr, "--venue", "NAME", kAnyText, false, kPlayers,
     {"从数据文件夹的 venues/NAME.json 取本机地址、应有的播放器和备份文件夹",
      "take local address, expected players and backup folder from venues/NAME.json in the data folder"}},
    {kLocalAddress, nullptr, "--local-address", "A", kAnyText, false, kPlayers,
     {"从此本机地址查找播放器", "find players from this address of the machine"}},
    {kTimeout, nullptr, "--timeout", "SECONDS", kAnyText, false, kPlayers,
     {"等待每个应答的时间（默认 5）", "how long each answer may take (5)"}},
    {kParallel, nullptr, "--parallel", "N", kAnyText, false, kPlayers,
     {"同时处理的播放器数，1 到 9（默认 4）", "players at a time, 1 to 9 (4)"}},
    {kData, nullptr, "--data", "DIR", kFolderPath, false, kEvery,
     {"数据文件夹（默认为用户自己的）", "the folder of data (the user's own)"}},
    {kJson, nullptr, "--json", nullptr, kAnyText, false, kEvery,
     {"每行输出一个 JSON 对象", "print one JSON object a line"}},
    {kYes, nullptr, "--yes", nullptr, kAnyText, false, kEvery,
     {"不再询问，直接执行不可撤销的操作", "do not ask before what cannot be taken back"}},
    {kLanguage, nullptr, "--language", "zh|en", kLanguageWord, false, kEvery,
     {"输出语言", "the language of the output"}},
    {kHelp, "-h", "--help", nullptr, kAnyText, false, kEvery,
     {"显示帮助", "show this text"}},
    {kVersion, nullptr, "--version", nullptr, kAnyText, false, kEvery,
     {"显示版本", "show the version"}},
    {kOutput, "-o", "--output", "PATH", kFilePath, false, kNamed,
     {"写入此文件，或写入此文件夹（每台播放器一个文件）", "write to this file, or to this folder, a file for each player"}},
    {kFile, "-f", "--file", "FILE", kFilePath, false, kNamed,
     {"要发送的文档", "the document to send"}},
    {kForce, nullptr, "--force", nullptr, kAnyText, false, kNamed,
     {"即使键不一致也发送", "send it although keys are unknown or missing"}},
    {kDryRun, nullptr, "--dry-run", nullptr, kAnyText, false, kNamed,
     {"只显示会改变什么，不发送", "only show what would change"}},
    {kRestart, nullptr, "--restart", nullptr, kAnyText, false, kNamed,
     {"控制协议：让播放器随之重启", "of the control protocol: have the player restart with it"}},
    {kPort, nullptr, "--port", "PORT", kAnyText, false, kNamed,
     {"232:0 到 232:3、485、tcp:IP:端口、udp:IP:端口 或 dmx512",
      "232:0 to 232:3, 485, tcp:IP:PORT, udp:IP:PORT or dmx512"}},
    {kCategory, "-c", "--category", "C", kAnyText, false, kNamed,
     {"视频类别：名称，或 0 到 63 的编号", "the category of the videos: its name, or its number from 0 to 63"}},
    {kSkipPresent, nullptr, "--skip-present", nullptr, kAnyText, false, kNamed,
     {"跳过播放器上已有的视频", "leave out what a player has already"}},
    {kAgain, nullptr, "--again", nullptr, kAnyText, false, kNamed,
     {"重新发送上次未成功的视频", "send exactly what did not end well in the last run"}},
    {kKeep, nullptr, "--keep", "N", kAnyText, false, kNamed,
     {"保留最近 N 份备份，以及只有更早的备份才有的内容", "keep the latest N backups, and what only an older one holds"}},
    {kOnlyChanged, nullptr, "--only-changed", nullptr, kAnyText, false, kNamed,
     {"与上一份备份相同时不新建", "make none that would be the same as the latest"}},
    {kFlat, nullptr, "--flat", nullptr, kAnyText, false, kNamed,
     {"直接写入文件夹，不带时间，便于 git 管理", "into the folder itself and without times, for git"}},
    {kOnly, nullptr, "--only", "BLOCK[/KEY]", kBlockWord, true, kNamed,
     {"只恢复此设置块，或其中的此项；可重复", "restore this block alone, or this key of it; may be repeated"}},
    {kAs, nullptr, "--as", "ID", kAnyText, false, kNamed,
     {"把此播放器的设置和备注给予替换它的播放器", "give the player the settings and the remark of the one that it replaces"}},
    {kBlock, nullptr, "--block", "BLOCK", kBlockWord, false, kNamed,
     {"文档属于此设置块", "the document is of this block"}},
    {kFor, nullptr, "--for", "SECONDS", kAnyText, false, kNamed,
     {"到此时间后结束", "end after that time"}},
};

constexpr ArgumentRow kRange[] = {{"RANGE", kAnyText, false}};
constexpr ArgumentRow kBlockName[] = {{"BLOCK", kBlockWord}};
constexpr ArgumentRow kBlockAndEdits[] = {{"BLOCK", kBlockWord}, {"KEY=VALUE", kAnyText, true, true}};
constexpr ArgumentRow kActionAndValue[] = {{"ACTION", kActionWord}, {"VALUE", kAnyText, false}};
constexpr ArgumentRow kHex[] = {{"HEX", kAnyText, true, true}};
constexpr ArgumentRow kSources[] = {{"PATH", kFilePath, false, true}};
constexpr ArgumentRow kBackupFolder[] = {{"DIR", kFolderPath, false}};
constexpr ArgumentRow kTwoBackups[] = {{"A", kFolderPath}, {"B", kFolderPath, false}};
constexpr ArgumentRow kOneBackup[] = {{"DIR", kFolderPath}};
constexpr ArgumentRow kDocument[] = {{"FILE", kFilePath}};

constexpr OptionId kOfGet[] = {kOutput};
constexpr OptionId kOfSet[] = {kRestart};
constexpr OptionId kOfApply[] = {kFile, kForce, kDryRun, kRestart};
constexpr OptionId kOfSend[] = {kPort};
constexpr OptionId kOfUpload[] = {kCategory, kSkipPresent, kAgain, kDryRun};
constexpr OptionId kRequiredByApply[] = {kFile};
constexpr OptionId kRequiredBySend[] = {kPort};
constexpr OptionId kNotInTurn[] = {kParallel};
constexpr OptionId kOfBackup[] = {kKeep, kOnlyChanged, kFlat};
constexpr OptionId kOfRestore[] = {kOnly, kAs, kForce, kDryRun, kRestart};
constexpr OptionId kOfCheck[] = {kBlock};
constexpr OptionId kOfWatch[] = {kFor};

constexpr ExampleRow kFindExamples[] = {
    {"find", {"列出本网络的播放器", "list the players of this network"}},
    {"find 192.168.1.0/24 --json", {"逐个地址询问", "ask address by address"}},
    {"find --expect players.txt", {"缺少一台时以 1 结束", "exit 1 when one is missing"}},
};
constexpr ExampleRow kShowExamples[] = {{"show -p 192.168.1.20", kNothing}};
constexpr ExampleRow kVideosExamples[] = {{"videos --all --json", kNothing}};
constexpr ExampleRow kGetExamples[] = {
    {"get osd -p 192.168.1.20", kNothing},
    {"get timeline --all -o timelines/", {"每台播放器一个文件", "a file for each player"}},
};
constexpr ExampleRow kSetExamples[] = {
    {"set osd data/0/texts/0=Welcome --all", {"改变字幕的第一行", "change the first line of the overlay"}},
};
constexpr ExampleRow kApplyExamples[] = {
    {"apply player-control -f hall.json --all --dry-run", kNothing},
};
constexpr ExampleRow kControlExamples[] = {
    {"control play --all", kNothing},
    {"control volume 60 -p Hall1", kNothing},
    {"control power off --all --yes", {"用于 cron", "for cron"}},
};
constexpr ExampleRow kSendExamples[] = {{"send -p 192.168.1.20 --port 232:0 A5 01 02", kNothing}};
constexpr ExampleRow kUploadExamples[] = {
    {"upload videos/ --category 3 --all", kNothing},
    {"upload --again", {"上次失败的部分", "what failed the last time"}},
};
constexpr ExampleRow kBackupExamples[] = {
    {"backup backups/ --keep 30 --only-changed", {"用于 cron", "for cron"}},
};
constexpr ExampleRow kCompareExamples[] = {
    {"compare backups/20261121T203000Z", {"备份与现场", "a backup and the venue"}},
};
constexpr ExampleRow kRestoreExamples[] = {
    {"restore backups/20261121T203000Z -p 192.168.1.20 --dry-run", kNothing},
    {"restore backups/20261121T203000Z -p 192.168.1.31 --as PLAYER4", {"更换设备之后", "after a replacement"}},
};
constexpr ExampleRow kCheckExamples[] = {{"check timeline.json", kNothing}};
constexpr ExampleRow kWatchExamples[] = {{"watch -p 192.168.1.20 --json", kNothing}};

bool Restarts(const Invocation& call) { return call.Has(kRestart); }
bool ReachesAllOrRestarts(const Invocation& call) {
    return !call.Has(kDryRun) && (call.Has(kAll) || call.Has(kRestart));
}
bool IsNoTrial(const Invocation& call) { return !call.Has(kDryRun); }
bool SwitchesOff(const Invocation& call) {
    return call.Argument(0) == "power" && call.Argument(1) == "off";
}

constexpr CommandRow kCommands[] = {
    {CommandId::kFind, "find", Players::kAllByDefault, kRange, {}, {}, {},
     {"查找播放器", "find players"},
     {"列出每台应答的播放器的地址、端口、MAC、ID、版本、通道和备注。给出范围（如 192.168.1.0/24）时逐个地址"
      "单播询问，每秒最多 100 个。使用 --expect 或 -p 时，缺少的播放器会被点名，并以 1 结束。",
      "Lists every player that answers with its address, port, MAC, ID, versions, channels and remark. The "
      "addresses of a range such as 192.168.1.0/24 are asked one by one, at most 100 a second. With "
      "--expect or -p it names who is missing, and exits 1."},
     kFindExamples},
    {CommandId::kShow, "show", Players::kNamed, {}, {}, {}, {},
     {"显示播放器的身份、模式、剩余空间和正在播放的内容", "show identity, mode, free space and what is playing"},
     {"正在播放的内容由播放器自己报告，最多等待 3 秒。",
      "Players tell by themselves what is playing: it is waited for, 3 s at most."},
     kShowExamples},
    {CommandId::kVideos, "videos", Players::kNamed, {}, {}, {}, {},
     {"列出播放器上的视频", "list the videos of players"}, kNothing, kVideosExamples},
    {CommandId::kGet, "get", Players::kNamed, kBlockName, kOfGet, {}, {},
     {"读取设置文档，与播放器发送的完全一致", "read a document as the player sent it"}, kNothing, kGetExamples},
    {CommandId::kSet, "set", Players::kNamed, kBlockAndEdits, kOfSet, {}, {},
     {"修改单项设置", "change single settings"},
     {"KEY 是设置项的固定路径（compare 会显示）。值按照对话框中的规则检查，写入后读回核对。写入前播放器现有的文档"
      "会保存到数据文件夹。",
      "KEY is the stable path of a row, as compare shows it. Values are checked by the rules of the rows "
      "and read back. The player's present document is kept in the folder of data before."},
     kSetExamples, Restarts},
    {CommandId::kApply, "apply", Players::kNamed, kBlockName, kOfApply, kRequiredByApply, {},
     {"发送整个文档", "send a whole document"}, kNothing, kApplyExamples, ReachesAllOrRestarts},
    {CommandId::kControl, "control", Players::kNamed, kActionAndValue, {}, {}, {},
     {"控制播放", "control the playback"},
     {"播放器自己决定有哪些按钮：先读取按钮，再按类型选择。没有这样的按钮时失败，并列出已有的按钮。",
      "The player decides which buttons there are: they are fetched, and picked by their type. Without such "
      "a button it fails and lists those that there are."},
     kControlExamples, SwitchesOff},
    {CommandId::kSend, "send", Players::kNamed, kHex, kOfSend, kRequiredBySend, {},
     {"让播放器从端口发送一条指令", "have a player send one command from a port"},
     {"播放器不应答，所以只能说明指令已发出。", "The player answers nothing, so that only its having been sent is told."},
     kSendExamples},
    {CommandId::kUpload, "upload", Players::kNamed, kSources, kOfUpload, {}, kNotInTurn,
     {"发送视频", "send videos"},
     {"一台接一台地发送：先给出计划，之后读取视频列表作为证明。每次运行都有日志，--again 只发送其中未成功的部分。",
      "One player after another: a plan first, and their lists of videos as a proof afterwards. There is a "
      "journal of each run; --again sends exactly what did not end well."},
     kUploadExamples},
    {CommandId::kBackup, "backup", Players::kAllByDefault, kBackupFolder, kOfBackup, {}, {},
     {"备份播放器的全部设置", "back up all settings of players"},
     {"写入 DIR/时间/播放器/设置块.json 和清单；清单最后写入，因此中断的备份绝不会被当成完整的备份。播放器不支持的设置块"
      "记录在清单中，不算失败。",
      "Into DIR/TIME/PLAYER/BLOCK.json, with a manifest, which is written last: what was broken off is never "
      "taken for a backup. Blocks that a player does not support stand in the manifest, and are no failure."},
     kBackupExamples},
    {CommandId::kCompare, "compare", Players::kAllByDefault, kTwoBackups, {}, {}, {},
     {"比较两份备份，或备份与现场", "compare two backups, or a backup and the venue"},
     {"相同时以 0 结束，不同为 1，无法判断为 4。", "Exits 0 when they are the same, 1 when they differ, 4 when that cannot be told."},
     kCompareExamples},
    {CommandId::kRestore, "restore", Players::kNamed, kOneBackup, kOfRestore, {}, {},
     {"从备份恢复设置", "restore settings from a backup"},
     {"先显示计划，只发送不同的部分，并读回核对。", "Shows a plan first, sends only what differs, and reads it back."},
     kRestoreExamples, IsNoTrial},
    {CommandId::kCheck, "check", Players::kNone, kDocument, kOfCheck, {}, {},
     {"检查文档文件", "check the file of a document"},
     {"说明是哪种文档、哪里有错（行和列），也检查时间线。无误时以 0 结束，有错为 1，无法判断为 4。",
      "Says what document it is and what is wrong with it, with line and column; timelines have their own "
      "checks. Exits 0 when it is sound, 1 when it is faulty, 4 when that cannot be told."},
     kCheckExamples},
    {CommandId::kWatch, "watch", Players::kNamed, {}, kOfWatch, {}, kNotInTurn,
     {"持续显示播放位置和状态", "show positions and states as they come"}, kNothing, kWatchExamples},
};

constexpr ActionRow kActions[] = {
    {"play", nullptr, false, {"播放", "play"}},
    {"pause", nullptr, false, {"暂停", "pause"}},
    {"next", nullptr, false, {"下一个视频", "the next video"}},
    {"previous", nullptr, false, {"上一个视频", "the previous video"}},
    {"mode", "MODE", true,
     {"播放模式：folder-loop、single-loop、single、folder-random、all-random，或按钮上的文字",
      "the play mode: folder-loop, single-loop, single, folder-random, all-random, or what its button says"}},
    {"folder", "NAME", true, {"切换类别", "change to a folder"}},
    {"video", "NAME", true, {"播放此视频", "play a video"}},
    {"usb-video", "NAME", true, {"播放 USB 上的视频", "play a video from the USB disk"}},
    {"layout", "NAME", true, {"切换布局", "change the layout"}},
    {"volume", "0-100", true, {"音量", "the volume"}},
    {"power", "on|off", true, {"开机或关机", "switch on or off"}},
};
// clang-format on

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }
std::span<const OptionRow> Options() { return kOptions; }
std::span<const ActionRow> Actions() { return kActions; }

std::vector<std::string> BlockWords() {
    std::vector<std::string> words;
    for (const SettingsBlockKind& kind : SettingsBlocks()) words.emplace_back(kind.name);
    return words;
}

const OptionRow& RowOf(OptionId id) { return *std::ranges::find(kOptions, id, &OptionRow::id); }

const CommandRow* FindCommand(std::string_view name) {
    const auto* found = std::ranges::find(kCommands, name, &CommandRow::name);
    return found == std::end(kCommands) ? nullptr : found;
}

bool IsRequired(const CommandRow& command, const OptionRow& option) {
    return std::ranges::find(command.required, option.id) != command.required.end();
}

bool Takes(const CommandRow& command, const OptionRow& option) {
    const auto holds = [&](std::span<const OptionId> ids) {
        return std::ranges::find(ids, option.id) != ids.end();
    };
    switch (option.scope) {
        case kNamed: return holds(command.options);
        case kPlayers: return command.players != Players::kNone && !holds(command.without);
        case kEvery: return true;
    }
    return false;
}

}  // namespace sontaro::cli
