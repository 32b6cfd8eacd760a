#include "controlprotocol/working_copy.h"

#include "base/file.h"
#include "base/local_text.h"
#include "settings/settings_files.h"

namespace sontaro {

namespace {

constexpr LocalText kRestartQuestion = {"设置参数后,重启设备吗?",
                                        "After setting the parameters, restart the device?"};
constexpr LocalText kNotWritten = {"无法写入控制协议文件，未发送！",
                                   "The control protocol file cannot be written. Nothing has been "
                                   "sent!"};

}  // namespace

std::optional<OutgoingSettings> WorkingCopy::Prepare(const std::string& text) {
    const Status written = WriteFileAtomically(path_, text);
    Result<std::string> kept = written ? ReadFile(path_) : Error{written.reason()};
    if (!kept || kept->size() > kLongestPayload) {
        prompts_.Warn(Localized(kept ? kSettingsTooLong : kNotWritten));
        return std::nullopt;
    }
    asking_ = true;
    const bool restarts = prompts_.Confirm(Localized(kRestartQuestion));
    asking_ = false;
    return OutgoingSettings{std::move(*kept), restarts};
}

}  // namespace sontaro
