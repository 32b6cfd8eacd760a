#include "cli/output.h"

#include "base/json.h"
#include "cli/display_width.h"

namespace sontaro::cli {

Output::~Output() {
    const std::lock_guard lock(mutex_);
    EraseProgress();
}

void Output::Object(const Json::Value& object) {
    WriteResult(WriteJsonLine(WithValidTexts(object)) + '\n');
}

void Output::Line(std::string_view line) { WriteResult(Harmless(line) + '\n'); }

void Output::Table(const CellTable& table) {
    if (table.HasRows()) WriteResult(table.Text());
}

void Output::Document(std::string_view text) { WriteResult(text); }

void Output::WriteResult(std::string_view text) {
    const std::lock_guard lock(mutex_);
    EraseProgress();
    results_.Write(text);
}

void Output::Remark(std::string_view line) {
    const std::lock_guard lock(mutex_);
    EraseProgress();
    remarks_.Write(Harmless(line) + '\n');
}

void Output::Progress(std::string_view line) {
    const std::lock_guard lock(mutex_);
    if (!showsProgress_) return;
    const std::string shown = Harmless(line);
    remarks_.Write('\r' + FilledUp(shown, progressWidth_));
    progressWidth_ = DisplayWidth(shown);
}

void Output::EraseProgress() {
    if (progressWidth_ == 0) return;
    remarks_.Write('\r' + std::string(progressWidth_, ' ') + '\r');
    progressWidth_ = 0;
}

}  // namespace sontaro::cli
