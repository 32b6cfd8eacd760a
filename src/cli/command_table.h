// Every command of sontaro-cli with all that is to be said of it. The parser, the help, the manual
// page, the completion of the shell and the list in the README are made from this table.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/local_text.h"

namespace sontaro::cli {

enum class OptionId {
    kPlayer,
    kAll,
    kExpect,
    kVenue,
    kLocalAddress,
    kTimeout,
    kParallel,
    kData,
    kJson,
    kYes,
    kLanguage,
    kHelp,
    kVersion,
    kOutput,
    kFile,
    kForce,
    kDryRun,
    kRestart,
    kPort,
    kCategory,
    kSkipPresent,
    kAgain,
    kKeep,
    kOnlyChanged,
    kFlat,
    kOnly,
    kAs,
    kBlock,
    kFor,
};

enum class CommandId {
    kFind,
    kShow,
    kVideos,
    kGet,
    kSet,
    kApply,
    kControl,
    kSend,
    kUpload,
    kBackup,
    kCompare,
    kRestore,
    kCheck,
    kWatch,
};

/// What may stand in the place of a value: the shell completes by it.
enum class ValueKind { kAnyText, kFilePath, kFolderPath, kBlockWord, kActionWord, kLanguageWord };

/// Which commands take an option besides those that name it.
enum class OptionScope {
    kNamed,    ///< none
    kPlayers,  ///< all that have to do with players
    kEvery,
};

struct OptionRow {
    OptionId id{};
    const char* shortName = nullptr;  ///< "-p"; absent: it has none
    const char* name = nullptr;       ///< "--player"
    const char* value = nullptr;  ///< what stands for its value in the help; absent: it has none
    ValueKind kind = ValueKind::kAnyText;
    bool mayRepeat = false;
    OptionScope scope = OptionScope::kNamed;
    LocalText help{};
};

struct ArgumentRow {
    const char* name = nullptr;  ///< what stands for it in the help
    ValueKind kind = ValueKind::kAnyText;
    bool isRequired = true;
    bool mayRepeat = false;  ///< only of the last one
};

struct ExampleRow {
    const char* line = nullptr;  ///< behind the name of the program
    LocalText what{};
};

/// Which players a command has to do with.
enum class Players {
    kNone,
    kNamed,         ///< those that are named, or all on request
    kAllByDefault,  ///< all, unless some are named
};

class Invocation;

struct CommandRow {
    CommandId id{};
    const char* name = nullptr;
    Players players{};
    std::span<const ArgumentRow> arguments;
    std::span<const OptionId> options;        ///< besides those of a scope
    std::span<const OptionId> required = {};  ///< of those, what it cannot do without
    /// Of those of the players' scope that it does not take.
    std::span<const OptionId> without = {};
    LocalText help{};         ///< on one line
    LocalText description{};  ///< what is to be said besides; empty: nothing
    std::span<const ExampleRow> examples = {};
    /// Whether what is asked for cannot be taken back, so that it is asked about; absent: never.
    bool (*isFinal)(const Invocation&) = nullptr;
};

[[nodiscard]] std::span<const CommandRow> Commands();
[[nodiscard]] std::span<const OptionRow> Options();

/// The row of that id; every id has one.
[[nodiscard]] const OptionRow& RowOf(OptionId id);
/// The command of that name; absent: there is none.
[[nodiscard]] const CommandRow* FindCommand(std::string_view name);
/// Whether a command takes an option.
[[nodiscard]] bool Takes(const CommandRow& command, const OptionRow& option);
/// Whether a command cannot do without an option.
[[nodiscard]] bool IsRequired(const CommandRow& command, const OptionRow& option);

/// The words by which `control` is told what to do.
struct ActionRow {
    const char* name = nullptr;
    const char* value = nullptr;  ///< what follows in the help; absent: nothing
    bool isValueRequired = false;
    LocalText help{};
};
[[nodiscard]] std::span<const ActionRow> Actions();

/// The names of the blocks of settings.
[[nodiscard]] std::vector<std::string> BlockWords();

}  // namespace sontaro::cli
