#include "playercontrol/player_control_table.h"

#include "settings/record_table.h"

namespace sontaro {

namespace {

constexpr LocalText kDoesNotFit = {"输入错误!", "input error!"};
constexpr LocalText kNoNumber = {"输入类型错误!", "input type error!"};

constexpr LocalText kEnabling[] = {{"禁用", "Disabled"}, {"启用", "Enabled"}};
constexpr LocalText kLockStates[] = {{"不锁定", "UnLock"}, {"锁定", "Lock"}};
constexpr LocalText kPlayModes[] = {
    {"单曲循环", "Single Loop"},       {"当前类别循环", "Folder Loop"},
    {"当前类别随机", "Folder Random"}, {"所有类别随机", "All Random"},
    {"单曲播放", "Single Play"},
};

constexpr FieldShape WholeNumber(double most = std::numeric_limits<double>::infinity()) {
    FieldShape shape = Refusing(kDoesNotFit, Number(0, most));
    shape.noNumber = kNoNumber;
    return shape;
}
constexpr FieldShape Index(std::span<const LocalText> choices) {
    return Refusing(kDoesNotFit, IndexOrNumber(choices));
}
constexpr FieldShape kName = Refusing(kDoesNotFit, Text(kLongestTypeName));
constexpr FieldShape kCommand = Refusing(kDoesNotFit, Command(LetterCase::kLower));

using Type = ControlledType;
using Player = ControlledPlayer;
using Model = PlayerControlModel;

// clang-format off
constexpr auto kType = Rows<Type>({
    Heading{"类别%d", "Type%d"},
    {"TypeName", kAt<&Type::name>, kName, {"类别名称(8个字符，4个汉字)", "Type(8 character)"}},
    {"SendCmd", kAt<&Type::sendCommand>, kCommand, {"切换命令(十六进制数)", "SendCmd(Hex)"}},
    {"RecvCmd", kAt<&Type::receiveCommand>, kCommand, {"回复命令(十六进制数)", "RecvCmd(Hex)"}},
    {"ElectroacousticMode", kAt<&Type::electroMode>, Index(kEnabling), {"电音模式", "ElectroacousticModeEnable"}},
    {"ScreenEffectID", kAt<&Type::screenEffect>, WholeNumber(999), {"屏幕特效序号(0~999)", "ScreenEffectID(0~999)"}},
});

constexpr auto kPlayer = Rows<Player>({
    Heading{"配置", "Setting"},
    {"PlayerID", kAt<&Player::number>, WholeNumber(), {"播放器ID", "PlayerID"}},
    {"PlayerEnable", kAt<&Player::enabled>, Index(kEnabling), {"播放器使能", "PlayerEnable"}},
    {"MovTypeSwitchEnable", kAt<&Player::repeatedSwitching>, Index(kEnabling), {"视频类别重复切换使能", "VideoTypeEnable"}},
    {"AspectRatio", kAt<&Player::aspectRatioLock>, Index(kLockStates), {"视频横纵比", "AspectRatio"}},
    {"VideoPlayMode", kAt<&Player::playMode>, Index(kPlayModes), {"视频播放模式", "VideoPlayMode"}},
    Heading{"播放控制", "Playcontrol"},
    {"Play", kAt<&Player::play>, kCommand, {"播放(十六进制数)", "Play(Hex)"}},
    {"Stop", kAt<&Player::stop>, kCommand, {"停止(十六进制数)", "Stop(Hex)"}},
    {"Pause", kAt<&Player::pause>, kCommand, {"暂停(十六进制数)", "Pause(Hex)"}},
    {"PlayStop", kAt<&Player::playStop>, kCommand, {"播放暂停单键(十六进制数)", "PlayStop(Hex)"}},
    {"BackType", kAt<&Player::backType>, kCommand, {"上个类别(十六进制数)", "BackType(Hex)"}},
    {"NextType", kAt<&Player::nextType>, kCommand, {"下个类别(十六进制数)", "NextType(Hex)"}},
    {"BackVideo", kAt<&Player::backVideo>, kCommand, {"类别上一首(十六进制数)", "BackVideo(Hex)"}},
    {"NextVideo", kAt<&Player::nextVideo>, kCommand, {"类别下一首(十六进制数)", "NextVideo(Hex)"}},
    {"MovSinglePlay", kAt<&Player::singlePlay>, kCommand, {"单曲播放(十六进制数)", "SinglePlay(Hex)"}},
    {"MovSingleRepeat", kAt<&Player::singleRepeat>, kCommand, {"单曲循环(十六进制数)", "SingleRepeat(Hex)"}},
    {"MovTypeRepeat", kAt<&Player::typeRepeat>, kCommand, {"当前类别循环(十六进制数)", "TypeRepeat(Hex)"}},
    {"MovTypeRandom", kAt<&Player::typeRandom>, kCommand, {"当前类别随机(十六进制数)", "TypeRandom(Hex)"}},
    {"MovAllRandom", kAt<&Player::allRandom>, kCommand, {"所有类别随机(十六进制数)", "AllRandom(Hex)"}},
    {"VideoType", kRecordAt<&Player::types, kType>, AtMost(kMostControlledTypes), {"视频类别", "VideoType"}},
});

constexpr auto kDocument = Rows<Model>({
    {"Players", kRecordAt<&Model::players, kPlayer>, AtMost(kMostControlledPlayers)},
});
// clang-format on

}  // namespace

const RecordSchema<Model>& PlayerControlSchema() { return kSchemaOf<kDocument>; }

const RecordSchema<Player>& ControlledPlayerSchema() { return kSchemaOf<kPlayer>; }

}  // namespace sontaro
