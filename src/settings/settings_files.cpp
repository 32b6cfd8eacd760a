#include "settings/settings_files.h"

#include "base/file.h"

namespace sontaro {

namespace {

constexpr LocalText kNoSettings = {"文件中没有可用的设置，未作任何更改！",
                                   "The file holds no such settings. Nothing has been changed!"};
constexpr LocalText kFileWritten = {"保存完成！", "Save OK!"};
constexpr LocalText kFileNotWritten = {"无法写入文件！", "The file cannot be written!"};

}  // namespace

bool TakeSettingsFile(const std::filesystem::path& path,
                      const std::function<bool(std::string_view)>& take, Prompts& prompts) {
    const Result<std::string> text = ReadFile(path);
    const bool taken = text && take(*text);
    if (!taken) prompts.Warn(Localized(kNoSettings));
    return taken;
}

void KeepSettingsFile(const std::filesystem::path& path, std::string_view text, Prompts& prompts) {
    if (WriteFileAtomically(path, text))
        prompts.Inform(Localized(kFileWritten));
    else
        prompts.Warn(Localized(kFileNotWritten));
}

}  // namespace sontaro
