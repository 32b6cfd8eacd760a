#include "controlprotocol/control_protocol_table.h"

#include "settings/record_table.h"

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

constexpr LocalText kInputError = {"输入错误!", "input error!"};

constexpr FieldShape kHidden = {};
constexpr FieldShape kText = Refusing(kInputError, Text());
constexpr FieldShape kAddress = Refusing(kInputError, {FieldRule::kAddress});
constexpr FieldShape kCommand = Refusing(kInputError, Command());
constexpr FieldShape kNumber = Refusing(kInputError, Number());
constexpr FieldShape kPort = Refusing(kInputError, Number(0, 65535));
constexpr FieldShape kSize = Refusing(kInputError, Number(0, 100000));
constexpr FieldShape kDmxAddress = Refusing(kInputError, Number(1, 512));

constexpr FieldShape Index(std::span<const LocalText> choices) {
    return Refusing(kInputError, IndexInto(choices));
}
constexpr FieldShape Listed(std::span<const LocalText> choices) {
    return Refusing(kInputError, OneOf(choices));
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
constexpr auto kKtv = Rows<Ktv>({
    Heading{"点歌机", "KTV"},
    {"KTVName", kAt<&Ktv::vendor>, Index(kVendors), {"点歌机名称", "KTV Name"}},
    {"KTVServerIP", kAt<&Ktv::serverIp>, kAddress, {"服务器IP地址", "ServerIP"}, kNoHelp, "192.168.84.101"},
    {"KTVServerPort", kAt<&Ktv::serverPort>, kPort, {"服务器端口号", "Server Port"}, kNoHelp, 8192},
});

// The low rate of a new document is on purpose.
constexpr auto kSerial = Rows<Serial>({
    Heading{"串口配置", "Serial Configuration"},
    {"BaudRate", kAt<&Serial::baudRate>, Listed(kBaudRates), {"波特率", "BaudRate"}, kNoHelp, 1200},
    {"DataBit", kAt<&Serial::dataBits>, Listed(kDataBits), {"数据位", "DataBit"}, kNoHelp, 8},
    {"StopBit", kAt<&Serial::stopBits>, Listed(kStopBits), {"停止位", "StopBit"}, kNoHelp, 1},
    {"Parity", kAt<&Serial::parity>, kHidden},
    {"PlayMode", kAt<&Serial::playMode>, Index(kPlayModes), {"视频播放模式", "Video Play Mode"}, kNoHelp, 1},
    {"LayOutMov", kAt<&Serial::layoutFollowsVideo>, Index(kFollowing), {"布局切换模式", "LayOut Switch Mode"}},
    {"AudioOutChl", kAt<&Serial::soundSource>, Index(kSoundSources), {"声音来源", "Sound source"}, kNoHelp, {}, kUsbDisk},
    {"Language", kAt<&Serial::language>, Index(kLanguages), {"语言", "Language"}},
    {"AspectRatio", kAt<&Serial::aspectRatioLock>, Index(kLocking), {"视频横纵比", "AspectRatio"}},
    {"Physical1Width", kAt<&Serial::width1>, kSize, {"第一幕物理宽度(cm)", "Screen1PhysicalWidth(cm)"}, kWidthHelp},
    {"Physical1Height", kAt<&Serial::height1>, kSize, {"第一幕物理高度(cm)", "Screen1PhysicalHeight(cm)"}, kHeightHelp},
    {"Physical2Width", kAt<&Serial::width2>, kSize, {"第二幕物理宽度(cm)", "Screen2PhysicalWidth(cm)"}, kWidthHelp},
    {"Physical2Height", kAt<&Serial::height2>, kSize, {"第二幕物理高度(cm)", "Screen2PhysicalHeight(cm)"}, kHeightHelp},
    {"FadeinoutEnable", kAt<&Serial::fading>, Index(kEnabling), {"淡入淡出使能", "FadeinoutEnable"}},
    {"MovTypeSwitchEnable", kAt<&Serial::repeatedSwitching>, Index(kEnabling), {"视频类别重复切换使能", "TypeSwitchEnable"}, kNoHelp, 1},
    {"PowerOnProjectorEnable", kAt<&Serial::projectorsAtStart>, Index(kEnabling), {"开机打开投影使能", "PowerOnProjectorEnable"}, kNoHelp, 1},
    {"InputRGBRange", kAt<&Serial::inputColourRange>, Index(kColourRanges), {"输入色彩范围", "Input RGB Range"}},
    Heading{"串口控制", "Serial Control"},
    {"Play", kAt<&Serial::play>, kCommand, {"视频播放", "Video Play"}, {"播放", "Video Play"}},
    {"Pause", kAt<&Serial::pause>, kCommand, {"视频暂停", "Video Pause"}, {"暂停", "Video Pause"}},
    {"BackType", kAt<&Serial::backType>, kCommand, {"视频上个类别", "Video Previous Folder"}, {"上个类别", "Video Previous Folder"}},
    {"NextType", kAt<&Serial::nextType>, kCommand, {"视频下个类别", "Video Next Folder"}, {"下个类别", "Video Next Folder"}},
    {"SceneLock", kAt<&Serial::sceneLock>, kCommand, {"场景锁定", "Scene Lock"}},
    {"SceneUnLock", kAt<&Serial::sceneUnlock>, kCommand, {"场景解锁", "Scene UnLock"}},
    {"BackVideo", kAt<&Serial::backVideo>, kCommand, {"视频类别上一首", "Previous Video"}, {"类别上一首", "Previous Video"}},
    {"NextVideo", kAt<&Serial::nextVideo>, kCommand, {"视频类别下一首", "Next Video"}, {"类别下一首", "Next Video"}},
    {"VolumeAdd", kAt<&Serial::volumeUp>, kCommand, {"音量+", "Volume Up"}},
    {"VolumeSub", kAt<&Serial::volumeDown>, kCommand, {"音量-", "Volume Down"}},
    {"ProjectorON", kAt<&Serial::projectorsOn>, kCommand, {"开投影", "Projector On"}},
    {"ProjectorOFF", kAt<&Serial::projectorsOff>, kCommand, {"关投影", "Projector Off"}},
    {"WagWinON", kAt<&Serial::waveWindowOn>, kCommand, {"开摇麦窗口", "WagWin On"}},
    {"WagWinOFF", kAt<&Serial::waveWindowOff>, kCommand, {"关摇麦窗口", "WagWin Off"}},
    {"AllWinON", kAt<&Serial::allWindowsOn>, kCommand, {"开所有窗口", "AllWin On"}},
    {"AllWinOFF", kAt<&Serial::allWindowsOff>, kCommand, {"关所有窗口", "AllWin Off"}},
    {"PlayStop", kAt<&Serial::playStop>, kCommand, {"视频停止", "Video Stop"}, {"播放暂停单键", "Play Stop"}},
    {"PowerOn", kAt<&Serial::powerOn>, kCommand, {"开机", "Power On"}},
    {"PowerOff", kAt<&Serial::powerOff>, kCommand, {"关机", "Power Off"}},
    {"Auto", kAt<&Serial::automatic>, kCommand, {"自动", "Auto"}},
    {"Hand", kAt<&Serial::manual>, kCommand, {"手动", "Hand"}},
    {"QRCode", kAt<&Serial::qrCode>, kCommand, {"二维码", "QRCode"}},
    {"LayOut", kAt<&Serial::layout>, kCommand, {"布局切换", "LayOut"}},
    {"MovSinglePlay", kAt<&Serial::singlePlay>, kCommand, {"单曲播放", "SinglePlay"}},
    {"MovSingleRepeat", kAt<&Serial::singleRepeat>, kCommand, {"单曲循环", "SingleRepeat"}},
    {"MovTypeRepeat", kAt<&Serial::typeRepeat>, kCommand, {"类别循环", "TypeRepeat"}},
    {"MovTypeRandom", kAt<&Serial::typeRandom>, kCommand, {"类别随机", "TypeRandom"}},
    {"MovAllRandom", kAt<&Serial::allRandom>, kCommand, {"所有随机", "AllRandom"}},
    {"RePlay", kAt<&Serial::replay>, kCommand, {"重播", "RePlay"}},
    {"MovOnComplete", kAt<&Serial::playComplete>, kCommand, {"播放完成(发送)", "MovOnComplete"}},
    {"GameOpen", kAt<&Serial::gameOpen>, kCommand, {"游戏打开", "GameOpen"}},
    {"GameClose", kAt<&Serial::gameClose>, kCommand, {"游戏关闭", "GameClose"}},
    {"GamePrevious", kAt<&Serial::gamePrevious>, kCommand, {"游戏上一个", "GamePrevious"}},
    {"GameNext", kAt<&Serial::gameNext>, kCommand, {"游戏下一个", "GameNext"}},
    {"ImagePlayerOpen", kAt<&Serial::imagePlayerOpen>, kCommand, {"图片特效开启", "ImagePlayerOpen"}},
    {"ImagePlayerClose", kAt<&Serial::imagePlayerClose>, kCommand, {"图片特效关闭", "ImagePlayerClose"}},
    {"VolumeOpen", kAt<&Serial::volumeOpen>, kCommand, {"音量开启", "VolumeOpen"}},
    {"VolumeClose", kAt<&Serial::volumeClose>, kCommand, {"音量关闭", "VolumeClose"}},
    Heading{"音频控制", "音频控制"},
    {"AudioPlayEnable", kAt<&Serial::audioEnable>, Index(kEnabling), InBoth("音频播放使能")},
    {"AudioPlayMode", kAt<&Serial::audioPlayMode>, Index(kPlayModes), InBoth("音频播放模式")},
    {"AudioPlay", kAt<&Serial::audioPlay>, kCommand, InBoth("音频播放")},
    {"AudioPause", kAt<&Serial::audioPause>, kCommand, InBoth("音频暂停")},
    {"AudioBackType", kAt<&Serial::audioBackType>, kCommand, InBoth("音频上个类别")},
    {"AudioNextType", kAt<&Serial::audioNextType>, kCommand, InBoth("音频下个类别")},
    {"BackAudio", kAt<&Serial::backAudio>, kCommand, InBoth("音频类别上一首")},
    {"NextAudio", kAt<&Serial::nextAudio>, kCommand, InBoth("音频类别下一首")},
    {"AudioPlayOn", kAt<&Serial::audioOn>, kCommand, InBoth("音频播放开")},
    {"AudioPlayOff", kAt<&Serial::audioOff>, kCommand, InBoth("音频播放关")},
    {"AudioSingleLoop", kAt<&Serial::audioSingleLoop>, kCommand, InBoth("音频单曲循环")},
    {"AudioTypeLoop", kAt<&Serial::audioTypeLoop>, kCommand, InBoth("音频类别循环")},
    {"AudioTypeRandom", kAt<&Serial::audioTypeRandom>, kCommand, InBoth("音频类别随机")},
    {"AudioAllRandom", kAt<&Serial::audioAllRandom>, kCommand, InBoth("音频所有随机")},
    {"AudioSinglePlay", kAt<&Serial::audioSinglePlay>, kCommand, InBoth("音频单曲播放")},
    {"AudioStop", kAt<&Serial::audioStop>, kCommand, InBoth("音频停止")},
    Heading{"电音控制", "电音控制"},
    {"ElectroacousticMode", kAt<&Serial::electroMode>, kNumber, InBoth("电音模式")},
    {"ElectroacousticModeOn", kAt<&Serial::electroOn>, kCommand, InBoth("电音模式开")},
    {"ElectroacousticModeOff", kAt<&Serial::electroOff>, kCommand, InBoth("电音模式关")},
    {"NoBass", kAt<&Serial::noBass>, kCommand, InBoth("无低音")},
    {"Bass", kAt<&Serial::bass>, kCommand, InBoth("低音")},
    {"BassClimax", kAt<&Serial::bassClimax>, kCommand, InBoth("低音高潮")},
    {"ElectroacousticAutoRandomRGB", kAt<&Serial::electroColours>, Index(kEnabling), InBoth("颜色变化使能")},
    {"ElectroacousticAutoEnlager", kAt<&Serial::electroZoom>, Index(kEnabling), InBoth("图像放大使能")},
    {"ElectroacousticAutoBlink", kAt<&Serial::electroBlink>, Index(kEnabling), InBoth("图像闪烁使能")},
    {"ElectroacousticColorChangeWithBase", kAt<&Serial::electroColourByBass>, Index(kEnabling), InBoth("颜色随低音变化")},
    {"ScreenColor", kAt<&Serial::screenColour>, kCommand, InBoth("屏幕颜色")},
    {"ImageZoom", kAt<&Serial::imageZoom>, kCommand, InBoth("图像放大")},
    {"DMX512Addr1", kAt<&Serial::dmxAddress1>, kDmxAddress, InBoth("第一幕DMX512地址"), kDmxHelp, 1},
    {"DMX512Addr2", kAt<&Serial::dmxAddress2>, kDmxAddress, InBoth("第二幕DMX512地址"), kDmxHelp, 1},
});

constexpr auto kVideoCategory = Rows<VideoCategory>({
    Heading{"视频类别%d", "Video Type%d"},
    {"TypeName", kAt<&VideoCategory::name>, kText, {"类别名称", "Type Name"}},
    {"SendCmd", kAt<&VideoCategory::sendCommand>, kCommand, {"切换命令", "Send Cmd"}},
    {"RecvCmd", kAt<&VideoCategory::receiveCommand>, kCommand, {"回复命令", "Recv Cmd"}},
    {"ElectroacousticMode", kAt<&VideoCategory::electroMode>, kNumber, {"电音模式", "ElectroacousticMode"}},
    {"ScreenEffectID", kAt<&VideoCategory::screenEffect>, kNumber, {"屏幕特效序号", "ScreenEffectID"}},
});

constexpr auto kAudioCategory = Rows<AudioCategory>({
    Heading{"音频类别%d", "音频类别%d"},
    {"TypeName", kAt<&AudioCategory::name>, kText, InBoth("类别名称")},
    {"SendCmd", kAt<&AudioCategory::sendCommand>, kCommand, InBoth("切换命令")},
    {"RecvCmd", kAt<&AudioCategory::receiveCommand>, kCommand, InBoth("回复命令")},
});

constexpr auto kLayout = Rows<ScreenLayout>({
    Heading{"布局%d", "LayOut%d"},
    {"LayOutName", kAt<&ScreenLayout::name>, kText, {"布局名称", "LayOut Name"}},
    {"SendCmd", kAt<&ScreenLayout::sendCommand>, kCommand, {"切换命令", "Send Cmd"}},
    {"RecvCmd", kAt<&ScreenLayout::receiveCommand>, kCommand, {"回复命令", "Recv Cmd"}},
});

constexpr auto kProjectorCommands = Rows<ProjectorCommands>({
    {"ONCmd", kAt<&ProjectorCommands::on>, kCommand, {"开投影命令%d", "Projector ON Cmd%d"}},
    {"OFFCmd", kAt<&ProjectorCommands::off>, kCommand, {"关投影命令%d", "Projector OFF Cmd%d"}},
});

constexpr auto kProjector = Rows<Projector>({
    Heading{"投影控制%d", "Projector Control %d"},
    {"IP", kAt<&Projector::ip>, kAddress, {"IP地址", "IP Addr"}},
    {"Port", kAt<&Projector::port>, kPort, {"端口", "Port"}},
    {"ProtocolType", kAt<&Projector::transport>, Index(kTransports), {"协议类型", "ProtocolType"}},
    {"ProjectorControlType", kAt<&Projector::controlType>, Index(kControlTypes), {"投影控制类型", "ProjectorControlType"}},
    {"Cmd", kRecordAt<&Projector::commands, kProjectorCommands>},
});

using Model = ControlProtocolModel;

constexpr auto kDocument = Rows<Model>({
    {"KtvDev", kRecordAt<&Model::songSystem, kKtv>, OnGrid(0)},
    {"Serial", kRecordAt<&Model::serial, kSerial>, OnGrid(1)},
    {"VideoType", kRecordAt<&Model::videoTypes, kVideoCategory>, OnGrid(2), {"视频类别配置", "Video Type"}},
    {"AudioType", kRecordAt<&Model::audioTypes, kAudioCategory>, OnGrid(2), InBoth("音频类别配置")},
    {"LayOut", kRecordAt<&Model::layouts, kLayout>, OnGrid(3)},
    {"Projector", kRecordAt<&Model::projectors, kProjector>, OnGrid(4)},
});
// clang-format on

}  // namespace

const RecordSchema<Model>& ControlProtocolSchema() { return kSchemaOf<kDocument>; }

}  // namespace sontaro
