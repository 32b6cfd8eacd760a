#include "timeline/timeline_files.h"

#include <fmt/printf.h>

#include "base/file.h"
#include "base/path_text.h"
#include "settings/settings_files.h"
#include "timeline/timeline_csv.h"
#include "timeline/timeline_texts.h"
#include "widgets/csv_file_texts.h"
#include "widgets/json_file_texts.h"

namespace sontaro {

namespace {

constexpr JsonFileTexts kOpenTexts = {{"打开播放器时间轴控制文件", "Open Playertime file"},
                                      {"播放器时间轴控制文件(*.JSON)", "Playertime Flie(*.JSON)"}};
constexpr JsonFileTexts kSaveTexts = {{"保存播放器时间轴控制文件", "Save PlayerTime file"},
                                      {"播放器时间轴控制文件(*.JSON)", "PlayerTime Flie(*.JSON)"},
                                      {"播放器时间轴控制", "PlayerTime"}};

constexpr LocalText kImportCaption = {"导入命令表格", "Import a table of commands"};
constexpr LocalText kExportCaption = {"导出命令表格", "Export a table of commands"};
constexpr LocalText kReplaceQuestion = {
    "用文件中的 %d 条命令替换现有的全部命令吗？选择“否”则添加到现有命令中。",
    "Put the %d commands of the file in place of all there are? No adds them."};
constexpr LocalText kNothingThere = {"文件中没有命令。", "it has no commands."};
constexpr LocalText kNotImported = {"无法导入“%s”，未作任何更改：%s",
                                    "\"%s\" cannot be imported, nothing has been changed: %s"};

}  // namespace

std::optional<std::filesystem::path> AskForTimelineToOpen(Prompts& prompts) {
    return prompts.ChooseFile(JsonFileQuestion(FileQuestion::Purpose::kOpen, kOpenTexts));
}

std::optional<std::filesystem::path> AskForTimelineToSave(Prompts& prompts) {
    return prompts.ChooseFile(JsonFileQuestion(FileQuestion::Purpose::kSave, kSaveTexts));
}

NodeIds ImportCsv(TimelineDocument& document, Prompts& prompts) {
    const auto path =
        prompts.ChooseFile(CsvFileQuestion(FileQuestion::Purpose::kOpen, kImportCaption));
    if (!path) return {};
    const auto refuse = [&](const std::string& why) {
        prompts.Warn(fmt::sprintf(Localized(kNotImported), TextOfPath(path->filename()), why));
        return NodeIds();
    };
    const Result<std::string> text = ReadFile(*path);
    if (!text) return refuse(Localized(kFileUnreadable));
    auto read = ReadTimelineCsv(*text);
    if (const auto* trouble = std::get_if<CsvTrouble>(&read)) return refuse(trouble->Told());
    auto& nodes = std::get<std::vector<TimeNode>>(read);
    if (nodes.empty()) return refuse(Localized(kNothingThere));
    const bool replaces = document.NodeCount() > 0 &&
                          prompts.Confirm(fmt::sprintf(Localized(kReplaceQuestion), nodes.size()));
    return ImportNodes(document, std::move(nodes),
                       replaces ? CsvImport::kReplace : CsvImport::kAppend);
}

void ExportCsv(const TimelineDocument& document, Prompts& prompts) {
    const auto path = prompts.ChooseFile(
        CsvFileQuestion(FileQuestion::Purpose::kSave, kExportCaption, kSaveTexts.name));
    if (path) KeepSettingsFile(*path, TimelineCsv(document.Order()), prompts);
}

}  // namespace sontaro
