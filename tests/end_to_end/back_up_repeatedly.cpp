// Writes backups over and over until it is killed, or looks at what that has left.
// Usage: back_up_repeatedly run|check FOLDER FLAT_FOLDER
#include <algorithm>
#include <set>

#include "base/path_text.h"
#include "base/program_arguments.h"
#include "venue/backup_store.h"
#include "venue/backup_writer.h"

namespace sontaro {
namespace {

constexpr int kPlayers = 8;

/// A document that says which run it is of, in one of many lengths.
std::string Document(const std::string& run, int player) {
    return "{\"run\":\"" + run + "\",\"pad\":\"" +
           std::string(static_cast<std::size_t>(1000 * player), 'x') + "\"}";
}

bool Write(const std::filesystem::path& folder, bool isFlat, const std::string& run) {
    BackupPlan plan{folder, isFlat};
    plan.keep = 3;
    auto writer = BackupWriter::Begin(std::move(plan));
    for (int player = 0; writer && player < kPlayers; ++player) {
        PlayerDocuments documents;
        documents.player.id = "PLAYER" + std::to_string(player);
        for (const SettingsBlockKind& kind : SettingsBlocks())
            documents.blocks.push_back(
                {&kind, BlockReading::Outcome::kRead, Document(run, player)});
        if (!(*writer)->Add(documents)) return false;
    }
    return writer && (*writer)->Finish();
}

/// Whether all documents of a backup are of one run.
bool IsOfOneRun(const Backup& backup) {
    std::set<std::string> runs;
    const std::size_t players = backup.Manifest().players.size();
    for (std::size_t player = 0; player < players; ++player) {
        const auto documents = backup.Documents(player);
        if (!documents || documents->blocks.size() != SettingsBlocks().size()) return false;
        for (const BlockReading& block : documents->blocks)
            runs.insert(block.text.substr(0, block.text.find(',')));
    }
    return players == kPlayers && runs.size() == 1;
}

bool Check(const std::filesystem::path& folder, const std::filesystem::path& flat) {
    const auto before = Backup::Open(flat);
    if (!before || !IsOfOneRun(*before)) return false;
    for (const ListedBackup& listed : BackupStore(folder).List())
        if (listed.trouble.empty() && !IsOfOneRun(*Backup::Open(listed.folder))) return false;
    if (!Write(folder, false, "after") || !Write(flat, true, "after")) return false;
    const auto all = BackupStore(folder).List();
    const auto after = Backup::Open(flat);
    return after && IsOfOneRun(*after) && all.size() <= 3 &&
           std::ranges::all_of(all, [](const ListedBackup& one) { return one.trouble.empty(); });
}

}  // namespace
}  // namespace sontaro

int main() {
    const std::vector<std::string> arguments = sontaro::ProgramArguments();
    if (arguments.size() != 3) return 2;
    const std::filesystem::path folder = sontaro::PathOfText(arguments[1]);
    const std::filesystem::path flat = sontaro::PathOfText(arguments[2]);
    if (arguments[0] == "check") return sontaro::Check(folder, flat) ? 0 : 1;
    for (int run = 0;; ++run) {
        const std::string name = std::to_string(run);
        if (!sontaro::Write(folder, false, name) || !sontaro::Write(flat, true, name)) return 1;
    }
}
