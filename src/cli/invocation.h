// What sontaro-cli was called for.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "cli/command_table.h"

namespace sontaro::cli {

/// A command with its arguments and options, as far as the table says what they are: what they mean
/// is for the command to find out. Texts are UTF-8.
class Invocation {
   public:
    /// Reads the arguments behind the program's name. Fails with a text for the user, which says
    /// what was probably meant.
    [[nodiscard]] static Result<Invocation> Parse(const std::vector<std::string>& arguments);

    /// Absent when only the options of every command were given.
    [[nodiscard]] const CommandRow* Command() const { return command_; }
    /// All arguments of the command, in their order.
    [[nodiscard]] const std::vector<std::string>& Arguments() const { return arguments_; }
    /// The argument at that place; empty: it was not given.
    [[nodiscard]] std::string Argument(std::size_t place) const {
        return place < arguments_.size() ? arguments_[place] : std::string();
    }
    [[nodiscard]] bool Has(OptionId id) const { return options_.contains(id); }
    /// The value of an option; empty: it was not given.
    [[nodiscard]] std::string Value(OptionId id) const {
        return Has(id) ? options_.at(id).front() : std::string();
    }
    /// All values of an option that may be repeated.
    [[nodiscard]] std::vector<std::string> Values(OptionId id) const {
        return Has(id) ? options_.at(id) : std::vector<std::string>();
    }

   private:
    [[nodiscard]] Status Check() const;
    [[nodiscard]] Status CheckArguments() const;

    const CommandRow* command_ = nullptr;
    std::vector<std::string> arguments_;
    std::map<OptionId, std::vector<std::string>>
        options_;  // an option without values has an empty one
};

/// The option of every command (`kHelp`, `kVersion`) that is asked for, without reading the rest.
[[nodiscard]] bool AsksFor(OptionId id, const std::vector<std::string>& arguments);

}  // namespace sontaro::cli
