// What the Windows registry says about network adapters.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "link/local_adapters.h"

namespace sontaro {

/// A value in the registry: a text in UTF-8, a number, or nothing where there is no such key or
/// value, or one of another type.
using RegistryValue = std::variant<std::monostate, std::string, std::uint32_t>;

/// Reads the value `name` of the key `path` of the local machine.
using RegistryReader =
    std::function<RegistryValue(const std::string& path, const std::string& name)>;

/// The adapter `guid`, such as "{4D36E972-...}", with `addresses`: its connection as the registry
/// describes it. A text that is missing is empty and a number that is missing 0.
[[nodiscard]] SystemAdapter DescribeConnection(const std::string& guid,
                                               std::vector<std::string> addresses,
                                               const RegistryReader& read);

}  // namespace sontaro
