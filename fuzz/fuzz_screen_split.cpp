// A configuration of a video wall of anything, from a player whose block is anything.
#include <algorithm>
#include <cstdlib>

#include "base/json.h"
#include "screensplit/split_memory.h"
#include "screensplit/split_rows.h"
#include "screensplit/wall_frame.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// Two players: the one says what it likes of its outputs, the other one has two of the same size.
std::vector<SplitDevice> Devices(ByteView bytes) {
    ParameterBlock block{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), block.size()), block.begin());
    SplitDevice first{{}, SplitDeviceParams(block)};
    first.record.ip = "192.168.1.21";
    first.record.id = "first";
    block[6491] = 2;
    block[6492] = 0;
    SplitDevice second{{}, SplitDeviceParams(block)};
    second.record.ip = "192.168.1.22";
    second.record.id = "second";
    return {first, second};
}

/// Whatever is in the picture is found where it is.
void LookAt(const SplitDocument& document) {
    const WallPicture picture(document);
    const WallFrame frame(picture, {800, 300});
    for (double x = 0; x < 800; x += 50) {
        const WallSpot spot = frame.SpotAt(x, 150);
        if (const auto screen = picture.ScreenOf(spot))
            Expect(picture.SpotOf(*screen).kind == spot.kind);
        Expect(frame.DropAt(x, 150).place <= picture.Tiles().size());
        static_cast<void>(picture.Neighbour(spot, WallArrow::kRight));
    }
    Expect(picture.Overlaps().size() + 1 == std::max<std::size_t>(picture.Tiles().size(), 1));
}

/// What is written is read and written alike.
std::string Written(const SplitDocument& document) {
    std::string text = document.Write();
    const auto again = SplitConfiguration::Read(text);
    Expect(again.ok() && WriteJson(again->Whole()) == text);
    LookAt(document);
    return text;
}

void EditRows(SplitDocument& document, const SettingsRows& groups) {
    constexpr std::size_t kMostRows = 12;
    for (const SettingsGroup& group : groups)
        for (std::size_t i = 0; i < std::min(group.rows.size(), kMostRows); ++i)
            for (const char* text : {"", "-1", "1", "0.1234567"}) {
                const auto answer = EditSplitRow(document, {group.rows[i].key, text});
                Expect(answer.outcome != EditAnswer::Outcome::kRefused || !answer.text.empty());
            }
}

/// The configuration up to the first zero byte, then the block.
void Run(ByteView input) {
    const auto end = std::ranges::find(input, 0);
    SplitDocument document;
    document.SetDevices(Devices({end, input.end()}));
    auto configuration = SplitConfiguration::Read(AsText({input.begin(), end}));
    if (!configuration) return;
    document.SetConfiguration(std::move(*configuration));
    const std::string before = Written(document);
    const bool isLaidOut = !document.ApplyOrder();
    Expect(isLaidOut == document.Size().has_value());
    if (!document.TakeOverWall()) {
        Expect(document.Wall() == WithinLimits(document.Wall(), *document.Size()));
        Expect(document.IsApplied() && document.WallLength() > 0);
    }
    document.PlaceScreen(document.Names().size() - 1, 0);
    EditRows(document, SplitRows(document));
    EditRows(document, ZoomRows(document));
    EditRows(document, AdvancedRows(document));
    document.SetAllOverlaps(1 << 29);
    if (const auto wall = WallToJson(document); isLaidOut)
        Expect(wall && WallFromJson(*wall, document) == document.Wall());
    const std::string after = Written(document);
    document.PutBackFetched();
    Expect(Written(document) == WriteJson(document.Configuration().Whole()));
    Expect(document.Undo() && document.Write() == after);
    while (document.Undo()) {
    }
    Expect(document.Write() == before);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run({data, size});
    return 0;
}
