// What the program tells: results for who has called it, remarks for who watches.
#pragma once

#include <json/value.h>

#include <mutex>
#include <string>
#include <string_view>

#include "cli/cell_table.h"
#include "cli/text_sink.h"

namespace sontaro::cli {

/// Results are tables or lines, or one JSON object a line; remarks are lines beside them. Any
/// thread.
class Output {
   public:
    enum class Form { kTables, kJson };

    /// Progress is told only where `showsProgress`. Both sinks outlive the output.
    Output(TextSink& results, TextSink& remarks, Form form, bool showsProgress)
        : results_(results), remarks_(remarks), form_(form), showsProgress_(showsProgress) {}
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    [[nodiscard]] bool IsJson() const { return form_ == Form::kJson; }

    /// A result as JSON; only where `IsJson`.
    void Object(const Json::Value& object);
    /// A result as a line of text; only where not `IsJson`.
    void Line(std::string_view line);
    /// Nothing without rows.
    void Table(const CellTable& table);
    /// A result exactly as it is.
    void Document(std::string_view text);

    /// Something that is no result.
    void Remark(std::string_view line);
    /// How far the program is, in place of what was told before.
    void Progress(std::string_view line);

   private:
    void WriteResult(std::string_view text);
    void EraseProgress();

    std::mutex mutex_;
    TextSink& results_;
    TextSink& remarks_;
    const Form form_;
    const bool showsProgress_;
    std::size_t progressWidth_ = 0;  // columns that are to be erased
};

}  // namespace sontaro::cli
