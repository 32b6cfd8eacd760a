#include "simulator/sample_wall.h"

namespace sontaro::simulator {

std::string SampleWall() {
    return R"({
"ver" : 2,
"configData" : {
"VScreenSize" : [
{"screenID":1,"enable":1,"width":1920,"height":1080,"leftZoom":0,"topZoom":0,"rightZoom":0,"bottomZoom":0},
{"screenID":2,"enable":1,"width":1920,"height":1080,"leftZoom":0,"topZoom":12,"rightZoom":0,"bottomZoom":12},
{"screenID":0,"enable":1,"width":1920,"height":1080,"leftZoom":0,"topZoom":0,"rightZoom":24,"bottomZoom":0}
],
"channelShowArea" : [
{"screenID":1,"enable":1,"channelID":0,"leftTopX":0,"leftTopY":0,"rightTopX":1919,"rightTopY":0,"leftBottomX":0,"leftBottomY":1079,"rightBottomX":1919,"rightBottomY":1079},
{"screenID":2,"enable":1,"channelID":0,"leftTopX":1800,"leftTopY":0,"rightTopX":3719,"rightTopY":0,"leftBottomX":1800,"leftBottomY":1079,"rightBottomX":3719,"rightBottomY":1079},
{"screenID":0,"enable":1,"channelID":0,"leftTopX":3656,"leftTopY":0,"rightTopX":5575,"rightTopY":0,"leftBottomX":3656,"leftBottomY":1079,"rightBottomX":5575,"rightBottomY":1079}
],
"fixedParam" : [
{"keyVal":"wallModel","inputType":3,"lableName":"拼接型号","remarks":"","valueRange":["SW-8"],"select":"SW-8"},
{"keyVal":"syncClock","inputType":"Double","lableName":"同步时钟","remarks":"单位：兆赫","valueRange":[74.25],"select":74.25}
],
"varParam" : [
{"keyVal":"blendGroup","inputType":0,"lableName":"","remarks":"","valueRange":[],"select":"融合与同步"},
{"keyVal":"syncMaster","inputType":1,"lableName":"主机编号","remarks":"发出同步信号的播放器，从 1 开始","valueRange":[1],"select":1},
{"keyVal":"blendGain","inputType":"Double","lableName":"融合增益","remarks":"融合带的亮度系数","valueRange":[1.25],"select":1.25},
{"keyVal":"wallName","inputType":"String","lableName":"画面墙名称","remarks":"显示在播放器的菜单中","valueRange":["主舞台"],"select":"主舞台"},
{"keyVal":"refreshRate","inputType":4,"lableName":"刷新率","remarks":"单位：赫兹","valueRange":[24,25,30,50,60],"select":60},
{"keyVal":"blendGamma","inputType":5,"lableName":"融合伽马","remarks":"与投影机一致","valueRange":[1.8,2,2.2,2.4],"select":2.2},
{"keyVal":"blendCurve","inputType":"StringArry","lableName":"融合曲线","remarks":"融合带内亮度的过渡方式","valueRange":["直线","余弦","平方"],"select":"余弦"},
{"keyVal":"blackLevel","inputType":7,"lableName":"黑场补偿","remarks":"-20 至 20","valueRange":[20,-20],"select":-4},
{"keyVal":"blendWidth","inputType":"DoubleRange","lableName":"融合宽度系数","remarks":"0 至 2","valueRange":[0,2],"select":0.5},
{"keyVal":"blendSides","inputType":9,"lableName":"融合带","remarks":"启用融合的接缝","valueRange":[1,2,3],"select":[1,2]},
{"keyVal":"testLevels","inputType":"DoubleMultiple","lableName":"测试灰阶","remarks":"测试图依次显示的灰阶","valueRange":[0.25,0.5,0.75,1],"select":[0.5,1]},
{"keyVal":"testPictures","inputType":11,"lableName":"测试图","remarks":"校正时轮流显示","valueRange":["网格","灰阶","纯白"],"select":["网格"]},
{"keyVal":"syncDelay","inputType":"IntStringRange","lableName":"同步延时","remarks":"单位：毫秒","valueRange":["0","500"],"select":"40"},
{"keyVal":"redGain","inputType":13,"lableName":"红色增益","remarks":"各屏幕之间的色差","valueRange":["0.5000","1.5000"],"select":"1.0000"}
]
}
}
)";
}

}  // namespace sontaro::simulator
