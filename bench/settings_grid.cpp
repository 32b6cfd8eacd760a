#include "widgets/settings_grid.h"

#include <fmt/core.h>
#include <wx/dialog.h>
#include <wx/wupdlock.h>

#include <array>
#include <stdexcept>

#include "base/prompts.h"
#include "bench/figures.h"
#include "bench/no_prompts.h"
#include "bench/samples.h"
#include "bench/stopwatch.h"
#include "controlprotocol/control_protocol_rows.h"
#include "settings/custom_settings.h"
#include "simulator/sample_schema.h"
#include "widgets/wx_text.h"

namespace sontaro::bench {

namespace {

constexpr int kRepetitions = 15;
constexpr int kSubGroups = 128;
constexpr int kRows = 1'400;
constexpr std::size_t kItems = 10'000;

/// Two groups of sub-groups, as the largest dialog has them: names, commands and choices.
SettingsRows LargestDialog() {
    const std::vector<std::string> choices = {"单曲播放", "类别循环", "全部随机"};
    SettingsRows groups = {{"VideoType", "视频类别配置", {}}, {"LayOut", "布局", {}}};
    for (int row = 0; row < kRows; ++row) {
        const int group = row * kSubGroups / kRows;
        auto& subGroups = groups[group % 2 == 0 ? 0U : 1U].groups;
        if (static_cast<int>(subGroups.size()) <= group / 2)
            subGroups.push_back(
                {fmt::format("VideoType/{}", group), fmt::format("类别 {}", group), {}});
        auto& rows = subGroups.back().rows;
        const std::string key = fmt::format("VideoType/{}/SendCmd{}", group, row);
        const std::string name = fmt::format("切换命令 {}", row);
        switch (row % 4) {
            case 0: rows.push_back({key, RowKind::kText, name, "迪斯科", "类别名称"}); break;
            case 1:
                rows.push_back({key, RowKind::kHexCommand, name, "A50BFF00", "切换命令"});
                break;
            case 2:
                rows.push_back({key, RowKind::kChoice, name, choices[1], "播放模式", choices});
                break;
            default: rows.push_back({key, RowKind::kWholeNumber, name, "9600", "端口"}); break;
        }
    }
    return groups;
}

/// What a program without the settings grid would do with the same rows.
class BarePage {
   public:
    explicit BarePage(wxWindow* parent) : grid_(new wxPropertyGrid(parent)) {}
    ~BarePage() { grid_->Destroy(); }

    void Append(const SettingsRows& groups) {
        const wxWindowUpdateLocker lock(grid_);
        for (const SettingsGroup& group : groups) {
            auto* category = grid_->Append(new wxPropertyCategory(ToWx(group.name), NextName()));
            AppendRows(category, group);
            for (const SettingsGroup& inner : group.groups)
                AppendRows(
                    grid_->AppendIn(category, new wxPropertyCategory(ToWx(inner.name), NextName())),
                    inner);
        }
    }

   private:
    wxString NextName() { return wxString::Format("%d", number_++); }

    void AppendRows(wxPGProperty* category, const SettingsGroup& group) {
        for (const SettingsRow& row : group.rows)
            grid_->AppendIn(category, MakeRow(row))->SetHelpString(ToWx(row.help));
    }

    wxPGProperty* MakeRow(const SettingsRow& row) {
        if (row.kind != RowKind::kChoice)
            return new wxStringProperty(ToWx(row.name), NextName(), ToWx(row.value));
        wxPGChoices choices;
        for (const std::string& choice : row.choices) choices.Add(ToWx(choice));
        return new wxEnumProperty(ToWx(row.name), NextName(), choices, 1);
    }

    wxPropertyGrid* grid_;
    int number_ = 0;
};

double TimeOfBarePage(wxDialog& dialog, const SettingsRows& rows) {
    BarePage page(&dialog);
    const Stopwatch stopwatch;
    page.Append(rows);
    return stopwatch.Seconds();
}

/// Builds a grid of the rows that `make` gives; their making counts as well.
template <class Make>
double TimeOfGrid(wxDialog& dialog, Make make) {
    NoPrompts prompts;
    auto* grid = new SettingsGrid(&dialog, wxID_ANY, false, prompts,
                                  [](const SettingsEdit&) { return EditAnswer{}; });
    const Stopwatch stopwatch;
    grid->Fill(make());
    const double seconds = stopwatch.Seconds();
    grid->Destroy();
    return seconds;
}

/// Calls `build(rows)` for every grid of a control protocol; the sum of what it returns.
template <class Build>
double SumOfGrids(ControlProtocolGrids grids, Build build) {
    double seconds = 0;
    for (SettingsRows& rows : grids) seconds += build(rows);
    return seconds;
}

/// The five grids of a control protocol, from the model on.
double TimeOfFiveGrids(wxDialog& dialog, ControlProtocolModel& model) {
    const Stopwatch stopwatch;
    auto grids = ControlProtocolRows(model);
    const double seconds = stopwatch.Seconds();
    return seconds + SumOfGrids(std::move(grids), [&](SettingsRows& rows) {
               return TimeOfGrid(dialog, [&] { return std::move(rows); });
           });
}

/// Filters a grid of `rows` by a text that is typed, and by nothing again; the mean of a step.
double TimeOfFilter(wxDialog& dialog, const SettingsRows& rows) {
    const wxString typed = ToWx("切换命令 137");
    NoPrompts prompts;
    auto* grid = new SettingsGrid(&dialog, wxID_ANY, false, prompts,
                                  [](const SettingsEdit&) { return EditAnswer{}; });
    grid->Fill(rows);
    const Stopwatch stopwatch;
    for (std::size_t letters = 1; letters <= typed.length(); ++letters)
        grid->Filter(typed.Left(letters));
    grid->Filter("");
    const double seconds = stopwatch.Seconds() / static_cast<double>(typed.length() + 1);
    grid->Destroy();
    return seconds;
}

}  // namespace

std::vector<Figure> SettingsGrids() {
    wxDialog dialog(nullptr, wxID_ANY, "Grids", wxDefaultPosition, wxSize(700, 500));
    dialog.Show();
    const SettingsRows rows = LargestDialog();
    CCustomSettingAnalysor schema;
    if (!schema.Parse(simulator::LargeSchema(kItems)))
        throw std::runtime_error("the schema cannot be read");
    const auto ofLargest = [&] { return TimeOfGrid(dialog, [&] { return rows; }); };
    const auto ofSchema = [&] { return TimeOfGrid(dialog, [&] { return schema.BuildGrid(); }); };
    const Comparison build =
        CompareInTurn(kRepetitions, ofLargest, [&] { return TimeOfBarePage(dialog, rows); });
    const Comparison perRow = CompareInTurn(
        kRepetitions, [&] { return ofSchema() / kItems; }, [&] { return ofLargest() / kRows; });
    ControlProtocolModel protocol = FullControlProtocol();
    const auto protocolRows = ControlProtocolRows(protocol);
    const auto bareFive = [&] {
        return SumOfGrids(protocolRows,
                          [&](const auto& page) { return TimeOfBarePage(dialog, page); });
    };
    const Comparison five = CompareInTurn(
        kRepetitions, [&] { return TimeOfFiveGrids(dialog, protocol); }, bareFive);
    const Comparison filter = CompareInTurn(
        kRepetitions, [&] { return TimeOfFilter(dialog, rows); }, ofLargest);
    return {{"settings_grid", build.ratio, Goal::kAtMost, 1.3,
             fmt::format("grid {:.1f} ms, bare page {:.1f} ms, {} rows", build.ours * 1e3,
                         build.baseline * 1e3, kRows)},
            {"large_schema_grid", perRow.ratio, Goal::kAtMost, 3.0,
             fmt::format("{:.1f} us a setting of {}, {:.1f} us a row of {}", perRow.ours * 1e6,
                         kItems, perRow.baseline * 1e6, kRows)},
            {"five_grids", five.ratio, Goal::kAtMost, 1.5,
             fmt::format("grids {:.1f} ms, bare pages {:.1f} ms", five.ours * 1e3,
                         five.baseline * 1e3)},
            {"filter_rows", filter.ratio, Goal::kAtMost, 1.0,
             fmt::format("{:.2f} ms a letter, grid built in {:.1f} ms, {} rows", filter.ours * 1e3,
                         filter.baseline * 1e3, kRows)}};
}

}  // namespace sontaro::bench
