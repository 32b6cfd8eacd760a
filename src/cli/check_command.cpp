#include <fmt/printf.h>

#include "base/file.h"
#include "base/path_text.h"
#include "cli/commands.h"
#include "cli/exit_code.h"
#include "cli/player_runs.h"
#include "venue/document_check.h"

namespace sontaro::cli {

namespace {

constexpr LocalText kNotRead = {"无法读取 %s：%s", "%s cannot be read: %s"};
constexpr LocalText kUnknown = {"无法判断这是什么文档。", "what document this is cannot be told."};
constexpr LocalText kNoBlock = {"没有设置块 %s。", "there is no block %s."};
constexpr LocalText kSound = {"无误", "sound"};
constexpr LocalText kFault = {"错误", "fault"};
constexpr LocalText kRemark = {"提示", "remark"};
constexpr LocalText kMore = {"另有 %d 处", "%d more"};

Json::Value ObjectOf(const std::string& file, const CheckFinding& finding) {
    Json::Value object(Json::objectValue);
    object["file"] = file;
    object["weight"] = finding.weight == CheckFinding::Weight::kFault ? "fault" : "remark";
    if (finding.place.line != 0) {
        object["line"] = Json::UInt64(finding.place.line);
        object["column"] = Json::UInt64(finding.place.column);
    }
    if (!finding.path.empty()) object["key"] = finding.path;
    object["text"] = finding.what;
    return object;
}

/// As compilers tell it: "file:line:column: fault: what".
std::string LineOf(const std::string& file, const CheckFinding& finding) {
    const bool isFault = finding.weight == CheckFinding::Weight::kFault;
    std::string line = file;
    if (finding.place.line != 0)
        line += fmt::format(":{}:{}", finding.place.line, finding.place.column);
    line += ": " + Localized(isFault ? kFault : kRemark) + ": ";
    if (!finding.path.empty()) line += finding.path + ": ";
    return line + finding.what;
}

void TellKind(const Surroundings& surroundings, const std::string& file,
              const DocumentCheck& check) {
    if (surroundings.output.IsJson()) {
        Json::Value object(Json::objectValue);
        object["file"] = file;
        object["kind"] = WordFor(check.kind);
        if (check.block) object["block"] = check.block->name;
        object["sound"] = check.IsSound();
        return surroundings.output.Object(object);
    }
    std::string line = file + ": " + Told(check.kind);
    if (check.block && WordFor(check.kind) != std::string_view(check.block->name))
        line += std::string(" ") + check.block->name;
    if (check.IsSound()) line += ", " + Localized(kSound);
    surroundings.output.Line(line);
}

int TellTrouble(const Surroundings& surroundings, const std::string& why) {
    static_cast<void>(TellWrongUse(surroundings, why));
    return kTrouble;
}

}  // namespace

int RunCheck(const Surroundings& surroundings) {
    const Invocation& call = surroundings.call;
    const std::string file = call.Argument(0);
    const std::string blockName = call.Value(OptionId::kBlock);
    const SettingsBlockKind* block = FindSettingsBlock(blockName);
    if (!blockName.empty() && !block)
        return TellWrongUse(surroundings, fmt::sprintf(Localized(kNoBlock), blockName));
    const auto text = ReadFile(PathOfText(file));
    if (!text)
        return TellTrouble(surroundings, fmt::sprintf(Localized(kNotRead), file, text.reason()));
    const DocumentCheck check = CheckDocument(*text, block);
    if (check.kind == FileKind::kUnknown && check.IsSound())
        return TellTrouble(surroundings, file + ": " + Localized(kUnknown));
    TellKind(surroundings, file, check);
    for (const CheckFinding& finding : check.findings) {
        if (surroundings.output.IsJson())
            surroundings.output.Object(ObjectOf(file, finding));
        else
            surroundings.output.Line(LineOf(file, finding));
    }
    if (check.notListed > 0)
        surroundings.output.Remark(fmt::sprintf(Localized(kMore), check.notListed));
    return check.IsSound() ? kAllWell : kSomeFailed;
}

}  // namespace sontaro::cli
