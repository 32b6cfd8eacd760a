// What a venue keeps in files, of anything: manifests, venues, lists of players, names of folders,
// and documents that are checked, compared and restored.
#include <cstdlib>

#include "base/bytes.h"
#include "base/json.h"
#include "venue/compare.h"
#include "venue/document_check.h"
#include "venue/folder_name.h"
#include "venue/restore_plan.h"
#include "venue/venue_file.h"

namespace sontaro {
namespace {

void Expect(bool holds) {
    if (!holds) std::abort();
}

void ExpectTold(const TextTrouble& trouble, std::string_view text) {
    Expect(!trouble.Told().empty());
    Expect(trouble.place.line <= text.size() + 1 && trouble.place.column <= text.size() + 1);
}

/// What was read is written so that it is read alike, and leads nowhere but to players' folders.
void ReadAManifest(std::string_view text) {
    const auto read = ReadManifest(text);
    if (const auto* trouble = std::get_if<TextTrouble>(&read)) return ExpectTold(*trouble, text);
    const auto& manifest = std::get<BackupManifest>(read);
    const std::string written = WriteManifest(manifest);
    const auto again = ReadManifest(written);
    const auto neverAlike = [](const ManifestFile&, const ManifestFile&) { return false; };
    Expect(std::get<BackupManifest>(again) == manifest);
    Expect(HoldTheSame(manifest, manifest, neverAlike));
    for (const ManifestPlayer& player : manifest.players)
        Expect(OwnerOfFolder(player.folder)->id == player.player.id);
}

void ReadLists(std::string_view text) {
    const auto players = ReadExpectedPlayers(text);
    if (const auto* trouble = std::get_if<TextTrouble>(&players)) ExpectTold(*trouble, text);
    const auto venue = ReadVenue(text);
    if (const auto* trouble = std::get_if<TextTrouble>(&venue)) ExpectTold(*trouble, text);
    static_cast<void>(PartOf(text));
}

void NameAFolder(std::string_view text) {
    const std::string id(text.substr(0, 64));
    const std::string name = FolderNameOf({id, ""});
    Expect(OwnerOfFolder(name)->id == id);
    Expect(name.find_first_of("/\\:*?\"<>|") == std::string::npos && !name.starts_with('.'));
    if (const auto owner = OwnerOfFolder(text))
        Expect(OwnerOfFolder(FolderNameOf(*owner)) == owner);
}

void CheckADocument(const std::string& text) {
    const DocumentCheck check = CheckDocument(text);
    Expect(check.findings.size() <= kMostFindings);
    for (const CheckFinding& finding : check.findings) Expect(!finding.what.empty());
}

/// A plan that sends something changes something, and has nothing to do once that is done.
void PlanABlock(const SettingsBlockKind& kind, const std::string& wanted,
                const std::string& present) {
    Expect(CompareTexts(kind, wanted, wanted).differences.empty());
    const BlockPlan plan = PlanBlock(kind, wanted, present, {true, ""});
    if (plan.text.empty()) return;
    Expect(!CompareTexts(kind, present, plan.text).differences.empty());
    if (!plan.HasDoubts()) Expect(PlanBlock(kind, wanted, plan.text).text.empty());
}

/// A document up to the first zero byte, then another one of the same block; its number is the
/// first byte.
void PlanBlocks(std::string_view input) {
    if (input.empty()) return;
    const SettingsBlockKind& kind =
        SettingsBlocks()[static_cast<unsigned char>(input.front()) % SettingsBlocks().size()];
    input.remove_prefix(1);
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string wanted(input.substr(0, end));
    const std::string present(input.substr(std::min(end + 1, input.size())));
    PlanABlock(kind, wanted, present);
    static_cast<void>(CheckDocument(wanted, &kind));
}

void Run(std::string_view input) {
    ReadAManifest(input);
    ReadLists(input);
    NameAFolder(input);
    CheckADocument(std::string(input));
    PlanBlocks(input);
}

}  // namespace
}  // namespace sontaro

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sontaro::Run(sontaro::AsText({data, size}));
    return 0;
}
