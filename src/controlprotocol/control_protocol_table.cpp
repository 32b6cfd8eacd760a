#include "controlprotocol/control_protocol_table.h"

namespace sontaro {

namespace {

constexpr LocalText kVendors[] = {InBoth("视易"), InBoth("雷石"), InBoth("视翰")};
constexpr LocalText kBaudRates[] = {InBoth("1200"),  InBoth("2400"),  InBoth("4800"),
                                    InBoth("9600"),  InBoth("19200"), InBoth("38400"),
                                    InBoth("57600"), InBoth("115200")};
constexpr LocalText kDataBits[] = {InBoth("5"), InBoth("6"), InBoth("7"), InBoth("8")};
constexpr LocalText kStopBits[] = {InBoth("1"), InBoth("2")};
constexpr LocalText kPlayModes[] = {{"单曲循环", "Single Loop"},
                                    {"当前类别循环", "Folder Loop"},
                                    {"当前类别随机", "Folder Random"},
                                    {"所有类别随机", "All Random"},
                                    {"单曲播放", "Single Play"}};
constexpr LocalText kFollowing[] = {{"不跟随切换", "Disabled"}, {"跟随切换", "Enabled"}};
constexpr LocalText kSoundSources[] = {
    {"播放器1", "Player1"}, {"播放器2", "Player2"}, {"U盘", "U Disk"}};
constexpr LocalText kLanguages[] = {{"中文", "Chinese"}, {"英文", "English"}};
constexpr LocalText kLocking[] = {{"不锁定", "UnLock"}, {"锁定", "Lock"}};
constexpr LocalText kEnabling[] = {{"禁用", "Disabled"}, {"启用", "Enabled"}};
constexpr LocalText kColourRanges[] = {{"默认", "default"}, {"全范围色彩", "Full Range"}};
constexpr LocalText kTransports[] = {InBoth("UDP"), InBoth("TCP")};
constexpr LocalText kControlTypes[] = {{"投影开关盒", "ProjectorBox"},
                                       {"投影直控", "ProjectorControl"}};

constexpr FieldShape kHidden = {FieldRule::kHidden};
constexpr FieldShape kText = {FieldRule::kText};
constexpr FieldShape kAddress = {FieldRule::kAddress};
constexpr FieldShape kCommand = {FieldRule::kCommand};
constexpr FieldShape kNumber = {FieldRule::kNumber};
constexpr FieldShape kPort = {FieldRule::kNumber, {}, 0, 65535};
constexpr FieldShape kSize = {FieldRule::kNumber, {}, 0, 100000};
constexpr FieldShape kDmxAddress = {FieldRule::kNumber, {}, 1, 512};

constexpr FieldShape IndexInto(std::span<const LocalText> choices) {
    return {FieldRule::kIndex, choices};
}
constexpr FieldShape OneOf(std::span<const LocalText> choices) {
    return {FieldRule::kListedNumber, choices};
}

constexpr LocalText kNoHelp = {nullptr, nullptr};
constexpr LocalText kWidthHelp = {"物理宽度(0~100000)", "PhysicalWidth(0~100000)"};
constexpr LocalText kHeightHelp = {"物理高度(0~100000)", "PhysicalHeight(0~100000)"};
constexpr LocalText kDmxHelp = InBoth("DMX512地址(1~512)");

// The USB disk is the third sound source, but players call it 1000.
constexpr Substitute kUsbDisk = {2, 1000};

using Ktv = SongSystem;
using Serial = SerialSettings;

// clang-format off
constexpr Field<Ktv> kKtv[] = {
    {{"KTVName", IndexInto(kVendors), {"点歌机名称", "KTV Name"}}, &Ktv::vendor},
    {{"KTVServerIP", kAddress, {"服务器IP地址", "ServerIP"}, kNoHelp, "192.168.84.101"}, &Ktv::serverIp},
    {{"KTVServerPort", kPort, {"服务器端口号", "Server Port"}, kNoHelp, 8192}, &Ktv::serverPort},
};

// The low rate of a new document is on purpose.
constexpr Field<Serial> kSerialConfiguration[] = {
    {{"BaudRate", OneOf(kBaudRates), {"波特率", "BaudRate"}, kNoHelp, 1200}, &Serial::baudRate},
    {{"DataBit", OneOf(kDataBits), {"数据位", "DataBit"}, kNoHelp, 8}, &Serial::dataBits},
    {{"StopBit", OneOf(kStopBits), {"停止位", "StopBit"}, kNoHelp, 1}, &Serial::stopBits},
    {{"Parity", kHidden, InBoth("")}, &Serial::parity},
    {{"PlayMode", IndexInto(kPlayModes), {"视频播放模式", "Video Play Mode"}, kNoHelp, 1}, &Serial::playMode},
    {{"LayOutMov", IndexInto(kFollowing), {"布局切换模式", "LayOut Switch Mode"}}, &Serial::layoutFollowsVideo},
    {{"AudioOutChl", IndexInto(kSoundSources), {"声音来源", "Sound source"}, kNoHelp, {}, kUsbDisk}, &Serial::soundSource},
    {{"Language", IndexInto(kLanguages), {"语言", "Language"}}, &Serial::language},
    {{"AspectRatio", IndexInto(kLocking), {"视频横纵比", "AspectRatio"}}, &Serial::aspectRatioLock},
    {{"Physical1Width", kSize, {"第一幕物理宽度(cm)", "Screen1PhysicalWidth(cm)"}, kWidthHelp}, &Serial::width1},
    {{"Physical1Height", kSize, {"第一幕物理高度(cm)", "Screen1PhysicalHeight(cm)"}, kHeightHelp}, &Serial::height1},
    {{"Physical2Width", kSize, {"第二幕物理宽度(cm)", "Screen2PhysicalWidth(cm)"}, kWidthHelp}, &Serial::width2},
    {{"Physical2Height", kSize, {"第二幕物理高度(cm)", "Screen2PhysicalHeight(cm)"}, kHeightHelp}, &Serial::height2},
    {{"FadeinoutEnable", IndexInto(kEnabling), {"淡入淡出使能", "FadeinoutEnable"}}, &Serial::fading},
    {{"MovTypeSwitchEnable", IndexInto(kEnabling), {"视频类别重复切换使能", "TypeSwitchEnable"}, kNoHelp, 1}, &Serial::repeatedSwitching},
    {{"PowerOnProjectorEnable", IndexInto(kEnabling), {"开机打开投影使能", "PowerOnProjectorEnable"}, kNoHelp, 1}, &Serial::projectorsAtStart},
    {{"InputRGBRange", IndexInto(kColourRanges), {"输入色彩范围", "Input RGB Range"}}, &Serial::inputColourRange},
};

constexpr Field<Serial> kSerialControl[] = {
    {{"Play", kCommand, {"视频播放", "Video Play"}, {"播放", "Video Play"}}, &Serial::play},
    {{"Pause", kCommand, {"视频暂停", "Video Pause"}, {"暂停", "Video Pause"}}, &Serial::pause},
    {{"BackType", kCommand, {"视频上个类别", "Video Previous Folder"}, {"上个类别", "Video Previous Folder"}}, &Serial::backType},
    {{"NextType", kCommand, {"视频下个类别", "Video Next Folder"}, {"下个类别", "Video Next Folder"}}, &Serial::nextType},
    {{"SceneLock", kCommand, {"场景锁定", "Scene Lock"}}, &Serial::sceneLock},
    {{"SceneUnLock", kCommand, {"场景解锁", "Scene UnLock"}}, &Serial::sceneUnlock},
    {{"BackVideo", kCommand, {"视频类别上一首", "Previous Video"}, {"类别上一首", "Previous Video"}}, &Serial::backVideo},
    {{"NextVideo", kCommand, {"视频类别下一首", "Next Video"}, {"类别下一首", "Next Video"}}, &Serial::nextVideo},
    {{"VolumeAdd", kCommand, {"音量+", "Volume Up"}}, &Serial::volumeUp},
    {{"VolumeSub", kCommand, {"音量-", "Volume Down"}}, &Serial::volumeDown},
    {{"ProjectorON", kCommand, {"开投影", "Projector On"}}, &Serial::projectorsOn},
    {{"ProjectorOFF", kCommand, {"关投影", "Projector Off"}}, &Serial::projectorsOff},
    {{"WagWinON", kCommand, {"开摇麦窗口", "WagWin On"}}, &Serial::waveWindowOn},
    {{"WagWinOFF", kCommand, {"关摇麦窗口", "WagWin Off"}}, &Serial::waveWindowOff},
    {{"AllWinON", kCommand, {"开所有窗口", "AllWin On"}}, &Serial::allWindowsOn},
    {{"AllWinOFF", kCommand, {"关所有窗口", "AllWin Off"}}, &Serial::allWindowsOff},
    {{"PlayStop", kCommand, {"视频停止", "Video Stop"}, {"播放暂停单键", "Play Stop"}}, &Serial::playStop},
    {{"PowerOn", kCommand, {"开机", "Power On"}}, &Serial::powerOn},
    {{"PowerOff", kCommand, {"关机", "Power Off"}}, &Serial::powerOff},
    {{"Auto", kCommand, {"自动", "Auto"}}, &Serial::automatic},
    {{"Hand", kCommand, {"手动", "Hand"}}, &Serial::manual},
    {{"QRCode", kCommand, {"二维码", "QRCode"}}, &Serial::qrCode},
    {{"LayOut", kCommand, {"布局切换", "LayOut"}}, &Serial::layout},
    {{"MovSinglePlay", kCommand, {"单曲播放", "SinglePlay"}}, &Serial::singlePlay},
    {{"MovSingleRepeat", kCommand, {"单曲循环", "SingleRepeat"}}, &Serial::singleRepeat},
    {{"MovTypeRepeat", kCommand, {"类别循环", "TypeRepeat"}}, &Serial::typeRepeat},
    {{"MovTypeRandom", kCommand, {"类别随机", "TypeRandom"}}, &Serial::typeRandom},
    {{"MovAllRandom", kCommand, {"所有随机", "AllRandom"}}, &Serial::allRandom},
    {{"RePlay", kCommand, {"重播", "RePlay"}}, &Serial::replay},
    {{"MovOnComplete", kCommand, {"播放完成(发送)", "MovOnComplete"}}, &Serial::playComplete},
    {{"GameOpen", kCommand, {"游戏打开", "GameOpen"}}, &Serial::gameOpen},
    {{"GameClose", kCommand, {"游戏关闭", "GameClose"}}, &Serial::gameClose},
    {{"GamePrevious", kCommand, {"游戏上一个", "GamePrevious"}}, &Serial::gamePrevious},
    {{"GameNext", kCommand, {"游戏下一个", "GameNext"}}, &Serial::gameNext},
    {{"ImagePlayerOpen", kCommand, {"图片特效开启", "ImagePlayerOpen"}}, &Serial::imagePlayerOpen},
    {{"ImagePlayerClose", kCommand, {"图片特效关闭", "ImagePlayerClose"}}, &Serial::imagePlayerClose},
    {{"VolumeOpen", kCommand, {"音量开启", "VolumeOpen"}}, &Serial::volumeOpen},
    {{"VolumeClose", kCommand, {"音量关闭", "VolumeClose"}}, &Serial::volumeClose},
};

constexpr Field<Serial> kAudioControl[] = {
    {{"AudioPlayEnable", IndexInto(kEnabling), InBoth("音频播放使能")}, &Serial::audioEnable},
    {{"AudioPlayMode", IndexInto(kPlayModes), InBoth("音频播放模式")}, &Serial::audioPlayMode},
    {{"AudioPlay", kCommand, InBoth("音频播放")}, &Serial::audioPlay},
    {{"AudioPause", kCommand, InBoth("音频暂停")}, &Serial::audioPause},
    {{"AudioBackType", kCommand, InBoth("音频上个类别")}, &Serial::audioBackType},
    {{"AudioNextType", kCommand, InBoth("音频下个类别")}, &Serial::audioNextType},
    {{"BackAudio", kCommand, InBoth("音频类别上一首")}, &Serial::backAudio},
    {{"NextAudio", kCommand, InBoth("音频类别下一首")}, &Serial::nextAudio},
    {{"AudioPlayOn", kCommand, InBoth("音频播放开")}, &Serial::audioOn},
    {{"AudioPlayOff", kCommand, InBoth("音频播放关")}, &Serial::audioOff},
    {{"AudioSingleLoop", kCommand, InBoth("音频单曲循环")}, &Serial::audioSingleLoop},
    {{"AudioTypeLoop", kCommand, InBoth("音频类别循环")}, &Serial::audioTypeLoop},
    {{"AudioTypeRandom", kCommand, InBoth("音频类别随机")}, &Serial::audioTypeRandom},
    {{"AudioAllRandom", kCommand, InBoth("音频所有随机")}, &Serial::audioAllRandom},
    {{"AudioSinglePlay", kCommand, InBoth("音频单曲播放")}, &Serial::audioSinglePlay},
    {{"AudioStop", kCommand, InBoth("音频停止")}, &Serial::audioStop},
};

constexpr Field<Serial> kElectroacoustics[] = {
    {{"ElectroacousticMode", kNumber, InBoth("电音模式")}, &Serial::electroMode},
    {{"ElectroacousticModeOn", kCommand, InBoth("电音模式开")}, &Serial::electroOn},
    {{"ElectroacousticModeOff", kCommand, InBoth("电音模式关")}, &Serial::electroOff},
    {{"NoBass", kCommand, InBoth("无低音")}, &Serial::noBass},
    {{"Bass", kCommand, InBoth("低音")}, &Serial::bass},
    {{"BassClimax", kCommand, InBoth("低音高潮")}, &Serial::bassClimax},
    {{"ElectroacousticAutoRandomRGB", IndexInto(kEnabling), InBoth("颜色变化使能")}, &Serial::electroColours},
    {{"ElectroacousticAutoEnlager", IndexInto(kEnabling), InBoth("图像放大使能")}, &Serial::electroZoom},
    {{"ElectroacousticAutoBlink", IndexInto(kEnabling), InBoth("图像闪烁使能")}, &Serial::electroBlink},
    {{"ElectroacousticColorChangeWithBase", IndexInto(kEnabling), InBoth("颜色随低音变化")}, &Serial::electroColourByBass},
    {{"ScreenColor", kCommand, InBoth("屏幕颜色")}, &Serial::screenColour},
    {{"ImageZoom", kCommand, InBoth("图像放大")}, &Serial::imageZoom},
    {{"DMX512Addr1", kDmxAddress, InBoth("第一幕DMX512地址"), kDmxHelp, 1}, &Serial::dmxAddress1},
    {{"DMX512Addr2", kDmxAddress, InBoth("第二幕DMX512地址"), kDmxHelp, 1}, &Serial::dmxAddress2},
};

constexpr Field<VideoCategory> kVideoCategory[] = {
    {{"TypeName", kText, {"类别名称", "Type Name"}}, &VideoCategory::name},
    {{"SendCmd", kCommand, {"切换命令", "Send Cmd"}}, &VideoCategory::sendCommand},
    {{"RecvCmd", kCommand, {"回复命令", "Recv Cmd"}}, &VideoCategory::receiveCommand},
    {{"ElectroacousticMode", kNumber, {"电音模式", "ElectroacousticMode"}}, &VideoCategory::electroMode},
    {{"ScreenEffectID", kNumber, {"屏幕特效序号", "ScreenEffectID"}}, &VideoCategory::screenEffect},
};

constexpr Field<AudioCategory> kAudioCategory[] = {
    {{"TypeName", kText, InBoth("类别名称")}, &AudioCategory::name},
    {{"SendCmd", kCommand, InBoth("切换命令")}, &AudioCategory::sendCommand},
    {{"RecvCmd", kCommand, InBoth("回复命令")}, &AudioCategory::receiveCommand},
};

constexpr Field<ScreenLayout> kLayout[] = {
    {{"LayOutName", kText, {"布局名称", "LayOut Name"}}, &ScreenLayout::name},
    {{"SendCmd", kCommand, {"切换命令", "Send Cmd"}}, &ScreenLayout::sendCommand},
    {{"RecvCmd", kCommand, {"回复命令", "Recv Cmd"}}, &ScreenLayout::receiveCommand},
};

constexpr Field<Projector> kProjector[] = {
    {{"IP", kAddress, {"IP地址", "IP Addr"}}, &Projector::ip},
    {{"Port", kPort, {"端口", "Port"}}, &Projector::port},
    {{"ProtocolType", IndexInto(kTransports), {"协议类型", "ProtocolType"}}, &Projector::transport},
    {{"ProjectorControlType", IndexInto(kControlTypes), {"投影控制类型", "ProjectorControlType"}}, &Projector::controlType},
};

constexpr Field<ProjectorCommands> kProjectorCommands[] = {
    {{"ONCmd", kCommand, {"开投影命令%d", "Projector ON Cmd%d"}}, &ProjectorCommands::on},
    {{"OFFCmd", kCommand, {"关投影命令%d", "Projector OFF Cmd%d"}}, &ProjectorCommands::off},
};

constexpr FieldGroup<Ktv> kKtvGroups[] = {{{"点歌机", "KTV"}, kKtv}};
constexpr FieldGroup<Serial> kSerialGroups[] = {
    {{"串口配置", "Serial Configuration"}, kSerialConfiguration},
    {{"串口控制", "Serial Control"}, kSerialControl},
    {InBoth("音频控制"), kAudioControl},
    {InBoth("电音控制"), kElectroacoustics},
};
constexpr FieldGroup<VideoCategory> kVideoGroups[] = {{{"视频类别%d", "Video Type%d"}, kVideoCategory}};
constexpr FieldGroup<AudioCategory> kAudioGroups[] = {{InBoth("音频类别%d"), kAudioCategory}};
constexpr FieldGroup<ScreenLayout> kLayoutGroups[] = {{{"布局%d", "LayOut%d"}, kLayout}};
constexpr FieldGroup<Projector> kProjectorGroups[] = {{{"投影控制%d", "Projector Control %d"}, kProjector}};
constexpr FieldGroup<ProjectorCommands> kCommandGroups[] = {{InBoth(""), kProjectorCommands}};
// clang-format on

}  // namespace

FieldGroups<SongSystem> GroupsOf(const SongSystem&) { return kKtvGroups; }
FieldGroups<SerialSettings> GroupsOf(const SerialSettings&) { return kSerialGroups; }
FieldGroups<VideoCategory> GroupsOf(const VideoCategory&) { return kVideoGroups; }
FieldGroups<AudioCategory> GroupsOf(const AudioCategory&) { return kAudioGroups; }
FieldGroups<ScreenLayout> GroupsOf(const ScreenLayout&) { return kLayoutGroups; }
FieldGroups<Projector> GroupsOf(const Projector&) { return kProjectorGroups; }
FieldGroups<ProjectorCommands> GroupsOf(const ProjectorCommands&) { return kCommandGroups; }

}  // namespace sontaro
