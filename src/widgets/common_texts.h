// Texts that several windows show.
#pragma once

#include "base/local_text.h"

namespace sontaro {

inline constexpr LocalText kOkText = {"确定", "OK"};
inline constexpr LocalText kCancelText = {"取消", "Cancel"};
inline constexpr LocalText kExitText = {"退出", "Exit"};
inline constexpr LocalText kUndoText = {"撤销", "Undo"};
inline constexpr LocalText kRedoText = {"重做", "Redo"};
inline constexpr LocalText kYesText = {"是", "Yes"};
inline constexpr LocalText kNoText = {"否", "No"};
inline constexpr LocalText kExitQuestion = {"【真的要退出程序吗?】", "Do you really want to exit?"};

inline constexpr LocalText kNothingFound = {"没有符合筛选条件的行。", "No row matches the filter."};
inline constexpr LocalText kNotCopied = {"无法使用剪切板，没有拷贝任何内容。",
                                         "The clipboard cannot be used, nothing has been copied."};

/// Goes before what is odd.
inline constexpr const char* kCautionMark = "⚠ ";

/// Behind the text of a file filter: the system may tell capitals from small letters.
inline constexpr const char* kJsonPatterns = "|*.JSON;*.json;*.Json";

}  // namespace sontaro
