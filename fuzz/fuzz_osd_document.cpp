// On-screen display settings of anything, edited by anything, written and read again.
#include <cstdlib>

#include "base/bytes.h"
#include "base/encoding.h"
#include "osd/osd_document.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

/// Every row gets a text off `texts`, one per line; a row shows what an accepted edit says, and
/// anything else leaves it alone.
void EditRows(OsdSettings& osd, std::string_view texts) {
    for (std::size_t place = 0; !texts.empty(); ++place) {
        const std::size_t end = std::min(texts.find('\n'), texts.size());
        const SettingsRows before = osd.Rows();
        const auto& rows = before.front().rows;
        const std::string key = place < rows.size() ? rows[place].key : "";
        const EditAnswer answer = osd.Edit({key, DecodeUtf8(texts.substr(0, end))});
        texts.remove_prefix(std::min(end + 1, texts.size()));
        const bool accepted = answer.outcome == EditAnswer::Outcome::kAccepted;
        const SettingsRows after = osd.Rows();
        Expect(accepted || after == before);
        for (const SettingsRow& row : after.front().rows)
            Expect(!accepted || row.key != key || row.value == answer.text);
    }
}

/// A document up to the first zero byte, then texts for its rows.
void Run(std::string_view input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    OsdSettings osd;
    if (!osd.TakeReply(input.substr(0, end))) return;
    EditRows(osd, input.substr(std::min(end + 1, input.size())));
    static_cast<void>(osd.RefusalToSend());
    OsdSettings again;
    Expect(again.TakeFile(osd.Write()).ok());
    Expect(again.Rows() == osd.Rows());
    const std::string written = again.Write();
    Expect(again.TakeReply(written).ok() && again.Write() == written);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
