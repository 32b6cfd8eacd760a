#include "widgets/table.h"

#include <fmt/core.h>
#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/sizer.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <tuple>

#include "bench/figures.h"
#include "bench/no_prompts.h"
#include "widgets/wx_text.h"

namespace sontaro::bench {

namespace {

constexpr int kRepetitions = 15;
constexpr std::size_t kRows = 65'000;
constexpr std::size_t kFilling = 40;  // more than the window has room for

/// About what a node of a timeline takes, in about 100 bytes.
struct Record {
    std::uint64_t id;
    std::int64_t milliseconds;
    std::string type;
    std::string video;
    std::array<std::int32_t, 5> numbers;
};

std::vector<Record> Records(std::size_t count) {
    std::vector<Record> records;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t mixed = i * 7919 % count;
        records.push_back({i,
                           static_cast<std::int64_t>(mixed),
                           fmt::format("type {}", mixed % 20),
                           fmt::format("video {}", mixed % 700),
                           {}});
    }
    return records;
}

/// Of the processor: a frame is not drawn before its time on the screen has come.
template <class Action>
double TimeOf(Action action) {
    const std::clock_t start = std::clock();
    action();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// By three of their members, as groups of nodes are sorted.
double TimeOfSort(std::vector<Record> records) {
    return TimeOf([&] {
        std::ranges::stable_sort(records, {}, [](const Record& record) {
            return std::tie(record.type, record.video, record.milliseconds);
        });
    });
}

class RecordTable : public TableModel {
   public:
    explicit RecordTable(std::size_t count) : records_(Records(count)) {}

    void Insert() {
        const auto middle = static_cast<std::ptrdiff_t>(records_.size() / 2);
        records_.insert(records_.begin() + middle, {records_.size(), 1, "type", "video", {}});
    }

    /// Runs the event loop until rows are drawn.
    void AwaitDrawing() {
        for (drawn_ = false; !drawn_;) wxEventLoopBase::GetActive()->Dispatch();
    }

   private:
    static constexpr std::array<TableColumn, 10> kColumns = {
        {{InBoth("Player"), 8},
         {InBoth("Type"), 10},
         {InBoth("Video"), 12},
         {InBoth("Time(S)"), 10, CellKind::kNumber},
         {InBoth("Mode"), 8},
         {InBoth("Port"), 8},
         {InBoth("IP"), 12},
         {InBoth("Peer port"), 8, CellKind::kNumber},
         {InBoth("Command"), 16},
         {InBoth("Test"), 8, CellKind::kButton}}};

    [[nodiscard]] std::span<const TableColumn> Columns() const override { return kColumns; }
    [[nodiscard]] std::size_t RowCount() const override { return records_.size(); }
    [[nodiscard]] std::uint64_t IdOf(std::size_t row) const override { return records_[row].id; }
    [[nodiscard]] bool IsTicked(std::size_t row) const override {
        return records_[row].numbers[0] != 0;
    }
    void SetTicked(std::size_t row, bool ticked) override {
        records_[row].numbers[0] = ticked ? 1 : 0;
    }
    [[nodiscard]] std::string Text(std::size_t row, std::size_t column) const override {
        const Record& record = records_[row];
        drawn_ = true;
        switch (column) {
            case 1: return record.type;
            case 2: return record.video;
            case 3: return fmt::format("{:.3f}", static_cast<double>(record.milliseconds) / 1e3);
            default: return "A50BFF00";
        }
    }

    std::vector<Record> records_;
    mutable bool drawn_ = false;
};

/// A table in the window, drawn.
class ShownTable {
   public:
    ShownTable(wxDialog& dialog, RecordTable& model)
        : table_(new Table(&dialog, wxID_ANY, model, {}, prompts_)) {
        dialog.GetSizer()->Add(table_, wxSizerFlags(1).Expand());
        dialog.Layout();
        model.AwaitDrawing();
    }
    ~ShownTable() { table_->Destroy(); }

    /// Reads its rows again; they are drawn by the loop.
    void RowsChanged() const { table_->RowsChanged(); }

   private:
    NoPrompts prompts_;
    Table* table_;
};

double TimeToOpen(wxDialog& dialog, RecordTable& model) {
    return TimeOf([&] { const ShownTable table(dialog, model); });
}

double TimeToInsert(const ShownTable& table, RecordTable& model) {
    return TimeOf([&] {
        model.Insert();
        table.RowsChanged();
        model.AwaitDrawing();
    });
}

}  // namespace

std::vector<Figure> Tables() {
    wxDialog dialog(nullptr, wxID_ANY, "Table", wxDefaultPosition, wxSize(900, 600));
    dialog.SetSizer(new wxBoxSizer(wxVERTICAL));
    dialog.Show();
    wxGUIEventLoop loop;
    const wxEventLoopActivator active(&loop);
    const std::vector<Record> records = Records(kRows);
    const auto sort = [&] { return TimeOfSort(records); };
    RecordTable full(kRows);
    RecordTable filling(kFilling);
    double least = 0;  // what the window alone costs
    const Comparison open = CompareInTurn(
        kRepetitions,
        [&] {
            TimeToOpen(dialog, filling);  // whose end is in the time of what follows
            const double whole = TimeToOpen(dialog, full);
            least = TimeToOpen(dialog, filling);
            return whole - least;
        },
        sort);
    const double leastToOpen = least;
    const ShownTable shown(dialog, full);
    wxDialog small(nullptr, wxID_ANY, "Table", wxDefaultPosition, wxSize(900, 600));
    small.SetSizer(new wxBoxSizer(wxVERTICAL));
    small.Show();
    const ShownTable shownFilling(small, filling);
    const Comparison insert = CompareInTurn(
        kRepetitions,
        [&] {
            least = TimeToInsert(shownFilling, filling);
            return TimeToInsert(shown, full) - least;
        },
        sort);
    return {
        {"table_open", open.ratio, Goal::kAtMost, 1.0,
         fmt::format("{:.2f} ms more than {:.1f} ms for {} rows, sort {:.1f} ms, {} rows",
                     open.ours * 1e3, leastToOpen * 1e3, kFilling, open.baseline * 1e3, kRows)},
        {"table_insert", insert.ratio, Goal::kAtMost, 0.25,
         fmt::format("with the redraw {:.2f} ms more than {:.1f} ms for {} rows, sort {:.1f} ms",
                     insert.ours * 1e3, least * 1e3, kFilling, insert.baseline * 1e3)}};
}

}  // namespace sontaro::bench
